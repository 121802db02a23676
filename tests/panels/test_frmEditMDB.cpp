#include "panel_bench.h"
#include "panels/frmEditMDB.h"
#include "panels/table_name_rules.h"
#include "settings/sample_loggers.h"

#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <optional>

namespace harvelop::test
{

namespace
{

LoggerRecord withNames(LoggerRecord logger, const std::vector<std::pair<size_t, std::string>>& names)
{
    logger.LoggerTableNames.fill("");
    for (const auto& [entry, name] : names)
        logger.LoggerTableNames.at(entry) = name;
    return logger;
}

// The editor on the first logger. Not through the panel, which saves once more.
struct NamesBench : PanelBench {
    void Open(const LoggerRecord& logger)
    {
        Store({logger});
        Record(1) = logger; // also what a file can't hold
        heart.state.CurrentLogger = 1;
        form.emplace(heart.panelServices(), nullptr);
        form->show();
        QApplication::setActiveWindow(&*form);
        files.writes.clear();
    }
    void OpenUnder(QWidget& owner)
    {
        child = new frmEditMDB(heart.panelServices(), &owner);
        child->show();
    }

    QLineEdit& Row(int row) { return Find<QLineEdit>(*form, "txtMDBTableNames_" + std::to_string(row)); }
    QLabel& Caption(int row) { return Find<QLabel>(*form, "lblSchedule_" + std::to_string(row)); }
    void Paste(int row, const QString& text)
    {
        QApplication::clipboard()->setText(text);
        QTest::keyClick(&Row(row), Qt::Key_V, Qt::ControlModifier);
    }
    void Ok() { Find<QPushButton>(*form, "cmdOk").click(); }
    void OkWithBox()
    {
        dialogs.Expect(BoxAnswer::Ok);
        Ok();
    }
    const std::string& Name(size_t row) { return Record(1).LoggerTableNames.at(row); }

    std::optional<frmEditMDB> form;
    QPointer<frmEditMDB> child;
};

} // namespace

TEST(FrmEditMDB, TheOlderFamilyHasFiveRows)
{
    NamesBench bench;
    bench.Open(SerialLogger());
    const char* captions[] = {"Schedule A", "Schedule B", "Schedule C", "Schedule D", "Schedule X"};
    for (int row = 0; row < MaxSchedules; ++row) {
        EXPECT_EQ(bench.Row(row).isVisible(), row < 5) << row;
        EXPECT_EQ(bench.Caption(row).isVisible(), row < 5) << row;
    }
    for (int row = 0; row < 5; ++row)
        EXPECT_EQ(bench.Caption(row).text().remove('&'), captions[row]);
}

TEST(FrmEditMDB, TheKR4FamilyHasTwelveRows)
{
    NamesBench bench;
    bench.Open(NetworkLogger());
    for (int row = 0; row < MaxSchedules; ++row) {
        EXPECT_TRUE(bench.Row(row).isVisible() && bench.Caption(row).isVisible()) << row;
        EXPECT_EQ(bench.Caption(row).text().remove('&'), QString("Schedule ") + "ABCDEFGHIJKX"[row]);
    }
}

TEST(FrmEditMDB, TheHeightFollowsTheLastRow)
{
    NamesBench few;
    few.Open(SerialLogger());
    NamesBench many;
    many.Open(NetworkLogger());
    const int row = few.Row(1).y() - few.Row(0).y();
    EXPECT_EQ(many.form->height() - few.form->height(), 7 * row);
    EXPECT_GT(Find<QPushButton>(*few.form, "cmdOk").y(), few.Row(4).geometry().bottom());
}

TEST(FrmEditMDB, EachRowShowsItsEntryAndAnUnsetOneIsEmpty)
{
    NamesBench bench;
    LoggerRecord logger = NetworkLogger();
    logger.LoggerTableNames = UnassignedSchedules();
    logger.LoggerTableNames[1] = "";
    logger.LoggerTableNames[2] = "Tank";
    logger.LoggerTableNames[11] = "Mill_7";
    bench.Open(logger);
    for (int row = 0; row < MaxSchedules; ++row)
        EXPECT_EQ(bench.Row(row).text(), row == 2 ? "Tank" : row == 11 ? "Mill_7" : "") << row;
}

TEST(FrmEditMDB, ThirtyTwoCharactersCanBeTyped)
{
    NamesBench bench;
    bench.Open(SerialLogger());
    Type(bench.Row(0), QString(40, 'n'));
    EXPECT_EQ(bench.Row(0).text(), QString(32, 'n'));
    bench.Paste(1, QString(40, 'p'));
    EXPECT_EQ(bench.Row(1).text(), QString(32, 'p'));
}

TEST(FrmEditMDB, AStoredNameThatIsLongerIsNotCut)
{
    NamesBench bench;
    const std::string stored(40, 'n');
    bench.Open(withNames(SerialLogger(), {{0, stored}}));
    EXPECT_EQ(bench.Row(0).text().toStdString(), stored);
    bench.Ok();
    EXPECT_EQ(bench.Name(0), stored);
}

TEST(FrmEditMDB, AForbiddenCharacterIsTakenBackSilently)
{
    NamesBench bench;
    bench.Open(SerialLogger());
    Type(bench.Row(0), "a b,c.d-e|f_7");
    EXPECT_EQ(bench.Row(0).text(), "abcdef_7");
    bench.Row(0).setCursorPosition(2);
    Type(bench.Row(0), QString::fromUtf8("ä\u20AC;X"));
    EXPECT_EQ(bench.Row(0).text(), "abXcdef_7");
    EXPECT_EQ(bench.Row(0).cursorPosition(), 3);
    EXPECT_TRUE(bench.dialogs.shown.empty());
    bench.Ok();
    EXPECT_EQ(bench.Name(0), "abXcdef_7");
}

TEST(FrmEditMDB, UndoGoesBeyondACharacterTakenBack)
{
    NamesBench bench;
    bench.Open(withNames(SerialLogger(), {{0, "Tank"}}));
    Type(bench.Row(0), "ab,");
    EXPECT_EQ(bench.Row(0).text(), "Tankab");
    for (int i = 0; i < 3 && bench.Row(0).text() != "Tank"; ++i)
        QTest::keyClick(&bench.Row(0), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(bench.Row(0).text(), "Tank");
}

TEST(FrmEditMDB, NothingIsTakenBackAtTheStartOfTheText)
{
    NamesBench bench;
    bench.Open(withNames(SerialLogger(), {{0, "a b"}}));
    bench.Row(0).setCursorPosition(0);
    PressKey(bench.Row(0), Qt::Key_Delete);
    EXPECT_EQ(bench.Row(0).text(), " b");
}

TEST(FrmEditMDB, TypingAndFilledInNamesSetTheAllowedCharacters)
{
    NamesBench bench;
    bench.heart.state.AllowedChars = "0123456789.";
    bench.Open(withNames(SerialLogger(), {{0, "0"}, {7, "Stale"}}));
    EXPECT_EQ(bench.heart.state.AllowedChars, "0123456789."); // nothing is shown
    Type(bench.Row(0), "a");
    EXPECT_EQ(bench.heart.state.AllowedChars, TableNameChars);
    NamesBench filled;
    filled.Open(withNames(SerialLogger(), {{4, "Tank"}}));
    EXPECT_EQ(filled.heart.state.AllowedChars, TableNameChars);
}

TEST(FrmEditMDB, APasteIsStrippedByOkWithoutAnyTyping)
{
    NamesBench bench;
    bench.heart.state.AllowedChars = "0123456789.";
    bench.Open(withNames(SerialLogger(), {}));
    bench.Paste(0, "a b");
    bench.Paste(1, "Mill, north;\nside.");
    bench.Paste(2, " ");
    bench.Ok();
    EXPECT_EQ(bench.Name(0), "ab");
    EXPECT_EQ(bench.Name(1), "Millnorthside");
    EXPECT_EQ(bench.Name(2), "");
    EXPECT_FALSE(bench.form->isVisible());
    EXPECT_NE(bench.files.files[PanelBench::FoundIni].find(",ab,Millnorthside,,,,"), std::string::npos);
}

TEST(FrmEditMDB, OkWithoutAnyChangeSpoilsNoName)
{
    NamesBench bench;
    bench.heart.state.AllowedChars = "0123456789."; // of whatever filter ran last
    const LoggerRecord logger = withNames(NetworkLogger(), {{0, "Tank"}, {5, "Mill_7"}, {11, "x"}});
    bench.Open(logger);
    bench.Ok();
    EXPECT_EQ(bench.Record(1).LoggerTableNames, logger.LoggerTableNames);
}

TEST(FrmEditMDB, AnUnsetEntryIsStoredAsEmpty)
{
    NamesBench bench;
    LoggerRecord logger = SerialLogger();
    logger.LoggerTableNames = UnassignedSchedules();
    bench.Open(logger);
    bench.Ok();
    EXPECT_FALSE(bench.form->isVisible());
    for (size_t row = 0; row < MaxSchedules; ++row)
        EXPECT_EQ(bench.Name(row), row < 5 ? "" : "0") << row; // the rows not shown keep what they hold
}

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

TEST(FrmEditMDB, EnglishTexts)
{
    NamesBench bench;
    bench.Open(SerialLogger());
    EXPECT_EQ(bench.form->windowTitle(), " Edit Table Names");
    EXPECT_EQ(Find<QPushButton>(*bench.form, "cmdOk").text().remove('&'), "Ok");
}

TEST(FrmEditMDB, SpeaksTheUsersLanguage)
{
    NamesBench bench;
    bench.Speak("Font2=Courier\r\n160:2:14:Tabellennamen\r\n161:2:14:Gut\r\n162:1:9:Doppelt\r\n503:1:9:Ernte\r\n");
    bench.Open(withNames(SerialLogger(), {{0, "Tank"}, {1, "Tank"}}));
    const auto& ok = Find<QPushButton>(*bench.form, "cmdOk");
    EXPECT_EQ(bench.form->windowTitle(), "Tabellennamen");
    EXPECT_EQ(ok.text(), "Gut");
    EXPECT_EQ(ok.font().family(), "Courier");
    EXPECT_EQ(ok.font().pointSize(), 14);
    EXPECT_EQ(bench.Caption(4).text().remove('&'), "Schedule X");
    bench.OkWithBox();
    EXPECT_EQ(bench.dialogs.shown.at(0).text, "Doppelt.     ");
    EXPECT_EQ(bench.dialogs.shown.at(0).title, " tallyCore Harvel"); // in every language
}

TEST(FrmEditMDB, EachRowIsReachedByItsLetterAndByTab)
{
    for (const LoggerRecord& logger : {SerialLogger(), NetworkLogger()}) {
        NamesBench bench;
        bench.Open(logger);
        const std::string letters(ScheduleLetters(logger.LoggerModel));
        for (int row = 0; row < static_cast<int>(letters.size()); ++row) {
            EXPECT_EQ(bench.Caption(row).buddy(), &bench.Row(row));
            EXPECT_TRUE(bench.Caption(row).text().endsWith(QString("&") + QChar(letters[static_cast<size_t>(row)])));
            EXPECT_TRUE(bench.Row(row).hasFocus()) << row;
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        const auto& ok = Find<QPushButton>(*bench.form, "cmdOk");
        EXPECT_TRUE(ok.hasFocus());
        EXPECT_TRUE(ok.isDefault());
        EXPECT_EQ(ok.text(), "&Ok"); // the letter of no schedule
        Type(bench.Row(0), "Tank");
        PressKey(bench.Row(0), Qt::Key_Return);
        EXPECT_FALSE(bench.form->isVisible());
        EXPECT_EQ(bench.Name(0), "Tank");
    }
}

} // namespace harvelop::test
