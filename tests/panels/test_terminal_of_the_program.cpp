#include "app/desktop_program.h"
#include "panels/frmSupport.h"
#include "settings/sample_loggers.h"
#include "simulator/simulated_logger.h"
#include "simulator/simulated_modem.h"
#include "support/test_program.h"
#include "terminal/frmReceivePane.h"

#include <QApplication>
#include <QClipboard>
#include <QGroupBox>
#include <QPushButton>
#include <QScrollBar>
#include <QSplitter>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <memory>

namespace harvelop::test
{
namespace
{

// The whole program, with one stored logger on Com 3.
class TerminalOfTheProgram : public testing::Test
{
protected:
    TerminalOfTheProgram()
    {
        t.Installed();
        t.files.files[TestProgram::OptionsIni] =
            "AvailablePorts=3\r\nFindPorts=0\r\nShowMessages=1\r\nTransmitHeight1=2000\r\n";
        LoggerRecord record = SerialLogger();
        record.LoggerPort = "3";
        t.files.files[TestProgram::FoundIni] = "1tallyCoreSettings=" + RecordText(record) + "\r\n";
        LoggerConfig config;
        config.model = record.LoggerModel.substr(0, record.LoggerModel.find(' '));
        t.serial.Plug(3, std::make_shared<SimulatedLogger>(config), record.LoggerBaud);
    }
    template <typename Form> Form* Window()
    {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (auto* form = dynamic_cast<Form*>(window))
                return form;
        return nullptr;
    }
    TestProgram t;
    DesktopProgram program{{t.pump, t.serial, t.sockets, t.dialogs, t.files, t.settings, t.desktop}};
    Program& p = program.heart;
};

TEST_F(TerminalOfTheProgram, TheButtonOpensItOnTheChosenLoggerAndOnlyOnce)
{
    program.Start("");
    auto* button = Window<frmOptions>()->findChild<QPushButton*>("cmdTerminal");
    ASSERT_TRUE(button->isEnabled());
    button->click();
    auto* terminal = Window<frmTerminal>();
    ASSERT_TRUE(terminal && terminal->isVisible());
    EXPECT_TRUE(p.link.LinkConnected);
    EXPECT_EQ(terminal->windowTitle(), ToQString(" Connected to the " + p.link.LinkDescription));
    EXPECT_FALSE(button->isEnabled());
    p.controls.DisableOptionsControls();
    p.controls.EnableOptionsControls();
    EXPECT_FALSE(button->isEnabled()); // however often others lock and free the panel
    terminal->close();
    EXPECT_TRUE(button->isEnabled());
    EXPECT_FALSE(p.end.Ended());
}

TEST_F(TerminalOfTheProgram, ClosedInAnyWaitOfConnectingItReleasesThePortAndGivesTheButtonBack)
{
    for (LoggerRecord logger : {SerialLogger(), ModemLogger(), NetworkLogger()}) {
        SCOPED_TRACE(logger.LoggerModel);
        bool happened = true;
        for (int number = 1; happened; ++number) {
            SCOPED_TRACE(number);
            TestProgram s;
            s.Installed();
            logger.LoggerDescription = "";
            s.files.files[TestProgram::OptionsIni] =
                "AvailablePorts=3\r\nFindPorts=0\r\nShowMessages=1\r\nModemTimeout=5\r\n";
            s.files.files[TestProgram::FoundIni] = "1tallyCoreSettings=" + RecordText(logger) + "\r\n";
            LoggerConfig config;
            config.model = logger.LoggerModel.substr(0, logger.LoggerModel.find(' '));
            const auto device = std::make_shared<SimulatedLogger>(config);
            s.serial.Plug(1, device, "");
            s.serial.Plug(3, std::make_shared<SimulatedModem>(ModemConfig(), PhoneBook{{logger.LoggerBaud, device}}),
                          "");
            s.sockets.Plug(logger.LoggerHost, 3000, device);
            DesktopProgram started({s.pump, s.serial, s.sockets, s.dialogs, s.files, s.settings, s.desktop});
            started.Start("");
            happened = false;
            int waits = 0;
            s.pump.whenWaiting = [&](double) {
                if (started.heart.state.QuietConnect && ++waits == number) {
                    happened = true;
                    started.heart.forms.terminal->Close();
                }
            };
            auto* button = Window<frmOptions>()->findChild<QPushButton*>("cmdTerminal");
            button->click();
            s.pump.whenWaiting = nullptr;
            s.pump.ServePending();
            EXPECT_EQ(started.heart.state.TerminalOpen, !happened);
            EXPECT_EQ(button->isEnabled(), happened);
            EXPECT_FALSE(started.heart.state.QuietConnect || started.heart.state.TerminalStarting);
            if (happened) {
                EXPECT_FALSE(s.serial.PortOpen() || started.heart.link.EthernetConnected);
                EXPECT_EQ(started.heart.link.LinkMode, "None");
                EXPECT_FALSE(Window<frmTerminal>()->isVisible());
            } else {
                EXPECT_TRUE(started.heart.link.LinkConnected);
                EXPECT_GT(number, 5);
            }
            EXPECT_TRUE(s.dialogs.shown.empty());
        }
    }
}

TEST_F(TerminalOfTheProgram, WithoutAPortTheCaptionSaysSo)
{
    t.serial.ports.clear();
    t.dialogs.Expect(BoxAnswer::Ok); // the logger was not found
    program.Start("");
    Window<frmOptions>()->findChild<QPushButton*>("cmdTerminal")->click();
    EXPECT_TRUE(p.state.TerminalOpen);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Window<frmTerminal>()->windowTitle() == " Not Connected"; }));
}

TEST_F(TerminalOfTheProgram, ASecondClickWhileItComesUpOpensNoSecondOne)
{
    program.Start("");
    auto* button = Window<frmOptions>()->findChild<QPushButton*>("cmdTerminal");
    bool clicked = false;
    t.pump.whenWaiting = [&](double) {
        if (!std::exchange(clicked, true))
            button->click();
    };
    button->click();
    t.pump.whenWaiting = nullptr;
    EXPECT_TRUE(clicked);
    EXPECT_TRUE(p.state.TerminalOpen);
    EXPECT_TRUE(p.link.LinkConnected);
    EXPECT_FALSE(button->isEnabled());
    int terminals = 0;
    for (const QWidget* window : QApplication::topLevelWidgets())
        terminals += dynamic_cast<const frmTerminal*>(window) ? 1 : 0;
    EXPECT_EQ(terminals, 1);
}

TEST_F(TerminalOfTheProgram, ClosedInAnyWaitOfASendingStartItEndsTheProgramAndNoByteLeavesAfterwards)
{
    bool happened = true;
    for (int number = 1; happened; ++number) {
        SCOPED_TRACE(number);
        TestProgram s;
        s.Installed();
        s.files.files = t.files.files;
        s.serial.Plug(3, t.serial.ports.at(3).device, "");
        DesktopProgram started({s.pump, s.serial, s.sockets, s.dialogs, s.files, s.settings, s.desktop});
        s.dialogs.whileShown = [&] { s.dialogs.Expect(BoxAnswer::Ok); };
        happened = false;
        int waits = 0;
        std::string sent;
        s.pump.whenWaiting = [&](double) {
            if (started.heart.forms.terminal && ++waits == number) {
                happened = true;
                started.heart.forms.terminal->Close();
                sent = s.serial.Sent();
            }
        };
        started.Start("::2 %CALARMS%");
        s.pump.whenWaiting = nullptr;
        s.pump.ServePending();
        EXPECT_EQ(started.heart.end.Ended(), happened);
        if (happened) {
            EXPECT_EQ(s.serial.Sent(), sent);
            EXPECT_FALSE(s.serial.PortOpen());
        }
    }
}

TEST_F(TerminalOfTheProgram, AStartWithTextBetweenPercentSignsSendsItAndStays)
{
    t.dialogs.Expect(BoxAnswer::Ok);
    program.Start("::2 %CALARMS%");
    auto* terminal = Window<frmTerminal>();
    ASSERT_TRUE(terminal && terminal->isVisible());
    EXPECT_TRUE(t.serial.Sent().ends_with("CALARMS\r\n"));
    EXPECT_FALSE(p.end.Ended());
    EXPECT_FALSE(p.state.TerminalStarting || p.state.QuietConnect);
    terminal->close();
    EXPECT_TRUE(p.end.Ended());
}

TEST_F(TerminalOfTheProgram, ACommandLineWithAnAmpersandEndsWithIt)
{
    t.settings.values[TestProgram::StoreKey] = TestProgram::Directory;
    program.Start("&");
    Window<frmOptions>()->findChild<QPushButton*>("cmdTerminal")->click();
    Window<frmTerminal>()->close();
    EXPECT_TRUE(p.end.Ended());
}

} // namespace
} // namespace harvelop::test
