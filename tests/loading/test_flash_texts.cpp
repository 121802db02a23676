#include "loading/flash_bench.h"
#include "loading/flash_texts.h"

namespace harvelop::test
{

TEST(JobName, IsAllThatStandsInDoubleQuotes)
{
    EXPECT_EQ(JobNameOf("BEGIN\"WIND\""), "WIND");
    EXPECT_EQ(JobNameOf("  BEGIN\"WIND 2\" 'remark"), "WIND 2");
    EXPECT_EQ(JobNameOf("\"A\"x BEGIN\"B\"y\"C\""), "ABC");
}

TEST(JobName, TakesQuotesInPairs)
{
    EXPECT_EQ(JobNameOf("BEGIN\"A\"B\"C"), "AC");
    EXPECT_EQ(JobNameOf("BEGIN\"OPEN"), "OPEN");
    EXPECT_EQ(JobNameOf("BEGIN\"\"\"\""), "");
    EXPECT_EQ(JobNameOf("BEGIN\""), "");
}

TEST(JobName, NeedsBeginWithAQuoteBehindIt)
{
    for (const char* line : {"", "BEGIN", "BEGIN \"A\"", "begin\"A\"", "END\"A\""})
        EXPECT_EQ(JobNameOf(line), std::nullopt) << line;
    EXPECT_EQ(JobNameOf("\"BEGIN\" A"), "BEGIN");
}

TEST(FlashVersion, CountsByItsFirstCharacter)
{
    for (const char* version : {"", "0", "4", "4.99", "10.1", " 5", "V5", "-5", "\xb5"})
        EXPECT_TRUE(NeedsFlashOnReset(version)) << version;
    for (const char* version : {"5", "5.0", "9x"})
        EXPECT_FALSE(NeedsFlashOnReset(version)) << version;
}

using FlashTexts = FlashTest;

TEST_F(FlashTexts, EntriesThatALanguageFileLacksAreEmpty)
{
    files.files["/app/Part.txt"] = "648:1:8:Caution\r\n644:1:8:is large\r\n";
    heart.options.Language = "Part";
    heart.language.LangActive = true;
    heart.language.LoadLanguageFile();
    EXPECT_EQ(FlashCaution(heart.language, false, "KR20", "/a"), "Caution KR20. .\r\r : \r\r/a\r\r.");
    EXPECT_EQ(FlashCaution(heart.language, true, "KR40", "/a"), " KR40. .\r\r : \r\r/a\r\r.");
    EXPECT_EQ(TooLargeText(heart.language, "/a"), ".     \rThe size of /a is large.     ");
}

} // namespace harvelop::test
