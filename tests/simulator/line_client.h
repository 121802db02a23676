// The near end of a real line: what a program that talks to a logger would hold.
#pragma once

#include "simulator/file_handle.h"

#include <arpa/inet.h>
#include <asm/termbits.h>
#include <chrono>
#include <fcntl.h>
#include <functional>
#include <netinet/in.h>
#include <poll.h>
#include <string>
#include <sys/ioctl.h>
#include <sys/socket.h>

namespace harvelop::test
{

constexpr int PatienceMs = 10000; // far longer than anything here takes

// Calls `serve` and reads `fd` until the text ends in `ending`. Gives what came if the line ends or patience does.
inline std::string ReadUntil(int fd, const std::string& ending, const std::function<void()>& serve = {})
{
    using Clock = std::chrono::steady_clock;
    const auto until = Clock::now() + std::chrono::milliseconds(PatienceMs);
    std::string text;
    while (!text.ends_with(ending) && Clock::now() < until) {
        if (serve)
            serve();
        pollfd wait{fd, POLLIN, 0};
        if (poll(&wait, 1, serve ? 1 : PatienceMs) <= 0)
            continue;
        char buffer[4096];
        const ssize_t size = read(fd, buffer, sizeof buffer);
        if (size <= 0)
            break;
        text.append(buffer, static_cast<std::size_t>(size));
    }
    return text;
}

// Makes a terminal raw at that speed. False if it refuses.
inline bool SetSpeed(const LineHandle& terminal, unsigned speed)
{
    termios2 settings{};
    ioctl(terminal.Get(), TCGETS2, &settings);
    settings.c_iflag = 0;
    settings.c_oflag = 0;
    settings.c_lflag = 0;
    settings.c_cflag = CS8 | CREAD | CLOCAL | BOTHER;
    settings.c_ispeed = speed;
    settings.c_ospeed = speed;
    return ioctl(terminal.Get(), TCSETS2, &settings) == 0;
}

inline LineHandle OpenTerminal(const std::string& path, unsigned speed)
{
    LineHandle terminal(open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK));
    if (!SetSpeed(terminal, speed))
        terminal.Close();
    return terminal;
}

// Connects to "127.0.0.1:port".
inline LineHandle Connect(const std::string& place)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(std::stoi(place.substr(place.find(':') + 1))));
    LineHandle client(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    if (connect(client.Get(), reinterpret_cast<sockaddr*>(&address), sizeof address) != 0)
        client.Close();
    return client;
}

inline bool Send(const LineHandle& line, const std::string& text)
{
    return write(line.Get(), text.data(), text.size()) == static_cast<ssize_t>(text.size());
}

} // namespace harvelop::test
