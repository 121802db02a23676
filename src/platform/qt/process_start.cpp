#include "platform/qt/process_start.h"

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace harvelop
{

void PrepareProcess()
{
    std::signal(SIGXFSZ, SIG_IGN); // a file that may not grow any more is told like a full disk
    std::signal(SIGPIPE, SIG_IGN); // what nobody reads any more must not keep a link from being released
    int lowest = 0;
    do { // for reading alone, so that printing into it still fails
        lowest = open("/dev/null", O_RDONLY);
    } while (lowest >= 0 && lowest <= STDERR_FILENO);
    if (lowest >= 0)
        close(lowest);
}

} // namespace harvelop
