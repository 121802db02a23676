// Walks the waits of some work in virtual time: a fresh program for each, in which something happens in that wait.
#pragma once

#include "support/virtual_pump.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <string>

namespace harvelop::test
{

// A `Bench` is a program with a `pump`; its `Now()` gives a `Moment`, what a check wants to know of the program as it
// was when the event was over.
template <typename Bench> struct WaitWalk {
    using Moment = typename Bench::Moment;
    using Step = std::function<void(Bench&)>;
    using Check = std::function<void(Bench&, const Moment&)>;

    Step prepare; // before any wait is counted
    Step work;    // all that is walked
    Step event;
    int stride = 1; // from one wait that is tried to the next

    // Walks until the work has no such wait, or a check fails. `check` sees the end of each run.
    void Walk(const Check& check) const
    {
        constexpr double BeforeAnyAnswerMs = 0.5;
        for (int wait = 1;; wait += stride) {
            SCOPED_TRACE("wait " + std::to_string(wait));
            Bench bench;
            prepare(bench);
            std::optional<Moment> moment;
            int waits = 0;
            bench.pump.whenWaiting = [&](double ms) {
                if (++waits == wait)
                    bench.pump.After(std::min(ms / 2, BeforeAnyAnswerMs), [&] {
                        event(bench);
                        moment = bench.Now();
                    });
            };
            work(bench);
            if (waits < wait) {
                EXPECT_GT(wait, 1) << "there is no wait at all";
                return;
            }
            bench.pump.whenWaiting = nullptr;
            bench.pump.ServePending(); // what is still under way may come yet
            ASSERT_TRUE(moment) << "the wait was over before it began";
            check(bench, *moment);
            if (testing::Test::HasFailure())
                return; // the other waits would tell the same
        }
    }
};

} // namespace harvelop::test
