#include "settings/language_tables.h"
#include "support/memory_files.h"
#include "support/scripted_dialogs.h"

namespace harvelop::test
{
namespace
{

struct LanguageTest : testing::Test {
    LanguageTest()
    {
        state.AppPath = "/app/";
        options.Language = "Svenska";
    }

    void load(const std::string& text)
    {
        files.files["/app/Svenska.txt"] = text;
        language.LangActive = true;
        language.LoadLanguageFile();
    }

    Options options;
    ProgramState state;
    MemoryFiles files;
    ScriptedDialogs dialogs;
    ProgramEnd end;
    LanguageTables language{options, state, files, dialogs, end};
};

TEST_F(LanguageTest, TextIsAllBehindTheThirdColon)
{
    load("Font2=Arial\r\n503:2:9:a:b\r\n");
    EXPECT_EQ(language.LangText(503), "a:b");
    EXPECT_EQ(language.LangFontName(503), "Arial");
    EXPECT_EQ(language.LangFontSize(503), 9);
}

TEST_F(LanguageTest, EmptyTextKeepsItsSize)
{
    load("7:1:12:\r\n");
    EXPECT_EQ(language.LangText(7), "");
    EXPECT_EQ(language.LangFontSize(7), 12);
}

TEST_F(LanguageTest, LineOfFourCharactersIsTooShort)
{
    load("Font1=Arial\r\n1:1:\r\n1:::\r\n2:1::\r\n");
    EXPECT_EQ(language.LangFontName(1), "");
    EXPECT_EQ(language.LangFontName(2), "Arial") << "five characters are enough";
}

TEST_F(LanguageTest, NumberSignMakesACommentOfTheWholeLine)
{
    load("12:1:10:Port # 3\r\n");
    EXPECT_EQ(language.LangText(12), "");
    EXPECT_EQ(language.LangFontSize(12), 0);
}

TEST_F(LanguageTest, NumberOutsideTheTableLosesOnlyItsLine)
{
    load("1001:1:10:too high\r\n0:1:10:too low\r\n-4:1:10:less\r\n1.5:1:10:half\r\nx:1:10:none\r\n1000:1:10:last\r\n");
    EXPECT_EQ(language.LangText(1000), "last");
    for (int number = 1; number < 1000; ++number)
        EXPECT_EQ(language.LangText(number), "") << number;
}

TEST_F(LanguageTest, RepeatedNumberGoesOnWhereTheFirstEnded)
{
    load("Font1=Arial\r\nFont2=Courier\r\n5:1:1:one\r\n5:2:2:two\r\n");
    EXPECT_EQ(language.LangText(5), "onetwo");
    EXPECT_EQ(language.LangFontSize(5), 12);
    EXPECT_EQ(language.LangFontName(5), "Courier");
}

TEST_F(LanguageTest, FontNameBeginsAtTheSeventhCharacterWhateverStandsBefore)
{
    load("  Font2=Arial\r\n3:2:9:text\r\n");
    EXPECT_EQ(language.LangFontName(3), "2=Arial");
}

TEST_F(LanguageTest, FontNameHasAtMostThirtyCharacters)
{
    load("Font1=" + std::string(40, 'x') + "\r\nFont3=\r\n3:1:9:text\r\n4:3:9:text\r\n");
    EXPECT_EQ(language.LangFontName(3), std::string(30, 'x'));
    EXPECT_EQ(language.LangFontName(4), "");
}

TEST_F(LanguageTest, LaterFontLineReplacesTheFormerForAllLines)
{
    load("Font1=Arial\r\n3:1:9:text\r\nFont1=Courier\r\n");
    EXPECT_EQ(language.LangFontName(3), "Courier");
}

TEST_F(LanguageTest, DigitOfNoFontGivesNoName)
{
    load("Font1=Arial\r\n3:0:9:a\r\n4:6:9:b\r\n5:x:9:c\r\n6::9:d\r\n7:1.4:9:e\r\n8:01:9:f\r\n9: 1:9:g\r\n");
    for (const int number : {3, 4, 5, 6, 7, 8, 9}) {
        EXPECT_EQ(language.LangFontName(number), "");
        EXPECT_EQ(language.LangFontSize(number), 9);
        EXPECT_NE(language.LangText(number), "");
    }
}

TEST_F(LanguageTest, TabsAndOuterBlanksAreRemoved)
{
    load("\t8\t:1:\t10:a\tb  \r\n  9:1:10: c d \r\n");
    EXPECT_EQ(language.LangText(8), "ab");
    EXPECT_EQ(language.LangFontSize(8), 10);
    EXPECT_EQ(language.LangText(9), " c d");
}

TEST_F(LanguageTest, MissingColonLosesOnlyItsLine)
{
    load("20 1 10 none\r\n21:one long\r\n22:1:two\r\n23:1:10:three\r\n");
    EXPECT_EQ(language.LangText(20), "");
    EXPECT_EQ(language.LangText(21), "");
    EXPECT_EQ(language.LangText(22), "");
    EXPECT_EQ(language.LangText(23), "three");
}

TEST_F(LanguageTest, SizeTakesDigitsAsLongAsTheyFit)
{
    load("1:1:1a2:text\r\n2:1:327679:text\r\n");
    EXPECT_EQ(language.LangFontSize(1), 12);
    EXPECT_EQ(language.LangFontSize(2), 32767) << "a digit that would go beyond is dropped";
}

TEST_F(LanguageTest, ReadingStopsBehindTheThousandthMessageLine)
{
    std::string text;
    for (int i = 0; i < 999; ++i)
        text += "9999:1:10:x\r\n"; // kept, though skipped later
    load(text + "1:1:10:last\r\n2:1:10:too late\r\nFont1=Late\r\n");
    EXPECT_EQ(language.LangText(1), "last");
    EXPECT_EQ(language.LangText(2), "");
    EXPECT_EQ(language.LangFontName(1), "") << "nor is a font read from behind it";
}

TEST_F(LanguageTest, ByteOrderMarkIsNoPartOfTheFirstLine)
{
    load("\xEF\xBB\xBF"
         "1:1:9:first\r\n");
    EXPECT_EQ(language.LangText(1), "first");
    load("\xEF\xBB\xBF"
         "Font1=Arial\r\n1:1:9:first\r\n");
    EXPECT_EQ(language.LangFontName(1), "Arial");
    load("\xEF\xBB\xBF");
    EXPECT_EQ(language.LangText(1), "");
}

TEST_F(LanguageTest, OtherLinesAreIgnored)
{
    load("Svenska\r\n\r\nFont9=None\r\n503:1:9:Namn");
    EXPECT_EQ(language.LangText(503), "Namn") << "the last line needs no end";
}

TEST_F(LanguageTest, NumbersOutsideTheTableHaveNoEntry)
{
    load("1:1:9:text\r\n");
    for (const int number : {0, -1, 1001, 40000}) {
        EXPECT_EQ(language.LangText(number), std::nullopt);
        EXPECT_EQ(language.LangFontName(number), "");
        EXPECT_EQ(language.LangFontSize(number), 0);
        EXPECT_EQ(language.Text(number), "");
    }
}

TEST_F(LanguageTest, EnglishStandsInOnlyWithoutALanguageFile)
{
    EXPECT_EQ(language.Text(176), "F&ind");
    load("177:1:9:Hitta portar\r\n");
    EXPECT_EQ(language.Text(177), "Hitta portar");
    EXPECT_EQ(language.Text(176), "") << "a text that the file lacks is empty";
}

TEST_F(LanguageTest, MissingFileIsToldAndEndsTheProgram)
{
    dialogs.Expect(BoxAnswer::Ok);
    language.LoadLanguageFile();
    ASSERT_EQ(dialogs.shown.size(), 1u);
    EXPECT_EQ(dialogs.shown[0].text, "The file /app/Svenska.txt could not be found.     ");
    EXPECT_EQ(dialogs.shown[0].title, " Harvel");
    EXPECT_EQ(dialogs.shown[0].icon, BoxIcon::Critical);
    EXPECT_EQ(dialogs.shown[0].buttons, BoxButtons::Ok);
    EXPECT_TRUE(end.Ended());
}

TEST_F(LanguageTest, UnreadableFileCountsAsMissing)
{
    files.unreadable.insert("/app/Svenska.txt");
    dialogs.Expect(BoxAnswer::Ok);
    language.LoadLanguageFile();
    EXPECT_TRUE(end.Ended());
}

struct Control : CaptionedControl {
    bool SetCaption(const std::string& text) override
    {
        caption = text;
        return true;
    }
    bool SetFontName(const std::string& name) override
    {
        fontName = name;
        return hasFont;
    }
    bool SetFontSize(int points) override
    {
        fontSize = points;
        return hasFont;
    }

    std::string caption = "before";
    std::string fontName;
    int fontSize = -1;
    bool hasFont = true;
};

TEST_F(LanguageTest, CaptionIsMadeOfItsPiecesInTheFontOfTheFirst)
{
    load("Font1=Arial\r\nFont2=Courier\r\n10:1:9:eins\r\n11:2:12:zwei\r\n");
    Control control;
    ApplyLangFont(language, control, {{10, " : 15"}, {0, "unused"}, {11, "."}});
    EXPECT_EQ(control.caption, "eins : 15zwei.");
    EXPECT_EQ(control.fontName, "Arial");
    EXPECT_EQ(control.fontSize, 9);
}

TEST_F(LanguageTest, ControlWithoutFontStillGetsItsCaption)
{
    load("10:1:9:eins\r\n");
    Control control;
    control.hasFont = false;
    ApplyLangFont(language, control, {{10, ""}});
    EXPECT_EQ(control.caption, "eins");
    EXPECT_EQ(control.fontSize, 9) << "each part is tried on its own";
}

TEST_F(LanguageTest, NoPiecesLeaveTheControl)
{
    Control control;
    ApplyLangFont(language, control, {});
    EXPECT_EQ(control.caption, "before");
    EXPECT_EQ(control.fontSize, -1);
}

} // namespace
} // namespace harvelop::test
