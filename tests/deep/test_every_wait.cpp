// Each wait of each dialogue, interrupted: one after the other, a fresh program each time, until a run
// has no such wait. In the short form some of them.
#include "deep/bench.h"
#include "support/wait_walk.h"

namespace harvelop::test
{

namespace
{

constexpr int ShortStride = 7;

struct Bench : DeepBench {
    struct Moment {
        double ms = 0;
        size_t sent = 0;
        size_t boxes = 0;
        std::map<std::string, std::string> files;
    };
    Moment Now() const { return {pump.NowMs(), Sent(), Boxes(), files.files}; }
};

class DeepEveryWait : public testing::TestWithParam<Dialogue>
{
protected:
    using Moment = Bench::Moment;

    static void Walk(const WaitWalk<Bench>::Step& event, const WaitWalk<Bench>::Check& check)
    {
        const WaitWalk<Bench> walk{GetParam().prepare, GetParam().go, event, Stride(ShortStride)};
        walk.Walk([&](Bench& t, const Moment& then) {
            t.ExpectReleased();
            EXPECT_LE(t.pump.NowMs(), then.ms + LongestRestMs);
            check(t, then);
        });
    }
};

} // namespace

TEST_P(DeepEveryWait, AfterTheProgramsEndNothingIsSentShownOrWritten)
{
    Walk([](Bench& t) { t.heart.end.EndProgram(); },
         [](Bench& t, const Moment& then) {
             EXPECT_EQ(t.pump.NowMs(), then.ms);
             EXPECT_EQ(t.Sent(), then.sent);
             EXPECT_EQ(t.Boxes(), then.boxes);
             EXPECT_EQ(t.files.files, then.files);
         });
}

TEST_P(DeepEveryWait, StoppedOrCancelledItLeavesAllControlsFree)
{
    Walk([](Bench& t) { (GetParam().searches ? t.heart.state.StopSearch : t.heart.state.AbortWait) = true; },
         [](Bench& t, const Moment&) { t.ExpectUsable(); });
}

TEST_P(DeepEveryWait, TheOptionsPanelCanBeClosed)
{
    Walk([](Bench& t) { t.heart.state.StopLinkWork = t.heart.state.StopSearch = true; },
         [](Bench& t, const Moment&) { t.ExpectUsable(); });
}

TEST_P(DeepEveryWait, ThePanelOfTheLoggerCanBeClosed)
{
    Walk([](Bench& t) { t.ClosePanel(); }, [](Bench& t, const Moment&) { t.ExpectUsable(); });
}

INSTANTIATE_TEST_SUITE_P(Of, DeepEveryWait, testing::ValuesIn(AllDialogues()),
                         [](const auto& run) { return std::string(run.param.name); });

} // namespace harvelop::test
