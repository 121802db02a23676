#include "simulator/replay_device.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace harvelop::test
{

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

struct ReplayTest : testing::Test {
    void Load(const std::string& events, ReplayDevice::Openings openings = ReplayDevice::Openings::Vague,
              ReplayDevice::Pace pace = ReplayDevice::Pace::AsRecorded)
    {
        const RecordedTrace trace = ReadTrace("# harvelop trace 1, test\n" + events);
        ASSERT_THAT(trace.errors, IsEmpty());
        ASSERT_EQ(trace.lines.size(), 1U);
        device.emplace(trace.lines.front(), openings, pace);
        device->Tell = [this](const std::string& text) { told.push_back(text); };
    }
    // As Load, of a host instead of the port.
    void LoadHost(std::string events)
    {
        for (size_t at = events.find("com3"); at != std::string::npos; at = events.find("com3"))
            events.replace(at, 4, "tcp1");
        Load(events, ReplayDevice::Openings::Exact);
    }
    static std::string HostOpen(int ms = 0) { return At("open \"host:21\"", ms); }
    static std::string Open() { return At("open \"9600,N,8,1\" 0 \"\""); }
    static std::string Out(const std::string& text, int ms = 0) { return At("out \"" + text + "\"", ms); }
    static std::string In(const std::string& text, int ms = 0) { return At("in \"" + text + "\"", ms); }
    static std::string At(const std::string& what, int ms = 0)
    {
        return "10:00:00." + std::to_string(1000 + ms).substr(1) + " com3 " + what + "\n";
    }
    // What it answers in the next so many milliseconds.
    std::string Say(const std::string& text, double ms = 0)
    {
        device->Receive(nowMs, text);
        nowMs += ms;
        return device->Transmit(nowMs);
    }

    std::optional<ReplayDevice> device;
    std::vector<std::string> told;
    double nowMs = 5000;
};

TEST_F(ReplayTest, AnswersAsRecordedInThatTime)
{
    Load(Open() + Out("TEST0\\r\\n") + In("T,", 100) + In("1\\r\\n", 300) + Out("END\\r\\n", 400) + In("x", 450));
    device->Opened(nowMs);
    EXPECT_EQ(Say("TEST0\r\n"), "");
    EXPECT_EQ(device->NextDueMs(), 5100);
    EXPECT_EQ(Say("", 100), "T,");
    EXPECT_EQ(Say("", 199), "");
    EXPECT_EQ(Say("", 1), "1\r\n");
    EXPECT_EQ(device->NextDueMs(), SimulatedDevice::Never);
    EXPECT_EQ(Say("END\r\n", 50), "x");
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(ReplayTest, AnswersAtOnceWhenItIsToBeFast)
{
    Load(Open() + Out("TEST0\\r\\n") + In("T,", 100) + In("1\\r\\n", 300), ReplayDevice::Openings::Vague,
         ReplayDevice::Pace::Fast);
    EXPECT_EQ(Say("TEST0\r"), "T,1\r\n");
}

TEST_F(ReplayTest, WhatWasThrownAwayUnseenComesAtOnce)
{
    Load(Open() + Out("Q\\r\\n") + At("drop \"noise\"", 900) + In("late", 950));
    EXPECT_EQ(Say("Q\r\n"), "noise");
    EXPECT_EQ(Say("", 950), "late");
}

TEST_F(ReplayTest, AnswersAHiddenLineWhateverItIs)
{
    Load(Open() + Out("\\*\\r\\n") + In("Accepted\\r\\n") + Out("PASS \\*\\r\\n") + In("230\\r\\n"));
    EXPECT_EQ(Say("any thing\r\n"), "Accepted\r\n");
    EXPECT_EQ(Say("PASS \r\n"), "230\r\n");
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(ReplayTest, AnswersToPartsOfALine)
{
    Load(Open() + Out("+++") + In("OK\\r\\n") + Out("ath0\\r\\n") + In("yes"));
    EXPECT_EQ(Say("++"), "");
    EXPECT_EQ(Say("+"), "OK\r\n");
    EXPECT_EQ(Say("ath0\r\n"), "yes");
}

TEST_F(ReplayTest, GoesOnWhereTheTraceHasWhatCame)
{
    Load(Open() + Out("a\\r\\n") + In("1") + Out("b\\r\\n") + In("2") + Out("c\\r\\n") + In("3"));
    EXPECT_EQ(Say("c\r\n"), "3");
    EXPECT_EQ(Say("b\r\n"), "2");
    EXPECT_EQ(Say("my password\r\n"), "");
    EXPECT_EQ(Say("c\r\n"), "3");
    EXPECT_THAT(told,
                ElementsAre("line 3 of the trace did not come; what came is its line 7, and it goes on there",
                            "line 3 of the trace did not come; what came is its line 5, and it goes on there",
                            "line 7 of the trace did not come; what came is not in the trace and stays unanswered"));
}

TEST_F(ReplayTest, BeginsAnewBehindTheEnd)
{
    Load(Open() + Out("a\\r\\n") + In("1") + Out("b\\r\\n") + In("2"));
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(Say("a\r\n"), "1");
        EXPECT_EQ(Say("b\r\n"), "2");
    }
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(ReplayTest, AHostBeginsItsNextRunWithEachCaller)
{
    LoadHost(HostOpen() + In("220 one\\r\\n") + Out("a\\r\\n") + In("1") + Out("b\\r\\n") + At("close") + HostOpen() +
             In("220 two\\r\\n") + Out("a\\r\\n") + In("2"));
    for (const char* number : {"1", "2", "1"}) {
        device->Opened(nowMs);
        EXPECT_EQ(Say(""), std::string("220 ") + (*number == '1' ? "one" : "two") + "\r\n");
        EXPECT_EQ(Say("a\r\n"), number);
    }
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(ReplayTest, AnOpeningThatIsNoticedTwiceChangesNothing)
{
    Load(Open() + In("hello") + Out("a\\r\\n") + In("1") + Out("b\\r\\n") + In("2") + At("close") + Open() +
         Out("c\\r\\n") + In("3"));
    device->Opened(nowMs);
    device->Opened(nowMs);
    EXPECT_EQ(Say("a\r\n"), "hello1");
    device->Opened(nowMs); // before the rest of the last user's has come through
    EXPECT_EQ(Say("b\r\nc\r\n"), "23");
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(ReplayTest, DropsTheLineWhereItWasLostForGood)
{
    Load(Open() + Out("a\\r\\n") + In("1") + At("lost", 20) + Open() + Out("b\\r\\n", 100) + In("2", 100) +
         At("lost", 130));
    EXPECT_EQ(Say("a\r\n", 100), "1");
    EXPECT_TRUE(device->OnLine());
    EXPECT_EQ(Say("b\r\n", 29), "2");
    EXPECT_TRUE(device->OnLine());
    EXPECT_EQ(Say("", 1), "");
    EXPECT_FALSE(device->OnLine());
    EXPECT_FALSE(device->TakesNextCaller());
}

TEST_F(ReplayTest, WhoeverDoesNotWaitGetsTheRestAtOnceAndTheNextAnswerInItsTime)
{
    Load(Open() + Out("a\\r\\n") + In("1", 100) + In("2", 900) + Out("b\\r\\n", 910) + In("3", 960));
    EXPECT_EQ(Say("a\r\n", 100), "1");
    EXPECT_EQ(Say("b\r\n"), "2");
    EXPECT_EQ(device->NextDueMs(), nowMs + 50);
    EXPECT_EQ(Say("", 50), "3");
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(ReplayTest, WhatSomebodyDidNotWaitForIsNotSaidToTheNextOne)
{
    Load(Open() + Out("a\\r\\n") + In("1", 900) + Open() + Out("b\\r\\n", 950) + In("2", 960));
    EXPECT_EQ(Say("a\r\n", 100), "");
    device->Closed();
    EXPECT_EQ(device->NextDueMs(), SimulatedDevice::Never);
    device->Opened(nowMs);
    EXPECT_EQ(Say("b\r\n", 10), "2");
}

TEST_F(ReplayTest, AHostsNextCallerIsAnsweredInItsOwnTime)
{
    LoadHost(HostOpen() + Out("a\\r\\n") + In("1", 900) + HostOpen() + Out("b\\r\\n", 900) + In("2", 910));
    device->Opened(nowMs);
    EXPECT_EQ(Say("a\r\n", 100), "");
    device->Opened(nowMs);
    EXPECT_EQ(Say("b\r\n", 10), "2");
}

TEST_F(ReplayTest, BeginsAnewBehindTheEndAlsoWithAPasswordOrPartOfALine)
{
    for (const auto& [first, said] : {std::pair("\\*\\r\\n", "my password\r\n"), std::pair("+++", "+++")}) {
        Load(Open() + Out(first) + In("Accepted\\r\\n") + Out("a\\r\\n") + In("1"));
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(Say(said), "Accepted\r\n");
            EXPECT_EQ(Say("a\r\n"), "1");
        }
    }
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(ReplayTest, AHostHangsUpWhereItDidAndTakesTheNextCaller)
{
    LoadHost(HostOpen() + Out("a\\r\\n") + At("lost", 20) + In("1", 30) + At("close", 30) + HostOpen(30) +
             At("error 10061 \"Connection refused\"", 40) + At("close", 40) + HostOpen(40) + Out("b\\r\\n", 50) +
             In("2", 50));
    for (int i = 0; i < 2; ++i) {
        device->Opened(nowMs);
        EXPECT_EQ(Say("a\r\n", 30), "1");
        EXPECT_FALSE(device->OnLine());
        EXPECT_TRUE(device->TakesNextCaller());
        EXPECT_EQ(device->NextDueMs(), SimulatedDevice::Never);
        device->Opened(nowMs);
        EXPECT_TRUE(device->OnLine());
        EXPECT_EQ(Say("", 10), "");
        EXPECT_FALSE(device->OnLine());
        device->Opened(nowMs);
        EXPECT_EQ(Say("b\r\n"), "2");
        EXPECT_TRUE(device->OnLine());
    }
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(ReplayTest, AnEndlessLineCostsNoMoreThanItsBeginning)
{
    Load(Open() + Out("a\\r\\n") + In("1"));
    EXPECT_EQ(Say(std::string(1 << 20, 'x') + "\r\n"), "");
    EXPECT_EQ(Say("a\r\n"), "1");
    EXPECT_EQ(told.size(), 1U);
}

} // namespace

} // namespace harvelop::test
