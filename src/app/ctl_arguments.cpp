#include "app/ctl_arguments.h"

#include "app/ctl_options.h"
#include "settings/logger_record.h"

#include <algorithm>
#include <array>

namespace harvelop
{

namespace
{

using Verb = CtlCommand::Verb;
using Error = ArgumentError;

enum class Takes { Nothing, Number, NumberAndFields, NumberAndText, NumberAndFile };

struct VerbRow {
    std::string_view word;
    Verb verb;
    Takes takes = Takes::Nothing;
};

constexpr std::array<VerbRow, 16> Verbs = {{{"find", Verb::Find},
                                            {"list", Verb::List},
                                            {"show", Verb::Show, Takes::Number},
                                            {"set", Verb::Set, Takes::NumberAndFields},
                                            {"lists", Verb::Lists, Takes::Number},
                                            {"ports", Verb::Ports},
                                            {"add", Verb::Add},
                                            {"test", Verb::Test, Takes::Number},
                                            {"connect", Verb::Connect, Takes::Number},
                                            {"send", Verb::Send, Takes::NumberAndText},
                                            {"terminal", Verb::Terminal, Takes::Number},
                                            {"load", Verb::Load, Takes::NumberAndFile},
                                            {"jobs", Verb::Jobs, Takes::Number},
                                            {"clear", Verb::Clear, Takes::Number},
                                            {"test-smtp", Verb::TestSMTP},
                                            {"test-ftp", Verb::TestFTP}}};

bool isOption(const std::string& word)
{
    return word.size() > 1 && word[0] == '-';
}

const CtlOption* optionOf(const std::string& word)
{
    const std::string_view name = std::string_view(word).substr(0, word.find('='));
    const auto& rows = CtlOptions();
    const auto row = std::find_if(rows.begin(), rows.end(), [&](const CtlOption& r) { return r.word == name; });
    return row == rows.end() ? nullptr : &*row;
}

// What is sent may be a password, so it is not told back as an unknown option.
bool mayBeText(const std::string& word, const std::vector<std::string>& plain)
{
    return !plain.empty() && plain[0] == "send" && !optionOf(word);
}

// Takes the option at `position`, which moves to its last word.
Error takeOption(const std::vector<std::string>& words, size_t& position, CtlCommand& command,
                 std::vector<const CtlOption*>& used)
{
    const std::string& word = words[position];
    const size_t equals = word.find('=');
    const std::string name = word.substr(0, equals);
    const CtlOption* option = optionOf(word);
    if (!option)
        return "there is no option " + name;
    if (!option->takesValue && equals != std::string::npos)
        return name + " takes no value";
    std::string value;
    if (option->takesValue) {
        if (equals != std::string::npos)
            value = word.substr(equals + 1);
        else if (position + 1 < words.size())
            value = words[++position];
        else
            return name + " wants a value";
    }
    used.push_back(option);
    return option->apply(command, value);
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

// A line end within the text would send several lines.
Error takeTextToSend(const std::vector<std::string>& words, CtlCommand& command)
{
    if (words.size() != 1 || words[0].find_first_of("\r\n") != std::string::npos)
        return "send wants one TEXT of one line";
    command.text = words[0];
    return {};
}

Error takeFile(const std::vector<std::string>& words, CtlCommand& command)
{
    if (words.size() != 1 || words[0].empty())
        return "load wants one FILE";
    command.file = words[0];
    return {};
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
    const size_t wanted = row->takes == Takes::Nothing ? 1 : 2;
    if (plain.size() > wanted && (row->takes == Takes::Nothing || row->takes == Takes::Number))
        return "there is a word too many behind " + plain[0];
    if (row->takes == Takes::Nothing)
        return {};
    const auto number = plain.size() >= wanted ? NumberIn(plain[1], 1, MaxLoggers) : std::nullopt;
    command.number = number.value_or(0);
    if (!number)
        return plain[0] + " wants a logger's number, from 1 to 50";
    const std::vector<std::string> rest(plain.begin() + 2, plain.end());
    if (row->takes == Takes::NumberAndFields)
        return takeFields(rest, command);
    if (row->takes == Takes::NumberAndText)
        return takeTextToSend(rest, command);
    return row->takes == Takes::NumberAndFile ? takeFile(rest, command) : Error();
}

} // namespace

std::variant<CtlCommand, std::string> ParseCtlArguments(const std::vector<std::string>& words)
{
    CtlCommand command;
    std::vector<std::string> plain;
    std::vector<const CtlOption*> used;
    bool onlyPlain = false; // behind "--"
    for (size_t i = 0; i < words.size(); ++i) {
        if (onlyPlain || words[i] == "--") {
            if (onlyPlain)
                plain.push_back(words[i]);
            onlyPlain = true;
            continue;
        }
        if (words[i] == "--help" || words[i] == "-h" || words[i] == "--version") {
            command.verb = words[i] == "--version" ? Verb::Version : Verb::Help;
            return command;
        }
        if (!isOption(words[i])) {
            plain.push_back(words[i]);
        } else if (mayBeText(words[i], plain)) {
            return std::string("send wants a TEXT that begins with \"-\" behind \"--\"");
        } else if (const Error error = takeOption(words, i, command, used); !error.empty()) {
            return error;
        }
    }
    if (const Error error = takeWords(plain, command); !error.empty())
        return error;
    if (const Error error = WrongTogether(command, plain[0], used); !error.empty())
        return error;
    command.logger.password = command.password.value_or("");
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
  add --model M [--series S] [--serial S] [--password P] [--timeout S]
      (--com N [--baud B] [--parity P] [--data-bits D] [--stop-bits S]
       [--flow F] | --modem N --phone P [--baud B] [--init S] |
       --tcp HOST:PORT)
                   store a logger as the dialog does and print its number; a
                   modem's speed counts only once the logger is changed there
  test N           look for a logger where logger N is stored; stores nothing
  connect N        reach logger N, see whether it is the one, and release it
  send N TEXT      send a line to logger N and print its answer; a TEXT that
                   begins with "-" comes behind "--"
  terminal N       send the lines of standard input, print what comes in
  load N FILE [--card | --flash] [--yes]
                   send a program to the internal memory of logger N, to its
                   memory card or to its flash memory
  jobs N           the jobs of logger N, the running one with a star
  clear N (--job NAME | --all-jobs | --programs | --card | --flash) [--yes]
                   delete from logger N: a job or all jobs (models KR4...), the
                   programs in memory (other models), those on the card or in
                   flash memory
                   load and clear ask what the windows ask, such as before data
                   are lost; --yes answers every question with yes
  test-smtp, test-ftp
                   log in to the mail server, the FTP server of options.ini

  --dir DIR        the application directory (the current one)
  --help, --version

Results go to standard output, progress to standard error.
Exit codes: 0 done, 1 nothing found, refused or failed, 2 wrong usage.
)";
}

} // namespace harvelop
