// What the editor of the table names shows and takes.
#include "names_bench.h"

namespace harvelop::test
{

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
