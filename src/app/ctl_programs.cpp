#include "app/ctl_programs.h"

#include "app/ctl_commands.h"
#include "app/ctl_links.h"
#include "app/ctl_loggers.h"
#include "app/ctl_outcome.h"
#include "app/ctl_output.h"
#include "identify/model_descriptions.h"
#include "identify/panel_work.h"

#include <algorithm>
#include <functional>

namespace harvelop
{

namespace
{

using Verb = CtlCommand::Verb;
using Target = CtlCommand::Target;
using Work = std::function<void()>;

// What a panel has no button for, or only one that is disabled, by the family of its logger.
struct Refusal {
    Verb verb;
    Target target;
    bool kr4;
    const char* reason;
};

constexpr Refusal Refusals[] = {
    {Verb::Jobs, Target::Memory, false, "keeps no jobs"},
    {Verb::Clear, Target::Job, false, "keeps no jobs; --programs deletes what it runs"},
    {Verb::Clear, Target::Memory, true, "keeps its programs as jobs; --job and --all-jobs delete them"},
    {Verb::Clear, Target::Card, true, "keeps its card as its memory by itself"},
    {Verb::Load, Target::Card, true, "keeps its card as its memory by itself"},
};

// Empty if the panel would let the user do it.
std::string reasonAgainst(const CtlCommand& command, const std::string& model)
{
    if (command.target == Target::Flash)
        return DescribeModel(model, "", false).flashEnabled.value_or(true) ? "" : "has no flash memory";
    for (const Refusal& row : Refusals)
        if (row.verb == command.verb && row.target == command.target && row.kr4 == IsKR4(model))
            return row.reason;
    return {};
}

bool takeLogger(Program& p, Console& console, const CtlCommand& command)
{
    if (!LoadLogger(p, console, command.number))
        return false;
    const std::string& model = p.tables.Record(command.number)->LoggerModel;
    const std::string reason = reasonAgainst(command, model);
    if (reason.empty())
        return TakeLogger(p, console, command.number);
    console.Line("A " + model + " " + reason + ".");
    return false;
}

bool fileReadable(Program& p, Console& console, const std::string& path)
{
    const FileState state = p.files.Read(path).state;
    if (state != FileState::Read)
        console.Line(state == FileState::NotFound ? "There is no file " + path + "."
                                                  : "The file " + path + " can't be read.");
    return state == FileState::Read;
}

// Picks the job that the command names.
class NamedJob : public JobForm
{
public:
    NamedJob(Program& program, Console& console, const CtlCommand& command)
        : m_program(program), m_console(console), m_command(command)
    {
        m_program.forms.loadJobs = [this] { return this; };
    }
    ~NamedJob() override { m_program.forms.loadJobs = nullptr; }
    NamedJob(const NamedJob&) = delete;
    NamedJob& operator=(const NamedJob&) = delete;

    void Show(const std::vector<std::string>& jobs) override
    {
        const std::string& wanted = m_command.job;
        const bool listed =
            std::ranges::any_of(jobs, [&](const std::string& job) { return PlainJobName(job) == wanted; });
        if (!listed)
            m_console.Line("Logger " + std::to_string(m_command.number) + " lists no job " + Printable(wanted) + ".");
        m_program.loading.JobDeleteConfirmed = listed;
        m_program.loading.ChosenJob = wanted;
    }
    bool IsVisible() const override { return false; }

private:
    Program& m_program;
    Console& m_console;
    const CtlCommand& m_command;
};

// Has a button pressed, which gets the work that it begins, and tells what the dialogues leave untold.
int press(Program& p, Console& console, const CtlCommand& command, const Work& work,
          const std::function<void(const Work&)>& button)
{
    ConsoleMessages messages(console);
    p.forms.loadMessages = [&]() -> MessageForm* { return &messages; };
    const Outcome outcome(p.dialogs);
    bool stood = false;
    button([&] {
        work();
        stood = LinkStands(p);
    });
    console.EndProgressLine();
    if (p.end.Ended())
        return CtlFailed;
    if (!p.link.LinkConnected)
        return NotReached(console, command.number);
    if (outcome.Failed())
        return CtlFailed;
    if (!outcome.Done()) {
        console.Line("No confirmation came from logger " + std::to_string(command.number) + ".");
        return CtlFailed;
    }
    // A logger that was reset may take its link along.
    return stood || command.target == Target::Flash ? CtlDone : LinkLost(console, command.number);
}

} // namespace

int LoadFile(Program& program, Console& console, const CtlCommand& command)
{
    Program& p = program;
    if (!fileReadable(p, console, command.file) || !takeLogger(p, console, command))
        return CtlFailed;
    const Work& load = command.target == Target::Card    ? p.actions.LoadCardProgram
                       : command.target == Target::Flash ? p.actions.LoadFlashProgram
                                                         : p.actions.LoadProgram;
    return press(p, console, command, load,
                 [&](const Work& work) { RunOnLogger(p.panelServices(), command.number, work); });
}

int ListJobs(Program& program, Console& console, const CtlCommand& command, std::ostream& out)
{
    Program& p = program;
    if (!takeLogger(p, console, command))
        return CtlFailed;
    ConsoleMessages messages(console);
    p.forms.loadMessages = [&]() -> MessageForm* { return &messages; };
    p.connecting.ConnectLogger(command.number);
    const bool reached = p.link.LinkConnected;
    if (reached) {
        p.progress.ShowProgressText(p.language.Text(343) + " ...");
        p.clearing.GetJobList();
    }
    const bool stood = LinkStands(p);
    p.connecting.ReleaseLink();
    console.EndProgressLine();
    if (p.end.Ended())
        return CtlFailed;
    if (!reached)
        return NotReached(console, command.number);
    if (!stood)
        return LinkLost(console, command.number);
    int entry = 1;
    for (; !p.loading.JobList.Get(entry).empty(); ++entry) {
        const std::string job = p.loading.JobList.Get(entry);
        out << (command.json ? job : Printable(job)) << "\n"; // JSON escapes by itself
    }
    if (entry > 1)
        return CtlDone;
    console.Line("Logger " + std::to_string(command.number) + " lists no jobs.");
    return CtlFailed;
}

int ClearLogger(Program& program, Console& console, const CtlCommand& command)
{
    Program& p = program;
    if (!takeLogger(p, console, command))
        return CtlFailed;
    const NamedJob chooser(p, console, command);
    const bool programs = command.target == Target::Memory || command.target == Target::Job;
    const Work& clear = programs                         ? p.actions.ClearPrograms
                        : command.target == Target::Card ? p.actions.ClearCardPrograms
                                                         : p.actions.ClearFlash;
    const int code = press(p, console, command, clear,
                           [&](const Work& work) { ClearOnLogger(p.panelServices(), command.number, work, programs); });
    // That there was no such job, or none at all, is told as information.
    return command.target == Target::Job && !p.loading.JobDeleteConfirmed ? CtlFailed : code;
}

} // namespace harvelop
