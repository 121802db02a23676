#include "settings/logger_record.h"
#include "settings/sample_loggers.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace harvelop::test
{
namespace
{

const RecordField& field(int number)
{
    return AllRecordFields()[static_cast<size_t>(number - 1)];
}

// A line whose field n is "f<n>", or n itself where a field takes numbers only.
std::string numberedLine(int fields)
{
    std::string text;
    for (int n = 1; n <= fields; ++n)
        text += (field(n).kind == RecordField::Kind::Integer ? "" : "f") + std::to_string(n) + ",";
    return text;
}

TEST(LoggerRecord, FieldsStandInTheOrderOfTheContract)
{
    const auto expect = [](int from, int to, const std::string& table, RecordField::Kind kind) {
        for (int n = from; n <= to; ++n) {
            EXPECT_EQ(field(n).number, n);
            EXPECT_EQ(field(n).table, table) << n;
            EXPECT_EQ(field(n).kind, kind) << n;
            if (kind == RecordField::Kind::Schedule) {
                EXPECT_EQ(field(n).entry, n - from) << n;
            }
        }
    };
    using enum RecordField::Kind;
    expect(1, 1, "LoggerPort", Text);
    expect(2, 2, "LoggerModel", Text);
    expect(3, 3, "LoggerSerial", Text);
    expect(4, 4, "LoggerBaud", BarText);
    expect(5, 5, "LoggerParity", BarText);
    expect(6, 6, "LoggerDataBits", Text);
    expect(7, 7, "LoggerStopBits", Text);
    expect(8, 8, "LoggerFlow", Text);
    expect(9, 20, "ScheduleOn", Schedule);
    expect(21, 32, "ScheduleUlast", Schedule);
    expect(33, 44, "ScheduleCSV", Schedule);
    expect(45, 56, "ScheduleHTML", Schedule);
    expect(57, 68, "ScheduleRecords", Schedule);
    expect(69, 69, "LoggerToDisk", Integer);
    expect(70, 70, "LoggerViaEmail", Integer);
    expect(71, 71, "LoggerViaFTP", Integer);
    expect(72, 72, "LoggerSaveFolder", Text);
    expect(73, 73, "LoggerKept", Integer);
    expect(74, 74, "LoggerPassword", Text);
    expect(75, 75, "LoggerDescription", Text);
    expect(76, 76, "LoggerVersion", Text);
    expect(77, 77, "LoggerIconKey", Text);
    expect(78, 78, "LoggerRunProgram", Text);
    expect(79, 79, "LoggerRunCommand", Text);
    expect(80, 80, "LoggerMdbOn", Text);
    expect(81, 92, "LoggerTableNames", Schedule);
    expect(93, 93, "LoggerTimeout", Text);
}

TEST(LoggerRecord, AllFieldsComeBackFromTheirLine)
{
    const std::string line = numberedLine(RecordFields);
    LoggerRecord record;
    ParseRecord(line, record);
    for (const RecordField& one : AllRecordFields()) {
        const std::string expected = (one.kind == RecordField::Kind::Integer ? "" : "f") + std::to_string(one.number);
        EXPECT_EQ(FieldText(record, one), expected) << one.table;
    }
    EXPECT_EQ(RecordText(record), line);
}

TEST(LoggerRecord, UnassignedSchedulesPrintZeroAndUnassignedTextsNothing)
{
    const std::string text = RecordText(LoggerRecord());
    std::string expected(8, ',');
    for (int i = 0; i < 60; ++i)
        expected += "0,";
    expected += "0,0,0,,0,,,,,,,,";
    expected += std::string(12, ',') + ",";
    EXPECT_EQ(text, expected);
    EXPECT_EQ(std::count(text.begin(), text.end(), ','), RecordFields);
}

TEST(LoggerRecord, PhoneNumberKeepsItsCommasAsBars)
{
    const LoggerRecord record = ModemLogger();
    const std::string text = RecordText(record);
    EXPECT_EQ(text.substr(0, 46), "3,KR305 Series 3,4711,0||12345,at&f|x4,19200,,");
    LoggerRecord again;
    ParseRecord(text, again);
    EXPECT_EQ(again.LoggerBaud, "0,,12345");
    EXPECT_EQ(again.LoggerParity, "at&f,x4");
    EXPECT_EQ(FieldText(again, field(4)), "0,,12345");
}

TEST(LoggerRecord, CommaInADescriptionShiftsWhatFollows)
{
    LoggerRecord record = SerialLogger();
    record.LoggerDescription = "Pump,house";
    LoggerRecord again;
    ParseRecord(RecordText(record), again);
    EXPECT_EQ(again.LoggerDescription, "Pump");
    EXPECT_EQ(again.LoggerVersion, "house");
    EXPECT_EQ(again.LoggerIconKey, "3.51");
    EXPECT_EQ(again.LoggerRunProgram, "::2");
}

TEST(LoggerRecord, MissingFieldsKeepWhatTheTablesHeld)
{
    LoggerRecord record = NetworkLogger();
    ParseRecord("2,KR200 Series 1,none", record);
    EXPECT_EQ(record.LoggerPort, "2");
    EXPECT_EQ(record.LoggerModel, "KR200 Series 1");
    EXPECT_EQ(record.LoggerSerial, "080123") << "a field without its comma is none";
    EXPECT_EQ(record.ScheduleRecords[11], "2500");
    EXPECT_EQ(record.LoggerTimeout, "10");

    ParseRecord("", record);
    EXPECT_EQ(record.LoggerPort, "2");
}

TEST(LoggerRecord, EmptyFieldsEmptyTheTables)
{
    LoggerRecord record = SerialLogger();
    ParseRecord(std::string(RecordFields, ','), record);
    EXPECT_EQ(record.LoggerModel, "");
    EXPECT_EQ(record.ScheduleOn[0], "");
    EXPECT_EQ(record.LoggerToDisk, 1) << "no number: kept";
    EXPECT_EQ(RecordText(record), std::string(68, ',') + "1,0,0,,0," + std::string(20, ','));
}

TEST(LoggerRecord, NumbersThatDoNotConvertKeepWhatTheTablesHeld)
{
    LoggerRecord record;
    record.LoggerToDisk = 1;
    record.LoggerKept = 1;
    std::string line(68, ',');
    ParseRecord(line + "yes,-1,40000,/data/,x,", record);
    EXPECT_EQ(record.LoggerToDisk, 1);
    EXPECT_EQ(record.LoggerViaEmail, -1);
    EXPECT_EQ(record.LoggerViaFTP, 0);
    EXPECT_EQ(record.LoggerSaveFolder, "/data/");
    EXPECT_EQ(record.LoggerKept, 1);
}

TEST(LoggerRecord, FieldsBeyondTheLastAreIgnored)
{
    LoggerRecord record;
    ParseRecord(numberedLine(RecordFields) + std::string(407, ','), record);
    EXPECT_EQ(record.LoggerTimeout, "f93");
    EXPECT_EQ(RecordText(record), numberedLine(RecordFields));
}

TEST(LoggerRecord, ColonInThePortMakesANetworkLogger)
{
    LoggerRecord record;
    ParseRecord("10.0.0.5:3000,KR40,1,12345,,,,", record);
    EXPECT_EQ(record.LoggerLinkType, "Ethernet") << "whatever the other fields hold";
    EXPECT_EQ(record.LoggerHost, "10.0.0.5");
    EXPECT_EQ(record.LoggerTcpPort, "3000");
}

TEST(LoggerRecord, HostEndsAtTheFirstColon)
{
    LoggerRecord record;
    ParseRecord("a:b:c,", record);
    EXPECT_EQ(record.LoggerHost, "a");
    EXPECT_EQ(record.LoggerTcpPort, "b:c");
}

TEST(LoggerRecord, BaudWithoutStopBitsMakesAModemLogger)
{
    LoggerRecord record;
    ParseRecord("3,KR200 Series 1,none,9600,,,,", record);
    EXPECT_EQ(record.LoggerLinkType, "Dialup") << "whatever the field holds";
    ParseRecord("3,KR200 Series 1,none,9600,N,8,1,", record);
    EXPECT_EQ(record.LoggerLinkType, "RS232");
    ParseRecord("3,KR200 Series 1,none,,N,8,,", record);
    EXPECT_EQ(record.LoggerLinkType, "RS232");
}

TEST(LoggerRecord, FamilyIsToldByTheModelInExactCase)
{
    EXPECT_TRUE(IsKR4("KR40"));
    EXPECT_TRUE(IsKR4("my KR400"));
    EXPECT_FALSE(IsKR4("kr40"));
    EXPECT_FALSE(IsKR4("KR305 Series 3"));
    EXPECT_EQ(ScheduleLetters("KR45"), "ABCDEFGHIJKX");
    EXPECT_EQ(ScheduleLetters("KR200"), "ABCDX");
}

TEST(LoggerRecord, LineEndsInAValueDoNotEndTheLine)
{
    LoggerRecord record = SerialLogger();
    record.LoggerVersion = "3\r\n2tallyCoreSettings=x";
    const std::string text = RecordText(record);
    EXPECT_EQ(text.find_first_of("\r\n"), std::string::npos);
    LoggerRecord again;
    ParseRecord(text, again);
    EXPECT_EQ(again.LoggerVersion, "3  2tallyCoreSettings=x");
}

} // namespace
} // namespace harvelop::test
