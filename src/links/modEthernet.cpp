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
    m_link.IPAddress = address;
    m_link.IPPort = port;
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
    socket.Connect(address, portNumber(port));
    if (protocol == "UDP")
        m_link.UdpOpen = true;
}

bool modEthernet::isLatest(size_t index) const
{
    return index + 1 == Winsock1.size();
}

// A socket that has been replaced, by another or by a com port, no longer speaks for the link.
bool modEthernet::isTheLink(size_t index) const
{
    return isLatest(index) && m_link.LinkMode == "Ethernet";
}

void modEthernet::Winsock1_Connect(size_t index)
{
    if (!isTheLink(index) || m_end.Ended())
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
    if (!isTheLink(index))
        return;
    m_link.EthernetChunk = Winsock1[index]->GetData();
    ++m_eventsOnStack;
    if (ReceiveText)
        ReceiveText();
    --m_eventsOnStack;
}

void modEthernet::Winsock1_Close(size_t index)
{
    if (isTheLink(index))
        m_link.LinkMode = "None";
    if (isLatest(index))
        m_link.EthernetConnected = false;
}

void modEthernet::CloseEthernet()
{
    if (!Winsock1.empty())
        Winsock1.back()->Close();
    (m_link.IPProtocol == "UDP" ? m_link.UdpOpen : m_link.EthernetConnected) = false;
    m_link.LinkMode = "None";
}

void modEthernet::EthernetSend(const std::string& text)
{
    if (!m_end.Ended() && !Winsock1.empty())
        Winsock1.back()->SendData(text + std::string(CrLf));
}

} // namespace harvelop
