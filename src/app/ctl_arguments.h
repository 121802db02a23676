// The command line of `harvelctl`.
#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace harvelop
{

struct CtlCommand {
    enum class Verb { Help, Version, Find, List, Show, Ports };
    Verb verb = Verb::Help;
    std::string directory = ".";         // the application directory
    std::optional<int> port;             // find: this com port only, 1 to 16
    bool yes = false;                    // find: replace stored loggers without asking
    std::optional<std::string> password; // find: the answer to a question for a password
    bool json = false;                   // list, show
    int number = 0;                      // show: the logger, 1 to 50
};

// The command, or in one line what is wrong with the words.
std::variant<CtlCommand, std::string> ParseCtlArguments(const std::vector<std::string>& words);

std::string CtlUsage();

} // namespace harvelop
