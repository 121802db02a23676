// What is odd in `options.ini`.
#include "core/text_lines.h"
#include "core/text_numbers.h"
#include "links/link_state.h"
#include "panels/add_rules.h"
#include "panels/data_check.h"
#include "panels/option_edits.h"
#include "panels/options_rules.h"
#include "settings/logger_record.h"
#include "settings/option_keys.h"
#include "settings/options_store.h"

#include <algorithm>
#include <map>

namespace harvelop
{

namespace
{

std::string_view keyIn(std::string_view line)
{
    return line.substr(0, std::min(line.find('='), line.size()));
}

bool isDefaultKey(std::string_view key)
{
    return std::ranges::any_of(DefaultOptionLines(), [&](std::string_view line) { return keyIn(line) == key; });
}

// In any case.
const OptionKey* savedKey(std::string_view key)
{
    const auto rows = SavedOptionKeys();
    const auto row = std::ranges::find_if(
        rows, [&](const OptionKey& r) { return r.key.size() == key.size() && HoldsIgnoringCase(r.key, key); });
    return row == rows.end() ? nullptr : &*row;
}

std::string_view wantedBy(const OptionVariable& variable)
{
    if (std::holds_alternative<bool Options::*>(variable))
        return "wants True or False";
    return std::holds_alternative<std::int16_t Options::*>(variable) ? "wants a whole number" : "wants a number";
}

bool isPortList(const std::string& value)
{
    const auto ports = AddPorts(value);
    const bool commas = value.ends_with(',') && static_cast<size_t>(std::ranges::count(value, ',')) == ports.size();
    return value == "0" ||
           (commas && std::ranges::all_of(ports, [](const std::string& p) { return IsNumberUpTo(p, ComPorts); }));
}

bool isSearchChoice(const std::string& value)
{
    return value.empty() || value == "-1" || value == "0" || IsNumberUpTo(value, ComPorts);
}

bool isListPlace(const std::string& value)
{
    const auto place = ToInt16(value);
    return place && *place >= -1 && *place <= MaxLoggers;
}

bool isCounter(const std::string& value)
{
    return IsNumber(value) && ToDouble(value);
}

bool isSize(const std::string& value)
{
    return !value.starts_with('-');
}

bool isAuthentication(const std::string& value)
{
    using enum AuthenticationButton;
    return value.empty() || AuthenticationRead(value) || value == AuthenticationWritten(CramMd5);
}

bool isSender(const std::string& value)
{
    return value.empty() || IsAddress(value);
}

struct ValueRule {
    std::string_view key;
    bool (*holds)(const std::string& value);
    std::string_view otherwise;
};

constexpr std::string_view LessThanNothing = "can't be less than 0";

constexpr ValueRule ValueRules[] = {
    {"AvailablePorts", isPortList, "wants numbers from 1 to 16, each followed by a comma, or 0"},
    {"LastSearch", isSearchChoice, "wants a number from 0 to 16"},
    {"LastUtallyCore", isListPlace, "names no place in the list of loggers"},
    {"LogFileSize", isSize, LessThanNothing},
    {"TerminalWidth", isSize, LessThanNothing},
    {"TerminalHeight", isSize, LessThanNothing},
    {"TransmitHeight1", isSize, LessThanNothing},
    {"SMTPAuthenticationType", isAuthentication, "wants PLAIN, LOGIN or CRAM-MD5"},
    {"SMTPSender", isSender, "does not look like an address"},
    {"Icons", isCounter, "wants a number: without it no new logger gets a key"},
};

class OptionsCheck
{
public:
    void Take(int number, std::string_view line)
    {
        if (line.find('=') == std::string_view::npos) {
            add(number, Oddity::PassedOver, "holds no \"=\"; the next save drops it");
            return;
        }
        const std::string_view key = keyIn(line);
        const OptionKey* row = savedKey(key);
        if (!row && !isDefaultKey(key)) {
            add(number, Oddity::Changed, "names no option; the next save drops it");
            return;
        }
        const auto [first, isFirst] = m_lines.emplace(row ? row->key : key, number);
        if (!isFirst) {
            add(number, Oddity::PassedOver,
                named(first->first) + "stands on line " + std::to_string(first->second) +
                    " already, which is the one that is read");
        } else if (row) {
            if (row->key != key)
                add(number, Oddity::Changed, named(row->key) + "is spelled otherwise");
            takeValue(number, *row, std::string(line.substr(key.size() + 1)));
        }
    }

    // What is read from a line that is another's, and what is missing.
    void Finish(std::string_view text)
    {
        for (const OptionKey& row : SavedOptionKeys()) {
            const auto own = m_lines.find(row.key);
            const auto read = FindOptionLine(text, row.key);
            if (read && (own == m_lines.end() || own->second != read->number))
                add(read->number, Oddity::Risk,
                    IsPasswordLine(*read) // the word may be a piece of the password
                        ? "is what another option is read from"
                        : "holds the word " + std::string(row.key) + ", so it is what this option is read from");
            if (own == m_lines.end() && isDefaultKey(row.key))
                add(0, Oddity::Changed, named(row.key) + "is missing");
        }
    }

    Findings findings;

private:
    void add(int number, Oddity oddity, std::string text) { findings.push_back({number, oddity, std::move(text)}); }
    static std::string named(std::string_view key) { return std::string(key) + " "; }

    void takeValue(int number, const OptionKey& row, const std::string& value)
    {
        Options scratch;
        if (value.empty() && !row.insteadOfEmpty.empty())
            return;
        if (!AssignOption(scratch, row.variable, value)) {
            add(number, Oddity::PassedOver, named(row.key) + std::string(wantedBy(row.variable)));
            return;
        }
        for (const ValueRule& rule : ValueRules)
            if (rule.key == row.key && !rule.holds(value))
                add(number, Oddity::Risk, named(row.key) + std::string(rule.otherwise));
        if (std::holds_alternative<std::string Options::*>(row.variable))
            takeText(number, row.key, value);
        const bool box = std::holds_alternative<bool Options::*>(row.variable); // "1" is as good as "True"
        if (!box && OptionText(scratch, row.variable) != value)
            add(number, Oddity::Changed, named(row.key) + "is spelled otherwise than the program spells it");
    }

    // What the panel's field makes of it.
    void takeText(int number, std::string_view key, const std::string& value)
    {
        const OptionField* field = FindOptionField(key);
        if (!field || value.empty())
            return;
        if (field->holds && !field->holds(value))
            add(number, Oddity::Risk,
                std::string(key).append(field->takes.substr(0, field->takes.size() - 1))); // without its point
        else if (!field->allowed.empty() && value != KeepAllowed(value, field->allowed))
            add(number, Oddity::Changed, named(key) + "holds characters that the options panel drops");
        else if (field->longest > 0 && value.size() > field->longest)
            add(number, Oddity::Changed,
                named(key) + "is longer than the " + std::to_string(field->longest) + " characters of its field");
    }

    std::map<std::string, int, std::less<>> m_lines; // the first line of each key
};

} // namespace

bool IsFreeOption(std::string_view line)
{
    const OptionKey* row = savedKey(keyIn(line));
    const OptionField* field = row ? FindOptionField(row->key) : nullptr;
    return field && field->allowed.empty();
}

Findings CheckOptions(std::string_view text)
{
    OptionsCheck check;
    LineReader lines(text);
    std::string_view line;
    for (int number = 1; check.findings.size() <= MostFindings && lines.Next(line); ++number)
        check.Take(number, line);
    if (check.findings.size() <= MostFindings)
        check.Finish(text);
    return check.findings;
}

} // namespace harvelop
