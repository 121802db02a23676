#include "settings/golden_file.h"
#include "settings/option_keys.h"
#include "settings/options_store.h"
#include "support/memory_files.h"

#include <gmock/gmock.h>

namespace harvelop::test
{
namespace
{

using testing::HasSubstr;
using testing::Not;

struct OptionsStoreTest : testing::Test {
    OptionsStoreTest() { state.AppPath = "/app/"; }

    void holds(const std::string& text) { files.files["/app/options.ini"] = text; }
    std::string saved() { return files.files["/app/options.ini"]; }
    void readTerminalToo()
    {
        store.ReadAllOptions();
        store.LoadTerminalGeometry();
    }

    Options options;
    ProgramState state;
    MemoryFiles files;
    OptionsStore store{options, state, files};
};

TEST_F(OptionsStoreTest, FirstRequestWithoutFileWritesTheDefaultsAndGivesNothing)
{
    int portSearches = 0;
    store.FindComPorts = [&] { ++portSearches; };
    EXPECT_EQ(store.ReadOption("Options", "ModemTimeout"), "");
    EXPECT_EQ(saved(), GoldenFile("options_first_run.ini"));
    EXPECT_EQ(portSearches, 1);
    EXPECT_EQ(options.ModemTimeout, "") << "the request that creates the file assigns nothing";

    EXPECT_EQ(store.ReadOption("Options", "ModemTimeout"), "45");
    EXPECT_EQ(portSearches, 1);
}

TEST_F(OptionsStoreTest, PortListIsThereBeforeTheDefaultsAreWritten)
{
    bool fileWasThere = true;
    store.FindComPorts = [&] { fileWasThere = files.files.count("/app/options.ini") != 0; };
    store.ReadOption("Smart", "SmartTop");
    EXPECT_FALSE(fileWasThere);
}

TEST_F(OptionsStoreTest, FirstSaveRewritesTheDefaultsInItsOwnOrderAndSpelling)
{
    readTerminalToo();
    EXPECT_THAT(saved(), HasSubstr("tallyCores=0\r\n"));
    store.SaveOptions();
    EXPECT_EQ(saved(), GoldenFile("options_first_save.ini"));
    EXPECT_THAT(saved(), Not(HasSubstr("tallyCores=0")));
    EXPECT_THAT(saved(), Not(HasSubstr("Checked")));
    EXPECT_THAT(saved(), Not(HasSubstr("FTPStartDirectory")));
}

TEST_F(OptionsStoreTest, StartAsksForTheKeysInTheirOrder)
{
    std::string order;
    for (const OptionRequest& request : StartOptionRequests())
        order.append(request.section).append(".").append(request.key).append(" ");
    EXPECT_EQ(order,
              "Smart.SmartTop Smart.SmartLeft Options.UseLangFile Options.Language Options.AvailablePorts "
              "Options.ModemTimeout Options.OptionsTop Options.OptionsLeft Options.MessagesTop Options.MessagesLeft "
              "tallyCores.tallyCoresTop tallyCores.tallyCoresLeft Options.LastSearch Options.SiteID Options.UnloadAll "
              "Options.ShowHarvelOnStartup Options.RunHarvelOnStartup Options.ShowDir Options.SaveToDesktop "
              "Options.DesktopDir Options.SaveToOneFile Options.HideHarvelAfterUnload Options.ExitAfterUnload "
              "Options.LastUtallyCore Options.ShowMessages Options.ShowLoadMessages Options.SaveLogFile "
              "Options.LogFileSize Options.FindPorts Options.SMTPServerName Options.SMTPPort "
              "Options.SMTPServerRequiresAuthentication Options.SMTPAuthenticationType Options.SMTPSender "
              "Options.SMTPUserName Options.SMTPPassword Options.SMTPRememberPassword Options.SMTPTimeout "
              "Options.FTPServername Options.FTPUserName Options.FTPPassword Options.FTPStartDirectory "
              "Options.FTPRememberPassword Options.FTPTimeout Options.Icons Options.LockControls ");
    std::string terminal;
    for (const OptionRequest& request : TerminalOptionRequests())
        terminal.append(request.section).append(".").append(request.key).append(" ");
    EXPECT_EQ(terminal, "Terminal.TerminalTop Terminal.TerminalLeft Terminal.TerminalWidth Terminal.TerminalHeight "
                        "Terminal.TransmitHeight1 ");
}

TEST_F(OptionsStoreTest, EachRequestReadsTheFileAfresh)
{
    holds("Icons=1\r\n");
    store.ReadAllOptions();
    EXPECT_EQ(files.reads.size(), StartOptionRequests().size());
    holds("Icons=7\r\n");
    EXPECT_EQ(store.ReadOption("Options", "Icons"), "7");
    EXPECT_EQ(options.Icons, "7");
}

TEST_F(OptionsStoreTest, ValueThatHoldsTheKeyIsFoundFirst)
{
    holds("DesktopDir=C:\\Icons\r\nIcons=3\r\n");
    EXPECT_EQ(store.ReadOption("Options", "Icons"), "C:\\Icons");
}

TEST_F(OptionsStoreTest, KeyMatchesInAnyCase)
{
    holds("SITEID=north\r\n");
    EXPECT_EQ(store.ReadOption("Options", "SiteID"), "north");
}

TEST_F(OptionsStoreTest, ValueIsAllBehindTheFirstEqualsSign)
{
    holds("SMTPPassword= a=b \r\n");
    EXPECT_EQ(store.ReadOption("Options", "SMTPPassword"), " a=b ");
    EXPECT_EQ(options.SMTPPassword, " a=b ");
}

TEST_F(OptionsStoreTest, EmptyTimeoutsAndPortsRepairThemselves)
{
    holds("ModemTimeout=\r\nAvailablePorts=\r\nSMTPTimeout=\r\nSMTPPort=\r\n");
    EXPECT_EQ(store.ReadOption("Options", "ModemTimeout"), "45");
    EXPECT_EQ(options.ModemTimeout, "45");
    EXPECT_EQ(store.ReadOption("Options", "AvailablePorts"), "0");
    EXPECT_EQ(options.AvailablePorts, "0");
    EXPECT_EQ(store.ReadOption("Options", "SMTPTimeout"), "") << "the repair is not told";
    EXPECT_EQ(options.SMTPTimeout, "5");
    EXPECT_EQ(store.ReadOption("Options", "FTPTimeout"), "");
    EXPECT_EQ(options.FTPTimeout, "5");
    EXPECT_EQ(store.ReadOption("Options", "SMTPPort"), "") << "this one has no standard value";
    EXPECT_EQ(options.SMTPPort, "");
}

TEST_F(OptionsStoreTest, BooleansTakeWordsAndNumbers)
{
    for (const char* text : {"True", "1", "-1", "true", "0.5"}) {
        options.ShowMessages = false;
        holds(std::string("ShowMessages=") + text + "\r\n");
        store.ReadOption("Options", "ShowMessages");
        EXPECT_TRUE(options.ShowMessages) << text;
    }
    for (const char* text : {"False", "0", "FALSE", " 0 "}) {
        options.ShowMessages = true;
        holds(std::string("ShowMessages=") + text + "\r\n");
        store.ReadOption("Options", "ShowMessages");
        EXPECT_FALSE(options.ShowMessages) << text;
    }
}

TEST_F(OptionsStoreTest, WhatDoesNotConvertLeavesTheVariable)
{
    options.ShowMessages = true;
    options.LastUtallyCore = 7;
    options.LogFileSize = 12.5;
    options.TerminalTop = 3;
    holds("ShowMessages=yes\r\nLastUtallyCore=40000\r\nLogFileSize=1.2.3\r\nTerminalTop=1e39\r\n");
    EXPECT_EQ(store.ReadOption("Options", "ShowMessages"), "yes");
    store.ReadOption("Options", "LastUtallyCore");
    store.ReadOption("Options", "LogFileSize");
    store.ReadOption("Terminal", "TerminalTop");
    EXPECT_TRUE(options.ShowMessages);
    EXPECT_EQ(options.LastUtallyCore, 7);
    EXPECT_EQ(options.LogFileSize, 12.5);
    EXPECT_EQ(options.TerminalTop, 3);
}

TEST_F(OptionsStoreTest, AbsentKeyEmptiesTextsAndLeavesTheRest)
{
    options.ShowMessages = true;
    options.SiteID = "old";
    options.LastUtallyCore = 4;
    holds("Language=English\r\n");
    store.ReadAllOptions();
    EXPECT_TRUE(options.ShowMessages);
    EXPECT_EQ(options.SiteID, "");
    EXPECT_EQ(options.LastUtallyCore, 4);
}

TEST_F(OptionsStoreTest, SectionOnlyChoosesWhatCanBeAssigned)
{
    holds("SiteID=north\r\nTerminalTop=5\r\ntallyCoresTop=6\r\n");
    EXPECT_EQ(store.ReadOption("Smart", "SiteID"), "north");
    EXPECT_EQ(options.SiteID, "");
    EXPECT_EQ(store.ReadOption("Options", "TerminalTop"), "5");
    EXPECT_EQ(options.TerminalTop, 0);
    EXPECT_EQ(store.ReadOption("Terminal", "TerminalTop"), "5");
    EXPECT_EQ(options.TerminalTop, 5);
    store.ReadOption("tallyCores", "tallyCoresTop");
    EXPECT_EQ(options.tallyCoresTop, 6);
    EXPECT_EQ(options.OptionsTop, 0);
}

TEST_F(OptionsStoreTest, CheckedFlagsCanBeReadButAreNotSaved)
{
    holds("SMTPChecked=1\r\nFTPChecked=True\r\n");
    store.ReadOption("Options", "SMTPChecked");
    store.ReadOption("Options", "FTPChecked");
    EXPECT_TRUE(options.SMTPChecked);
    EXPECT_TRUE(options.FTPChecked);
    store.SaveOptions();
    EXPECT_THAT(saved(), Not(HasSubstr("Checked")));
}

TEST_F(OptionsStoreTest, MatchingLineWithoutValueIsPassedOver)
{
    holds("about SiteID\r\nSiteID=north\r\n");
    EXPECT_EQ(store.ReadOption("Options", "SiteID"), "north");
    holds("SiteID" + std::string(294, '.') + "\r\nSiteID=north\r\n");
    EXPECT_EQ(store.ReadOption("Options", "SiteID"), "north") << "300 characters";
}

TEST_F(OptionsStoreTest, LongMatchingLineWithoutValueEndsTheScan)
{
    holds("SiteID" + std::string(295, '.') + "\r\nSiteID=north\r\n");
    EXPECT_EQ(store.ReadOption("Options", "SiteID"), "");
    EXPECT_EQ(options.SiteID, "");
    holds(std::string(4000, '.') + "\r\nSiteID=north\r\n");
    EXPECT_EQ(store.ReadOption("Options", "SiteID"), "north") << "a line without the key does not count";
}

TEST_F(OptionsStoreTest, LinesMayEndInAnyWay)
{
    holds("SiteID=a\nSMTPSender=b\rSMTPPort=c\r\nFTPUserName=d");
    EXPECT_EQ(store.ReadOption("Options", "SiteID"), "a");
    EXPECT_EQ(store.ReadOption("Options", "SMTPSender"), "b");
    EXPECT_EQ(store.ReadOption("Options", "SMTPPort"), "c");
    EXPECT_EQ(store.ReadOption("Options", "FTPUserName"), "d");
}

TEST_F(OptionsStoreTest, LineEndInAValueIsSavedAsABlank)
{
    options.SiteID = "x\nIcons=77";
    options.SMTPPassword = "a\r\nb\r";
    options.Icons = "3";
    store.SaveOptions();
    EXPECT_THAT(saved(), HasSubstr("SiteID=x Icons=77\r\n"));
    EXPECT_THAT(saved(), HasSubstr("SMTPPassword=a  b \r\n"));
}

TEST_F(OptionsStoreTest, TerminalSizeOfZeroBecomesTheStandardOne)
{
    holds("TerminalTop=0\r\nTerminalLeft=0\r\nTerminalWidth=0\r\nTerminalHeight=0\r\nTransmitHeight1=0\r\n");
    store.LoadTerminalGeometry();
    EXPECT_EQ(options.TerminalTop, 0);
    EXPECT_EQ(options.TerminalLeft, 0);
    EXPECT_EQ(options.TerminalWidth, 6345);
    EXPECT_EQ(options.TerminalHeight, 5880);
    EXPECT_EQ(options.TransmitHeight1, 0);
}

TEST_F(OptionsStoreTest, TerminalSizeOtherThanZeroStands)
{
    holds("TerminalWidth=0.5\r\nTerminalHeight=-3\r\n");
    store.LoadTerminalGeometry();
    EXPECT_EQ(options.TerminalWidth, 0.5);
    EXPECT_EQ(options.TerminalHeight, -3);
}

TEST_F(OptionsStoreTest, OnePositionIsSavedUnderTwoNames)
{
    options.OptionsTop = 1234.5;
    options.OptionsLeft = 77;
    options.tallyCoresTop = 1;
    options.tallyCoresLeft = 2;
    store.SaveOptions();
    EXPECT_THAT(saved(), HasSubstr("OptionsTop=1234.5\r\nOptionsLeft=77\r\n"));
    EXPECT_THAT(saved(), HasSubstr("tallyCoresTop=1234.5\r\ntallyCoresLeft=77\r\n"));
}

TEST_F(OptionsStoreTest, EveryVariableComesBackAsItWasSaved)
{
    int count = 0;
    for (const OptionKey& row : SavedOptionKeys()) {
        ++count;
        const bool truth = std::holds_alternative<bool Options::*>(row.variable);
        const std::string text = truth ? "True" : std::to_string(count);
        ASSERT_TRUE(AssignOption(options, row.variable, text)) << row.key;
        AssignOption(options, row.written, text);
    }
    EXPECT_EQ(count, 47);
    store.SaveOptions();

    Options again;
    OptionsStore reader(again, state, files);
    reader.ReadAllOptions();
    reader.LoadTerminalGeometry();
    for (const OptionKey& row : SavedOptionKeys())
        EXPECT_EQ(OptionText(again, row.variable), OptionText(options, row.written)) << row.key;
}

TEST_F(OptionsStoreTest, SaveIsFollowedByThatOfTheLoggers)
{
    std::string seen;
    store.SaveFoundLoggers = [&] { seen = saved(); };
    store.SaveOptions();
    EXPECT_THAT(seen, HasSubstr("UseLangFile=False\r\n"));
}

TEST_F(OptionsStoreTest, FullDiskKeepsFileAndVariables)
{
    holds("SiteID=north\r\n");
    store.ReadAllOptions();
    options.SiteID = "south";
    files.full = true;
    bool loggersSaved = false;
    store.SaveFoundLoggers = [&] { loggersSaved = true; };
    store.SaveOptions();
    EXPECT_EQ(saved(), "SiteID=north\r\n");
    EXPECT_EQ(options.SiteID, "south");
    EXPECT_TRUE(loggersSaved);
    files.full = false;
    store.SaveOptions();
    EXPECT_THAT(saved(), HasSubstr("SiteID=south\r\n"));
}

TEST_F(OptionsStoreTest, FullDiskAtFirstRunGivesNothing)
{
    struct FullDisk : MemoryFiles {
        bool Replace(const std::string&, const std::string&) override
        {
            ++tries;
            return false;
        }
        int tries = 0;
    } disk;
    OptionsStore onFullDisk(options, state, disk);
    int portSearches = 0;
    onFullDisk.FindComPorts = [&] { ++portSearches; };
    onFullDisk.ReadAllOptions();
    onFullDisk.LoadTerminalGeometry();
    EXPECT_EQ(onFullDisk.ReadOption("Options", "ModemTimeout"), "");
    EXPECT_EQ(options.ModemTimeout, "");
    EXPECT_EQ(portSearches, 1);
    EXPECT_EQ(disk.tries, 1) << "the file is not tried again for each key";
}

TEST_F(OptionsStoreTest, FileThatCouldNotBeCreatedIsTriedAgainAfterASave)
{
    files.full = true;
    store.ReadOption("Options", "ModemTimeout");
    store.SaveOptions();
    files.full = false;
    EXPECT_EQ(store.ReadOption("Options", "ModemTimeout"), "");
    EXPECT_TRUE(files.files.empty()) << "a save that fails changes nothing";

    options.SiteID = "north";
    store.SaveOptions();
    EXPECT_EQ(store.ReadOption("Options", "SiteID"), "north");
    files.files.clear();
    EXPECT_EQ(store.ReadOption("Options", "SiteID"), "");
    EXPECT_EQ(saved(), GoldenFile("options_first_run.ini"));
}

TEST_F(OptionsStoreTest, UnreadableFileLeavesTheVariablesAndIsNotReplaced)
{
    holds("SiteID=north\r\n");
    options.SiteID = "south";
    options.ModemTimeout = "30";
    files.unreadable.insert("/app/options.ini");
    EXPECT_EQ(store.ReadOption("Options", "SiteID"), "");
    store.ReadAllOptions();
    EXPECT_EQ(options.SiteID, "south");
    EXPECT_EQ(options.ModemTimeout, "30");
    store.SaveOptions();
    EXPECT_EQ(saved(), "SiteID=north\r\n");
}

TEST_F(OptionsStoreTest, IconKeysCountUpFromTheFile)
{
    holds("Icons=1\r\n");
    options.Icons = "99";
    EXPECT_EQ(store.NextIconKey(), "::2");
    EXPECT_EQ(options.Icons, "2");
    store.SaveOptions();
    EXPECT_EQ(store.NextIconKey(), "::3");
}

TEST_F(OptionsStoreTest, CounterThatIsNoNumberGivesNoKey)
{
    holds("DesktopDir=C:\\Icons\r\nIcons=3\r\n");
    EXPECT_EQ(store.NextIconKey(), std::nullopt);
    EXPECT_EQ(options.Icons, "C:\\Icons");
}

} // namespace
} // namespace harvelop::test
