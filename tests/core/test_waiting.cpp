#include "core/waiting.h"
#include "support/virtual_pump.h"

#include <gtest/gtest.h>

namespace harvelop::test
{
namespace
{

struct Bench {
    explicit Bench(double start = 36000.0) : pump(start) {}
    VirtualPump pump;
    ProgramEnd end;
    Waiting waiting{pump, end};
};

TEST(Waiting, LastsAsLongAsAsked)
{
    Bench bench;
    bench.waiting.WaitMs(1500);
    EXPECT_NEAR(bench.pump.NowMs(), 1500, 0.001);
}

TEST(Waiting, EndsOnTimeAcrossMidnight)
{
    Bench bench(86399.5);
    bench.waiting.WaitMs(2000);
    EXPECT_NEAR(bench.pump.NowMs(), 2000, 0.001);
    EXPECT_NEAR(bench.waiting.Timer(), 1.5, 0.001);
}

TEST(Waiting, EndsOnTimeAcrossMidnightWithEventsOnBothSides)
{
    Bench bench(86399.5);
    int served = 0;
    for (const double ms : {100.0, 499.0, 501.0, 1000.0})
        bench.pump.After(ms, [&] { ++served; });
    bench.waiting.WaitMs(2000);
    EXPECT_NEAR(bench.pump.NowMs(), 2000, 0.001);
    EXPECT_EQ(served, 4);
}

TEST(Waiting, CostsTwoPassesOfTheEventsAtLeast)
{
    for (const double ms : {0.0, -5.0}) {
        Bench bench;
        bench.waiting.WaitMs(ms);
        EXPECT_EQ(bench.pump.passes, 2);
        EXPECT_EQ(bench.pump.NowMs(), 0);
    }
}

TEST(Waiting, SleepsWhileNothingHappens)
{
    Bench bench;
    bench.waiting.WaitMs(10000);
    EXPECT_LE(bench.pump.passes, 4);
}

TEST(Waiting, ServesEventsWhenTheyAreDue)
{
    Bench bench;
    std::vector<double> times;
    for (const double ms : {0.0, 250.0, 999.0, 1001.0})
        bench.pump.After(ms, [&] { times.push_back(bench.pump.NowMs()); });
    bench.waiting.WaitMs(1000);
    EXPECT_EQ(times, (std::vector<double>{0, 250, 999}));
}

TEST(Waiting, RunsNestedInsideAWait)
{
    Bench bench;
    double innerEnd = 0;
    bench.pump.After(100, [&] {
        bench.waiting.WaitMs(300);
        innerEnd = bench.pump.NowMs();
    });
    bench.waiting.WaitMs(200);
    EXPECT_NEAR(innerEnd, 400, 0.001);
    EXPECT_NEAR(bench.pump.NowMs(), 400, 0.001);
}

TEST(Waiting, ReturnsAtOnceWhenTheProgramHasEnded)
{
    Bench bench;
    bench.end.EndProgram();
    bench.waiting.WaitMs(5000);
    bench.waiting.ServeEvents();
    bench.waiting.ServeFor(5000);
    EXPECT_EQ(bench.pump.passes, 0);
    EXPECT_EQ(bench.pump.NowMs(), 0);
}

TEST(Waiting, ReturnsWhenTheProgramEndsWithinIt)
{
    Bench bench;
    bool later = false;
    bench.pump.After(100, [&] { bench.end.EndProgram(); });
    bench.pump.After(200, [&] { later = true; });
    bench.waiting.WaitMs(5000);
    EXPECT_EQ(bench.pump.NowMs(), 100);
    EXPECT_FALSE(later);
    EXPECT_TRUE(bench.waiting.Ended());
}

TEST(Waiting, ServeEventsRunsWhatIsPendingAndNeverBlocks)
{
    Bench bench;
    int served = 0;
    bench.pump.After(0, [&] { ++served; });
    bench.pump.After(1, [&] { ++served; });
    bench.waiting.ServeEvents();
    EXPECT_EQ(served, 1);
    EXPECT_EQ(bench.pump.NowMs(), 0);
}

TEST(Waiting, ServeForReturnsWithTheFirstEvent)
{
    Bench bench;
    bench.pump.After(30, [] {});
    bench.waiting.ServeFor(100);
    EXPECT_EQ(bench.pump.NowMs(), 30);
    bench.waiting.ServeFor(100);
    EXPECT_EQ(bench.pump.NowMs(), 130);
}

} // namespace
} // namespace harvelop::test
