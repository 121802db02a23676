#include "core/progress.h"
#include "support/fake_forms.h"
#include "support/virtual_pump.h"

#include <gtest/gtest.h>

namespace harvelop::test
{
namespace
{

class ProgressTest : public testing::Test
{
protected:
    ProgressTest()
    {
        forms.loadMessages = [this] {
            ++loads;
            return &window;
        };
    }

    VirtualPump pump;
    ProgramEnd end;
    Waiting waiting{pump, end};
    ProgramState state;
    Forms forms;
    FakeMessages window;
    FakeTerminal terminal;
    int loads = 0;
    Progress progress{forms, state, waiting};
};

TEST_F(ProgressTest, FirstShowLoadsTheWindow)
{
    EXPECT_FALSE(state.MessagesLoaded);
    progress.ShowMessageForm();
    EXPECT_TRUE(state.MessagesLoaded);
    EXPECT_TRUE(window.Visible());
    EXPECT_EQ(window.value, 0);
    progress.ShowMessageForm();
    EXPECT_EQ(loads, 1);
}

TEST_F(ProgressTest, HidingKeepsTheWindowLoaded)
{
    progress.ShowMessageForm();
    progress.HideMessageForm();
    EXPECT_FALSE(window.Visible());
    EXPECT_TRUE(state.MessagesLoaded);
}

TEST_F(ProgressTest, HidingNeverLoadsTheWindow)
{
    progress.HideMessageForm();
    EXPECT_EQ(loads, 0);
    EXPECT_FALSE(state.MessagesLoaded);
}

TEST_F(ProgressTest, TopmostActsOnAnOpenAddDialogOnly)
{
    FakeAddDialog add;
    forms.add = &add;
    progress.SetTopmost();
    progress.ClearTopmost();
    EXPECT_TRUE(add.steps.empty());
    state.AddDialogOpen = true;
    progress.ClearTopmost();
    progress.SetTopmost();
    EXPECT_EQ(add.steps, (std::vector<std::string>{"clear", "set"}));
    forms.add = nullptr;
    progress.SetTopmost();
    EXPECT_EQ(add.steps.size(), 2u);
}

TEST_F(ProgressTest, NothingShowsOrHidesWhileConnectingForTheTerminal)
{
    state.QuietConnect = true;
    progress.ShowMessageForm();
    EXPECT_EQ(loads, 0);
    state.QuietConnect = false;
    progress.ShowMessageForm();
    state.QuietConnect = true;
    progress.HideMessageForm();
    EXPECT_TRUE(window.Visible());
}

TEST_F(ProgressTest, NothingShowsAfterTheEnd)
{
    end.EndProgram();
    progress.ShowMessageForm();
    EXPECT_EQ(loads, 0);
}

TEST_F(ProgressTest, EverythingFallsThroughWithoutAWindow)
{
    forms.loadMessages = nullptr;
    progress.ShowMessageForm();
    progress.ShowProgressText("Working");
    progress.SetProgressRange(7);
    progress.StepProgress(1);
    progress.ResetProgress();
    progress.ClearBar();
    progress.HideMessageForm();
    EXPECT_EQ(progress.Value(), 0);
    EXPECT_EQ(progress.Max(), 100);
    EXPECT_TRUE(window.shows.empty());
    EXPECT_TRUE(window.captions.empty());
}

TEST_F(ProgressTest, TheBarRestsOnceTheWindowIsUnloaded)
{
    progress.ShowMessageForm();
    progress.SetProgressRange(10);
    progress.StepProgress(4);
    progress.Unloaded();
    EXPECT_FALSE(state.MessagesLoaded);
    progress.SetProgressRange(20);
    progress.StepProgress(1);
    progress.ResetProgress();
    progress.ShowProgressText("Late");
    EXPECT_EQ(progress.Value(), 4);
    EXPECT_EQ(progress.Max(), 10);
    EXPECT_EQ(window.Caption(), "");
}

TEST_F(ProgressTest, TextShowsOnTheWindowBehindAnArrow)
{
    progress.ShowMessageForm();
    progress.ShowProgressText("Looking ...");
    EXPECT_EQ(window.Caption(), "<- Looking ...");
}

TEST_F(ProgressTest, TextShowsOnTheTerminalWhileConnectingForIt)
{
    progress.ShowMessageForm();
    state.QuietConnect = true;
    state.TerminalOpen = true;
    forms.terminal = &terminal;
    progress.ShowProgressText("Looking ...");
    EXPECT_EQ(terminal.caption, " Looking ...");
    EXPECT_EQ(window.Caption(), "");
}

TEST_F(ProgressTest, TextIsLostWhileConnectingForATerminalThatIsNotUp)
{
    progress.ShowMessageForm();
    forms.terminal = &terminal;
    state.QuietConnect = true;
    progress.ShowProgressText("Looking ...");
    EXPECT_EQ(terminal.caption, "");
    EXPECT_EQ(window.Caption(), "");
}

TEST_F(ProgressTest, TextDisappearsAfterTheOptionsPanelWasClosed)
{
    progress.ShowMessageForm();
    forms.terminal = &terminal;
    state.TerminalOpen = true;
    state.StopLinkWork = true;
    progress.ShowProgressText("Looking ...");
    state.QuietConnect = true;
    progress.ShowProgressText("Looking ...");
    EXPECT_EQ(window.Caption(), "");
    EXPECT_EQ(terminal.caption, "");
}

TEST_F(ProgressTest, ARangeEmptiesTheBar)
{
    progress.ShowMessageForm();
    progress.StepProgress(50);
    progress.SetProgressRange(10);
    EXPECT_EQ(window.value, 0);
    EXPECT_EQ(window.max, 10);
}

TEST_F(ProgressTest, AStepThatWouldReachTheRangeIsDropped)
{
    progress.ShowMessageForm();
    progress.SetProgressRange(10);
    progress.StepProgress(9);
    EXPECT_EQ(window.value, 9);
    progress.StepProgress(1);
    EXPECT_EQ(window.value, 9);
    progress.StepProgress(5);
    EXPECT_EQ(window.value, 9);
    progress.ResetProgress();
    EXPECT_EQ(window.value, 10);
}

TEST_F(ProgressTest, ClearingTheBarKeepsItsRange)
{
    progress.ShowMessageForm();
    progress.SetProgressRange(10);
    progress.StepProgress(3);
    progress.ClearBar();
    EXPECT_EQ(window.value, 0);
    EXPECT_EQ(window.max, 10);
}

TEST_F(ProgressTest, TheBusyAnimationFillsTheBarInASecondAndAHalf)
{
    progress.ShowMessageForm();
    window.values.clear();
    progress.FillProgress();
    EXPECT_EQ(window.values, (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
    EXPECT_NEAR(pump.NowMs(), 1500, 0.01);
}

} // namespace
} // namespace harvelop::test
