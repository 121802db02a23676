// Each wait of each dialogue, interrupted: one after the other, a fresh program each time, until a run
// has no such wait. In the short form some of them.
#include "deep/bench.h"

namespace harvelop::test
{

namespace
{

constexpr int ShortStride = 7;
constexpr double BeforeAnyAnswerMs = 0.5;

class DeepEveryWait : public testing::TestWithParam<Dialogue>
{
protected:
    struct Moment {
        bool happened = false;
        double ms = 0;
        size_t sent = 0;
        size_t boxes = 0;
        std::map<std::string, std::string> files;
    };
    using Check = std::function<void(DeepBench&, const Moment&)>;

    static void Walk(const std::function<void(DeepBench&)>& event, const Check& check)
    {
        int interrupted = 0;
        for (int wait = 1;; wait += Stride(ShortStride)) {
            SCOPED_TRACE("wait " + std::to_string(wait));
            DeepBench bench;
            GetParam().prepare(bench);
            Moment moment;
            int waits = 0;
            bench.pump.whenWaiting = [&](double ms) {
                if (++waits == wait)
                    bench.pump.After(std::min(ms / 2, BeforeAnyAnswerMs), [&] {
                        event(bench);
                        moment = {true, bench.pump.NowMs(), bench.Sent(), bench.Boxes(), bench.files.files};
                    });
            };
            GetParam().go(bench);
            if (waits < wait)
                break;
            const double ended = bench.pump.NowMs();
            bench.pump.ServePending();
            bench.ExpectReleased();
            if (moment.happened) {
                ++interrupted;
                EXPECT_LE(ended, moment.ms + LongestRestMs);
                check(bench, moment);
            }
            if (HasFailure())
                return; // the other waits would tell the same
        }
        EXPECT_GT(interrupted, 0);
    }
};

} // namespace

TEST_P(DeepEveryWait, AfterTheProgramsEndNothingIsSentShownOrWritten)
{
    Walk([](DeepBench& t) { t.heart.end.EndProgram(); },
         [](DeepBench& t, const Moment& then) {
             EXPECT_EQ(t.pump.NowMs(), then.ms);
             EXPECT_EQ(t.Sent(), then.sent);
             EXPECT_EQ(t.Boxes(), then.boxes);
             EXPECT_EQ(t.files.files, then.files);
         });
}

TEST_P(DeepEveryWait, StoppedOrCancelledItLeavesAllControlsFree)
{
    Walk([](DeepBench& t) { (GetParam().searches ? t.heart.state.StopSearch : t.heart.state.AbortWait) = true; },
         [](DeepBench& t, const Moment&) { t.ExpectUsable(); });
}

TEST_P(DeepEveryWait, TheOptionsPanelCanBeClosed)
{
    Walk([](DeepBench& t) { t.heart.state.StopLinkWork = t.heart.state.StopSearch = true; },
         [](DeepBench& t, const Moment&) { t.ExpectUsable(); });
}

TEST_P(DeepEveryWait, ThePanelOfTheLoggerCanBeClosed)
{
    Walk([](DeepBench& t) { t.ClosePanel(); }, [](DeepBench& t, const Moment&) { t.ExpectUsable(); });
}

INSTANTIATE_TEST_SUITE_P(Of, DeepEveryWait, testing::ValuesIn(AllDialogues()),
                         [](const auto& run) { return std::string(run.param.name); });

} // namespace harvelop::test
