#include "trace/trace_file.h"

#include <array>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace harvelop
{

namespace
{

constexpr mode_t OwnersAlone = 0600;

void appendEscaped(std::string& text, char c)
{
    constexpr std::string_view Digits = "0123456789abcdef";
    const auto code = static_cast<unsigned char>(c);
    switch (c) {
    case '\r':
        text += "\\r";
        return;
    case '\n':
        text += "\\n";
        return;
    case '\t':
        text += "\\t";
        return;
    case '"':
    case '\\':
        text += '\\';
        text += c;
        return;
    default:
        break;
    }
    if (code < ' ' || code > '~') {
        text += "\\x";
        text += Digits[code >> 4U];
        text += Digits[code & 15U];
    } else {
        text += c;
    }
}

std::string today()
{
    const std::time_t now = std::time(nullptr);
    std::tm day{};
    localtime_r(&now, &day);
    std::array<char, 16> text{};
    std::strftime(text.data(), text.size(), "%Y-%m-%d", &day);
    return text.data();
}

} // namespace

std::string QuotedForTrace(std::string_view text)
{
    std::string quoted = "\"";
    for (const char c : text)
        appendEscaped(quoted, c);
    return quoted + "\"";
}

std::string TraceTime(double seconds)
{
    constexpr long DayMs = 86400000;
    const long ms = std::lround(seconds * 1000) % DayMs;
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%02ld:%02ld:%02ld.%03ld", ms / 3600000, ms / 60000 % 60, ms / 1000 % 60,
                  ms % 1000);
    return text.data();
}

std::string TraceFormat::Line(const TraceEntry& entry)
{
    const std::string begin = TraceTime(entry.seconds) + " " + entry.link + " " + entry.kind;
    if (entry.kind == "open")
        m_hiding.erase(entry.link);
    if (!entry.IsStream())
        return begin + (entry.text.empty() ? "" : " " + entry.text) + "\n";
    bool& hiding = m_hiding[entry.link][entry.IsSent() ? 1 : 0];
    std::string text;
    for (size_t i = 0; i < entry.text.size(); ++i) {
        const bool hidden = entry.hidden[i] == SecretFilter::Hidden;
        const bool before = std::exchange(hiding, hidden);
        if (!hidden)
            appendEscaped(text, entry.text[i]);
        else if (!before)
            text += "\\*";
    }
    return text.empty() ? "" : begin + " \"" + text + "\"\n";
}

void TraceFile::Open(const std::string& path, const std::string& program)
{
    m_path = path;
    m_fd = open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, OwnersAlone);
    struct stat file {
    };
    if (m_fd < 0 || fstat(m_fd, &file) != 0)
        return fail();
    if (S_ISREG(file.st_mode) && fchmod(m_fd, OwnersAlone) != 0)
        return fail();
    // What was there may have been broken off.
    const std::string begin = S_ISREG(file.st_mode) && file.st_size > 0 ? "\n" : "";
    Write(begin + "# harvelop trace 1, " + program + ", " + today() + "\n");
}

void TraceFile::Write(std::string_view lines)
{
    while (m_fd >= 0 && !lines.empty()) {
        errno = ENOSPC; // what writing nothing means, which is no error of its own
        const ssize_t written = ::write(m_fd, lines.data(), lines.size());
        if (written > 0)
            lines.remove_prefix(static_cast<size_t>(written));
        else if (written == 0 || errno != EINTR)
            fail();
    }
}

void TraceFile::fail()
{
    const std::string reason = std::strerror(errno);
    close();
    m_complain("The trace " + m_path + " cannot be written: " + reason + ". The program goes on without it.");
}

void TraceFile::close()
{
    if (const int fd = std::exchange(m_fd, -1); fd >= 0)
        ::close(fd);
}

} // namespace harvelop
