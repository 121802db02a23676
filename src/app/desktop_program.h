// The program behind windows: the heart, its forms, and who makes which of them when.
#pragma once

#include "app/program.h"
#include "app/start_up.h"
#include "core/frmMessages.h"
#include "core/frmTaskbar.h"
#include "loading/frmDelJob.h"
#include "panels/frmAddTallyCore.h"
#include "panels/frmOptions.h"
#include "panels/frmTallyCores.h"
#include "platform/qt/qt_words.h"
#include "terminal/frmTerminal.h"

#include <QPointer>

#include <memory>
#include <string>

namespace harvelop
{

// Forms are made on their first use. They belong to this object, but for the loggers' panels, which go when they are
// closed.
class DesktopProgram
{
public:
    explicit DesktopProgram(const Platform& platform);
    ~DesktopProgram();
    DesktopProgram(const DesktopProgram&) = delete;
    DesktopProgram& operator=(const DesktopProgram&) = delete;

    // The whole start-up; the program may have ended when it returns.
    void Start(const std::string& commandLine);

    Program heart;

private:
    frmOptions& loadedOptions();
    void showOptions();
    MessageForm* loadMessages();
    void showTerminal();
    void showAddDialog();
    JobForm* loadJobs();
    void loadProgram();

    QtWords m_words;
    TallyCorePanels m_panels;
    std::unique_ptr<frmOptions> m_options;
    std::unique_ptr<frmMessages> m_messages;
    std::unique_ptr<frmTerminal> m_terminal;
    std::unique_ptr<frmDelJob> m_jobs;
    std::string m_commandLine;
    QPointer<frmAddTallyCore> m_addDialog; // while it is shown
    frmTaskbar m_taskbar;
};

} // namespace harvelop
