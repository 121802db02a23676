#include "platform/qt/port_claim.h"

#include "platform/serial_control.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>
#include <vector>

namespace harvelop
{

namespace fs = std::filesystem;

namespace
{

// A name in /dev that has no device behind it counts as no port at all.
int PortErrorOf(int systemError)
{
    switch (systemError) {
    case ENOENT:
    case ENOTDIR:
    case ELOOP:
    case ENAMETOOLONG:
    case EIO:
    case ENXIO:
    case ENODEV:
    case ENOTTY:
        return PortAbsent;
    case EACCES:
    case EPERM:
        return PortNoPermission;
    case EBUSY:
        return PortBusy;
    default:
        return PortFailed;
    }
}

std::string ReadAll(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string ProcessName(pid_t process)
{
    std::string name = ReadAll(fs::path("/proc") / std::to_string(process) / "comm");
    name.erase(std::remove(name.begin(), name.end(), '\n'), name.end());
    return name.empty() ? std::string() : name + " (process " + std::to_string(process) + ")";
}

// Programs name a lock file by the device's path below /dev, some by its last part alone.
std::vector<fs::path> LockFiles(const std::string& device)
{
    const std::string below = device.rfind("/dev/", 0) == 0 ? device.substr(5) : device;
    std::string joined = below;
    std::replace(joined.begin(), joined.end(), '/', '_');
    std::vector<fs::path> files;
    for (const char* folder : {"/run/lock", "/var/lock"})
        for (const std::string& name : {joined, below.substr(below.rfind('/') + 1)})
            files.push_back(fs::path(folder) / ("LCK.." + name));
    return files;
}

// A lock file begins with a process number in decimal, or is one as the machine holds it, which no text could be: its
// highest byte is always 0.
std::optional<pid_t> LockHolder(const fs::path& lockFile)
{
    const std::string text = ReadAll(lockFile);
    pid_t process = 0;
    if (text.size() == sizeof process && text.find('\0') != std::string::npos) {
        std::memcpy(&process, text.data(), sizeof process);
    } else {
        const size_t digits = std::min(text.find_first_not_of(" \t"), text.size());
        std::from_chars(text.data() + digits, text.data() + text.size(), process);
    }
    if (process <= 0 || process == getpid())
        return std::nullopt;
    const bool alive = kill(process, 0) == 0 || errno == EPERM;
    return alive ? std::optional(process) : std::nullopt;
}

// Another process that has the device open, as far as this user may look.
std::optional<pid_t> ProcessWithOpen(const std::string& device)
{
    std::error_code error;
    for (const auto& entry : fs::directory_iterator("/proc", error)) {
        const std::string number = entry.path().filename();
        pid_t process = 0;
        const auto [rest, bad] = std::from_chars(number.data(), number.data() + number.size(), process);
        if (bad != std::errc() || *rest != 0 || process == getpid())
            continue;
        for (const auto& handle : fs::directory_iterator(entry.path() / "fd", error))
            if (fs::read_symlink(handle.path(), error) == device)
                return process;
    }
    return std::nullopt;
}

} // namespace

int PortClaim::Take(const std::string& device)
{
    Release();
    m_holder.clear();
    std::error_code error;
    m_device = device.empty() ? device : fs::canonical(device, error).string();
    if (m_device.empty() || error)
        return error ? PortErrorOf(error.value()) : PortAbsent;
    if (!fs::is_character_file(m_device, error))
        return PortAbsent;
    return isLocked() ? PortBusy : open();
}

// Notes who has made a lock file, if they are alive.
bool PortClaim::isLocked()
{
    for (const fs::path& lockFile : LockFiles(m_device)) {
        if (const auto holder = LockHolder(lockFile)) {
            m_holder = ProcessName(*holder);
            return true;
        }
    }
    return false;
}

int PortClaim::open()
{
    // Without waiting for a carrier, and never handed on to a program that is started later.
    m_handle = FileHandle(::open(m_device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
    termios line{};
    if (!m_handle.IsOpen() || tcgetattr(m_handle.Number(), &line) != 0)
        return refuse(PortErrorOf(errno));
    if (flock(m_handle.Number(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
        return refuse(PortBusy);
    // To the superuser an exclusively opened device opens all the same. The mark may be left over from a program that
    // died, so somebody must be there who has it open.
    int exclusive = 0;
    if (ioctl(m_handle.Number(), TIOCGEXCL, &exclusive) == 0 && exclusive && ProcessWithOpen(m_device))
        return refuse(PortBusy);
    return PortOk;
}

int PortClaim::refuse(int error)
{
    Release();
    if (error == PortBusy) {
        const auto holder = ProcessWithOpen(m_device);
        m_holder = holder ? ProcessName(*holder) : std::string();
    }
    return error;
}

int PortClaim::LockRefused()
{
    Release();
    return isLocked() ? PortBusy : PortNoPermission;
}

} // namespace harvelop
