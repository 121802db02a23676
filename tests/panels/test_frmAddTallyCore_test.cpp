// The Test and the Reset button.
#include "add_fixture.h"
#include "simulator/simulated_modem.h"

#include <QWindow>

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
             {"cmdTest",        "cmdOk",         "optRS232",       "optDialup",   "optEthernet",         "cbxSeries",
              "cbxBaud",        "cbxDataBits",   "cbxFlowControl", "cbxModel",    "cbxParity",           "cbxPort",
              "cbxStopBits",    "txtSerial",     "txtIP",          "txtTCPPort",  "cbxModemPort",        "cbxModemBaud",
              "txtPhoneNumber", "txtInitString", "cmdResetModem",  "txtPassword", "txtConnectionTimeout"})
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

// A modem on Com 3 that knows one number.
void plugModem(AddBench& b)
{
    const auto logger = AddBench::Logger("KR200", "2");
    b.serial.Plug(3, std::make_shared<SimulatedModem>(ModemConfig(), PhoneBook{{"12", logger}}), "9600");
}

void pressModem(AddBench& b)
{
    press(b, "optDialup");
    b.Choose("cbxModemPort", "3");
    b.Fill("txtPhoneNumber", "12");
    b.Fill("txtInitString", "at&f");
}

// The captions that the dialog had in the waits of what a button starts, each once.
std::vector<std::string> captionsWhile(AddBench& b, const char* button)
{
    std::vector<std::string> captions;
    b.pump.whenWaiting = [&](double) {
        if (b.form && (captions.empty() || captions.back() != b.Caption()))
            captions.push_back(b.Caption());
    };
    b.dialogs.Expect(BoxAnswer::Ok);
    b.Click(button);
    b.pump.whenWaiting = nullptr;
    return captions;
}

TEST(FrmAddTallyCoreTest, AModemsLoggerIsFoundAndTheStepsAreToldInTheCaption)
{
    AddBench b;
    plugModem(b);
    pressModem(b);
    EXPECT_EQ(captionsWhile(b, "cmdTest"),
              (std::vector<std::string>{"Looking for a Modem on Com 3 ...", "Found a Modem on Com 3", "Dialling 12 ...",
                                        "Connected at 9600 baud", " Disconnecting ..."}));
    EXPECT_EQ(b.LastBox().text, "Found a KR200 Series 2 connected to the Modem on Com Port 3.     ");
    EXPECT_EQ(b.LastBox().title, " tallyCore Search");
    EXPECT_EQ(b.Caption(), " Add a tallyCore");
    EXPECT_EQ(b.heart.link.LinkMode, "None");
    EXPECT_FALSE(b.serial.PortOpen());
}

TEST(FrmAddTallyCoreTest, ALanguageFileTellsTheStepsAndTheOutcome)
{
    AddBench b;
    b.Speak("500:1:9:T500\r\n501:1:9:T501\r\n502:1:9:T502\r\n503:1:9:T503\r\n507:1:9:T507\r\n508:1:9:T508\r\n"
            "510:1:9:T510\r\n808:1:9:T808\r\n");
    b.serial.Plug(3, AddBench::Logger("KR200", "2"), "9600");
    press(b, "optRS232");
    EXPECT_EQ(captionsWhile(b, "cmdTest"), std::vector<std::string>{"T808 ..."});
    EXPECT_EQ(b.LastBox().text, "T500 KR200 T502 2 T501 3 @ 9600,N,8,1,NOFC.     ");
    EXPECT_EQ(b.LastBox().title, " T503");
    b.sockets.Plug("logger", 99, AddBench::Logger("KR40"));
    b.Click("optEthernet");
    captionsWhile(b, "cmdTest");
    EXPECT_EQ(b.LastBox().text, "T500 KR40 T507 logger T508 99.     ");
    plugModem(b);
    pressModem(b);
    EXPECT_EQ(captionsWhile(b, "cmdTest").back(), "T510 ...");
}

TEST(FrmAddTallyCoreTest, ResetTellsItsStepsAndItsSuccess)
{
    AddBench b;
    plugModem(b);
    pressModem(b);
    EXPECT_EQ(captionsWhile(b, "cmdResetModem"), (std::vector<std::string>{" Looking for a Modem on Com 3 ...",
                                                                           " Found a Modem on Com 3", " Modem Reset"}));
    EXPECT_EQ(b.LastBox().text, "Modem Successfully Reset.     ");
    EXPECT_EQ(b.LastBox().title, " tallyCore Harvel");
    EXPECT_EQ(b.LastBox().icon, BoxIcon::Information);
    EXPECT_EQ(b.Caption(), " Add a tallyCore");
    EXPECT_TRUE(b.The("cmdResetModem").isEnabled() && b.The("cmdOk").isEnabled());
    EXPECT_FALSE(b.heart.state.TestRunning || b.heart.state.AbortWait);
    EXPECT_FALSE(b.serial.PortOpen());
    EXPECT_EQ(b.serial.Sent().find("atz"), std::string::npos);
}

TEST(FrmAddTallyCoreTest, ResetOfAModemThatIsNotThereIsTold)
{
    AddBench b;
    b.serial.ports[3] = {};
    pressModem(b);
    EXPECT_EQ(captionsWhile(b, "cmdResetModem").back(), " No Modem Found on Com 3");
    EXPECT_EQ(b.LastBox().text, "Could Not Find a Modem on Com Port 3.     ");
    EXPECT_EQ(b.LastBox().title, " tallyCore Search");
    EXPECT_EQ(b.LastBox().icon, BoxIcon::Critical);
    EXPECT_EQ(b.Caption(), " Add a tallyCore");
}

TEST(FrmAddTallyCoreTest, NothingStandsBeforeABoxOrAQuestion)
{
    for (const bool locked : {false, true}) {
        AddBench b;
        LoggerConfig config;
        config.password = "key";
        if (locked)
            b.serial.Plug(3, std::make_shared<SimulatedLogger>(config), "9600");
        else
            b.serial.ports[3].openError = PortBusy;
        press(b, "optRS232");
        int seen = 0;
        b.dialogs.whileShown = [&] {
            ++seen;
            EXPECT_FALSE(b.form->windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint));
        };
        if (locked)
            b.dialogs.ExpectPassword("key");
        b.dialogs.Expect(BoxAnswer::Ok);
        b.Click("cmdTest");
        EXPECT_EQ(seen, locked ? 2 : 1);
        EXPECT_TRUE(b.form->windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint));
    }
}

TEST(FrmAddTallyCoreTest, AKeyHeldDownOnTestDoesNotCancelIt)
{
    AddBench b;
    b.serial.Plug(3, AddBench::Logger("KR40"), "9600");
    press(b, "optRS232");
    b.The("cmdTest").setFocus();
    b.pump.After(100, [&] {
        QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r", true);
        QWidget* focused = QApplication::focusWidget();
        QApplication::sendEvent(focused ? focused : b.form.data(), &repeated);
        EXPECT_TRUE(b.form->isVisible());
    });
    b.dialogs.Expect(BoxAnswer::Ok);
    QTest::keyClick(&b.The("cmdTest"), Qt::Key_Return);
    EXPECT_TRUE(b.form->isVisible());
    EXPECT_EQ(b.LastBox().text, "Found a KR40 connected to Com Port 3 @ 9600,N,8,1,NOFC.     ");
    EXPECT_EQ(QApplication::focusWidget(), &b.The("cmdTest"));
}

TEST(FrmAddTallyCoreTest, EscapeCancelsARunningTest)
{
    AddBench b;
    b.serial.ports[3] = {};
    press(b, "optRS232");
    b.pump.After(3000, [&] { QTest::keyClick(b.form, Qt::Key_Escape); });
    b.Click("cmdTest");
    EXPECT_FALSE(b.form->isVisible());
    EXPECT_TRUE(b.dialogs.shown.empty());
    EXPECT_FALSE(b.serial.PortOpen());
}

} // namespace
} // namespace harvelop::test
