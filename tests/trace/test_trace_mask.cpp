#include "trace/trace_file.h"
#include "trace/trace_mask.h"

#include <gtest/gtest.h>

namespace harvelop
{

namespace
{

struct MaskTest : testing::Test {
    MaskTest()
    {
        secrets.Learn("GREENHOUSE");
        mask.Write = [this](const TraceEntry& entry) { trace += format.Line(entry); };
        mask.Opened(PasswordWatch::Line::Network);
    }
    void Take(double seconds, const std::string& kind, const std::string& text = {})
    {
        mask.Take({seconds, "tcp1", kind, text});
    }

    TraceSecrets secrets;
    TraceMask mask{secrets};
    TraceFormat format;
    std::string trace;
};

TEST_F(MaskTest, EntriesAreWrittenAtOnceAndInTheirOrder)
{
    Take(1, "connected");
    Take(2, "out", "TEST0\r\n");
    Take(2.5, "in", "T,1:52,5\r\n");
    EXPECT_EQ(trace, "00:00:01.000 tcp1 connected\n"
                     "00:00:02.000 tcp1 out \"TEST0\\r\\n\"\n"
                     "00:00:02.500 tcp1 in \"T,1:52,5\\r\\n\"\n");
}

TEST_F(MaskTest, APasswordInManyPiecesIsOneMark)
{
    for (const char c : std::string("GREENHOUSE\r\n")) {
        Take(1, "out", {c});
        Take(1.5, "in", {c});
    }
    Take(2, "in", "TANK\r\n");
    EXPECT_EQ(trace, "00:00:01.000 tcp1 out \"\\*\"\n"
                     "00:00:01.500 tcp1 in \"\\*\"\n"
                     "00:00:01.000 tcp1 out \"\\r\"\n"
                     "00:00:01.500 tcp1 in \"\\r\"\n"
                     "00:00:01.000 tcp1 out \"\\n\"\n"
                     "00:00:01.500 tcp1 in \"\\n\"\n"
                     "00:00:02.000 tcp1 in \"TANK\\r\\n\"\n");
}

TEST_F(MaskTest, WhatOnlyBeganLikeAPasswordKeepsItsPieces)
{
    Take(1, "in", "GREEN");
    EXPECT_EQ(trace, "");
    Take(2, "in", " GRASS\r\n");
    EXPECT_EQ(trace, "00:00:01.000 tcp1 in \"GREEN\"\n00:00:02.000 tcp1 in \" GRASS\\r\\n\"\n");
}

TEST_F(MaskTest, OtherThingsWaitForTheirTurn)
{
    Take(1, "in", "GREEN");
    Take(2, "lost");
    EXPECT_EQ(trace, "");
    mask.Flush();
    EXPECT_EQ(trace, "00:00:01.000 tcp1 in \"\\*\"\n00:00:02.000 tcp1 lost\n");
}

TEST_F(MaskTest, NothingWaitsLongerThanTenSecondsOrBeyondMidnight)
{
    Take(86399, "in", "GREEN");
    Take(86399.5, "out", "UNANSWERED\r\n");
    Take(8.5, "connected");
    EXPECT_EQ(trace, "");
    Take(9.6, "connected");
    EXPECT_EQ(trace, "23:59:59.000 tcp1 in \"\\*\"\n23:59:59.500 tcp1 out \"UNANSWERED\\r\\n\"\n"
                     "00:00:08.500 tcp1 connected\n00:00:09.600 tcp1 connected\n");
    Take(10, "in", "HOUSE\r\n");
    EXPECT_TRUE(trace.ends_with("\n00:00:10.000 tcp1 in \"\\r\\n\"\n")) << trace;
}

TEST_F(MaskTest, ALineThatIsTypedSlowlyWaitsForItsEnd)
{
    double seconds = 1;
    for (const char c : std::string("sesame\r")) {
        Take(seconds, "out", {c});
        Take(seconds + 0.1, "in", {c}); // its echo
        seconds += 8;
        EXPECT_EQ(trace, "");
    }
    Take(seconds, "in", "\nAccepted\r\n");
    EXPECT_TRUE(trace.ends_with(" in \"\\nAccepted\\r\\n\"\n")) << trace;
    EXPECT_TRUE(trace.starts_with("00:00:01.000 tcp1 out \"\\*\"\n00:00:01.100 tcp1 in \"\\*\"\n"
                                  "00:00:49.000 tcp1 out \"\\r\"\n"))
        << trace;
}

TEST_F(MaskTest, TheBeginningOfALineIsNotGivenUpForTheOneBefore)
{
    Take(1, "out", "DIRJOBS\r\n");
    Take(20, "out", "sesa");
    EXPECT_EQ(trace, "00:00:01.000 tcp1 out \"DIRJOBS\\r\\n\"\n");
    Take(35, "out", "me\r\n");
    Take(36, "in", "Accepted\r\n");
    EXPECT_TRUE(trace.ends_with("00:00:20.000 tcp1 out \"\\*\"\n00:00:35.000 tcp1 out \"\\r\\n\"\n"
                                "00:00:36.000 tcp1 in \"Accepted\\r\\n\"\n"))
        << trace;
}

TEST_F(MaskTest, ALineThatNeverEndedMayBeAPassword)
{
    Take(1, "out", "sesa");
    Take(1.1, "in", "sesa");
    mask.Flush();
    EXPECT_EQ(trace, "00:00:01.000 tcp1 out \"\\*\"\n00:00:01.100 tcp1 in \"\\*\"\n");
}

TEST_F(MaskTest, TheModemsEscapeNeedsNoLineEnd)
{
    Take(1, "out", "+++");
    mask.Flush();
    EXPECT_EQ(trace, "00:00:01.000 tcp1 out \"+++\"\n");
}

TEST_F(MaskTest, WhatWasHiddenOfOneLinkHidesNothingOfTheNext)
{
    Take(1, "in", "GREENHOUSE");
    Take(1, "out", "GREEN");
    mask.Flush();
    mask.Opened(PasswordWatch::Line::Network);
    Take(2, "open", "\"x:1\"");
    Take(3, "in", "TANK\r\n");
    Take(4, "in", "GREENHOUSE\r\n");
    EXPECT_EQ(trace, "00:00:01.000 tcp1 in \"\\*\"\n00:00:01.000 tcp1 out \"\\*\"\n00:00:02.000 tcp1 open \"x:1\"\n"
                     "00:00:03.000 tcp1 in \"TANK\\r\\n\"\n00:00:04.000 tcp1 in \"\\*\\r\\n\"\n");
}

TEST_F(MaskTest, NoMoreThanAThousandEntriesWait)
{
    Take(1, "in", "GREEN");
    for (int i = 0; i < 1001; ++i)
        Take(1, "connected");
    EXPECT_NE(trace, "");
    EXPECT_EQ(trace.find("GREEN"), std::string::npos);
}

TEST_F(MaskTest, AnUnknownPasswordIsMaskedOnceItIsAccepted)
{
    Take(1, "out", "sesame\r\n");
    Take(1.1, "in", "sesame\r\n"); // its echo
    EXPECT_EQ(trace, "");
    Take(1.2, "in", "Accepted\r\n");
    Take(2, "in", "open sesame\r\n");
    EXPECT_EQ(trace, "00:00:01.000 tcp1 out \"\\*\\r\\n\"\n"
                     "00:00:01.100 tcp1 in \"\\*\\r\\n\"\n"
                     "00:00:01.200 tcp1 in \"Accepted\\r\\n\"\n"
                     "00:00:02.000 tcp1 in \"open \\*\\r\\n\"\n");
}

} // namespace

} // namespace harvelop
