#include "app/ctl_options.h"

#include "core/text_lines.h"
#include "core/text_numbers.h"
#include "links/link_state.h"
#include "loading/clearing.h"

#include <algorithm>
#include <array>

namespace harvelop
{

namespace
{

using Verb = CtlCommand::Verb;
using Error = ArgumentError;
using Apply = std::function<Error(CtlCommand&, const std::string&)>;

constexpr std::string_view Serial = "RS232";
constexpr std::string_view Modem = "Dialup";
constexpr std::string_view Network = "Ethernet";

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

// One of the entries of the add dialog's list.
template <typename Entries> Apply oneOf(std::string AddValues::*field, std::string_view option, const Entries& entries)
{
    return [field, option, &entries](CtlCommand& command, const std::string& value) -> Error {
        command.logger.*field = value;
        if (std::find(entries.begin(), entries.end(), value) != entries.end())
            return {};
        std::string accepted;
        for (const std::string_view entry : entries)
            accepted.append(accepted.empty() ? "" : ", ").append(entry);
        return std::string(option) + " wants one of " + accepted;
    };
}

// What storing would drop, of most fields and of those that may hold commas.
constexpr std::string_view NeverStored = ",\r\n";
constexpr std::string_view LineEnds = "\r\n";

Error wrongText(std::string_view option, const std::string& value, std::string_view dropped)
{
    if (value.find_first_of(dropped) == std::string::npos)
        return {};
    return std::string(option) + " can't hold " + (dropped == LineEnds ? "a line end" : "a comma or a line end");
}

Apply storable(std::string AddValues::*field, std::string_view option, std::string_view dropped)
{
    return [=](CtlCommand& command, const std::string& value) {
        command.logger.*field = value;
        return wrongText(option, value, dropped);
    };
}

Error takeBaud(CtlCommand& command, const std::string& value)
{
    command.logger.modemBaud = value;
    return oneOf(&AddValues::baud, "--baud", AddBauds)(command, value);
}

Error takeSeries(CtlCommand& command, const std::string& value)
{
    command.logger.series = "Series " + value;
    const bool known = std::find(AddSeries.begin(), AddSeries.end(), command.logger.series) != AddSeries.end();
    return known ? Error() : Error("--series wants one of 1, 2, 3");
}

Error takeTimeout(CtlCommand& command, const std::string& value)
{
    command.logger.timeout = value;
    const bool digits = value == KeepAllowed(value, TimeoutChars);
    return digits && !value.empty() ? Error() : Error("--timeout wants a number of seconds");
}

Apply takePort(std::string AddValues::*field, std::string_view option, std::string_view kind)
{
    return [=](CtlCommand& command, const std::string& value) -> Error {
        const auto port = NumberIn(value, 1, ComPorts);
        command.logger.kind = kind;
        command.logger.*field = std::to_string(port.value_or(0));
        return port ? Error() : std::string(option) + " wants a number from 1 to 16";
    };
}

// The record of a network logger is told by its first colon, so no host can hold one.
Error takeHost(CtlCommand& command, const std::string& value)
{
    constexpr std::string_view Digits = "0123456789";
    constexpr double HighestPort = 65535;
    const size_t colon = std::min(value.find(':'), value.size());
    const std::string port = value.substr(std::min(colon + 1, value.size()));
    const double number = port == KeepAllowed(port, Digits) ? ToDouble(port).value_or(0) : 0;
    command.logger.kind = Network;
    command.logger.address = value.substr(0, colon);
    command.logger.tcpPort = port;
    const bool host = colon > 0 && command.logger.address.find_first_of(", \t\r\n") == std::string::npos;
    return host && number >= 1 && number <= HighestPort ? Error()
                                                        : Error("--tcp wants HOST:PORT, with a port from 1 to 65535");
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

std::vector<CtlOption> addOptions()
{
    const std::vector<Verb> add = {Verb::Add};
    return {
        {"--model", add, true, oneOf(&AddValues::model, "--model", AddModels)},
        {"--series", add, true, takeSeries},
        {"--serial", add, true, storable(&AddValues::serial, "--serial", NeverStored)},
        {"--timeout", add, true, takeTimeout},
        {"--com", add, true, takePort(&AddValues::port, "--com", Serial), {Serial}},
        {"--baud", add, true, takeBaud, {Serial, Modem}},
        {"--parity", add, true, oneOf(&AddValues::parity, "--parity", AddParities), {Serial}},
        {"--data-bits", add, true, oneOf(&AddValues::dataBits, "--data-bits", AddDataBits), {Serial}},
        {"--stop-bits", add, true, oneOf(&AddValues::stopBits, "--stop-bits", AddStopBits), {Serial}},
        {"--flow", add, true, oneOf(&AddValues::flow, "--flow", AddFlows), {Serial}},
        {"--modem", add, true, takePort(&AddValues::modemPort, "--modem", Modem), {Modem}},
        {"--phone", add, true, storable(&AddValues::phone, "--phone", LineEnds), {Modem}},
        {"--init", add, true, storable(&AddValues::init, "--init", LineEnds), {Modem}},
        {"--tcp", add, true, takeHost, {Network}},
    };
}

std::vector<CtlOption> allOptions()
{
    std::vector<CtlOption> rows = {
        {"--dir",
         {},
         true,
         [](CtlCommand& command, const std::string& value) {
             command.directory = value;
             return value.empty() ? Error("--dir wants a directory") : Error();
         }},
        {"--port",
         {Verb::Find},
         true,
         [](CtlCommand& command, const std::string& value) {
             command.port = NumberIn(value, 1, ComPorts);
             return command.port ? Error() : Error("--port wants a number from 1 to 16");
         }},
        {"--all", {Verb::Find}, false, [](CtlCommand&, const std::string&) { return Error(); }},
        {"--yes", {Verb::Find, Verb::Lists, Verb::Load, Verb::Clear}, false, setFlag<&CtlCommand::yes>},
        {"--password", {Verb::Find, Verb::Add}, true, takeText<&CtlCommand::password>},
        {"--json", {Verb::List, Verb::Show, Verb::Lists, Verb::LanguageCheck}, false, setFlag<&CtlCommand::json>},
        {"--trace",
         {Verb::Find, Verb::Test, Verb::Connect, Verb::Send, Verb::Terminal, Verb::Load, Verb::Jobs, Verb::Clear,
          Verb::TestSMTP, Verb::TestFTP},
         true,
         [](CtlCommand& command, const std::string& value) {
             command.trace = value;
             return value.empty() ? Error("--trace wants a file") : Error();
         }},
        {"--schedule", {Verb::Lists}, true, takeText<&CtlCommand::schedule>},
        {"--description", {Verb::Lists}, true, addListEdit<ListEdit::Kind::Description>},
        {"--add", {Verb::Lists}, true, addListEdit<ListEdit::Kind::Add>},
        {"--remove", {Verb::Lists}, true, addListEdit<ListEdit::Kind::Remove>},
        {"--clear", {Verb::Lists}, false, addListEdit<ListEdit::Kind::Clear>},
        {"--delete-all", {Verb::Lists}, false, setFlag<&CtlCommand::deleteAll>},
        {"--job", {Verb::Clear}, true, aimAtJob},
        {"--all-jobs", {Verb::Clear}, false, aimAtJobs},
        {"--programs", {Verb::Clear}, false, aim<CtlCommand::Target::Memory>},
        {"--card", {Verb::Load, Verb::Clear}, false, aim<CtlCommand::Target::Card>},
        {"--flash", {Verb::Load, Verb::Clear}, false, aim<CtlCommand::Target::Flash>},
    };
    const std::vector<CtlOption> add = addOptions();
    rows.insert(rows.end(), add.begin(), add.end());
    return rows;
}

Error wrongLists(const CtlCommand& command)
{
    if (command.deleteAll && (command.schedule || command.json || !command.listEdits.empty()))
        return "--delete-all goes with --yes alone";
    if (command.json && !command.listEdits.empty())
        return "--json shows the lists and goes with no change of them";
    return {};
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

template <typename Has> Error wrongAdd(const CtlCommand& command, const std::vector<const CtlOption*>& used, Has has)
{
    constexpr std::array<std::string_view, 3> Ways = {"--com", "--modem", "--tcp"};
    const auto ways = std::count_if(Ways.begin(), Ways.end(), has);
    if (!has("--model"))
        return "add wants a --model";
    if (ways != 1)
        return ways == 0 ? "add wants one of --com, --modem, --tcp" : "--com, --modem and --tcp exclude each other";
    const std::string& kind = command.logger.kind;
    for (const CtlOption* option : used)
        if (!option->links.empty() && std::ranges::find(option->links, kind) == option->links.end())
            return std::string(option->word) + " does not go with " + std::string(*std::ranges::find_if(Ways, has));
    if (kind == Modem && !has("--phone"))
        return "--modem wants a --phone";
    if (has("--series") && IsKR4(command.logger.model))
        return "a " + command.logger.model + " has no --series";
    return wrongText("--password", command.password.value_or(""), NeverStored);
}

} // namespace

std::optional<int> NumberIn(const std::string& word, int first, int last)
{
    const bool digits =
        !word.empty() && std::all_of(word.begin(), word.end(), [](char c) { return c >= '0' && c <= '9'; });
    const auto number = digits ? ToInt16(word) : std::nullopt;
    return number && *number >= first && *number <= last ? std::optional<int>(*number) : std::nullopt;
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
        if (!option->verbs.empty() && std::ranges::find(option->verbs, command.verb) == option->verbs.end())
            return std::string(option->word) + " does not go with " + verb;
    if (has("--all") && command.port)
        return "--all and --port exclude each other";
    if (Error error = wrongTarget(command, has); !error.empty())
        return error;
    return command.verb == Verb::Add ? wrongAdd(command, used, has) : wrongLists(command);
}

} // namespace harvelop
