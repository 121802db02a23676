#include "fake_panel.h"
#include "identify/panel_work.h"

#include <gtest/gtest.h>

namespace harvelop::test
{
namespace
{

using Steps = std::vector<std::string>;

// Two stored loggers with open panels; what is done to the first is written down.
struct PanelWork : testing::Test, PanelProgram {
    PanelWork()
    {
        StoreAndList(1, SerialRecord("KR200 Series 1", "3"));
        StoreAndList(2, SerialRecord("KR40", "4"));
        heart.tables.Record(1)->LoggerIconKey = "::5";
        heart.state.cbxUnload_TallyCores.Select(0);
        View();
        heart.state.cbxUnload_TallyCores.Select(1);
        View();
        heart.tables.HaveFoundLoggers = true;
        heart.actions.CloseLink = [this] { steps.emplace_back("close link"); };
        heart.actions.ConnectLogger = [this](int number) {
            steps.push_back("connect " + std::to_string(number));
            heart.link.LinkConnected = connects;
        };
    }

    FakePanel& First() { return *made[0]; }
    std::function<void()> Action()
    {
        return [this] {
            steps.push_back("work on " + std::to_string(heart.state.CurrentLogger));
            lockedWhileWorking = First().disabled;
            clearModeWhileWorking = heart.state.ClearMode;
        };
    }
    PanelServices Services() { return heart.panelServices(); }

    Steps steps;
    bool connects = true;
    std::set<std::string> lockedWhileWorking;
    bool clearModeWhileWorking = false;
};

TEST_F(PanelWork, TheLoggerInWorkIsThatOfThePanelWhicheverWasLoadedLast)
{
    EXPECT_EQ(heart.state.CurrentLogger, 2);
    EXPECT_EQ(heart.link.LinkDescription, "KR40 on Com 4");
    MakeCurrent(Services(), 1);
    EXPECT_EQ(heart.state.CurrentLogger, 1);
    EXPECT_EQ(heart.state.ChosenLogger, 1);
    EXPECT_EQ(heart.link.LinkDescription, "KR200 Series 1 on Com 3");
    EXPECT_EQ(heart.link.ConnectionKind, "RS232");
}

TEST_F(PanelWork, TheDescriptionOfTheLoggerInWorkIsLeftAsItWasLastSet)
{
    heart.link.LinkDescription = "KR40 via the Modem on Com 4";
    MakeCurrent(Services(), 2);
    EXPECT_EQ(heart.link.LinkDescription, "KR40 via the Modem on Com 4");
}

TEST_F(PanelWork, SendingLocksThePanelAndClosesTheLink)
{
    RunOnLogger(Services(), 1, Action());
    EXPECT_EQ(steps, (Steps{"work on 1", "close link"}));
    EXPECT_EQ(lockedWhileWorking.size(), 8u);
    EXPECT_TRUE(First().disabled.empty());
}

TEST_F(PanelWork, AfterACardLoadOnSeries1FlashIsEnabled)
{
    First().disabled = {"cmdFlash", "cmdFlashClear"};
    RunOnLogger(Services(), 1, Action());
    EXPECT_TRUE(First().disabled.empty());
}

TEST_F(PanelWork, LoadingAProgramEmptiesTheBarFirst)
{
    heart.progress.SetProgressRange(10);
    heart.progress.StepProgress(4);
    int bar = -1;
    heart.actions.LoadProgram = [&] { bar = heart.progress.Value(); };
    LoadOnLogger(Services(), 1);
    EXPECT_EQ(bar, 0);
    EXPECT_FALSE(heart.end.Ended());
}

TEST_F(PanelWork, AProgramStartedToLoadEndsAfterwards)
{
    heart.actions.LoadProgram = Action();
    heart.state.LaunchCommand = "::5 /home/user/pump.cmd";
    LoadOnLogger(Services(), 1);
    EXPECT_EQ(steps, (Steps{"work on 1", "close link"}));
    EXPECT_TRUE(heart.end.Ended());
}

TEST_F(PanelWork, ClearingConnectsFirst)
{
    ClearOnLogger(Services(), 1, Action(), true);
    EXPECT_EQ(steps, (Steps{"connect 1", "work on 1", "close link"}));
    EXPECT_TRUE(clearModeWhileWorking);
    EXPECT_FALSE(heart.state.ClearMode);
    EXPECT_TRUE(First().disabled.empty());
}

TEST_F(PanelWork, OnlyTheClearingOfProgramsSetsItsMode)
{
    ClearOnLogger(Services(), 1, Action(), false);
    EXPECT_FALSE(clearModeWhileWorking);
}

TEST_F(PanelWork, AFailedConnectionFreesTheControlsAndLeavesClearModeSet)
{
    connects = false;
    ClearOnLogger(Services(), 1, Action(), true);
    EXPECT_EQ(steps, (Steps{"connect 1", "close link"}));
    EXPECT_TRUE(First().disabled.empty());
    EXPECT_TRUE(heart.state.ClearMode);
}

TEST_F(PanelWork, AnOpenTerminalKeepsTheLinkOfAConnectionThatFailed)
{
    connects = false;
    heart.state.TerminalOpen = true;
    ClearOnLogger(Services(), 1, Action(), true);
    EXPECT_EQ(steps, Steps{"connect 1"});
}

TEST_F(PanelWork, ThePortThatHasTheLoggersNumberDecidesWhetherItFailed)
{
    heart.link.PortOpenFailed.Set(1, true); // com port 1, not the logger's own port 3
    ClearOnLogger(Services(), 1, Action(), false);
    EXPECT_EQ(steps, (Steps{"connect 1", "close link"}));
    EXPECT_TRUE(First().disabled.empty());
}

TEST_F(PanelWork, ALoggerNumberThatIsNoPortEndsTheClearingWithAnError)
{
    for (int number = 3; number <= 17; ++number)
        Store(number, SerialRecord("KR200 Series 1", "3"));
    dialogs.Expect(BoxAnswer::Ok);
    ClearOnLogger(Services(), 17, Action(), false);
    EXPECT_EQ(steps, (Steps{"connect 17", "close link"}));
    ASSERT_EQ(dialogs.shown.size(), 1u);
    EXPECT_EQ(dialogs.shown[0].text, "Subscript out of range");
    EXPECT_EQ(dialogs.shown[0].icon, BoxIcon::Critical);
    EXPECT_FALSE(heart.end.Ended());

    ClearOnLogger(Services(), 16, Action(), false);
    EXPECT_EQ(steps.back(), "close link");
    EXPECT_EQ(steps[steps.size() - 2], "work on 16");
}

TEST_F(PanelWork, TheLinkSettingsOpenForThePanelsLogger)
{
    heart.actions.ShowAddDialog = Action();
    SetCom(Services(), 1);
    EXPECT_EQ(steps, Steps{"work on 1"});
    EXPECT_TRUE(heart.state.EditingExisting);
}

TEST_F(PanelWork, UnloadingStartsTheUnloadProgramWithTheLoggersKey)
{
    const size_t saves = files.writes.size();
    UnloadLogger(Services(), 1);
    ASSERT_EQ(desktop.started.size(), 1u);
    EXPECT_EQ(desktop.started[0].path, heart.state.AppPath + "harvel.exe");
    EXPECT_EQ(desktop.started[0].arguments, Steps{"::5"});
    EXPECT_GT(files.writes.size(), saves);
}

TEST_F(PanelWork, WithoutStoredLoggersThereIsNothingToUnload)
{
    heart.tables.HaveFoundLoggers = false;
    dialogs.Expect(BoxAnswer::Ok);
    UnloadLogger(Services(), 1);
    ASSERT_EQ(dialogs.shown.size(), 1u);
    EXPECT_EQ(dialogs.shown[0].text,
              "There are no tallyCores configured for Harvel. Click Find to automatically search "
              "for tallyCores connected this computer, or click Add to manually add a "
              "tallyCore.     ");
    EXPECT_EQ(dialogs.shown[0].title, " tallyCore Harvel");
    EXPECT_EQ(dialogs.shown[0].icon, BoxIcon::Information);
    EXPECT_TRUE(desktop.started.empty());
}

TEST_F(PanelWork, AMissingUnloadProgramIsTold)
{
    desktop.starts = false;
    dialogs.Expect(BoxAnswer::Ok);
    UnloadLogger(Services(), 1);
    ASSERT_EQ(dialogs.shown.size(), 1u);
    EXPECT_EQ(dialogs.shown[0].text, "The file " + heart.state.AppPath + "harvel.exe doesn't exist.     ");
    EXPECT_EQ(dialogs.shown[0].icon, BoxIcon::Critical);
}

TEST_F(PanelWork, AChosenFolderIsStoredWithATrailingSeparator)
{
    heart.tables.Record(1)->LoggerSaveFolder = "/home/user/tallyCore/";
    dialogs.ExpectChooser("/data/mill");
    EXPECT_TRUE(ChooseSaveFolder(Services(), 1));
    EXPECT_EQ(heart.tables.Record(1)->LoggerSaveFolder, "/data/mill/");
    ASSERT_EQ(dialogs.choosers.size(), 1u);
    EXPECT_EQ(dialogs.choosers[0].title, "Choose a Folder for the KR200 Series 1 on Com 3");
    EXPECT_EQ(dialogs.choosers[0].startIn, "/home/user/tallyCore/");
    EXPECT_EQ(heart.state.ListKind, "Disk");
    EXPECT_EQ(heart.state.ChosenLogger, 1);
}

TEST_F(PanelWork, WhatCannotBeASaveFolderLeavesItAsItWas)
{
    heart.tables.Record(1)->LoggerSaveFolder = "/home/user/tallyCore/";
    for (const char* chosen : {"", "/", "/data,old", "/data\nold", "/data\r"}) {
        dialogs.ExpectChooser(chosen);
        EXPECT_FALSE(ChooseSaveFolder(Services(), 1)) << chosen;
    }
    EXPECT_EQ(heart.tables.Record(1)->LoggerSaveFolder, "/home/user/tallyCore/");
}

TEST_F(PanelWork, ALanguageFileSpeaksInTheBoxesAndTheChooser)
{
    UseLanguage({102, 503, 524, 531, 532});
    dialogs.ExpectChooser("");
    ChooseSaveFolder(Services(), 1);
    EXPECT_EQ(dialogs.choosers.at(0).title, "[102] KR200 Series 1 on Com 3");
    desktop.starts = false;
    dialogs.Expect(BoxAnswer::Ok);
    UnloadLogger(Services(), 1);
    EXPECT_EQ(dialogs.shown.at(0).text, "[531] " + heart.state.AppPath + "harvel.exe [532].     ");
    heart.tables.HaveFoundLoggers = false;
    dialogs.Expect(BoxAnswer::Ok);
    UnloadLogger(Services(), 1);
    EXPECT_EQ(dialogs.shown.at(1).text, "[524]");
    EXPECT_EQ(dialogs.shown.at(1).title, " [503]");
}

TEST(SaveFolder, ADrivesRootIsNoneAndAllOthersEndInASeparator)
{
    EXPECT_EQ(SaveFolderOf("/"), std::nullopt);
    EXPECT_EQ(SaveFolderOf("/a/"), std::nullopt); // that a short name with a separator counts as a root is meant
    EXPECT_EQ(SaveFolderOf("/a"), "/a/");
    EXPECT_EQ(SaveFolderOf("/data"), "/data/");
    EXPECT_EQ(SaveFolderOf("/data/"), "/data/");
    EXPECT_EQ(SaveFolderOf("/da\xC3\xBC b"), "/da\xC3\xBC b/");
}

} // namespace
} // namespace harvelop::test
