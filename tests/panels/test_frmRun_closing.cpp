// What becomes of the editor's text, and whose it is.
#include "run_bench.h"

namespace harvelop::test
{

namespace
{

// Works in the editor that a button of the panel opens.
void edit(frmTallyCores& panel, const char* button, const std::function<void(QWidget& editor)>& work)
{
    QTimer::singleShot(0, [work] {
        QWidget* editor = QApplication::activeModalWidget();
        ASSERT_TRUE(editor);
        EXPECT_EQ(editor->objectName(), "frmRun");
        work(*editor);
        editor->close();
    });
    Find<QPushButton>(panel, button).click();
}

} // namespace

TEST(FrmRun, ClosingLeavesBothValuesUntouched)
{
    for (const char* kind : {"Program", "Command"}) {
        for (const bool byKey : {false, true}) {
            RunBench bench;
            bench.Open(kind, runs("old", "OLD"));
            if (std::string(kind) == "Program")
                bench.Choose(Report);
            else
                Type(bench.Field(), "NEW");
            if (byKey)
                PressKey(bench.Field(), Qt::Key_Escape);
            else
                bench.form->close();
            EXPECT_FALSE(bench.form->isVisible());
            EXPECT_EQ(bench.Record(1).LoggerRunProgram, "old");
            EXPECT_EQ(bench.Record(1).LoggerRunCommand, "OLD");
            EXPECT_TRUE(bench.files.writes.empty());
        }
    }
}

TEST(FrmRun, ASecondClickOpensNoSecondChooser)
{
    RunBench bench;
    bench.Open("Program");
    bench.dialogs.whileShown = [&] { bench.Button().click(); };
    bench.Choose(Report);
    EXPECT_EQ(bench.dialogs.choosers.size(), 1U);
    EXPECT_EQ(bench.Word(), "Ok");
    EXPECT_TRUE(bench.form->isVisible());
}

TEST(FrmRun, AProgramThatEndsWhileTheChooserStandsOpenChangesNothing)
{
    RunBench bench;
    bench.Open("Program", runs("old", ""));
    bench.dialogs.whileShown = [&] { bench.heart.end.EndProgram(); };
    bench.Choose(Report);
    EXPECT_EQ(bench.Text(), "old");
    EXPECT_EQ(bench.Word(), "Edit");
    EXPECT_EQ(bench.Record(1).LoggerRunProgram, "old");
    EXPECT_TRUE(bench.files.writes.empty());
}

TEST(FrmRun, MayGoWithItsOwnerWhileTheChooserStandsOpen)
{
    RunBench bench;
    bench.Store({SerialLogger()});
    bench.heart.state.CurrentLogger = 1;
    bench.heart.state.RunEditKind = "Program";
    auto owner = std::make_unique<QWidget>();
    const QPointer<frmRun> form = new frmRun(bench.heart.panelServices(), owner.get());
    form->show();
    bench.dialogs.whileShown = [&] { owner.reset(); };
    bench.dialogs.ExpectChooser(Report);
    Find<QPushButton>(*form, "cmdEdit").click();
    EXPECT_FALSE(form);
    EXPECT_EQ(bench.Record(1).LoggerRunProgram, "");
}

TEST(FrmRun, GoesByTheLoggerAndTheKindThatItWasOpenedFor)
{
    RunBench bench;
    bench.Store({SerialLogger(), NetworkLogger()});
    bench.heart.state.CurrentLogger = 2;
    bench.heart.state.RunEditKind = "Command";
    bench.form.emplace(bench.heart.panelServices(), nullptr);
    bench.form->show();
    EXPECT_EQ(bench.Text(), "sync");
    bench.heart.state.CurrentLogger = 1;
    bench.heart.state.RunEditKind = "Program";
    Type(bench.Field(), "7");
    bench.Button().click();
    EXPECT_EQ(bench.Record(2).LoggerRunCommand, "sync7");
    EXPECT_EQ(bench.Record(2).LoggerRunProgram, "");
    EXPECT_EQ(bench.Record(1).LoggerRunCommand, "");
}

TEST(FrmRun, ALoggerThatThereIsNotHasNothingToStore)
{
    RunBench bench;
    bench.Store({SerialLogger()});
    bench.heart.state.CurrentLogger = 51;
    bench.heart.state.RunEditKind = "Command";
    bench.form.emplace(bench.heart.panelServices(), nullptr);
    bench.form->show();
    Type(bench.Field(), "GO");
    bench.Button().click();
    EXPECT_FALSE(bench.form->isVisible());
    for (const LoggerRecord& record : bench.heart.tables.records)
        EXPECT_EQ(record.LoggerRunCommand, "");
}

TEST(FrmRun, OkSavesNothingUntilThePanelDoes)
{
    const std::string edited = std::string(",::2,") + Report + ",STATUS,0,";
    for (const char* way : {"cmdApply", "cmdOk", "cmdCancel"}) { // what is in the tables stays, also after Cancel
        PanelBench bench;
        bench.Store({SerialLogger()});
        frmTallyCores& panel = bench.View(1);
        bench.files.writes.clear();
        edit(panel, "cmdCommand", [](QWidget& editor) {
            Type(Find<QLineEdit>(editor, "txtRun"), "STATUS");
            Find<QPushButton>(editor, "cmdEdit").click();
        });
        bench.dialogs.ExpectChooser(Report);
        edit(panel, "cmdRun", [](QWidget& editor) {
            Find<QPushButton>(editor, "cmdEdit").click();
            Find<QPushButton>(editor, "cmdEdit").click();
        });
        EXPECT_NE(bench.RecordLine(1).find(edited), std::string::npos) << way; // no reload loses it
        EXPECT_TRUE(bench.files.writes.empty()) << way;
        EXPECT_TRUE(Find<QPushButton>(panel, "cmdApply").isEnabled()) << way;
        Find<QPushButton>(panel, way).click();
        EXPECT_NE(bench.files.files[PanelBench::FoundIni].find(edited), std::string::npos) << way;
    }
}

} // namespace harvelop::test
