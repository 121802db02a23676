#include "ctl_bench.h"
#include "settings/option_keys.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace harvelop::test
{

namespace
{

struct OptionsCtl : StoredCtl {
    OptionsCtl()
    {
        for (const std::string_view line : DefaultOptionLines())
            File("options.ini").append(line).append("\r\n");
    }
    bool Has(const std::string& line) { return File("options.ini").find(line + "\r\n") != std::string::npos; }
};

} // namespace

TEST(CtlSettings, ShowsEachOptionOnce)
{
    OptionsCtl t;
    EXPECT_EQ(t.Run({"options"}), CtlDone);
    EXPECT_TRUE(t.out.str().starts_with("UseLangFile=False\nLanguage=\nAvailablePorts=0\nModemTimeout=45\n"));
    EXPECT_EQ(t.out.str().find("tallyCoresTop"), std::string::npos);
    EXPECT_TRUE(t.files.writes.empty());
    EXPECT_EQ(t.Run({"options", "--json"}), CtlDone);
    const auto all = nlohmann::json::parse(t.out.str());
    EXPECT_EQ(all["ShowMessages"], true);
    EXPECT_EQ(all["LogFileSize"], 100);
    EXPECT_EQ(all["SMTPPort"], "25");
}

TEST(CtlSettings, ANumberIsTheSameInJsonAsInTheFile)
{
    OptionsCtl t;
    t.File("options.ini") = "TerminalTop=0.1\r\n" + t.File("options.ini"); // the first line of a key counts
    EXPECT_EQ(t.Run({"options", "--json"}), CtlDone);
    EXPECT_EQ(nlohmann::json::parse(t.out.str())["TerminalTop"], 0.1);
}

TEST(CtlSettings, WithoutAFileTheDefaultsAreShownAndARefusedChangeMakesNone)
{
    StoredCtl t;
    EXPECT_EQ(t.Run({"options"}), CtlDone);
    const std::string shown = t.out.str();
    EXPECT_NE(shown.find("\nShowMessages=True\n"), std::string::npos);
    EXPECT_NE(shown.find("\nFTPTimeout=5\n"), std::string::npos);
    EXPECT_EQ(t.Refusal({"options", "Nonsense=1"}), "Nonsense is no option.\n");
    EXPECT_EQ(t.files.files.count(TestProgram::OptionsIni), 0u);
}

TEST(CtlSettings, ChangesAreSavedAsThePanelSavesThem)
{
    OptionsCtl t;
    const std::string loggers = t.File("found.ini");
    EXPECT_EQ(t.Run({"options", "SMTPServerName=mail.example.org", "SMTPSender=me@example.org", "SaveToDesktop=1",
                     "DesktopDir=a_b", "LogFileSize=12.5", "SMTPTimeout="}),
              CtlDone);
    EXPECT_EQ(t.out.str() + t.said.str(), "");
    for (const char* line : {"SMTPServerName=mail.example.org", "SMTPSender=me@example.org", "SaveToDesktop=True",
                             "DesktopDir=a_b", "LogFileSize=12.5", "SMTPTimeout=5", "Icons=1"})
        EXPECT_TRUE(t.Has(line)) << line;
    EXPECT_FALSE(t.Has("tallyCores=0"));
    EXPECT_EQ(t.File("found.ini"), loggers);
}

TEST(CtlSettings, ABoxTakesAlongWhatItHoldsInThePanel)
{
    OptionsCtl t;
    EXPECT_EQ(t.Run({"options", "ShowHarvelOnStartup=0", "SMTPServerRequiresAuthentication=1", "--json"}), CtlDone);
    EXPECT_EQ(nlohmann::json::parse(t.out.str())["changed"], nlohmann::json({{"ShowHarvelOnStartup", false},
                                                                             {"SMTPServerRequiresAuthentication", true},
                                                                             {"SMTPAuthenticationType", "LOGIN"}}));
    EXPECT_EQ(t.Refusal({"options", "RunHarvelOnStartup=0"}),
              "RunHarvelOnStartup is held on while ShowHarvelOnStartup is off.\n");
    EXPECT_EQ(t.Run({"options", "ShowHarvelOnStartup=True"}), CtlDone);
    EXPECT_TRUE(t.Has("RunHarvelOnStartup=False"));
}

TEST(CtlSettings, WhatThePanelWouldDropIsRefusedAndNotToldBack)
{
    OptionsCtl t;
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"SMTPServerName=mail-1", "SMTPServerName can hold only the letters A to Z, digits, points and @."},
        {"SMTPPort=000025", "SMTPPort can't be longer than 5 characters."},
        {"SMTPPort=99999", "SMTPPort wants a number from 1 to 65535."},
        {"SMTPPort=x", "SMTPPort wants a number from 1 to 65535."},
        {"FTPTimeout=0", "FTPTimeout wants a number of seconds, from 1 to 9999."},
        {"Language=../English", "Language wants a name without a folder."},
        {"SMTPPassword=secret", "SMTPPassword can be changed only while SMTPServerRequiresAuthentication is on."},
        {"DesktopDir=x", "DesktopDir can be changed only while SaveToDesktop is on."},
        {"LogFileSize=1.2.3", "LogFileSize wants a number."},
        {"ShowMessages=yes", "ShowMessages wants 0 or 1."},
        {"SMTPAuthenticationType=PLAIN", "SMTPAuthenticationType follows from SMTPServerRequiresAuthentication."},
        {"Icons=7", "Icons can't be changed: the program keeps it by itself."},
        {"Nonsense=1", "Nonsense is no option."},
        {"SiteID=a\nb", "SiteID can't hold a line end."},
    };
    for (const auto& [edit, refusal] : cases)
        EXPECT_EQ(t.Refusal({"options", "ShowDir=0", edit}), refusal + "\n");
}

TEST(CtlSettings, AnOptionThatIsReadFromAPasswordsLineIsNotShownEither)
{
    OptionsCtl t;
    t.File("options.ini") = "FTPPassword=myIconsPw\r\n";
    EXPECT_EQ(t.Run({"options"}), CtlDone);
    EXPECT_NE(t.out.str().find("\nIcons=(set)\n"), std::string::npos) << t.out.str();
    EXPECT_EQ(t.out.str().find("myIconsPw"), std::string::npos);
}

TEST(CtlSettings, APasswordIsStoredButNotTold)
{
    OptionsCtl t;
    EXPECT_EQ(t.Run({"options", "FTPPassword=secret", "--json"}), CtlDone);
    EXPECT_EQ(t.out.str().find("secret"), std::string::npos);
    EXPECT_EQ(nlohmann::json::parse(t.out.str())["changed"], nlohmann::json({{"FTPPassword", "(set)"}}));
    EXPECT_TRUE(t.Has("FTPPassword=secret"));
    EXPECT_EQ(t.Run({"options"}), CtlDone);
    EXPECT_NE(t.out.str().find("\nSMTPPassword=\n"), std::string::npos);
    EXPECT_NE(t.out.str().find("\nFTPPassword=(set)\n"), std::string::npos);
    EXPECT_EQ(t.Run({"options", "--json"}), CtlDone);
    EXPECT_EQ(nlohmann::json::parse(t.out.str())["FTPPassword"], "(set)");
    EXPECT_EQ(t.Run({"options", "FTPPassword=", "--json"}), CtlDone);
    EXPECT_EQ(nlohmann::json::parse(t.out.str())["changed"], nlohmann::json({{"FTPPassword", ""}}));
}

TEST(CtlSettings, AFileThatCannotBeReadOrWrittenIsTold)
{
    OptionsCtl t;
    t.files.full = true;
    EXPECT_EQ(t.Refusal({"options", "ShowDir=0"}), "The file /home/user/loggers/options.ini can't be written.\n");
    t.files.full = false;
    t.files.unreadable.insert(TestProgram::OptionsIni);
    EXPECT_EQ(t.Refusal({"options"}), "The file /home/user/loggers/options.ini can't be read.\n");
}

TEST(CtlUpkeep, DeletingAsksAndTakesTheListsAlong)
{
    OptionsCtl t;
    t.File("emaillist3.ini") = "0:a@b.c\r\n";
    t.dialogs.Expect(BoxAnswer::No);
    EXPECT_EQ(t.Refusal({"delete", "2"}), "");
    EXPECT_EQ(t.dialogs.shown.at(0).text, "Are you sure you want to delete this tallyCore ?     ");
    t.dialogs.Expect(BoxAnswer::Yes);
    EXPECT_EQ(t.Run({"delete", "2"}), CtlDone);
    EXPECT_EQ(t.files.files.count(std::string(TestProgram::Directory) + "/emaillist3.ini"), 0u);
    EXPECT_EQ(t.Run({"show", "2"}), CtlDone);
    EXPECT_NE(t.out.str().find("LoggerModel=KR40\n"), std::string::npos);
    EXPECT_EQ(t.Refusal({"delete", "3"}), "There is no logger 3.\n");
}

TEST(CtlUpkeep, UnloadStartsHarvelForAllOrForOne)
{
    OptionsCtl t;
    EXPECT_EQ(t.Run({"unload"}), CtlDone);
    EXPECT_EQ(t.Run({"unload", "3"}), CtlDone);
    ASSERT_EQ(t.desktop.started.size(), 2u);
    EXPECT_EQ(t.desktop.started[0].path, "/home/user/loggers/harvel.exe");
    EXPECT_TRUE(t.desktop.started[0].arguments.empty());
    EXPECT_EQ(t.desktop.started[1].arguments, std::vector<std::string>{"::4"});
    EXPECT_EQ(t.desktop.started[1].workingDirectory, "/home/user/loggers/");
    t.desktop.starts = false;
    for (const std::vector<std::string>& words : {std::vector<std::string>{"unload"}, {"unload", "3"}}) {
        t.dialogs.Expect(BoxAnswer::Ok);
        EXPECT_EQ(t.Run(words), CtlFailed);
    }
    StoredCtl none(std::vector<LoggerRecord>{});
    none.dialogs.Expect(BoxAnswer::Ok);
    EXPECT_EQ(none.Run({"unload"}), CtlFailed);
    EXPECT_TRUE(none.desktop.started.empty());
}

TEST(CtlUpkeep, AShortcutIsTheOneThatThePanelMakes)
{
    OptionsCtl t;
    EXPECT_EQ(t.Run({"shortcut", "3"}), CtlDone);
    EXPECT_EQ(t.Run({"shortcut", "3", "--command", "/h; x", "--terminal"}), CtlDone);
    EXPECT_EQ(t.Run({"shortcut", "2", "--name", "Pump", "--command", "TEST0"}), CtlDone);
    ASSERT_EQ(t.desktop.shortcuts.size(), 3u);
    EXPECT_EQ(t.desktop.shortcuts[0].name, "KR40 at 10_0_0_5-3000");
    EXPECT_EQ(t.desktop.shortcuts[0].arguments, std::vector<std::string>{"::4"});
    EXPECT_EQ(t.desktop.shortcuts[1].name, "Send /h; x to KR40 at 10_0_0_5-3000");
    EXPECT_EQ(t.desktop.shortcuts[1].arguments, (std::vector<std::string>{"::4", "%/h; x%"}));
    EXPECT_EQ(t.desktop.shortcuts[2].name, "Pump");
    EXPECT_EQ(t.desktop.shortcuts[2].arguments, (std::vector<std::string>{"::3", "%TEST0"}));
    t.desktop.starts = false;
    EXPECT_EQ(t.Run({"shortcut", "3"}), CtlFailed);
    EXPECT_EQ(t.said.str(), "The shortcut can't be made.\n");
}

} // namespace harvelop::test
