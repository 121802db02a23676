#include "simulator/pty_line.h"

#include <algorithm>
#include <array>
#include <asm/termbits.h>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <string_view>
#include <sys/inotify.h>
#include <sys/ioctl.h>

namespace harvelop
{

namespace
{

void makeRaw(int fd, unsigned baud)
{
    termios2 settings{};
    ioctl(fd, TCGETS2, &settings);
    settings.c_iflag = 0;
    settings.c_oflag = 0;
    settings.c_lflag = 0;
    settings.c_cflag = CS8 | CREAD | CLOCAL | BOTHER;
    settings.c_ispeed = baud;
    settings.c_ospeed = baud;
    settings.c_cc[VMIN] = 1;
    settings.c_cc[VTIME] = 0;
    ioctl(fd, TCSETS2, &settings);
}

// All that is among what a watcher has told.
std::uint32_t kindsIn(std::string_view events)
{
    std::uint32_t kinds = 0;
    while (events.size() >= sizeof(inotify_event)) {
        inotify_event event{};
        std::memcpy(&event, events.data(), sizeof event);
        kinds |= event.mask;
        events.remove_prefix(std::min(events.size(), sizeof event + event.len));
    }
    return kinds;
}

} // namespace

std::unique_ptr<PtyLine> PtyLine::Open(std::unique_ptr<SimulatedDevice> device, unsigned baud, const std::string& link,
                                       std::string& error)
{
    std::unique_ptr<PtyLine> line(new PtyLine(std::move(device), baud));
    if (!line->openTerminal()) {
        error = std::string("cannot make a pseudo terminal: ") + std::strerror(errno);
        return nullptr;
    }
    if (!link.empty() && !line->makeLink(link)) {
        error = "cannot make the link " + link + ": " + std::strerror(errno);
        return nullptr;
    }
    return line;
}

PtyLine::~PtyLine()
{
    vanish();
}

bool PtyLine::openTerminal()
{
    m_master = LineHandle(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
    std::array<char, 128> path{};
    if (!m_master.IsOpen() || grantpt(m_master.Get()) != 0 || unlockpt(m_master.Get()) != 0 ||
        ptsname_r(m_master.Get(), path.data(), path.size()) != 0)
        return false;
    m_path = path.data();
    m_slave = LineHandle(open(m_path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
    if (!m_slave.IsOpen())
        return false;
    makeRaw(m_slave.Get(), m_baud);
    m_watcher = LineHandle(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    return m_watcher.IsOpen() && inotify_add_watch(m_watcher.Get(), m_path.c_str(), IN_OPEN | IN_CLOSE) >= 0;
}

bool PtyLine::makeLink(const std::string& link)
{
    std::error_code ignored;
    if (std::filesystem::is_symlink(link, ignored))
        unlink(link.c_str());
    if (symlink(m_path.c_str(), link.c_str()) != 0)
        return false;
    m_link = link;
    return true;
}

std::vector<pollfd> PtyLine::Waits() const
{
    if (!m_master.IsOpen())
        return {};
    const short direction = m_unsent.empty() ? POLLIN : POLLIN | POLLOUT;
    return {{m_master.Get(), direction, 0}, {m_watcher.Get(), POLLIN, 0}};
}

double PtyLine::NextDueMs() const
{
    return m_master.IsOpen() ? m_device->NextDueMs() : SimulatedDevice::Never;
}

void PtyLine::Serve(double nowMs)
{
    if (!m_master.IsOpen())
        return;
    noticeUsers(nowMs);
    readInput(nowMs);
    writeOutput(nowMs);
    if (!m_device->OnLine())
        vanish();
}

// A new user finds no old characters, nor a dead one's exclusive hold. Comes first, before anything is sent to the new
// one.
void PtyLine::noticeUsers(double nowMs)
{
    alignas(inotify_event) std::array<char, 4096> events;
    const ssize_t size = read(m_watcher.Get(), events.data(), events.size());
    if (size <= 0)
        return;
    ioctl(m_slave.Get(), TCFLSH, TCIFLUSH);
    ioctl(m_slave.Get(), TIOCNXCL);
    m_unsent.clear();
    const std::uint32_t kinds = kindsIn({events.data(), static_cast<std::size_t>(size)});
    if (kinds & IN_CLOSE)
        m_device->Closed();
    if (kinds & IN_OPEN)
        m_device->Opened(nowMs);
}

void PtyLine::readInput(double nowMs)
{
    std::array<char, 4096> input;
    const ssize_t size = read(m_master.Get(), input.data(), input.size());
    if (size > 0 && atOwnSpeed())
        m_device->Receive(nowMs, std::string_view(input.data(), static_cast<std::size_t>(size)));
}

void PtyLine::writeOutput(double nowMs)
{
    const std::string output = m_device->Transmit(nowMs);
    if (!atOwnSpeed())
        return m_unsent.clear();
    m_unsent.append(output, 0, MostUnsent - m_unsent.size());
    if (m_unsent.empty())
        return;
    const ssize_t size = write(m_master.Get(), m_unsent.data(), m_unsent.size());
    if (size > 0)
        m_unsent.erase(0, static_cast<std::size_t>(size));
}

bool PtyLine::atOwnSpeed() const
{
    termios2 settings{};
    return ioctl(m_master.Get(), TCGETS2, &settings) == 0 && settings.c_ospeed == m_baud;
}

void PtyLine::vanish()
{
    std::error_code ignored;
    if (!m_link.empty() && std::filesystem::read_symlink(m_link, ignored) == m_path)
        unlink(m_link.c_str());
    m_link.clear();
    m_watcher.Close();
    m_slave.Close();
    m_master.Close();
}

} // namespace harvelop
