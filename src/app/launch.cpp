#include "app/launch.h"

#include "core/text_lines.h"

#include <algorithm>

namespace harvelop
{

namespace
{

// A file's place: behind a drive's letter, or from this platform's root.
bool holdsPath(const std::string& command)
{
    return Holds(command, ":\\") || Holds(command, " /");
}

// The key of a logger stands behind the two colons that begin the command.
std::string keyIn(const std::string& word)
{
    constexpr size_t KeyAt = 2;
    return word.size() > KeyAt ? word.substr(KeyAt) : std::string();
}

} // namespace

std::string LaunchCommandOf(const std::string& commandLine)
{
    std::string command = commandLine;
    command.erase(std::remove(command.begin(), command.end(), '"'), command.end());
    return Holds(command, "::") ? command : std::string();
}

Launch ParseLaunch(const std::string& launchCommand)
{
    Launch launch;
    if (launchCommand.empty())
        return launch;
    const size_t mark = launchCommand.find('%');
    if (mark == std::string::npos && !holdsPath(launchCommand)) {
        launch.path = Launch::Path::ShowPanel;
        launch.key = keyIn(launchCommand);
        return launch;
    }
    launch.key = keyIn(launchCommand.substr(0, launchCommand.find(' ')));
    if (mark == std::string::npos) {
        launch.path = Launch::Path::LoadProgram;
        return launch;
    }
    launch.path = Launch::Path::SendText;
    launch.text = launchCommand.substr(mark + 1);
    launch.inTerminal = launchCommand.back() == '%';
    launch.tellsSent = !launch.text.empty();
    if (launch.inTerminal && launch.tellsSent)
        launch.text.pop_back();
    return launch;
}

} // namespace harvelop
