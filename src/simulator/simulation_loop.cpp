#include "simulator/simulation_loop.h"

#include "simulator/simulated_device.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <ctime>
#include <span>

namespace harvelop
{

namespace
{

constexpr double LongestWaitMs = 3600 * 1000;

double steadyMs()
{
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

void waitForAny(std::vector<pollfd>& waits, double untilMs)
{
    const double ms = std::clamp(untilMs - steadyMs(), 0.0, LongestWaitMs);
    timespec limit{};
    limit.tv_sec = static_cast<time_t>(ms / 1000);
    limit.tv_nsec = static_cast<long>(std::ceil(std::fmod(ms, 1000) * 1e6));
    limit.tv_nsec = std::min(limit.tv_nsec, 999999999L);
    if (ppoll(waits.data(), waits.size(), untilMs == SimulatedDevice::Never ? nullptr : &limit, nullptr) < 0)
        std::ranges::for_each(waits, [](pollfd& wait) { wait.revents = 0; });
}

} // namespace

void SimulationLoop::Run(int stopFd)
{
    for (;;) {
        std::vector<pollfd> waits{{stopFd, POLLIN, 0}};
        std::vector<std::size_t> ends; // of each line's part of `waits`
        double dueMs = SimulatedDevice::Never;
        for (const auto& line : m_lines) {
            const auto some = line->Waits();
            waits.insert(waits.end(), some.begin(), some.end());
            ends.push_back(waits.size());
            dueMs = std::min(dueMs, line->NextDueMs());
        }
        waitForAny(waits, dueMs);
        if (waits.front().revents != 0)
            return;
        const double nowMs = steadyMs();
        for (std::size_t i = 0; i < m_lines.size(); ++i) {
            const std::size_t begin = i == 0 ? 1 : ends[i - 1];
            const auto own = std::span(waits).subspan(begin, ends[i] - begin);
            const bool stirred = std::ranges::any_of(own, [](const pollfd& wait) { return wait.revents != 0; });
            if (stirred || m_lines[i]->NextDueMs() <= nowMs)
                m_lines[i]->Serve(nowMs);
        }
    }
}

} // namespace harvelop
