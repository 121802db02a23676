// What a command line asks for.
#pragma once

#include <string>

namespace harvelop
{

struct Launch {
    enum class Path {
        Normal,      // show the options panel
        ShowPanel,   // "::n": one logger's panel
        LoadProgram, // "::n path": load a program file into that logger
        SendText,    // "::n %text", "::n %text%": send a command to that logger
    };
    Path path = Path::Normal;
    std::string key;         // n
    std::string text;        // SendText: what to send; may be empty
    bool inTerminal = false; // SendText: with the terminal, which stays
    bool tellsSent = false; // SendText: that the command was sent; not for a lone "%", which asks for the terminal only
};

// `LaunchCommand`: the command line with all double quotes removed; empty unless it holds "::".
std::string LaunchCommandOf(const std::string& commandLine);

// Reads a launch command.
Launch ParseLaunch(const std::string& launchCommand);

} // namespace harvelop
