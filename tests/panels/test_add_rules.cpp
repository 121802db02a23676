#include "panels/add_rules.h"
#include "settings/sample_loggers.h"
#include "support/test_program.h"

#include <gtest/gtest.h>
#include <tuple>

namespace harvelop::test
{
namespace
{

using Ports = std::vector<std::string>;

AddValues filled(const std::string& kind)
{
    AddValues values;
    values.kind = kind;
    values.serial = "12,34";
    values.password = "se,cret\r\n";
    values.port = "3";
    values.parity = "Odd";
    values.flow = "HWFC";
    values.modemPort = "1";
    values.phone = "0,5551234";
    values.init = "at&f,s0=0";
    values.address = "10.0,.0.5";
    values.tcpPort = "30,00";
    values.timeout = "1,5";
    return values;
}

// A record's line must split into as many fields as every record has.
void expectWhole(const LoggerRecord& record)
{
    const std::string line = RecordText(record);
    EXPECT_EQ(std::count(line.begin(), line.end(), ','), RecordFields) << line;
    LoggerRecord back;
    ParseRecord(line, back);
    EXPECT_EQ(RecordText(back), line);
    EXPECT_EQ(back.LoggerBaud, record.LoggerBaud);
    EXPECT_EQ(back.LoggerTimeout, record.LoggerTimeout);
}

TEST(AddRules, ThePortsAreTheFieldsOfTheAvailablePorts)
{
    EXPECT_EQ(AddPorts("1,3,16,"), (Ports{"1", "3", "16"}));
    EXPECT_EQ(AddPorts("2,"), Ports{"2"});
    EXPECT_EQ(AddPorts("0"), Ports{"0"});
    EXPECT_EQ(AddPorts(""), Ports{});
    EXPECT_EQ(AddPorts(",,"), Ports{});
}

TEST(AddRules, AStoredModelSplitsIntoModelAndSeries)
{
    const std::vector<std::tuple<std::string, std::string, std::string>> rows = {
        {"KR20 Series 1", "KR20", "Series 1"},
        {"KR21 Series 2", "KR21", "Series 2"},
        {"KR23 Series 3", "KR23", "Series 3"},
        {"KR200 Series 2", "KR200", "Series 2"},
        {"KR315 Series 3", "KR315", "Series 3"},
        {"KR40", "KR40", "KR40"},
        {"KR400", "KR400", "KR400"},
        {"", "", ""},
        {"KR20", "KR20", "KR20"},
    };
    for (const auto& [stored, model, series] : rows) {
        EXPECT_EQ(SplitModel(stored).model, model) << stored;
        EXPECT_EQ(SplitModel(stored).series, series) << stored;
    }
    EXPECT_EQ(StoredModel("KR200", "Series 2"), "KR200 Series 2");
    EXPECT_EQ(StoredModel("KR400", "Series 2"), "KR400");
}

TEST(AddRules, AComPortLoggerIsStoredWithItsParityAsAWord)
{
    LoggerRecord record;
    StoreValues(filled("RS232"), true, record);
    EXPECT_EQ(record.LoggerPort, "3");
    EXPECT_EQ(record.LoggerBaud, "4800");
    EXPECT_EQ(record.LoggerParity, "Odd");
    EXPECT_EQ(record.LoggerDataBits, "8");
    EXPECT_EQ(record.LoggerStopBits, "1");
    EXPECT_EQ(record.LoggerFlow, "HWFC");
    EXPECT_EQ(record.LoggerSerial, "1234");
    EXPECT_EQ(record.LoggerPassword, "secret");
    EXPECT_EQ(record.LoggerTimeout, "15");
    EXPECT_EQ(record.LoggerLinkType, "RS232");
    expectWhole(record);
}

TEST(AddRules, OnlyAChangedModemLoggerKeepsTheModemsSpeed)
{
    LoggerRecord record;
    record.LoggerStopBits = "1";
    record.LoggerFlow = "NOFC";
    StoreValues(filled("Dialup"), true, record);
    EXPECT_EQ(record.LoggerDataBits, "8");
    StoreValues(filled("Dialup"), false, record);
    EXPECT_EQ(record.LoggerDataBits, "9600");
    EXPECT_EQ(record.LoggerPort, "1");
    EXPECT_EQ(record.LoggerBaud, "0,5551234");
    EXPECT_EQ(record.LoggerParity, "at&f,s0=0");
    EXPECT_EQ(record.LoggerStopBits, "");
    EXPECT_EQ(record.LoggerFlow, "");
    EXPECT_EQ(record.LoggerLinkType, "Dialup");
    EXPECT_NE(RecordText(record).find(",0|5551234,at&f|s0=0,9600,"), std::string::npos);
    expectWhole(record);
}

TEST(AddRules, ANetworkLoggerHasNothingOfAComPort)
{
    LoggerRecord record = SerialLogger();
    StoreValues(filled("Ethernet"), true, record);
    EXPECT_EQ(record.LoggerPort, "10.0.0.5:3000");
    EXPECT_EQ(record.LoggerHost, "10.0.0.5");
    EXPECT_EQ(record.LoggerTcpPort, "3000");
    for (const auto field : {&LoggerRecord::LoggerBaud, &LoggerRecord::LoggerParity, &LoggerRecord::LoggerDataBits,
                             &LoggerRecord::LoggerStopBits, &LoggerRecord::LoggerFlow})
        EXPECT_EQ(record.*field, "");
    EXPECT_EQ(record.LoggerPassword, "secret");
    EXPECT_EQ(record.LoggerLinkType, "Ethernet");
    expectWhole(record);
}

TEST(AddRules, EmptyFieldsAreStoredAsTheyAreButForTheTimeout)
{
    AddValues values;
    values.kind = "Ethernet";
    LoggerRecord record = SerialLogger();
    StoreValues(values, false, record);
    EXPECT_EQ(record.LoggerPort, ":");
    EXPECT_EQ(record.LoggerSerial, "");
    EXPECT_EQ(record.LoggerTimeout, "10");
    values.timeout = ",";
    StoreValues(values, false, record);
    EXPECT_EQ(record.LoggerTimeout, "10");
}

TEST(AddRules, WhatIsShownOfARecordComesBackAsItWas)
{
    for (const std::string kind : {"RS232", "Dialup", "Ethernet"}) {
        LoggerRecord record;
        record.LoggerModel = "KR200 Series 2";
        StoreValues(filled(kind), false, record);
        LoggerRecord again = record;
        const AddValues shown = ValuesOf(record, AddValues());
        EXPECT_EQ(shown.kind, kind);
        EXPECT_EQ(shown.model, "KR200");
        EXPECT_EQ(shown.series, "Series 2");
        StoreValues(shown, false, again);
        EXPECT_EQ(RecordText(again), RecordText(record)) << kind;
    }
}

TEST(AddRules, TheParityLetterOfASearchShowsAsItsWord)
{
    LoggerRecord record = SerialLogger();
    for (const auto& [stored, word] : {std::pair{"N", "None"}, {"O", "Odd"}, {"E", "Even"}, {"Even", "Even"}}) {
        record.LoggerParity = stored;
        EXPECT_EQ(ValuesOf(record, AddValues()).parity, word);
    }
}

TEST(AddRules, TheTestTakesOddParityForTheDigitZero)
{
    AddValues values;
    EXPECT_EQ(TestSettings(values), "4800,N,8,1,NOFC");
    values.parity = "Even";
    EXPECT_EQ(TestSettings(values), "4800,E,8,1,NOFC");
    values.parity = "Odd";
    EXPECT_EQ(TestSettings(values), "4800,0,8,1,NOFC");
}

TEST(AddRules, TheCaptionNamesHowTheLoggerIsReached)
{
    TestProgram t;
    LoggerRecord record;
    record.LoggerModel = "KR40";
    const auto caption = [&](const std::string& kind) {
        StoreValues(filled(kind), false, record);
        return AddedCaption(t.heart.language, record);
    };
    EXPECT_EQ(caption("RS232"), " KR40 tallyCore on Com 3 @ 4800,Odd,8,1,HWFC");
    EXPECT_EQ(caption("Dialup"), " KR40 tallyCore via Modem on Com 1");
    EXPECT_EQ(caption("Ethernet"), " KR40 tallyCore at 10.0.0.5:3000");

    t.heart.state.AppPath = "/app/";
    t.heart.options.Language = "Plain";
    t.files.files["/app/Plain.txt"] = "805:1:0:T805\r\n806:1:0:T806\r\n807:1:0:T807\r\n";
    t.heart.language.LangActive = true;
    t.heart.language.LoadLanguageFile();
    EXPECT_EQ(caption("RS232"), " KR40 T805 3 @ 4800,Odd,8,1,HWFC");
    EXPECT_EQ(caption("Dialup"), " KR40 T806 1");
    EXPECT_EQ(caption("Ethernet"), " KR40 T807 10.0.0.5:3000");
}

struct Outcome {
    std::string kind;
    std::string model;
    std::string english;
    std::string foreign; // with a language file
    BoxIcon icon;
};

TEST(AddRules, EveryOutcomeOfATestIsTold)
{
    const std::vector<Outcome> outcomes = {
        {"RS232", "", "No tallyCores were found connected to Com Port 3 @ 4800,N,8,1,NOFC.    ",
         "T505 3 @ 4800,N,8,1,NOFC.    ", BoxIcon::Critical},
        {"Dialup", "", "No tallyCores were found connected to the Modem on Com Port 1.     ", "T506 1.     ",
         BoxIcon::Critical},
        {"Ethernet", "", "No tallyCores were found at IP address logger on TCP port 99.     ",
         "T509 logger T508 99.     ", BoxIcon::Information},
        {"RS232", "KR40", "Found a KR40 connected to Com Port 3 @ 4800,N,8,1,NOFC.     ",
         "T500 KR40 T501 3 @ 4800,N,8,1,NOFC.     ", BoxIcon::Information},
        {"Dialup", "KR40", "Found a KR40 connected to the Modem on Com Port 1.     ", "T500 KR40 T504 1.     ",
         BoxIcon::Information},
        {"RS232", "KR200", "Found a KR200 Series 2 connected to Com Port 3 @ 4800,N,8,1,NOFC.     ",
         "T500 KR200 T502 2 T501 3 @ 4800,N,8,1,NOFC.     ", BoxIcon::Information},
        {"Dialup", "KR200", "Found a KR200 Series 2 connected to the Modem on Com Port 1.     ",
         "T500 KR200 T501 2 T504 1.     ", BoxIcon::Information},
        {"Ethernet", "KR200", "Found a KR200 at IP address logger on TCP port 99.     ",
         "T500 KR200 T507 logger T508 99.     ", BoxIcon::Information},
    };
    TestProgram english;
    TestProgram foreign;
    foreign.heart.state.AppPath = "/app/";
    foreign.heart.options.Language = "Plain";
    std::string& file = foreign.files.files["/app/Plain.txt"];
    for (int number = 500; number <= 510; ++number)
        file += std::to_string(number) + ":1:0:T" + std::to_string(number) + "\r\n";
    foreign.heart.language.LangActive = true;
    foreign.heart.language.LoadLanguageFile();
    for (const Outcome& outcome : outcomes) {
        AddValues values;
        values.kind = outcome.kind;
        values.port = "3";
        values.modemPort = "1";
        values.address = "logger";
        values.tcpPort = "99";
        const Box box = TestBox(english.heart.language, values, outcome.model, "2");
        EXPECT_EQ(box.text, outcome.english);
        EXPECT_EQ(box.title, " tallyCore Search");
        EXPECT_EQ(box.icon, outcome.icon) << outcome.english;
        const Box other = TestBox(foreign.heart.language, values, outcome.model, "2");
        EXPECT_EQ(other.text, outcome.foreign);
        EXPECT_EQ(other.title, " T503");
        EXPECT_EQ(other.icon, outcome.icon);
    }
}

} // namespace
} // namespace harvelop::test
