#include "panels/data_check.h"

#include "core/text_lines.h"
#include "core/utf8.h"
#include "panels/list_rules.h"
#include "settings/delivery_lists.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>

namespace harvelop
{

namespace
{

bool holdsControls(std::string_view line)
{
    return std::ranges::any_of(line, [](char c) { return (c >= 0 && c < ' ') || c == 0x7F; });
}

void checkCharacters(std::string_view line, int number, bool (*isFree)(std::string_view line), Findings& findings)
{
    constexpr std::string_view Mark = "\xEF\xBB\xBF";
    if (number == 1 && line.starts_with(Mark))
        findings.push_back({number, Oddity::Risk, "begins with a byte order mark, which is taken as text"});
    if (holdsControls(line) && !(isFree && isFree(line)))
        findings.push_back({number, Oddity::Risk, "holds control characters"});
    if (FirstBadByte(line))
        findings.push_back({number, Oddity::Risk, "holds bytes that are no UTF-8"});
}

} // namespace

Findings CheckBytes(std::string_view text, bool (*isFree)(std::string_view line))
{
    Findings findings;
    bool told = false; // of the line ends the first odd one is enough
    int number = 1;
    for (size_t at = 0; at < text.size() && findings.size() <= MostFindings; ++number) {
        const size_t end = std::min(text.find_first_of(CrLf, at), text.size());
        const std::string_view ending = text.substr(end, text.substr(end).starts_with(CrLf) ? CrLf.size() : 1);
        checkCharacters(text.substr(at, end - at), number, isFree, findings);
        if (ending != CrLf && !told) {
            const std::string how = ending.empty() ? "has no line end" : ending == "\n" ? "ends in LF" : "ends in CR";
            findings.push_back({number, Oddity::Changed, how + ", not in CR LF"});
            told = true;
        }
        at = end + ending.size();
    }
    return findings;
}

bool IsAddress(std::string_view text)
{
    const size_t at = text.find('@');
    return at != std::string_view::npos && at > 0 && at + 1 < text.size() && text.rfind('@') == at &&
           text.find_first_of(CrLf) == std::string_view::npos && KeepAllowed(text, AddressChars) == text;
}

namespace
{

// One list file, line by line.
class ListCheck
{
public:
    explicit ListCheck(std::string_view model) : m_kr4(IsKR4(model)), m_keys(ScheduleKeysOf(model)) {}

    void Take(int number, std::string_view line)
    {
        constexpr size_t KeyLength = 2;
        const char mark = line.size() < KeyLength ? '\0' : line[1];
        constexpr bool OfEither = true; // the newer family has every schedule that the older one has
        if ((mark != ';' && mark != ':') || !ListScheduleOf(line[0], OfEither)) {
            add(number, Oddity::PassedOver, "is neither a description nor an address");
            return;
        }
        const auto schedule = ListScheduleOf(line[0], m_kr4);
        const std::string value(line.substr(KeyLength));
        if (!schedule || !Holds(m_keys, line.substr(0, 1)))
            add(number, Oddity::Changed, "the logger has no such schedule; the next save drops the line");
        else if (mark == ';')
            takeDescription(number, *schedule, value);
        else
            takeAddress(number, *schedule, value);
    }

    Findings findings;

private:
    void add(int number, Oddity oddity, std::string text) { findings.push_back({number, oddity, std::move(text)}); }

    void takeDescription(int number, size_t schedule, const std::string& value)
    {
        const auto [before, isFirst] = m_descriptions.emplace(schedule, number);
        if (!isFirst)
            add(before->second, Oddity::PassedOver, "line " + std::to_string(number) + " describes the same list anew");
        before->second = number;
        if (value.empty())
            add(number, Oddity::Changed, "an empty description, which the next save drops");
    }

    void takeAddress(int number, size_t schedule, const std::string& value)
    {
        const int position = ++m_positions[schedule];
        if (position > MaxListEntries)
            add(number, Oddity::PassedOver, "stands behind the twentieth place of its list");
        else if (position == MaxListEntries)
            add(number, Oddity::Changed, "stands on the twentieth place of its list, which the next save drops");
        if (value.empty())
            add(number, Oddity::Changed, "an empty address, which takes a place until the next save");
        else if (!IsAddress(value))
            add(number, Oddity::Risk, "does not look like an address");
        else if (!m_addresses.emplace(schedule, value).second)
            add(number, Oddity::Risk, value + " stands in this list already");
    }

    bool m_kr4;
    std::string m_keys;
    std::map<size_t, int> m_descriptions; // the last line of each
    std::map<size_t, int> m_positions;
    std::set<std::pair<size_t, std::string>> m_addresses;
};

} // namespace

Findings CheckDeliveryList(std::string_view text, std::string_view model)
{
    ListCheck check(model);
    LineReader lines(text);
    std::string_view line;
    for (int number = 1; check.findings.size() <= MostFindings && lines.Next(line); ++number)
        check.Take(number, line);
    return check.findings;
}

Findings CheckInstallMark(std::string_view text)
{
    constexpr size_t ShortestMark = 4;
    Findings findings;
    LineReader lines(text);
    std::string_view line;
    if (!lines.Next(line) || line.size() < ShortestMark)
        findings.push_back({1, Oddity::Changed, "is too short for a mark; the next start sets the directory up anew"});
    for (int number = 2; findings.size() <= MostFindings && lines.Next(line); ++number)
        findings.push_back({number, Oddity::PassedOver, "only the first line counts"});
    return findings;
}

} // namespace harvelop
