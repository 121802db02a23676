#include "app/exit_paths.h"
#include "support/test_program.h"

#include <gtest/gtest.h>

namespace harvelop::test
{

TEST(ExitPaths, ALoggerStillConnectedGetsItsFinalLine)
{
    TestProgram t;
    t.Installed();
    t.serial.Plug(3, nullptr, "");
    t.heart.rs232.OpenComPort(3);
    const double start = t.pump.NowMs();
    UnloadTaskbar(t.heart);
    EXPECT_EQ(t.serial.Sent(), "Q /H/r\r\n\r\n");
    EXPECT_EQ(t.pump.NowMs() - start, 1000);
    EXPECT_EQ(t.serial.threshold, 1);
    EXPECT_FALSE(t.heart.end.Ended());
}

TEST(ExitPaths, WithoutALinkNothingIsSent)
{
    TestProgram t;
    UnloadTaskbar(t.heart);
    EXPECT_EQ(t.serial.Sent(), "");
}

TEST(ExitPaths, TheMenusExitSavesSendsAndEnds)
{
    TestProgram t;
    t.heart.state.AppPath = "/home/user/loggers/";
    t.serial.Plug(3, nullptr, "");
    t.heart.rs232.OpenComPort(3);
    mpopExit_Click(t.heart);
    EXPECT_TRUE(t.heart.end.Ended());
    EXPECT_EQ(t.files.files.count(TestProgram::OptionsIni), 1u);
    EXPECT_EQ(t.serial.Sent(), "Q /H/r\r\n\r\n");
}

TEST(ExitPaths, AfterTheEndNoByteLeavesNoBoxShowsNoFileChangesAndNoWaitLasts)
{
    TestProgram t;
    t.heart.state.AppPath = "/home/user/loggers/";
    t.serial.Plug(3, nullptr, "");
    t.heart.rs232.OpenComPort(3);
    t.heart.end.EndProgram(4);
    t.heart.end.EndProgram(5);
    EXPECT_EQ(t.heart.end.ExitCode(), 4);
    const double now = t.pump.NowMs();
    t.heart.exchange.SendAndWait("TEST0", {"T,", 1, "\r", 1});
    t.heart.waiting.WaitMs(60000);
    EXPECT_EQ(t.heart.link.ResponseStatus, "FAIL");
    EXPECT_EQ(t.pump.NowMs(), now);
    EXPECT_EQ(t.serial.Sent(), "");
    EXPECT_EQ(t.heart.dialogs.Show({"?", "", BoxIcon::Question, BoxButtons::YesNo}), BoxAnswer::No);
    EXPECT_EQ(t.heart.dialogs.AskPassword("?", ""), "");
    t.heart.store.SaveOptions();
    EXPECT_TRUE(t.files.writes.empty());
}

TEST(ExitPaths, WhatTheLoggerSaysMeanwhileIsNotCollected)
{
    TestProgram t;
    t.serial.Plug(3, nullptr, "");
    t.heart.rs232.OpenComPort(3);
    t.serial.Arrive("before", 200);
    t.serial.Arrive("after", 700);
    t.pump.After(300, [&] { EXPECT_EQ(t.serial.threshold, 0); });
    UnloadTaskbar(t.heart);
    EXPECT_EQ(t.heart.exchange.txtCharacterWindow.Text(), "");
    EXPECT_EQ(t.serial.InBufferCount(), 0);
}

TEST(ExitPaths, TheMenusExitSavesBeforeItTalksToTheLogger)
{
    TestProgram t;
    t.heart.state.AppPath = "/home/user/loggers/";
    t.pump.After(10, [&] { EXPECT_EQ(t.files.files.count(TestProgram::OptionsIni), 1u); });
    mpopExit_Click(t.heart);
    EXPECT_NEAR(t.pump.NowMs(), 1000, 0.001);
}

} // namespace harvelop::test
