// The state of the current link and of the exchange on it. One of each in the program.
#pragma once

#include "core/bounded_table.h"

#include <array>
#include <cstdint>
#include <string>

namespace harvelop
{

constexpr int ComPorts = 16; // com ports are numbered 1 to 16; the program knows no others

struct LinkState {
    std::string LinkMode;        // "ComPort", "Ethernet" or "None"; any other value, and at first, behaves as "None"
    std::string ConnectionKind;  // "RS232", "Dialup" or "Ethernet": the kind of link of the record in work
    std::string LinkDescription; // names the current logger in messages
    bool LinkConnected = false;  // the last connect attempt reached the expected logger

    // Com ports.
    std::array<bool, ComPorts> PortAvailable{};     // index port - 1: the port exists
    BoundedTable<bool, 0, ComPorts> PortOpenFailed; // index port: the last opening found it in use
    BoundedTable<bool, 0, ComPorts> PortBusySeen;   // index port: set while the ports are probed, cleared at its end
    std::string BusyPorts;                          // digits of the ports that failed to open during the present search
    std::int16_t CurrentPort = 1;                   // last opened; 0 after closing; 9 on a network link
    int ReceiveThreshold = 1;                       // `RThreshold` in normal use
    std::string FlowControl;                        // the word last passed to SetComSettings
    bool NoPermissionTold = false;                  // a port that the user may not open is told once

    // The network link.
    std::string IPAddress;          // of the latest opening, as are the next two
    std::string IPPort;             // decimal
    std::string IPProtocol;         // "TCP" or "UDP"
    bool EthernetConnected = false; // the connection stands
    bool LoginTest = false;         // a login test runs: the link is a server's, not a logger's
    bool UdpOpen = false;           // the latest opening was a "UDP" one, and is not closed yet

    // The exchange.
    double DefaultTimeout = 5000; // milliseconds; callers change it for a stretch of work and restore it
    std::string ResponseStatus;   // "PASS" or "FAIL" of the latest wait for a reply
    std::string LastReply;        // reply of the latest successful wait; a failed one leaves it
    std::string ResponseText;     // of the latest SendAndWait; empty after a failed wait
    bool ExchangeFailed = false;  // some exchange failed; never cleared
    std::string ReceivedText;     // the latest chunk received
    std::string EthernetChunk;    // the latest block read from the socket
};

} // namespace harvelop
