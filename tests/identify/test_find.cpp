#include "identify_program.h"

#include <gtest/gtest.h>

namespace harvelop::test
{

using Lines = std::vector<std::string>;

namespace
{

std::string times(int count, const std::string& text)
{
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

// The line of found.ini of a logger as a search stores it.
std::string foundLine(int number, const std::string& head, const std::string& version, const std::string& key)
{
    return std::to_string(number) + "tallyCoreSettings=" + head + ",N,8,1,SWFC," + times(60, "0,") + "1,0,0," +
           "/home/user/tallyCore/,0,,," + version + "," + key + ",,,," + times(12, ",") + "10,\r\n";
}

struct Finding : IdentifyProgram {
    HeadlessPanels panels{heart.panelServices()};

    void PlugFour()
    {
        serial.Plug(1, Logger("KR200", "1", "7.18"), "9600");
        serial.Plug(3, Logger("KR305 with a XBM", "3", "9.05", "", "mountain"), "1200");
        serial.Plug(4, Logger("KR40", "", "5.06.0001", "012345"), "115200");
        serial.Plug(9, Logger("KR400", "", "6.10.0002", "098765"), "57600");
    }

    LoggerRecord Kept(const std::string& description) const
    {
        LoggerRecord record;
        record.LoggerPort = "10.0.0.5:3000";
        record.LoggerModel = "KR41";
        record.LoggerSerial = "000041";
        record.LoggerDescription = description;
        record.LoggerKept = 1;
        record.LoggerIconKey = "::77";
        return record;
    }
};

} // namespace

TEST(Find, TheFileHoldsWhatWasFound)
{
    Finding t;
    t.PlugFour();
    t.dialogs.ExpectPassword("mountain");
    t.Find(" All Ports");
    EXPECT_EQ(t.Search().FoundCount, 4);
    EXPECT_EQ(t.Search().FoundPorts.at(3), 9);
    std::string expected = foundLine(1, "1,KR200 Series 1,none,9600", "7.18", "::2") +
                           foundLine(2, "3,KR305 Series 3,none,1200", "9.05", "::3") +
                           foundLine(3, "4,KR40,012345,115200", "5.06.0001", "::4") +
                           foundLine(4, "9,KR400,098765,57600", "6.10.0002", "::5");
    const auto password = expected.find(",0,,,9.05,");
    ASSERT_NE(password, std::string::npos);
    expected.replace(password, 10, ",0,mountain,,9.05,");
    EXPECT_EQ(t.files.files[TestProgram::FoundIni], expected);
    EXPECT_EQ(t.heart.options.Icons, "5");
}

TEST(Find, AfterwardsTheListShowsTheLoggersAndTheLastIsChosen)
{
    Finding t;
    t.PlugFour();
    t.dialogs.ExpectPassword("mountain");
    t.Find(" All Ports");
    EXPECT_EQ(t.heart.state.cbxUnload_TallyCores.Lines(),
              (Lines{"KR200 Series 1 on Com 1", "KR305 Series 3 on Com 3", "KR40 sn 012345 on Com 4",
                     "KR400 sn 098765 on Com 9"}));
    EXPECT_EQ(t.heart.state.cbxUnload_TallyCores.Selected(), 3);
    EXPECT_FALSE(t.heart.state.SearchRunning);
    EXPECT_FALSE(t.serial.PortOpen());
    EXPECT_EQ(t.heart.link.LinkMode, "None");
    EXPECT_EQ(t.optionsForm.caption, " tallyCore Harvel Options");
    EXPECT_FALSE(t.messages.Visible());
    EXPECT_TRUE(t.optionsForm.formEnabled);
    EXPECT_EQ(t.optionsForm.changes.back(), (std::pair<std::string, bool>{"cmdOk", true}));
    EXPECT_TRUE(t.Said("Searching for tallyCores ..."));
}

TEST(Find, SixteenPortsEachCountByTheirOwnResult)
{
    Finding t;
    for (int port = 1; port <= 16; ++port)
        t.serial.Plug(port, port % 3 == 1 ? Logger("KR20", "2", "1.00") : nullptr, "9600");
    t.Find(" All Ports");
    EXPECT_EQ(t.Search().FoundCount, 6);
    const int ports[] = {1, 4, 7, 10, 13, 16};
    for (int find = 1; find <= 6; ++find) {
        EXPECT_EQ(t.Search().FoundPorts.at(static_cast<size_t>(find - 1)), ports[find - 1]);
        EXPECT_EQ(t.Record(find).LoggerPort, std::to_string(ports[find - 1]));
        EXPECT_EQ(t.Record(find).LoggerModel, "KR20 Series 2");
    }
}

TEST(Find, OnlyTheChosenPortIsSearched)
{
    Finding t;
    t.PlugFour();
    t.Find(" Com 4");
    EXPECT_EQ(t.Search().FoundCount, 1);
    EXPECT_EQ(t.Search().FoundPorts.at(0), 4);
    EXPECT_EQ(t.heart.tables.Count(), 1);

    Finding twoDigits;
    twoDigits.serial.Plug(16, Logger("KR45", "", "1.00.0000", "000016"), "9600");
    twoDigits.Find(" Com 16");
    EXPECT_EQ(twoDigits.Search().FoundPorts.at(0), 16);

    Finding withoutBlank; // the entry of a machine with one port
    withoutBlank.PlugFour();
    withoutBlank.Find("Com 9");
    EXPECT_EQ(withoutBlank.Search().FoundPorts.at(0), 9);
}

TEST(Find, ACancelledReplacementChangesNothing)
{
    Finding t;
    t.PlugFour();
    t.Store(1, t.Kept(""));
    t.heart.records.SaveFoundLoggers();
    t.heart.viewing.RebuildList();
    t.heart.state.cbxUnload_TallyCores.Select(0);
    const auto files = t.files.files;
    const auto lines = t.heart.state.cbxUnload_TallyCores.Lines();
    t.dialogs.Expect(BoxAnswer::Cancel);
    t.Find(" All Ports");
    EXPECT_EQ(t.dialogs.shown.at(0).text, "This will remove all previously found tallyCores and replace them with "
                                          "those currently connected to this computer.     ");
    EXPECT_EQ(t.dialogs.shown.at(0).title, " tallyCore Harvel");
    EXPECT_EQ(t.dialogs.shown.at(0).icon, BoxIcon::Exclamation);
    EXPECT_EQ(t.dialogs.shown.at(0).buttons, BoxButtons::OkCancel);
    EXPECT_EQ(t.files.files, files);
    EXPECT_EQ(t.heart.tables.Count(), 1);
    EXPECT_EQ(t.heart.state.cbxUnload_TallyCores.Lines(), lines);
    EXPECT_TRUE(t.serial.events.empty());
    EXPECT_FALSE(t.heart.state.SearchRunning);
    EXPECT_EQ(t.optionsForm.changes.back().second, true);
}

TEST(Find, TheFormerLoggersAreGoneBeforeTheSweepAndStayGoneIfNothingIsFound)
{
    Finding t;
    LoggerRecord record;
    record.LoggerPort = "7";
    record.LoggerModel = "KR41";
    record.LoggerPassword = "secret";
    t.Store(1, record);
    t.heart.records.SaveFoundLoggers();
    t.heart.viewing.RebuildList();
    t.heart.state.cbxUnload_TallyCores.Select(0);
    t.Record(20).LoggerVersion = "stale"; // a table without a logger
    t.serial.Plug(2, nullptr, "");
    t.dialogs.Expect(BoxAnswer::Ok);
    t.dialogs.Expect(BoxAnswer::Ok);
    bool goneInTheSweep = false;
    t.pump.After(1000, [&] { goneInTheSweep = t.files.files.count(TestProgram::FoundIni) == 0; });
    t.Find(" All Ports");
    EXPECT_TRUE(goneInTheSweep);
    EXPECT_EQ(t.heart.tables.Count(), 0);
    EXPECT_EQ(t.Record(1).LoggerPort, "0");
    EXPECT_EQ(t.Record(1).LoggerPassword, "");
    EXPECT_EQ(t.Record(20).LoggerVersion, "");
    EXPECT_EQ(t.heart.state.cbxUnload_TallyCores.Count(), 0);
}

TEST(Find, NothingFoundAnywhereIsToldInABox)
{
    Finding t;
    t.serial.Plug(2, nullptr, "");
    t.dialogs.Expect(BoxAnswer::Ok);
    t.Find(" All Ports");
    EXPECT_EQ(t.dialogs.shown.at(0).text, "No tallyCores were found connected to this Computer.     ");
    EXPECT_EQ(t.dialogs.shown.at(0).title, " tallyCore Harvel");
    EXPECT_EQ(t.dialogs.shown.at(0).icon, BoxIcon::Critical);
    EXPECT_EQ(t.messages.Caption(), "<- No tallyCores Found");
    EXPECT_EQ(t.Search().FoundCount, 0);
    EXPECT_FALSE(t.heart.state.SearchRunning);
    EXPECT_FALSE(t.heart.end.Ended());
    EXPECT_TRUE(t.optionsForm.formEnabled);
    EXPECT_EQ(t.optionsForm.caption, " tallyCore Harvel Options");
}

TEST(Find, NothingFoundOnOnePortIsToldWithItsLastDigit)
{
    for (const auto& [port, digit] : {std::pair{2, "2"}, std::pair{12, "2"}, std::pair{10, "0"}}) {
        Finding t;
        t.serial.Plug(port, nullptr, "");
        t.dialogs.Expect(BoxAnswer::Ok);
        t.Find(" Com " + std::to_string(port));
        EXPECT_EQ(t.dialogs.shown.at(0).text,
                  "No tallyCores were found connected to Com " + std::string(digit) + ".     ");
    }
}

TEST(Find, APortSeenBusyIsNotToldAgain)
{
    Finding t;
    t.serial.Plug(12, nullptr, "");
    t.heart.link.PortBusySeen.Set(2, true); // the last digit is what is tested
    t.Find(" Com 12");
    EXPECT_TRUE(t.dialogs.shown.empty());
}

TEST(Find, ABusyPortIsSkippedAfterItsBoxAndNothingFoundMayFollow)
{
    Finding t;
    t.serial.ports[3].openError = PortBusy;
    t.dialogs.Expect(BoxAnswer::Ok);
    t.dialogs.Expect(BoxAnswer::Ok);
    t.Find(" Com 3");
    ASSERT_EQ(t.dialogs.shown.size(), 2u);
    EXPECT_EQ(t.dialogs.shown[0].text, "Can't Connect to Com 3 : the Port is Busy.     ");
    EXPECT_EQ(t.dialogs.shown[1].text, "No tallyCores were found connected to Com 3.     ");
}

TEST(Find, AProgramStartedForOneCommandEndsIfNothingIsFound)
{
    Finding t;
    t.serial.Plug(2, nullptr, "");
    t.heart.state.LaunchCommand = "::2";
    t.dialogs.Expect(BoxAnswer::Ok);
    t.Find(" All Ports");
    EXPECT_TRUE(t.heart.end.Ended());
    EXPECT_FALSE(t.heart.state.SearchRunning);
}

TEST(Find, ALanguageFileTellsItInItsWords)
{
    Finding t;
    t.UseLanguage({300, 301, 503, 551, 552, 553});
    t.serial.Plug(2, nullptr, "");
    t.heart.state.cbxUnload_TallyCores.SetText("KR40");
    for (int i = 0; i < 3; ++i)
        t.dialogs.Expect(BoxAnswer::Ok);
    t.Find(" All Ports");
    t.Find(" Com 2");
    ASSERT_EQ(t.dialogs.shown.size(), 3u);
    EXPECT_EQ(t.dialogs.shown[0].text, "[551]");
    EXPECT_EQ(t.dialogs.shown[1].text, "[552] [503].     ");
    EXPECT_EQ(t.dialogs.shown[2].text, "[553]2[503].     ");
    EXPECT_TRUE(t.Said("[300] ..."));
    EXPECT_TRUE(t.Said("[301]"));
}

TEST(Find, PortsAreProbedFirstIfTheyAreUnknownOrTheOptionAsksForIt)
{
    for (const auto& [listed, findPorts, probed] :
         {std::tuple{"0", false, true}, std::tuple{"4,", true, true}, std::tuple{"4,", false, false}}) {
        Finding t;
        t.serial.Plug(4, Logger("KR40", "", "5.06.0001", "012345"), "115200");
        t.heart.options.AvailablePorts = listed;
        t.heart.options.FindPorts = findPorts;
        t.Find(" All Ports");
        EXPECT_EQ(t.Said("Looking for Available Com Ports ..."), probed);
        EXPECT_EQ(t.Said("Com port 4 is available"), probed);
        EXPECT_EQ(t.heart.state.cbxUnload_Ports.Lines(), Lines{"Com 4"});
        EXPECT_EQ(t.Search().FoundCount, 1);
    }
}

TEST(Find, ACancelledPasswordQuestionDoesNotCountAndTheNextFindTakesItsPlace)
{
    Finding t;
    t.PlugFour();
    t.dialogs.ExpectPassword("");
    t.Find(" All Ports");
    EXPECT_EQ(t.Search().FoundCount, 3);
    EXPECT_EQ(t.Record(1).LoggerModel, "KR200 Series 1");
    EXPECT_EQ(t.Record(2).LoggerModel, "KR40");
    EXPECT_EQ(t.Record(2).LoggerPort, "4");
    EXPECT_EQ(t.Record(2).LoggerSerial, "012345");
    EXPECT_EQ(t.Record(3).LoggerModel, "KR400");
    EXPECT_EQ(t.Record(3).LoggerPort, "9");
}

TEST(Find, ALoggerThatStaysUnidentifiedIsSetBackToNormalBeforeTheNextPortOpens)
{
    Finding t;
    auto locked = std::make_shared<ScriptedLogger>(std::map<std::string, std::string>{{"\x7f", "<<\r\n"}});
    t.serial.Plug(1, locked, "9600");
    t.serial.Plug(2, nullptr, "");
    t.dialogs.ExpectPassword("");
    t.dialogs.Expect(BoxAnswer::Ok);
    t.Find(" All Ports");
    std::string onComOne;
    for (const auto& event : t.serial.events)
        if (event.kind == FakeSerial::Event::Kind::Sent && event.port == 1)
            onComOne += event.text;
    EXPECT_TRUE(onComOne.ends_with("/h/R/U/N\r\n\r\n")) << onComOne;
    EXPECT_NE(std::find(locked->lines.begin(), locked->lines.end(), "/h/R/U/N"), locked->lines.end());
}

TEST(Find, ALoggerThatNobodyKnowsIsStoredAsUnknown)
{
    Finding t;
    LoggerConfig config;
    config.failure = Failure::WrongModel;
    t.serial.Plug(5, std::make_shared<SimulatedLogger>(config), "9600");
    t.Find(" All Ports");
    EXPECT_EQ(t.Record(1).LoggerModel, "Unknown");
    EXPECT_EQ(t.Record(1).LoggerPort, "5");
    EXPECT_EQ(t.heart.state.cbxUnload_TallyCores.Lines(), Lines{"Unknown on Com 5"});
}

TEST(Find, NothingOfAnEarlierSearchReachesTheNext)
{
    Finding t;
    t.serial.Plug(4, Logger("KR40", "", "5.06.0001", "012345"), "9600");
    t.Find(" All Ports");
    t.serial.Plug(4, Logger("KR20", "1", "1.00"), "9600");
    t.dialogs.Expect(BoxAnswer::Ok);
    t.Find(" All Ports");
    EXPECT_EQ(t.Record(1).LoggerModel, "KR20 Series 1");
    EXPECT_EQ(t.Record(1).LoggerSerial, "none");
    EXPECT_EQ(t.Record(1).LoggerIconKey, "::3");
    EXPECT_EQ(t.heart.tables.Count(), 1);
}

TEST(Find, LoggersEnteredByHandSurviveInTheirSlots)
{
    Finding t;
    LoggerRecord found = t.Kept("");
    found.LoggerKept = 0;
    t.Store(1, found);
    t.Store(2, t.Kept("kept_a"));
    t.Store(3, found);
    t.Store(5, t.Kept("kept_b"));
    t.heart.records.SaveFoundLoggers();
    t.heart.viewing.RebuildList();
    t.heart.state.cbxUnload_TallyCores.Select(0);
    t.PlugFour();
    t.dialogs.Expect(BoxAnswer::Ok);
    t.dialogs.ExpectPassword("mountain");
    std::string duringTheSweep;
    t.pump.After(3000, [&] { duringTheSweep = t.files.files[TestProgram::FoundIni]; });
    t.Find(" All Ports");
    EXPECT_NE(duringTheSweep.find("kept_a"), std::string::npos);
    EXPECT_NE(duringTheSweep.find("kept_b"), std::string::npos);
    EXPECT_EQ(std::count(duringTheSweep.begin(), duringTheSweep.end(), '\n'), 2);
    EXPECT_EQ(t.heart.state.cbxUnload_TallyCores.Lines(),
              (Lines{"KR200 Series 1 on Com 1", "kept_a", "KR305 Series 3 on Com 3", "KR40 sn 012345 on Com 4",
                     "kept_b", "KR400 sn 098765 on Com 9"}));
    EXPECT_EQ(t.Record(2).LoggerKept, 1);
    EXPECT_EQ(t.Record(2).LoggerIconKey, "::77");
    EXPECT_EQ(t.Record(3).LoggerPassword, "mountain");
    EXPECT_EQ(t.Record(3).LoggerVersion, "9.05");
    EXPECT_EQ(t.heart.state.CurrentLogger, 6);
}

TEST(Find, ASearchThatFindsNothingKeepsTheLoggersEnteredByHand)
{
    Finding t;
    t.Store(4, t.Kept("kept_a"));
    t.serial.Plug(2, nullptr, "");
    t.dialogs.Expect(BoxAnswer::Ok);
    t.heart.state.OptionsLoaded = true;
    t.Find(" All Ports");
    EXPECT_EQ(t.heart.state.cbxUnload_TallyCores.Lines(), Lines{"kept_a"});
    EXPECT_EQ(t.heart.tables.Count(), 1);
    EXPECT_NE(t.files.files[TestProgram::FoundIni].find("kept_a"), std::string::npos);
}

TEST(Find, NoModemIsHungUpForAKeptModemLogger)
{
    Finding t;
    LoggerRecord modem = t.Kept("");
    modem.LoggerPort = "2";
    modem.LoggerBaud = "0123456";
    t.Store(1, modem);
    t.serial.Plug(4, Logger("KR40", "", "5.06.0001", "012345"), "9600");
    t.Find(" All Ports");
    EXPECT_EQ(t.serial.Sent().find("+++"), std::string::npos);
    EXPECT_EQ(t.Record(1).LoggerBaud, "0123456");
    EXPECT_EQ(t.Record(2).LoggerModel, "KR40");
}

TEST(Find, WhereEverySlotIsTakenByHandNothingIsStoredAndThePanelComesBack)
{
    for (const int taken : {49, 50}) {
        Finding t;
        for (int number = 1; number <= taken; ++number)
            t.Store(number, t.Kept("kept" + std::to_string(number)));
        t.serial.Plug(4, Logger("KR40", "", "5.06.0001", "012345"), "9600");
        t.Find(" All Ports");
        EXPECT_EQ(t.heart.tables.Count(), 50);
        EXPECT_EQ(t.heart.state.cbxUnload_TallyCores.Count(), 49); // slot 50 is not listed
        EXPECT_EQ(t.Record(50).LoggerModel, taken == 49 ? "KR40" : "KR41");
        EXPECT_TRUE(t.optionsForm.formEnabled);
        EXPECT_EQ(t.optionsForm.changes.back().second, true);
    }
}

TEST(Find, WithoutAnyPanelTheRecordsAreStoredAllTheSame)
{
    IdentifyProgram t;
    t.serial.Plug(4, Logger("KR40", "", "5.06.0001", "012345"), "9600");
    t.Find(" All Ports");
    EXPECT_EQ(t.Record(1).LoggerModel, "KR40");
    EXPECT_EQ(t.Record(1).LoggerSerial, "012345");
    EXPECT_EQ(t.heart.tables.Count(), 1);
    EXPECT_EQ(t.optionsForm.okFocused, 1);
}

TEST(Find, AFullDiskLeavesTheOldFileWhole)
{
    Finding t;
    t.files.files[TestProgram::FoundIni] = "1tallyCoreSettings=7,KR41,\r\n";
    t.heart.records.LoadFoundLoggers();
    t.serial.Plug(4, Logger("KR40", "", "5.06.0001", "012345"), "9600");
    t.files.full = true;
    t.Find(" All Ports");
    EXPECT_EQ(t.files.files[TestProgram::FoundIni], "1tallyCoreSettings=7,KR41,\r\n");
    EXPECT_TRUE(t.optionsForm.formEnabled);
}

} // namespace harvelop::test
