// The lock on the controls of a logger's panel while work on its logger goes on.
#pragma once

#include "core/program_state.h"
#include "core/progress.h"
#include "settings/logger_panels.h"
#include "settings/logger_records.h"

namespace harvelop
{

// Both act on the panel of `CurrentLogger`. All other panels are locked and freed as a whole, so that no second
// operation starts in a wait of the first, and `CurrentLogger` stays what it is.
class LoggerControls
{
public:
    LoggerControls(const ProgramState& state, const LoggerTables& tables, const LoggerPanels& panels,
                   Progress& progress)
        : m_state(state), m_tables(tables), m_panels(panels), m_progress(progress)
    {
    }

    void DisableLoggerControls();

    // Enables them again, but for the card buttons of the KR4 family, and hides the progress window.
    void EnableLoggerControls();

    bool Working() const { return m_working; } // from the one to the other

private:
    void setOthersEnabled(bool enabled);

    const ProgramState& m_state;
    const LoggerTables& m_tables;
    const LoggerPanels& m_panels;
    Progress& m_progress;
    bool m_working = false;
};

} // namespace harvelop
