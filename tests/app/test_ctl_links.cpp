// Adding, testing, reaching and talking to loggers from the command line.
#include "ctl_bench.h"
#include "simulator/simulated_logger.h"
#include "simulator/simulated_modem.h"

#include <gtest/gtest.h>

namespace harvelop::test
{

namespace
{

using Words = std::vector<std::string>;

std::shared_ptr<SimulatedLogger> logger(const std::string& model, const std::string& series = "",
                                        Failure failure = Failure::None, const std::string& password = "")
{
    LoggerConfig config;
    config.model = model;
    config.series = series;
    config.failure = failure;
    config.password = password;
    return std::make_shared<SimulatedLogger>(config);
}

// The three kinds of links, a logger at each: 1 on com port 1, 2 behind the modem on com port 3, 3 on the network.
struct LinkedCtl : StoredCtl {
    LinkedCtl()
    {
        Plug(logger("KR200", "2"), logger("KR305", "3", Failure::None, "se cret"), logger("KR40"));
        File("options.ini") = "Icons=4\r\nShowMessages=1\r\nModemTimeout=45\r\n";
    }
    void Plug(const std::shared_ptr<SimulatedDevice>& onPort, const std::shared_ptr<SimulatedDevice>& behindModem,
              const std::shared_ptr<SimulatedDevice>& onNetwork)
    {
        ModemConfig config;
        config.baud = 19200;
        serial.Plug(1, onPort, "9600");
        const PhoneBook known = behindModem ? PhoneBook{{"0,,12345", behindModem}} : PhoneBook();
        serial.Plug(3, std::make_shared<SimulatedModem>(config, known), "19200");
        sockets.Plug("10.0.0.5", 3000, onNetwork);
    }
    bool Said(const std::string& line) const
    {
        return ("\n" + said.str()).find("\n" + line + "\n") != std::string::npos;
    }
    // Nothing is open any more.
    bool Released() const
    {
        return !serial.PortOpen() && std::all_of(sockets.made.begin(), sockets.made.end(), [](FakeSocket* socket) {
            return !socket || socket->State() == SocketControl::Condition::Closed;
        });
    }
    // All that went out on the network.
    bool SentOnNetwork(const std::string& text) const
    {
        return std::ranges::find(sockets.steps, "1 send " + text + "\r\n") != sockets.steps.end();
    }
    bool SentOnPort(const std::string& text) const { return serial.Sent().find(text + "\r\n") != std::string::npos; }
};

constexpr const char* NetworkAnswer = "T,tallyCore 40 Version 5.06.0001";

} // namespace

TEST(CtlLinks, AddStoresALoggerAndPrintsItsNumber)
{
    LinkedCtl t;
    EXPECT_EQ(t.Run({"add", "--model", "KR41", "--com", "7", "--baud", "9600"}), CtlDone);
    EXPECT_EQ(t.out.str(), "4\n");
    EXPECT_EQ(t.said.str(), "");
    EXPECT_EQ(t.Run({"show", "4"}), CtlDone);
    for (const char* line : {"LoggerModel=KR41\n", "LoggerPort=7\n", "LoggerBaud=9600\n", "LoggerParity=None\n",
                             "LoggerIconKey=::5\n", "LoggerTimeout=10\n", "LoggerKept=1\n"})
        EXPECT_NE(t.out.str().find(line), std::string::npos) << line;
    EXPECT_TRUE(t.serial.events.empty());
}

TEST(CtlLinks, AddWorksInAnEmptyDirectoryAndTouchesNoPort)
{
    StoredCtl t(std::vector<LoggerRecord>{});
    t.files.files.clear();
    t.serial.Plug(1, nullptr, "");
    EXPECT_EQ(t.Run({"add", "--model", "KR20", "--com", "1"}), CtlDone);
    EXPECT_EQ(t.out.str(), "1\n");
    EXPECT_TRUE(t.serial.events.empty());
    EXPECT_EQ(t.files.files.size(), 2u);
}

TEST(CtlLinks, AFiftyFirstLoggerIsRefused)
{
    StoredCtl t(std::vector<LoggerRecord>(50, NetworkLogger()));
    t.dialogs.Expect(BoxAnswer::Ok);
    EXPECT_EQ(t.Refusal({"add", "--model", "KR20", "--com", "1"}), "");
    EXPECT_EQ(t.dialogs.shown.at(0).text, "You can only have 50 tallyCores in the list at once.     ");
    EXPECT_EQ(StoredCtl(std::vector<LoggerRecord>(49, NetworkLogger())).Run({"add", "--model", "KR20", "--com", "1"}),
              CtlDone);
}

TEST(CtlLinks, WhatCannotBeReadOrWrittenIsTold)
{
    StoredCtl t;
    t.files.unreadable.insert(TestProgram::OptionsIni);
    for (const Words& words : {Words{"add", "--model", "KR20", "--com", "1"},
                               {"test", "1"},
                               {"connect", "1"},
                               {"send", "1", "x"},
                               {"terminal", "1"}})
        EXPECT_EQ(t.Refusal(words), "The file /home/user/loggers/options.ini can't be read.\n");
    t.files.unreadable = {TestProgram::FoundIni};
    for (const Words& words : {Words{"add", "--model", "KR20", "--com", "1"},
                               {"test", "1"},
                               {"connect", "1"},
                               {"send", "1", "x"},
                               {"terminal", "1"}})
        EXPECT_EQ(t.Refusal(words), "The file /home/user/loggers/found.ini can't be read.\n");
    t.files.unreadable.clear();
    t.files.full = true;
    EXPECT_EQ(t.Refusal({"add", "--model", "KR20", "--com", "1"}),
              "The file /home/user/loggers/found.ini can't be written.\n");
    EXPECT_TRUE(t.serial.events.empty());
}

TEST(CtlLinks, ALoggerThatIsNotStoredIsRefused)
{
    for (const Words& words : {Words{"test", "4"}, {"connect", "4"}, {"send", "4", "x"}, {"terminal", "4"}}) {
        StoredCtl t;
        EXPECT_EQ(t.Refusal(words), "There is no logger 4.\n");
    }
}

TEST(CtlLinks, TestTellsWhatStandsThereAndStoresNothing)
{
    const std::vector<std::pair<std::string, std::string>> boxes = {
        {"1", "Found a KR200 Series 2 connected to Com Port 1 @ 9600,N,8,1,SWFC.     "},
        {"2", "Found a KR305 Series 3 connected to the Modem on Com Port 3.     "},
        {"3", "Found a KR40 at IP address 10.0.0.5 on TCP port 3000.     "}};
    for (const auto& [number, text] : boxes) {
        LinkedCtl t;
        const auto before = t.files.files;
        t.dialogs.Expect(BoxAnswer::Ok);
        EXPECT_EQ(t.Run({"test", number}), CtlDone);
        EXPECT_EQ(t.dialogs.shown.at(0).text, text);
        EXPECT_TRUE(t.Said("Checking Online Status ...")) << t.said.str();
        EXPECT_TRUE(t.Said("Disconnecting ..."));
        EXPECT_EQ(t.files.files, before);
        EXPECT_EQ(t.out.str(), "");
        EXPECT_TRUE(t.Released());
    }
}

TEST(CtlLinks, TestStoresNoPasswordThatItAskedFor)
{
    LinkedCtl t;
    t.Plug(logger("KR200", "2", Failure::None, "mountain"), nullptr, nullptr);
    const auto before = t.files.files;
    t.dialogs.ExpectPassword("mountain");
    t.dialogs.Expect(BoxAnswer::Ok);
    EXPECT_EQ(t.Run({"test", "1"}), CtlDone);
    EXPECT_EQ(t.files.files, before);
    EXPECT_EQ(t.said.str().find("mountain"), std::string::npos);
}

TEST(CtlLinks, TestThatFindsNothingFails)
{
    LinkedCtl t;
    t.Plug(nullptr, nullptr, nullptr);
    for (const char* number : {"1", "2", "3"}) {
        t.dialogs.Expect(BoxAnswer::Ok);
        EXPECT_EQ(t.Run({"test", number}), CtlFailed);
        EXPECT_TRUE(t.Said("No logger was found.")) << t.said.str();
        EXPECT_TRUE(t.Released());
    }
    LinkedCtl absent;
    absent.serial.ports.clear();
    EXPECT_EQ(absent.Run({"test", "1"}), CtlFailed);
    EXPECT_TRUE(absent.Said("No logger was found."));
}

TEST(CtlLinks, ConnectReachesTheLoggerOfEachKindAndReleasesIt)
{
    const std::vector<std::pair<std::string, std::string>> found = {
        {"1", "Found a KR200 Series 2 on Com 1"},
        {"2", "Found a KR305 Series 3 via the Modem on Com 3"},
        {"3", "Found a KR40 at 10.0.0.5:3000"}};
    for (const auto& [number, line] : found) {
        LinkedCtl t;
        EXPECT_EQ(t.Run({"connect", number}), CtlDone);
        EXPECT_TRUE(t.Said(line)) << t.said.str();
        EXPECT_EQ(t.out.str(), "");
        EXPECT_TRUE(t.Released());
    }
}

TEST(CtlLinks, ConnectToAnotherLoggerOrToNoneFails)
{
    LinkedCtl t;
    t.Plug(logger("KR300", "2"), nullptr, logger("KR40", "", Failure::Silent));
    for (const char* number : {"1", "2", "3"}) {
        t.dialogs.Expect(BoxAnswer::Ok);
        EXPECT_EQ(t.Run({"connect", number}), CtlFailed);
        EXPECT_TRUE(t.Said("Logger " + std::string(number) + " was not reached.")) << t.said.str();
        EXPECT_TRUE(t.Released());
    }
    EXPECT_EQ(t.dialogs.shown.at(0).text, "Could not find a KR200 Series 2 on Com 1.     ");
    EXPECT_EQ(t.dialogs.shown.at(1).text, "Could not dial 0,,12345.     ");
    EXPECT_EQ(t.dialogs.shown.at(2).text, "Could not find a KR40 at 10.0.0.5:3000.     ");
}

TEST(CtlLinks, ABusyPortIsTold)
{
    for (const Words& words : {Words{"connect", "1"}, {"send", "1", "x"}, {"terminal", "1"}}) {
        LinkedCtl t;
        t.serial.ports[1].openError = PortBusy;
        t.dialogs.Expect(BoxAnswer::Ok);
        EXPECT_EQ(t.Run(words), CtlFailed);
        EXPECT_EQ(t.dialogs.shown.at(0).title, " tallyCore Harvel");
        EXPECT_TRUE(t.Said("Logger 1 was not reached."));
    }
}

TEST(CtlLinks, SendPrintsTheAnswerInLines)
{
    LinkedCtl t;
    EXPECT_EQ(t.Run({"send", "3", "TEST0"}), CtlDone);
    EXPECT_EQ(t.out.str().find(NetworkAnswer), 0u) << t.out.str();
    EXPECT_EQ(t.out.str().find('\r'), std::string::npos);
    EXPECT_EQ(t.out.str().back(), '\n');
    EXPECT_EQ(std::ranges::count(t.out.str(), '\n'), 1);
    EXPECT_TRUE(t.Said("Sending Command to tallyCore ..."));
    EXPECT_TRUE(t.Said("Command Sent"));
    EXPECT_TRUE(t.Released());
    EXPECT_EQ(t.Run({"send", "2", "TEST0"}), CtlDone);
    EXPECT_EQ(t.out.str().find("T,"), 0u) << t.out.str();
}

TEST(CtlLinks, SendTakesATextThatBeginsWithADash)
{
    LinkedCtl t;
    EXPECT_EQ(t.Run({"send", "3", "--", "--help"}), CtlDone);
    EXPECT_TRUE(t.SentOnNetwork("--help"));
    EXPECT_EQ(t.out.str(), "");
}

TEST(CtlLinks, SendOfNothingSendsNothing)
{
    LinkedCtl with;
    LinkedCtl without;
    EXPECT_EQ(with.Run({"send", "3", ""}), CtlDone);
    EXPECT_EQ(without.Run({"connect", "3"}), CtlDone);
    EXPECT_EQ(with.sockets.steps, without.sockets.steps);
}

TEST(CtlLinks, SendSendsNothingToAnotherLoggerOrToNone)
{
    LinkedCtl t;
    t.Plug(logger("KR300", "2"), nullptr, nullptr);
    for (const char* number : {"1", "2", "3"}) {
        t.dialogs.Expect(BoxAnswer::Ok);
        EXPECT_EQ(t.Run({"send", number, "NOW"}), CtlFailed);
        EXPECT_FALSE(t.SentOnPort("NOW") || t.SentOnNetwork("NOW"));
        EXPECT_EQ(t.out.str(), "");
        EXPECT_TRUE(t.Released());
    }
}

TEST(CtlLinks, ControlCharactersOfAnAnswerDoNotReachTheTerminal)
{
    LinkedCtl t;
    bool answered = false;
    t.pump.whenWaiting = [&](double) {
        if (!answered && t.SentOnPort("NOW"))
            t.serial.Arrive("a\x1b[2J\tb\r\n");
        answered = answered || t.SentOnPort("NOW");
    };
    EXPECT_EQ(t.Run({"send", "1", "NOW"}), CtlDone);
    EXPECT_EQ(t.out.str(), "a?[2J\tb\n");
}

TEST(CtlLinks, ALinkThatIsLostBeforeTheAnswerIsTold)
{
    LinkedCtl t;
    bool closed = false;
    t.pump.whenWaiting = [&](double) {
        if (!closed && t.SentOnNetwork("NOW"))
            t.sockets.made.at(0)->PeerCloses();
        closed = closed || t.SentOnNetwork("NOW");
    };
    EXPECT_EQ(t.Run({"send", "3", "NOW"}), CtlFailed);
    EXPECT_TRUE(t.Said("The link to logger 3 is lost.")) << t.said.str();
}

TEST(CtlLinks, TheTerminalSendsItsLinesAndPrintsWhatComesIn)
{
    for (const char* number : {"1", "2", "3"}) {
        LinkedCtl t;
        t.input.lines = {"TEST0", ""};
        EXPECT_EQ(t.Run({"terminal", number}), CtlDone);
        EXPECT_EQ(t.out.str().find("T,"), 0u) << t.out.str();
        EXPECT_EQ(t.out.str().substr(t.out.str().size() - 2), "\r\n");
        EXPECT_NE(t.said.str().find("Connected to the KR"), std::string::npos) << t.said.str();
        EXPECT_TRUE(t.Released());
        EXPECT_TRUE(t.dialogs.shown.empty());
    }
}

TEST(CtlLinks, WithoutLinesTheTerminalConnectsAndEnds)
{
    LinkedCtl t;
    EXPECT_EQ(t.Run({"terminal", "3"}), CtlDone);
    EXPECT_EQ(t.out.str(), "");
    EXPECT_TRUE(t.Released());
}

TEST(CtlLinks, TheTerminalEndsThoughTheLoggerNeverFallsSilent)
{
    LinkedCtl t;
    t.Plug(nullptr, nullptr, logger("KR40"));
    std::function<void()> chatter = [&] {
        if (!t.sockets.made.empty() && t.sockets.made.back())
            t.sockets.made.back()->Arrive(".");
        t.pump.After(500, chatter);
    };
    t.pump.After(8000, chatter);
    EXPECT_EQ(t.Run({"terminal", "3"}), CtlDone);
    EXPECT_GE(t.out.str().size(), 50u);
    EXPECT_LE(t.out.str().size(), 70u);
}

TEST(CtlLinks, TheTerminalOnAScreenPrintsNoControlCharacters)
{
    const std::string rude = "a\x1b[2J\tb\r\n\xC2\x9B";
    for (const bool forScreen : {false, true}) {
        LinkedCtl t;
        t.forScreen = forScreen;
        t.input.staysOpen = true;
        t.pump.After(9000, [&] { t.sockets.made.at(0)->Arrive(rude.substr(0, rude.size() - 1)); });
        t.pump.After(9100, [&] { t.sockets.made.at(0)->Arrive(rude.substr(rude.size() - 1)); });
        t.pump.After(9500, [&] { t.input.staysOpen = false; });
        EXPECT_EQ(t.Run({"terminal", "3"}), CtlDone);
        EXPECT_EQ(t.out.str(), forScreen ? "a?[2J\tb\r\n?" : rude);
    }
}

TEST(CtlLinks, ALostLinkEndsTheTerminal)
{
    LinkedCtl t;
    t.input.staysOpen = true;
    t.pump.After(9000, [&] { t.sockets.made.at(0)->PeerCloses(); });
    EXPECT_EQ(t.Run({"terminal", "3"}), CtlFailed);
    EXPECT_TRUE(t.Said("The link to logger 3 is lost.")) << t.said.str();
    LinkedCtl port;
    port.input.staysOpen = true;
    port.pump.After(9000, [&] { port.serial.Close(); }); // as a port does that has vanished
    EXPECT_EQ(port.Run({"terminal", "1"}), CtlFailed);
    EXPECT_TRUE(port.Said("The link to logger 1 is lost."));
}

TEST(CtlLinks, ANetworkThatIsNotReachedEndsTheTerminal)
{
    LinkedCtl t;
    t.sockets.places.clear();
    t.input.staysOpen = true;
    t.dialogs.Expect(BoxAnswer::Ok);
    EXPECT_EQ(t.Run({"terminal", "3"}), CtlFailed);
    EXPECT_TRUE(t.Said("Not Connected")) << t.said.str();
    EXPECT_TRUE(t.Said("Logger 3 was not reached."));
}

TEST(CtlLinks, TheTerminalGoesOnWithAnotherLoggerAndFails)
{
    LinkedCtl t;
    t.Plug(logger("KR300", "2"), nullptr, nullptr);
    t.input.lines = {"TEST0"};
    t.dialogs.Expect(BoxAnswer::Ok);
    EXPECT_EQ(t.Run({"terminal", "1"}), CtlFailed);
    EXPECT_EQ(t.out.str().find("T,"), 0u) << t.out.str();
}

TEST(CtlLinks, AnInterruptedCommandReleasesItsLinkAndSendsNothingMore)
{
    for (const Words& words : {Words{"test", "1"},
                               {"test", "2"},
                               {"test", "3"},
                               {"connect", "1"},
                               {"connect", "2"},
                               {"connect", "3"},
                               {"send", "2", "x"},
                               {"terminal", "2"},
                               {"find", "--port", "1"}})
        for (const double ms : {300.0, 2000.0, 5000.0}) {
            LinkedCtl t;
            t.input.staysOpen = true;
            t.interruptMs = ms;
            const auto before = t.files.files;
            const bool searches = words[0] == "find";
            if (searches) // which forgets the found loggers before it begins
                t.dialogs.Expect(BoxAnswer::Ok);
            t.Run(words);
            EXPECT_TRUE(t.Released()) << words[0] << words[1] << ms;
            EXPECT_TRUE(searches || t.files.files == before) << words[0] << words[1] << ms;
            EXPECT_LT(t.pump.NowMs(), ms + 500) << words[0] << words[1];
        }
}

TEST(CtlLinks, AnInterruptedCallIsTakenBackToTheModem)
{
    LinkedCtl t;
    t.input.staysOpen = true;
    t.interruptMs = 20000;
    t.Run({"terminal", "2"});
    std::string lastSent;
    for (const auto& event : t.serial.events)
        if (event.kind == FakeSerial::Event::Kind::Sent)
            lastSent = event.text;
    EXPECT_EQ(lastSent, "+++");
    EXPECT_TRUE(t.Released());
}

} // namespace harvelop::test
