// Walks the waits of some work: a fresh program for each, with an event in the middle of that wait.
#pragma once

#include "loading/loading_bench.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>

namespace harvelop::test
{

struct WaitWalk {
    using Step = std::function<void(LoadingTest&)>;
    struct Moment { // as the event was over
        double ms = 0;
        size_t lines = 0; // that had reached the logger
        size_t boxes = 0; // that had shown
        size_t writes = 0;
        size_t steps = 0; // that the progress window had told
    };
    using Check = std::function<void(LoadingTest&, const Moment&)>;

    Step prepare; // before any wait is counted
    Step work;    // all that is walked
    Step event;

    // Walks until the work has no such wait, or a check fails. `check` sees each run in which the event came.
    void Walk(const Check& check) const
    {
        for (int wait = 1;; ++wait) {
            SCOPED_TRACE("wait " + std::to_string(wait));
            LoadingTest t;
            t.answer = [](const Box& box) { return box.buttons == BoxButtons::YesNo ? BoxAnswer::Yes : BoxAnswer::Ok; };
            prepare(t);
            Moment moment;
            bool happened = false;
            const auto interrupt = [&] {
                event(t);
                happened = true;
                moment = {t.pump.NowMs(), t.far->lines.size(), t.Boxes().size(), t.files.writes.size(),
                          t.messages.captions.size()};
            };
            int waits = 0;
            t.pump.whenWaiting = [&](double ms) {
                if (++waits == wait)
                    t.pump.After(ms / 2, interrupt);
            };
            work(t);
            if (waits < wait) {
                EXPECT_GT(wait, 1);
                return;
            }
            t.heart.waiting.ServeEvents();
            if (happened)
                check(t, moment);
            if (testing::Test::HasFailure())
                return; // the other waits would tell the same
        }
    }
};

} // namespace harvelop::test
