// The JSON file that tells tallysim which loggers stand where.
#pragma once

#include "simulator/logger_config.h"

#include <cstddef>
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

struct SimulationFile {
    std::vector<LoggerSetup> loggers;
    std::vector<std::string> errors; // one sentence each; none if the text is good
};

constexpr std::size_t LargestSimulationFile = 1 << 20; // characters; a longer text is refused

// Reads {"loggers":[{"model":"KR40", ...}, ...]}; SimulationFileHelp() tells the keys. Everything that is wrong is
// told, not only the first; no error text holds a password.
SimulationFile ReadSimulationFile(std::string_view json);

// Every key of a logger and what it takes, one line each.
std::string SimulationFileHelp();

} // namespace harvelop
