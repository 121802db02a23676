#include "app/desktop_program.h"

#include "app/exit_paths.h"
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
}

DesktopProgram::~DesktopProgram() = default;

void DesktopProgram::Start(const std::string& commandLine)
{
    StartUpHooks hooks;
    hooks.showOptions = [this] { showOptions(); };
    hooks.loadOptions = [this] { loadedOptions(); };
    hooks.say = [](const std::string& line) { std::cerr << "harvelop: " << line << std::endl; };
    StartUp(heart, hooks).Run(commandLine);
}

frmOptions& DesktopProgram::loadedOptions()
{
    if (!m_options) {
        m_options = std::make_unique<frmOptions>(OptionsServices{
            heart.essentials(), heart.options, heart.state, heart.store, heart.tables, heart.panels, heart.link,
            heart.rs232, heart.portSearch, heart.viewing, heart.controls, heart.forms, heart.desktop, heart.end});
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

} // namespace harvelop
