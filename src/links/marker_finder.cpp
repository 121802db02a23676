#include "links/marker_finder.h"

#include <algorithm>

namespace harvelop
{

MarkerFinder::MarkerFinder(std::string_view marker)
    : m_head(marker.substr(0, marker.size() - std::min(marker.size(), Bits))), m_length(marker.size())
{
    const std::string_view tail = marker.substr(m_head.size());
    for (size_t i = 0; i < tail.size(); ++i) {
        m_lastBit = std::uint64_t{1} << i;
        m_places[static_cast<unsigned char>(tail[i])] |= m_lastBit;
    }
}

std::optional<size_t> MarkerFinder::Next(std::string_view text)
{
    if (m_length == 0)
        return m_position < text.size() ? std::optional<size_t>(m_position++) : std::nullopt;
    while (m_position < text.size()) {
        m_matched = ((m_matched << 1) | 1) & m_places[static_cast<unsigned char>(text[m_position++])];
        if ((m_matched & m_lastBit) == 0 || m_position < m_startAt + m_length)
            continue;
        const size_t start = m_position - m_length;
        if (text.substr(start, m_head.size()) == m_head)
            return start;
    }
    return std::nullopt;
}

void MarkerFinder::StartAt(size_t position)
{
    m_matched = 0;
    m_position = position;
    m_startAt = position;
}

} // namespace harvelop
