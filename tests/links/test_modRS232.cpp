// Opening, setting, writing to and closing the port.

#include "link_bench.h"

#include <gmock/gmock.h>

namespace harvelop::test
{
namespace
{

using testing::ElementsAre;

class ComPortTest : public LinkTest
{
protected:
    ComPortTest() { progress.ShowMessageForm(); }

    void plugBusy(int port) { serial.ports[port].openError = PortBusy; }
};

TEST_F(ComPortTest, OpeningPreparesThePortInOrder)
{
    serial.ports[3] = {};
    rs232.OpenComPort(3);
    EXPECT_THAT(serial.calls, ElementsAre("ClearInBuffer", "ClearOutBuffer", "RThreshold 1", "InBufferSize 2048",
                                          "RTSEnable true", "CommPort 3", "Open"));
    EXPECT_TRUE(serial.PortOpen());
    EXPECT_EQ(link.LinkMode, "ComPort");
    EXPECT_EQ(link.CurrentPort, 3);
    EXPECT_FALSE(link.PortOpenFailed.Get(3));
    EXPECT_EQ(link.BusyPorts, "");
}

TEST_F(ComPortTest, AnOpenPortIsClosedFirst)
{
    serial.ports[1] = {};
    serial.ports[2] = {};
    rs232.OpenComPort(1);
    serial.calls.clear();
    link.ReceiveThreshold = 5;
    rs232.OpenComPort(2);
    EXPECT_THAT(serial.calls, ElementsAre("Close", "ClearInBuffer", "ClearOutBuffer", "RThreshold 5",
                                          "InBufferSize 2048", "RTSEnable true", "CommPort 2", "Open"));
}

TEST_F(ComPortTest, APortOpensWithTheSettingsInTheControl)
{
    serial.ports[1] = {};
    rs232.SetComSettings("1200", "E", "7", "2", "SWFC");
    rs232.OpenComPort(1);
    EXPECT_EQ(serial.events.back().text, "1200,E,7,2");
}

TEST_F(ComPortTest, ABusyPortIsToldOnceAndLeavesNoLink)
{
    plugBusy(3);
    shownDialogs.Expect(BoxAnswer::Ok);
    bool visibleAtBox = true;
    bool failedAtBox = true;
    double msAtBox = 0;
    shownDialogs.whileShown = [&] {
        visibleAtBox = window.Visible();
        failedAtBox = link.PortOpenFailed.Get(3);
        msAtBox = pump.NowMs();
    };
    rs232.OpenComPort(3);

    EXPECT_EQ(window.Caption(), "<- Can't Connect to Com 3 : the Port is Busy");
    EXPECT_NEAR(msAtBox, 1000, 0.01);
    EXPECT_FALSE(visibleAtBox);
    EXPECT_FALSE(failedAtBox);
    ASSERT_EQ(shownDialogs.shown.size(), 1u);
    EXPECT_EQ(shownDialogs.shown[0].text, "Can't Connect to Com 3 : the Port is Busy.     ");
    EXPECT_EQ(shownDialogs.shown[0].title, " tallyCore Harvel");
    EXPECT_EQ(shownDialogs.shown[0].icon, BoxIcon::Critical);
    EXPECT_EQ(shownDialogs.shown[0].buttons, BoxButtons::Ok);
    EXPECT_EQ(shownDialogs.shown[0].detail, "");
    EXPECT_TRUE(window.Visible());
    EXPECT_TRUE(link.PortOpenFailed.Get(3));
    EXPECT_EQ(link.BusyPorts, "3");
    EXPECT_EQ(link.LinkMode, "None");
    EXPECT_EQ(link.CurrentPort, 0);
    EXPECT_FALSE(end.Ended());
}

TEST_F(ComPortTest, TheHolderOfABusyPortIsNamed)
{
    plugBusy(3);
    serial.holder = "minicom (process 1234)";
    shownDialogs.Expect(BoxAnswer::Ok);
    rs232.OpenComPort(3);
    EXPECT_EQ(shownDialogs.shown[0].detail, "In use by minicom (process 1234).");
}

TEST_F(ComPortTest, ABusyPortIsToldInTheUsersLanguage)
{
    UseLanguageFile("374:1:9:Kein Weg zu Com\r\n375:1:9:belegt\r\n700:1:9:Keine Verbindung zu Com\r\n701:1:9:in "
                    "Gebrauch\r\n");
    plugBusy(12);
    shownDialogs.Expect(BoxAnswer::Ok);
    rs232.OpenComPort(12);
    EXPECT_EQ(window.Caption(), "<- Kein Weg zu Com 12 : belegt");
    EXPECT_EQ(shownDialogs.shown[0].text, "Keine Verbindung zu Com 12 : in Gebrauch.     ");
}

TEST_F(ComPortTest, ABusyPortEndsAProgramThatWasStartedForOneCommand)
{
    state.LaunchCommand = "::1";
    state.TerminalOpen = true;
    plugBusy(3);
    shownDialogs.Expect(BoxAnswer::Ok);
    rs232.OpenComPort(3);
    EXPECT_TRUE(end.Ended());
    EXPECT_TRUE(link.PortOpenFailed.Get(3));
    EXPECT_FALSE(window.Visible());
    EXPECT_EQ(link.LinkMode, "None");
}

TEST_F(ComPortTest, ABusyPortClosesTheTerminal)
{
    state.TerminalOpen = true;
    plugBusy(3);
    shownDialogs.Expect(BoxAnswer::Ok);
    rs232.OpenComPort(3);
    EXPECT_EQ(terminal.closed, 1);
}

TEST_F(ComPortTest, ABusyPortForTheTerminalLeavesTheProgressWindowAlone)
{
    progress.HideMessageForm();
    window.shows.clear();
    state.TerminalOpen = true;
    state.QuietConnect = true;
    plugBusy(3);
    shownDialogs.Expect(BoxAnswer::Ok);
    rs232.OpenComPort(3);
    EXPECT_TRUE(window.shows.empty());
    EXPECT_EQ(terminal.caption, " Can't Connect to Com 3 : the Port is Busy");
    EXPECT_EQ(terminal.closed, 1);
}

TEST_F(ComPortTest, ATerminalThatIsNotOpenIsNotClosed)
{
    plugBusy(3);
    shownDialogs.Expect(BoxAnswer::Ok);
    rs232.OpenComPort(3);
    EXPECT_EQ(terminal.closed, 0);
}

TEST_F(ComPortTest, OtherFailuresOnlyEndTheLink)
{
    serial.ports[4].openError = PortFailed;
    rs232.OpenComPort(2); // absent
    rs232.OpenComPort(4);
    rs232.OpenComPort(17); // beyond all ports
    EXPECT_TRUE(shownDialogs.shown.empty());
    EXPECT_EQ(window.Caption(), "");
    EXPECT_EQ(pump.NowMs(), 0);
    EXPECT_EQ(link.BusyPorts, "2417");
    EXPECT_EQ(link.LinkMode, "None");
    EXPECT_EQ(link.CurrentPort, 0);
    for (int port = 0; port <= ComPorts; ++port)
        EXPECT_FALSE(link.PortOpenFailed.Get(port));
}

TEST_F(ComPortTest, AGoodOpeningForgetsThatItFailedBefore)
{
    plugBusy(3);
    shownDialogs.Expect(BoxAnswer::Ok);
    rs232.OpenComPort(3);
    ASSERT_TRUE(link.PortOpenFailed.Get(3));
    serial.ports[3].openError = PortOk;
    rs232.OpenComPort(3);
    EXPECT_FALSE(link.PortOpenFailed.Get(3));
    EXPECT_EQ(link.LinkMode, "ComPort");
}

TEST_F(ComPortTest, MissingPermissionIsToldOnce)
{
    serial.ports[5].openError = PortNoPermission;
    serial.ports[6].openError = PortNoPermission;
    shownDialogs.Expect(BoxAnswer::Ok);
    bool visibleAtBox = true;
    shownDialogs.whileShown = [&] { visibleAtBox = window.Visible(); };
    rs232.OpenComPort(5);
    rs232.OpenComPort(6);
    rs232.OpenComPort(5);
    ASSERT_EQ(shownDialogs.shown.size(), 1u);
    EXPECT_EQ(shownDialogs.shown[0].text, "You have no permission to open Com 5 (/dev/ttyS4).     ");
    EXPECT_EQ(shownDialogs.shown[0].title, " tallyCore Harvel");
    EXPECT_EQ(shownDialogs.shown[0].icon, BoxIcon::Critical);
    EXPECT_EQ(shownDialogs.shown[0].detail, "Add your user to the group \"dialout\", then log out and in again.");
    EXPECT_FALSE(visibleAtBox);
    EXPECT_TRUE(window.Visible());
    EXPECT_EQ(link.BusyPorts, "565");
    EXPECT_FALSE(link.PortOpenFailed.Get(5));
    EXPECT_EQ(link.LinkMode, "None");
}

TEST_F(ComPortTest, SettingsAreJoinedAsTheyStand)
{
    rs232.SetComSettings("9600", "N", "8", "1", "HWFC");
    EXPECT_EQ(serial.Settings(), "9600,N,8,1");
    EXPECT_EQ(link.FlowControl, "HWFC");
    rs232.SetComSettings("fast", "0", "", "1.5", "NOFC");
    EXPECT_EQ(serial.Settings(), "fast,0,,1.5");
}

TEST_F(ComPortTest, TheFlowWordSetsTheHandshaking)
{
    const auto handshaking = [this](const std::string& flow) {
        rs232.SetComSettings("9600", "N", "8", "1", flow);
        EXPECT_EQ(link.FlowControl, flow);
        return serial.handshaking;
    };
    EXPECT_EQ(handshaking("HWFC"), 2);
    EXPECT_EQ(handshaking("SWFC"), 1);
    EXPECT_EQ(handshaking("NOFC"), 0);
}

TEST_F(ComPortTest, SWHWFCLeavesTheHandshakingOfTheLinkBefore)
{
    for (const auto& [flow, handshaking] : {std::pair("HWFC", 2), std::pair("SWFC", 1), std::pair("NOFC", 0)}) {
        rs232.SetComSettings("9600", "N", "8", "1", flow);
        for (const char* other : {"SWHWFC", "", "hwfc"}) {
            rs232.SetComSettings("9600", "N", "8", "1", other);
            EXPECT_EQ(serial.handshaking, handshaking);
            EXPECT_EQ(link.FlowControl, other);
        }
    }
}

TEST_F(ComPortTest, NothingIsSetWhileTheSearchIsToStop)
{
    rs232.SetComSettings("9600", "N", "8", "1", "HWFC");
    state.StopSearch = true;
    rs232.SetComSettings("1200", "E", "7", "2", "NOFC");
    EXPECT_EQ(serial.Settings(), "9600,N,8,1");
    EXPECT_EQ(serial.handshaking, 2);
    EXPECT_EQ(link.FlowControl, "HWFC");
}

TEST_F(ComPortTest, ALineIsSentWithItsEnd)
{
    OpenPort1();
    rs232.ComSend("TEST0");
    rs232.ComSend("");
    waiting.ServeEvents();
    EXPECT_EQ(serial.Sent(), "TEST0\r\n\r\n");
}

TEST_F(ComPortTest, NoByteLeavesAfterTheEnd)
{
    OpenPort1();
    end.EndProgram();
    rs232.ComSend("TEST0");
    rs232.WriteToPort("+++");
    pump.ServePending();
    EXPECT_EQ(serial.Sent(), "");
}

TEST_F(ComPortTest, NoPortOpensAfterTheEnd)
{
    serial.ports[1] = {};
    end.EndProgram();
    rs232.OpenComPort(1);
    rs232.FindComPorts();
    EXPECT_TRUE(serial.calls.empty());
}

TEST_F(ComPortTest, ClosingEndsASerialLink)
{
    OpenPort1();
    link.ConnectionKind = "RS232";
    rs232.CloseLink();
    EXPECT_FALSE(serial.PortOpen());
    EXPECT_EQ(link.LinkMode, "None");
    EXPECT_EQ(link.CurrentPort, 0);
    EXPECT_EQ(pump.NowMs(), 0);
    EXPECT_EQ(serial.Sent(), "");
}

TEST_F(ComPortTest, ClosingAClosedPortIsHarmless)
{
    rs232.CloseLink();
    rs232.CloseLink();
    EXPECT_EQ(link.LinkMode, "None");
    EXPECT_EQ(link.CurrentPort, 0);
}

TEST_F(ComPortTest, ClosingAModemLinkSendsOnlyTheThreePluses)
{
    OpenPort1();
    link.ConnectionKind = "Dialup";
    std::vector<std::string> passed;
    rs232.SendToLogger = [&](const std::string& text) {
        passed.push_back(std::to_string(static_cast<int>(std::lround(pump.NowMs()))) + " " + text);
        exchange.SendToLogger(text);
    };
    rs232.CloseLink();
    EXPECT_THAT(passed, ElementsAre("100 ath0", "200 atz"));
    EXPECT_EQ(serial.Sent(), "+++");
    EXPECT_NEAR(pump.NowMs(), 300, 0.01);
    EXPECT_FALSE(serial.PortOpen());
}

TEST_F(ComPortTest, EngineErrorsAreToldWhereTheyHaveAText)
{
    shownDialogs.Expect(BoxAnswer::Ok);
    rs232.ComPortEngineError(8019, 2);
    rs232.ComPortEngineError(PortBusy, 2);
    rs232.ComPortEngineError(1, 2);
    ASSERT_EQ(shownDialogs.shown.size(), 1u);
    EXPECT_EQ(shownDialogs.shown[0].text, "Device busy");
}

} // namespace
} // namespace harvelop::test
