#include "app/send_text.h"

#include "settings/message_texts.h"

namespace harvelop
{

namespace
{

void tellSent(Program& program, const std::string& text)
{
    const LanguageTables& language = program.language;
    program.progress.ShowProgressText(language.Text(303));
    if (!text.empty() && program.options.ShowMessages) {
        program.progress.HideMessageForm();
        program.dialogs.Show({language.Text(560) + ".     ", " " + language.Text(503), BoxIcon::Information});
    }
    program.waiting.WaitMs(1000);
}

} // namespace

void SendText(Program& program, const Launch& launch, const std::function<void()>& showTerminal)
{
    ProgramState& state = program.state;
    if (launch.inTerminal) {
        state.TerminalOnly = state.TerminalStarting = true;
        showTerminal();
        state.TerminalStarting = false;
    }
    state.QuietConnect = launch.inTerminal;
    program.actions.ConnectLogger(state.CurrentLogger);
    state.QuietConnect = false;
    program.progress.ShowProgressText(program.language.Text(302) + " ...");
    program.waiting.WaitMs(1000);
    if (!launch.text.empty())
        program.exchange.SendToLogger(launch.text);
    if (launch.tellsSent)
        tellSent(program, launch.text);
    if (launch.inTerminal)
        return;
    program.connecting.ReleaseLink();
    program.store.SaveOptions();
    program.end.EndProgram();
}

} // namespace harvelop
