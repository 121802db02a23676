#include "links/modEthernet.h"

#include "core/text_lines.h"
#include "core/text_numbers.h"

#include <algorithm>

namespace harvelop
{

namespace
{

constexpr std::int16_t NetworkPort = 9; // what stands for a port while the link is a network's

// 0, which nobody listens on, for what is no port.
int portNumber(const std::string& text)
{
    constexpr double Highest = 65535;
    const auto number = ToDouble(text);
    return number && *number >= 1 && *number <= Highest ? static_cast<int>(*number) : 0;
}

} // namespace

modEthernet::modEthernet(SocketMaker& sockets, LinkState& link, Waiting& waiting, ProgramEnd& end)
    : m_sockets(sockets), m_link(link), m_waiting(waiting), m_end(end)
{
}

modEthernet::~modEthernet() = default;

void modEthernet::OpenEthernet(const std::string& address, const std::string& port, const std::string& protocol)
{
    if (m_end.Ended())
        return;
    m_link.LinkMode = "Ethernet";
    m_link.EthernetChunk.clear();
    m_link.ReceivedText.clear();
    m_link.IPProtocol = protocol;
    for (auto& former : Winsock1)
        if (m_eventsOnStack == 0 && former && former->State() == SocketControl::Condition::Closed)
            former.reset();
    const size_t index = Winsock1.size();
    Winsock1.push_back(m_sockets.MakeSocket());
    SocketControl& socket = *Winsock1[index];
    socket.OnConnect = [this, index] { Winsock1_Connect(index); };
    socket.OnDataArrival = [this, index] { Winsock1_DataArrival(index); };
    socket.OnClose = [this, index] { Winsock1_Close(index); };
    if (protocol == "TCP")
        socket.Connect(address, portNumber(port));
}

// A link that has been replaced no longer speaks for the current one.
bool modEthernet::isCurrent(size_t index) const
{
    return index + 1 == Winsock1.size();
}

void modEthernet::Winsock1_Connect(size_t index)
{
    if (!isCurrent(index) || m_end.Ended())
        return;
    if (Winsock1[index]->State() != SocketControl::Condition::Connected) {
        m_link.LinkMode = "None";
        m_link.EthernetConnected = false;
        return;
    }
    m_link.EthernetConnected = true;
    m_link.CurrentPort = NetworkPort;
    ++m_eventsOnStack; // a link that is opened meanwhile must not take this socket away
    m_waiting.WaitMs(500);
    --m_eventsOnStack;
}

void modEthernet::Winsock1_DataArrival(size_t index)
{
    if (!isCurrent(index))
        return;
    m_link.EthernetChunk = Winsock1[index]->GetData();
    ++m_eventsOnStack;
    if (ReceiveText)
        ReceiveText();
    --m_eventsOnStack;
}

void modEthernet::Winsock1_Close(size_t index)
{
    if (!isCurrent(index))
        return;
    m_link.LinkMode = "None";
    m_link.EthernetConnected = false;
}

void modEthernet::CloseEthernet()
{
    if (!Winsock1.empty())
        Winsock1.back()->Close();
    m_link.EthernetConnected = false;
    m_link.LinkMode = "None";
}

void modEthernet::EthernetSend(const std::string& text)
{
    if (!m_end.Ended() && !Winsock1.empty())
        Winsock1.back()->SendData(text + std::string(CrLf));
}

} // namespace harvelop
