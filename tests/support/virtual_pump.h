// Virtual time: waits cost nothing, and everything happens in the order of its time.
#pragma once

#include "platform/event_pump.h"

#include <cmath>
#include <functional>
#include <map>

namespace harvelop::test
{

class VirtualPump : public EventPump
{
public:
    // `Timer` starts at `start` seconds since midnight.
    explicit VirtualPump(double start = 36000.0) : m_start(start) {}

    double Timer() const override { return std::fmod(m_start + m_nowMs / 1000.0, 86400.0); }
    void ServePending() override
    {
        ++passes;
        runDue();
    }
    void ServeFor(double ms) override
    {
        ++passes;
        if (whenWaiting)
            whenWaiting(ms);
        const double until = m_nowMs + ms;
        if (!m_events.empty() && m_events.begin()->first <= until)
            m_nowMs = std::max(m_nowMs, m_events.begin()->first);
        else
            m_nowMs = until;
        runDue();
    }

    double NowMs() const { return m_nowMs; } // since the test began; only rises

    // `event` happens `ms` milliseconds from now, served by some wait.
    void After(double ms, std::function<void()> event) { m_events.emplace(m_nowMs + ms, std::move(event)); }

    long passes = 0;                            // how often events were served
    std::function<void(double ms)> whenWaiting; // as a wait of that length begins

private:
    void runDue()
    {
        while (!m_events.empty() && m_events.begin()->first <= m_nowMs) {
            const auto event = std::move(m_events.begin()->second);
            m_events.erase(m_events.begin());
            event();
        }
    }

    double m_start;
    double m_nowMs = 0;
    std::multimap<double, std::function<void()>> m_events;
};

} // namespace harvelop::test
