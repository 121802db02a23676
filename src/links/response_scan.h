// Looks for a reply between two markers in a text that grows.
#pragma once

#include "links/marker_finder.h"
#include "links/receive_window.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace harvelop
{

struct Markers {
    std::string startText; // empty: matches at every position of a non-empty text
    int startCount = 1;    // which occurrence opens the reply, 1 the first; less counts as 1
    std::string endText;
    int endCount = 1; // which occurrence closes it; less counts as 1
};

// Where a reply stands: indices from 0 of the first characters of the two markers.
struct MarkerMatch {
    size_t start = 0;
    size_t end = 0;
};

// Gives at each call exactly what a scan of the whole text from its first character would give, but looks only at what
// has been appended since the last call.
//
// The rule: starts are counted in order, overlapping ones too. From the `startCount`-th on, each start looks for ends
// from one character behind its own first one to the end of the text, and the count of ends is carried on from start to
// start; the end that makes it reach `endCount` closes the reply.
class ResponseScan
{
public:
    explicit ResponseScan(const Markers& markers);

    std::optional<MarkerMatch> Scan(const ReceiveWindow& window);

private:
    void startOver(std::uint64_t generation);
    void findMarkers(std::string_view text);
    std::optional<MarkerMatch> pairMarkers() const;

    MarkerFinder m_startFinder;
    MarkerFinder m_endFinder;
    size_t m_firstStart; // the occurrence from which starts qualify, 1 the first
    size_t m_wanted;     // ends to count
    std::uint64_t m_generation = 0;
    size_t m_startsSeen = 0;
    // The qualifying starts and the ends behind the first of them, rising. `m_wanted` of each tell all: each start that
    // has an end behind it adds at least one to the count, and the ends of the first start alone can make it.
    std::vector<size_t> m_starts;
    std::vector<size_t> m_ends;
};

} // namespace harvelop
