#include "simulator/trace_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace harvelop::test
{

namespace
{

using Kind = RecordedStep::Kind;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string Head = "# harvelop trace 1, test, 2026-11-21\n";
const std::string Opened = "10:00:00.000 com3 open \"9600,N,8,1\" 0 \"/dev/ttyS2\"\n";

// "H TEST0.", "H ath0* 7" for a line of which the rest was hidden, "A <<", "D noise", "O", "L".
std::vector<std::string> Steps(const RecordedLine& line)
{
    std::vector<std::string> steps;
    for (const RecordedStep& step : line.steps) {
        std::string text = step.text;
        std::replace(text.begin(), text.end(), '\r', '.');
        std::replace(text.begin(), text.end(), '\n', ',');
        const std::string kind = step.kind == Kind::Opened     ? "O"
                                 : step.kind == Kind::Heard    ? "H " + text + (step.isHidden ? "*" : "")
                                 : step.kind == Kind::Answered ? (step.isDropped ? "D " : "A ") + text
                                                               : "L";
        steps.push_back(kind);
    }
    return steps;
}

RecordedLine Only(const std::string& text)
{
    RecordedTrace trace = ReadTrace(Head + text);
    EXPECT_THAT(trace.errors, IsEmpty());
    EXPECT_EQ(trace.lines.size(), 1U);
    return trace.lines.empty() ? RecordedLine() : trace.lines.front();
}

std::vector<std::string> Errors(const std::string& text)
{
    return ReadTrace(Head + text + "10:00:01.000 com3 close\n10:00:01.000 com3 close\n").errors;
}

TEST(TraceReader, LinesAreHeardAndAnsweredInTheirOrder)
{
    const RecordedLine line = Only(Opened + "10:00:00.500 com3 out \"Q /H/r\\r\\n\\r\\n\"\n"
                                            "10:00:01.000 com3 drop \"noise\"\n"
                                            "10:00:02.250 com3 out \"TES\"\n10:00:02.500 com3 out \"T0\\r\\n\"\n"
                                            "10:00:02.600 com3 in \"T,1\\r\\n\"\n10:00:03.000 com3 close\n");
    EXPECT_EQ(line.com, 3);
    EXPECT_EQ(line.baud, 9600U);
    EXPECT_THAT(Steps(line), ElementsAre("O", "H Q /H/r.", "H .", "D noise", "H TEST0.", "A T,1.,"));
    EXPECT_EQ(line.steps[4].ms - line.steps[0].ms, 2500);
    EXPECT_EQ(line.steps[4].number, 6U);
    EXPECT_EQ(line.steps[5].ms - line.steps[4].ms, 100);
}

TEST(TraceReader, ALineThatIsAnsweredBeforeItsEndIsHeardInParts)
{
    EXPECT_THAT(Steps(Only(Opened + "10:00:00.000 com3 out \"+++\"\n10:00:00.100 com3 in \"OK\\r\\n\"\n"
                                    "10:00:00.200 com3 out \"ath0\\r\\n\"\n10:00:00.200 com3 out \"+++\"\n")),
                ElementsAre("O", "H +++", "A OK.,", "H ath0.", "H +++"));
}

TEST(TraceReader, OfAHiddenLineTheBeginningIsLeft)
{
    EXPECT_THAT(Steps(Only(Opened + "10:00:00.000 com3 out \"PASS \\*\"\n10:00:00.100 com3 in \"a\\*\"\n"
                                    "10:00:00.200 com3 out \"\\r\\nEND\\r\\n\\*\\r\\n\"\n"
                                    "10:00:00.300 com3 in \"\\r\\n\"\n")),
                ElementsAre("O", "H PASS *", "A a***", "H END.", "H *", "A .,"));
}

TEST(TraceReader, OnlyWhatHappenedAtTheSpeedOfTheAnswersCounts)
{
    const RecordedLine line = Only(Opened + "10:00:00.000 com3 out \"a\\r\"\n10:00:00.000 com3 in \"x\"\n"
                                            "10:00:00.000 com3 set \"1200,N,8,1\" 2\n"
                                            "10:00:00.000 com3 out \"b\\r\"\n10:00:00.000 com3 in \"xyz\"\n");
    EXPECT_EQ(line.baud, 1200U);
    EXPECT_THAT(Steps(line), ElementsAre("H b.", "A xyz"));
}

TEST(TraceReader, PlacesAreTheSameWhateverTheirLinkIsCalled)
{
    const RecordedTrace trace =
        ReadTrace(Head +
                  "10:00:00.000 tcp1 open \"10.0.0.5:7700\"\n10:00:00.000 tcp2 open \"fe80::1:21\"\n"
                  "10:00:00.000 tcp2 in \"220\\r\\n\"\n10:00:00.000 tcp1 out \"a\\r\\n\"\n10:00:00.000 tcp1 close\n"
                  "10:00:00.000 tcp1 lost\n\n" +
                  Head + "10:00:00.000 tcp1 open \"10.0.0.5:7700\"\n10:00:00.000 tcp1 out \"b\\r\\n\"\n");
    ASSERT_THAT(trace.errors, IsEmpty());
    ASSERT_EQ(trace.lines.size(), 2U);
    EXPECT_EQ(trace.lines[0].host, "10.0.0.5:7700");
    EXPECT_EQ(trace.lines[0].tcpPort, 7700);
    EXPECT_EQ(trace.lines[1].host, "fe80::1:21");
    EXPECT_THAT(Steps(trace.lines[0]), ElementsAre("O", "H a.", "L", "O", "H b."));
    EXPECT_THAT(Steps(trace.lines[1]), ElementsAre("O", "A 220.,"));
}

TEST(TraceReader, TheClockOnlyRises)
{
    const RecordedLine line = Only("23:59:59.900 com3 open \"9600,N,8,1\" 0 \"\"\n"
                                   "00:00:00.100 com3 out \"a\\r\"\n"
                                   "00:00:00.050 com3 in \"b\"\n");
    EXPECT_EQ(line.steps[1].ms - line.steps[0].ms, 200);
    EXPECT_EQ(line.steps[2].ms, line.steps[1].ms);
}

TEST(TraceReader, EachRunHasItsOwnClock)
{
    const std::string evening = "20:00:00.000 com3 open \"9600,N,8,1\" 0 \"\"\n20:00:00.000 com3 out \"a\\r\"\n"
                                "20:00:00.100 com3 in \"b\"\n";
    const std::string morning = "10:00:00.000 com3 out \"a\\r\"\n10:00:00.100 com3 in \"b\"\n";
    const RecordedLine line = Only(evening + "\n" + Head + Opened + morning + "\n" + Head + Opened + morning);
    ASSERT_EQ(line.steps.size(), 9U);
    for (const size_t heard : {1U, 4U, 7U})
        EXPECT_EQ(line.steps[heard + 1].ms - line.steps[heard].ms, 100) << heard;
}

TEST(TraceReader, APortIsLostOnlyAtTheEndAtWhateverSpeed)
{
    const std::string answer = "10:00:00.000 com3 out \"a\\r\"\n10:00:00.000 com3 in \"x\"\n";
    const std::string slower = "10:00:00.000 com3 open \"1200,N,8,1\" 0 \"\"\n";
    const std::string lost = "10:00:00.000 com3 lost\n";
    EXPECT_THAT(Steps(Only(Opened + answer + slower + lost)), ElementsAre("O", "H a.", "A x", "L"));
    EXPECT_THAT(Steps(Only(Opened + answer + lost + slower)), ElementsAre("O", "H a.", "A x"));
    EXPECT_THAT(Steps(Only(Opened + lost + Opened + answer)), ElementsAre("O", "O", "H a.", "A x"));
}

TEST(TraceReader, WhatIsTakenAfterALossHadComeBeforeIt)
{
    EXPECT_THAT(Steps(Only(Opened + "10:00:00.000 com3 out \"a\"\n10:00:00.000 com3 lost\n"
                                    "10:00:00.000 com3 in \"x\"\n10:00:00.000 com3 drop \"y\"\n")),
                ElementsAre("O", "H a", "A x", "D y", "L"));
}

TEST(TraceReader, AHostThatCouldNotBeReachedIsLostToo)
{
    const std::string open = "10:00:00.000 tcp1 open \"host:21\"\n";
    EXPECT_THAT(Steps(Only(open + "10:00:00.000 tcp1 error 10061 \"no\"\n10:00:00.000 tcp1 close\n" + open +
                           "10:00:00.000 tcp1 in \"x\"\n10:00:00.000 tcp1 lost\n" + open)),
                ElementsAre("O", "L", "O", "A x", "L", "O"));
    EXPECT_THAT(Steps(Only(Opened + "10:00:00.000 com3 close\n10:00:00.000 com3 error 8002 \"no such port\"\n")),
                ElementsAre("O"));
}

TEST(TraceReader, ALineThatWasBrokenOffIsPassedOver)
{
    EXPECT_THAT(Steps(Only(Opened + "10:00:00.000 com3 in \"T,\n\n" + Head + "10:00:01.000 com3 open \"9600,N,8")),
                ElementsAre("O"));
}

TEST(TraceReader, WhatIsNoTraceIsTold)
{
    for (const char* text : {"", "\n", "{\"loggers\": []}", "# harvelop trace 2, x\n", "# harvelop trace 10\n"})
        EXPECT_THAT(ReadTrace(text).errors, ElementsAre("line 1: this is no trace, or one of another kind")) << text;
}

TEST(TraceReader, BadLinesAreToldByTheirNumber)
{
    const std::vector<std::pair<std::string, std::string>> bad{
        {"com3 close", "it does not begin with a time"},
        {"10:00:00 com3 close", "it does not begin with a time"},
        {"10:00:00.000 com17 close", "there is no link \"com17\""},
        {"10:00:00.000 com0 close", "there is no link \"com0\""},
        {"10:00:00.000 usb\xff close", "there is no link \"usb?\""},
        {"10:00:00.000 com3 opens", "\"opens\" is nothing that can happen"},
        {"10:00:00.000 com3 open 9600", "the settings of the port are not as they should be"},
        {"10:00:00.000 com3 open \"0,N,8,1\" 0 \"\"", "the settings of the port are not as they should be"},
        {"10:00:00.000 com3 open \"9600,N,8,1\" 3 \"\"", "the settings of the port are not as they should be"},
        {"10:00:00.000 com3 open \"9600,N,8,1\" 0", "something is wrong behind the settings"},
        {"10:00:00.000 com3 set \"9600,N,8,1\" 0 more", "something is wrong behind the settings"},
        {"10:00:00.000 com4 in \"a\"", "its link is not open"},
        {"10:00:00.000 com4 lost", "its link is not open"},
        {"10:00:00.000 tcp1 open \"host\"", "the host is not as it should be"},
        {"10:00:00.000 tcp1 open \"host:70000\"", "the host is not as it should be"},
        {"10:00:00.000 com3 in a", "its text is not as it should be"},
        {"10:00:00.000 com3 in \"a", "its text is not as it should be"},
        {"10:00:00.000 com3 in \"a\" b", "its text is not as it should be"},
        {"10:00:00.000 com3 in \"\\q\"", "its text is not as it should be"},
        {"10:00:00.000 com3 in \"\\x4\"", "its text is not as it should be"},
        {"10:00:00.000 com3 in \"\\x-1\"", "its text is not as it should be"},
        {"10:00:00.000 com3 in \"\xff\"", "its text is not as it should be"},
    };
    for (const auto& [line, error] : bad)
        EXPECT_THAT(Errors(Opened + line + "\n"), ElementsAre("line 3: " + error)) << line;
}

TEST(TraceReader, NoMoreThanTenErrorsAreTold)
{
    std::string text;
    for (int i = 0; i < 100; ++i)
        text += "what\n";
    EXPECT_EQ(Errors(text).size(), 10U);
}

} // namespace

} // namespace harvelop::test
