#include "settings/logger_record.h"

#include "core/text_lines.h"
#include "core/text_numbers.h"

#include <algorithm>
#include <utility>

namespace harvelop
{

namespace
{

using Kind = RecordField::Kind;
using Fields = std::array<RecordField, RecordFields>;

constexpr Fields makeFields()
{
    Fields fields{};
    size_t next = 0;
    const auto add = [&](RecordField field) {
        field.number = static_cast<int>(next) + 1;
        fields[next++] = field;
    };
    const auto addText = [&](std::string_view table, std::string LoggerRecord::*text, Kind kind = Kind::Text) {
        add({.table = table, .kind = kind, .text = text});
    };
    const auto addInteger = [&](std::string_view table, std::int16_t LoggerRecord::*integer) {
        add({.table = table, .kind = Kind::Integer, .integer = integer});
    };
    const auto addSchedule = [&](std::string_view table, ScheduleTexts LoggerRecord::*schedule) {
        for (int entry = 0; entry < MaxSchedules; ++entry)
            add({.table = table, .kind = Kind::Schedule, .entry = entry, .schedule = schedule});
    };

    addText("LoggerPort", &LoggerRecord::LoggerPort);
    addText("LoggerModel", &LoggerRecord::LoggerModel);
    addText("LoggerSerial", &LoggerRecord::LoggerSerial);
    addText("LoggerBaud", &LoggerRecord::LoggerBaud, Kind::BarText);
    addText("LoggerParity", &LoggerRecord::LoggerParity, Kind::BarText);
    addText("LoggerDataBits", &LoggerRecord::LoggerDataBits);
    addText("LoggerStopBits", &LoggerRecord::LoggerStopBits);
    addText("LoggerFlow", &LoggerRecord::LoggerFlow);
    addSchedule("ScheduleOn", &LoggerRecord::ScheduleOn);
    addSchedule("ScheduleUlast", &LoggerRecord::ScheduleUlast);
    addSchedule("ScheduleCSV", &LoggerRecord::ScheduleCSV);
    addSchedule("ScheduleHTML", &LoggerRecord::ScheduleHTML);
    addSchedule("ScheduleRecords", &LoggerRecord::ScheduleRecords);
    addInteger("LoggerToDisk", &LoggerRecord::LoggerToDisk);
    addInteger("LoggerViaEmail", &LoggerRecord::LoggerViaEmail);
    addInteger("LoggerViaFTP", &LoggerRecord::LoggerViaFTP);
    addText("LoggerSaveFolder", &LoggerRecord::LoggerSaveFolder);
    addInteger("LoggerKept", &LoggerRecord::LoggerKept);
    addText("LoggerPassword", &LoggerRecord::LoggerPassword);
    addText("LoggerDescription", &LoggerRecord::LoggerDescription);
    addText("LoggerVersion", &LoggerRecord::LoggerVersion);
    addText("LoggerIconKey", &LoggerRecord::LoggerIconKey);
    addText("LoggerRunProgram", &LoggerRecord::LoggerRunProgram);
    addText("LoggerRunCommand", &LoggerRecord::LoggerRunCommand);
    addText("LoggerMdbOn", &LoggerRecord::LoggerMdbOn);
    addSchedule("LoggerTableNames", &LoggerRecord::LoggerTableNames);
    addText("LoggerTimeout", &LoggerRecord::LoggerTimeout);
    return fields;
}

constexpr Fields FieldTable = makeFields();
static_assert(FieldTable.back().number == RecordFields && FieldTable.back().table == "LoggerTimeout");

void setField(LoggerRecord& record, const RecordField& field, std::string_view value)
{
    switch (field.kind) {
    case Kind::Text:
        record.*field.text = value;
        break;
    case Kind::BarText:
        record.*field.text = value;
        std::replace((record.*field.text).begin(), (record.*field.text).end(), '|', ',');
        break;
    case Kind::Integer:
        record.*field.integer = ToInt16(value).value_or(record.*field.integer);
        break;
    case Kind::Schedule:
        (record.*field.schedule)[static_cast<size_t>(field.entry)] = value;
        break;
    }
}

} // namespace

ScheduleTexts UnassignedSchedules()
{
    ScheduleTexts texts;
    texts.fill("0");
    return texts;
}

const std::array<RecordField, RecordFields>& AllRecordFields()
{
    return FieldTable;
}

std::string FieldText(const LoggerRecord& record, const RecordField& field)
{
    switch (field.kind) {
    case Kind::Integer:
        return std::to_string(record.*field.integer);
    case Kind::Schedule:
        return (record.*field.schedule)[static_cast<size_t>(field.entry)];
    case Kind::Text:
    case Kind::BarText:
        break;
    }
    return record.*field.text;
}

std::string RecordText(const LoggerRecord& record)
{
    std::string text;
    for (const RecordField& field : FieldTable) {
        std::string value = FieldText(record, field);
        if (field.kind == Kind::BarText)
            std::replace(value.begin(), value.end(), ',', '|');
        text.append(value).append(",");
    }
    return OneLine(std::move(text)); // what a logger has answered may hold line ends
}

void ParseRecord(const std::string& text, LoggerRecord& record)
{
    std::string_view rest = text;
    for (const RecordField& field : FieldTable) {
        const size_t comma = rest.find(',');
        if (comma == std::string_view::npos)
            break;
        setField(record, field, rest.substr(0, comma));
        rest.remove_prefix(comma + 1);
    }
    const size_t colon = record.LoggerPort.find(':');
    if (colon != std::string::npos) {
        record.LoggerHost = record.LoggerPort.substr(0, colon);
        record.LoggerTcpPort = record.LoggerPort.substr(colon + 1);
    }
    record.LoggerLinkType = LinkTypeOf(record);
}

bool IsKR4(std::string_view model)
{
    return Holds(model, "KR4");
}

std::string LinkTypeOf(const LoggerRecord& record)
{
    if (Holds(record.LoggerPort, ":"))
        return "Ethernet";
    return !record.LoggerBaud.empty() && record.LoggerStopBits.empty() ? "Dialup" : "RS232";
}

std::string_view ScheduleLetters(std::string_view model)
{
    return IsKR4(model) ? "ABCDEFGHIJKX" : "ABCDX";
}

} // namespace harvelop
