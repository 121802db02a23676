// The two ends of a pseudo terminal: a com port for the program, and the device that is plugged into it.
#pragma once

#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <string>
#include <string_view>
#include <unistd.h>

namespace harvelop::test
{

class PseudoTerminal
{
public:
    PseudoTerminal()
    {
        m_device = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
        char name[64] = {};
        if (m_device >= 0 && grantpt(m_device) == 0 && unlockpt(m_device) == 0 &&
            ptsname_r(m_device, name, sizeof name) == 0)
            m_name = name;
    }
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;
    ~PseudoTerminal() { Vanish(); }

    const std::string& Name() const { return m_name; } // "/dev/pts/5"
    int Device() const { return m_device; }

    void Vanish()
    {
        if (m_device >= 0)
            close(m_device);
        m_device = -1;
    }

    // As the device does it.
    bool Send(std::string_view text) { return write(m_device, text.data(), text.size()) == ssize_t(text.size()); }

    // All that has come to the device; waits at most `ms` for the first of it.
    std::string Received(int ms = 0)
    {
        std::string all;
        pollfd waiting{m_device, POLLIN, 0};
        while (poll(&waiting, 1, all.empty() ? ms : 0) == 1 && (waiting.revents & POLLIN)) {
            char block[256];
            const ssize_t count = read(m_device, block, sizeof block);
            if (count <= 0)
                break;
            all.append(block, static_cast<size_t>(count));
        }
        return all;
    }

    // The speed that the program has set.
    int Speed() const;

private:
    int m_device = -1;
    std::string m_name;
};

} // namespace harvelop::test
