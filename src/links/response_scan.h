// Looks for a reply between two markers in a text that grows.
#pragma once

#include "links/receive_window.h"

#include <optional>
#include <string>
#include <vector>

namespace harvelop
{

struct Markers {
    std::string startText; // empty: matches at every position of a non-empty text
    int startCount = 1;    // which occurrence opens the reply, 1 the first
    std::string endText;
    int endCount = 1; // which occurrence closes it
};

// Where a reply stands: indices from 0 of the first characters of the two markers.
struct MarkerMatch {
    size_t start = 0;
    size_t end = 0;
};

// Gives at each call exactly what a scan of the whole text from its first character would give, but looks only at what has
// been appended since the last call.
//
// The rule: starts are counted in order, overlapping ones too. From the `startCount`-th on, each start looks for ends
// from one character behind its own first one to the end of the text, and the count of ends is carried on from start to
// start; the end that makes it reach `endCount` closes the reply.
class ResponseScan
{
public:
    explicit ResponseScan(Markers markers) : m_markers(std::move(markers)) {}

    std::optional<MarkerMatch> Scan(const ReceiveWindow& window);

private:
    // The builder's own.
    Markers m_markers;
    std::uint64_t m_generation = 0;
    size_t m_startFrom = 0;
    size_t m_endFrom = 0;
    int m_startsSeen = 0;
    std::vector<size_t> m_starts;
    std::vector<size_t> m_ends;
};

} // namespace harvelop
