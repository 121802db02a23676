#include "simulator/tcp_line.h"

#include <arpa/inet.h>
#include <array>
#include <cerrno>
#include <cstring>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <string_view>
#include <sys/socket.h>

namespace harvelop
{

std::unique_ptr<TcpLine> TcpLine::Open(std::unique_ptr<SimulatedDevice> device, int port, std::string& error)
{
    std::unique_ptr<TcpLine> line(new TcpLine(std::move(device)));
    if (line->listenOn(port))
        return line;
    error = "cannot listen on TCP port " + std::to_string(port) + ": " + std::strerror(errno);
    return nullptr;
}

bool TcpLine::listenOn(int port)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    socklen_t size = sizeof address;
    auto* const any = reinterpret_cast<sockaddr*>(&address);
    const int on = 1;
    m_listener = LineHandle(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    if (!m_listener.IsOpen() || setsockopt(m_listener.Get(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on) != 0 ||
        bind(m_listener.Get(), any, size) != 0 || listen(m_listener.Get(), 4) != 0 ||
        getsockname(m_listener.Get(), any, &size) != 0)
        return false;
    m_place = "127.0.0.1:" + std::to_string(ntohs(address.sin_port));
    return true;
}

std::vector<pollfd> TcpLine::Waits() const
{
    std::vector<pollfd> waits;
    if (m_listener.IsOpen())
        waits.push_back({m_listener.Get(), POLLIN, 0});
    const short direction = m_unsent.empty() ? POLLIN : POLLIN | POLLOUT;
    if (m_client.IsOpen())
        waits.push_back({m_client.Get(), direction, 0});
    return waits;
}

double TcpLine::NextDueMs() const
{
    return m_listener.IsOpen() ? m_device->NextDueMs() : SimulatedDevice::Never;
}

void TcpLine::Serve(double nowMs)
{
    if (!m_listener.IsOpen())
        return;
    readInput(nowMs);
    writeOutput(nowMs);
    if (!m_device->OnLine()) {
        dropClient();
        if (!m_device->TakesNextCaller())
            return m_listener.Close();
    }
    admitClient(nowMs);
}

void TcpLine::admitClient(double nowMs)
{
    LineHandle client(accept4(m_listener.Get(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
    if (!client.IsOpen())
        return;
    // Asked only now: a client that hangs up and calls again at once must find the line free.
    pollfd hungUp{m_client.Get(), POLLRDHUP, 0};
    if (m_client.IsOpen() && poll(&hungUp, 1, 0) == 0)
        return;
    dropClient();
    const int on = 1;
    setsockopt(client.Get(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    m_client = std::move(client);
    m_device->Opened(nowMs);
}

void TcpLine::readInput(double nowMs)
{
    if (!m_client.IsOpen())
        return;
    std::array<char, 4096> input;
    const ssize_t size = recv(m_client.Get(), input.data(), input.size(), 0);
    if (size > 0)
        m_device->Receive(nowMs, std::string_view(input.data(), static_cast<std::size_t>(size)));
    else if (size == 0 || errno != EAGAIN)
        dropClient();
}

void TcpLine::writeOutput(double nowMs)
{
    const std::string output = m_device->Transmit(nowMs);
    if (!m_client.IsOpen())
        return;
    m_unsent.append(output, 0, MostUnsent - m_unsent.size());
    if (m_unsent.empty())
        return;
    const ssize_t size = send(m_client.Get(), m_unsent.data(), m_unsent.size(), MSG_NOSIGNAL);
    if (size > 0)
        m_unsent.erase(0, static_cast<std::size_t>(size));
    else if (size < 0 && errno != EAGAIN)
        dropClient();
}

void TcpLine::dropClient()
{
    m_client.Close();
    m_unsent.clear();
}

} // namespace harvelop
