// Sending, and the exchange of a line for a reply.

#include "link_bench.h"

#include <gmock/gmock.h>
#include <memory>

namespace harvelop::test
{
namespace
{

using testing::ElementsAre;

const Markers Angles{"<", 1, ">", 1};

class CommandExchangeTest : public LinkTest
{
};

TEST_F(CommandExchangeTest, ALineGoesToTheLinkInForce)
{
    OpenPort1();
    exchange.SendToLogger("TEST0");
    waiting.ServeEvents();
    EXPECT_EQ(serial.Sent(), "TEST0\r\n");
    link.LinkMode = "Ethernet";
    exchange.SendToLogger("CHARAC1");
    waiting.ServeEvents();
    EXPECT_EQ(serial.Sent(), "TEST0\r\n");
    EXPECT_THAT(ethernet.sent, ElementsAre("CHARAC1"));
}

TEST_F(CommandExchangeTest, WithoutALinkNothingIsSentOrReported)
{
    OpenPort1();
    for (const char* mode : {"None", "", "comport", "Serial"}) {
        link.LinkMode = mode;
        exchange.SendToLogger("TEST0");
        waiting.ServeEvents();
    }
    EXPECT_EQ(serial.Sent(), "");
    EXPECT_TRUE(ethernet.sent.empty());
}

TEST_F(CommandExchangeTest, SendingOnAClosedPortDoesNothing)
{
    link.LinkMode = "ComPort";
    exchange.SendToLogger("TEST0");
    waiting.ServeEvents();
    EXPECT_EQ(serial.Sent(), "");
}

// Answers each line once, at once.
class Echo : public SimulatedDevice
{
public:
    void Receive(double nowMs, std::string_view bytes) override
    {
        m_text = "<" + std::string(bytes.substr(0, bytes.find('\r'))) + ">";
        m_due = nowMs;
    }
    std::string Transmit(double) override
    {
        m_due = Never;
        return std::exchange(m_text, {});
    }
    double NextDueMs() const override { return m_due; }

private:
    std::string m_text;
    double m_due = Never;
};

TEST_F(CommandExchangeTest, TheReplyToACommandIsTheTextBetweenTheMarkers)
{
    serial.Plug(1, std::make_shared<Echo>(), "9600");
    rs232.OpenComPort(1);
    exchange.SendAndWait("TEST0", Angles);
    EXPECT_EQ(link.ResponseStatus, "PASS");
    EXPECT_EQ(link.ResponseText, "TEST0");
    EXPECT_EQ(link.LastReply, "TEST0");
    EXPECT_FALSE(link.ExchangeFailed);
    EXPECT_EQ(exchange.txtCharacterWindow.Text(), "<TEST0>");
}

TEST_F(CommandExchangeTest, ARoundTripTakesFewPassesOfTheEvents)
{
    serial.Plug(1, std::make_shared<Echo>(), "9600");
    rs232.OpenComPort(1);
    const long before = pump.passes;
    exchange.SendAndWait("TEST0", Angles);
    EXPECT_LE(pump.passes - before, 2);
}

TEST_F(CommandExchangeTest, WithoutATimeOutTheDefaultHolds)
{
    OpenPort1();
    exchange.SendAndWait("TEST0", Angles);
    EXPECT_NEAR(pump.NowMs(), 5000, 0.01);
    link.DefaultTimeout = 1500;
    exchange.SendAndWait("TEST0", Angles, 0);
    EXPECT_NEAR(pump.NowMs(), 6500, 0.01);
    exchange.SendAndWait("TEST0", Angles, 300);
    EXPECT_NEAR(pump.NowMs(), 6800, 0.01);
}

TEST_F(CommandExchangeTest, ANegativeTimeOutIsUsedAndFailsAtOnce)
{
    OpenPort1();
    exchange.SendAndWait("TEST0", Angles, -1);
    EXPECT_EQ(pump.NowMs(), 0);
    EXPECT_EQ(link.ResponseStatus, "FAIL");
}

TEST_F(CommandExchangeTest, AFailureIsMarkedForGoodAndLeavesTheLastReply)
{
    OpenPort1();
    exchange.txtCharacterWindow.Set("<old>");
    exchange.SendAndWait("A", Angles);
    EXPECT_EQ(link.ResponseText, "old");
    exchange.txtCharacterWindow.Clear();
    exchange.SendAndWait("B", Angles);
    EXPECT_EQ(link.ResponseStatus, "FAIL");
    EXPECT_EQ(link.ResponseText, "");
    EXPECT_EQ(link.LastReply, "old");
    EXPECT_TRUE(link.ExchangeFailed);
    exchange.txtCharacterWindow.Set("<new>");
    exchange.SendAndWait("C", Angles);
    EXPECT_EQ(link.ResponseText, "new");
    EXPECT_TRUE(link.ExchangeFailed);
}

TEST_F(CommandExchangeTest, NothingLeavesAfterTheEnd)
{
    OpenPort1();
    end.EndProgram();
    exchange.SendAndWait("TEST0", Angles);
    pump.ServePending();
    EXPECT_EQ(serial.Sent(), "");
    EXPECT_EQ(link.ResponseStatus, "FAIL");
    EXPECT_EQ(pump.NowMs(), 0);
}

} // namespace
} // namespace harvelop::test
