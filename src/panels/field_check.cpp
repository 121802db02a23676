#include "panels/field_check.h"

#include "core/text_lines.h"
#include "core/text_numbers.h"
#include "identify/model_set_up.h"
#include "links/link_state.h"
#include "panels/add_rules.h"
#include "panels/panel_rules.h"
#include "panels/table_name_rules.h"
#include "platform/separator.h"

#include <algorithm>

namespace harvelop
{

namespace
{

struct Value {
    const LoggerRecord& record;
    const std::string& text;
    const LoggerSurroundings& use;
};

template <typename Entries> bool isOneOf(const Entries& entries, std::string_view text)
{
    return std::ranges::find(entries, text) != std::end(entries);
}

bool isEmpty(const Value& v)
{
    return v.text.empty();
}

bool isDecimal(const Value& v)
{
    return IsNumber(v.text);
}

bool isBox(const Value& v)
{
    return v.text == "0" || v.text == "1";
}

bool isBoxOrEmpty(const Value& v)
{
    return v.text.empty() || isBox(v);
}

bool isComPort(const Value& v)
{
    return IsNumberUpTo(v.text, ComPorts);
}

bool isHostAndPort(const Value& v)
{
    const std::string& host = v.record.LoggerHost;
    return !host.empty() && !Holds(host, " ") && IsTcpPort(v.record.LoggerTcpPort);
}

bool isModel(const Value& v)
{
    if (v.text == "Unknown") // as a search stores a logger that it can't name
        return true;
    const ModelParts parts = SplitModel(v.text);
    return LookOf(v.text) && isOneOf(AddModels, parts.model) &&
           (IsKR4(v.text) ? v.text == parts.model : isOneOf(AddSeries, parts.series));
}

bool isParity(const Value& v)
{
    return std::ranges::any_of(AddParities,
                               [&](std::string_view word) { return v.text == word || v.text == word.substr(0, 1); });
}

bool isDataBits(const Value& v)
{
    return isOneOf(AddDataBits, v.text);
}

bool isStopBits(const Value& v)
{
    return isOneOf(AddStopBits, v.text);
}

bool isFlow(const Value& v)
{
    return isOneOf(AddFlows, v.text) || v.text == "SWHWFC";
}

bool isRecords(const Value& v)
{
    return !IsKR4(v.record.LoggerModel) || v.text.empty() || IsNumber(v.text);
}

bool isSaveFolder(const Value& v)
{
    return v.text.empty() || (v.text.ends_with(PathSeparator) && v.use.isFolder(v.text));
}

bool isRunProgram(const Value& v)
{
    return v.text.empty() || v.use.isProgram(v.text);
}

bool isDescription(const Value& v)
{
    return v.text == KeepAllowed(v.text, DescriptionChars);
}

bool isTableName(const Value& v)
{
    return v.text.size() <= TableNameLength && v.text == KeepAllowed(v.text, TableNameChars);
}

bool isKey(const Value& v)
{
    return IsIconKey(v.text);
}

struct FieldRule {
    std::string_view table;
    std::string_view link; // the kind that it is for; empty: all
    bool (*holds)(const Value&);
    std::string_view otherwise;
    Oddity oddity = Oddity::Risk;
};

constexpr std::string_view Serial = "RS232";
constexpr std::string_view Modem = "Dialup";
constexpr std::string_view Network = "Ethernet";
constexpr std::string_view WantsComPort = "wants a com port, from 1 to 16";
constexpr std::string_view WantsBox = "wants 0 or 1";
constexpr std::string_view OfOtherLinks = "belongs to other links and should be empty";

constexpr FieldRule FieldRules[] = {
    {"LoggerPort", Serial, isComPort, WantsComPort},
    {"LoggerPort", Modem, isComPort, WantsComPort},
    {"LoggerPort", Network, isHostAndPort, "wants a host, a colon and a TCP port"},
    {"LoggerModel", "", isModel, "names no model"},
    {"LoggerBaud", Serial, isDecimal, "wants a baud rate"},
    {"LoggerBaud", Network, isEmpty, OfOtherLinks},
    {"LoggerParity", Serial, isParity, "wants a parity"},
    {"LoggerParity", Network, isEmpty, OfOtherLinks},
    {"LoggerDataBits", Serial, isDataBits, "wants 6, 7 or 8"},
    {"LoggerDataBits", Modem, isDecimal, "wants the modem's baud rate"},
    {"LoggerDataBits", Network, isEmpty, OfOtherLinks},
    {"LoggerStopBits", Serial, isStopBits, "wants 1 or 2"},
    {"LoggerStopBits", Network, isEmpty, OfOtherLinks},
    {"LoggerFlow", Serial, isFlow, "wants NOFC, SWFC or HWFC"},
    {"LoggerFlow", Modem, isEmpty, OfOtherLinks},
    {"LoggerFlow", Network, isEmpty, OfOtherLinks},
    {"ScheduleOn", "", isBox, WantsBox},
    {"ScheduleUlast", "", isBox, WantsBox},
    {"ScheduleCSV", "", isBox, WantsBox},
    {"ScheduleHTML", "", isBox, WantsBox},
    {"ScheduleRecords", "", isRecords, "wants a number of records"},
    {"LoggerToDisk", "", isBox, WantsBox},
    {"LoggerViaEmail", "", isBox, WantsBox},
    {"LoggerViaFTP", "", isBox, WantsBox},
    {"LoggerSaveFolder", "", isSaveFolder, "names no folder that is there, with a separator behind it"},
    {"LoggerKept", "", isBox, WantsBox},
    {"LoggerDescription", "", isDescription, "holds characters that the panel drops", Oddity::Changed},
    {"LoggerIconKey", "", isKey, "wants \"::\" and a number: nothing else finds the logger for harvel"},
    {"LoggerRunProgram", "", isRunProgram, "names no program that is there"},
    {"LoggerMdbOn", "", isBoxOrEmpty, WantsBox},
    {"LoggerTableNames", "", isTableName, "holds more or other characters than a table's name can have"},
    {"LoggerTimeout", "", isDecimal, "wants a number of seconds"},
};

} // namespace

std::string FieldName(const RecordField& field, const std::string& model)
{
    std::string name(field.table);
    if (field.kind != RecordField::Kind::Schedule)
        return name;
    const auto letters = ScheduleLetters(model);
    const auto entry = static_cast<size_t>(field.entry);
    return name + "." + (entry < letters.size() ? std::string(1, letters[entry]) : std::to_string(entry));
}

std::optional<Finding> CheckField(const RecordField& field, const LoggerRecord& record, std::string_view raw,
                                  const LoggerSurroundings& surroundings)
{
    const std::string name = FieldName(field, record.LoggerModel) + " ";
    if (field.kind == RecordField::Kind::Integer && !ToInt16(raw))
        return Finding{0, Oddity::PassedOver, name + "wants a number"};
    const std::string text = FieldText(record, field);
    if (field.table == "LoggerTableNames" && ShownEntry(text).empty())
        return std::nullopt;
    for (const FieldRule& rule : FieldRules)
        if (rule.table == field.table && (rule.link.empty() || rule.link == record.LoggerLinkType) &&
            !rule.holds({record, text, surroundings}))
            return Finding{0, rule.oddity, name + std::string(rule.otherwise)};
    return std::nullopt;
}

bool IsIconKey(const std::string& text)
{
    constexpr std::string_view Mark = "::";
    return text.starts_with(Mark) && IsNumber(std::string_view(text).substr(Mark.size()));
}

} // namespace harvelop
