// TCP on the loopback without any program of ours: the measured program's far end, and the floor that it is held
// against.
#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <stdexcept>
#include <string>
#include <sys/socket.h>
#include <unistd.h>

namespace harvelop
{

inline void SendAtOnce(int socket)
{
    const int on = 1;
    setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}

// A port that clients can connect to from the start; whoever serves it accepts them.
struct Listener {
    int handle = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};

    Listener()
    {
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        auto* place = reinterpret_cast<sockaddr*>(&address);
        if (handle < 0 || bind(handle, place, size) != 0 || listen(handle, 2) != 0 ||
            getsockname(handle, place, &size) != 0)
            throw std::runtime_error("no port to listen on");
    }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;
    ~Listener() { close(handle); }

    std::string Port() const { return std::to_string(ntohs(address.sin_port)); }

    int Accept() const
    {
        const int client = accept4(handle, nullptr, nullptr, SOCK_CLOEXEC);
        SendAtOnce(client);
        return client;
    }

    // The other end, blocking.
    int Connect() const
    {
        const int client = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        if (connect(client, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
            throw std::runtime_error("cannot connect to the loopback");
        SendAtOnce(client);
        return client;
    }
};

} // namespace harvelop
