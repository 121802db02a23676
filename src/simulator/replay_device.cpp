#include "simulator/replay_device.h"

#include <algorithm>
#include <utility>

namespace harvelop
{

namespace
{

using Kind = RecordedStep::Kind;

constexpr std::size_t LongestLine = 1 << 16;

bool fits(const RecordedStep& step, const std::string& heard)
{
    return step.kind == Kind::Heard && (step.isHidden ? heard.starts_with(step.text) : heard == step.text);
}

} // namespace

ReplayDevice::ReplayDevice(RecordedLine line, Openings openings, Pace pace)
    : m_line(std::move(line)), m_openings(openings), m_pace(pace)
{
}

void ReplayDevice::Opened(double nowMs)
{
    const auto& steps = m_line.steps;
    const auto isOpening = [&](std::size_t at) { return at < steps.size() && steps[at].kind == Kind::Opened; };
    m_heard.clear();
    if (m_openings == Openings::Exact) {
        for (std::size_t passed = 0; !isOpening(m_at) && passed <= steps.size(); ++passed)
            m_at = m_at < steps.size() ? m_at + 1 : 0;
        m_answers.clear();
        m_onLine = true;
    }
    if (isOpening(m_at))
        goOnBehind(m_at, nowMs);
}

void ReplayDevice::Receive(double nowMs, std::string_view bytes)
{
    for (const char c : bytes) {
        if (c == '\n')
            continue;
        if (c == '\r' || m_heard.size() < LongestLine)
            m_heard += c;
        const std::size_t next = nextToHear();
        const bool isPart = next < m_line.steps.size() && !m_line.steps[next].EndsLine();
        if (isPart && fits(m_line.steps[next], m_heard)) {
            m_heard.clear();
            goOnBehind(next, nowMs);
        } else if (c == '\r') {
            takeLine(nowMs);
        }
    }
}

// Behind the last step the first one again; behind all of them if there is none.
std::size_t ReplayDevice::nextToHear() const
{
    const auto isHeard = [](const RecordedStep& step) { return step.kind == Kind::Heard; };
    const auto begin = m_line.steps.begin();
    const auto end = m_line.steps.end();
    const auto next = std::find_if(begin + static_cast<std::ptrdiff_t>(m_at), end, isHeard);
    return static_cast<std::size_t>((next != end ? next : std::find_if(begin, end, isHeard)) - begin);
}

void ReplayDevice::takeLine(double nowMs)
{
    const std::string heard = std::exchange(m_heard, {});
    const auto& steps = m_line.steps;
    const auto begin = steps.begin();
    const auto isIt = [&](const RecordedStep& step) { return fits(step, heard); };
    const std::size_t expected = nextToHear();
    if (expected < steps.size() && isIt(steps[expected]))
        return goOnBehind(expected, nowMs);
    // A hidden line, which could be any, is no place to go on at.
    const auto isSame = [&](const RecordedStep& step) { return !(step.isHidden && step.text.empty()) && isIt(step); };
    auto found = std::find_if(begin + static_cast<std::ptrdiff_t>(expected), steps.end(), isSame);
    if (found == steps.end())
        found = std::find_if(begin, steps.end(), isSame);
    if (Tell)
        Tell((expected < steps.size()
                  ? "line " + std::to_string(steps[expected].number) + " of the trace did not come; "
                  : "nothing comes in the trace; ") +
             (found == steps.end()
                  ? "what came is not in the trace and stays unanswered"
                  : "what came is its line " + std::to_string(found->number) + ", and it goes on there"));
    if (found != steps.end())
        goOnBehind(static_cast<std::size_t>(found - begin), nowMs);
}

// Answers as the trace does behind that step, up to the next one that is to be heard. What was still to be said comes
// before it, at once: the other side has not waited for it.
void ReplayDevice::goOnBehind(std::size_t index, double nowMs)
{
    const auto& steps = m_line.steps;
    for (Piece& piece : m_answers)
        piece.dueMs = std::min(piece.dueMs, nowMs);
    double dueMs = nowMs;
    for (m_at = index + 1; m_at < steps.size(); ++m_at) {
        const RecordedStep& step = steps[m_at];
        if (step.kind == Kind::Heard || step.kind == Kind::Opened)
            return;
        if (m_pace == Pace::AsRecorded && !step.isDropped)
            dueMs = std::max(dueMs, nowMs + step.ms - steps[index].ms);
        m_answers.push_back({dueMs, &step});
    }
}

std::string ReplayDevice::Transmit(double nowMs)
{
    std::string text;
    while (!m_answers.empty() && m_answers.front().dueMs <= nowMs) {
        const RecordedStep& step = *m_answers.front().step;
        m_onLine = m_onLine && step.kind != Kind::Lost;
        text += step.text;
        m_answers.pop_front();
    }
    return text;
}

double ReplayDevice::NextDueMs() const
{
    return m_answers.empty() ? Never : m_answers.front().dueMs;
}

} // namespace harvelop
