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
}

} // namespace harvelop
