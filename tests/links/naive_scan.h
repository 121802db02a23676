// The rule of the reply scan, spelled out step by step and without any thought for cost.
#pragma once

#include "links/response_scan.h"

#include <optional>
#include <string>

namespace harvelop::test
{

// `length` characters from position `from`, which counts from 1; fewer at the text's end, none for a negative length.
inline std::string Middle(const std::string& text, long from, long length)
{
    if (length <= 0 || from < 1 || from > static_cast<long>(text.size()))
        return {};
    return text.substr(static_cast<size_t>(from - 1), static_cast<size_t>(length));
}

struct NaiveReply {
    MarkerMatch match;
    std::string between;     // without the markers
    std::string withMarkers; // with them
    std::string trimmed;     // what a trimmed window keeps
};

inline std::optional<NaiveReply> NaiveScan(const std::string& text, const Markers& markers)
{
    const auto length = [](const std::string& s) { return static_cast<long>(s.size()); };
    long position = 1;
    int starts = 0;
    int ends = 0;
    while (position <= length(text)) {
        const std::string here = Middle(text, position, length(markers.startText));
        ++position;
        if (here != markers.startText)
            continue;
        ++starts;
        if (starts < markers.startCount)
            continue;
        bool pass = false;
        long noted = 0;
        long j = 0;
        for (; j <= length(text) - position; ++j) {
            if (Middle(text, position + j, length(markers.endText)) == markers.endText && !pass) {
                ++ends;
                if (ends >= markers.endCount) {
                    pass = true;
                    noted = j;
                }
            }
        }
        if (!pass)
            continue;
        const long s = position - 1;
        NaiveReply reply;
        reply.match = {static_cast<size_t>(s - 1), static_cast<size_t>(position + noted - 1)};
        reply.withMarkers = Middle(text, s, noted + length(markers.endText) + 1);
        reply.between = Middle(text, s + length(markers.startText), noted + 1 - length(markers.startText));
        reply.trimmed = text.substr(text.size() - static_cast<size_t>(length(text) - j));
        return reply;
    }
    return std::nullopt;
}

} // namespace harvelop::test
