#include "identify_program.h"

#include <gtest/gtest.h>

namespace harvelop::test
{

namespace
{

constexpr const char* Question =
    "A tallyCore was found but there was an error when trying to communicate with it. The tallyCore may be very busy, "
    "or it may have a password enabled. Either enter a password below and click OK, or click Cancel to cancel the "
    "search and try again.";

// Of a whole silent pass: up to "TEST0", its time-out, and the line behind the probe.
constexpr double SilentPassMs = 4800 + 5000;

} // namespace

using Lines = std::vector<std::string>;

TEST(IdentificationPassword, AnAcceptedPasswordIsKeptAndASecondPassTellsEverything)
{
    IdentifyProgram t;
    t.OpenLine(Logger("KR305", "3", "9.05", "", "mountain"));
    t.dialogs.ExpectPassword("mountain");
    t.Search().LoggerFound = true;
    t.heart.identification.IdentifyLogger(false);

    ASSERT_EQ(t.dialogs.asked.size(), 1u);
    EXPECT_EQ(t.dialogs.asked[0].text, Question);
    EXPECT_EQ(t.dialogs.asked[0].title, " Harvel");
    EXPECT_EQ(t.Search().IdentifiedModel.Get(1), "KR305");
    EXPECT_EQ(t.Search().IdentifiedSeries.Get(1), "3");
    EXPECT_EQ(t.Search().IdentifiedVersion.Get(0), "9.05");
    EXPECT_EQ(t.Record(1).LoggerVersion, "9.05");
    EXPECT_EQ(t.Record(1).LoggerPassword, "mountain");
    EXPECT_TRUE(t.Search().LoggerFound);
    EXPECT_FALSE(t.Search().PasswordRetry);
    EXPECT_EQ(t.heart.state.CurrentLogger, 1);
    EXPECT_EQ(t.files.writes, (Lines{TestProgram::OptionsIni, TestProgram::FoundIni}));
    EXPECT_EQ(t.Wire(SilentPassMs - 1),
              (Lines{"1 \x7f\r\n", "1 mountain\r\n", "501 Q /H/r\r\n\r\n", "701 Q /H/r\r\n\r\n", "1401 mountain\r\n",
                     "3401 Q /H/r/M/U/N\r\n\r\n", "3601 Q /H/r/M/U/N\r\n\r\n", "3801 END\r\n", "4801 TEST0\r\n",
                     "4801 /h/R/U/N\r\n\r\n"}));
}

TEST(IdentificationPassword, TheVersionOfANamedLoggerSurvivesTheSecondPass)
{
    IdentifyProgram t;
    t.OpenLine(Logger("KR400", "", "6.10.0002", "098765", "mountain"));
    t.dialogs.ExpectPassword("mountain");
    t.heart.identification.IdentifyLogger(false);
    EXPECT_EQ(t.Search().IdentifiedModel.Get(1), "KR400");
    EXPECT_EQ(t.Search().IdentifiedVersion.Get(0), "6.10.0002");
    EXPECT_EQ(t.Search().IdentifiedSerial.Get(0), "098765");
}

TEST(IdentificationPassword, AnAcceptedPasswordIsUsedForEveryLaterConnection)
{
    IdentifyProgram t;
    LoggerRecord record;
    record.LoggerPort = "3";
    record.LoggerModel = "KR305 Series 3";
    t.Store(1, record);
    t.heart.state.CurrentLogger = 1;
    t.OpenLine(Logger("KR305", "3", "9.05", "", "mountain"));
    t.dialogs.ExpectPassword("mountain");
    t.heart.identification.IdentifyLogger(true);

    t.heart.records.LoadFoundLoggers();
    EXPECT_EQ(t.Record(1).LoggerPassword, "mountain");
    t.serial.ports[3].device = Logger("KR305", "3", "9.05", "", "mountain");
    t.heart.identification.IdentifyLogger(true);
    EXPECT_EQ(t.Search().IdentifiedModel.Get(1), "KR305");
    EXPECT_EQ(t.dialogs.asked.size(), 1u);
}

TEST(IdentificationPassword, ARefusedPasswordEndsItWithoutASecondQuestion)
{
    IdentifyProgram t;
    t.OpenLine(Logger("KR305", "3", "9.05", "", "mountain"));
    t.dialogs.ExpectPassword("valley");
    t.Search().LoggerFound = true;
    t.Record(1).LoggerVersion = "9.05";
    t.heart.identification.IdentifyLogger(false);
    EXPECT_EQ(t.dialogs.asked.size(), 1u);
    EXPECT_EQ(t.Search().IdentifiedModel.Get(1), "");
    EXPECT_EQ(t.Record(1).LoggerPassword, "");
    EXPECT_EQ(t.Record(1).LoggerVersion, "9.05");
    EXPECT_TRUE(t.Search().LoggerFound);
    EXPECT_FALSE(t.Search().PasswordRetry);
    EXPECT_TRUE(t.files.writes.empty());
    EXPECT_TRUE(t.messages.Visible());
    EXPECT_EQ(t.messages.Caption(), "<- No tallyCores were Found on Com 3");
    EXPECT_EQ(t.Wire(SilentPassMs - 1), (Lines{"1 \x7f\r\n", "1 valley\r\n", "5001 /h/R/U/N\r\n\r\n"}));
}

TEST(IdentificationPassword, ACancelledQuestionClearsTheFind)
{
    IdentifyProgram t;
    t.OpenLine(Logger("KR305", "3", "9.05", "", "mountain"));
    t.dialogs.ExpectPassword("");
    t.Search().LoggerFound = true;
    bool visibleWhileAsked = true;
    t.dialogs.whileShown = [&] { visibleWhileAsked = t.messages.Visible(); };
    t.heart.identification.IdentifyLogger(false);
    EXPECT_FALSE(visibleWhileAsked);
    EXPECT_TRUE(t.messages.Visible());
    EXPECT_FALSE(t.Search().LoggerFound);
    EXPECT_EQ(t.Search().IdentifiedModel.Get(1), "");
    EXPECT_EQ(t.Wire(SilentPassMs - 1), (Lines{"1 \x7f\r\n", "1 /h/R/U/N\r\n\r\n"}));
}

TEST(IdentificationPassword, ASilentLinkIsNotAskedAbout)
{
    IdentifyProgram t;
    t.OpenLine(nullptr);
    t.heart.identification.IdentifyLogger(false);
    EXPECT_TRUE(t.dialogs.asked.empty());
    EXPECT_FALSE(t.messages.Visible());
}

TEST(IdentificationPassword, ASecondPassThatStaysSilentAsksNoMore)
{
    IdentifyProgram t;
    t.OpenLine(std::make_shared<ScriptedLogger>(
        std::map<std::string, std::string>{{"\x7f", "<<\r\n"}, {"mountain", "Accepted\r\n"}}));
    t.dialogs.ExpectPassword("mountain");
    t.heart.identification.IdentifyLogger(false);
    EXPECT_EQ(t.dialogs.asked.size(), 1u);
    EXPECT_EQ(t.Search().IdentifiedModel.Get(1), "");
    EXPECT_FALSE(t.Search().PasswordRetry);
}

} // namespace harvelop::test
