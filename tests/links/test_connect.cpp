#include "links/connect_bench.h"

#include <algorithm>

namespace harvelop::test
{
namespace
{

TEST_F(ConnectTest, ASerialLoggerIsReachedWithItsOwnSettings)
{
    serial.Plug(3, SimulatedModel("KR200", "2"), "9600");
    StoreSerial();
    Connect();
    EXPECT_TRUE(Connected());
    EXPECT_EQ(serial.Settings(), "9600,N,8,1");
    EXPECT_TRUE(serial.PortOpen());
    EXPECT_EQ(heart.link.ConnectionKind, "RS232");
    EXPECT_EQ(heart.link.LinkDescription, "KR200 Series 2 on Com 3");
    EXPECT_EQ(messages.captions.front(), "<- Looking for a KR200 Series 2 on Com 3 ...");
    EXPECT_EQ(messages.captions.back(), "<- Found a KR200 Series 2 on Com 3");
    EXPECT_TRUE(heart.exchange.txtTerminal.empty());
    EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(ConnectTest, ParityIsAWordWhenEnteredByHandAndALetterWhenFound)
{
    for (const auto& [stored, sent] : {std::pair{"None", "9600,N,8,1"},
                                       {"Odd", "9600,O,8,1"},
                                       {"Even", "9600,E,8,1"},
                                       {"N", "9600,N,8,1"},
                                       {"O", "9600,O,8,1"},
                                       {"E", "9600,E,8,1"}}) {
        serial.Plug(3, SimulatedModel("KR200", "2"), "9600");
        StoreSerial(stored);
        Connect();
        EXPECT_EQ(serial.Settings(), sent) << stored;
    }
}

TEST_F(ConnectTest, AParityThatIsNoneOfTheThreeLeavesAnEmptyLetter)
{
    serial.Plug(3, nullptr, "");
    StoreSerial("Mark");
    heart.options.ShowMessages = false;
    Connect();
    EXPECT_EQ(serial.Settings(), "9600,,8,1");
    EXPECT_FALSE(Connected());
}

TEST_F(ConnectTest, ABusyPortIsToldAndNotAskedForItsLogger)
{
    serial.ports[3] = {PortBusy, "", nullptr};
    StoreSerial();
    dialogs.Expect(BoxAnswer::Ok);
    Connect();
    EXPECT_FALSE(Connected());
    EXPECT_EQ(serial.Sent(), "");
}

TEST_F(ConnectTest, ThePasswordGoesFirstOnAPortAndNotOnTheNetwork)
{
    serial.Plug(3, SimulatedModel("KR200", "2"), "9600");
    StoreSerial();
    heart.tables.Record(1)->LoggerPassword = "mountain";
    Connect();
    EXPECT_TRUE(serial.Sent().starts_with("mountain\r\n"));

    sockets.Plug("10.0.0.5", 3000, SimulatedModel("KR40"));
    StoreNetwork();
    heart.tables.Record(1)->LoggerPassword = "mountain";
    Connect();
    EXPECT_TRUE(Connected());
    EXPECT_EQ(sockets.steps.at(1), "1 send Q /H/r\r\n\r\n"); // identification asks in its own time
}

TEST_F(ConnectTest, ARecordWithAColonIsANetworkLoggerWhateverElseItHolds)
{
    sockets.Plug("10.0.0.5", 3000, SimulatedModel("KR40"));
    Store("KR40", "10.0.0.5:3000", "0123", "", "9600");
    Connect();
    EXPECT_TRUE(Connected());
    EXPECT_EQ(heart.link.ConnectionKind, "Ethernet");
    EXPECT_EQ(heart.link.LinkDescription, "KR40 at 10.0.0.5:3000");
    EXPECT_EQ(messages.captions.front(), "<- Looking for a KR40 at 10.0.0.5:3000 ...");
    EXPECT_EQ(messages.captions.back(), "<- Found a KR40 at 10.0.0.5:3000");
    EXPECT_TRUE(serial.events.empty());
}

TEST_F(ConnectTest, ASilentNetworkLoggerCostsSixSecondsAndThenTheIdentification)
{
    sockets.places["10.0.0.5:3000"] = {nullptr, false};
    StoreNetwork();
    dialogs.Expect(BoxAnswer::Ok);
    const double begun = pump.NowMs();
    heart.connecting.IdentifyLogger = [&] {
        EXPECT_NEAR(pump.NowMs() - begun, 6000.0, 1.0);
        return std::string();
    };
    Connect();
    EXPECT_FALSE(Connected());
    ASSERT_EQ(dialogs.shown.size(), 1u);
    EXPECT_EQ(dialogs.shown[0].text, "Could not find a KR40 at 10.0.0.5:3000.     ");
    EXPECT_EQ(dialogs.shown[0].title, " tallyCore Harvel");
    EXPECT_EQ(dialogs.shown[0].icon, BoxIcon::Critical);
    EXPECT_EQ(messages.captions.back(), "<- Could not Find a KR40 at 10.0.0.5:3000");
}

TEST_F(ConnectTest, OnlyTheFirstFiveCharactersOfTheModelAreCompared)
{
    struct Row {
        const char* stored;
        const char* answers;
        bool right;
    };
    for (const Row& row : {Row{"KR200 with a XBM", "KR200", true},
                           {"KR40", "KR40", true},
                           {"KR41", "KR40", false},
                           {"KR400", "KR40", true},
                           {"KR205 Series 2", "KR200", false},
                           {"KR205 Series 2", "KR205 with a 2 XBMs", true},
                           {"KR40", "", false}}) {
        sockets.places["10.0.0.5:3000"] = {};
        StoreNetwork(row.stored);
        heart.options.ShowMessages = false;
        heart.connecting.IdentifyLogger = [&] { return std::string(row.answers); };
        Connect();
        EXPECT_EQ(Connected(), row.right) << row.stored << " " << row.answers;
    }
}

TEST_F(ConnectTest, WithMessagesOffAFailureIsOnTheProgressLineOnly)
{
    StoreNetwork();
    heart.options.ShowMessages = false;
    Connect();
    EXPECT_TRUE(dialogs.shown.empty());
    EXPECT_EQ(messages.captions.back(), "<- Could not Find a KR40 at 10.0.0.5:3000");
}

TEST_F(ConnectTest, AProgramStartedForOneCommandEndsWhenItsLoggerIsNotThere)
{
    StoreNetwork();
    heart.options.ShowMessages = false;
    heart.state.LaunchCommand = "::2 %STATUS";
    Connect();
    EXPECT_TRUE(heart.end.Ended());
}

TEST_F(ConnectTest, ForTheTerminalTheCaptionTellsHowItStands)
{
    FakeTerminal terminal;
    heart.forms.terminal = &terminal;
    heart.state.TerminalOpen = true;
    heart.state.QuietConnect = true;
    heart.options.ShowMessages = false;
    StoreNetwork();
    Connect();
    EXPECT_EQ(terminal.caption, " Not Connected");

    serial.Plug(3, nullptr, "");
    StoreSerial();
    Connect();
    EXPECT_EQ(terminal.caption, " Connected to Com 3 @ 9600,N,8,1");
    EXPECT_TRUE(serial.PortOpen()); // the terminal goes on with it

    serial.Plug(3, SimulatedModel("KR200", "2"), "9600");
    Connect();
    EXPECT_EQ(terminal.caption, " Connected to the KR200 Series 2 on Com 3");
}

TEST_F(ConnectTest, NothingIsConnectedQuietlyOnceTheTerminalIsClosed)
{
    StoreSerial();
    heart.state.QuietConnect = true;
    Connect();
    EXPECT_TRUE(serial.events.empty());
    EXPECT_TRUE(messages.captions.empty());
}

TEST_F(ConnectTest, NothingIsOpenedOnceTheOptionsPanelHasBeenClosed)
{
    StoreSerial();
    heart.state.StopLinkWork = true;
    Connect();
    EXPECT_TRUE(serial.events.empty());
    EXPECT_FALSE(Connected());
}

TEST_F(ConnectTest, ALoggerNumberOf17OrAboveIsNeverConfirmed)
{
    sockets.Plug("10.0.0.5", 3000, SimulatedModel("KR40"));
    StoreNetwork();
    const std::string text = heart.tables.FoundLoggerStrings[0];
    heart.tables.FoundLoggerStrings[16] = text;
    heart.records.ParseLoggerSettings(17);
    heart.state.CurrentLogger = 17;
    heart.options.ShowMessages = false;
    heart.connecting.ConnectLogger(17);
    EXPECT_FALSE(Connected());
}

TEST_F(ConnectTest, TheKindIsThatOfTheNumberAndTheRecordThatOfTheLoggerInWork)
{
    StoreSerial();
    serial.Plug(3, SimulatedModel("KR200", "2"), "9600");
    heart.connecting.ConnectLogger(2); // an empty record: RS232
    EXPECT_TRUE(Connected());
}

TEST_F(ConnectTest, WithoutARecordNothingIsOpened)
{
    heart.state.CurrentLogger = 0;
    heart.connecting.ConnectLogger(0);
    EXPECT_TRUE(serial.events.empty());
    EXPECT_TRUE(sockets.steps.empty());
    EXPECT_FALSE(Connected());
}

TEST_F(ConnectTest, ALinkOfEitherKindIsReleased)
{
    sockets.Plug("10.0.0.5", 3000, SimulatedModel("KR40"));
    StoreNetwork();
    Connect();
    heart.actions.CloseLink();
    EXPECT_EQ(sockets.steps.back(), "1 close");
    EXPECT_EQ(heart.link.LinkMode, "None");

    serial.Plug(3, SimulatedModel("KR200", "2"), "9600");
    StoreSerial();
    Connect();
    heart.actions.CloseLink();
    EXPECT_FALSE(serial.PortOpen());
    EXPECT_EQ(heart.link.LinkMode, "None");
}

} // namespace
} // namespace harvelop::test
