// What happens to received text, from the port's event to the terminal.

#include "link_bench.h"

#include <gmock/gmock.h>

namespace harvelop::test
{
namespace
{

using testing::ElementsAre;

class ReceiveTextTest : public LinkTest
{
protected:
    ReceiveTextTest() { OpenPort1(); }

    void arrive(const std::string& text)
    {
        serial.Arrive(text);
        waiting.ServeEvents();
    }
};

TEST_F(ReceiveTextTest, TextFromThePortGoesToBothBuffers)
{
    arrive("ab");
    arrive(std::string("c\0d", 3));
    EXPECT_EQ(exchange.txtCharacterWindow.Text(), std::string("abc\0d", 5));
    EXPECT_EQ(exchange.txtTerminal.Unseen(), std::string("abc\0d", 5));
    EXPECT_EQ(link.ReceivedText, std::string("c\0d", 3));
}

TEST_F(ReceiveTextTest, TextFromTheNetworkGoesToBothBuffers)
{
    arrive("ab");
    link.EthernetChunk = "cd";
    exchange.ReceiveText("Ethernet");
    EXPECT_EQ(exchange.txtCharacterWindow.Text(), "abcd");
    EXPECT_EQ(exchange.txtTerminal.Unseen(), "abcd");
    EXPECT_EQ(link.ReceivedText, "cd");
}

TEST_F(ReceiveTextTest, ThePortIsSilentWhileItIsDrained)
{
    int during = -1;
    rs232.ReceiveText = [&] {
        during = serial.threshold;
        exchange.ReceiveText("ComPort");
    };
    arrive("ab");
    EXPECT_EQ(during, 0);
    EXPECT_EQ(serial.threshold, 1);
    EXPECT_THAT(serial.calls, ElementsAre("RThreshold 0", "RThreshold 1"));
}

TEST_F(ReceiveTextTest, DrainingGoesOnWhileCharactersWait)
{
    int reads = 0;
    rs232.ReceiveText = [&] {
        exchange.ReceiveText("ComPort");
        if (++reads < 3)
            pump.ServePending();
    };
    serial.Arrive("a");
    serial.Arrive("b");
    serial.Arrive("c");
    pump.ServePending();
    EXPECT_EQ(exchange.txtCharacterWindow.Text(), "abc");
    EXPECT_EQ(serial.InBufferCount(), 0);
}

TEST_F(ReceiveTextTest, TheThresholdReturnsToTheOneInUse)
{
    link.ReceiveThreshold = 4;
    arrive("ab");
    EXPECT_EQ(serial.threshold, 4);
}

TEST_F(ReceiveTextTest, OtherEventsOfThePortAreIgnored)
{
    serial.RThreshold(0);
    arrive("ab");
    for (const int event : {0, 1, 3, 1009}) {
        serial.CommEvent = event;
        rs232.MSComm1_OnComm();
        EXPECT_EQ(serial.InBufferCount(), 2);
    }
    serial.CommEvent = CommEventReceived;
    rs232.MSComm1_OnComm();
    EXPECT_EQ(exchange.txtCharacterWindow.Text(), "ab");
}

TEST_F(ReceiveTextTest, SilencedTextStaysInThePort)
{
    serial.RThreshold(0);
    arrive("ab");
    EXPECT_EQ(exchange.txtCharacterWindow.Text(), "");
    EXPECT_EQ(serial.InBufferCount(), 2);
}

TEST_F(ReceiveTextTest, AnOpenTerminalShowsEverythingSoFar)
{
    arrive("before ");
    EXPECT_EQ(terminal.updates, 0);
    state.TerminalOpen = true;
    arrive("after");
    EXPECT_EQ(terminal.received, "before after");
}

TEST_F(ReceiveTextTest, TheTerminalRestsWhileSomethingElseWorksOnTheLink)
{
    state.TerminalOpen = true;
    for (bool ProgramState::*busy :
         {&ProgramState::QuietConnect, &ProgramState::SearchRunning, &ProgramState::TestRunning}) {
        state.*busy = true;
        arrive("x");
        EXPECT_EQ(terminal.updates, 0);
        state.*busy = false;
    }
    arrive("y");
    EXPECT_EQ(terminal.updates, 1);
    EXPECT_EQ(terminal.received, "xxxy");
}

TEST_F(ReceiveTextTest, TheTerminalIsHandedOnlyWhatIsNew)
{
    state.TerminalOpen = true;
    arrive("ab");
    terminal.received.clear();
    arrive("cd");
    EXPECT_EQ(terminal.received, "cd");
}

TEST_F(ReceiveTextTest, AnEmptiedCopyEmptiesThePaneWhenTheNextTextComes)
{
    state.TerminalOpen = true;
    arrive("old");
    exchange.txtTerminal.clear();
    EXPECT_EQ(terminal.received, "old");
    arrive("new");
    EXPECT_EQ(terminal.received, "new");
    arrive("er");
    EXPECT_EQ(terminal.received, "newer");
}

TEST_F(ReceiveTextTest, WhatWasEmptiedBeforeItWasSeenNeverShows)
{
    state.TerminalOpen = state.QuietConnect = true;
    arrive("TEST0");
    exchange.txtTerminal.clear();
    arrive("hello");
    state.QuietConnect = false;
    arrive(" you");
    EXPECT_EQ(terminal.received, "hello you");
}

TEST_F(ReceiveTextTest, AnOpenTerminalWithoutAWindowIsPassedOver)
{
    state.TerminalOpen = true;
    forms.terminal = nullptr;
    arrive("x");
    EXPECT_EQ(exchange.txtTerminal.Unseen(), "x");
}

TEST_F(ReceiveTextTest, TheTerminalsCopyDoesNotOverflowWhileItIsOpen)
{
    state.TerminalOpen = true;
    arrive(std::string(65500, 'x'));
    arrive("y");
    EXPECT_EQ(exchange.txtCharacterWindow.Text(), "");
    EXPECT_EQ(terminal.received, std::string(65500, 'x') + "y");
    EXPECT_TRUE(exchange.txtTerminal.empty());
}

TEST_F(ReceiveTextTest, OnlyTheEndOfTheTerminalsCopyIsKeptWhileNoneIsOpen)
{
    for (int i = 0; i < 100; ++i)
        arrive(std::string(10000, 'x'));
    arrive("the end");
    EXPECT_EQ(exchange.txtTerminal.Unseen().size(), 65500u);
    EXPECT_TRUE(exchange.txtTerminal.Unseen().ends_with("xthe end"));
    arrive(std::string(200000, 'z'));
    EXPECT_EQ(exchange.txtTerminal.Unseen(), std::string(65500, 'z'));
}

TEST_F(ReceiveTextTest, AFloodEmptiesTheWindowAgainAndAgain)
{
    for (int i = 0; i < 100; ++i)
        arrive(std::string(10000, 'x'));
    EXPECT_LT(exchange.txtCharacterWindow.Text().size(), ReceiveWindow::OverflowLength);
    EXPECT_EQ(exchange.txtCharacterWindow.WindowClearCount, 14);
}

} // namespace
} // namespace harvelop::test
