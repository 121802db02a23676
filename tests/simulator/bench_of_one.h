// One simulated logger on the bench, in virtual time: say something to it and see what it answers, and when.
#pragma once

#include "simulator/simulated_logger.h"

#include <string>
#include <utility>
#include <vector>

namespace harvelop::test
{

inline const std::string Del = "\x7f\r\n";

class BenchOfOne
{
public:
    explicit BenchOfOne(const LoggerConfig& config) : logger(config) {}

    // Sends `text` now and gives all that the logger sends until it has nothing more to send, or for `ms` at most.
    std::string Ask(const std::string& text, double ms = 60000)
    {
        logger.Receive(nowMs, text);
        const double until = nowMs + ms;
        std::string answer;
        arrivals.clear();
        while (logger.NextDueMs() <= until) {
            nowMs = std::max(nowMs, logger.NextDueMs());
            arrivals.emplace_back(nowMs, logger.Transmit(nowMs));
            answer += arrivals.back().second;
        }
        return answer;
    }

    SimulatedLogger logger;
    double nowMs = 1000;
    std::vector<std::pair<double, std::string>> arrivals; // of the last answer: when, what
};

} // namespace harvelop::test
