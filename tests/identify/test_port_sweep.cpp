#include "identify_program.h"

#include <gtest/gtest.h>

namespace harvelop::test
{

using Lines = std::vector<std::string>;

namespace
{

using Kind = FakeSerial::Event::Kind;

const Lines AllRates = {"115200", "57600", "56000", "38400", "28800", "19200", "14400", "9600", "4800", "2400", "1200"};

// The rates that were set, in order.
Lines ratesTried(const FakeSerial& serial)
{
    Lines rates;
    for (const auto& event : serial.events)
        if (event.kind == Kind::Settings)
            rates.push_back(event.text.substr(0, event.text.find(',')));
    return rates;
}

} // namespace

TEST(PortSweep, ASilentPortCostsThePrescribedWaitsAndNothingMore)
{
    IdentifyProgram t;
    t.serial.Plug(3, nullptr, "");
    t.heart.progress.ShowMessageForm();
    t.heart.portSearch.SearchPort(3, "127");
    EXPECT_EQ(ratesTried(t.serial), AllRates);
    EXPECT_FALSE(t.Search().LoggerFound);
    EXPECT_EQ(t.Search().PortBaud.at(2), "0");
    // Eleven times 500 ms, the time for each rate's reply, then 500 and 1000 ms.
    EXPECT_NEAR(t.pump.NowMs(), 11 * 500 + (10 + 20 + 30 + 40 + 50 + 100 + 200 + 300 + 400 + 500 + 1000) + 500 + 1000,
                0.5);
    EXPECT_EQ(t.messages.Caption(), "<- No tallyCores Found on Com 3");
    EXPECT_EQ(t.messages.max, 11);
    EXPECT_EQ(t.messages.value, 0);
}

TEST(PortSweep, EachRateIsTriedToTheByte)
{
    IdentifyProgram t;
    t.serial.Plug(12, nullptr, "");
    t.heart.progress.ShowMessageForm();
    t.heart.portSearch.SearchPort(12, "127");
    const double starts[] = {0, 510, 1030, 1560, 2100, 2650, 3250, 3950, 4750, 5650, 6650};
    const auto wire = t.Wire();
    ASSERT_EQ(wire.size(), 11u);
    size_t rate = 0;
    for (const double start : starts) {
        EXPECT_EQ(wire[rate], std::to_string(std::lround(start)) + " \x7f\r\n\x7f\r\n");
        EXPECT_TRUE(t.Said("Trying Com 12 : " + AllRates[rate] + " baud")) << AllRates[rate];
        ++rate;
    }
    for (const auto& event : t.serial.events)
        EXPECT_TRUE(event.kind != Kind::Settings || event.text.ends_with(",N,8,1")) << event.text;
    EXPECT_EQ(t.serial.handshaking, 1);
    EXPECT_EQ(t.heart.link.FlowControl, "SWFC");
    EXPECT_EQ(t.Search().PortParity.at(11), "N");
    EXPECT_EQ(t.Search().PortDataBits.at(11), "8");
    EXPECT_EQ(t.Search().PortStopBits.at(11), "1");
    EXPECT_EQ(t.Search().PortFlow.at(11), "SWFC");
    EXPECT_EQ(t.Search().BaudText, "1200");
}

TEST(PortSweep, AnAnswerStopsTheSweepAtOnce)
{
    for (const std::string& rate : AllRates) {
        IdentifyProgram t;
        t.serial.Plug(3, Logger("KR200", "1", "7.18"), rate);
        t.heart.portSearch.SearchPort(3, "127");
        const Lines tried = ratesTried(t.serial);
        EXPECT_EQ(tried.back(), rate);
        EXPECT_EQ(tried, Lines(AllRates.begin(), std::find(AllRates.begin(), AllRates.end(), rate) + 1));
        EXPECT_TRUE(t.Search().LoggerFound);
        EXPECT_EQ(t.Search().PortBaud.at(2), rate);
        EXPECT_EQ(t.Search().FoundBaud, std::stof(rate));
        EXPECT_EQ(t.Search().IdentifiedModel.Get(1), "KR200");
        EXPECT_EQ(t.heart.state.CurrentLogger, 1);
    }
}

TEST(PortSweep, ALoggerAt600Or300BaudIsNotFound)
{
    for (const char* rate : {"600", "300"}) {
        IdentifyProgram t;
        t.serial.Plug(3, Logger("KR200", "1", "7.18"), rate);
        t.heart.portSearch.SearchPort(3, "127");
        EXPECT_FALSE(t.Search().LoggerFound);
        EXPECT_EQ(ratesTried(t.serial), AllRates);
    }
}

TEST(PortSweep, ThreeCharactersInARowAreAnAnswerTwoAreNot)
{
    for (const auto& [answer, found] : {std::pair{"<<<", true}, std::pair{"<<", false}, std::pair{"<", false}}) {
        IdentifyProgram t;
        t.serial.Plug(3, nullptr, "");
        t.pump.After(100, [&t, text = answer] { t.serial.Arrive(text); });
        t.heart.portSearch.SearchPort(3, "127");
        EXPECT_EQ(t.Search().LoggerFound, found) << answer;
    }
}

TEST(PortSweep, TheProbesOwnStatusStopsTheSweepWhateverTheIdentificationCameTo)
{
    IdentifyProgram t;
    t.serial.Plug(3, std::make_shared<ScriptedLogger>(std::map<std::string, std::string>{{"\x7f", "<<\r\n"}}), "38400");
    t.dialogs.ExpectPassword("wrong");
    t.heart.portSearch.SearchPort(3, "127");
    EXPECT_EQ(ratesTried(t.serial).back(), "38400");
    EXPECT_EQ(t.heart.link.ResponseStatus, "PASS");
    EXPECT_EQ(t.Search().PortBaud.at(2), "38400");
    EXPECT_TRUE(t.Search().LoggerFound);
    EXPECT_EQ(t.heart.state.CurrentLogger, 1);
    EXPECT_EQ(t.Search().IdentifiedModel.Get(1), "");
}

TEST(PortSweep, ACancelledPasswordQuestionGivesTheNumberBackAndEndsTheSweep)
{
    IdentifyProgram t;
    t.serial.Plug(3, Logger("KR305", "3", "9.05", "", "mountain"), "9600");
    t.dialogs.ExpectPassword("");
    t.heart.portSearch.SearchPort(3, "127");
    EXPECT_FALSE(t.Search().LoggerFound);
    EXPECT_EQ(t.heart.state.CurrentLogger, 0);
    EXPECT_EQ(ratesTried(t.serial).back(), "9600");
}

TEST(PortSweep, ABusyPortIsToldOnceAndSkipped)
{
    IdentifyProgram t;
    t.serial.ports[3].openError = PortBusy;
    t.dialogs.Expect(BoxAnswer::Ok);
    t.heart.portSearch.SearchPort(3, "127");
    EXPECT_EQ(t.dialogs.shown.at(0).text, "Can't Connect to Com 3 : the Port is Busy.     ");
    EXPECT_TRUE(ratesTried(t.serial).empty());
    EXPECT_FALSE(t.Search().LoggerFound);
    EXPECT_EQ(t.Search().PortBaud.at(2), "");
}

TEST(PortSweep, AMissingPortAndANumberWithoutAPortAreSkipped)
{
    IdentifyProgram t;
    for (const int port : {5, 0, 17, -1}) {
        t.Search().LoggerFound = true;
        t.heart.portSearch.SearchPort(port, "127");
        EXPECT_FALSE(t.Search().LoggerFound) << port;
        EXPECT_EQ(t.pump.NowMs(), 0);
    }
}

TEST(PortSweep, APortThatVanishesInTheMiddleEndsInNothingFound)
{
    IdentifyProgram t;
    t.serial.Plug(3, nullptr, "");
    t.pump.After(2000, [&] {
        t.serial.Close();
        t.serial.ports.clear();
    });
    t.heart.portSearch.SearchPort(3, "127");
    EXPECT_FALSE(t.Search().LoggerFound);
    EXPECT_NEAR(t.pump.NowMs(), 9650, 0.5);
}

TEST(PortSweep, TextLeftOverFromOneRateIsNoAnswerAtTheNext)
{
    IdentifyProgram t;
    t.serial.Plug(3, nullptr, "");
    t.heart.exchange.txtCharacterWindow.Set("<<<<");
    t.heart.portSearch.SearchPort(3, "127");
    EXPECT_FALSE(t.Search().LoggerFound);
}

TEST(PortSweep, TheProgressLineStaysForTheAddDialogAndAnAbortedWait)
{
    for (bool ProgramState::*flag : {&ProgramState::AddDialogOpen, &ProgramState::AbortWait}) {
        IdentifyProgram t;
        t.OpenLine(nullptr);
        t.heart.progress.ShowMessageForm();
        t.heart.state.*flag = true;
        t.heart.portSearch.TryPortAtBaud("9600", "127");
        EXPECT_FALSE(t.Said("Trying Com 3 : 9600 baud"));
        EXPECT_EQ(t.messages.value, 1);
    }
}

TEST(PortSweep, ALanguageFileTellsItInItsWords)
{
    IdentifyProgram t;
    t.UseLanguage({371, 372, 373});
    t.serial.Plug(3, nullptr, "");
    t.heart.progress.ShowMessageForm();
    t.heart.portSearch.SearchPort(3, "127");
    EXPECT_TRUE(t.Said("[372]9600 : 3[373]"));
    EXPECT_EQ(t.messages.Caption(), "<- [371] 3");
}

TEST(PortSweep, AModemIsProbedWithTheTextItself)
{
    IdentifyProgram t;
    t.OpenLine(std::make_shared<ScriptedLogger>(std::map<std::string, std::string>{{"at", "\r\nOK\r\n"}}));
    t.heart.link.ConnectionKind = "Dialup";
    t.heart.state.StopSearch = false;
    t.heart.portSearch.TryPortAtBaud("9600", "at");
    EXPECT_EQ(t.Wire().front(), "0 at\r\n");
    EXPECT_TRUE(t.Search().LoggerFound);
}

TEST(PortSweep, NothingIsTriedWhileTheSearchIsStopped)
{
    IdentifyProgram t;
    t.serial.Plug(3, Logger("KR200", "1", "7.18"), "");
    t.heart.state.StopSearch = true;
    t.heart.portSearch.SearchPort(3, "127");
    t.heart.portSearch.TryPortAtBaud("9600", "127");
    EXPECT_TRUE(t.serial.events.empty());
    EXPECT_EQ(t.pump.NowMs(), 0);
}

TEST(PortSweep, TheReceiveThresholdIsBackAfterEachRate)
{
    IdentifyProgram t;
    t.OpenLine(nullptr);
    t.serial.threshold = 0;
    t.heart.portSearch.TryPortAtBaud("9600", "127");
    EXPECT_EQ(t.serial.threshold, 1);
}

} // namespace harvelop::test
