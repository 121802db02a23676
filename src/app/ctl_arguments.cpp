#include "app/ctl_arguments.h"

#include "app/ctl_completion.h"
#include "app/ctl_options.h"
#include "app/ctl_verbs.h"
#include "settings/logger_record.h"

#include <algorithm>
#include <array>

namespace harvelop
{

namespace
{

using Verb = CtlCommand::Verb;
using Error = ArgumentError;

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

Error takeFields(const CtlVerb& row, const std::vector<std::string>& words, CtlCommand& command)
{
    for (const std::string& word : words) {
        const size_t equals = word.find('=');
        if (equals == std::string::npos || equals == 0)
            return std::string(row.word) + " wants each change as " +
                   (row.number == CtlVerb::Number::None ? "NAME=VALUE" : "FIELD=VALUE");
        command.edits.push_back({word.substr(0, equals), word.substr(equals + 1)});
    }
    const bool missing = words.empty() && row.rest == CtlVerb::Rest::Fields;
    return missing ? Error("set wants at least one FIELD=VALUE") : Error();
}

// A line end within the text would send several lines.
Error takeTextToSend(const std::vector<std::string>& words, CtlCommand& command)
{
    if (words.size() != 1 || words[0].find_first_of("\r\n") != std::string::npos)
        return "send wants one TEXT of one line";
    command.text = words[0];
    return {};
}

Error takeFile(const std::string& verb, const std::vector<std::string>& words, CtlCommand& command)
{
    if (words.size() != 1 || words[0].empty())
        return verb + " wants one FILE";
    command.file = words[0];
    return {};
}

Error takeShell(const std::vector<std::string>& words, CtlCommand& command)
{
    if (words.size() != 1 || std::ranges::find(CompletionShells, words[0]) == CompletionShells.end())
        return "completion wants one of bash, zsh, fish";
    command.text = words[0];
    return {};
}

// What stands behind the command's own word, and behind the logger's number if it takes one.
Error takeRest(const CtlVerb& row, const std::vector<std::string>& rest, CtlCommand& command)
{
    const std::string verb(row.word);
    switch (row.rest) {
    case CtlVerb::Rest::Fields:
    case CtlVerb::Rest::MayFields:
        return takeFields(row, rest, command);
    case CtlVerb::Rest::Text:
        return takeTextToSend(rest, command);
    case CtlVerb::Rest::File:
        return takeFile(verb, rest, command);
    case CtlVerb::Rest::Shell:
        return takeShell(rest, command);
    case CtlVerb::Rest::Nothing:
        break;
    }
    return rest.empty() ? Error() : "there is a word too many behind " + verb;
}

// Only the command's own word is told back: what stands behind it may be somebody's password.
Error takeWords(const std::vector<std::string>& plain, CtlCommand& command)
{
    if (plain.empty())
        return "a command is missing";
    const CtlVerb* row = CtlVerbOf(plain[0]);
    if (!row)
        return "there is no command " + plain[0];
    command.verb = row->verb;
    const std::vector<std::string> rest(plain.begin() + 1, plain.end());
    if (row->number == CtlVerb::Number::None || (row->number == CtlVerb::Number::Possible && rest.empty()))
        return takeRest(*row, rest, command);
    if (row->rest == CtlVerb::Rest::Nothing && rest.size() > 1)
        return "there is a word too many behind " + plain[0];
    const auto number = rest.empty() ? std::nullopt : NumberIn(rest[0], 1, MaxLoggers);
    command.number = number.value_or(0);
    if (!number)
        return plain[0] + " wants a logger's number, from 1 to 50";
    return takeRest(*row, {rest.begin() + 1, rest.end()}, command);
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

} // namespace harvelop
