// A pseudo terminal: the end that a program under measurement does not see, and the name of the other.
#pragma once

#include <cstdlib>
#include <fcntl.h>
#include <stdexcept>
#include <string>
#include <termios.h>
#include <unistd.h>

namespace harvelop
{

struct Pty {
    int master = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    std::string name;

    Pty()
    {
        if (master < 0 || grantpt(master) != 0 || unlockpt(master) != 0)
            throw std::runtime_error("no pseudo terminal");
        name = ptsname(master);
    }
    Pty(const Pty&) = delete;
    Pty& operator=(const Pty&) = delete;
    ~Pty() { close(master); }
};

// The other end, opened raw.
inline int OpenRaw(const std::string& name)
{
    const int handle = open(name.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios line{};
    if (handle < 0 || tcgetattr(handle, &line) != 0)
        throw std::runtime_error("cannot open " + name);
    cfmakeraw(&line);
    cfsetspeed(&line, B115200);
    tcsetattr(handle, TCSANOW, &line);
    return handle;
}

} // namespace harvelop
