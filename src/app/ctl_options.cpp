#include "app/ctl_options.h"

#include "app/ctl_verbs.h"
#include "core/text_numbers.h"
#include "links/link_state.h"
#include "loading/clearing.h"
#include "settings/delivery_lists.h"

#include <algorithm>
#include <array>

namespace harvelop
{

namespace
{

using Verb = CtlCommand::Verb;
using Error = ArgumentError;
using Path = CtlOption::Path;

template <auto member> Error setFlag(CtlCommand& command, const std::string&)
{
    command.*member = true;
    return {};
}

template <auto member> Error takeText(CtlCommand& command, const std::string& value)
{
    command.*member = value;
    return {};
}

template <ListEdit::Kind kind> Error addListEdit(CtlCommand& command, const std::string& value)
{
    command.listEdits.push_back({kind, value});
    return {};
}

template <CtlCommand::Target target> Error aim(CtlCommand& command, const std::string&)
{
    command.target = target;
    return {};
}

constexpr const char* AllJobs = "DIRJOBS"; // stands for all jobs in a logger's list

Error aimAtJobs(CtlCommand& command, const std::string&)
{
    command.job = AllJobs;
    return aim<CtlCommand::Target::Job>(command, {});
}

Error aimAtJob(CtlCommand& command, const std::string& value)
{
    if (!command.job.empty() && command.job != AllJobs)
        return "--job wants one job";
    command.job = PlainJobName(value);
    if (command.job == AllJobs)
        return "--job DIRJOBS would be all jobs; --all-jobs deletes them";
    return command.job.empty() ? Error("--job wants a job's name") : aim<CtlCommand::Target::Job>(command, {});
}

template <auto member> CtlOption::Apply takePath(std::string_view wrong)
{
    return [wrong](CtlCommand& command, const std::string& value) {
        command.*member = value;
        return value.empty() ? Error(wrong) : Error();
    };
}

Error takePort(CtlCommand& command, const std::string& value)
{
    command.port = NumberIn(value, 1, ComPorts);
    return command.port ? Error() : Error("--port wants a number from 1 to 16");
}

// A line end would end the argument that the shortcut hands over.
Error takeIconCommand(CtlCommand& command, const std::string& value)
{
    command.icon.IconKind = "Command";
    command.icon.IconCommand = value;
    const bool fits = !value.empty() && value.find_first_of("\r\n") == std::string::npos;
    return fits ? Error() : Error("--command wants one line to send");
}

Error stayInTerminal(CtlCommand& command, const std::string&)
{
    command.icon.IconTerminalMark = "%";
    return {};
}

Error takeIconName(CtlCommand& command, const std::string& value)
{
    command.icon.IconName = value;
    return {};
}

std::vector<std::string> scheduleKeys()
{
    const std::string all = ScheduleKeysOf("KR4");
    std::vector<std::string> keys;
    keys.reserve(all.size());
    for (const char key : all)
        keys.emplace_back(1, key);
    return keys;
}

// All but those whose result is a text in a form of its own.
std::vector<Verb> verbsWithJson()
{
    std::vector<Verb> verbs;
    for (const CtlVerb& row : CtlVerbs())
        if (row.verb != Verb::LanguageTemplate && row.verb != Verb::Completion)
            verbs.push_back(row.verb);
    return verbs;
}

std::vector<CtlOption> allOptions()
{
    using enum CtlCommand::Verb;
    const std::vector<Verb> reaching = {Find, Test, Connect, Send, Terminal, Load, Jobs, Clear, TestSMTP, TestFTP};
    std::vector<CtlOption> rows = {
        {"--dir", {}, true, takePath<&CtlCommand::directory>("--dir wants a directory"), {}, {}, Path::Directory},
        {"--json", verbsWithJson(), false, setFlag<&CtlCommand::json>},
        {"--trace", reaching, true, takePath<&CtlCommand::trace>("--trace wants a file"), {}, {}, Path::File},
        {"--port", {Find}, true, takePort, {}, NumbersTo(ComPorts)},
        {"--all", {Find}, false, [](CtlCommand&, const std::string&) { return Error(); }},
        {"--yes", {Find, Lists, Delete, Load, Clear}, false, setFlag<&CtlCommand::yes>},
        {"--password", {Find, Add}, true, takeText<&CtlCommand::password>},
        {"--schedule", {Lists}, true, takeText<&CtlCommand::schedule>, {}, scheduleKeys()},
        {"--description", {Lists}, true, addListEdit<ListEdit::Kind::Description>},
        {"--add", {Lists}, true, addListEdit<ListEdit::Kind::Add>},
        {"--remove", {Lists}, true, addListEdit<ListEdit::Kind::Remove>},
        {"--clear", {Lists}, false, addListEdit<ListEdit::Kind::Clear>},
        {"--delete-all", {Lists}, false, setFlag<&CtlCommand::deleteAll>},
        {"--name", {Shortcut}, true, takeIconName},
        {"--command", {Shortcut}, true, takeIconCommand},
        {"--terminal", {Shortcut}, false, stayInTerminal},
        {"--job", {Clear}, true, aimAtJob},
        {"--all-jobs", {Clear}, false, aimAtJobs},
        {"--programs", {Clear}, false, aim<CtlCommand::Target::Memory>},
        {"--card", {Load, Clear}, false, aim<CtlCommand::Target::Card>},
        {"--flash", {Load, Clear}, false, aim<CtlCommand::Target::Flash>},
    };
    const std::vector<CtlOption> add = AddOptions();
    rows.insert(rows.end(), add.begin(), add.end());
    return rows;
}

Error wrongLists(const CtlCommand& command)
{
    const bool more = command.schedule || !command.listEdits.empty();
    return command.deleteAll && more ? "--delete-all goes with --yes alone" : "";
}

template <typename Has> Error wrongTarget(const CtlCommand& command, Has has)
{
    constexpr std::array<std::string_view, 5> Targets = {"--job", "--all-jobs", "--programs", "--card", "--flash"};
    const auto first = std::find_if(Targets.begin(), Targets.end(), has);
    if (first == Targets.end())
        return command.verb == Verb::Clear ? "clear wants one of --job, --all-jobs, --programs, --card, --flash" : "";
    const auto second = std::find_if(std::next(first), Targets.end(), has);
    return second == Targets.end() ? Error()
                                   : std::string(*first) + " and " + std::string(*second) + " exclude each other";
}

} // namespace

std::optional<int> NumberIn(const std::string& word, int first, int last)
{
    const bool digits =
        !word.empty() && std::all_of(word.begin(), word.end(), [](char c) { return c >= '0' && c <= '9'; });
    const auto number = digits ? ToInt16(word) : std::nullopt;
    return number && *number >= first && *number <= last ? std::optional<int>(*number) : std::nullopt;
}

std::vector<std::string> NumbersTo(int last)
{
    std::vector<std::string> numbers;
    numbers.reserve(static_cast<size_t>(last));
    for (int number = 1; number <= last; ++number)
        numbers.push_back(std::to_string(number));
    return numbers;
}

bool GoesWith(const CtlOption& option, CtlCommand::Verb verb)
{
    return option.verbs.empty() || std::ranges::find(option.verbs, verb) != option.verbs.end();
}

const std::vector<CtlOption>& CtlOptions()
{
    static const std::vector<CtlOption> rows = allOptions();
    return rows;
}

Error WrongTogether(const CtlCommand& command, const std::string& verb, const std::vector<const CtlOption*>& used)
{
    const auto has = [&used](std::string_view word) {
        return std::any_of(used.begin(), used.end(), [word](const CtlOption* option) { return option->word == word; });
    };
    for (const CtlOption* option : used)
        if (!GoesWith(*option, command.verb))
            return std::string(option->word) + " does not go with " + verb;
    if (has("--all") && command.port)
        return "--all and --port exclude each other";
    if (Error error = wrongTarget(command, has); !error.empty())
        return error;
    if (has("--terminal") && !has("--command"))
        return "--terminal goes with --command";
    return command.verb == Verb::Add ? WrongAdd(command, used) : wrongLists(command);
}

} // namespace harvelop
