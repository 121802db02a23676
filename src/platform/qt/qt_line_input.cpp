#include "platform/qt/qt_line_input.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace harvelop
{

QtLineInput::QtLineInput(int descriptor)
    : m_descriptor(descriptor), m_ended(fcntl(descriptor, F_GETFD) < 0), m_notifier(QSocketNotifier::Read)
{
    m_notifier.setEnabled(false);
    QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier, [this] { read(); });
    if (!m_ended)
        m_notifier.setSocket(descriptor);
}

std::optional<std::string> QtLineInput::NextLine()
{
    const size_t end = std::min(m_text.find('\n'), LongestLine);
    const bool whole = end < m_text.size() || (m_ended && !m_text.empty());
    if (!whole) {
        m_notifier.setEnabled(!m_ended);
        return std::nullopt;
    }
    std::string line = m_text.substr(0, end);
    m_text.erase(0, line.size() + (line.size() < m_text.size() && m_text[line.size()] == '\n' ? 1 : 0));
    if (line.ends_with('\r'))
        line.pop_back();
    return line;
}

void QtLineInput::read()
{
    std::array<char, LongestLine> piece{};
    const ssize_t count = ::read(m_descriptor, piece.data(), piece.size());
    if (count > 0)
        m_text.append(piece.data(), static_cast<size_t>(count));
    else if (count == 0 || (errno != EINTR && errno != EAGAIN))
        m_ended = true;
    m_notifier.setEnabled(false); // until what came has been taken
}

} // namespace harvelop
