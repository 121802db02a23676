// Finds the occurrences of one marker in a text that grows.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace harvelop
{

// Looks at each character once and takes the same few cycles for it whatever the text is like, near misses included:
// one bit a marker character says whether the marker matches up to there. No library search keeps that up: those that
// skip ahead lose it where a text is full of almost-markers.
class MarkerFinder
{
public:
    explicit MarkerFinder(std::string_view marker);

    // Where the next occurrence begins, overlapping ones included, in a text that has only grown since the last call.
    // None: not yet. An empty marker occurs at every character.
    std::optional<size_t> Next(std::string_view text);

    // Goes on with the occurrences that begin at `position` or behind it.
    void StartAt(size_t position);

private:
    static constexpr size_t Bits = 64;

    std::string m_head; // what a longer marker has before its last 64 characters; compared once those have matched
    size_t m_length;    // of the whole marker
    std::uint64_t m_lastBit = 0;
    std::array<std::uint64_t, 256> m_places{}; // for each character, a bit at each of its places in the marker's tail
    std::uint64_t m_matched = 0;               // bit i: the tail's first i + 1 characters stand just before m_position
    size_t m_position = 0;
    size_t m_startAt = 0;
};

} // namespace harvelop
