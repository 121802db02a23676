// The modem dialogue given up in the middle of each of its waits.
#include "links/modem_bench.h"

#include <algorithm>
#include <gmock/gmock.h>

namespace harvelop::test
{

namespace
{

using testing::IsEmpty;

// A moment in each wait of a call: before the port is open, behind "+++", behind "ath0", for the modem's answer,
// reading that it was found, behind the initialisation, for the call, for the rest of its line, reading the speed.
constexpr double Moments[] = {500, 1050, 1150, 1205, 1700, 3000, 4500, 5020, 5800};

class GivenUp : public ModemTest, public testing::WithParamInterface<double>
{
protected:
    GivenUp()
    {
        serial.Arrive("\r\nOK\r\n", 1210);
        serial.Arrive("\r\nCONNECT", 5000);
    }

    void After(double ms, std::function<void()> event)
    {
        pump.After(ms, [this, event] {
            happenedMs = pump.NowMs();
            event();
        });
    }
    bool SentAfterwards()
    {
        waiting.ServeEvents();
        return std::any_of(serial.events.begin(), serial.events.end(), [this](const auto& event) {
            return event.kind == FakeSerial::Event::Kind::Sent && event.ms > happenedMs;
        });
    }

    double happenedMs = -1;
};

} // namespace

TEST_P(GivenUp, NothingIsSentOrToldAfterTheProgramsEnd)
{
    After(GetParam(), [this] { end.EndProgram(); });
    modem.ConnectDialup(3);
    EXPECT_EQ(pump.NowMs(), GetParam());
    EXPECT_FALSE(SentAfterwards());
    EXPECT_THAT(shownDialogs.shown, IsEmpty());
    EXPECT_FALSE(link.LinkConnected);
    EXPECT_EQ(link.DefaultTimeout, 5000);
    EXPECT_EQ(confirmedMs, -1);
}

TEST_P(GivenUp, ClosedOptionsPanelEndsACallQuietly)
{
    After(GetParam(), [this] { state.StopLinkWork = true; });
    modem.ConnectDialup(3);
    EXPECT_GT(happenedMs, 0);
    EXPECT_FALSE(SentAfterwards());
    EXPECT_THAT(shownDialogs.shown, IsEmpty());
    EXPECT_FALSE(link.LinkConnected);
    EXPECT_EQ(link.DefaultTimeout, 5000);
    EXPECT_EQ(confirmedMs, -1);
}

TEST_P(GivenUp, ClosedTerminalEndsItsCallQuietly)
{
    state.QuietConnect = state.TerminalOpen = true;
    After(GetParam(), [this] { state.TerminalOpen = false; });
    modem.ConnectDialup(3);
    EXPECT_GT(happenedMs, 0);
    EXPECT_FALSE(SentAfterwards());
    EXPECT_THAT(shownDialogs.shown, IsEmpty());
    EXPECT_FALSE(link.LinkConnected);
    EXPECT_EQ(confirmedMs, -1);
}

TEST_P(GivenUp, TestEndsWithTheProgram)
{
    After(GetParam(), [this] { end.EndProgram(); });
    EXPECT_FALSE(modem.TestDialup(3, "5551234", "at"));
    EXPECT_FALSE(SentAfterwards());
    EXPECT_THAT(shownDialogs.shown, IsEmpty());
    EXPECT_EQ(link.DefaultTimeout, 5000);
}

// As Cancel does it, which takes the dialog away, too.
TEST_P(GivenUp, CancelledTestEndsQuietly)
{
    After(GetParam(), [this] {
        state.AbortWait = true;
        forms.add = nullptr;
        state.AddDialogOpen = false;
    });
    EXPECT_FALSE(modem.TestDialup(3, "5551234", "at"));
    EXPECT_GT(happenedMs, 0);
    EXPECT_FALSE(SentAfterwards());
    EXPECT_THAT(shownDialogs.shown, IsEmpty());
    EXPECT_EQ(link.DefaultTimeout, 5000);
}

INSTANTIATE_TEST_SUITE_P(EachWait, GivenUp, testing::ValuesIn(Moments));

namespace
{

// For the answer to a wait of the exchange.
class CancelledAnswer : public ModemTest
{
};

class ResetGivenUp : public ModemTest, public testing::WithParamInterface<double>
{
protected:
    ResetGivenUp() { Plug(); }
};

} // namespace

TEST_F(CancelledAnswer, CancelIsClearedBehindTheWaitForTheModem)
{
    pump.After(1300, [this] { state.AbortWait = true; });
    serial.Arrive("x", 1400);
    EXPECT_FALSE(modem.TestDialup(3, "5551234", "at"));
    EXPECT_FALSE(state.AbortWait);
    EXPECT_LE(pump.NowMs(), 1400);
    EXPECT_EQ(dialog.caption, "Looking for a Modem on Com 3 ...");
}

TEST_F(CancelledAnswer, CancelIsClearedBehindTheWaitForTheCall)
{
    PlugFailing(ModemFailure::NoAnswer);
    pump.After(10000, [this] { state.AbortWait = true; });
    EXPECT_FALSE(modem.TestDialup(3, "5551234", "at"));
    EXPECT_FALSE(state.AbortWait);
    EXPECT_LE(pump.NowMs(), 10001);
    EXPECT_EQ(dialog.caption, "Dialling 5551234 ...");
    EXPECT_FALSE(link.LinkConnected);
}

TEST_P(ResetGivenUp, NothingIsSentOrToldAfterTheProgramsEnd)
{
    pump.After(GetParam(), [this] { end.EndProgram(); });
    modem.ResetModem(3, "atz");
    EXPECT_EQ(pump.NowMs(), GetParam());
    double lastSentMs = 0;
    for (const auto& event : serial.events)
        if (event.kind == FakeSerial::Event::Kind::Sent)
            lastSentMs = event.ms;
    EXPECT_LE(lastSentMs, GetParam());
    EXPECT_THAT(shownDialogs.shown, IsEmpty());
    EXPECT_FALSE(serial.PortOpen());
    EXPECT_FALSE(state.TestRunning);
    EXPECT_EQ(link.DefaultTimeout, 5000);
}

TEST_P(ResetGivenUp, CancelledResetEndsQuietlyWithTheDialogGone)
{
    pump.After(GetParam(), [this] {
        state.AbortWait = true;
        forms.add = nullptr;
        state.AddDialogOpen = false;
    });
    modem.ResetModem(3, "atz");
    EXPECT_THAT(shownDialogs.shown, IsEmpty());
    EXPECT_FALSE(serial.PortOpen());
    EXPECT_FALSE(state.TestRunning);
    EXPECT_FALSE(state.AbortWait);
}

INSTANTIATE_TEST_SUITE_P(EachWait, ResetGivenUp, testing::Values(50, 150, 210, 700, 1700, 2700));

} // namespace harvelop::test
