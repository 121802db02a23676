#include "links/modem_bench.h"

#include <gmock/gmock.h>

namespace harvelop::test
{

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

const std::string LanguageLines =
    "313:1:8:[313]\r\n314:1:8:[314]\r\n315:1:8:[315]\r\n316:1:8:[316]\r\n317:1:8:[317]\r\n"
    "318:1:8:[318]\r\n319:1:8:[319]\r\n320:1:8:[320]\r\n321:1:8:[321]\r\n324:1:8:[324]\r\n"
    "503:1:8:[503]\r\n518:1:8:[518]\r\n520:1:8:[520]\r\n521:1:8:[521]\r\n";

class Dialup : public ModemTest
{
};
class TestOfDialup : public ModemTest
{
};
class ModemReset : public ModemTest
{
};

} // namespace

TEST(ConnectSpeed, IsWhatFollowsTheWordAndOneCharacter)
{
    EXPECT_EQ(ConnectSpeed("\r\nCONNECT 9600\r\n"), "9600");
    EXPECT_EQ(ConnectSpeed("\r\nCONNECT 115200\r\n"), "11520");
    EXPECT_EQ(ConnectSpeed("CONNECT/28800/ARQ\r\n"), "28800");
    EXPECT_EQ(ConnectSpeed("CONNECT  300 \r\nT,1"), "300");
    EXPECT_EQ(ConnectSpeed("CONNECT 12"), "12");
}

TEST(ConnectSpeed, BareWordGivesNone)
{
    EXPECT_EQ(ConnectSpeed("\r\nCONNECT\r\n"), "");
    EXPECT_EQ(ConnectSpeed("\r\nCONNECT"), "");
    EXPECT_EQ(ConnectSpeed("CONNECT "), "");
    EXPECT_EQ(ConnectSpeed("CONNECT\r\nT,1.0"), "");
    EXPECT_EQ(ConnectSpeed(""), "");
    EXPECT_EQ(ConnectSpeed("connect 9600"), "");
}

TEST(ConnectSpeed, SpeedsOfAllAnswersAreJoined)
{
    EXPECT_EQ(ConnectSpeed("CONNECT 300\r\nCONNECT 2400\r\n"), "3002400");
}

TEST_F(Dialup, GoodCallIsToldStepByStep)
{
    Plug();
    modem.ConnectDialup(3);
    EXPECT_THAT(Wire(),
                ElementsAre("1000 +++", "1100 ath0\r\n", "1200 ate0v1\r\n", "2200 at&f\r\n", "4200 atdt5551234\r\n"));
    EXPECT_THAT(window.captions, ElementsAre("<- Looking for a Modem on Com 3 ...", "<- Found a Modem on Com 3",
                                             "<- Dialling 5551234 ...", "<- Connected to 5551234 at 9600 baud",
                                             "<- Looking for a KR200 Series 1 via the Modem on Com 3"));
    EXPECT_EQ(serial.Settings(), "9600,N,8,1");
    EXPECT_EQ(serial.handshaking, 2);
    EXPECT_EQ(link.FlowControl, "HWFC");
    EXPECT_EQ(link.LinkMode, "ComPort");
    EXPECT_TRUE(link.LinkConnected);
    EXPECT_NEAR(confirmedMs, 7200, 1);
    EXPECT_EQ(timeoutAtConfirmation, 5000);
    EXPECT_TRUE(serial.PortOpen());
}

TEST_F(Dialup, LanguageFileReplacesTheWords)
{
    UseLanguageFile(LanguageLines);
    Plug();
    modem.ConnectDialup(3);
    EXPECT_THAT(window.captions,
                ElementsAre("<- [314] 3 ...", "<- [315] 3", "<- [317] 5551234 ...", "<- [319] 5551234 [320] 9600 [321]",
                            "<- [313] KR200 Series 1 via the Modem on Com 3"));
}

TEST_F(Dialup, NothingHappensWhileTheOptionsPanelIsClosed)
{
    state.StopLinkWork = true;
    Plug();
    modem.ConnectDialup(3);
    EXPECT_FALSE(modem.TestDialup(3, "1", ""));
    modem.ResetModem(3, "");
    EXPECT_THAT(serial.events, IsEmpty());
    EXPECT_THAT(dialog.captions, IsEmpty());
    EXPECT_EQ(pump.NowMs(), 0);
}

TEST_F(Dialup, LoggerWithoutARecordIsPassedOver)
{
    state.CurrentLogger = 0;
    modem.ConnectDialup(3);
    EXPECT_THAT(serial.events, IsEmpty());
}

TEST_F(Dialup, BusyPortEndsItWithTheBoxOfThePortAlone)
{
    serial.ports[3].openError = PortBusy;
    shownDialogs.Expect(BoxAnswer::Ok);
    modem.ConnectDialup(3);
    EXPECT_THAT(Wire(), IsEmpty());
    EXPECT_FALSE(link.LinkConnected);
    EXPECT_EQ(confirmedMs, -1);
}

TEST_F(Dialup, PortThatIsNotThereCountsAsNoModem)
{
    serial.ports.clear();
    shownDialogs.Expect(BoxAnswer::Ok);
    modem.ConnectDialup(3);
    EXPECT_THAT(Wire(), IsEmpty());
    EXPECT_EQ(shownDialogs.shown.at(0).text, "Could not find a modem on com 3.     ");
}

TEST_F(Dialup, MissingModemIsTold)
{
    shownDialogs.Expect(BoxAnswer::Ok);
    link.LinkConnected = true;
    modem.ConnectDialup(3);
    EXPECT_THAT(Wire(), ElementsAre("1000 +++", "1100 ath0\r\n", "1200 ate0v1\r\n"));
    EXPECT_THAT(window.captions,
                ElementsAre("<- Looking for a Modem on Com 3 ...", "<- Could Not Find a Modem on Com 3"));
    const Box& box = shownDialogs.shown.at(0);
    EXPECT_EQ(box.text, "Could not find a modem on com 3.     ");
    EXPECT_EQ(box.title, " tallyCore Harvel");
    EXPECT_EQ(box.icon, BoxIcon::Critical);
    EXPECT_FALSE(window.Visible());
    EXPECT_FALSE(link.LinkConnected);
    EXPECT_FALSE(end.Ended());
    EXPECT_NEAR(pump.NowMs(), 7200, 1); // the waits, and DefaultTimeout for the modem
    EXPECT_EQ(confirmedMs, -1);
}

TEST_F(Dialup, MissingModemIsToldInTheUsersLanguage)
{
    UseLanguageFile(LanguageLines);
    shownDialogs.Expect(BoxAnswer::Ok);
    modem.ConnectDialup(3);
    EXPECT_EQ(window.Caption(), "<- [316] 3");
    EXPECT_EQ(shownDialogs.shown.at(0).text, "[316] 3.     ");
}

TEST_F(Dialup, MissingModemEndsAProgramThatWasStartedForOneCommand)
{
    options.ShowMessages = false;
    state.LaunchCommand = "::2 H";
    modem.ConnectDialup(3);
    EXPECT_TRUE(end.Ended());
    EXPECT_THAT(shownDialogs.shown, IsEmpty());
}

TEST_F(Dialup, CallThatFailsIsToldAndLeavesThePortOpen)
{
    PlugFailing(ModemFailure::Busy);
    shownDialogs.Expect(BoxAnswer::Ok);
    modem.ConnectDialup(3);
    EXPECT_THAT(window.captions, ElementsAre("<- Looking for a Modem on Com 3 ...", "<- Found a Modem on Com 3",
                                             "<- Dialling 5551234 ...", "<- Could Not Dial 5551234",
                                             "<- Connected to Com 3 @ 9600,N,8,1"));
    const Box& box = shownDialogs.shown.at(0);
    EXPECT_EQ(box.text, "Could not dial 5551234.     ");
    EXPECT_EQ(box.title, " tallyCore Harvel");
    EXPECT_EQ(box.icon, BoxIcon::Critical);
    EXPECT_FALSE(link.LinkConnected);
    EXPECT_TRUE(serial.PortOpen());
    EXPECT_EQ(link.LinkMode, "ComPort");
    EXPECT_EQ(confirmedMs, -1);
    EXPECT_NEAR(pump.NowMs(), 4200 + 45000 + 1000, 1);
}

TEST_F(Dialup, CallThatFailsIsToldInTheUsersLanguage)
{
    UseLanguageFile(LanguageLines);
    PlugFailing(ModemFailure::Busy);
    shownDialogs.Expect(BoxAnswer::Ok);
    modem.ConnectDialup(3);
    EXPECT_EQ(window.captions.at(3), "<- [318] 5551234");
    EXPECT_EQ(shownDialogs.shown.at(0).text, "[318] 5551234.     ");
    EXPECT_EQ(window.Caption(), "<- [324] 3 @ 9600,N,8,1");
}

TEST_F(Dialup, FailedCallPutsTheTimeOutBack)
{
    PlugFailing(ModemFailure::NoAnswer);
    options.ShowMessages = false;
    modem.ConnectDialup(3);
    EXPECT_THAT(shownDialogs.shown, IsEmpty());
    EXPECT_EQ(link.DefaultTimeout, 5000);
}

TEST_F(Dialup, NoAnswerButOkAndConnectIsLookedFor)
{
    options.ShowMessages = false;
    for (const ModemFailure failure : {ModemFailure::NoCarrier, ModemFailure::Busy, ModemFailure::NoAnswer}) {
        exchange.txtCharacterWindow.Clear();
        PlugFailing(failure);
        const double begin = pump.NowMs();
        modem.ConnectDialup(3);
        EXPECT_NEAR(pump.NowMs() - begin, 50200, 1);
        EXPECT_EQ(window.Caption(), "<- Connected to Com 3 @ 9600,N,8,1");
    }
    for (const ModemFailure failure : {ModemFailure::Silent, ModemFailure::Error, ModemFailure::Garbage}) {
        exchange.txtCharacterWindow.Clear();
        PlugFailing(failure);
        modem.ConnectDialup(3);
        EXPECT_EQ(window.Caption(), "<- Could Not Find a Modem on Com 3");
    }
    EXPECT_EQ(confirmedMs, -1);
}

TEST_F(Dialup, FailedCallEndsAProgramLoadFromAShortcut)
{
    PlugFailing(ModemFailure::Busy);
    options.ShowMessages = false;
    state.RunMode = "IconProgram";
    modem.ConnectDialup(3);
    EXPECT_TRUE(end.Ended());
    EXPECT_EQ(window.Caption(), "<- Could Not Dial 5551234");
}

TEST_F(Dialup, EmptyModemTimeoutKeepsTheTimeOut)
{
    PlugFailing(ModemFailure::NoAnswer);
    options.ShowMessages = false;
    options.ModemTimeout = "";
    modem.ConnectDialup(3);
    EXPECT_NEAR(pump.NowMs(), 4200 + 5000 + 1000, 1);
    EXPECT_EQ(link.DefaultTimeout, 5000);
}

TEST_F(Dialup, RestOfTheLineIsAwaitedForAMoment)
{
    serial.Arrive("\r\nOK\r\n", 1210);
    serial.Arrive("\r\nCONNECT", 5000);
    serial.Arrive(" 24", 5040);
    serial.Arrive("00\r", 5080);
    modem.ConnectDialup(3);
    EXPECT_EQ(window.captions.at(3), "<- Connected to 5551234 at 2400 baud");
    EXPECT_LE(confirmedMs, 5000 + 100 + 1000);
}

TEST_F(Dialup, LineThatNeverEndsCostsATenthOfASecond)
{
    serial.Arrive("\r\nOK\r\n", 1210);
    serial.Arrive("\r\nCONNECT", 5000);
    modem.ConnectDialup(3);
    EXPECT_EQ(window.captions.at(3), "<- Connected to 5551234 at  baud");
    EXPECT_NEAR(confirmedMs, 6100, 1);
}

TEST_F(Dialup, EndOfAGoodLinkSendsNoResetToTheModem)
{
    Plug();
    modem.ConnectDialup(3);
    serial.events.clear();
    rs232.CloseLink();
    EXPECT_EQ(serial.Sent(), "+++");
    EXPECT_FALSE(serial.PortOpen());
}

TEST_F(TestOfDialup, GoodCallIsToldInTheCaption)
{
    Plug();
    tables.Record(2)->LoggerBaud = "1";
    EXPECT_TRUE(modem.TestDialup(3, "5551234", "ats0=0"));
    EXPECT_THAT(Wire(),
                ElementsAre("1000 +++", "1100 ath0\r\n", "1200 ate0v1\r\n", "2200 ats0=0\r\n", "4200 atdt5551234\r\n"));
    EXPECT_THAT(dialog.captions,
                ElementsAre("Looking for a Modem on Com 3 ...", "Found a Modem on Com 3", "Dialling 5551234 ...",
                            "Connected at 9600 baud", "Looking for a KR200 Series 1 ..."));
    EXPECT_THAT(window.captions, IsEmpty());
    EXPECT_NEAR(pump.NowMs(), 8200, 1);
    EXPECT_EQ(link.DefaultTimeout, 5000);
    EXPECT_TRUE(link.LinkConnected);
    EXPECT_EQ(confirmedMs, -1); // that is the dialog's
}

TEST_F(TestOfDialup, WithoutARecordThePortKeepsItsSettings)
{
    state.CurrentLogger = 0;
    Plug();
    EXPECT_TRUE(modem.TestDialup(3, "5551234", ""));
    EXPECT_EQ(serial.Settings(), "9600,N,8,1");
    EXPECT_EQ(serial.handshaking, 0);
    EXPECT_EQ(link.LinkDescription, "");
    EXPECT_EQ(dialog.caption, "Connected at 9600 baud");
}

TEST_F(TestOfDialup, MissingModemIsTold)
{
    shownDialogs.Expect(BoxAnswer::Ok);
    EXPECT_FALSE(modem.TestDialup(3, "5551234", ""));
    EXPECT_EQ(dialog.caption, "Could Not Find a Modem on Com 3");
    EXPECT_EQ(shownDialogs.shown.at(0).text, "Could not find a modem on com 3.     ");
    EXPECT_THAT(dialog.steps, ElementsAre("clear", "set"));
}

TEST_F(TestOfDialup, CallThatFailsIsToldAndHungUp)
{
    PlugFailing(ModemFailure::NoCarrier);
    shownDialogs.Expect(BoxAnswer::Ok);
    EXPECT_FALSE(modem.TestDialup(3, "5551234", "at"));
    const auto wire = Wire();
    ASSERT_EQ(wire.size(), 6U);
    EXPECT_EQ(wire.back(), "49200 at&h\r\n+++");
    EXPECT_EQ(dialog.caption, "Could Not Connect to 5551234");
    EXPECT_EQ(shownDialogs.shown.at(0).text, "Could not Connect to 5551234.     ");
    EXPECT_EQ(shownDialogs.shown.at(0).title, " tallyCore Harvel");
    EXPECT_EQ(shownDialogs.shown.at(0).icon, BoxIcon::Critical);
    EXPECT_FALSE(link.LinkConnected);
    EXPECT_FALSE(serial.PortOpen());
    EXPECT_EQ(link.DefaultTimeout, 5000);
}

TEST_F(TestOfDialup, WithMessagesOffAFailureIsInTheCaptionOnly)
{
    options.ShowMessages = false;
    EXPECT_FALSE(modem.TestDialup(3, "5551234", "at"));
    EXPECT_EQ(dialog.caption, "Could Not Find a Modem on Com 3");
    PlugFailing(ModemFailure::NoCarrier);
    EXPECT_FALSE(modem.TestDialup(3, "5551234", "at"));
    EXPECT_EQ(dialog.caption, "Could Not Connect to 5551234");
    EXPECT_THAT(shownDialogs.shown, IsEmpty());
}

TEST_F(TestOfDialup, BusyPortIsToldByThePortAlone)
{
    serial.ports[3].openError = PortBusy;
    shownDialogs.Expect(BoxAnswer::Ok);
    EXPECT_FALSE(modem.TestDialup(3, "5551234", ""));
    EXPECT_THAT(Wire(), IsEmpty());
}

TEST_F(ModemReset, ModemThatAnswersIsReset)
{
    Plug();
    shownDialogs.Expect(BoxAnswer::Ok);
    shownDialogs.whileShown = [this] { EXPECT_TRUE(state.TestRunning); };
    modem.ResetModem(3, "atz");
    EXPECT_THAT(Wire(), ElementsAre("0 +++", "200 at\r\n", "1220 atz\r\n", "3220 at&h\r\n", "3220 +++"));
    EXPECT_THAT(dialog.captions, ElementsAre(" Looking for a Modem on Com 3 ...", " Found a Modem on Com 3",
                                             " Modem Reset", " Add a tallyCore"));
    const Box& box = shownDialogs.shown.at(0);
    EXPECT_EQ(box.text, "Modem Successfully Reset.     ");
    EXPECT_EQ(box.title, " tallyCore Harvel");
    EXPECT_EQ(box.icon, BoxIcon::Information);
    EXPECT_THAT(dialog.steps, ElementsAre("clear", "set"));
    EXPECT_EQ(link.ConnectionKind, "Dialup");
    EXPECT_EQ(link.DefaultTimeout, 5000);
    EXPECT_FALSE(state.TestRunning);
    EXPECT_FALSE(serial.PortOpen());
}

TEST_F(ModemReset, LanguageFileReplacesTheWords)
{
    UseLanguageFile(LanguageLines);
    Plug();
    shownDialogs.Expect(BoxAnswer::Ok);
    modem.ResetModem(3, "atz");
    EXPECT_THAT(dialog.captions, ElementsAre(" [518] 3 ...", " [315] 3", " [520]", " Add a tallyCore"));
    EXPECT_EQ(shownDialogs.shown.at(0).text, "[521]");
    EXPECT_EQ(shownDialogs.shown.at(0).title, " [503]");
}

TEST_F(ModemReset, MissingModemIsTold)
{
    shownDialogs.Expect(BoxAnswer::Ok);
    modem.ResetModem(3, "atz");
    EXPECT_THAT(Wire(), ElementsAre("0 +++", "200 at\r\n", "1700 at&h\r\n", "3200 +++"));
    EXPECT_THAT(dialog.captions,
                ElementsAre(" Looking for a Modem on Com 3 ...", " No Modem Found on Com 3", " Add a tallyCore"));
    const Box& box = shownDialogs.shown.at(0);
    EXPECT_EQ(box.text, "Could Not Find a Modem on Com Port 3.     ");
    EXPECT_EQ(box.title, " tallyCore Search");
    EXPECT_EQ(box.icon, BoxIcon::Critical);
    EXPECT_THAT(dialog.steps, ElementsAre("clear", "set"));
    EXPECT_EQ(link.DefaultTimeout, 5000);
    EXPECT_FALSE(state.TestRunning);
}

TEST_F(ModemReset, MissingModemIsToldInTheUsersLanguage)
{
    UseLanguageFile(LanguageLines);
    shownDialogs.Expect(BoxAnswer::Ok);
    modem.ResetModem(3, "atz");
    EXPECT_THAT(dialog.captions, ElementsAre(" [518] 3 ...", " [316] 3", " Add a tallyCore"));
    EXPECT_EQ(shownDialogs.shown.at(0).text, "[316] 3.     ");
    EXPECT_EQ(shownDialogs.shown.at(0).title, " tallyCore Search");
}

TEST_F(ModemReset, BusyPortIsToldOnce)
{
    serial.ports[3].openError = PortBusy;
    shownDialogs.Expect(BoxAnswer::Ok);
    modem.ResetModem(3, "atz");
    EXPECT_THAT(Wire(), IsEmpty());
    EXPECT_EQ(dialog.caption, " Add a tallyCore");
    EXPECT_FALSE(state.TestRunning);
}

} // namespace harvelop::test
