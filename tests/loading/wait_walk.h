// What is walked wait by wait of a program that works with a logger, and a user who agrees to everything.
#pragma once

#include "loading/loading_bench.h"
#include "support/wait_walk.h"

namespace harvelop::test
{

struct AgreedLoading : LoadingTest {
    AgreedLoading()
    {
        answer = [](const Box& box) { return box.buttons == BoxButtons::YesNo ? BoxAnswer::Yes : BoxAnswer::Ok; };
    }

    struct Moment {
        double ms = 0;
        size_t lines = 0; // that had reached the logger
        size_t boxes = 0; // that had shown
        size_t writes = 0;
        size_t steps = 0; // that the progress window had told
    };
    Moment Now() const
    {
        return {pump.NowMs(), far->lines.size(), Boxes().size(), files.writes.size(), messages.captions.size()};
    }
};

using LoadingWalk = WaitWalk<AgreedLoading>;

} // namespace harvelop::test
