#include "trace/password_watch.h"

#include <gtest/gtest.h>

namespace harvelop
{

namespace
{

struct WatchTest : testing::Test {
    TraceSecrets secrets;
    PasswordWatch watch{secrets};

    void Say(const std::string& text, const std::string& answer = {})
    {
        watch.Sent(text + "\r\n");
        watch.Received(answer);
    }
    bool Knows(const std::string& text) const { return secrets.LookAt(text, true, true) == TraceSecrets::Match::Whole; }
};

TEST_F(WatchTest, TheFirstLineOnAComPortIsAPassword)
{
    watch.Opened(PasswordWatch::Line::ComPort);
    Say("\x7f", "<<\r\n");
    Say("Q /H/r\r\n");
    EXPECT_FALSE(Knows("Q /H/r"));
}

TEST_F(WatchTest, BehindTheProbeAndTheCommandsThePasswordIsStillTheFirst)
{
    watch.Opened(PasswordWatch::Line::ComPort);
    Say("\x7f");
    Say("Q /H/r");
    Say("GREENHOUSE");
    Say("TANK", "no\r\n");
    EXPECT_TRUE(Knows("GREENHOUSE"));
    EXPECT_FALSE(Knows("TANK"));
}

TEST_F(WatchTest, AnEmptyLineInThePlaceOfThePasswordIsNone)
{
    watch.Opened(PasswordWatch::Line::ComPort);
    Say("");
    Say("DIRJOBS", "*PUMP\r\n");
    EXPECT_FALSE(Knows("DIRJOBS"));
}

TEST_F(WatchTest, BehindAModemThePasswordComesAfterTheCall)
{
    watch.Opened(PasswordWatch::Line::ComPort);
    watch.Sent("+++");
    Say("ath0", "OK\r\n");
    Say("ate0v1", "OK\r\n");
    Say("at&f&c1", "OK\r\n");
    Say("atdt5550123", "\r\n~ CONNECT 9600\r\n");
    Say("GREENHOUSE");
    EXPECT_TRUE(Knows("GREENHOUSE"));
    EXPECT_FALSE(Knows("at&f&c1"));
    EXPECT_FALSE(Knows("atdt5550123"));
}

TEST_F(WatchTest, WhatIsSentToALockedLoggerIsAPassword)
{
    watch.Opened(PasswordWatch::Line::Network);
    Say("\x7f", "<<\r\n");
    Say("GREENHOUS");
    Say("/h/R/U/N");
    Say("GREENHOUSE", "Accepted\r\n");
    Say("DIRJOBS", "*PUMP\r\n");
    EXPECT_TRUE(Knows("GREENHOUS"));
    EXPECT_TRUE(Knows("GREENHOUSE"));
    EXPECT_FALSE(Knows("/h/R/U/N"));
    EXPECT_FALSE(Knows("DIRJOBS"));
}

TEST_F(WatchTest, AnEchoUnlocksNothing)
{
    watch.Opened(PasswordWatch::Line::Network);
    Say("\x7f", "\x7f\r\n<<\r\n");
    Say("Q /H/r\r\n", "Q /H/r\r\n");
    Say("TANK", "TANK\r\n");
    Say("GREENHOUS", "<<greenhous\r\n");
    EXPECT_TRUE(Knows("TANK"));
    EXPECT_TRUE(Knows("GREENHOUS"));
    Say("GREENHOUSE", "Accepted\r\n");
    Say("DIRJOBS", "*PUMP\r\n");
    EXPECT_FALSE(Knows("DIRJOBS"));
}

TEST_F(WatchTest, AnEchoBehindAPromptIsNoAnswer)
{
    watch.Opened(PasswordWatch::Line::Network);
    Say("d", ">d\r\nAccepted\r\n");
    EXPECT_TRUE(Knows("d"));
}

TEST_F(WatchTest, ALoggerThatAnswersIsNotLocked)
{
    watch.Opened(PasswordWatch::Line::Network);
    Say("\x7f", "<<\r\n");
    Say("TEST0", "T,1:52,5\r\n");
    Say("DIRJOBS");
    EXPECT_FALSE(Knows("DIRJOBS"));
}

TEST_F(WatchTest, WhatIsAcceptedWasAPasswordAndIsHeldUntilThen)
{
    watch.Opened(PasswordWatch::Line::Network);
    for (const char c : std::string("GREENHOUSE")) {
        watch.Sent({&c, 1});
        watch.Received({&c, 1}); // its echo
        EXPECT_TRUE(watch.Undecided());
    }
    watch.Sent("\r\n");
    watch.Received("\r\n\r\nAcc");
    EXPECT_TRUE(watch.Undecided());
    watch.Received("epted\r\n");
    EXPECT_FALSE(watch.Undecided());
    EXPECT_TRUE(Knows("GREENHOUSE"));
}

TEST_F(WatchTest, WhatIsAcceptedWasAPasswordWhateverFollowedItBeforeThatAnswer)
{
    watch.Opened(PasswordWatch::Line::Network);
    watch.Sent("GREENHOUSE\r\nTEST0\r\n\r\nDIRJOBS\r\n");
    EXPECT_TRUE(watch.Undecided());
    watch.Received("GREENHOUSE\r\nTEST0\r\n\r\n"); // their echo
    EXPECT_TRUE(watch.Undecided());
    watch.Received("Accepted\r\n");
    EXPECT_FALSE(watch.Undecided());
    EXPECT_TRUE(Knows("GREENHOUSE"));
    EXPECT_FALSE(Knows("TEST0"));
    EXPECT_TRUE(Knows("DIRJOBS")); // it may have been this one
}

TEST_F(WatchTest, AnotherAnswerDecidesOnAllLinesBeforeIt)
{
    watch.Opened(PasswordWatch::Line::Network);
    Say("DIRJOBS");
    Say("TEST0", "*PUMP\r\n");
    EXPECT_FALSE(watch.Undecided());
    Say("GREENHOUSE", "Accepted\r\n");
    EXPECT_TRUE(Knows("GREENHOUSE"));
    EXPECT_FALSE(Knows("DIRJOBS"));
}

TEST_F(WatchTest, OfEndlessLinesWithoutAnAnswerTheLastOnesCount)
{
    watch.Opened(PasswordWatch::Line::Network);
    for (int i = 0; i < 1100; ++i)
        Say("line" + std::to_string(i) + ".");
    watch.Received("Accepted\r\n");
    EXPECT_FALSE(Knows("line99."));
    EXPECT_TRUE(Knows("line100."));
    EXPECT_TRUE(Knows("line1099."));
}

TEST_F(WatchTest, ALoggerIsLockedAlsoIfItAnswersTheProbeLate)
{
    watch.Opened(PasswordWatch::Line::Network);
    Say("\x7f");
    Say("Q /H/r", "<<\r\n");
    Say("GREENHOUSE");
    EXPECT_TRUE(Knows("GREENHOUSE"));
}

TEST_F(WatchTest, ALineThatIsAnsweredOtherwiseIsDecided)
{
    watch.Opened(PasswordWatch::Line::Network);
    Say("DIRJOBS");
    EXPECT_TRUE(watch.Undecided());
    watch.Received("*PUMP\r\n");
    EXPECT_FALSE(watch.Undecided());
    EXPECT_FALSE(Knows("DIRJOBS"));
    Say("TEST0");
    EXPECT_FALSE(watch.Undecided());
}

TEST_F(WatchTest, LoginsToServersNameTheirPasswords)
{
    watch.Opened(PasswordWatch::Line::Network);
    Say("USER abcd", "331 password?\r\n");
    Say("pass sesame", "230 go on\r\n");
    EXPECT_TRUE(Knows("sesame"));
    EXPECT_FALSE(Knows("abcd"));
    watch.Opened(PasswordWatch::Line::Network);
    Say("AUTH PLAIN AGFiYwBzZWNyZXQ=", "235 go on\r\n");
    EXPECT_TRUE(Knows("AGFiYwBzZWNyZXQ="));
    watch.Opened(PasswordWatch::Line::Network);
    Say("AUTH LOGIN", "334 VXNlcm5hbWU6\r\n");
    Say("YWJjZGVm=", "535 no\r\n");
    Say("c2VjcmV0", "503 no\r\n");
    EXPECT_TRUE(Knows("YWJjZGVm="));
    EXPECT_TRUE(Knows("c2VjcmV0"));
    EXPECT_FALSE(Knows("AUTH LOGIN"));
    watch.Opened(PasswordWatch::Line::Network);
    Say("ehlo me", "250 x\r\n");
    EXPECT_FALSE(Knows("ehlo me"));
}

TEST_F(WatchTest, APasswordThatIsSetIsKnownFromThenOn)
{
    watch.Opened(PasswordWatch::Line::Network);
    Say("PASSWORD=\"sesame\"");
    EXPECT_TRUE(Knows("\"sesame\""));
}

} // namespace

} // namespace harvelop
