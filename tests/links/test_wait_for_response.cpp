#include "link_bench.h"
#include "naive_scan.h"

#include <gmock/gmock.h>
#include <random>

namespace harvelop::test
{
namespace
{

const Markers Angles{"<", 1, ">", 1};

class WaitForResponseTest : public LinkTest
{
protected:
    explicit WaitForResponseTest(double clock = 36000.0) : LinkTest(clock) { OpenPort1(); }

    std::string wait(const Markers& markers, double timeoutMs = 1000)
    {
        return exchange.WaitForResponse(markers, timeoutMs, false, false);
    }
    const std::string& window() { return exchange.txtCharacterWindow.Text(); }
};

TEST_F(WaitForResponseTest, ReturnsAsSoonAsTheReplyIsThere)
{
    serial.Arrive("noise <reply> more", 120);
    EXPECT_EQ(wait(Angles), "reply");
    EXPECT_EQ(link.ResponseStatus, "PASS");
    EXPECT_EQ(link.LastReply, "reply");
    EXPECT_EQ(pump.NowMs(), 120);
}

TEST_F(WaitForResponseTest, FailsAtTheLimit)
{
    link.LastReply = "before";
    EXPECT_EQ(wait(Angles, 750), "");
    EXPECT_EQ(link.ResponseStatus, "FAIL");
    EXPECT_EQ(link.LastReply, "before");
    EXPECT_NEAR(pump.NowMs(), 750, 0.01);
}

TEST_F(WaitForResponseTest, SleepsWhileNothingArrives)
{
    const long before = pump.passes;
    wait(Angles, 10000);
    EXPECT_LE(pump.passes - before, 4);
}

TEST_F(WaitForResponseTest, AnEmptyWindowNeverMatches)
{
    EXPECT_EQ(wait({"", 1, "", 1}, 500), "");
    EXPECT_EQ(link.ResponseStatus, "FAIL");
    EXPECT_NEAR(pump.NowMs(), 500, 0.01);
}

TEST_F(WaitForResponseTest, WithoutAStartMarkerAnEndAtTheFirstCharacterIsNotSeen)
{
    exchange.txtCharacterWindow.Set("OK");
    EXPECT_EQ(wait({"", 1, "OK", 1}, 500), "");
    EXPECT_EQ(link.ResponseStatus, "FAIL");
    exchange.txtCharacterWindow.Set("\nOK");
    EXPECT_EQ(wait({"", 1, "OK", 1}, 500), "\n");
    EXPECT_EQ(link.ResponseStatus, "PASS");
}

TEST_F(WaitForResponseTest, WithStartCount2TheReplyBeginsAtTheSecondStart)
{
    exchange.txtCharacterWindow.Set("<one> <two>");
    EXPECT_EQ(wait({"<", 2, ">", 1}), "two");
}

TEST_F(WaitForResponseTest, AStartMarkerInsideTheReplyDoesNotDisturb)
{
    exchange.txtCharacterWindow.Set("<one <two>");
    EXPECT_EQ(wait(Angles), "one <two");
}

TEST_F(WaitForResponseTest, AnEndMarkerInTwoChunksIsFound)
{
    serial.Arrive("<<reply\r", 50);
    serial.Arrive("\n", 100);
    EXPECT_EQ(wait({"<<", 1, "\r\n", 1}), "reply");
    EXPECT_EQ(pump.NowMs(), 100);
}

TEST_F(WaitForResponseTest, AStartMarkerOneCharacterAtATimeIsFound)
{
    double ms = 0;
    for (const char c : std::string("xx<<reply>>"))
        serial.Arrive(std::string(1, c), ms += 10);
    EXPECT_EQ(wait({"<<", 1, ">>", 1}), "reply");
}

TEST_F(WaitForResponseTest, AStaleReplyMatchesAtOnce)
{
    exchange.txtCharacterWindow.Set("<old>");
    serial.Arrive("<new>", 10);
    EXPECT_EQ(wait(Angles), "old");
    EXPECT_EQ(pump.NowMs(), 0);
}

TEST_F(WaitForResponseTest, AnEndBeforeTheStartFailsByTimeOut)
{
    exchange.txtCharacterWindow.Set("> <reply");
    EXPECT_EQ(wait(Angles, 500), "");
    EXPECT_EQ(link.ResponseStatus, "FAIL");
    EXPECT_NEAR(pump.NowMs(), 500, 0.01);
}

TEST_F(WaitForResponseTest, WhatThePortHoldsUndeliveredIsDropped)
{
    serial.RThreshold(0);
    serial.Arrive("<lost>");
    waiting.ServeEvents();
    ASSERT_EQ(serial.InBufferCount(), 6);
    serial.RThreshold(1);
    EXPECT_EQ(wait(Angles, 500), "");
    EXPECT_EQ(serial.InBufferCount(), 0);
}

TEST_F(WaitForResponseTest, WhatThePortHoldsIsDroppedOnAnyLink)
{
    link.LinkMode = "Ethernet";
    serial.calls.clear();
    wait(Angles, 0);
    EXPECT_THAT(serial.calls, testing::ElementsAre("ClearInBuffer"));
}

TEST_F(WaitForResponseTest, ALimitOfZeroOrLessFailsAtOnceWithoutServingEvents)
{
    exchange.txtCharacterWindow.Set("<old>");
    const long before = pump.passes;
    for (const double limit : {0.0, -1.0, -5000.0}) {
        link.ResponseStatus = "PASS";
        EXPECT_EQ(wait(Angles, limit), "");
        EXPECT_EQ(link.ResponseStatus, "FAIL");
    }
    EXPECT_EQ(pump.passes, before);
}

TEST_F(WaitForResponseTest, TheStatusFailsAsSoonAsTheWaitBegins)
{
    link.ResponseStatus = "PASS";
    std::string during;
    pump.After(10, [&] { during = link.ResponseStatus; });
    serial.Arrive("<a>", 20);
    wait(Angles);
    EXPECT_EQ(during, "FAIL");
    EXPECT_EQ(link.ResponseStatus, "PASS");
}

TEST_F(WaitForResponseTest, NothingIsLookedAtBehindTheLimit)
{
    pump.After(400, [this] {
        waiting.WaitMs(200);
        exchange.txtCharacterWindow.Append("<late>");
    });
    EXPECT_EQ(wait(Angles, 500), "");
    EXPECT_NEAR(pump.NowMs(), 600, 0.01);
}

TEST_F(WaitForResponseTest, TheFirstServingIsLookedAtHoweverLongItTook)
{
    pump.After(0, [this] {
        waiting.WaitMs(2000);
        exchange.txtCharacterWindow.Append("<reply>");
    });
    EXPECT_EQ(wait(Angles, 100), "reply");
    EXPECT_NEAR(pump.NowMs(), 2000, 0.01);
}

TEST_F(WaitForResponseTest, AFirstServingThatOutlastsTheLimitIsTheOnlyOne)
{
    pump.After(0, [this] { waiting.WaitMs(2000); });
    serial.Arrive("<reply>", 2001);
    EXPECT_EQ(wait(Angles, 100), "");
    EXPECT_NEAR(pump.NowMs(), 2000, 0.01);
}

TEST_F(WaitForResponseTest, AbortEndsTheWaitWhenItIsSet)
{
    pump.After(200, [this] { state.AbortWait = true; });
    serial.Arrive("<late>", 201);
    EXPECT_EQ(wait(Angles, 5000), "");
    EXPECT_EQ(link.ResponseStatus, "FAIL");
    EXPECT_EQ(pump.NowMs(), 200);
    EXPECT_TRUE(state.AbortWait);
}

TEST_F(WaitForResponseTest, AbortLetsTheScanFinishThatRuns)
{
    state.AbortWait = true;
    EXPECT_EQ(wait(Angles, 5000), "");
    EXPECT_EQ(pump.NowMs(), 0);
    exchange.txtCharacterWindow.Set("<there>");
    EXPECT_EQ(wait(Angles, 5000), "there");
    EXPECT_EQ(link.ResponseStatus, "PASS");
}

TEST_F(WaitForResponseTest, TheEndOfTheProgramEndsTheWait)
{
    pump.After(100, [this] { end.EndProgram(); });
    EXPECT_EQ(wait(Angles, 5000), "");
    EXPECT_EQ(pump.NowMs(), 100);
    exchange.txtCharacterWindow.Set("<there>");
    link.ResponseStatus = "PASS";
    EXPECT_EQ(wait(Angles, 5000), "");
    EXPECT_EQ(link.ResponseStatus, "FAIL");
    EXPECT_EQ(pump.NowMs(), 100);
}

TEST_F(WaitForResponseTest, TheWindowMayBeClearedWithinTheWait)
{
    serial.Arrive("<half", 50);
    pump.After(100, [this] { exchange.txtCharacterWindow.Clear(); });
    serial.Arrive(" of it> <whole>", 150);
    EXPECT_EQ(wait(Angles), "whole");
}

TEST_F(WaitForResponseTest, AnOverflowStartsTheWaitOver)
{
    serial.Arrive("<half" + std::string(65495, 'x'), 50);
    serial.Arrive("y", 100);
    serial.Arrive(">", 150);
    serial.Arrive("<whole>", 200);
    EXPECT_EQ(wait(Angles), "whole");
    EXPECT_EQ(pump.NowMs(), 200);
    EXPECT_EQ(window(), "><whole>");
    EXPECT_TRUE(exchange.txtCharacterWindow.WindowOverflowed);
    EXPECT_EQ(exchange.txtCharacterWindow.WindowClearCount, 1);
}

TEST_F(WaitForResponseTest, MarkersAreKeptOnlyWhereAskedFor)
{
    exchange.txtCharacterWindow.Set("a[[bc]]d");
    const Markers brackets{"[[", 1, "]]", 1};
    EXPECT_EQ(exchange.WaitForResponse(brackets, 100, true, false), "[[bc]]");
    EXPECT_EQ(exchange.WaitForResponse(brackets, 100, false, false), "bc");
    EXPECT_EQ(window(), "a[[bc]]d");
}

TEST_F(WaitForResponseTest, OverlappingMarkersHaveNothingBetweenThem)
{
    exchange.txtCharacterWindow.Set("x<<<y");
    const Markers same{"<<", 1, "<<", 1};
    link.LastReply = "before";
    EXPECT_EQ(exchange.WaitForResponse(same, 100, false, false), "");
    EXPECT_EQ(link.ResponseStatus, "PASS");
    EXPECT_EQ(link.LastReply, "");
    EXPECT_EQ(exchange.WaitForResponse(same, 100, true, false), "<<<");
}

TEST_F(WaitForResponseTest, TrimmingKeepsAsManyCharactersAsReachToTheStart)
{
    exchange.txtCharacterWindow.Set("ab<cd>efgh");
    EXPECT_EQ(exchange.WaitForResponse(Angles, 100, false, true), "cd");
    EXPECT_EQ(window(), "fgh");
}

TEST_F(WaitForResponseTest, AFailedWaitTrimsNothing)
{
    exchange.txtCharacterWindow.Set("ab<cd");
    exchange.WaitForResponse(Angles, 100, false, true);
    EXPECT_EQ(window(), "ab<cd");
}

TEST_F(WaitForResponseTest, GivesTheVeryRepliesOfTheRule)
{
    std::mt19937 random(33);
    const auto text = [&random](unsigned longest) {
        std::string made;
        for (auto left = random() % (longest + 1); left > 0; --left)
            made += static_cast<char>('a' + random() % 2);
        return made;
    };
    int passes = 0;
    for (int round = 0; round < 5000; ++round) {
        const Markers markers{text(3), static_cast<int>(random() % 4), text(3), static_cast<int>(random() % 4)};
        const std::string stands = text(20);
        const bool include = random() % 2 == 0;
        const auto wanted = NaiveScan(stands, markers);
        exchange.txtCharacterWindow.Set(stands);
        const std::string reply = exchange.WaitForResponse(markers, 1, include, true);
        ASSERT_EQ(link.ResponseStatus, wanted ? "PASS" : "FAIL");
        ASSERT_EQ(window(), wanted ? wanted->trimmed : stands);
        if (!wanted)
            continue;
        ++passes;
        ASSERT_EQ(reply, include ? wanted->withMarkers : wanted->between) << stands;
    }
    EXPECT_GT(passes, 1000);
}

class WaitOverMidnightTest : public WaitForResponseTest
{
protected:
    WaitOverMidnightTest() : WaitForResponseTest(86399.0) {}
};

TEST_F(WaitOverMidnightTest, TheLimitIsForgottenAndAMatchEndsTheWait)
{
    serial.Arrive("<early>", 600000);
    EXPECT_EQ(wait(Angles, 5000), "early");
    EXPECT_EQ(pump.NowMs(), 600000);
}

TEST_F(WaitOverMidnightTest, AnAbortEndsTheWait)
{
    pump.After(600000, [this] { state.AbortWait = true; });
    EXPECT_EQ(wait(Angles, 5000), "");
    EXPECT_EQ(link.ResponseStatus, "FAIL");
    EXPECT_EQ(pump.NowMs(), 600000);
}

TEST_F(WaitOverMidnightTest, ALimitBeforeMidnightHolds)
{
    EXPECT_EQ(wait(Angles, 900), "");
    EXPECT_NEAR(pump.NowMs(), 900, 0.01);
}

} // namespace
} // namespace harvelop::test
