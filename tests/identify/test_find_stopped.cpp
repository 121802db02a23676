// A search that is stopped, or whose program ends, at any moment.
#include "identify_program.h"

#include <gtest/gtest.h>

namespace harvelop::test
{

namespace
{

constexpr double StepMs = 90; // shorter than most waits, and out of step with all of them
constexpr double LongestMs = 60000;

struct Searching : IdentifyProgram {
    HeadlessPanels panels{heart.panelServices()};

    Searching()
    {
        serial.Plug(2, nullptr, "");
        serial.Plug(4, Logger("KR40", "", "5.06.0001", "012345"), "57600");
        serial.Plug(5, Logger("KR200", "1", "7.18"), "115200");
    }

    // Whether a box comes depends on when the search is stopped: one answer is there, and used up at last.
    void Run()
    {
        dialogs.Expect(BoxAnswer::Ok);
        Find(" All Ports");
        boxes = static_cast<int>(dialogs.shown.size());
        if (boxes == 0)
            dialogs.Show({});
    }

    double LastMs(FakeSerial::Event::Kind kind) const
    {
        double last = -1;
        for (const auto& event : serial.events)
            if (event.kind == kind)
                last = event.ms;
        return last;
    }

    int boxes = 0;
};

double wholeSearchMs()
{
    Searching t;
    t.Run();
    EXPECT_EQ(t.Search().FoundCount, 2);
    return t.pump.NowMs();
}

} // namespace

TEST(FindStopped, StoppedAtAnyMomentNoFurtherRateIsTried)
{
    const double whole = wholeSearchMs();
    ASSERT_LT(whole, LongestMs);
    for (double at = 0; at < whole; at += StepMs) {
        Searching t;
        t.pump.After(at, [&] { t.heart.state.StopSearch = true; });
        t.Run();
        EXPECT_LE(t.LastMs(FakeSerial::Event::Kind::Settings), at) << at;
        EXPECT_FALSE(t.heart.state.SearchRunning) << at;
        EXPECT_FALSE(t.serial.PortOpen()) << at;
        EXPECT_EQ(t.boxes, t.Search().FoundCount == 0 ? 1 : 0) << at;
        EXPECT_EQ(t.heart.tables.Count(), t.Search().FoundCount) << at;
        EXPECT_LE(t.pump.NowMs(), whole + 1) << at;
    }
}

TEST(FindStopped, EndedAtAnyMomentItReturnsAtOnceSendsNothingAndChangesNoFile)
{
    const double whole = wholeSearchMs();
    for (double at = 0; at < whole; at += StepMs) {
        Searching t;
        std::map<std::string, std::string> files;
        t.pump.After(at, [&] {
            files = t.files.files;
            t.heart.end.EndProgram();
        });
        t.Run();
        EXPECT_LE(t.pump.NowMs(), at + 0.001) << at;
        EXPECT_LE(t.LastMs(FakeSerial::Event::Kind::Sent), at) << at;
        EXPECT_EQ(t.files.files, files) << at;
        EXPECT_EQ(t.boxes, 0) << at;
        EXPECT_FALSE(t.heart.state.SearchRunning) << at;
    }
}

TEST(FindStopped, AnAlreadyStoppedSearchFindsNothingAgain)
{
    Searching t;
    t.Search().LoggerFound = true; // of an earlier search
    t.heart.state.StopSearch = true;
    t.Run();
    EXPECT_EQ(t.Search().FoundCount, 0);
    EXPECT_EQ(t.boxes, 1);
}

} // namespace harvelop::test
