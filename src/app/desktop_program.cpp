#include "app/desktop_program.h"

#include "app/add_services.h"
#include "app/exit_paths.h"
#include "app/send_text.h"
#include "core/text_lines.h"
#include "identify/panel_work.h"
#include "panels/frmSupport.h"

#include <iostream>

namespace harvelop
{

DesktopProgram::DesktopProgram(const Platform& platform)
    : heart(platform),
      m_panels(heart.panelServices()),
      m_taskbar({[this] { heart.waiting.ServeEvents(); }, [this] { showOptions(); }, [this] { mpopExit_Click(heart); }})
{
    heart.forms.loadMessages = [this] { return loadMessages(); };
    heart.forms.loadJobs = [this] { return loadJobs(); };
    heart.actions.ShowAddDialog = [this] { showAddDialog(); };
    heart.viewing.UnloadAddDialog = [this] {
        if (m_addDialog)
            m_addDialog->Unload();
    };
}

DesktopProgram::~DesktopProgram() = default;

void DesktopProgram::Start(const std::string& commandLine)
{
    m_commandLine = commandLine;
    StartUpHooks hooks;
    hooks.showOptions = [this] { showOptions(); };
    hooks.loadOptions = [this] { loadedOptions(); };
    if (heart.actions.ConnectLogger)
        hooks.sendText = [this](const Launch& launch) { SendText(heart, launch, [this] { showTerminal(); }); };
    hooks.loadProgram = [this](const Launch&) { loadProgram(); };
    hooks.speak = [this](const std::string& language) { m_words.Speak(language); };
    hooks.say = [](const std::string& line) { std::cerr << "harvelop: " << line << std::endl; };
    StartUp(heart, hooks).Run(commandLine);
}

frmOptions& DesktopProgram::loadedOptions()
{
    if (!m_options) {
        m_options = std::make_unique<frmOptions>(OptionsServices{
            heart.essentials(), heart.options, heart.state, heart.store, heart.tables, heart.panels, heart.rs232,
            heart.portSearch, heart.viewing, heart.controls, heart.forms, heart.desktop, heart.end,
            heart.actions.ShowAddDialog, [this] { showTerminal(); }, heart.actions.ConnectLogger,
            [this] { heart.smtpTest.TestByUser(); }, [this] { heart.ftpTest.TestByUser(); }});
        m_options->Load();
    }
    return *m_options;
}

void DesktopProgram::showOptions()
{
    frmOptions& options = loadedOptions();
    if (heart.end.Ended())
        return;
    ShowPlaced(options);
    if (heart.panels.CountVisiblePanels() > 0)
        return; // it is disabled, and would hide the panels that a first search has opened
    options.raise();
    options.activateWindow();
}

void DesktopProgram::showTerminal()
{
    if (!m_terminal)
        m_terminal = std::make_unique<frmTerminal>(TerminalServices{
            heart.waiting, heart.language, heart.options, heart.store, heart.state, heart.link, heart.forms,
            heart.rs232, heart.ethernet, heart.exchange, heart.end, Holds(m_commandLine, "&")});
    m_terminal->Load();
}

MessageForm* DesktopProgram::loadMessages()
{
    if (!m_messages) {
        m_messages = std::make_unique<frmMessages>(
            MessagesServices{heart.progress, heart.waiting, heart.language, heart.options, heart.store, heart.controls,
                             heart.end, [this] { return m_options ? m_options->frameGeometry() : QRect(); }});
        m_messages->Load();
    }
    return m_messages.get();
}

JobForm* DesktopProgram::loadJobs()
{
    auto* panel = dynamic_cast<QWidget*>(heart.panels.At(heart.state.CurrentLogger));
    m_jobs = std::make_unique<frmDelJob>(
        DelJobServices{heart.progress, heart.language, heart.loading, heart.link.LinkDescription, panel});
    return m_jobs.get();
}

// On the hidden panel of `CurrentLogger`, as its button does; the program ends afterwards.
void DesktopProgram::loadProgram()
{
    if (LoggerPanel* panel = heart.panels.Create(heart.state.CurrentLogger))
        panel->Load();
    heart.state.RunMode = "IconProgram";
    LoadOnLogger(heart.panelServices(), heart.state.CurrentLogger);
}

// Over the panel whose logger it changes, or over the options. While one is open, or its test still ends, there is no
// second one.
void DesktopProgram::showAddDialog()
{
    ProgramState& state = heart.state;
    if (m_addDialog || state.TestRunning || heart.end.Ended()) {
        if (!state.AddDialogOpen)
            state.AddingLogger = state.AddRebuildPending = state.NewLoggerMode = state.EditingExisting = false;
        return;
    }
    QWidget* owner = m_options.get();
    if (state.EditingExisting)
        owner = dynamic_cast<frmTallyCores*>(heart.panels.At(state.CurrentLogger));
    m_addDialog = new frmAddTallyCore(AddServicesOf(heart), owner);
    m_addDialog->exec();
    delete m_addDialog; // gone already if the owner is
}

} // namespace harvelop
