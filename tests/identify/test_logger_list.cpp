#include "fake_panel.h"

#include <gtest/gtest.h>

namespace harvelop::test
{

using Lines = std::vector<std::string>;

TEST(LoggerList, EachKindOfLoggerHasItsLine)
{
    struct Row {
        const char* model;
        const char* port;
        const char* baud;
        const char* stopBits;
        const char* line;
    };
    const Row rows[] = {
        {"KR200 Series 2", "3", "9600", "1", "KR200 Series 2 on Com 3"},
        {"KR200 Series 2", "10.0.0.5:3000", "", "", "KR200 Series 2 at 10.0.0.5:3000"},
        {"KR200 Series 2", "3", "0,,12345", "", "KR200 Series 2 via Modem on Com 3"},
        {"KR40", "3", "9600", "1", "KR40 sn 123 on Com 3"},
        {"KR40", "192.168.1.9:3000", "", "", "KR40 sn 123 at 192.168.1.9:3000"},
        {"KR40", "3", "12345", "", "KR40 sn 123 via Modem on Com 3"},
    };
    for (const Row& row : rows) {
        LoggerRecord record;
        record.LoggerModel = row.model;
        record.LoggerSerial = "123";
        record.LoggerPort = row.port;
        record.LoggerBaud = row.baud;
        record.LoggerStopBits = row.stopBits;
        EXPECT_EQ(LoggerListLine(record), row.line);
        record.LoggerDescription = "north_mast";
        EXPECT_EQ(LoggerListLine(record), "north_mast");
    }
}

TEST(LoggerList, AMissingSerialBecomesNone)
{
    IdentifyProgram t;
    LoggerRecord record;
    record.LoggerModel = "KR41";
    record.LoggerPort = "10.0.0.5:3000";
    t.Store(2, record);
    t.heart.viewing.AddLoggerToList(2);
    EXPECT_EQ(t.heart.state.cbxUnload_TallyCores.Lines(), Lines{"KR41 sn none at 10.0.0.5:3000"});
    EXPECT_EQ(t.Record(2).LoggerSerial, "none");
    EXPECT_EQ(t.heart.link.ConnectionKind, "Ethernet");
}

TEST(LoggerList, ADescriptionLeavesTheRecordAsItIs)
{
    IdentifyProgram t;
    LoggerRecord record;
    record.LoggerDescription = "north_mast";
    record.LoggerPort = "10.0.0.5:3000";
    t.Store(2, record);
    t.heart.viewing.AddLoggerToList(2);
    EXPECT_EQ(t.heart.state.cbxUnload_TallyCores.Lines(), Lines{"north_mast"});
    EXPECT_EQ(t.Record(2).LoggerSerial, "");
    EXPECT_EQ(t.heart.link.ConnectionKind, "RS232");
}

TEST(LoggerList, ALineGoesToTheHeadOrWhileAddingToItsPlace)
{
    IdentifyProgram t;
    for (int number = 1; number <= 3; ++number)
        t.Record(number).LoggerDescription = "logger" + std::to_string(number);
    t.heart.viewing.AddLoggerToList(2);
    t.heart.viewing.AddLoggerToList(1);
    t.heart.state.AddingLogger = true;
    t.heart.viewing.AddLoggerToList(3);
    EXPECT_EQ(t.heart.state.cbxUnload_TallyCores.Lines(), (Lines{"logger1", "logger2", "logger3"}));
    for (const int number : {0, 51, -1})
        t.heart.viewing.AddLoggerToList(number);
    EXPECT_EQ(t.heart.state.cbxUnload_TallyCores.Count(), 3);
}

TEST(LoggerList, RefreshListsTheStoredLoggersButNeverSlot50)
{
    IdentifyProgram t;
    LoggerRecord record;
    for (int number = 1; number <= MaxLoggers; ++number) {
        record.LoggerDescription = "logger" + std::to_string(number);
        t.Store(number, record);
    }
    t.heart.viewing.RefreshFoundLoggers();
    ASSERT_EQ(t.heart.state.cbxUnload_TallyCores.Count(), 49);
    EXPECT_EQ(t.heart.state.cbxUnload_TallyCores.Lines().front(), "logger1");
    EXPECT_EQ(t.heart.state.cbxUnload_TallyCores.Lines().back(), "logger49");

    t.heart.viewing.RebuildList();
    ASSERT_EQ(t.heart.state.cbxUnload_TallyCores.Count(), 50);
    EXPECT_EQ(t.heart.state.cbxUnload_TallyCores.Lines().back(), "logger50");
}

TEST(LoggerList, RefreshSavesAndReloadsOnlyWhileTheOptionsPanelIsLoaded)
{
    for (const bool loaded : {false, true}) {
        IdentifyProgram t;
        t.Store(3, SerialRecord("KR200 Series 1", "4"));
        t.heart.state.OptionsLoaded = loaded;
        t.heart.viewing.RefreshFoundLoggers();
        EXPECT_EQ(t.files.files.count(TestProgram::FoundIni), loaded ? 1u : 0u);
        EXPECT_EQ(t.heart.tables.Holds(1), loaded); // the gap is closed
        EXPECT_EQ(t.heart.tables.Holds(3), !loaded);
        EXPECT_EQ(t.heart.state.cbxUnload_TallyCores.Lines(), Lines{"KR200 Series 1 on Com 4"});
    }
}

TEST(LoggerList, DeletingAsksFirst)
{
    PanelProgram t;
    t.StoreAndList(1, SerialRecord("KR200 Series 1", "4"));
    const auto files = t.files.files;
    FakeAddDialog add;
    t.heart.forms.add = &add;
    t.heart.state.AddDialogOpen = true;
    t.dialogs.whileShown = [&] { add.steps.emplace_back("box"); };
    t.dialogs.Expect(BoxAnswer::No);
    t.heart.viewing.DeleteLogger(1);
    EXPECT_EQ(add.steps, (Lines{"clear", "box", "set"}));
    EXPECT_EQ(t.dialogs.shown.at(0).text, "Are you sure you want to delete this tallyCore ?     ");
    EXPECT_EQ(t.dialogs.shown.at(0).title, " tallyCore Harvel");
    EXPECT_EQ(t.dialogs.shown.at(0).icon, BoxIcon::Exclamation);
    EXPECT_EQ(t.dialogs.shown.at(0).buttons, BoxButtons::YesNo);
    EXPECT_EQ(t.files.files, files);
    EXPECT_EQ(t.heart.state.cbxUnload_TallyCores.Count(), 1);
}

TEST(LoggerList, TheQuestionInAnotherLanguageKeepsItsTitle)
{
    IdentifyProgram t;
    t.UseLanguage({503, 737});
    t.dialogs.Expect(BoxAnswer::No);
    t.heart.viewing.DeleteLogger(1);
    EXPECT_EQ(t.dialogs.shown.at(0).text, "[737] ?     ");
    EXPECT_EQ(t.dialogs.shown.at(0).title, " tallyCore Harvel");
}

TEST(LoggerList, DeletingRemovesTheLoggerItsDeliveryListAndItsTableNames)
{
    PanelProgram t;
    for (int number = 1; number <= 3; ++number) {
        LoggerRecord record = SerialRecord("KR200 Series 1", std::to_string(number));
        record.LoggerIconKey = "::1234567";
        record.LoggerTableNames.fill("rain");
        t.Store(number, record);
    }
    t.files.files["/home/user/loggers/emaillist12345.ini"] = "0:a@b\r\n";
    t.StoreAndList(2, t.Record(2));
    t.dialogs.Expect(BoxAnswer::Yes);
    t.heart.viewing.DeleteLogger(2);

    EXPECT_EQ(t.heart.tables.Count(), 2);
    EXPECT_EQ(t.Record(2).LoggerPort, "3"); // the gap is closed
    EXPECT_EQ(t.heart.state.cbxUnload_TallyCores.Lines(),
              (Lines{"KR200 Series 1 on Com 1", "KR200 Series 1 on Com 3"}));
    EXPECT_EQ(t.heart.state.cbxUnload_TallyCores.Selected(), 0);
    EXPECT_EQ(t.files.files.count("/home/user/loggers/emaillist12345.ini"), 0u);
    EXPECT_EQ(t.Record(2).LoggerTab, 1);
    EXPECT_FALSE(t.heart.state.DeletingLogger);
    const std::string found = t.files.files[TestProgram::FoundIni];
    EXPECT_EQ(std::count(found.begin(), found.end(), '\n'), 2);
}

TEST(LoggerList, DeletingTheLastLoggerLeavesAnEmptyList)
{
    PanelProgram t;
    t.StoreAndList(1, SerialRecord("KR200 Series 1", "4"));
    t.dialogs.Expect(BoxAnswer::Yes);
    t.heart.viewing.DeleteLogger(1);
    EXPECT_EQ(t.heart.state.cbxUnload_TallyCores.Count(), 0);
    EXPECT_EQ(t.heart.state.cbxUnload_TallyCores.Text(), "");
    EXPECT_FALSE(t.heart.tables.HaveFoundLoggers);
    EXPECT_EQ(t.Record(1).LoggerTableNames, ScheduleTexts());
    EXPECT_EQ(t.Record(1).LoggerTab, 1);
    EXPECT_EQ(t.files.removed, Lines{"/home/user/loggers/emaillist.ini"}); // a logger without a key
}

TEST(LoggerList, DeletingALoggerThatDoesNotExistChangesNothing)
{
    PanelProgram t;
    t.StoreAndList(1, SerialRecord("KR200 Series 1", "4"));
    t.heart.state.cbxUnload_TallyCores.Clear();
    for (const int index : {0, 51}) {
        t.dialogs.Expect(BoxAnswer::Yes);
        t.heart.viewing.DeleteLogger(index);
    }
    EXPECT_EQ(t.heart.tables.Count(), 1);
    EXPECT_TRUE(t.files.removed.empty());
}

} // namespace harvelop::test
