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
        const std::size_t next = findNext(m_at);
        const bool isPart = next < m_line.steps.size() && !m_line.steps[next].EndsLine();
        if (isPart && fits(m_line.steps[next], m_heard)) {
            m_heard.clear();
            goOnBehind(next, nowMs);
        } else if (c == '\r') {
            takeLine(nowMs);
        }
    }
}

std::size_t ReplayDevice::findNext(std::size_t from) const
{
    while (from < m_line.steps.size() && m_line.steps[from].kind != Kind::Heard)
        ++from;
    return from;
}

void ReplayDevice::takeLine(double nowMs)
{
    const std::string heard = std::exchange(m_heard, {});
    const auto& steps = m_line.steps;
    const auto begin = steps.begin();
    const auto isIt = [&](const RecordedStep& step) { return fits(step, heard); };
    const std::size_t expected = findNext(m_at);
    if (expected < steps.size() && isIt(steps[expected]))
        return goOnBehind(expected, nowMs);
    // A hidden line, which could be any, is no place to go on at.
    const auto isSame = [&](const RecordedStep& step) { return !(step.isHidden && step.text.empty()) && isIt(step); };
    auto found = std::find_if(begin + static_cast<std::ptrdiff_t>(expected), steps.end(), isSame);
    if (found == steps.end())
        found = std::find_if(begin, steps.end(), isSame);
    const bool anew = expected == steps.size() && found == begin + static_cast<std::ptrdiff_t>(findNext(0));
    if (Tell && !anew)
        Tell((expected < steps.size()
                  ? "line " + std::to_string(steps[expected].number) + " of the trace did not come; "
                  : "nothing more comes in the trace; ") +
             (found == steps.end()
                  ? "what came is not in the trace and stays unanswered"
                  : "what came is its line " + std::to_string(found->number) + ", and it goes on there"));
    if (found != steps.end())
        goOnBehind(static_cast<std::size_t>(found - begin), nowMs);
}

// Answers as the trace does behind that step, up to the next one that is to be heard.
void ReplayDevice::goOnBehind(std::size_t index, double nowMs)
{
    const auto& steps = m_line.steps;
    m_busyUntilMs = std::max(m_busyUntilMs, nowMs);
    for (m_at = index + 1; m_at < steps.size(); ++m_at) {
        const RecordedStep& step = steps[m_at];
        const bool isLoss = step.kind == Kind::Lost && m_at + 1 == steps.size();
        if (step.kind == Kind::Heard || step.kind == Kind::Opened)
            return;
        if (m_pace == Pace::AsRecorded && !step.isDropped)
            m_busyUntilMs = std::max(m_busyUntilMs, nowMs + step.ms - steps[index].ms);
        if (step.kind == Kind::Answered || isLoss)
            m_answers.push_back({m_busyUntilMs, &step});
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
    if (!m_onLine)
        return 0; // so that its line looks
    return m_answers.empty() ? Never : m_answers.front().dueMs;
}

} // namespace harvelop
