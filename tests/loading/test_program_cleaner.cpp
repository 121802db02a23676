#include "loading/program_cleaner.h"

#include <gtest/gtest.h>

namespace harvelop
{

TEST(ProgramCleaner, DropsRemarksResetsAndEmptyLines)
{
    for (const char* line : {"", "RESET", "  RESET ALL", "\\remark", "  \\remark", "D=\\x", "T=\\x"})
        EXPECT_FALSE(CleanedLine(line)) << line;
    for (const char* line : {"reset", "Reset", "d=\\", " ", "RESE", "XRESET"})
        EXPECT_TRUE(CleanedLine(line)) << line;
}

TEST(ProgramCleaner, AnApostropheEndsTheLine)
{
    EXPECT_EQ(CleanedLine("RA1S 1V'comment \"quoted\""), "RA1S 1V");
}

TEST(ProgramCleaner, EverythingFromTheFirstQuoteOnSurvives)
{
    EXPECT_EQ(CleanedLine("1V(\"Temp, o'clock\")'kept too"), "1V(\"Temp, o'clock\")'kept too");
    EXPECT_EQ(CleanedLine("x'\"cut\""), "");
}

TEST(ProgramCleaner, SmallLettersGoButForThoseBehindASlash)
{
    EXPECT_EQ(CleanedLine("/h/R abc1 R/n/u"), "/h/R 1 R/n/u");
    EXPECT_EQ(CleanedLine("h/h"), "/h");
}

TEST(ProgramCleaner, OnlyTheListedCharactersSurvive)
{
    const std::string listed = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789.()[]{}=-+*^:<>%/$,# \t";
    std::string all;
    std::string kept;
    for (int code = 1; code < 256; ++code) {
        const char c = static_cast<char>(code);
        if (c == '\'' || c == '"' || c == '\n' || c == '\r')
            continue;
        all += c;
        if (listed.find(c) != std::string::npos)
            kept += c;
    }
    all.insert(0, "A"); // the line must not begin as one that is dropped
    EXPECT_EQ(CleanedLine(all), "A" + kept);
    EXPECT_EQ(kept.size(), listed.size());
    EXPECT_EQ(CleanedLine(std::string("A\0B", 3)), "AB");
}

TEST(ProgramCleaner, BeginningsCountOnlyBehindBlanksAndInCapitals)
{
    EXPECT_EQ(CleanedLine("\tRESET"), "\tRESET");
    EXPECT_EQ(CleanedLine("RESE T"), "RESE T");
    EXPECT_EQ(CleanedLine("D= \\x"), "D= ");
    EXPECT_EQ(CleanedLine("E=\\X"), "E=X");
    EXPECT_FALSE(CleanedLine("RESETTLE"));
    EXPECT_FALSE(CleanedLine("  D=\\01/01/2026"));
}

TEST(ProgramCleaner, LineOfSmallLettersAndADigitKeepsTheDigit)
{
    EXPECT_EQ(CleanedLine("wind7speed"), "7");
    EXPECT_EQ(CleanedLine("R/h"), "R/h");
    EXPECT_EQ(CleanedLine("/hh"), "/h"); // the second one stands behind a letter
    EXPECT_EQ(CleanedLine("/ h"), "/ ");
    EXPECT_EQ(CleanedLine("//h"), "//h");
    EXPECT_EQ(CleanedLine("!/h"), "/h");
    EXPECT_EQ(CleanedLine("/\xc3\xa9"), "/"); // of other alphabets none is kept
}

// Position 1 has no character before it, whatever line came before.
TEST(ProgramCleaner, SmallLetterAtTheBeginningOfALineGoes)
{
    std::int16_t size = 0;
    EXPECT_EQ(CleanProgram("R/\r\nh1\r\n", size), "R/\r\n1\r\n");
    EXPECT_EQ(size, 3);
}

TEST(ProgramCleaner, QuoteBeforeAnApostropheKeepsItAndOneBehindItDoesNot)
{
    EXPECT_EQ(CleanedLine("A\"b\" c'd\"e"), "A\"b\" c'd\"e");
    EXPECT_EQ(CleanedLine("A'b\"c\""), "A");
    EXPECT_EQ(CleanedLine("a\""), "\"");
    EXPECT_EQ(CleanedLine("\"\""), "\"\"");
    EXPECT_EQ(CleanedLine("'all"), "");
}

TEST(ProgramCleaner, BlanksAtTheEndsOfQuotedTextAreTrimmedButCounted)
{
    std::int16_t size = 0;
    EXPECT_EQ(CleanProgram(" \"a b  ", size), "\"a b\r\n");
    EXPECT_EQ(size, 7);
    size = 0;
    EXPECT_EQ(CleanProgram("\tA\t\r\n", size), "\tA\t\r\n");
    EXPECT_EQ(size, 3);
}

TEST(ProgramCleaner, LinesEndInAnyWay)
{
    std::int16_t size = 0;
    EXPECT_EQ(CleanProgram("A\rB\nC\r\n\r\nD", size), "A\r\nB\r\nC\r\nD\r\n");
    EXPECT_EQ(CleanProgram("", size), "");
    EXPECT_EQ(size, 4);
}

TEST(ProgramCleaner, LinesAreTrimmedOnlyAsTheyAreWritten)
{
    std::int16_t size = 10;
    EXPECT_EQ(CleanProgram("  A B  \nabc\r\n 'x\n   \n", size), "A B\r\n\r\n\r\n");
    EXPECT_EQ(size, 10 + 7 + 1 + 3);
}

TEST(ProgramCleaner, ASizeBeyondSixteenBitsFails)
{
    std::int16_t size = 32766;
    EXPECT_TRUE(CleanProgram("A\n", size));
    EXPECT_EQ(size, 32767);
    EXPECT_FALSE(CleanProgram("B\n", size));
    EXPECT_EQ(size, 32767);
    EXPECT_EQ(CleanProgram("b\n\n'x\n", size), ""); // adds nothing
}

TEST(ProgramCleaner, FailureCountsTheLinesBeforeIt)
{
    std::int16_t size = 0;
    EXPECT_FALSE(CleanProgram("ABC\n" + std::string(40000, 'D') + "\nE\n", size));
    EXPECT_EQ(size, 3);
}

} // namespace harvelop
