// The Test button, and its end in the middle of every wait.
#include "add_fixture.h"

namespace harvelop::test
{
namespace
{

void press(AddBench& b, const char* option)
{
    b.Add();
    b.Choose("cbxPort", "3");
    b.Choose("cbxBaud", "9600");
    b.Fill("txtIP", "logger");
    b.Fill("txtTCPPort", "99");
    b.Click(option);
}

TEST(FrmAddTallyCoreTest, ALoggerOnAComPortIsFoundAndThePortReleased)
{
    AddBench b;
    b.serial.Plug(3, AddBench::Logger("KR200", "2"), "9600");
    press(b, "optRS232");
    b.Fill("txtPassword", "key");
    b.dialogs.Expect(BoxAnswer::Ok);
    std::vector<std::string> captions;
    b.pump.After(500, [&] {
        captions.push_back(b.Caption());
        EXPECT_TRUE(b.heart.state.TestRunning);
        EXPECT_TRUE(b.The("cmdCancel").isEnabled());
        for (const char* locked :
             {"cmdTest",        "cmdOk",         "optRS232",       "optDialup",  "optEthernet",  "cbxSeries",
              "cbxBaud",        "cbxDataBits",   "cbxFlowControl", "cbxModel",   "cbxParity",    "cbxPort",
              "cbxStopBits",    "txtSerial",     "txtIP",          "txtTCPPort", "cbxModemPort", "cbxModemBaud",
              "txtPhoneNumber", "txtInitString", "cmdResetModem"})
            EXPECT_FALSE(b.The(locked).isEnabled()) << locked;
        b.Click("cmdTest"); // a second click finds nothing to press
    });
    b.Click("cmdTest");
    EXPECT_EQ(captions, std::vector<std::string>{" Checking Online Status ..."});
    EXPECT_EQ(b.LastBox().text, "Found a KR200 Series 2 connected to Com Port 3 @ 9600,N,8,1,NOFC.     ");
    EXPECT_EQ(b.serial.Sent().substr(0, 5), "key\r\n");
    EXPECT_FALSE(b.serial.PortOpen());
    EXPECT_EQ(b.heart.link.LinkMode, "None");
    EXPECT_EQ(b.Caption(), " Add a tallyCore");
    EXPECT_TRUE(b.The("cmdTest").isEnabled() && b.The("cbxModel").isEnabled());
    EXPECT_FALSE(b.heart.state.TestRunning || b.heart.state.AbortWait);
    EXPECT_EQ(b.heart.tables.Count(), 0);
}

TEST(FrmAddTallyCoreTest, ASilentPortIsAskedTwiceAndTold)
{
    AddBench b;
    b.serial.ports[3] = {};
    press(b, "optRS232");
    b.dialogs.Expect(BoxAnswer::Ok);
    b.Click("cmdTest");
    EXPECT_EQ(b.LastBox().text, "No tallyCores were found connected to Com Port 3 @ 9600,N,8,1,NOFC.    ");
    EXPECT_EQ(b.LastBox().icon, BoxIcon::Critical);
    const std::string sent = b.serial.Sent();
    const size_t first = sent.find("TEST0");
    ASSERT_NE(first, std::string::npos);
    EXPECT_NE(sent.find("TEST0", first + 1), std::string::npos);
}

TEST(FrmAddTallyCoreTest, OddParityIsTestedAsADigitAndStoredAsTheWord)
{
    AddBench b;
    b.serial.Plug(3, AddBench::Logger("KR40"), "9600");
    press(b, "optRS232");
    b.Choose("cbxParity", "Odd");
    b.dialogs.Expect(BoxAnswer::Ok);
    b.Click("cmdTest");
    EXPECT_EQ(b.LastBox().text, "Found a KR40 connected to Com Port 3 @ 9600,0,8,1,NOFC.     ");
    b.Click("cmdOk");
    EXPECT_EQ(b.Record(1).LoggerParity, "Odd");
}

TEST(FrmAddTallyCoreTest, ABusyPortIsToldOnceAndEndsTheTest)
{
    AddBench b;
    b.serial.ports[3].openError = PortBusy;
    press(b, "optRS232");
    b.dialogs.Expect(BoxAnswer::Ok);
    b.Click("cmdTest");
    EXPECT_EQ(b.dialogs.shown.size(), 1U);
    EXPECT_EQ(b.LastBox().text, "Can't Connect to Com 3 : the Port is Busy.     ");
    EXPECT_EQ(b.serial.Sent(), "");
    EXPECT_TRUE(b.The("cmdTest").isEnabled());
}

TEST(FrmAddTallyCoreTest, ALoggerOnTheNetworkIsFoundAndTheSocketClosed)
{
    AddBench b;
    b.sockets.Plug("logger", 99, AddBench::Logger("KR40"));
    press(b, "optEthernet");
    b.dialogs.Expect(BoxAnswer::Ok);
    b.Click("cmdTest");
    EXPECT_EQ(b.LastBox().text, "Found a KR40 at IP address logger on TCP port 99.     ");
    EXPECT_EQ(b.sockets.steps.back(), "1 close");
    EXPECT_FALSE(b.heart.link.EthernetConnected);
}

TEST(FrmAddTallyCoreTest, AHostThatRefusesOrIsSilentIsTold)
{
    for (const bool silent : {false, true}) {
        AddBench b;
        if (silent)
            b.sockets.places["logger:99"].answers = false;
        press(b, "optEthernet");
        b.dialogs.Expect(BoxAnswer::Ok);
        b.Click("cmdTest");
        EXPECT_EQ(b.LastBox().text, "No tallyCores were found at IP address logger on TCP port 99.     ");
    }
}

TEST(FrmAddTallyCoreTest, TheTestChangesNothingOfTheLoggerViewedBefore)
{
    AddBench b;
    b.Store({SerialLogger()});
    b.heart.state.CurrentLogger = 1;
    b.serial.Plug(3, AddBench::Logger("KR40"), "9600");
    const std::string before = RecordText(b.Record(1));
    press(b, "optRS232");
    b.dialogs.Expect(BoxAnswer::Ok);
    b.Click("cmdTest");
    EXPECT_EQ(RecordText(b.Record(1)), before);
    EXPECT_EQ(b.RecordLine(1), before);
}

// Something happens at each half second of a test, of each kind.
void interrupt(const std::function<void(AddBench&)>& what, bool ends)
{
    for (const char* option : {"optRS232", "optEthernet", "optDialup"})
        for (double at = 100; at < 14000; at += 500) {
            SCOPED_TRACE(std::string(option) + " at " + std::to_string(at));
            AddBench b;
            b.serial.ports[1] = {};
            b.serial.ports[3] = {};
            b.sockets.places["logger:99"] = {};
            press(b, option);
            bool happened = false;
            size_t sent = 0;
            b.dialogs.whileShown = [&] { EXPECT_FALSE(happened) << "a box of a dialog that is gone"; };
            b.pump.After(at, [&] {
                happened = b.heart.state.TestRunning;
                if (!happened)
                    return;
                what(b);
                sent = b.serial.Sent().size() + b.sockets.steps.size();
            });
            b.dialogs.Expect(BoxAnswer::Ok); // for a test that is over before
            b.Click("cmdTest");
            b.dialogs.whileShown = nullptr;
            if (b.dialogs.shown.empty())
                b.dialogs.Show({}); // takes the answer that was left over
            if (!happened)
                break;
            b.heart.waiting.ServeEvents();
            EXPECT_FALSE(b.serial.PortOpen() && !ends);
            EXPECT_FALSE(b.heart.link.EthernetConnected);
            EXPECT_FALSE(b.heart.state.TestRunning);
            EXPECT_FALSE(b.form && b.form->isVisible() && !ends);
            if (ends) {
                EXPECT_LE(b.serial.Sent().size(), sent);
            }
        }
}

TEST(FrmAddTallyCoreTest, CancelInEveryWaitEndsItQuietly)
{
    interrupt([](AddBench& b) { b.Click("cmdCancel"); }, false);
}

TEST(FrmAddTallyCoreTest, TheDialogMayBeDeletedInEveryWait)
{
    interrupt([](AddBench& b) { delete b.form; }, false);
}

TEST(FrmAddTallyCoreTest, AfterTheProgramsEndNoByteLeaves)
{
    interrupt([](AddBench& b) { b.heart.end.EndProgram(); }, true);
}

} // namespace
} // namespace harvelop::test
