// The Ethernet engine: opens and closes the one network link, and delivers what it receives.
#pragma once

#include "core/program_end.h"
#include "core/waiting.h"
#include "links/ethernet_link.h"
#include "links/link_state.h"
#include "platform/socket_control.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace harvelop
{

// Each opening takes a fresh socket. A former one stays as it is until it closes, but its events no longer reach the
// state of the link; nor do those of the latest one while the link is a com port. An error needs no answer: a link that
// does not come up, or ends, is noticed by whoever waits for it.
class modEthernet : public EthernetLink
{
public:
    modEthernet(SocketMaker& sockets, LinkState& link, Waiting& waiting, ProgramEnd& end);
    ~modEthernet() override;
    modEthernet(const modEthernet&) = delete;
    modEthernet& operator=(const modEthernet&) = delete;

    std::function<void()> ReceiveText; // set by the exchange: ReceiveText("Ethernet")

    // Begins a link over TCP; "UDP" is only noted. Returns at once: `EthernetConnected` of the link tells when it
    // stands. A host that is unknown, refuses or is silent never makes it so.
    void OpenEthernet(const std::string& address, const std::string& port, const std::string& protocol);

    void CloseEthernet() override; // harmless without a link; `LinkMode` is "None" afterwards
    void EthernetSend(const std::string& text) override;

private:
    bool isLatest(size_t index) const;
    bool isTheLink(size_t index) const;
    void Winsock1_Connect(size_t index);
    void Winsock1_DataArrival(size_t index);
    void Winsock1_Close(size_t index);

    SocketMaker& m_sockets;
    LinkState& m_link;
    Waiting& m_waiting;
    ProgramEnd& m_end;
    int m_eventsOnStack = 0;
    // NOLINTNEXTLINE(readability-identifier-naming): the name of the control array
    std::vector<std::unique_ptr<SocketControl>> Winsock1; // by index; the last is the current one
};

} // namespace harvelop
