// Any bytes as the command line of either program: it is understood or refused in one line. Words of `harvelctl` are
// parted by line ends.
#include "app/ctl_arguments.h"
#include "app/launch.h"
#include "core/text_lines.h"
#include "hold.h"
#include "links/link_state.h"
#include "settings/logger_records.h"

#include <algorithm>

using namespace harvelop;

namespace
{

void checkLaunch(const std::string& line)
{
    const std::string command = LaunchCommandOf(line);
    fuzz::Hold(command.find('"') == std::string::npos, "no quotes are left");
    fuzz::Hold(command.empty() || command.find("::") != std::string::npos, "a launch command holds its sign");
    const Launch launch = ParseLaunch(command);
    fuzz::Hold(Holds(command, launch.key) && Holds(command, launch.text), "all of it comes from the line");
    fuzz::Hold(launch.path == Launch::Path::SendText || !launch.inTerminal, "only sending has a terminal");
}

void checkWords(const std::string& text)
{
    std::vector<std::string> words;
    LineReader lines(text);
    std::string_view line;
    while (lines.Next(line))
        words.emplace_back(line);
    const auto parsed = ParseCtlArguments(words);
    if (const auto* error = std::get_if<std::string>(&parsed)) {
        fuzz::Hold(!error->empty(), "a refusal says why");
        return;
    }
    const auto& command = std::get<CtlCommand>(parsed);
    fuzz::Hold(command.number >= 0 && command.number <= MaxLoggers, "loggers are numbered to 50");
    fuzz::Hold(!command.port || (*command.port >= 1 && *command.port <= ComPorts), "ports are numbered to 16");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    checkLaunch(text);
    checkWords(text);
    return 0;
}
