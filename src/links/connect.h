// Reaching a stored logger by its kind of link.
#pragma once

#include "core/forms.h"
#include "core/program_end.h"
#include "links/command_exchange.h"
#include "links/link_state.h"
#include "links/modEthernet.h"
#include "links/modRS232.h"
#include "links/modem.h"
#include "settings/essentials.h"
#include "settings/logger_records.h"
#include "settings/options.h"

#include <functional>
#include <string>

namespace harvelop
{

// Every path that reaches a port or a socket leaves the link open, also to a wrong logger: the caller ends it. Nothing
// is begun while `StopLinkWork` is set; set in a wait, it ends the work quietly.
class Connecting
{
public:
    Connecting(Essentials essentials, modRS232& rs232, modEthernet& ethernet, Modem& modem, CommandExchange& exchange,
               LinkState& link, const LoggerTables& tables, ProgramState& state, const Options& options,
               ProgramEnd& end);

    // Identifies what answers and gives its model; empty if nothing did, or for a number that identification has no
    // entry for. Set by identification.
    std::function<std::string()> IdentifyLogger;

    // Reaches the logger in work and confirms its model: `LinkConnected`. `number` is not looked at beyond the kind of
    // link: the record is that of `CurrentLogger`.
    void ConnectLogger(int number);

    void ConnectRS232(int port);
    void ConnectEthernet(const std::string& host, const std::string& tcpPort);
    void ConfirmConnected();

    // Ends the link, of whichever kind it is.
    void ReleaseLink();

    // Waits until the connection that has been begun stands, six seconds at most.
    void WaitForEthernet();

private:
    bool isGivenUp() const;
    void tellLooking(int number);
    void tellRightLogger();
    void tellWrongLogger();

    Essentials m_use;
    modRS232& m_rs232;
    modEthernet& m_ethernet;
    Modem& m_modem;
    CommandExchange& m_exchange;
    LinkState& m_link;
    const LoggerTables& m_tables;
    ProgramState& m_state;
    const Options& m_options;
    ProgramEnd& m_end;
};

} // namespace harvelop
