#include "panel_bench.h"
#include "settings/sample_loggers.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>

namespace harvelop::test
{

namespace
{

bool isChecked(const QWidget& form, const std::string& box)
{
    return Find<QCheckBox>(form, box).isChecked();
}

} // namespace

TEST(FrmTallyCores, ApplyStoresListsAndStaysOpen)
{
    PanelBench bench;
    bench.Store({SerialLogger()});
    frmTallyCores& form = bench.View(1);
    auto& apply = Find<QPushButton>(form, "cmdApply");
    EXPECT_FALSE(apply.isEnabled());
    Type(Find<QLineEdit>(form, "txtDescription"), "Mill");
    Find<QCheckBox>(form, "chkKR200B").click();
    EXPECT_TRUE(apply.isEnabled());
    apply.click();
    EXPECT_FALSE(apply.isEnabled());
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(bench.Record(1).LoggerDescription, "Mill");
    EXPECT_EQ(bench.Record(1).ScheduleOn[1], "1");
    EXPECT_NE(bench.files.files[PanelBench::FoundIni].find(",Mill,"), std::string::npos);
    EXPECT_EQ(bench.heart.state.cbxUnload_TallyCores.Lines(), std::vector<std::string>{"Mill"});
    EXPECT_EQ(bench.heart.state.cbxUnload_TallyCores.Selected(), 0);
}

TEST(FrmTallyCores, OkStoresAndCloses)
{
    PanelBench bench;
    bench.Store({SerialLogger(), NetworkLogger()});
    frmTallyCores& form = bench.View(2);
    Type(Find<QLineEdit>(form, "txtDescription"), "Mill");
    Find<QPushButton>(form, "cmdOk").click();
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(bench.Panel(2), nullptr);
    EXPECT_EQ(bench.Record(2).LoggerDescription, "Mill");
    EXPECT_EQ(bench.heart.state.cbxUnload_TallyCores.Lines(),
              (std::vector<std::string>{"KR200 Series 2 on Com 1", "Mill"}));
    EXPECT_EQ(bench.heart.state.cbxUnload_TallyCores.Selected(), 1);
}

TEST(FrmTallyCores, CancelDropsWhatTheControlsHeldButNotTheDatabaseChoice)
{
    PanelBench bench;
    LoggerRecord logger = SerialLogger();
    logger.LoggerDescription = "Mill";
    bench.Store({logger});
    frmTallyCores& form = bench.View(1);
    Type(Find<QLineEdit>(form, "txtDescription"), "X");
    Find<QCheckBox>(form, "chkKR200B").click();
    Find<QCheckBox>(form, "chkMdb").click();
    Find<QPushButton>(form, "cmdCancel").click();
    EXPECT_EQ(bench.Record(1).LoggerDescription, "Mill");
    EXPECT_EQ(bench.Record(1).ScheduleOn[1], "0");
    EXPECT_EQ(bench.Record(1).LoggerMdbOn, "1");
    EXPECT_TRUE(isChecked(bench.View(1), "chkMdb"));
    EXPECT_FALSE(isChecked(*bench.Panel(1), "chkKR200B"));
}

TEST(FrmTallyCores, TheDatabaseChoiceSurvivesARestartWhateverClosesThePanel)
{
    for (const char* button : {"cmdOk", "cmdCancel"}) {
        PanelBench bench;
        LoggerRecord logger = SerialLogger();
        logger.LoggerDescription = "Mill";
        bench.Store({logger, NetworkLogger()});
        frmTallyCores& form = bench.View(1);
        frmTallyCores& other = bench.View(2);
        Find<QCheckBox>(form, "chkMdb").click();
        Find<QPushButton>(other, "cmdApply").setEnabled(true);
        Find<QPushButton>(other, "cmdApply").click(); // reloads all records
        EXPECT_EQ(bench.Record(1).LoggerMdbOn, "1");
        Find<QPushButton>(form, button).click();
        bench.heart.records.LoadFoundLoggers();
        EXPECT_EQ(bench.Record(1).LoggerMdbOn, "1") << button;
    }
}

TEST(FrmTallyCores, ClosingSavesTheOptionsAndFreesTheOptionsPanelWithTheLastOne)
{
    PanelBench bench;
    bench.Store({SerialLogger(), NetworkLogger()});
    bench.View(1);
    bench.View(2);
    bench.options.changes.clear();
    bench.files.files.erase(PanelBench::OptionsIni);
    Find<QPushButton>(*bench.Panel(1), "cmdCancel").click();
    EXPECT_EQ(bench.files.files.count(PanelBench::OptionsIni), 1U);
    EXPECT_TRUE(bench.options.changes.empty());
    EXPECT_FALSE(bench.options.formEnabled);

    bench.Panel(2)->close();
    EXPECT_TRUE(bench.options.formEnabled);
    EXPECT_EQ(bench.options.okFocused, 1);
    EXPECT_EQ(bench.options.changes.back(), std::pair(std::string("cmdOk"), true));
    EXPECT_EQ(bench.heart.panels.CountVisiblePanels(), 0);
}

TEST(FrmTallyCores, AHiddenPanelsClosingLeavesTheOptionsPanelAsItIs)
{
    PanelBench bench;
    bench.Store({SerialLogger()});
    bench.heart.state.CurrentLogger = 1;
    bench.heart.panels.Create(1)->Load();
    bench.heart.panels.Unload(1);
    EXPECT_FALSE(bench.options.formEnabled);
    EXPECT_EQ(bench.options.okFocused, 0);
    EXPECT_EQ(bench.Panel(1), nullptr);
}

TEST(FrmTallyCores, ClosingEndsAProgramThatWasStartedForOneLogger)
{
    PanelBench bench;
    bench.Store({SerialLogger()});
    frmTallyCores& form = bench.View(1);
    bench.heart.state.LaunchCommand = "::2";
    Find<QPushButton>(form, "cmdOk").click();
    EXPECT_TRUE(bench.heart.end.Ended());
    EXPECT_EQ(bench.heart.end.ExitCode(), 0);
    EXPECT_FALSE(bench.options.formEnabled);
}

TEST(FrmTallyCores, AClosedPanelIsDeletedByTheEventLoopOnly)
{
    PanelBench bench;
    bench.Store({SerialLogger()});
    const QPointer<frmTallyCores> form = &bench.View(1);
    form->Unload();
    form->Unload();
    ASSERT_TRUE(form);
    PanelBench::RunDeletions();
    EXPECT_FALSE(form);
}

TEST(FrmTallyCores, ClosingInTheWaitOfTheViewIsSafe)
{
    PanelBench bench;
    bench.Store({SerialLogger()});
    bench.heart.state.cbxUnload_TallyCores.Select(0);
    bool closed = false;
    bench.pump.After(100, [&] {
        closed = bench.Panel(1)->close();
        PanelBench::RunDeletions();
    });
    bench.heart.viewing.cmdUnload_View_Click();
    EXPECT_TRUE(closed);
    EXPECT_EQ(bench.Panel(1), nullptr);
    EXPECT_TRUE(bench.options.formEnabled);
}

TEST(FrmTallyCores, ASecondViewLetsTheFirstPanelLiveUntilItIsClosed)
{
    PanelBench bench;
    bench.Store({SerialLogger()});
    const QPointer<frmTallyCores> first = &bench.View(1);
    frmTallyCores& second = bench.View(1);
    PanelBench::RunDeletions();
    ASSERT_TRUE(first);
    EXPECT_NE(first, &second);
    EXPECT_TRUE(first->isVisible());
    first->close();
    PanelBench::RunDeletions();
    EXPECT_FALSE(first);
    EXPECT_EQ(bench.Panel(1), &second);
    EXPECT_TRUE(second.isVisible());
}

TEST(FrmTallyCores, AHiddenPanelGoesWhenItIsViewed)
{
    PanelBench bench;
    bench.Store({SerialLogger()});
    bench.heart.state.CurrentLogger = 1;
    bench.heart.panels.Create(1)->Load();
    const QPointer<frmTallyCores> hidden = bench.Panel(1);
    bench.View(1);
    PanelBench::RunDeletions();
    EXPECT_FALSE(hidden);
    EXPECT_TRUE(bench.Panel(1)->isVisible());
}

} // namespace harvelop::test
