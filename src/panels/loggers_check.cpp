// What is odd in `found.ini`.
#include "core/text_lines.h"
#include "core/text_numbers.h"
#include "identify/model_set_up.h"
#include "panels/add_rules.h"
#include "panels/data_check.h"
#include "panels/panel_rules.h"
#include "panels/table_name_rules.h"
#include "platform/separator.h"
#include "settings/logger_records.h"

#include <algorithm>
#include <map>

namespace harvelop
{

namespace
{

constexpr std::string_view Digits = "0123456789";

struct Value {
    const LoggerRecord& record;
    const std::string& text;
    const LoggerSurroundings& use;
};

bool isNumber(const std::string& text)
{
    return !text.empty() && text == KeepAllowed(text, Digits);
}

bool isNumberUpTo(const std::string& text, double last)
{
    const double number = isNumber(text) ? ToDouble(text).value_or(0) : 0;
    return number >= 1 && number <= last;
}

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
    return isNumber(v.text);
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
    constexpr double ComPortCount = 16;
    return isNumberUpTo(v.text, ComPortCount);
}

bool isHostAndPort(const Value& v)
{
    constexpr double HighestPort = 65535;
    const std::string& host = v.record.LoggerHost;
    return !host.empty() && !Holds(host, " ") && isNumberUpTo(v.record.LoggerTcpPort, HighestPort);
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
    return !IsKR4(v.record.LoggerModel) || v.text == KeepAllowed(v.text, Digits);
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
    constexpr std::string_view Mark = "::";
    return v.text.starts_with(Mark) && isNumber(v.text.substr(Mark.size()));
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

// "ScheduleOn.A"; behind the schedules of its family an entry has a number.
std::string nameOf(const RecordField& field, const std::string& model)
{
    std::string name(field.table);
    if (field.kind != RecordField::Kind::Schedule)
        return name;
    const auto letters = ScheduleLetters(model);
    const auto entry = static_cast<size_t>(field.entry);
    return name + "." + (entry < letters.size() ? std::string(1, letters[entry]) : std::to_string(entry));
}

std::vector<std::string> fieldsOf(std::string_view text)
{
    std::vector<std::string> fields;
    for (size_t comma = text.find(','); comma != std::string_view::npos; comma = text.find(',')) {
        fields.emplace_back(text.substr(0, comma));
        text.remove_prefix(comma + 1);
    }
    if (!text.empty())
        fields.emplace_back(text); // what no comma ends
    return fields;
}

// What reaches one logger reaches the other: the port, and behind a modem the number.
std::string placeOf(const LoggerRecord& record)
{
    return record.LoggerPort + (record.LoggerLinkType == Modem ? "," + record.LoggerBaud : "");
}

class LoggersCheck
{
public:
    explicit LoggersCheck(const LoggerSurroundings& use) : m_use(use) {}

    void Take(int line, std::string_view text)
    {
        const size_t key = FindIgnoringCase(text, RecordKey);
        if (key == std::string_view::npos) {
            add(line, Oddity::PassedOver, "is no logger; the next save drops it");
            return;
        }
        if (++m_count > MaxLoggers) {
            add(line, Oddity::PassedOver, "is one logger too many: with more than 50 none is read");
            return;
        }
        const std::string_view record = RecordIn(text);
        if (record.empty()) {
            add(line, Oddity::PassedOver, "holds no settings; the next save drops it");
            return;
        }
        checkHead(line, text, key, record);
        checkRecord(line, std::string(record));
        m_lines.emplace_back(text);
        m_lineNumbers.push_back(line);
    }

    // What only shows between the loggers.
    void Finish()
    {
        for (const auto& [key, line] : m_keys) {
            size_t first = 0;
            while (!Holds(m_lines[first], key))
                ++first;
            const int found = m_lineNumbers[first];
            if (found != line)
                add(line, Oddity::Risk, "a shortcut to " + key + " finds line " + std::to_string(found) + " first");
            const auto number = ToDouble(std::string_view(key).substr(2));
            if (m_use.icons && number && *number > *m_use.icons)
                add(line, Oddity::Risk,
                    "the counter Icons in options.ini stands below this logger's key " + key +
                        ", which a new logger may get again");
        }
    }

    Findings findings;

private:
    void add(int line, Oddity oddity, std::string text) { findings.push_back({line, oddity, std::move(text)}); }

    void checkHead(int line, std::string_view text, size_t key, std::string_view record)
    {
        const std::string number = std::to_string(++m_records);
        if (text.substr(0, key) != number)
            add(line, Oddity::Changed, "wants the number " + number + " in front");
        if (text.substr(key).substr(0, RecordKey.size()) != RecordKey)
            add(line, Oddity::Changed, std::string(RecordKey) + " is spelled otherwise");
        if (text.substr(std::min(key + RecordKey.size(), text.size())) != record)
            add(line, Oddity::PassedOver, "is read only behind the last \"=\" of its first 22 characters");
    }

    void checkRecord(int line, const std::string& text)
    {
        const size_t before = findings.size();
        const auto fields = fieldsOf(text);
        if (fields.size() != RecordFields || !text.ends_with(','))
            add(line, fields.size() > RecordFields ? Oddity::Changed : Oddity::PassedOver,
                "holds " + std::to_string(fields.size()) + " fields; a logger has 93, each with a comma behind it");
        LoggerRecord record;
        ParseRecord(text, record);
        for (const RecordField& field : AllRecordFields())
            if (static_cast<size_t>(field.number) <= fields.size())
                checkField(line, field, record, fields[static_cast<size_t>(field.number - 1)]);
        if (const auto twice = FirstDuplicate(record.LoggerTableNames))
            add(line, Oddity::Risk, "two schedules have the same table name");
        checkUnique(line, record);
        if (findings.size() == before && RecordText(record) != text)
            add(line, Oddity::Changed, "is spelled otherwise than the program spells it");
    }

    void checkField(int line, const RecordField& field, const LoggerRecord& record, const std::string& raw)
    {
        const std::string name = nameOf(field, record.LoggerModel) + " ";
        if (field.kind == RecordField::Kind::Integer && !ToInt16(raw)) {
            add(line, Oddity::PassedOver, name + "wants a number");
            return;
        }
        const std::string text = FieldText(record, field);
        const bool unnamed = field.table == "LoggerTableNames" && ShownEntry(text).empty();
        for (const FieldRule& rule : FieldRules)
            if (rule.table == field.table && (rule.link.empty() || rule.link == record.LoggerLinkType) && !unnamed &&
                !rule.holds({record, text, m_use}))
                add(line, rule.oddity, name + std::string(rule.otherwise));
    }

    void checkUnique(int line, const LoggerRecord& record)
    {
        const auto [place, isFirstPlace] = m_places.emplace(placeOf(record), line);
        if (!isFirstPlace)
            add(line, Oddity::Risk,
                "is reached on the same link as the logger on line " + std::to_string(place->second));
        if (!isKey({record, record.LoggerIconKey, m_use}))
            return;
        const auto [key, isFirstKey] = m_keys.emplace(record.LoggerIconKey, line);
        if (!isFirstKey)
            add(line, Oddity::Risk, "has the key of the logger on line " + std::to_string(key->second));
    }

    const LoggerSurroundings& m_use;
    int m_count = 0;   // lines that are read
    int m_records = 0; // of them those that hold something
    std::vector<std::string_view> m_lines;
    std::vector<int> m_lineNumbers;
    std::map<std::string, int> m_places; // the first line of each
    std::map<std::string, int> m_keys;
};

} // namespace

Findings CheckLoggers(std::string_view text, const LoggerSurroundings& surroundings)
{
    LoggersCheck check(surroundings);
    LineReader lines(text);
    std::string_view line;
    for (int number = 1; lines.Next(line); ++number)
        check.Take(number, line);
    check.Finish();
    return check.findings;
}

} // namespace harvelop
