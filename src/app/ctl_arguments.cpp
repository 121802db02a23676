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
};

constexpr std::array<VerbRow, 4> Verbs = {
    {{"find", Verb::Find}, {"list", Verb::List}, {"show", Verb::Show}, {"ports", Verb::Ports}}};

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
        {"--yes",
         {Verb::Find},
         false,
         [](CtlCommand& command, const std::string&) {
             command.yes = true;
             return Error();
         }},
        {"--password",
         {Verb::Find},
         true,
         [](CtlCommand& command, const std::string& value) {
             command.password = value;
             return Error();
         }},
        {"--json",
         {Verb::List, Verb::Show},
         false,
         [](CtlCommand& command, const std::string&) {
             command.json = true;
             return Error();
         }},
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

Error takeWords(const std::vector<std::string>& plain, CtlCommand& command)
{
    if (plain.empty())
        return "a command is missing";
    const auto row = std::find_if(Verbs.begin(), Verbs.end(), [&](const VerbRow& r) { return r.word == plain[0]; });
    if (row == Verbs.end())
        return "there is no command " + plain[0];
    command.verb = row->verb;
    const size_t wanted = command.verb == Verb::Show ? 2 : 1;
    if (plain.size() > wanted)
        return "\"" + plain[wanted] + "\" is one word too many";
    if (command.verb != Verb::Show)
        return {};
    const auto number = plain.size() == wanted ? numberIn(plain[1], 1, MaxLoggers) : std::nullopt;
    command.number = number.value_or(0);
    return number ? Error() : Error("show wants a logger's number, from 1 to 50");
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
  ports            the com ports of this machine

  --dir DIR        the application directory (the current one)
  --help, --version

Results go to standard output, progress to standard error.
Exit codes: 0 done, 1 nothing found or failed, 2 wrong usage.
)";
}

} // namespace harvelop
