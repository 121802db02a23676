#include "app/ctl_servers.h"

#include "app/ctl_commands.h"
#include "app/ctl_loggers.h"
#include "app/ctl_outcome.h"
#include "app/start_up.h"

namespace harvelop
{

namespace
{

template <typename Test> int logIn(Program& p, Console& console, Test& test)
{
    if (!HasOptions(p)) {
        console.Line("There is no file " + p.state.AppPath + "options.ini.");
        return CtlFailed;
    }
    if (!OptionsReadable(p, console))
        return CtlFailed;
    p.store.FindComPorts = nullptr;
    LoadSettings(p);
    if (p.end.Ended())
        return CtlFailed;
    ConsoleMessages messages(console);
    p.forms.loadMessages = [&]() -> MessageForm* { return &messages; };
    const Outcome outcome(p.dialogs);
    p.progress.ShowMessageForm(); // in the window the caption of the options panel tells the steps
    test.TestByUser();
    console.EndProgressLine();
    return outcome.Done() ? CtlDone : CtlFailed;
}

} // namespace

int TestSMTPLogin(Program& program, Console& console)
{
    return logIn(program, console, program.smtpTest);
}

int TestFTPLogin(Program& program, Console& console)
{
    return logIn(program, console, program.ftpTest);
}

} // namespace harvelop
