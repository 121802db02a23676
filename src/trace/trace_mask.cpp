#include "trace/trace_mask.h"

#include <algorithm>
#include <utility>

namespace harvelop
{

namespace
{

constexpr double LongestHeldS = 10;
constexpr size_t MostHeld = 1000;
constexpr double DayS = 86400;

// Past midnight the clock begins anew.
bool isLongAgo(double seconds, double nowSeconds)
{
    const double age = nowSeconds - seconds;
    return (age < 0 ? age + DayS : age) > LongestHeldS;
}

} // namespace

void TraceMask::Opened(PasswordWatch::Line line)
{
    m_watch.Opened(line);
    m_sent.Restart();
    m_received.Restart();
}

void TraceMask::Take(TraceEntry entry)
{
    const double nowSeconds = entry.seconds;
    if (m_held.empty() || m_watch.LineUnderWay())
        m_heldSince = nowSeconds;
    bool tooLong = isLongAgo(m_heldSince, nowSeconds);
    if (tooLong && entry.IsSent()) {
        release(); // without the new line, which begins here
        m_heldSince = nowSeconds;
        tooLong = false;
    }
    if (entry.IsSent())
        m_watch.Sent(entry.text);
    else if (entry.IsStream())
        m_watch.Received(entry.text);
    m_held.push_back(std::move(entry));
    if (!m_watch.Undecided() || tooLong || m_held.size() > MostHeld)
        release();
    while (!m_waiting.empty() && (m_waiting.size() > MostHeld || isLongAgo(m_waiting.front().seconds, nowSeconds)))
        hideOldest();
}

void TraceMask::Flush()
{
    release();
    while (!m_waiting.empty())
        hideOldest();
}

void TraceMask::release()
{
    m_watch.GiveUpLine();
    for (TraceEntry& entry : std::exchange(m_held, {})) {
        m_waiting.push_back(std::move(entry));
        const TraceEntry& last = m_waiting.back();
        if (last.IsStream())
            spread(last.IsSent(), filterOf(last).Take(last.text));
    }
    writeDecided();
}

// Gives the verdicts of one direction to its first characters that have none yet.
void TraceMask::spread(bool isSent, const std::string& verdicts)
{
    size_t given = 0;
    for (TraceEntry& entry : m_waiting) {
        if (given == verdicts.size())
            return;
        if (!entry.IsStream() || entry.IsSent() != isSent)
            continue;
        const size_t count = std::min(entry.text.size() - entry.hidden.size(), verdicts.size() - given);
        entry.hidden.append(verdicts, given, count);
        given += count;
    }
}

void TraceMask::writeDecided()
{
    while (!m_waiting.empty()) {
        const TraceEntry& first = m_waiting.front();
        if (first.IsStream() && first.hidden.size() < first.text.size())
            return;
        Write(first);
        m_waiting.pop_front();
    }
}

void TraceMask::hideOldest()
{
    const TraceEntry& first = m_waiting.front();
    spread(first.IsSent(), filterOf(first).GiveUp());
    writeDecided();
}

} // namespace harvelop
