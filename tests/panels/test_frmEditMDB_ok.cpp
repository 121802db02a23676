// What Ok stores of the table names, and what closing doesn't.
#include "names_bench.h"

namespace harvelop::test
{

TEST(FrmEditMDB, OkSavesTheRecordAndTheOptionsAndCloses)
{
    NamesBench bench;
    bench.Open(SerialLogger());
    for (int row = 0; row < 5; ++row)
        Type(bench.Row(row), QString("Name%1").arg(row));
    bench.Ok();
    EXPECT_FALSE(bench.form->isVisible());
    const std::string& found = bench.files.files[PanelBench::FoundIni];
    EXPECT_NE(found.find(",0,Name0,Name1,Name2,Name3,Name4,,,,,,,,10,\r\n"), std::string::npos) << found;
    EXPECT_EQ(bench.files.writes,
              (std::vector<std::string>{PanelBench::FoundIni, PanelBench::OptionsIni, PanelBench::FoundIni}));
}

TEST(FrmEditMDB, DuplicatesAreToldAndNothingIsSaved)
{
    NamesBench bench;
    bench.Open(withNames(SerialLogger(), {}));
    const std::string before = bench.files.files[PanelBench::FoundIni];
    const std::string line = bench.RecordLine(1);
    Type(bench.Row(1), "Tank");
    bench.Paste(3, "Ta nk");
    Type(bench.Row(4), "Mill");
    bench.OkWithBox();
    ASSERT_EQ(bench.dialogs.shown.size(), 1U);
    EXPECT_EQ(bench.dialogs.shown[0].text, "Table names must be unique or blank.     ");
    EXPECT_EQ(bench.dialogs.shown[0].title, " tallyCore Harvel");
    EXPECT_EQ(bench.dialogs.shown[0].icon, BoxIcon::Critical);
    EXPECT_EQ(bench.dialogs.shown[0].buttons, BoxButtons::Ok);
    EXPECT_TRUE(bench.form->isVisible());
    EXPECT_EQ(bench.Row(3).text(), "Tank");
    EXPECT_EQ(bench.Name(1), "Tank");
    EXPECT_EQ(bench.Name(3), "Tank");
    EXPECT_EQ(bench.Name(4), "Mill");
    EXPECT_TRUE(bench.files.writes.empty());
    EXPECT_EQ(bench.files.files[PanelBench::FoundIni], before);
    EXPECT_EQ(bench.RecordLine(1), line);
    EXPECT_TRUE(bench.Row(1).hasFocus());

    Type(bench.Row(1), "Lake"); // in place of the name that is selected
    bench.Ok();
    EXPECT_FALSE(bench.form->isVisible());
    EXPECT_NE(bench.RecordLine(1).find(",Lake,,Tank,Mill,"), std::string::npos);
}

TEST(FrmEditMDB, NamesThatDifferInCaseAreUnique)
{
    NamesBench bench;
    bench.Open(withNames(SerialLogger(), {}));
    Type(bench.Row(0), "Tank");
    Type(bench.Row(1), "TANK");
    bench.Ok();
    EXPECT_FALSE(bench.form->isVisible());
    EXPECT_EQ(bench.Name(1), "TANK");
}

TEST(FrmEditMDB, TwoZerosAreTwoBlanks)
{
    NamesBench bench;
    bench.Open(withNames(SerialLogger(), {}));
    Type(bench.Row(0), "0");
    Type(bench.Row(1), "0");
    bench.Ok();
    EXPECT_FALSE(bench.form->isVisible());
    bench.Open(bench.Record(1));
    EXPECT_EQ(bench.Row(0).text(), "");
}

TEST(FrmEditMDB, AStaleNameInAnEntryNotShownStillCounts)
{
    for (const size_t hidden : {5U, 10U, 11U}) {
        NamesBench bench;
        bench.Open(withNames(SerialLogger(), {{hidden, "Tank"}}));
        Type(bench.Row(2), "Tank");
        bench.OkWithBox();
        EXPECT_TRUE(bench.form->isVisible());
        EXPECT_EQ(bench.dialogs.shown.size(), 1U);
        EXPECT_EQ(bench.Name(hidden), "Tank");
        EXPECT_TRUE(bench.Row(2).hasFocus());
    }
    NamesBench stale;
    stale.Open(withNames(SerialLogger(), {{6, "Tank"}, {9, "Tank"}}));
    stale.OkWithBox();
    EXPECT_TRUE(stale.form->isVisible());
}

TEST(FrmEditMDB, ClosingStoresNothing)
{
    const LoggerRecord logger = withNames(SerialLogger(), {{0, "Tank"}, {3, "my table"}});
    for (const bool byKey : {false, true}) {
        NamesBench bench;
        bench.Open(logger);
        Type(bench.Row(0), "s");
        bench.Row(1).setFocus();
        Type(bench.Row(1), "Mill");
        if (byKey)
            PressKey(bench.Row(1), Qt::Key_Escape);
        else
            bench.form->close();
        EXPECT_FALSE(bench.form->isVisible());
        EXPECT_EQ(bench.Record(1).LoggerTableNames, logger.LoggerTableNames);
        EXPECT_TRUE(bench.files.writes.empty());
    }
}

TEST(FrmEditMDB, ClosingAfterADuplicateLeavesWhatOkHasPutIntoTheTables)
{
    NamesBench bench;
    bench.Open(withNames(SerialLogger(), {}));
    Type(bench.Row(0), "Tank");
    Type(bench.Row(1), "Tank");
    bench.OkWithBox();
    Type(bench.Row(2), "Mill");
    bench.form->close();
    EXPECT_EQ(bench.Name(0), "Tank");
    EXPECT_EQ(bench.Name(1), "Tank");
    EXPECT_EQ(bench.Name(2), "");
    EXPECT_TRUE(bench.files.writes.empty());
}

TEST(FrmEditMDB, GoesByTheLoggerThatItWasOpenedFor)
{
    NamesBench bench;
    bench.Store({SerialLogger(), NetworkLogger()});
    bench.heart.state.CurrentLogger = 2;
    bench.form.emplace(bench.heart.panelServices(), nullptr);
    bench.form->show();
    EXPECT_EQ(bench.Row(11).text(), "Immediate");
    bench.heart.state.CurrentLogger = 1;
    Type(bench.Row(5), "Sixth");
    bench.Ok();
    EXPECT_EQ(bench.Record(1).LoggerTableNames, SerialLogger().LoggerTableNames);
    EXPECT_EQ(bench.Record(2).LoggerTableNames[5], "Sixth");
    EXPECT_NE(bench.RecordLine(2).find(",Sixth,,,,,,Immediate,"), std::string::npos);
}

TEST(FrmEditMDB, ALoggerThatThereIsNotHasNothingToStore)
{
    NamesBench bench;
    bench.Store({SerialLogger()});
    bench.heart.state.CurrentLogger = 0;
    bench.form.emplace(bench.heart.panelServices(), nullptr);
    bench.form->show();
    Type(bench.Row(0), "Tank");
    bench.Ok();
    EXPECT_FALSE(bench.form->isVisible());
    for (const LoggerRecord& record : bench.heart.tables.records)
        EXPECT_EQ(record.LoggerTableNames[0], "");
}

TEST(FrmEditMDB, AProgramThatEndsWhileTheBoxStandsOpenSavesNothing)
{
    NamesBench bench;
    bench.Open(withNames(SerialLogger(), {}));
    Type(bench.Row(0), "Tank");
    Type(bench.Row(1), "Tank");
    bench.dialogs.whileShown = [&] { bench.heart.end.EndProgram(); };
    bench.OkWithBox();
    Type(bench.Row(1), "Mill");
    bench.Ok();
    EXPECT_TRUE(bench.files.writes.empty());
    EXPECT_EQ(bench.dialogs.shown.size(), 1U);
}

TEST(FrmEditMDB, MayGoWithItsOwnerWhileTheBoxStandsOpen)
{
    NamesBench bench;
    bench.Store({withNames(SerialLogger(), {{0, "Tank"}, {1, "Tank"}})});
    bench.heart.state.CurrentLogger = 1;
    auto owner = std::make_unique<QWidget>();
    bench.OpenUnder(*owner);
    bench.dialogs.whileShown = [&] { owner.reset(); };
    bench.dialogs.Expect(BoxAnswer::Ok);
    Find<QPushButton>(*bench.child, "cmdOk").click();
    EXPECT_FALSE(bench.child);
}

TEST(FrmEditMDB, ThePanelSavesOnceMoreBehindIt)
{
    PanelBench bench;
    LoggerRecord logger = SerialLogger();
    logger.LoggerDescription = "Mill";
    logger.LoggerMdbOn = "1";
    bench.Store({logger});
    frmTallyCores& panel = bench.View(1);
    bench.files.writes.clear();
    QTimer::singleShot(0, [] {
        QWidget* editor = QApplication::activeModalWidget();
        ASSERT_TRUE(editor);
        EXPECT_EQ(editor->objectName(), "frmEditMDB");
        Type(Find<QLineEdit>(*editor, "txtMDBTableNames_0"), "Tank");
        Find<QPushButton>(*editor, "cmdOk").click();
    });
    Find<QPushButton>(panel, "cmdEditMDB").click();
    EXPECT_EQ(bench.Record(1).LoggerTableNames[0], "Tank");
    EXPECT_EQ(bench.files.writes,
              (std::vector<std::string>{PanelBench::FoundIni, PanelBench::OptionsIni, PanelBench::FoundIni,
                                        PanelBench::OptionsIni, PanelBench::FoundIni}));
}

} // namespace harvelop::test
