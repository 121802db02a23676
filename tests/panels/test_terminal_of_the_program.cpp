#include "app/desktop_program.h"
#include "panels/frmSupport.h"
#include "settings/sample_loggers.h"
#include "simulator/simulated_logger.h"
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
