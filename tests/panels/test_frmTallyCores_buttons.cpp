#include "panel_bench.h"
#include "settings/sample_loggers.h"

#include <QLineEdit>
#include <QPushButton>

namespace harvelop::test
{

namespace
{

using Steps = std::vector<std::string>;

void click(const QWidget& form, const std::string& button)
{
    Find<QPushButton>(form, button).click();
}

// A panel whose logger can be worked on.
struct WorkBench : PanelBench {
    WorkBench()
    {
        LoggerActions& actions = heart.actions;
        for (const auto& [action, name] : {std::pair{&actions.ShowAddDialog, "add dialog"},
                                           {&actions.LoadProgram, "load"},
                                           {&actions.LoadCardProgram, "load card"},
                                           {&actions.LoadFlashProgram, "load flash"},
                                           {&actions.ClearPrograms, "clear"},
                                           {&actions.ClearCardPrograms, "clear card"},
                                           {&actions.ClearFlash, "clear flash"},
                                           {&actions.CloseLink, "close link"}})
            *action = [this, step = std::string(name)] { done(step); };
        actions.ConnectLogger = [this](int number) {
            heart.link.LinkConnected = true;
            done("connect " + std::to_string(number));
        };
    }
    void done(const std::string& step)
    {
        steps.push_back(step);
        if (meanwhile)
            meanwhile(step);
    }

    Steps steps;
    std::function<void(const std::string& step)> meanwhile; // runs in each step, as what comes in a wait
};

} // namespace

TEST(FrmTallyCores, EachButtonDoesItsWorkOnTheLogger)
{
    WorkBench bench;
    bench.Store({SerialLogger()});
    bench.Record(1).LoggerModel = "KR305 Series 3";
    frmTallyCores& form = bench.View(1);
    const std::vector<std::pair<std::string, Steps>> buttons = {
        {"cmdSetCom", {"add dialog"}},
        {"cmdProgram", {"load", "close link"}},
        {"cmdCard", {"load card", "close link"}},
        {"cmdFlash", {"load flash", "close link"}},
        {"cmdProgramClear", {"connect 1", "clear", "close link"}},
        {"cmdCardClear", {"connect 1", "clear card", "close link"}},
        {"cmdFlashClear", {"connect 1", "clear flash", "close link"}},
        {"cmdUpgradeFirmware", {}},
    };
    for (const auto& [button, steps] : buttons) {
        bench.steps.clear();
        click(form, button);
        EXPECT_EQ(bench.steps, steps) << button;
        EXPECT_TRUE(Find<QPushButton>(form, button).isEnabled()) << button;
    }
}

TEST(FrmTallyCores, NothingStartsTwiceWhileALoggerIsWorkedOn)
{
    WorkBench bench;
    bench.Store({SerialLogger(), ModemLogger()});
    frmTallyCores& other = bench.View(2);
    frmTallyCores& form = bench.View(1);
    bench.meanwhile = [&](const std::string& step) {
        if (step != "load")
            return;
        for (const char* button : {"cmdProgram", "cmdCard", "cmdFlash", "cmdProgramClear", "cmdOk", "cmdCancel"}) {
            EXPECT_FALSE(Find<QPushButton>(form, button).isEnabled()) << button;
            click(form, button);
        }
        click(other, "cmdProgram");
        click(other, "cmdRun");
    };
    click(form, "cmdProgram");
    EXPECT_EQ(bench.steps, (Steps{"load", "close link"}));
    EXPECT_TRUE(other.isEnabled());
    EXPECT_TRUE(Find<QPushButton>(form, "cmdOk").isEnabled());
}

TEST(FrmTallyCores, APanelClosedWhileItsLoggerIsWorkedOnMayBeDeletedInThatWait)
{
    WorkBench bench;
    bench.Store({SerialLogger()});
    const QPointer<frmTallyCores> form = &bench.View(1);
    bench.meanwhile = [&](const std::string& step) {
        if (step != "load")
            return;
        form->close();
        PanelBench::RunDeletions();
        EXPECT_FALSE(form);
    };
    click(*form, "cmdProgram");
    EXPECT_EQ(bench.steps, (Steps{"load", "close link"}));
    EXPECT_EQ(bench.Panel(1), nullptr);
}

TEST(FrmTallyCores, TheOptionsPanelStaysLockedUntilTheWorkEndsThoughTheLastPanelIsClosed)
{
    for (const char* button : {"cmdProgram", "cmdProgramClear"}) {
        WorkBench bench;
        bench.Store({SerialLogger()});
        frmTallyCores& form = bench.View(1);
        bench.meanwhile = [&](const std::string&) {
            form.close();
            EXPECT_FALSE(bench.options.formEnabled) << button; // nothing else can start
        };
        click(form, button);
        EXPECT_TRUE(bench.options.formEnabled) << button;
        EXPECT_EQ(bench.options.changes.back(), std::pair(std::string("cmdOk"), true));
        EXPECT_EQ(bench.options.okFocused, 1);
    }
}

TEST(FrmTallyCores, TheOptionsPanelStaysLockedAfterWorkWhileAPanelIsOpen)
{
    WorkBench bench;
    bench.Store({SerialLogger()});
    frmTallyCores& form = bench.View(1);
    click(form, "cmdProgram");
    EXPECT_FALSE(bench.options.formEnabled);
    form.close();
    EXPECT_TRUE(bench.options.formEnabled);
}

TEST(FrmTallyCores, AfterACardLoadOnSeries1FlashIsEnabled)
{
    WorkBench bench;
    LoggerRecord logger = SerialLogger();
    logger.LoggerModel = "KR200 Series 1";
    bench.Store({logger});
    frmTallyCores& form = bench.View(1);
    EXPECT_FALSE(Find<QPushButton>(form, "cmdFlash").isEnabled());
    EXPECT_FALSE(Find<QPushButton>(form, "cmdFlashClear").isEnabled());
    click(form, "cmdCard");
    EXPECT_TRUE(Find<QPushButton>(form, "cmdFlash").isEnabled());
    EXPECT_TRUE(Find<QPushButton>(form, "cmdFlashClear").isEnabled());
}

TEST(FrmTallyCores, UnloadStoresThePanelAndStartsTheUnloadProgram)
{
    PanelBench bench;
    bench.Store({SerialLogger()});
    frmTallyCores& form = bench.View(1);
    Type(Find<QLineEdit>(form, "txtDescription"), "Mill");
    click(form, "cmdTallyCoresUnload");
    EXPECT_NE(bench.files.files[PanelBench::FoundIni].find(",Mill,"), std::string::npos);
    EXPECT_FALSE(Find<QPushButton>(form, "cmdApply").isEnabled());
    ASSERT_EQ(bench.desktop.started.size(), 1u);
    EXPECT_EQ(bench.desktop.started[0].path, "/home/user/loggers/harvel.exe");
    EXPECT_EQ(bench.desktop.started[0].arguments, Steps{"::2"});
}

TEST(FrmTallyCores, AnUnloadProgramThatDoesNotStartIsTold)
{
    PanelBench bench;
    bench.Store({SerialLogger()});
    frmTallyCores& form = bench.View(1);
    bench.desktop.starts = false;
    bench.dialogs.Expect(BoxAnswer::Ok);
    click(form, "cmdTallyCoresUnload");
    ASSERT_EQ(bench.dialogs.shown.size(), 1u);
    EXPECT_EQ(bench.dialogs.shown[0].text, "The file /home/user/loggers/harvel.exe doesn't exist.     ");
    EXPECT_TRUE(form.isVisible());
}

TEST(FrmTallyCores, TheFiftiethLoggerHasItsPanelAndItsClearButtonsEndWithAnError)
{
    WorkBench bench;
    bench.Store(std::vector<LoggerRecord>(MaxLoggers, SerialLogger()));
    bench.heart.state.cbxUnload_TallyCores.Select(MaxLoggers - 1);
    frmTallyCores& form = bench.View(MaxLoggers);
    EXPECT_EQ(form.Tag(), MaxLoggers);
    for (const char* button : {"cmdProgramClear", "cmdCardClear", "cmdFlashClear"}) {
        bench.steps.clear();
        Find<QPushButton>(form, button).setEnabled(true); // a series without flash has no use for it
        bench.dialogs.Expect(BoxAnswer::Ok);
        click(form, button);
        EXPECT_EQ(bench.dialogs.shown.back().text, "Subscript out of range") << button;
        EXPECT_EQ(bench.steps, (Steps{"connect 50", "close link"})) << button;
        EXPECT_TRUE(Find<QPushButton>(form, "cmdOk").isEnabled());
    }
    Type(Find<QLineEdit>(form, "txtDescription"), "Last");
    click(form, "cmdOk");
    EXPECT_EQ(bench.Record(MaxLoggers).LoggerDescription, "Last");
    EXPECT_EQ(bench.heart.state.cbxUnload_TallyCores.Lines().back(), "Last");
    EXPECT_EQ(bench.heart.tables.Count(), MaxLoggers);
}

} // namespace harvelop::test
