// What identification and the port search find out.
#pragma once

#include "core/bounded_table.h"
#include "links/link_state.h"
#include "settings/logger_record.h"

#include <array>
#include <cstdint>
#include <string>

namespace harvelop
{

// The tables are deliberately indexed differently: model and series by the logger's number itself, version and serial
// by the number minus 1. Only 17 models are kept (0 to 16): a logger above 16 stays without one.
struct SearchState {
    BoundedTable<std::string, 0, 16> IdentifiedModel;               // index `CurrentLogger`; empty: not recognised
    BoundedTable<std::string, 0, MaxLoggers> IdentifiedSeries;      // index `CurrentLogger`; "1", "2" or "3"
    BoundedTable<std::string, 0, MaxLoggers - 1> IdentifiedVersion; // index `CurrentLogger` - 1
    BoundedTable<std::string, 0, MaxLoggers - 1> IdentifiedSerial;  // index `CurrentLogger` - 1
    bool PasswordRetry = false; // during the second pass of an identification, after an accepted password

    // Results of a sweep, index port - 1.
    std::array<std::string, ComPorts> PortBaud;
    std::array<std::string, ComPorts> PortParity;
    std::array<std::string, ComPorts> PortDataBits;
    std::array<std::string, ComPorts> PortStopBits;
    std::array<std::string, ComPorts> PortFlow;

    bool LoggerFound = false;               // the port in work has a logger
    std::int16_t FoundCount = 0;            // ports on which a logger was found
    std::array<int, ComPorts> FoundPorts{}; // those ports, in the order of finding
    float FoundBaud = 0;                    // rate of the last success
    std::string BaudText;                   // rate being tried
};

} // namespace harvelop
