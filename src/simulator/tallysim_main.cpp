// tallysim: simulated loggers on pseudo terminals and TCP ports of this machine.

#include "simulator/memory_file.h"
#include "simulator/pty_line.h"
#include "simulator/recorded_device.h"
#include "simulator/report_texts.h"
#include "simulator/simulated_logger.h"
#include "simulator/simulation_file.h"
#include "simulator/simulation_loop.h"
#include "simulator/tcp_line.h"

#include <csignal>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <sys/signalfd.h>
#include <vector>

namespace
{

using namespace harvelop;

constexpr int Done = 0;
constexpr int Failed = 1;
constexpr int WrongUsage = 2;

constexpr std::string_view Usage = "usage: tallysim [--env] FILE\n"
                                   "       tallysim --list-models | --list-failures | --help | --version\n";

int showHelp()
{
    std::cout
        << Usage
        << "\nRuns the simulated loggers of FILE until it is ended by a signal. Tells where each of them stands,\n"
           "then \"ready\".\n\n"
           "  --env            also tells it as HARVELOP_COM<n>=PATH and TALLYSIM_TCP_<n>=ADDRESS:PORT, where\n"
           "                   the second n counts the loggers of FILE from 1\n"
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

std::string described(const ModelRow& row)
{
    return std::string(row.model) + (row.series.empty() ? "" : " Series " + std::string(row.series));
}

int listModels()
{
    for (const ModelRow& row : KnownModels())
        std::cout << described(row) << '\n';
    return Done;
}

int listFailures()
{
    for (const FailureMode& mode : FailureModes())
        std::cout << std::left << std::setw(18) << mode.name << mode.effect << '\n';
    return Done;
}

void complain(const std::string& text)
{
    std::cerr << "tallysim: " << text << '\n';
}

// What is written down beside the simulation; null: nothing.
struct Records {
    std::ostream* transcript = nullptr;
    MemoryFile* memory = nullptr;
};

std::unique_ptr<SimulatedDevice> recorded(std::unique_ptr<SimulatedDevice> device, const std::string& name,
                                          std::ostream* transcript)
{
    if (!transcript)
        return device;
    return std::make_unique<RecordedDevice>(std::move(device), name, *transcript);
}

std::unique_ptr<SimulatedDevice> watched(std::unique_ptr<SimulatedLogger> logger, const std::string& name,
                                         MemoryFile* file)
{
    if (!file)
        return logger;
    return std::make_unique<WatchedLogger>(std::move(logger), name, *file);
}

std::unique_ptr<SimulatedDevice> makeLogger(const LoggerSetup& setup, const std::string& name, const Records& records)
{
    return recorded(watched(std::make_unique<SimulatedLogger>(setup.logger), name, records.memory), name,
                    setup.logger.password.empty() ? records.transcript : nullptr);
}

std::unique_ptr<SimulatedLine> openLine(const LoggerSetup& setup, const std::string& name, const Records& records,
                                        std::string& error)
{
    auto logger = makeLogger(setup, name, records);
    if (setup.IsTcp())
        return TcpLine::Open(std::move(logger), setup.tcpPort, error);
    return PtyLine::Open(std::move(logger), static_cast<unsigned>(setup.logger.baud), setup.link, error);
}

std::unique_ptr<SimulatedLine> openModem(const ModemSetup& setup, const Records& records, std::string& error)
{
    PhoneBook book;
    bool secret = false; // passwords pass the modem, too
    for (const auto& [number, logger] : setup.phoneBook) {
        book[number] = makeLogger(logger, "number " + number, records);
        secret = secret || !logger.logger.password.empty();
    }
    auto modem = recorded(std::make_unique<SimulatedModem>(setup.modem, std::move(book)), "modem",
                          secret ? nullptr : records.transcript);
    return PtyLine::Open(std::move(modem), static_cast<unsigned>(setup.modem.baud), setup.link, error);
}

std::string described(const ModemSetup& setup, const std::string& place)
{
    std::ostringstream line;
    line << std::left << std::setw(8) << (setup.com > 0 ? "com " + std::to_string(setup.com) : "-") << std::setw(17)
         << place << std::setw(9) << setup.modem.baud << "modem";
    if (!setup.link.empty())
        line << "  " << setup.link;
    for (const ModemFailureMode& mode : ModemFailureModes())
        if (mode.failure == setup.modem.failure && mode.failure != ModemFailure::None)
            line << "  " << mode.name;
    for (const auto& [number, logger] : setup.phoneBook)
        line << "\n        " << number << "  " << logger.logger.model;
    return line.str();
}

std::string describe(const LoggerSetup& setup, const std::string& place)
{
    const auto row = FindModel(setup.logger.model, setup.logger.series);
    std::ostringstream line;
    line << std::left << std::setw(8) << (setup.com > 0 ? "com " + std::to_string(setup.com) : "-") << std::setw(17)
         << place << std::setw(9) << (setup.IsTcp() ? "tcp" : std::to_string(setup.logger.baud))
         << (row ? described(*row) : setup.logger.model);
    if (!setup.name.empty())
        line << "  " << setup.name;
    if (!setup.link.empty())
        line << "  " << setup.link;
    if (!setup.logger.password.empty())
        line << "  with a password";
    for (const FailureMode& mode : FailureModes())
        if (mode.failure == setup.logger.failure && mode.failure != Failure::None)
            line << "  " << mode.name;
    return line.str();
}

std::string assignment(const LoggerSetup& setup, const std::string& place, std::size_t number)
{
    if (setup.IsTcp())
        return "TALLYSIM_TCP_" + std::to_string(number) + "=" + place + "\n";
    if (setup.com > 0)
        return "HARVELOP_COM" + std::to_string(setup.com) + "=" + (setup.link.empty() ? place : setup.link) + "\n";
    return "";
}

std::string assignment(const ModemSetup& setup, const std::string& place)
{
    return setup.com > 0
               ? "HARVELOP_COM" + std::to_string(setup.com) + "=" + (setup.link.empty() ? place : setup.link) + "\n"
               : "";
}

// The lines are those of the loggers, then that of the modem.
void announce(const SimulationFile& simulation, const SimulationLoop& loop, bool withAssignments)
{
    const std::vector<LoggerSetup>& setups = simulation.loggers;
    std::string assignments;
    for (std::size_t i = 0; i < setups.size(); ++i) {
        const std::string place = loop.Lines()[i]->Place();
        std::cout << describe(setups[i], place) << '\n';
        assignments += assignment(setups[i], place, i + 1);
    }
    if (simulation.modem) {
        const std::string place = loop.Lines().back()->Place();
        std::cout << described(*simulation.modem, place) << '\n';
        assignments += assignment(*simulation.modem, place);
    }
    std::cout << (withAssignments ? assignments : "") << "ready" << std::endl;
}

// What becomes readable when the program is told to end.
LineHandle endSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const int number : {SIGTERM, SIGINT, SIGHUP})
        sigaddset(&signals, number);
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    return LineHandle(signalfd(-1, &signals, SFD_CLOEXEC));
}

std::optional<std::string> readFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string text(LargestSimulationFile + 1, '\0');
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    if (file.bad() || !(file.good() || file.eof()))
        return std::nullopt;
    text.resize(static_cast<std::size_t>(file.gcount()));
    return text;
}

int simulate(const std::string& path, bool withAssignments)
{
    const auto text = readFile(path);
    if (!text) {
        complain("cannot read " + path);
        return WrongUsage;
    }
    const SimulationFile simulation = ReadSimulationFile(*text);
    for (const std::string& error : simulation.errors)
        complain(path + ": " + error);
    if (!simulation.errors.empty())
        return WrongUsage;

    std::signal(SIGPIPE, SIG_IGN);
    const LineHandle ending = endSignals();
    std::ofstream transcript;
    if (!simulation.transcript.empty()) {
        transcript.open(simulation.transcript, std::ios::app);
        if (!transcript) {
            complain("cannot write " + simulation.transcript);
            return Failed;
        }
    }
    MemoryFile memory(simulation.memory);
    if (!simulation.memory.empty() && !memory.Write()) {
        complain("cannot write " + simulation.memory);
        return Failed;
    }
    const Records records{transcript.is_open() ? &transcript : nullptr, simulation.memory.empty() ? nullptr : &memory};
    SimulationLoop loop;
    std::string error;
    const auto add = [&](std::unique_ptr<SimulatedLine> line) {
        if (line)
            loop.Add(std::move(line));
        else
            complain(error);
        return error.empty();
    };
    for (std::size_t i = 0; i < simulation.loggers.size(); ++i)
        if (!add(openLine(simulation.loggers[i], "logger " + std::to_string(i + 1), records, error)))
            return Failed;
    if (simulation.modem && !add(openModem(*simulation.modem, records, error)))
        return Failed;
    announce(simulation, loop, withAssignments);
    loop.Run(ending.Get());
    return Done;
}

int run(const std::vector<std::string>& arguments)
{
    const std::string first = arguments.empty() ? "" : arguments.front();
    if (arguments.size() == 1 && first == "--help")
        return showHelp();
    if (arguments.size() == 1 && first == "--list-models")
        return listModels();
    if (arguments.size() == 1 && first == "--list-failures")
        return listFailures();
    if (arguments.size() == 1 && first == "--version") {
        std::cout << "tallysim " HARVELOP_VERSION "\n";
        return Done;
    }
    const bool withAssignments = first == "--env";
    if (arguments.size() != (withAssignments ? 2U : 1U) || arguments.back().starts_with("--")) {
        std::cerr << Usage;
        return WrongUsage;
    }
    return simulate(arguments.back(), withAssignments);
}

} // namespace

int main(int argc, char** argv)
{
    return run({argv + 1, argv + argc});
}
