#include "platform/pseudo_terminal.h"

#include <asm/termbits.h>
#include <sys/ioctl.h>

namespace harvelop::test
{

int PseudoTerminal::Speed() const
{
    termios2 line{};
    return ioctl(m_device, TCGETS2, &line) == 0 ? static_cast<int>(line.c_ospeed) : -1;
}

} // namespace harvelop::test
