#include "links/modEthernet.h"
#include "simulator/simulated_logger.h"
#include "support/test_program.h"

#include <gtest/gtest.h>

namespace harvelop::test
{
namespace
{

using Steps = std::vector<std::string>;

struct Network : testing::Test, TestProgram {
    Network()
    {
        sockets.places["10.0.0.5:3000"] = {};
        sockets.places["10.0.0.6:3000"] = {};
        sockets.places["10.0.0.9:3000"] = {nullptr, false};
    }
    modEthernet& Link() { return heart.ethernet; }
    LinkState& State() { return heart.link; }
    void Open(const std::string& host = "10.0.0.5", const std::string& port = "3000")
    {
        Link().OpenEthernet(host, port, "TCP");
    }
    void Connect(const std::string& host = "10.0.0.5")
    {
        Open(host);
        heart.waiting.WaitMs(10);
    }
};

TEST_F(Network, AnOpeningReturnsAtOnceAndConnectsInAnEvent)
{
    State().EthernetChunk = "old";
    State().ReceivedText = "old";
    Open();
    EXPECT_EQ(State().LinkMode, "Ethernet");
    EXPECT_FALSE(State().EthernetConnected);
    EXPECT_EQ(State().EthernetChunk, "");
    EXPECT_EQ(State().ReceivedText, "");
    heart.waiting.WaitMs(10);
    EXPECT_TRUE(State().EthernetConnected);
    EXPECT_EQ(State().CurrentPort, 9);
    EXPECT_EQ(sockets.steps, Steps{"1 connect 10.0.0.5:3000"});
    EXPECT_EQ(State().IPAddress, "10.0.0.5");
    EXPECT_EQ(State().IPPort, "3000");
    EXPECT_EQ(State().IPProtocol, "TCP");
    EXPECT_FALSE(State().UdpOpen);
}

TEST_F(Network, AUdpOpeningIsOnlyNoted)
{
    Link().OpenEthernet("10.0.0.5", "3000", "UDP");
    EXPECT_EQ(State().IPProtocol, "UDP");
    EXPECT_TRUE(State().UdpOpen);
    EXPECT_EQ(State().LinkMode, "Ethernet");
    heart.waiting.WaitMs(10);
    EXPECT_TRUE(State().EthernetConnected);
    Link().CloseEthernet();
    EXPECT_FALSE(State().UdpOpen);
    EXPECT_EQ(State().LinkMode, "None");
    EXPECT_TRUE(State().EthernetConnected); // meant: its closing clears the other flag
}

TEST_F(Network, AnErrorShowsNoBoxAndDoesNotCloseTheLink)
{
    Connect();
    ASSERT_NE(sockets.made[0], nullptr);
    if (sockets.made[0]->OnError)
        sockets.made[0]->OnError(10053, "Connection aborted");
    EXPECT_EQ(State().LinkMode, "Ethernet");
    EXPECT_TRUE(State().EthernetConnected);
    EXPECT_TRUE(dialogs.shown.empty());
    EXPECT_EQ(sockets.steps, Steps{"1 connect 10.0.0.5:3000"});
}

TEST_F(Network, AConnectionWaitsHalfASecondInWhichDataCanArrive)
{
    Open();
    pump.After(100, [&] { sockets.made[0]->Arrive("hello"); });
    const double begun = pump.NowMs();
    heart.waiting.WaitMs(1);
    EXPECT_GE(pump.NowMs() - begun, 500.0);
    EXPECT_EQ(heart.exchange.txtCharacterWindow.Text(), "hello");
}

TEST_F(Network, LinesGoOutWithTheirEndAndTextComesIn)
{
    Connect();
    heart.exchange.SendToLogger("STATUS");
    sockets.made[0]->Arrive("ok\r\n");
    heart.waiting.WaitMs(10);
    EXPECT_EQ(sockets.steps.back(), "1 send STATUS\r\n");
    EXPECT_EQ(State().EthernetChunk, "ok\r\n");
    EXPECT_EQ(heart.exchange.txtCharacterWindow.Text(), "ok\r\n");
}

TEST_F(Network, APeerThatClosesLeavesNoLinkAndLaterLinesVanish)
{
    Connect();
    sockets.made[0]->PeerCloses();
    heart.waiting.WaitMs(10);
    EXPECT_EQ(State().LinkMode, "None");
    EXPECT_FALSE(State().EthernetConnected);
    heart.exchange.SendAndWait("STATUS", {"", 1, "OK", 1}, 100);
    EXPECT_EQ(State().ResponseStatus, "FAIL");
    EXPECT_EQ(sockets.steps.size(), 1u);
    EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(Network, ARefusedOrSilentHostNeverConnectsAndShowsNoBox)
{
    for (const char* host : {"10.0.0.7", "10.0.0.9"}) {
        Open(host);
        heart.waiting.WaitMs(60000);
        EXPECT_FALSE(State().EthernetConnected) << host;
        EXPECT_EQ(State().LinkMode, "Ethernet") << host;
    }
    EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(Network, WhatIsNoPortNeverConnects)
{
    for (const char* port : {"", "x", "0", "70000", "-1"}) {
        Open("10.0.0.5", port);
        heart.waiting.WaitMs(1000);
        EXPECT_FALSE(State().EthernetConnected) << port;
    }
}

TEST_F(Network, TwoOpeningsUseTwoSocketsAndTheOlderOneStaysOpen)
{
    Connect();
    Connect("10.0.0.6");
    EXPECT_EQ(sockets.steps, (Steps{"1 connect 10.0.0.5:3000", "2 connect 10.0.0.6:3000"}));
    ASSERT_NE(sockets.made[0], nullptr);
    EXPECT_EQ(sockets.made[0]->State(), SocketControl::Condition::Connected);
}

TEST_F(Network, LateEventsOfAnOlderSocketDoNotTouchTheLink)
{
    Connect();
    Connect("10.0.0.6");
    sockets.made[0]->Arrive("late");
    sockets.made[0]->PeerCloses();
    heart.waiting.WaitMs(10);
    EXPECT_EQ(State().LinkMode, "Ethernet");
    EXPECT_TRUE(State().EthernetConnected);
    EXPECT_EQ(heart.exchange.txtCharacterWindow.Text(), "");
}

TEST_F(Network, ASocketThatConnectsAfterANewOpeningIsNotTakenForIt)
{
    Open();
    Open("10.0.0.9");
    heart.waiting.WaitMs(1000);
    EXPECT_FALSE(State().EthernetConnected);
}

TEST_F(Network, ClosingEndsTheLinkAndIsHarmlessWithoutOne)
{
    Link().CloseEthernet();
    EXPECT_EQ(State().LinkMode, "None");
    Connect();
    Link().CloseEthernet();
    EXPECT_EQ(State().LinkMode, "None");
    EXPECT_FALSE(State().EthernetConnected);
    EXPECT_EQ(sockets.steps.back(), "1 close");
    Link().EthernetSend("late");
    EXPECT_EQ(sockets.steps.back(), "1 close");
}

TEST_F(Network, ClosedSocketsAreGivenBackAtTheNextOpening)
{
    Connect();
    Link().CloseEthernet();
    Connect("10.0.0.6");
    EXPECT_EQ(sockets.made[0], nullptr);
    EXPECT_TRUE(State().EthernetConnected);
}

TEST_F(Network, NothingLeavesAfterTheEnd)
{
    Connect();
    heart.end.EndProgram();
    const Steps before = sockets.steps;
    Link().EthernetSend("STATUS");
    Open("10.0.0.6");
    EXPECT_EQ(sockets.steps, before);
}

} // namespace
} // namespace harvelop::test
