// tallysim: simulated loggers on pseudo terminals and TCP ports of this machine.

#include "simulator/command_run.h"
#include "simulator/demo_simulation.h"
#include "simulator/report_texts.h"
#include "simulator/simulation.h"

#include <csignal>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace
{

using namespace harvelop;

constexpr int Done = 0;
constexpr int Failed = 1;
constexpr int WrongUsage = 2;

constexpr std::string_view Usage = "usage: tallysim [--env] FILE\n"
                                   "       tallysim [--env] --demo\n"
                                   "       tallysim [--env] --replay [--fast] FILE\n"
                                   "       tallysim ... -- COMMAND [ARGUMENT ...]\n"
                                   "       tallysim --list-models | --list-failures | --help | --version\n";

struct Request {
    enum class Source { File, Demo, Trace };
    Source source = Source::File;
    std::string path = {};
    bool withAssignments = false;
    bool fast = false;
    std::vector<std::string> command = {}; // none: until a signal comes
};

int showHelp()
{
    std::cout
        << Usage
        << "\nRuns simulated loggers until it is ended by a signal, or with a COMMAND for as long as that runs: its "
           "exit\n"
           "code is then the command's. Tells where each of them stands, then \"ready\"; with a COMMAND only the\n"
           "former, on standard error. The command finds them in its environment as --env tells them, and no other\n"
           "com ports.\n\n"
           "  --env            also tells it as HARVELOP_COM<n>=PATH and TALLYSIM_TCP_<n>=ADDRESS:PORT, where\n"
           "                   the second n counts the loggers from 1\n"
           "  --demo           some loggers of all kinds, for whoever has none: try\n"
           "                   tallysim --demo -- harvelctl find --all --yes\n"
           "  --replay         FILE is a trace, as \"harvelctl --trace\" writes it: what was answered there is "
           "answered\n"
           "                   again. Where the other side departs from the trace is told on standard error; it goes\n"
           "                   on where the trace has the line that came, and leaves unanswered what it does not "
           "have.\n"
           "                   A password is any line\n"
           "  --fast           at once, not after the time that it took\n"
           "  --list-models    the models, each with its series\n"
           "  --list-failures  the failure modes and what they do\n\n"
           "FILE holds {\"loggers\": [{\"model\": \"KR40\", \"com\": 1, \"baud\": 115200}, ...]}. A logger's keys:\n"
        << SimulationFileHelp() << "\nBeside \"loggers\" it may hold \"modem\": {...}, a modem on a pty. Its keys:\n"
        << ModemHelp()
        << "\n\"transcript\": \"PATH\" writes down what passes on the lines. Loggers with a password are left out.\n"
           "\"memory\": \"PATH\" always tells what the loggers hold: their programs, jobs, card and flash memory. In "
           "its\n"
           "texts each byte is one character.\n";
    return Done;
}

int listModels()
{
    for (const ModelRow& row : KnownModels())
        std::cout << DescribeModel(row) << '\n';
    return Done;
}

int listFailures()
{
    for (const FailureMode& mode : FailureModes())
        std::cout << std::left << std::setw(18) << mode.name << mode.effect << '\n';
    return Done;
}

int showVersion()
{
    std::cout << "tallysim " HARVELOP_VERSION "\n";
    return Done;
}

void complain(const std::string& text)
{
    std::cerr << "tallysim: " << text << std::endl;
}

std::optional<std::string> readFile(const std::string& path, std::size_t longest)
{
    std::ifstream file(path, std::ios::binary);
    std::string text;
    std::vector<char> block(1 << 16);
    while (file && text.size() <= longest) {
        file.read(block.data(), static_cast<std::streamsize>(block.size()));
        text.append(block.data(), static_cast<std::size_t>(file.gcount()));
    }
    return file.eof() || text.size() > longest ? std::optional(text) : std::nullopt;
}

// What is wrong with the text of `path` is told; true if nothing is.
bool isSound(const std::string& path, const std::vector<std::string>& errors)
{
    for (const std::string& error : errors)
        complain(path + ": " + error);
    return errors.empty();
}

// Puts the lines up. Gives the exit code if that fails.
std::optional<int> start(const Request& request, Simulation& simulation)
{
    const bool isTrace = request.source == Request::Source::Trace;
    const auto text = request.source == Request::Source::Demo
                          ? std::string(DemoSimulation())
                          : readFile(request.path, isTrace ? LargestTrace : LargestSimulationFile);
    if (!text) {
        complain("cannot read " + request.path);
        return WrongUsage;
    }
    bool started = false;
    if (isTrace) {
        RecordedTrace trace = ReadTrace(*text);
        if (!isSound(request.path, trace.errors))
            return WrongUsage;
        const auto pace = request.fast ? ReplayDevice::Pace::Fast : ReplayDevice::Pace::AsRecorded;
        started = simulation.Replay(std::move(trace), pace, complain);
    } else {
        const SimulationFile file = ReadSimulationFile(*text);
        if (!isSound(request.path, file.errors))
            return WrongUsage;
        // The demo's passwords are there to be entered.
        started = simulation.Start(file, request.source == Request::Source::Demo ? Passwords::Told : Passwords::Untold);
    }
    if (started)
        return std::nullopt;
    complain(simulation.Error);
    return Failed;
}

int simulate(const Request& request)
{
    std::signal(SIGPIPE, SIG_IGN);
    const EndSignals signals;
    Simulation simulation;
    if (const auto failed = start(request, simulation))
        return *failed;
    std::ostream& out = request.command.empty() ? std::cout : std::cerr;
    out << ReportLines(simulation.Lines);
    if (request.withAssignments)
        for (const std::string& assignment : Assignments(simulation.Lines))
            out << assignment << '\n';
    if (request.command.empty()) {
        out << "ready" << std::endl;
        RunUntilEnd(simulation.Loop, signals);
        return Done;
    }
    std::string error;
    const int code = RunCommand(request.command, simulation.Loop, signals, simulation.Lines, error);
    if (!error.empty())
        complain(error);
    return code;
}

// None if the words make no sense.
std::optional<Request> readArguments(const std::vector<std::string>& words)
{
    Request request;
    std::size_t at = 0;
    const auto take = [&](std::string_view word) { return at < words.size() && words[at] == word && ++at > 0; };
    request.withAssignments = take("--env");
    if (take("--demo"))
        request.source = Request::Source::Demo;
    else if (take("--replay"))
        request.source = Request::Source::Trace;
    request.fast = request.source == Request::Source::Trace && take("--fast");
    if (request.source != Request::Source::Demo) {
        if (at == words.size() || words[at].starts_with("--"))
            return std::nullopt;
        request.path = words[at++];
    }
    if (at == words.size())
        return request;
    if (!take("--") || at == words.size())
        return std::nullopt;
    request.command.assign(words.begin() + static_cast<std::ptrdiff_t>(at), words.end());
    return request;
}

int run(const std::vector<std::string>& words)
{
    const std::string only = words.size() == 1 ? words.front() : "";
    if (only == "--help")
        return showHelp();
    if (only == "--list-models")
        return listModels();
    if (only == "--list-failures")
        return listFailures();
    if (only == "--version")
        return showVersion();
    if (const auto request = readArguments(words))
        return simulate(*request);
    std::cerr << Usage;
    return WrongUsage;
}

} // namespace

int main(int argc, char** argv)
{
    return run({argv + 1, argv + argc});
}
