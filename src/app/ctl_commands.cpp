#include "app/ctl_commands.h"

#include "app/ctl_check.h"
#include "app/ctl_completion.h"
#include "app/ctl_edits.h"
#include "app/ctl_json.h"
#include "app/ctl_language.h"
#include "app/ctl_links.h"
#include "app/ctl_lists.h"
#include "app/ctl_loggers.h"
#include "app/ctl_output.h"
#include "app/ctl_programs.h"
#include "app/ctl_servers.h"
#include "app/ctl_settings.h"
#include "app/ctl_talk.h"
#include "app/ctl_upkeep.h"
#include "app/start_up.h"
#include "identify/headless_panel.h"

#include <algorithm>
#include <array>
#include <sstream>

namespace harvelop
{

namespace
{

int find(Program& p, Console& console, const CtlCommand& command, std::ostream& out)
{
    ConsoleMessages messages(console);
    p.forms.loadMessages = [&]() -> MessageForm* { return &messages; };
    HeadlessPanels panels(p.panelServices());

    if (!LoggersReadable(p, console))
        return CtlFailed;
    LoadSettings(p);
    if (p.end.Ended())
        return CtlFailed;
    if (!HasOptions(p)) { // which would have been made; a long search that keeps nothing helps nobody
        const std::string directory = p.state.AppPath.substr(0, p.state.AppPath.size() - 1);
        console.Line("Nothing can be kept in " + directory + ". Name another directory with --dir.");
        return CtlFailed;
    }
    TakeListedPorts(p);
    p.viewing.RebuildList();
    p.state.cbxUnload_TallyCores.Select(0);
    p.state.cbxUnload_Ports.SetText(command.port ? " Com " + std::to_string(*command.port) : std::string(AllPorts));
    p.portSearch.cmdUnload_FindTallycores_Click();
    console.EndProgressLine();
    p.forms.loadMessages = nullptr;
    if (p.search.FoundCount == 0)
        return CtlFailed;
    out << (command.json ? LoggersAsJson(p.tables) : LoggersAsTable(p.tables));
    return p.records.Saved() ? CtlDone : CtlFailed;
}

int list(Program& p, Console& console, const CtlCommand& command, std::ostream& out)
{
    if (!LoadLoggers(p, console))
        return CtlFailed;
    p.viewing.RebuildList(); // fills in what a list shows of a logger
    out << (command.json ? LoggersAsJson(p.tables) : LoggersAsTable(p.tables));
    return CtlDone;
}

int show(Program& p, Console& console, const CtlCommand& command, std::ostream& out)
{
    if (!LoadLogger(p, console, command.number))
        return CtlFailed;
    const LoggerRecord& record = *p.tables.Record(command.number);
    out << (command.json ? LoggerAsJson(record, command.number) : LoggerAsText(record));
    return CtlDone;
}

int ports(Program& p, const CtlCommand& command, std::ostream& out)
{
    p.rs232.FindComPorts();
    ordered_json all = ordered_json::array();
    for (int port = 1; port <= ComPorts; ++port) {
        if (!p.link.PortAvailable[static_cast<size_t>(port - 1)])
            continue;
        const std::string device = p.rs232.MSComm1.DeviceName(port);
        all.push_back({{"port", port}, {"device", device}});
        if (!command.json)
            out << port << "  " << device << "\n";
    }
    if (command.json)
        out << JsonText(all);
    return p.options.AvailablePorts.empty() ? CtlFailed : CtlDone;
}

int run(Program& program, Console& console, const CtlCommand& command, std::ostream& out, LineInput* input)
{
    switch (command.verb) {
    case CtlCommand::Verb::Find:
        return find(program, console, command, out);
    case CtlCommand::Verb::List:
        return list(program, console, command, out);
    case CtlCommand::Verb::Show:
        return show(program, console, command, out);
    case CtlCommand::Verb::Set:
        return SetFields(program, console, command, out);
    case CtlCommand::Verb::Lists:
        return WorkOnLists(program, console, command, out);
    case CtlCommand::Verb::Ports:
        return ports(program, command, out);
    case CtlCommand::Verb::Add:
        return AddLogger(program, console, command, out);
    case CtlCommand::Verb::Test:
        return TestLogger(program, console, command, out);
    case CtlCommand::Verb::Connect:
        return ReachLogger(program, console, command, out);
    case CtlCommand::Verb::Send:
        return SendLine(program, console, command, out);
    case CtlCommand::Verb::Terminal:
        return input ? TalkToLogger(program, console, command, out, *input) : CtlUsageError;
    case CtlCommand::Verb::Load:
        return LoadFile(program, console, command);
    case CtlCommand::Verb::Jobs:
        return ListJobs(program, console, command, out);
    case CtlCommand::Verb::Clear:
        return ClearLogger(program, console, command);
    case CtlCommand::Verb::TestSMTP:
        return TestSMTPLogin(program, console);
    case CtlCommand::Verb::TestFTP:
        return TestFTPLogin(program, console);
    case CtlCommand::Verb::Options:
        return WorkOnOptions(program, console, command, out);
    case CtlCommand::Verb::Delete:
        return DeleteStored(program, console, command);
    case CtlCommand::Verb::Unload:
        return StartUnload(program, console, command);
    case CtlCommand::Verb::Shortcut:
        return MakeShortcut(program, console, command);
    case CtlCommand::Verb::Check:
        return CheckDirectory(program, command, out);
    case CtlCommand::Verb::Completion:
        out << CompletionScript(command.text);
        return CtlDone;
    case CtlCommand::Verb::LanguageTemplate:
        return WriteLanguageTemplate(out);
    case CtlCommand::Verb::LanguageCheck:
        return CheckLanguageFile(program, console, command, out);
    case CtlCommand::Verb::Help:
        out << CtlUsage();
        return CtlDone;
    case CtlCommand::Verb::Version:
        out << "harvelctl " HARVELOP_VERSION "\n";
        return CtlDone;
    }
    return CtlUsageError;
}

} // namespace

int RunCtlCommand(Program& program, Console& console, const CtlCommand& command, const std::string& directory,
                  std::ostream& out, LineInput* input)
{
    SetAppPath(program, directory);
    if (!command.json)
        return run(program, console, command, out, input);
    const BoxKeeper keeper(program.dialogs, console);
    std::ostringstream shown;
    // The terminal prints each line as it comes.
    const int code = run(program, console, command, command.verb == CtlCommand::Verb::Terminal ? out : shown, input);
    PrintJson(command, console, code == CtlDone && !program.end.Ended(), shown.str(), out);
    return code;
}

bool ReachesLoggers(CtlCommand::Verb verb)
{
    using enum CtlCommand::Verb;
    constexpr std::array<CtlCommand::Verb, 10> Reaching = {Find, Test, Connect, Send,     Terminal,
                                                           Load, Jobs, Clear,   TestSMTP, TestFTP};
    return std::find(Reaching.begin(), Reaching.end(), verb) != Reaching.end();
}

void InterruptCtl(Program& program)
{
    program.connecting.ReleaseLink(); // before the end, behind which no byte leaves
    program.end.EndProgram(CtlFailed);
}

} // namespace harvelop
