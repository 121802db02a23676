// What is odd in `options.ini`.
#include "core/text_lines.h"
#include "core/text_numbers.h"
#include "panels/add_rules.h"
#include "panels/data_check.h"
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

constexpr double ComPortCount = 16;

std::string_view keyIn(std::string_view line)
{
    return line.substr(0, std::min(line.find('='), line.size()));
}

bool isDefaultKey(std::string_view key)
{
    return std::ranges::any_of(DefaultOptionLines(), [&](std::string_view line) { return keyIn(line) == key; });
}

bool sameIgnoringCase(std::string_view a, std::string_view b)
{
    return a.size() == b.size() && HoldsIgnoringCase(a, b);
}

const OptionKey* savedKey(std::string_view key)
{
    const auto rows = SavedOptionKeys();
    const auto row = std::ranges::find_if(rows, [&](const OptionKey& r) { return sameIgnoringCase(r.key, key); });
    return row == rows.end() ? nullptr : &*row;
}

std::string_view wantedBy(const OptionVariable& variable)
{
    if (std::holds_alternative<bool Options::*>(variable))
        return "wants True or False";
    return std::holds_alternative<std::int16_t Options::*>(variable) ? "wants a whole number" : "wants a number";
}

bool isBetween(const std::string& value, double first, double last)
{
    const auto number = ToDouble(value);
    return number && *number >= first && *number <= last;
}

bool isSeconds(const std::string& value)
{
    return value == KeepAllowed(value, TimeoutChars);
}

bool isTcpPort(const std::string& value)
{
    constexpr double Highest = 65535;
    return value.empty() || (isSeconds(value) && isBetween(value, 1, Highest));
}

bool isPortList(const std::string& value)
{
    const auto ports = AddPorts(value);
    return value == "0" || value.empty() ||
           std::ranges::all_of(ports, [](const std::string& port) { return isBetween(port, 1, ComPortCount); });
}

bool isSearchChoice(const std::string& value)
{
    return value.empty() || isBetween(value, -1, ComPortCount);
}

bool isListPlace(const std::string& value)
{
    return isBetween(value, -1, MaxLoggers);
}

bool isCounter(const std::string& value)
{
    return isSeconds(value) && ToDouble(value).has_value();
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

bool isDesktopName(const std::string& value)
{
    return value == KeepAllowed(value, DesktopDirChars);
}

bool isServerText(const std::string& value)
{
    return value == KeepAllowed(value, ServerChars);
}

struct ValueRule {
    std::string_view key;
    bool (*holds)(const std::string& value);
    std::string_view otherwise;
    Oddity oddity = Oddity::Risk;
};

constexpr std::string_view DroppedByPanel = "holds characters that the options panel drops";

constexpr ValueRule ValueRules[] = {
    {"AvailablePorts", isPortList, "wants numbers from 1 to 16, each followed by a comma, or 0"},
    {"ModemTimeout", isSeconds, "wants a number of seconds"},
    {"SMTPTimeout", isSeconds, "wants a number of seconds"},
    {"FTPTimeout", isSeconds, "wants a number of seconds"},
    {"LastSearch", isSearchChoice, "wants a number from 0 to 16"},
    {"LastUtallyCore", isListPlace, "names no place in the list of loggers"},
    {"LogFileSize", isSize, "can't be less than 0"},
    {"SMTPPort", isTcpPort, "wants a number from 1 to 65535"},
    {"SMTPAuthenticationType", isAuthentication, "wants PLAIN, LOGIN or CRAM-MD5"},
    {"SMTPSender", isSender, "is no address"},
    {"Icons", isCounter, "wants a number: without it no new logger gets a key"},
    {"DesktopDir", isDesktopName, DroppedByPanel, Oddity::Changed},
    {"SMTPServerName", isServerText, DroppedByPanel, Oddity::Changed},
    {"SMTPUserName", isServerText, DroppedByPanel, Oddity::Changed},
    {"FTPServername", isServerText, DroppedByPanel, Oddity::Changed},
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
                    "holds the word " + std::string(row.key) + ", so it is what this option is read from");
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
                add(number, rule.oddity, named(row.key) + std::string(rule.otherwise));
        const bool box = std::holds_alternative<bool Options::*>(row.variable); // "1" is as good as "True"
        if (!box && OptionText(scratch, row.variable) != value)
            add(number, Oddity::Changed, named(row.key) + "is spelled otherwise than the program spells it");
    }

    std::map<std::string, int, std::less<>> m_lines; // the first line of each key
};

} // namespace

Findings CheckOptions(std::string_view text)
{
    OptionsCheck check;
    LineReader lines(text);
    std::string_view line;
    for (int number = 1; lines.Next(line); ++number)
        check.Take(number, line);
    check.Finish(text);
    return check.findings;
}

} // namespace harvelop
