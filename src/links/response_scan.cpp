#include "links/response_scan.h"

#include <algorithm>

namespace harvelop
{

namespace
{

size_t atLeastOne(int count)
{
    return static_cast<size_t>(std::max(count, 1));
}

} // namespace

ResponseScan::ResponseScan(const Markers& markers)
    : m_startFinder(markers.startText),
      m_endFinder(markers.endText),
      m_firstStart(atLeastOne(markers.startCount)),
      m_wanted(atLeastOne(markers.endCount))
{
}

std::optional<MarkerMatch> ResponseScan::Scan(const ReceiveWindow& window)
{
    if (window.Generation() != m_generation)
        startOver(window.Generation());
    findMarkers(window.Text());
    return pairMarkers();
}

void ResponseScan::startOver(std::uint64_t generation)
{
    m_generation = generation;
    m_startFinder.StartAt(0);
    m_startsSeen = 0;
    m_starts.clear();
    m_ends.clear();
}

void ResponseScan::findMarkers(std::string_view text)
{
    while (m_starts.size() < m_wanted) {
        const auto start = m_startFinder.Next(text);
        if (!start)
            break;
        if (++m_startsSeen < m_firstStart)
            continue;
        if (m_starts.empty())
            m_endFinder.StartAt(*start + 1);
        m_starts.push_back(*start);
    }
    while (!m_starts.empty() && m_ends.size() < m_wanted) {
        const auto end = m_endFinder.Next(text);
        if (!end)
            break;
        m_ends.push_back(*end);
    }
}

std::optional<MarkerMatch> ResponseScan::pairMarkers() const
{
    size_t counted = 0;
    auto behind = m_ends.begin();
    for (const size_t start : m_starts) {
        behind = std::upper_bound(behind, m_ends.end(), start);
        const auto ends = static_cast<size_t>(m_ends.end() - behind);
        if (ends == 0)
            break;
        if (counted + ends >= m_wanted)
            return MarkerMatch{start, *(behind + static_cast<std::ptrdiff_t>(m_wanted - counted - 1))};
        counted += ends;
    }
    return std::nullopt;
}

} // namespace harvelop
