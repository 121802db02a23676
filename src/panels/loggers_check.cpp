// What is odd in `found.ini`.
#include "core/text_lines.h"
#include "core/text_numbers.h"
#include "panels/data_check.h"
#include "panels/field_check.h"
#include "panels/table_name_rules.h"
#include "settings/logger_records.h"

#include <algorithm>
#include <array>
#include <map>

namespace harvelop
{

namespace
{

struct Fields {
    std::array<std::string_view, RecordFields> texts;
    size_t count = 0; // with those that are too many
};

// The last one may have no comma behind it.
Fields fieldsOf(std::string_view text)
{
    Fields fields;
    for (; !text.empty(); ++fields.count) {
        const size_t comma = std::min(text.find(','), text.size());
        if (fields.count < fields.texts.size())
            fields.texts[fields.count] = text.substr(0, comma);
        text.remove_prefix(std::min(comma + 1, text.size()));
    }
    return fields;
}

// What reaches one logger reaches the other: the port, and behind a modem the number.
std::string placeOf(const LoggerRecord& record)
{
    return record.LoggerPort + (record.LoggerLinkType == "Dialup" ? "," + record.LoggerBaud : "");
}

class LoggersCheck
{
public:
    explicit LoggersCheck(const LoggerSurroundings& use) : m_use(use) {}

    void Take(int line, std::string_view text)
    {
        m_lines.push_back(text);
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
    }

    // What only shows between the loggers.
    void Finish()
    {
        for (const auto& [key, line] : m_keys) {
            const auto first =
                std::ranges::find_if(m_lines, [&wanted = key](std::string_view text) { return Holds(text, wanted); });
            const auto found = static_cast<int>(first - m_lines.begin()) + 1;
            if (found != line)
                add(line, Oddity::Risk,
                    "a shortcut to " + key + " finds line " + std::to_string(found) + " first" +
                        (HoldsIgnoringCase(*first, RecordKey) ? "" : ", which is no logger"));
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
        if (ToInt16(text.substr(0, std::min(key, NumberReach))) != m_count)
            add(line, Oddity::Risk,
                "wants the number " + std::to_string(m_count) +
                    " in front: a shortcut goes by the number that it finds");
        else if (text.substr(0, key) != number)
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
        if (fields.count != RecordFields || !text.ends_with(','))
            add(line, fields.count > RecordFields ? Oddity::Changed : Oddity::PassedOver,
                "holds " + std::to_string(fields.count) + " fields; a logger has 93, each with a comma behind it");
        LoggerRecord record;
        ParseRecord(text, record);
        for (const RecordField& field : AllRecordFields())
            if (static_cast<size_t>(field.number) <= fields.count)
                if (auto odd = CheckField(field, record, fields.texts[static_cast<size_t>(field.number - 1)], m_use))
                    add(line, odd->oddity, odd->text);
        if (const auto twice = FirstDuplicate(record.LoggerTableNames))
            add(line, Oddity::Risk, "two schedules have the same table name");
        checkUnique(line, record);
        if (findings.size() == before && RecordText(record) != text)
            add(line, Oddity::Changed, "is spelled otherwise than the program spells it");
    }

    void checkUnique(int line, const LoggerRecord& record)
    {
        const auto [place, isFirstPlace] = m_places.emplace(placeOf(record), line);
        if (!isFirstPlace)
            add(line, Oddity::Risk,
                "is reached on the same link as the logger on line " + std::to_string(place->second));
        if (!IsIconKey(record.LoggerIconKey))
            return;
        const auto [key, isFirstKey] = m_keys.emplace(record.LoggerIconKey, line);
        if (!isFirstKey)
            add(line, Oddity::Risk, "has the key of the logger on line " + std::to_string(key->second));
    }

    const LoggerSurroundings& m_use;
    int m_count = 0;                       // lines that are read
    int m_records = 0;                     // of them those that hold something
    std::vector<std::string_view> m_lines; // all of them: a shortcut looks into every one
    std::map<std::string, int> m_places;   // the first line of each
    std::map<std::string, int> m_keys;
};

} // namespace

Findings CheckLoggers(std::string_view text, const LoggerSurroundings& surroundings)
{
    LoggersCheck check(surroundings);
    LineReader lines(text);
    std::string_view line;
    for (int number = 1; check.findings.size() <= MostFindings && lines.Next(line); ++number)
        check.Take(number, line);
    check.Finish();
    return check.findings;
}

} // namespace harvelop
