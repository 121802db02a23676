// A start that loads a program into one logger, with the program's own windows.
#include "app/desktop_program.h"
#include "loading/far_end.h"
#include "settings/sample_loggers.h"
#include "support/test_program.h"

#include <QApplication>

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace harvelop::test
{
namespace
{

using testing::Contains;
using testing::IsEmpty;

struct LoadAtStart : testing::Test {
    LoadAtStart()
    {
        t.Installed();
        t.files.files[TestProgram::OptionsIni] =
            "AvailablePorts=3\r\nFindPorts=0\r\nShowMessages=1\r\nShowLoadMessages=1\r\n";
        LoggerRecord record = SerialLogger();
        record.LoggerPort = "3";
        record.LoggerIconKey = "::5";
        t.files.files[TestProgram::FoundIni] = "1tallyCoreSettings=" + RecordText(record) + "\r\n";
        t.files.files["/home/user/my pump.cmd"] = "1CV=1\r\n2CV=2\r\n";
        far->Identify(record.LoggerModel);
        far->Answer("9SV(FF0) /U/N", "\r\n0\r\n");
        far->whenLine = [this](const std::string&) { look(); };
        t.serial.Plug(3, far, "");
    }
    void look()
    {
        for (const QWidget* window : QApplication::topLevelWidgets())
            if (window->isVisible())
                seen.insert(window->metaObject()->className());
    }
    std::vector<std::string> Lines() const
    {
        std::vector<std::string> lines;
        for (const auto& line : far->lines)
            lines.push_back(line.text);
        return lines;
    }

    TestProgram t;
    std::shared_ptr<FarEnd> far = std::make_shared<FarEnd>();
    std::set<std::string> seen; // forms that were shown while the logger got lines
};

TEST_F(LoadAtStart, SendsTheFileWithNoWindowButTheProgressAndEnds)
{
    t.dialogs.Expect(BoxAnswer::Yes);
    t.dialogs.Expect(BoxAnswer::Ok);
    DesktopProgram program({t.pump, t.serial, t.sockets, t.dialogs, t.files, t.settings, t.desktop});
    program.Start("\"::5\" \"/home/user/my pump.cmd\"");
    const auto lines = Lines();
    ASSERT_GE(lines.size(), 2u);
    EXPECT_EQ(lines[lines.size() - 2], "1CV=1");
    EXPECT_EQ(lines.back(), "2CV=2");
    EXPECT_EQ(seen, std::set<std::string>{"harvelop::frmMessages"});
    EXPECT_EQ(program.heart.state.RunMode, "IconProgram");
    EXPECT_EQ(program.heart.state.CurrentLogger, 1);
    EXPECT_TRUE(program.heart.end.Ended());
    EXPECT_EQ(program.heart.end.ExitCode(), 0);
    EXPECT_THAT(t.dialogs.choosers, IsEmpty());
    EXPECT_FALSE(t.serial.PortOpen());
}

TEST_F(LoadAtStart, AKeyThatNoLoggerHasEndsAtOnce)
{
    DesktopProgram program({t.pump, t.serial, t.sockets, t.dialogs, t.files, t.settings, t.desktop});
    program.Start("::6 \"/home/user/my pump.cmd\"");
    EXPECT_TRUE(program.heart.end.Ended());
    EXPECT_THAT(Lines(), IsEmpty());
    EXPECT_THAT(t.dialogs.shown, IsEmpty());
}

TEST_F(LoadAtStart, APathWithAPercentSignIsSentAsACommandInstead)
{
    t.dialogs.Expect(BoxAnswer::Ok);
    DesktopProgram program({t.pump, t.serial, t.sockets, t.dialogs, t.files, t.settings, t.desktop});
    program.Start("::5 /home/user/50%pump.cmd");
    EXPECT_THAT(Lines(), Contains("pump.cmd"));
    EXPECT_EQ(program.heart.loading.ProgramFileName, "");
}

} // namespace
} // namespace harvelop::test
