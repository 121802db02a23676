#include "app/ctl_arguments.h"

#include "core/text_numbers.h"
#include "links/link_state.h"
#include "settings/logger_record.h"

#include <algorithm>
#include <array>
#include <functional>

namespace harvelop
{

namespace
{

using Verb = CtlCommand::Verb;
using Error = std::string; // empty: none

struct VerbRow {
    std::string_view word;
    Verb verb;
    bool takesNumber = false; // of a logger
    bool takesFields = false; // and FIELD=VALUE behind it, at least once
};

constexpr std::array<VerbRow, 6> Verbs = {{{"find", Verb::Find},
                                           {"list", Verb::List},
                                           {"show", Verb::Show, true},
                                           {"set", Verb::Set, true, true},
                                           {"lists", Verb::Lists, true},
                                           {"ports", Verb::Ports}}};

// A whole number in a range, written in digits only.
std::optional<int> numberIn(const std::string& word, int first, int last)
{
    const bool digits =
        !word.empty() && std::all_of(word.begin(), word.end(), [](char c) { return c >= '0' && c <= '9'; });
    const auto number = digits ? ToInt16(word) : std::nullopt;
    return number && *number >= first && *number <= last ? std::optional<int>(*number) : std::nullopt;
}

struct OptionRow {
    std::string_view word;
    std::vector<Verb> verbs; // none: goes with every command
    bool takesValue;
    std::function<Error(CtlCommand&, const std::string& value)> apply;
};

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

const std::vector<OptionRow>& options()
{
    static const std::vector<OptionRow> rows = {
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
             command.port = numberIn(value, 1, ComPorts);
             return command.port ? Error() : Error("--port wants a number from 1 to 16");
         }},
        {"--all", {Verb::Find}, false, [](CtlCommand&, const std::string&) { return Error(); }},
        {"--yes", {Verb::Find, Verb::Lists}, false, setFlag<&CtlCommand::yes>},
        {"--password", {Verb::Find}, true, takeText<&CtlCommand::password>},
        {"--json", {Verb::List, Verb::Show, Verb::Lists}, false, setFlag<&CtlCommand::json>},
        {"--schedule", {Verb::Lists}, true, takeText<&CtlCommand::schedule>},
        {"--description", {Verb::Lists}, true, addListEdit<ListEdit::Kind::Description>},
        {"--add", {Verb::Lists}, true, addListEdit<ListEdit::Kind::Add>},
        {"--remove", {Verb::Lists}, true, addListEdit<ListEdit::Kind::Remove>},
        {"--clear", {Verb::Lists}, false, addListEdit<ListEdit::Kind::Clear>},
        {"--delete-all", {Verb::Lists}, false, setFlag<&CtlCommand::deleteAll>},
    };
    return rows;
}

bool isOption(const std::string& word)
{
    return word.size() > 1 && word[0] == '-';
}

// Takes the option at `position`, which moves to its last word.
Error takeOption(const std::vector<std::string>& words, size_t& position, CtlCommand& command,
                 std::vector<const OptionRow*>& used)
{
    const std::string& word = words[position];
    const size_t equals = word.find('=');
    const std::string name = word.substr(0, equals);
    const auto& rows = options();
    const auto row = std::find_if(rows.begin(), rows.end(), [&](const OptionRow& r) { return r.word == name; });
    if (row == rows.end())
        return "there is no option " + name;
    if (!row->takesValue && equals != std::string::npos)
        return name + " takes no value";
    std::string value;
    if (row->takesValue) {
        if (equals != std::string::npos)
            value = word.substr(equals + 1);
        else if (position + 1 < words.size())
            value = words[++position];
        else
            return name + " wants a value";
    }
    used.push_back(&*row);
    return row->apply(command, value);
}

Error takeFields(const std::vector<std::string>& words, CtlCommand& command)
{
    for (const std::string& word : words) {
        const size_t equals = word.find('=');
        if (equals == std::string::npos || equals == 0)
            return "set wants each change as FIELD=VALUE";
        command.edits.push_back({word.substr(0, equals), word.substr(equals + 1)});
    }
    return words.empty() ? Error("set wants at least one FIELD=VALUE") : Error();
}

// Only the command's own word is told back: what stands behind it may be somebody's password.
Error takeWords(const std::vector<std::string>& plain, CtlCommand& command)
{
    if (plain.empty())
        return "a command is missing";
    const auto row = std::find_if(Verbs.begin(), Verbs.end(), [&](const VerbRow& r) { return r.word == plain[0]; });
    if (row == Verbs.end())
        return "there is no command " + plain[0];
    command.verb = row->verb;
    const size_t wanted = row->takesNumber ? 2 : 1;
    if (plain.size() > wanted && !row->takesFields)
        return "there is a word too many behind " + plain[0];
    if (!row->takesNumber)
        return {};
    const auto number = plain.size() >= wanted ? numberIn(plain[1], 1, MaxLoggers) : std::nullopt;
    command.number = number.value_or(0);
    if (!number)
        return plain[0] + " wants a logger's number, from 1 to 50";
    return row->takesFields ? takeFields({plain.begin() + 2, plain.end()}, command) : Error();
}

// What of the options of `lists` excludes each other.
Error excluded(const CtlCommand& command)
{
    if (command.deleteAll && (command.schedule || command.json || !command.listEdits.empty()))
        return "--delete-all goes with --yes alone";
    if (command.json && !command.listEdits.empty())
        return "--json shows the lists and goes with no change of them";
    return {};
}

} // namespace

std::variant<CtlCommand, std::string> ParseCtlArguments(const std::vector<std::string>& words)
{
    CtlCommand command;
    std::vector<std::string> plain;
    std::vector<const OptionRow*> used;
    for (size_t i = 0; i < words.size(); ++i) {
        if (words[i] == "--help" || words[i] == "-h" || words[i] == "--version") {
            command.verb = words[i] == "--version" ? Verb::Version : Verb::Help;
            return command;
        }
        if (!isOption(words[i])) {
            plain.push_back(words[i]);
        } else if (const Error error = takeOption(words, i, command, used); !error.empty()) {
            return error;
        }
    }
    if (const Error error = takeWords(plain, command); !error.empty())
        return error;
    bool all = false;
    for (const OptionRow* row : used) {
        all = all || row->word == "--all";
        if (!row->verbs.empty() && std::find(row->verbs.begin(), row->verbs.end(), command.verb) == row->verbs.end())
            return std::string(row->word) + " does not go with " + plain[0];
    }
    if (all && command.port)
        return std::string("--all and --port exclude each other");
    if (const Error error = excluded(command); !error.empty())
        return error;
    return command;
}

std::string CtlUsage()
{
    return R"(Usage: harvelctl [--dir DIR] COMMAND

  find [--port N | --all] [--yes] [--password TEXT]
                   search the com ports for loggers and store what is found;
                   --yes replaces stored loggers without asking,
                   --password answers when a logger wants a password
  list [--json]    the stored loggers
  show N [--json]  all fields of logger N
  set N FIELD=VALUE...
                   change fields of logger N by the rules of its panel, in this
                   order, all or none; FIELD as "show" names it: ScheduleOn.A
  lists N [--schedule KEY] [--json]
                   to which addresses the data of logger N go, by schedule;
                   KEY is a schedule's letter, or 0 for the list of all
  lists N [--schedule KEY] [--description TEXT] [--clear]
          [--remove ADDRESS] [--add ADDRESS]
                   change one list, that of all schedules without --schedule;
                   each change can be given several times; they are made in
                   the order given, all or none; --clear removes all addresses
  lists N --delete-all [--yes]
                   remove all addresses and descriptions of logger N;
                   --yes does so without asking
  ports            the com ports of this machine

  --dir DIR        the application directory (the current one)
  --help, --version

Results go to standard output, progress to standard error.
Exit codes: 0 done, 1 nothing found, refused or failed, 2 wrong usage.
)";
}

} // namespace harvelop
