#include "panels/record_edits.h"
#include "settings/panel_loading.h"
#include "settings/sample_loggers.h"
#include "support/test_program.h"

namespace harvelop::test
{

namespace
{

// A logger whose panel is open.
struct EditBench : TestProgram {
    EditBench() { Use(SerialLogger()); }

    void Use(LoggerRecord record)
    {
        logger.record = std::move(record);
        logger.values = LoadPanelValues(logger.record, heart.options, false);
    }
    // The line of the refusal; empty if the edits are in.
    std::string Apply(const std::vector<RecordEdit>& edits)
    {
        const auto isFolder = [](const std::string& path) { return path == "/srv/data" || path == "/"; };
        return ApplyEdits(logger, edits, {heart.language, isFolder}).value_or("");
    }
    PanelValues& Values() { return logger.values; }
    LoggerRecord& Record() { return logger.record; }

    EditedLogger logger;
};

constexpr size_t A = 0;
constexpr size_t B = 1;
constexpr size_t OlderX = 4;
constexpr size_t X = 11;

} // namespace

TEST(RecordEdits, BoxesOfTheGridTakeNoughtAndOne)
{
    EditBench t;
    EXPECT_EQ(t.Apply({{"ScheduleOn.B", "1"}, {"ScheduleOn.X", "0"}, {"ScheduleUlast.A", "1"}, {"ScheduleCSV.A", "1"}}),
              "");
    EXPECT_TRUE(t.Values().on[B]);
    EXPECT_FALSE(t.Values().on[OlderX]);
    EXPECT_TRUE(t.Values().ulast[A]);
    EXPECT_TRUE(t.Values().csv[A]);
    for (const char* table : {"ScheduleOn.A", "ScheduleUlast.A", "ScheduleCSV.A", "ScheduleHTML.A", "LoggerViaEmail",
                              "LoggerViaFTP", "LoggerMdbOn"})
        for (const char* value : {"", "2", "-1", "True", "on", " 1", "01"})
            EXPECT_EQ(t.Apply({{table, value}}), std::string(table) + " wants 0 or 1.") << value;
}

TEST(RecordEdits, HtmlForcesUlastAndCsvOnAndHoldsThem)
{
    EditBench t;
    EXPECT_EQ(t.Apply({{"ScheduleHTML.A", "1"}}), "");
    EXPECT_TRUE(t.Values().ulast[A]);
    EXPECT_TRUE(t.Values().csv[A]);
    EXPECT_FALSE(t.Values().ulast[B]);
    EXPECT_EQ(t.Apply({{"ScheduleUlast.A", "0"}}), "ScheduleUlast.A is held on by HTML.");
    EXPECT_EQ(t.Apply({{"ScheduleCSV.A", "0"}}), "ScheduleCSV.A is held on by HTML.");
    EXPECT_EQ(t.Apply({{"ScheduleCSV.A", "1"}, {"ScheduleUlast.A", "1"}}), ""); // they are on: nothing changes
    EXPECT_EQ(t.Apply({{"ScheduleHTML.A", "0"}}), "");
    EXPECT_TRUE(t.Values().ulast[A]);
    EXPECT_TRUE(t.Values().csv[A]);
    EXPECT_EQ(t.Apply({{"ScheduleUlast.A", "0"}, {"ScheduleCSV.A", "0"}}), "");
    EXPECT_FALSE(t.Values().csv[A]);
}

TEST(RecordEdits, TheDatabaseHoldsCsvOnAndClearsItWhereThereIsNoHtml)
{
    EditBench t;
    EXPECT_EQ(t.Apply({{"LoggerDescription", "Pump"}, {"ScheduleHTML.A", "1"}, {"LoggerMdbOn", "1"}}), "");
    EXPECT_EQ(t.Record().LoggerMdbOn, "1");
    for (size_t row = 0; row <= OlderX; ++row)
        EXPECT_TRUE(t.Values().csv[row]) << row;
    EXPECT_FALSE(t.Values().csv[OlderX + 1]);
    EXPECT_EQ(t.Apply({{"ScheduleCSV.B", "0"}}), "ScheduleCSV.B is held on by the database.");
    EXPECT_EQ(t.Apply({{"ScheduleCSV.A", "0"}}), "ScheduleCSV.A is held on by HTML.");

    EXPECT_EQ(t.Apply({{"ScheduleHTML.A", "0"}}), "");
    EXPECT_TRUE(t.Values().csv[A]);
    EXPECT_EQ(t.Apply({{"ScheduleHTML.A", "1"}, {"LoggerMdbOn", "0"}}), "");
    EXPECT_EQ(t.Record().LoggerMdbOn, "0");
    EXPECT_TRUE(t.Values().csv[A]);
    EXPECT_FALSE(t.Values().csv[B]);
}

TEST(RecordEdits, TheDatabaseNeedsADescription)
{
    EditBench t;
    EXPECT_EQ(t.Apply({{"LoggerMdbOn", "1"}}), "LoggerMdbOn needs a LoggerDescription first.");
    EXPECT_EQ(t.Apply({{"LoggerMdbOn", "1"}, {"LoggerDescription", "Pump"}}),
              "LoggerMdbOn needs a LoggerDescription first.");
    EXPECT_EQ(t.Apply({{"LoggerMdbOn", "0"}}), "");

    t.Use(ModemLogger());
    ASSERT_TRUE(t.Values().mdb);
    ASSERT_EQ(t.Apply({{"LoggerDescription", ""}}), "");
    EXPECT_FALSE(t.Values().mdb);
    EXPECT_EQ(t.Record().LoggerMdbOn, "0");
    EXPECT_EQ(t.Values().description, "");
}

TEST(RecordEdits, ADatabaseThatIsOnWithoutADescriptionStays)
{
    EditBench t;
    LoggerRecord odd = ModemLogger();
    odd.LoggerDescription.clear();
    t.Use(odd);
    EXPECT_EQ(t.Apply({{"LoggerDescription", ""}, {"ScheduleOn.A", "1"}}), "");
    EXPECT_TRUE(t.Values().mdb);
    EXPECT_EQ(t.Apply({{"LoggerMdbOn", "0"}}), "LoggerMdbOn needs a LoggerDescription first.");
}

TEST(RecordEdits, RecordsAreOpenOnlyWhileHtmlIsOn)
{
    EditBench t;
    EXPECT_EQ(t.Apply({{"ScheduleRecords.X", "7"}}),
              "ScheduleRecords.X can be changed only while HTML of its schedule is on.");
    EXPECT_EQ(t.Apply({{"ScheduleRecords.X", "100"}}), ""); // it holds that already
    EXPECT_EQ(t.Apply({{"ScheduleHTML.X", "1"}, {"ScheduleRecords.X", "7"}, {"ScheduleHTML.X", "0"}}), "");
    EXPECT_EQ(t.Values().records[OlderX], "7");
}

TEST(RecordEdits, RecordsOfTheNewFamilyAreUpToFourDigits)
{
    EditBench t;
    t.Use(NetworkLogger());
    for (const char* good : {"1", "0042", "9999", ""}) {
        EXPECT_EQ(t.Apply({{"ScheduleRecords.X", good}}), "");
        EXPECT_EQ(t.Values().records[X], good);
    }
    for (const char* bad : {"12a", "-1", "1.5", " 1", "1,2", "1\n"})
        EXPECT_EQ(t.Apply({{"ScheduleRecords.X", bad}}), "ScheduleRecords.X: Invalid Character.") << bad;
    EXPECT_EQ(t.Apply({{"ScheduleRecords.X", "12345"}}), "ScheduleRecords.X can't be longer than 4 characters.");
    EXPECT_EQ(t.Values().records[X], "");
}

TEST(RecordEdits, RecordsOfTheOlderFamilyAreAnyTextOfOneField)
{
    EditBench t;
    ASSERT_EQ(t.Apply({{"ScheduleHTML.A", "1"}}), "");
    for (const char* good : {"a", "123456", "last 5", "\xFC"}) {
        EXPECT_EQ(t.Apply({{"ScheduleRecords.A", good}}), "");
        EXPECT_EQ(t.Values().records[A], good);
    }
    EXPECT_EQ(t.Apply({{"ScheduleRecords.A", "1,2"}}), "ScheduleRecords.A: A comma can't be stored here.");
    EXPECT_EQ(t.Apply({{"ScheduleRecords.A", "1\r2"}}), "ScheduleRecords.A: A line end can't be stored here.");
}

TEST(RecordEdits, DeliveryIsOnOnlyWhereTheAccountsAllowIt)
{
    EditBench t;
    EXPECT_EQ(t.Apply({{"LoggerViaEmail", "1"}}),
              "LoggerViaEmail can't be on: the email account in the options is not filled in.");
    EXPECT_EQ(t.Apply({{"LoggerViaFTP", "1"}}),
              "LoggerViaFTP can't be on: the FTP account in the options is not filled in.");
    EXPECT_EQ(t.Apply({{"LoggerViaEmail", "0"}, {"LoggerViaFTP", "0"}}), "");
    Options& options = t.heart.options;
    options.FTPServername = options.FTPUserName = options.FTPPassword = "x";
    options.SMTPServerName = options.SMTPSender = "x";
    t.Use(SerialLogger());
    EXPECT_EQ(t.Apply({{"LoggerViaFTP", "1"}}), "");
    EXPECT_EQ(t.Apply({{"LoggerViaEmail", "1"}}), // a panel that opens wants a port too
              "LoggerViaEmail can't be on: the email account in the options is not filled in.");
    options.SMTPPort = "25";
    t.Use(SerialLogger());
    EXPECT_EQ(t.Apply({{"LoggerViaEmail", "1"}}), "");
    EXPECT_TRUE(t.Values().viaEmail);
    EXPECT_FALSE(t.Values().viaFTP);
}

TEST(RecordEdits, ADescriptionHoldsLettersDigitsAndUnderscores)
{
    EditBench t;
    const std::string longest(32, 'x');
    for (const std::string& good : {std::string("Pump_1"), longest, std::string()}) {
        EXPECT_EQ(t.Apply({{"LoggerDescription", good}}), "");
        EXPECT_EQ(t.Values().description, good);
    }
    for (const char* bad : {"a b", "a,b", "a-b", "B\xC3\xBCro", "a\r\nb", "a\n"})
        EXPECT_EQ(t.Apply({{"LoggerDescription", bad}}),
                  "LoggerDescription can hold only the letters A to Z, digits and _.")
            << bad;
    EXPECT_EQ(t.Apply({{"LoggerDescription", longest + "x"}}), "LoggerDescription can't be longer than 32 characters.");
}

TEST(RecordEdits, AStoredDescriptionIsCleanedAsThePanelCleansIt)
{
    EditBench t;
    LoggerRecord odd = ModemLogger();
    odd.LoggerDescription = "B\xFCro 7";
    t.Use(odd);
    EXPECT_EQ(t.Apply({{"ScheduleOn.A", "1"}}), "");
    EXPECT_EQ(t.Values().description, "Bro7");
    EXPECT_TRUE(t.Values().mdb);

    odd.LoggerDescription = "- -";
    t.Use(odd);
    EXPECT_EQ(t.Apply({{"ScheduleOn.A", "1"}}), "");
    EXPECT_EQ(t.Values().description, "");
    EXPECT_FALSE(t.Values().mdb);
}

TEST(RecordEdits, TheSaveFolderIsAnExistingFolder)
{
    EditBench t;
    for (const char* good : {"/srv/data", "/srv/data/", "/srv/data///"}) {
        t.Record().LoggerSaveFolder = "/old/";
        EXPECT_EQ(t.Apply({{"LoggerSaveFolder", good}}), "") << good;
        EXPECT_EQ(t.Record().LoggerSaveFolder, "/srv/data/") << good;
    }
    for (const char* bad : {"", "/srv/gone", "srv/data", "."})
        EXPECT_EQ(t.Apply({{"LoggerSaveFolder", bad}}), "LoggerSaveFolder wants the whole path of an existing folder.")
            << bad;
    for (const char* root : {"/", "//"})
        EXPECT_EQ(t.Apply({{"LoggerSaveFolder", root}}), "LoggerSaveFolder can't be a root directory.");
    EXPECT_EQ(t.Apply({{"LoggerSaveFolder", "/srv/a,b"}}), "LoggerSaveFolder: A comma can't be stored here.");
    EXPECT_EQ(t.Record().LoggerSaveFolder, "/srv/data/");
}

TEST(RecordEdits, WhatRunsAfterAnUnloadIsOneField)
{
    EditBench t;
    EXPECT_EQ(t.Apply({{"LoggerRunProgram", "/opt/my report"}, {"LoggerRunCommand", "a=1 \r\nb\n"}}), "");
    EXPECT_EQ(t.Record().LoggerRunProgram, "/opt/my report");
    EXPECT_EQ(t.Record().LoggerRunCommand, "a=1 b");
    EXPECT_EQ(t.Apply({{"LoggerRunProgram", "a,b"}}), "LoggerRunProgram: A comma can't be stored here.");
    EXPECT_EQ(t.Apply({{"LoggerRunProgram", "a\nb"}}), "LoggerRunProgram: A line end can't be stored here.");
    EXPECT_EQ(t.Apply({{"LoggerRunCommand", "a,b"}}), "LoggerRunCommand: A comma can't be stored here.");
    EXPECT_EQ(t.Apply({{"LoggerRunProgram", ""}, {"LoggerRunCommand", ""}}), "");
    EXPECT_EQ(t.Record().LoggerRunProgram + t.Record().LoggerRunCommand, "");
}

TEST(RecordEdits, TableNamesAreUniqueOverAllTwelveEntries)
{
    EditBench t;
    LoggerRecord record = ModemLogger(); // "Levels" of A, "Events" of X
    record.LoggerTableNames[8] = "Stale";
    record.LoggerTableNames[1] = "0";
    t.Use(record);
    EXPECT_EQ(t.Apply({{"LoggerTableNames.C", "levels"}}), "");
    EXPECT_EQ(t.Record().LoggerTableNames[2], "levels");
    EXPECT_EQ(t.Record().LoggerTableNames[1], ""); // "0" is what was never assigned
    EXPECT_EQ(t.Apply({{"LoggerTableNames.C", "Levels"}}), "LoggerTableNames.C: Table names must be unique or blank.");
    EXPECT_EQ(t.Apply({{"LoggerTableNames.B", "Stale"}}), "LoggerTableNames.B: Table names must be unique or blank.");
    EXPECT_EQ(t.Apply({{"LoggerTableNames.B", ""}, {"LoggerTableNames.C", ""}}), "");
    // What counts is what they are in the end.
    EXPECT_EQ(t.Apply({{"LoggerTableNames.A", "Events"}, {"LoggerTableNames.X", "Levels"}}), "");
    EXPECT_EQ(t.Record().LoggerTableNames[0], "Events");
    EXPECT_EQ(t.Record().LoggerTableNames[OlderX], "Levels");
    EXPECT_EQ(t.Record().LoggerTableNames[8], "Stale");
}

TEST(RecordEdits, TableNamesGoByTheirEditorsFilter)
{
    EditBench t;
    t.Use(ModemLogger());
    for (const char* bad : {"a b", "a,b", "a-b", "\xC3\xBC", "a\r\n"})
        EXPECT_EQ(t.Apply({{"LoggerTableNames.B", bad}}),
                  "LoggerTableNames.B can hold only the letters A to Z, digits and _.")
            << bad;
    EXPECT_EQ(t.Apply({{"LoggerTableNames.B", std::string(33, 'x')}}),
              "LoggerTableNames.B can't be longer than 32 characters.");
    EXPECT_EQ(t.Apply({{"LoggerTableNames.B", std::string(32, 'x')}}), "");
    EXPECT_EQ(t.Apply({{"LoggerMdbOn", "0"}, {"LoggerTableNames.B", "x"}}),
              "LoggerTableNames.B can be changed only while LoggerMdbOn is 1.");
}

TEST(RecordEdits, FieldsThatNoPanelEditsAreNamedWithTheReason)
{
    struct Row {
        const char* field;
        const char* why;
    };
    const std::string secret = "secret";
    EditBench t;
    for (const auto& [field, why] :
         std::initializer_list<Row>{{"LoggerModel", " can't be changed: it comes from the logger."},
                                    {"LoggerSerial", " can't be changed: it comes from the logger."},
                                    {"LoggerVersion", " can't be changed: it comes from the logger."},
                                    {"LoggerToDisk", " can't be changed: it is always on."},
                                    {"LoggerKept", " can't be changed: it tells how the logger was entered."},
                                    {"LoggerPassword", " can't be changed here."},
                                    {"LoggerIconKey", " can't be changed: shortcuts know the logger by it."},
                                    {"LoggerPort", " can't be changed here: it belongs to the link."},
                                    {"LoggerBaud", " can't be changed here: it belongs to the link."},
                                    {"LoggerParity", " can't be changed here: it belongs to the link."},
                                    {"LoggerDataBits", " can't be changed here: it belongs to the link."},
                                    {"LoggerStopBits", " can't be changed here: it belongs to the link."},
                                    {"LoggerFlow", " can't be changed here: it belongs to the link."},
                                    {"LoggerTimeout", " can't be changed here: it belongs to the link."},
                                    {"LoggerTab", " is no field of a logger."},
                                    {"loggerdescription", " is no field of a logger."},
                                    {"ScheduleCard.A", " is no field of a logger."},
                                    {"LoggerDescription.A", " is no field of a logger."},
                                    {"ScheduleOn", " wants a schedule, as in ScheduleOn.A."},
                                    {"ScheduleOn.", " wants a schedule, as in ScheduleOn.A."},
                                    {"ScheduleOn.E", ": a KR200 has no such schedule."},
                                    {"ScheduleOn.a", ": a KR200 has no such schedule."},
                                    {"ScheduleOn.AB", ": a KR200 has no such schedule."},
                                    {"ScheduleOn.5", ": a KR200 has no such schedule."},
                                    {".", " is no field of a logger."}})
        EXPECT_EQ(t.Apply({{field, secret}}), std::string(field) + why);
    t.Use(NetworkLogger());
    EXPECT_EQ(t.Apply({{"ScheduleOn.K", "1"}}), "");
    EXPECT_EQ(t.Apply({{"ScheduleOn.L", "1"}}), "ScheduleOn.L: a KR40 has no such schedule.");
}

TEST(RecordEdits, EveryFieldOfARecordIsEitherEditedOrRefusedWithAReason)
{
    EditBench t;
    t.Use(NetworkLogger());
    for (const RecordField& field : AllRecordFields()) {
        std::string name(field.table);
        if (field.kind == RecordField::Kind::Schedule)
            name += std::string(".") + ScheduleLetters("KR40")[static_cast<size_t>(field.entry)];
        EXPECT_EQ(t.Apply({{name, "?,"}}).find("is no field"), std::string::npos) << name;
        EXPECT_NE(t.Apply({{name, "?,"}}), "") << name;
    }
}

TEST(RecordEdits, AllAreAppliedOrNone)
{
    EditBench t;
    const PanelValues before = t.Values();
    EXPECT_NE(t.Apply({{"ScheduleOn.B", "1"},
                       {"LoggerRunCommand", "x"},
                       {"LoggerSaveFolder", "/srv/data"},
                       {"LoggerPassword", "x"}}),
              "");
    EXPECT_EQ(t.Values().on, before.on);
    EXPECT_EQ(RecordText(t.Record()), RecordText(SerialLogger()));
    EXPECT_EQ(t.Apply({}), "");
    EXPECT_EQ(RecordText(t.Record()), RecordText(SerialLogger()));
}

TEST(RecordEdits, ALoggerOfAnUnknownModelCanOnlyBeLookedAt)
{
    EditBench t;
    LoggerRecord record = SerialLogger();
    record.LoggerModel = "Unknown";
    t.Use(record);
    EXPECT_EQ(t.Apply({{"ScheduleOn.A", "1"}}), "ScheduleOn.A can't be changed: the logger's model is unknown.");
}

} // namespace harvelop::test
