#include "app/ctl_commands.h"
#include "app/ctl_output.h"
#include "simulator/simulated_logger.h"
#include "support/test_program.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sstream>

namespace harvelop::test
{

namespace
{

std::shared_ptr<SimulatedDevice> logger(const std::string& model, const std::string& series, const std::string& version,
                                        const std::string& serial, const std::string& password = "")
{
    LoggerConfig config;
    config.model = model;
    config.series = series;
    config.version = version;
    config.serial = serial;
    config.password = password;
    return std::make_shared<SimulatedLogger>(config);
}

struct TestCtl : TestProgram {
    std::ostringstream said;
    Console console{said, false, false};
    std::ostringstream out;

    int Run(const std::vector<std::string>& words)
    {
        return RunCtlCommand(heart, console, std::get<CtlCommand>(ParseCtlArguments(words)), Directory, out);
    }

    void PlugFour()
    {
        serial.Plug(1, logger("KR200", "1", "7.18", ""), "9600");
        serial.Plug(3, logger("KR305", "3", "9.05", "", "mountain"), "1200");
        serial.Plug(4, logger("KR40", "", "5.06.0001", "012345"), "115200");
        serial.Plug(9, logger("KR400", "", "6.10.0002", "098765"), "57600");
    }
};

} // namespace

TEST(CtlCommands, FindStoresEveryLoggerOfTheMachine)
{
    TestCtl t;
    t.PlugFour();
    t.dialogs.ExpectPassword("mountain");
    EXPECT_EQ(t.Run({"find"}), CtlDone);
    EXPECT_EQ(t.out.str(), LoggersAsTable(t.heart.tables));
    for (const char* line :
         {"Looking for Available Com Ports ...", "Com ports 1, 3, 4, 9 are available", "Searching for tallyCores ...",
          "Trying Com 1 : 115200 baud", "Found a KR305 Series 3 on Com 3", "Found a KR400 on Com 9"})
        EXPECT_NE(t.said.str().find(std::string(line) + "\n"), std::string::npos) << line << t.said.str();

    TestCtl later;
    later.files.files = t.files.files;
    ASSERT_EQ(later.Run({"list", "--json"}), CtlDone);
    const auto list = nlohmann::json::parse(later.out.str());
    ASSERT_EQ(list.size(), 4u);
    const char* expected[4][5] = {{"KR200 Series 1", "none", "7.18", "1", "9600"},
                                  {"KR305 Series 3", "none", "9.05", "3", "1200"},
                                  {"KR40", "012345", "5.06.0001", "4", "115200"},
                                  {"KR400", "098765", "6.10.0002", "9", "57600"}};
    for (size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(list[i]["number"], i + 1);
        EXPECT_EQ(list[i]["model"], expected[i][0]);
        EXPECT_EQ(list[i]["serial"], expected[i][1]);
        EXPECT_EQ(list[i]["version"], expected[i][2]);
        EXPECT_EQ(list[i]["port"], expected[i][3]);
        EXPECT_EQ(list[i]["baud"], expected[i][4]);
        EXPECT_EQ(list[i]["series"], std::string(i == 0 ? "1" : i == 1 ? "3" : ""));
        EXPECT_EQ(list[i]["key"], "::" + std::to_string(i + 2));
    }
}

TEST(CtlCommands, FindOnOnePortLooksNowhereElse)
{
    TestCtl t;
    t.PlugFour();
    EXPECT_EQ(t.Run({"find", "--port", "4"}), CtlDone);
    EXPECT_EQ(t.heart.tables.Count(), 1);
    EXPECT_EQ(t.heart.tables.Record(1)->LoggerModel, "KR40");
    for (const auto& event : t.serial.events) {
        if (event.kind == FakeSerial::Event::Kind::Sent) {
            EXPECT_EQ(event.port, 4);
        }
    }
}

TEST(CtlCommands, FindThatFindsNothingFails)
{
    TestCtl t;
    t.serial.Plug(2, nullptr, "");
    t.dialogs.Expect(BoxAnswer::Ok);
    EXPECT_EQ(t.Run({"find", "--port", "2"}), CtlFailed);
    EXPECT_EQ(t.out.str(), "");
    EXPECT_EQ(t.dialogs.shown.at(0).text, "No tallyCores were found connected to Com 2.     ");
}

TEST(CtlCommands, FindWithoutAnyPortFails)
{
    TestCtl t;
    t.dialogs.Expect(BoxAnswer::Ok);
    EXPECT_EQ(t.Run({"find", "--all"}), CtlFailed);
    EXPECT_EQ(t.dialogs.shown.at(0).text, "No tallyCores were found connected to this Computer.     ");
}

TEST(CtlCommands, FindAsksBeforeItReplacesStoredLoggers)
{
    TestCtl t;
    LoggerRecord record;
    record.LoggerPort = "7";
    record.LoggerModel = "KR41";
    t.files.files[TestProgram::FoundIni] = "1tallyCoreSettings=" + RecordText(record) + "\r\n";
    t.files.files[TestProgram::OptionsIni] = "FindPorts=1\r\n";
    t.serial.Plug(4, logger("KR40", "", "5.06.0001", "012345"), "115200");
    const auto before = t.files.files;

    t.dialogs.Expect(BoxAnswer::Cancel);
    EXPECT_EQ(t.Run({"find"}), CtlFailed);
    EXPECT_EQ(t.dialogs.shown.at(0).buttons, BoxButtons::OkCancel);
    EXPECT_EQ(t.files.files, before);

    t.dialogs.Expect(BoxAnswer::Ok);
    EXPECT_EQ(t.Run({"find"}), CtlDone);
    EXPECT_EQ(t.heart.tables.Record(1)->LoggerModel, "KR40");
    EXPECT_EQ(t.heart.tables.Count(), 1);
}

TEST(CtlCommands, ListAndShowOfAnEmptyDirectoryTouchNothing)
{
    TestCtl t;
    EXPECT_EQ(t.Run({"list"}), CtlDone);
    EXPECT_EQ(t.out.str(), "");
    EXPECT_EQ(t.Run({"list", "--json"}), CtlDone);
    EXPECT_EQ(nlohmann::json::parse(t.out.str()), nlohmann::json::array());
    EXPECT_EQ(t.Run({"show", "1"}), CtlFailed);
    EXPECT_TRUE(t.files.writes.empty());
}

TEST(CtlCommands, ShowGivesAll93FieldsByTheirNames)
{
    TestCtl t;
    LoggerRecord record;
    record.LoggerPort = "3";
    record.LoggerModel = "KR200 Series 2";
    record.LoggerBaud = "0,,12345";
    record.ScheduleHTML[4] = "1";
    record.LoggerTableNames[1] = "rain";
    record.LoggerKept = 1;
    t.files.files[TestProgram::FoundIni] = "1tallyCoreSettings=" + RecordText(record) + "\r\n";
    EXPECT_EQ(t.Run({"show", "1"}), CtlDone);
    const std::string text = t.out.str();
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), RecordFields);
    for (const char* line : {"LoggerPort=3\n", "LoggerBaud=0,,12345\n", "ScheduleHTML.X=1\n", "ScheduleHTML.11=0\n",
                             "LoggerTableNames.B=rain\n", "LoggerKept=1\n"})
        EXPECT_NE(text.find(line), std::string::npos) << line;

    t.out.str("");
    EXPECT_EQ(t.Run({"show", "1", "--json"}), CtlDone);
    const auto object = nlohmann::json::parse(t.out.str());
    EXPECT_EQ(object["LoggerModel"], "KR200 Series 2");
    EXPECT_EQ(object["ScheduleHTML"].size(), 12u);
    EXPECT_EQ(object["ScheduleHTML"][4], "1");
    EXPECT_EQ(object["LoggerTimeout"], "");
}

TEST(CtlCommands, TextsThatAreNoUtf8StillMakeJson)
{
    LoggerTables tables;
    tables.records[0].LoggerDescription = "caf\xe9";
    tables.FoundLoggerStrings[0] = "x";
    EXPECT_EQ(nlohmann::json::parse(LoggersAsJson(tables)).size(), 1u);
}

TEST(CtlCommands, TheTableLinesUp)
{
    LoggerTables tables;
    tables.records[0].LoggerModel = "KR200 Series 1";
    tables.records[0].LoggerSerial = "none";
    tables.records[0].LoggerVersion = "7.18";
    tables.records[0].LoggerPort = "1";
    tables.records[0].LoggerBaud = "9600";
    tables.records[0].LoggerStopBits = "1";
    tables.FoundLoggerStrings[0] = "x";
    EXPECT_EQ(LoggersAsTable(tables),
              "No  Model           Serial  Version  Port  Baud  Link   Name\n"
              "1   KR200 Series 1  none    7.18     1     9600  RS232  KR200 Series 1 on Com 1\n");
}

TEST(CtlCommands, PortsAreListedWithTheirDevices)
{
    TestCtl t;
    t.serial.Plug(2, nullptr, "");
    t.serial.ports[5].openError = PortBusy;
    EXPECT_EQ(t.Run({"ports"}), CtlDone);
    EXPECT_EQ(t.out.str(), "2  /dev/ttyS1\n5  /dev/ttyS4\n");
    EXPECT_TRUE(t.files.writes.empty());
}

TEST(CtlCommands, AMissingLanguageFileFails)
{
    TestCtl t;
    t.files.files[TestProgram::OptionsIni] = "UseLangFile=1\r\n";
    t.dialogs.Expect(BoxAnswer::Ok);
    EXPECT_EQ(t.Run({"find"}), CtlFailed);
}

TEST(CtlCommands, WhatCouldNotBeStoredIsShownAndFails)
{
    TestCtl t;
    LoggerRecord record;
    record.LoggerPort = "7";
    record.LoggerModel = "KR41";
    const std::string before = "1tallyCoreSettings=" + RecordText(record) + "\r\n";
    t.files.files[TestProgram::FoundIni] = before;
    t.files.files[TestProgram::OptionsIni] = "FindPorts=1\r\n";
    t.files.full = true;
    t.serial.Plug(4, logger("KR40", "", "5.06.0001", "012345"), "115200");
    t.dialogs.Expect(BoxAnswer::Ok);
    EXPECT_EQ(t.Run({"find"}), CtlFailed);
    EXPECT_EQ(t.files.files[TestProgram::FoundIni], before);
    EXPECT_NE(t.out.str().find("KR40 sn 012345 on Com 4"), std::string::npos) << t.out.str();
    EXPECT_EQ(t.out.str().find("KR41"), std::string::npos);
}

TEST(CtlCommands, WhereNothingCanBeKeptNothingIsSearched)
{
    TestCtl t;
    t.files.full = true;
    t.serial.Plug(4, logger("KR40", "", "5.06.0001", "012345"), "115200");
    EXPECT_EQ(t.Run({"find"}), CtlFailed);
    EXPECT_EQ(t.said.str(), "Nothing can be kept in /home/user/loggers. Name another directory with --dir.\n");
    EXPECT_EQ(t.serial.Sent(), "");
}

TEST(CtlCommands, ALoggersFileThatCannotBeReadIsToldAndLeftAlone)
{
    for (const std::vector<std::string>& words : {std::vector<std::string>{"find"}, {"list"}, {"show", "1"}}) {
        TestCtl t;
        t.files.files[TestProgram::FoundIni] = "x";
        t.files.unreadable.insert(TestProgram::FoundIni);
        EXPECT_EQ(t.Run(words), CtlFailed);
        EXPECT_EQ(t.said.str(), "The file /home/user/loggers/found.ini can't be read.\n");
        EXPECT_EQ(t.files.files[TestProgram::FoundIni], "x");
    }
}

TEST(CtlCommands, ControlCharactersOfALoggerDoNotReachTheTerminal)
{
    LoggerTables tables;
    tables.records[0].LoggerVersion = "\x1b[2J";
    tables.FoundLoggerStrings[0] = "x";
    EXPECT_EQ(LoggersAsTable(tables).find('\x1b'), std::string::npos);
    EXPECT_NE(LoggerAsText(tables.records[0]).find("LoggerVersion=?[2J\n"), std::string::npos);
}

TEST(CtlCommands, AMachineWithoutPortsHasNothingToList)
{
    TestCtl t;
    EXPECT_EQ(t.Run({"ports"}), CtlFailed);
}

} // namespace harvelop::test
