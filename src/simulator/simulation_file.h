// The JSON file that tells tallysim which loggers stand where.
#pragma once

#include "simulator/logger_config.h"
#include "simulator/simulated_modem.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace harvelop
{

// One logger and the line that it stands on.
struct LoggerSetup {
    std::string name; // for people; may be empty
    LoggerConfig logger;
    int com = 0;      // the com port that it is meant for, 1 to 16; 0: none
    int tcpPort = -1; // a TCP port on the loopback, 0 for any free one; below 0: a pseudo terminal
    std::string link; // pseudo terminal: a symbolic link to make for it; empty: none

    bool IsTcp() const { return tcpPort >= 0; }
};

// A modem on a pseudo terminal, and the loggers that can be called through it.
struct ModemSetup {
    ModemConfig modem;
    int com = 0;                                  // the com port that it is meant for, 1 to 16; 0: none
    std::string link;                             // a symbolic link to make for it; empty: none
    std::map<std::string, LoggerSetup> phoneBook; // by number
};

struct SimulationFile {
    std::vector<LoggerSetup> loggers;
    std::vector<std::string> errors; // one sentence each; none if the text is good
    std::optional<ModemSetup> modem = {};
    std::string transcript = {}; // a file to write down what passes on all lines; empty: none
    std::string memory = {};     // a file that always tells what all loggers hold; empty: none
};

constexpr std::size_t LargestSimulationFile = 1 << 20; // characters; a longer text is refused

// Reads {"loggers":[{"model":"KR40", ...}, ...], "modem":{"phoneBook":{"555":{"model":"KR40"}}, ...}}; the help texts
// tell the keys. Beside them it may hold "transcript" and "memory", each the path of a file. Everything that is wrong
// is told, not only the first; no error text holds a password.
SimulationFile ReadSimulationFile(std::string_view json);

// Every key and what it takes, one line each.
std::string SimulationFileHelp(); // of a logger
std::string ModemHelp();

} // namespace harvelop
