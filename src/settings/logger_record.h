// One data logger's settings, and the line of text that keeps them.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace harvelop
{

constexpr int MaxLoggers = 50;   // loggers are numbered 1 to 50; a table's index is the number minus 1
constexpr int MaxSchedules = 12; // entries of a schedule table
constexpr int RecordFields = 93; // fields of a record

using ScheduleTexts = std::array<std::string, MaxSchedules>;

// Twelve times "0": what a schedule table holds before it is assigned.
ScheduleTexts UnassignedSchedules();

// The members bear the names of the tables that the records are kept in. All schedule entries are decimal texts: for
// the KR4 family entry k is the k-th letter of "ABCDEFGHIJKX"; of the older family only entries 0 to 4 are in use and
// stand for "ABCDX".
struct LoggerRecord {
    std::string LoggerPort;     // RS232: com port. Dialup: the modem's com port. Ethernet: host ":" TCP port
    std::string LoggerModel;    // "KR40"; of the older family with its revision: "KR200 Series 2"
    std::string LoggerSerial;   // "none" if unknown
    std::string LoggerBaud;     // RS232: baud rate. Dialup: phone number. Ethernet: empty
    std::string LoggerParity;   // RS232: parity. Dialup: modem initialisation string. Ethernet: empty
    std::string LoggerDataBits; // RS232: data bits. Dialup: modem baud rate. Ethernet: empty
    std::string LoggerStopBits; // RS232: stop bits. Otherwise empty
    std::string LoggerFlow;     // RS232: "NOFC", "SWFC", "HWFC" or "SWHWFC". Otherwise empty
    ScheduleTexts ScheduleOn = UnassignedSchedules();
    ScheduleTexts ScheduleUlast = UnassignedSchedules();
    ScheduleTexts ScheduleCSV = UnassignedSchedules();
    ScheduleTexts ScheduleHTML = UnassignedSchedules();
    ScheduleTexts ScheduleRecords = UnassignedSchedules();
    std::int16_t LoggerToDisk = 0;
    std::int16_t LoggerViaEmail = 0;
    std::int16_t LoggerViaFTP = 0;
    std::string LoggerSaveFolder;   // with a trailing separator
    std::int16_t LoggerKept = 0;    // 1: entered by hand; a port search leaves it alone
    std::string LoggerPassword;     // clear text
    std::string LoggerDescription;  // the user's own name for the logger
    std::string LoggerVersion;      // firmware version
    std::string LoggerIconKey;      // "::n", what a desktop shortcut knows this logger by
    std::string LoggerRunProgram;   // program to run after an unload
    std::string LoggerRunCommand;   // command to run after an unload
    std::string LoggerMdbOn;        // "0" or "1"
    ScheduleTexts LoggerTableNames; // database table of each schedule
    std::string LoggerTimeout;      // connection time-out in seconds

    // Derived from the fields above, never stored in one.
    std::string LoggerLinkType = "RS232"; // "RS232", "Dialup" or "Ethernet"
    std::string LoggerHost;               // of an Ethernet logger: before the first ":" of LoggerPort
    std::string LoggerTcpPort;            // and behind it
    ScheduleTexts ScheduleCard = UnassignedSchedules();
    std::int16_t LoggerTab = 0; // the panel's tab last shown, from 1; 0: never shown
};

// A field of the record: its number, the name of its table, and where it lives.
struct RecordField {
    enum class Kind { Text, BarText, Integer, Schedule }; // BarText: "," is stored as "|"
    int number = 0;                                       // 1 to 93
    std::string_view table;                               // "LoggerPort", "ScheduleOn", …
    Kind kind = Kind::Text;
    int entry = 0; // of a schedule table: 0 to 11
    std::string LoggerRecord::*text = nullptr;
    std::int16_t LoggerRecord::*integer = nullptr;
    ScheduleTexts LoggerRecord::*schedule = nullptr;
};

// The 93 fields in their order.
const std::array<RecordField, RecordFields>& AllRecordFields();

// A field's value as text, as people see it: commas as commas.
std::string FieldText(const LoggerRecord& record, const RecordField& field);

// The record's line: each field followed by a comma, so it ends in one. Only the bar texts can hold commas of their
// own: a comma in any other field shifts all later ones. Line ends inside a field become blanks.
std::string RecordText(const LoggerRecord& record);

// Splits a line into the record. Fields that the line does not hold, and numbers that don't convert, keep what they
// held. The host, TCP port and link type follow from the fields.
void ParseRecord(const std::string& text, LoggerRecord& record);

// True for a model of the KR4 family; every other logger is of the older family.
bool IsKR4(std::string_view model);

// "Ethernet" if `LoggerPort` holds ":", otherwise "Dialup" if `LoggerBaud` is filled and `LoggerStopBits` is empty,
// otherwise "RS232".
std::string LinkTypeOf(const LoggerRecord& record);

// The schedule letters of a model's family: "ABCDEFGHIJKX" or "ABCDX".
std::string_view ScheduleLetters(std::string_view model);

} // namespace harvelop
