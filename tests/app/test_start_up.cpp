#include "app/send_text.h"
#include "app/start_bench.h"
#include "support/fake_forms.h"

#include <gtest/gtest.h>

namespace harvelop::test
{

namespace
{

std::string recordLine(int number, const std::string& key)
{
    LoggerRecord record;
    record.LoggerPort = "3";
    record.LoggerModel = "KR40";
    record.LoggerIconKey = key;
    return std::to_string(number) + "tallyCoreSettings=" + RecordText(record) + "\r\n";
}

// A logger on Com 3, and a start with the command of a shortcut.
struct SendStart : TestStart {
    FakeMessages messages;
    FakeTerminal terminal;
    bool terminalShown = false;

    explicit SendStart(const char* showMessages = "1")
    {
        Installed();
        heart.forms.loadMessages = [this] { return &messages; };
        files.files[TestProgram::OptionsIni] =
            "AvailablePorts=3\r\nFindPorts=0\r\nShowMessages=" + std::string(showMessages) + "\r\n";
        serial.Plug(3, nullptr, "");
        Store(recordLine(1, "::2"));
        heart.actions.ConnectLogger = [this](int number) {
            EXPECT_EQ(number, 1);
            EXPECT_EQ(heart.state.QuietConnect, terminalShown);
            heart.progress.ShowMessageForm();
            heart.link.LinkMode = "ComPort";
            heart.rs232.OpenComPort(3);
        };
        showTerminal = [this] {
            EXPECT_TRUE(heart.state.TerminalOnly && heart.state.TerminalStarting);
            terminalShown = heart.state.TerminalOpen = true;
            heart.forms.terminal = &terminal;
        };
    }
    void Open(const std::string& commandLine)
    {
        StartUpHooks hooks;
        hooks.sendText = [this](const Launch& launch) { SendText(heart, launch, showTerminal); };
        StartUp(heart, hooks).Run(commandLine);
    }
    std::function<void()> showTerminal;
};

} // namespace

TEST(StartUp, AFirstStartSetsItselfUp)
{
    TestStart t;
    t.Start("");
    EXPECT_EQ(t.files.files[TestProgram::InstallIni], "Harvel was installed on 21/11/2026 at 09:30:00.\r\n");
    EXPECT_EQ(t.settings.values[TestProgram::StoreKey], TestProgram::Directory);
    EXPECT_EQ(t.heart.state.AppPath, "/home/user/loggers/");
    EXPECT_EQ(t.heart.state.DriveRoot, "/home/user/");
    EXPECT_FALSE(t.heart.state.FirstRun);
    ASSERT_EQ(t.desktop.shortcuts.size(), 2u);
    EXPECT_EQ(t.desktop.shortcuts[0].name, "Harvel Options");
    EXPECT_EQ(t.desktop.shortcuts[0].program, "/home/user/loggers/harvelop.exe");
    EXPECT_EQ(t.desktop.shortcuts[1].name, "Harvel");
    EXPECT_EQ(t.desktop.shortcuts[1].program, "/home/user/loggers/harvel.exe");
    EXPECT_TRUE(t.desktop.shortcuts[1].arguments.empty());
    EXPECT_EQ(t.asked, std::vector<std::string>{"show options"});
}

TEST(StartUp, ALaterStartDoesNotSetUpAgain)
{
    TestStart t;
    t.Installed();
    t.Start("");
    EXPECT_TRUE(t.desktop.shortcuts.empty());
    EXPECT_EQ(t.heart.state.AppPath, "/home/user/loggers/");
}

TEST(StartUp, AnInstallLineOfThreeCharactersCountsAsNotInstalledOneOfFourAsInstalled)
{
    for (const auto& [line, setUps] : {std::pair{"abc\r\n", 2u}, std::pair{"abcd\r\n", 0u}}) {
        TestStart t;
        t.Installed();
        t.files.files[TestProgram::InstallIni] = line;
        t.Start("");
        EXPECT_EQ(t.desktop.shortcuts.size(), setUps) << line;
    }
}

TEST(StartUp, ACommandLineWithAnAmpersandSkipsTheSetUp)
{
    TestStart t;
    t.Start("&");
    EXPECT_TRUE(t.desktop.shortcuts.empty());
    EXPECT_EQ(t.heart.state.AppPath, "/");
    EXPECT_EQ(t.files.files.count(TestProgram::InstallIni), 0u);
}

TEST(StartUp, SettingsOfAnotherDirectoryDoNotCount)
{
    TestStart t;
    t.Installed();
    t.desktop.currentDirectory = "/home/user/other:place";
    t.Start("");
    EXPECT_EQ(t.settings.values["Harvel/Parameters/_home_user_other_place"], "/home/user/other:place");
    EXPECT_EQ(t.heart.state.AppPath, "/home/user/other:place/");
}

TEST(StartUp, MissingOptionsAreCreatedAndThePortsProbed)
{
    TestStart t;
    t.Installed();
    t.serial.Plug(2, nullptr, "");
    t.Start("");
    EXPECT_NE(t.files.files[TestProgram::OptionsIni].find("UseLangFile=0\r\n"), std::string::npos);
    EXPECT_TRUE(t.heart.options.FindPorts);
    EXPECT_EQ(t.heart.options.AvailablePorts, "2,");
    EXPECT_TRUE(t.heart.link.PortAvailable[1]);
    EXPECT_EQ(t.heart.options.Language, "English");
    EXPECT_FALSE(t.heart.language.LangActive);
}

TEST(StartUp, WithoutProbingTheListedPortsAreTaken)
{
    TestStart t;
    t.Installed();
    t.files.files[TestProgram::OptionsIni] = "AvailablePorts=2,14,17,x,\r\nFindPorts=0\r\n";
    t.Start("");
    EXPECT_TRUE(t.heart.link.PortAvailable[1]);
    EXPECT_TRUE(t.heart.link.PortAvailable[13]);
    EXPECT_EQ(std::count(t.heart.link.PortAvailable.begin(), t.heart.link.PortAvailable.end(), true), 2);
    EXPECT_TRUE(t.serial.events.empty());
}

TEST(StartUp, AnUnknownPortListPassesSilently)
{
    TestStart t;
    t.Installed();
    t.files.files[TestProgram::OptionsIni] = "AvailablePorts=0\r\nFindPorts=0\r\n";
    t.Start("");
    EXPECT_EQ(std::count(t.heart.link.PortAvailable.begin(), t.heart.link.PortAvailable.end(), true), 0);
    EXPECT_EQ(t.asked.size(), 1u);
}

TEST(StartUp, AMissingLanguageFileEndsTheProgram)
{
    TestStart t;
    t.Installed();
    t.files.files[TestProgram::OptionsIni] = "UseLangFile=1\r\nLanguage=Klingon\r\nFindPorts=0\r\n";
    t.dialogs.Expect(BoxAnswer::Ok);
    t.Start("");
    ASSERT_EQ(t.dialogs.shown.size(), 1u);
    EXPECT_EQ(t.dialogs.shown[0].text, "The file /home/user/loggers/Klingon.txt could not be found.     ");
    EXPECT_EQ(t.dialogs.shown[0].title, " Harvel");
    EXPECT_EQ(t.dialogs.shown[0].icon, BoxIcon::Critical);
    EXPECT_TRUE(t.heart.end.Ended());
    EXPECT_TRUE(t.asked.empty());
}

TEST(StartUp, ALanguageFileIsAskedForByTheOption)
{
    TestStart t;
    t.Installed();
    t.files.files[TestProgram::OptionsIni] = "UseLangFile=1\r\nFindPorts=0\r\n";
    t.files.files["/home/user/loggers/English.txt"] = "503:2:9:tallyCore Harvel\r\n";
    t.Start("");
    EXPECT_TRUE(t.heart.language.LangActive);
    EXPECT_EQ(t.heart.language.Text(503), "tallyCore Harvel");
    EXPECT_EQ(t.spoken, std::vector<std::string>{"English"});
}

TEST(StartUp, WithoutALanguageFileTheWindowsSpeakAsTheyDo)
{
    TestStart t;
    t.Installed();
    t.files.files[TestProgram::OptionsIni] = "UseLangFile=0\r\nLanguage=German\r\nFindPorts=0\r\n";
    t.Start("");
    EXPECT_FALSE(t.heart.language.LangActive);
    EXPECT_TRUE(t.spoken.empty());
}

TEST(StartUp, AShortcutOfADeletedLoggerEndsTheProgramSilently)
{
    for (const char* command : {"::9", "::9 %G", "::9 %G%", "::9 C:\\x.dxc"}) {
        TestStart t;
        t.Installed();
        t.Store(recordLine(1, "::2"));
        t.Start(command);
        EXPECT_TRUE(t.heart.end.Ended()) << command;
        EXPECT_EQ(t.heart.end.ExitCode(), 0);
        EXPECT_TRUE(t.said.empty());
        EXPECT_EQ(t.heart.state.CurrentLogger, 0);
    }
}

TEST(StartUp, AKeyFindsTheRecordByASubstring)
{
    TestStart t;
    t.Installed();
    t.Store(recordLine(1, "::2") + recordLine(2, "::12") + recordLine(3, "::1"));
    t.Start("::1");
    EXPECT_EQ(t.heart.state.CurrentLogger, 2);
    EXPECT_EQ(t.asked, std::vector<std::string>{"load options"});
}

TEST(StartUp, WhatThisBuildCannotDoIsSaidAndEndsTheProgram)
{
    for (const char* command : {"::2 %G", "::2 C:\\x.dxc"}) {
        TestStart t;
        t.Installed();
        t.Store(recordLine(1, "::2"));
        t.Start(command);
        EXPECT_EQ(t.said.size(), 1u) << command;
        EXPECT_TRUE(t.heart.end.Ended());
        EXPECT_EQ(t.heart.end.ExitCode(), 1);
    }
}

TEST(StartUp, APortLeftOpenIsClosed)
{
    TestStart t;
    t.Installed();
    t.files.files[TestProgram::OptionsIni] = "AvailablePorts=0\r\nFindPorts=0\r\n";
    t.serial.Plug(1, nullptr, "");
    t.serial.CommPort(1);
    t.serial.Open();
    t.Start("");
    EXPECT_FALSE(t.serial.PortOpen());
}

TEST(StartUp, AKeyAloneOpensTheLoggersPanelOnItsThirdTab)
{
    TestStart t;
    t.Installed();
    t.files.files[TestProgram::OptionsIni] = "AvailablePorts=0\r\nFindPorts=0\r\n";
    t.Store(recordLine(1, "::2") + recordLine(2, "::5"));
    t.Start("::5");
    ASSERT_EQ(t.made.size(), 1u);
    EXPECT_EQ(t.made[0]->number, 2);
    EXPECT_TRUE(t.made[0]->visible);
    EXPECT_EQ(t.made[0]->shownTabs, std::vector<int>{3}); // from the first moment
    EXPECT_FALSE(t.heart.state.SingleLoggerMode);
    EXPECT_FALSE(t.heart.end.Ended());
    t.made[0]->Unload();
    EXPECT_TRUE(t.heart.end.Ended()); // a program started for one panel ends with it
}

TEST(StartUp, AKeyWhoseNumberHasNoRecordEndsTheProgram)
{
    TestStart t;
    t.Installed();
    t.files.files[TestProgram::OptionsIni] = "AvailablePorts=0\r\nFindPorts=0\r\n";
    t.Store(recordLine(7, "::5"));
    t.Start("::5");
    EXPECT_TRUE(t.heart.end.Ended());
    EXPECT_TRUE(t.made.empty());
}

TEST(StartUp, TheVersionShowsInTheCaptionFor800Milliseconds)
{
    TestStart t;
    FakeOptions form;
    t.Installed();
    t.files.files[TestProgram::OptionsIni] = "AvailablePorts=0\r\nFindPorts=0\r\n";
    t.whenShown = [&] {
        t.heart.forms.options = &form;
        t.heart.state.OptionsLoaded = true;
        t.pump.After(799, [&] { EXPECT_EQ(form.caption, " tallyCore Harvel Options 2.37"); });
    };
    const double before = t.pump.NowMs();
    t.Start("");
    EXPECT_EQ(form.okFocused, 1);
    EXPECT_EQ(form.caption, " tallyCore Harvel Options");
    EXPECT_NEAR(t.pump.NowMs() - before, 800, 1);
}

TEST(StartUp, PanelsThatAFirstSearchHasFoundComeToTheFront)
{
    TestStart t;
    t.Installed();
    t.files.files[TestProgram::OptionsIni] = "AvailablePorts=0\r\nFindPorts=0\r\n";
    t.whenShown = [&] {
        t.heart.search.FoundCount = 2;
        t.heart.panels.Create(1);
        t.heart.panels.Create(2);
    };
    t.Start("");
    ASSERT_EQ(t.made.size(), 2u);
    EXPECT_TRUE(t.made[0]->visible && t.made[1]->visible);
}

TEST(StartUp, TheTerminalsGeometryAndThePortListAreThereBeforeAnyPanel)
{
    TestStart t;
    t.Installed();
    t.files.files[TestProgram::OptionsIni] = "FindPorts=1\r\n";
    t.serial.Plug(4, nullptr, "");
    t.whenShown = [&] {
        EXPECT_EQ(t.heart.options.TerminalWidth, 6345.0F);
        EXPECT_EQ(t.heart.state.cbxUnload_Ports.Lines(), std::vector<std::string>{"Com 4"});
    };
    t.Start("");
    EXPECT_EQ(t.asked.size(), 1u);
}

TEST(StartUp, AStoreThatKeepsNothingLeavesTheCurrentDirectory)
{
    struct Forgetful : MemorySettings {
        void Save(const std::string&, const std::string&, const std::string&, const std::string&) override {}
    } forgetful;
    TestStart t;
    Program heart({t.pump, t.serial, t.sockets, t.dialogs, t.files, forgetful, t.desktop});
    StartUpHooks hooks;
    hooks.showOptions = [] {};
    StartUp(heart, hooks).Run("");
    EXPECT_EQ(heart.state.AppPath, "/home/user/loggers/");
}

TEST(StartUp, TextBehindAPercentSignIsSentToldAndEndsTheProgram)
{
    SendStart t;
    t.dialogs.Expect(BoxAnswer::Ok);
    const double before = t.pump.NowMs();
    t.Open("::2 %CALARMS A,B");
    EXPECT_EQ(t.serial.Sent(), "CALARMS A,B\r\n");
    EXPECT_NEAR(t.pump.NowMs() - before, 2000, 5);
    ASSERT_EQ(t.dialogs.shown.size(), 1u);
    EXPECT_EQ(t.dialogs.shown[0].text, "Command successfully sent to the tallyCore.     ");
    EXPECT_EQ(t.dialogs.shown[0].title, " tallyCore Harvel");
    EXPECT_EQ(t.dialogs.shown[0].icon, BoxIcon::Information);
    EXPECT_TRUE(t.heart.end.Ended());
    EXPECT_FALSE(t.terminalShown);
    EXPECT_FALSE(t.heart.state.TerminalOnly);
    EXPECT_EQ(t.heart.link.LinkMode, "None");
    EXPECT_FALSE(t.serial.PortOpen());
    EXPECT_NE(std::find(t.files.writes.begin(), t.files.writes.end(), TestProgram::OptionsIni), t.files.writes.end());
    const auto shown = [&](const char* text) {
        return std::count(t.messages.captions.begin(), t.messages.captions.end(), text);
    };
    EXPECT_EQ(shown("<- Sending Command to tallyCore ..."), 1);
    EXPECT_EQ(shown("<- Command Sent"), 1);
}

TEST(StartUp, WithoutMessagesACommandIsSentSilently)
{
    SendStart t("0");
    t.Open("::2 %G");
    EXPECT_EQ(t.serial.Sent(), "G\r\n");
    EXPECT_TRUE(t.dialogs.shown.empty());
    EXPECT_TRUE(t.heart.end.Ended());
}

TEST(StartUp, TextBetweenPercentSignsIsSentAndTheTerminalStays)
{
    SendStart t;
    t.dialogs.Expect(BoxAnswer::Ok);
    t.Open("::2 %PROFILE%");
    EXPECT_TRUE(t.terminalShown);
    t.heart.waiting.ServeEvents();
    EXPECT_EQ(t.serial.Sent(), "PROFILE\r\n");
    EXPECT_FALSE(t.heart.end.Ended());
    EXPECT_FALSE(t.heart.state.TerminalStarting || t.heart.state.QuietConnect);
    EXPECT_TRUE(t.heart.state.TerminalOnly);
    EXPECT_TRUE(t.serial.PortOpen());
}

// Nothing at all is sent with two of them, too, not even an empty line; that is told as if it had been, without a box.
TEST(StartUp, NoTextAtAllSendsNothingAndALonePercentSignReportsNothing)
{
    for (const auto& [command, told] : {std::pair{"::2 %", false}, std::pair{"::2 %%", true}}) {
        SendStart t;
        t.heart.progress.ShowMessageForm();
        const double before = t.pump.NowMs();
        t.Open(command);
        EXPECT_TRUE(t.terminalShown) << command;
        t.heart.waiting.ServeEvents();
        EXPECT_EQ(t.serial.Sent(), "") << command;
        EXPECT_TRUE(t.dialogs.shown.empty());
        EXPECT_EQ(t.messages.Caption(), told ? "<- Command Sent" : "<- Sending Command to tallyCore ...");
        EXPECT_NEAR(t.pump.NowMs() - before, told ? 2000 : 1000, 1) << command;
        EXPECT_FALSE(t.heart.end.Ended());
    }
}

TEST(StartUp, ALanguageFileReplacesTheWordsOfACommandThatIsSent)
{
    SendStart t;
    t.files.files[TestProgram::OptionsIni] += "UseLangFile=1\r\nLanguage=Test\r\n";
    t.files.files["/home/user/loggers/Test.txt"] =
        "302:1:8:[302]\r\n303:1:8:[303]\r\n503:1:8:[503]\r\n560:1:8:[560]\r\n";
    t.dialogs.Expect(BoxAnswer::Ok);
    t.Open("::2 %G");
    EXPECT_EQ(t.messages.captions, (std::vector<std::string>{"<- [302] ...", "<- [303]"}));
    EXPECT_EQ(t.dialogs.shown.at(0).text, "[560].     ");
    EXPECT_EQ(t.dialogs.shown.at(0).title, " [503]");
}

TEST(StartUp, AnEndWhileConnectingSendsAndTellsNothing)
{
    SendStart t;
    t.heart.actions.ConnectLogger = [&](int) { t.heart.end.EndProgram(); };
    t.Open("::2 %G");
    EXPECT_EQ(t.serial.Sent(), "");
    EXPECT_TRUE(t.dialogs.shown.empty());
    EXPECT_FALSE(t.serial.PortOpen());
}

} // namespace harvelop::test
