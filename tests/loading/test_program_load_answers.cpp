// What the logger answers while it is sent a program.
#include "loading/load_bench.h"

namespace harvelop::test
{
namespace
{

using testing::ElementsAre;
using testing::StartsWith;

constexpr BoxAnswer Yes = BoxAnswer::Yes;
constexpr BoxAnswer Ok = BoxAnswer::Ok;

struct LoadAnswers : ProgramLoadTest {
    LoadAnswers()
    {
        Connect();
        StoreProgram("one\r\ntwo\r\nthree\r\nfour\r\n");
    }

    void Send()
    {
        Expect({Yes, Ok});
        ProgramLoadTest::Send();
    }

    // The line that the report names; 0: the program was told to be sent.
    int ErrorLine() const
    {
        for (int line = 1; line <= 9; ++line)
            if (Boxes().back().text.find(" at line " + std::to_string(line) + ". ") != std::string::npos)
                return line;
        EXPECT_THAT(Boxes().back().text, StartsWith("Program sent successfully to the "));
        return 0;
    }
};

TEST_F(LoadAnswers, AnErrorStopsTheSendingAtItsLine)
{
    far->Answer("two", "Tallycore 2E12\r\n");
    Send();
    EXPECT_THAT(ProgramLines(), ElementsAre("one", "two")); // and nothing that undoes them
    EXPECT_THAT(std::vector<std::string>(journal.end() - 3, journal.end()),
                ElementsAre("- Error in tallyCore command file : line 2",
                            "! There was a syntax error or a programmatic error in the tallyCore command file at line "
                            "2. The rest of the file was not sent to the tallyCore.\r\rThe file you selected was : "
                            "\r\r/home/user/pump.cmd",
                            "- "));
    EXPECT_EQ(Boxes().back().icon, BoxIcon::Critical);
    EXPECT_EQ(Now(), SentAt("two") + 100);
    EXPECT_EQ(heart.exchange.txtCharacterWindow.Text(), "");
    EXPECT_LT(messages.value, messages.max); // the bar is left where it stood
    EXPECT_FALSE(messages.Visible());
}

TEST_F(LoadAnswers, AnErrorIsToldInTheLanguageOfItsFile)
{
    UseNumberedTexts();
    far->Answer("one", "Serial sensor control string error\r\n");
    Send();
    EXPECT_EQ(*(journal.end() - 3), "- <332> 1");
    EXPECT_EQ(Boxes().back(), (Box{"<600> 1. <601>.\r\r<602> : \r\r/home/user/pump.cmd", "", BoxIcon::Critical}));
}

TEST_F(LoadAnswers, ThereAreThreeKindsOfErrors)
{
    for (const char* error : {"Tallycore 2E", "tallyCore KR400 E7", "x Serial sensor control string error y"}) {
        SCOPED_TRACE(error);
        Forget();
        far->Answer("three", error);
        Send();
        EXPECT_EQ(ErrorLine(), 3);
    }
}

TEST_F(LoadAnswers, WhatOnlyLooksLikeAnErrorIsNone)
{
    far->Answer("one", "tallycore 2E12\r\nTallycore 1E12\r\nTallycore 2 E12\r\n");
    far->Answer("two", "tallyCore KR40 E1\r\ntallyCore KR400E1\r\nTallycore KR400 E1\r\n");
    far->Answer("three", "serial sensor control string error\r\n");
    Send();
    EXPECT_EQ(ErrorLine(), 0);
    EXPECT_THAT(ProgramLines(), ElementsAre("one", "two", "three", "four"));
}

TEST_F(LoadAnswers, AnErrorThatComesLateIsTakenForThatOfTheNextLine)
{
    far->Answer("two", "Tallycore 2E12\r\n", 101);
    Send();
    EXPECT_EQ(ErrorLine(), 3);
    EXPECT_THAT(ProgramLines(), ElementsAre("one", "two", "three"));
}

TEST_F(LoadAnswers, AnErrorWithinATenthOfASecondIsThatOfItsLine)
{
    far->Answer("two", "Tallycore 2E12\r\n", 99);
    Send();
    EXPECT_EQ(ErrorLine(), 2);
}

TEST_F(LoadAnswers, AnErrorOfTheLastLineThatComesLateIsNotSeen)
{
    far->Answer("four", "Tallycore 2E12\r\n", 101);
    Send();
    EXPECT_EQ(ErrorLine(), 0);
}

TEST_F(LoadAnswers, AnErrorFromBeforeTheFirstLineIsNotTakenForItsOwn)
{
    far->Answer("END /E/h/M/U CSCANS CALARMS G", "Tallycore 2E12\r\n");
    far->Answer("13SV", "13SV\r\n2\r\nTallycore 2E12\r\n");
    Send();
    EXPECT_EQ(ErrorLine(), 0);
}

TEST_F(LoadAnswers, BlankLinesAreSentAndCounted)
{
    StoreProgram("\r\n\r\none\r\n\r\n");
    far->Answer("one", "Tallycore 2E12\r\n");
    Send();
    EXPECT_EQ(ErrorLine(), 3);
    EXPECT_THAT(ProgramLines(), ElementsAre("", "", "one"));
}

TEST_F(LoadAnswers, ALoggerThatDoesNotTellItsNumberGetsTheProgramAllTheSame)
{
    far->Answer("13SV", "");
    heart.loading.LoggerNumberText = "7"; // of an earlier load
    Send();
    EXPECT_EQ(heart.loading.LoggerNumberText, "");
    EXPECT_EQ(SentAt("one") - SentAt("13SV"), 5500);
    EXPECT_EQ(ErrorLine(), 0);
    EXPECT_THAT(ProgramLines(), ElementsAre("one", "two", "three", "four"));
}

TEST_F(LoadAnswers, WithoutItsNumberAnErrorIsOneWithNothingInItsPlace)
{
    far->Answer("13SV", "");
    far->Answer("two", "Tallycore 2E12\r\n");
    far->Answer("four", "Tallycore E12\r\n");
    Send();
    EXPECT_EQ(ErrorLine(), 4);
}

TEST_F(LoadAnswers, ALoggersNumberMayBeAnyText)
{
    far->Answer("13SV", "13SV\r\nPump 12\r\n");
    far->Answer("two", "Tallycore Pump 12E3\r\n");
    Send();
    EXPECT_EQ(heart.loading.LoggerNumberText, "Pump 12");
    EXPECT_EQ(ErrorLine(), 2);
}

TEST_F(LoadAnswers, ALoggerThatNeverStopsTalkingIsSentItsProgram)
{
    for (const char* line : {"one", "two", "three", "four"})
        far->Answer(line, std::string(70000, 'x')); // more than the window holds
    Send();
    EXPECT_EQ(ErrorLine(), 0);
    EXPECT_THAT(ProgramLines(), ElementsAre("one", "two", "three", "four"));
}

TEST_F(LoadAnswers, AReplyWithBothDigitsMeansACard)
{
    far->Answer("9SV(FF0) /U/N", "\r\n10\r\n");
    Send();
    EXPECT_TRUE(heart.loading.CardPresent.Get(1));
    EXPECT_EQ(Steps()[1], "Memory Card Found");
}

TEST_F(LoadAnswers, OnlyE4MeansData)
{
    far->Answer("H BEGIN", "Tallycore 2E3\r\n");
    Send();
    EXPECT_EQ(Steps()[3], "No Matching Data Found");
    EXPECT_EQ(ErrorLine(), 0);
}

TEST_F(LoadAnswers, AnAnswerAboutDataAfterTwoSecondsComesTooLate)
{
    far->Answer("H BEGIN", "Tallycore 2E4\r\n", 2001);
    Send();
    EXPECT_EQ(Steps()[3], "No Matching Data Found");
}

TEST_F(LoadAnswers, WhatStoodInTheWindowBeforeIsNoAnswerAboutData)
{
    far->Answer("9SV(FF0) /U/N", "\r\n0\r\nTallycore 2E4\r\n");
    Send();
    EXPECT_EQ(Steps()[3], "No Matching Data Found");
}

} // namespace
} // namespace harvelop::test
