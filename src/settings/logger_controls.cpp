#include "settings/logger_controls.h"

#include <array>

namespace harvelop
{

namespace
{

struct LockedControl {
    std::string_view name;
    bool card = false; // the KR4 family has no use for it
};

// That the flash buttons come back on models without flash too is meant.
constexpr std::array<LockedControl, 8> Locked = {{{"cmdCancel"},
                                                  {"cmdCard", true},
                                                  {"cmdCardClear", true},
                                                  {"cmdFlash"},
                                                  {"cmdFlashClear"},
                                                  {"cmdOk"},
                                                  {"cmdProgram"},
                                                  {"cmdProgramClear"}}};

} // namespace

void LoggerControls::setOthersEnabled(bool enabled)
{
    for (int number = 1; number <= MaxLoggers; ++number)
        if (LoggerPanel* panel = m_panels.At(number); panel && number != m_state.CurrentLogger)
            panel->SetPanelEnabled(enabled);
}

void LoggerControls::DisableLoggerControls()
{
    m_working = true;
    setOthersEnabled(false);
    if (LoggerPanel* panel = m_panels.At(m_state.CurrentLogger))
        for (const LockedControl& control : Locked)
            panel->SetControlEnabled(control.name, false);
}

void LoggerControls::EnableLoggerControls()
{
    m_working = false;
    setOthersEnabled(true);
    const LoggerRecord* record = m_tables.Record(m_state.CurrentLogger);
    const bool kr4 = record && IsKR4(record->LoggerModel);
    if (LoggerPanel* panel = m_panels.At(m_state.CurrentLogger))
        for (const LockedControl& control : Locked)
            if (!control.card || !kr4)
                panel->SetControlEnabled(control.name, true);
    m_progress.HideMessageForm();
}

} // namespace harvelop
