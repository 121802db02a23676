#include "settings/delivery_lists.h"

#include "core/text_lines.h"
#include "settings/replace_file.h"

#include <optional>

namespace harvelop
{

namespace
{

void putLine(std::string& text, char key, char mark, const std::string& value)
{
    if (!value.empty())
        text.append({key, mark}).append(OneLine(value)).append(CrLf);
}

} // namespace

std::string ScheduleKeysOf(std::string_view model)
{
    return "0" + std::string(ScheduleLetters(model));
}

std::optional<size_t> ListScheduleOf(char key, bool kr4)
{
    constexpr std::string_view Fixed = "0ABCDEFGHIJKX";
    constexpr size_t OlderX = 5;
    if (!kr4 && key == 'E')
        return std::nullopt;
    if (!kr4 && key == 'X')
        return OlderX;
    const size_t schedule = Fixed.find(key);
    return schedule == std::string_view::npos ? std::nullopt : std::optional<size_t>(schedule);
}

std::string ListNumber(std::string_view iconKey)
{
    constexpr size_t Start = 2; // behind "::"
    constexpr size_t Longest = 5;
    return std::string(iconKey.size() > Start ? iconKey.substr(Start, Longest) : "");
}

LoggerLists* DeliveryTables::Lists(int number)
{
    return number >= 1 && number <= MaxLoggers ? &DeliveryLists[static_cast<size_t>(number - 1)] : nullptr;
}

void DeliveryTables::Clear()
{
    ListDescriptions.fill("");
    for (LoggerLists& logger : DeliveryLists)
        for (AddressList& list : logger)
            list.fill("");
}

std::string DeliveryLists::PathOf(const std::string& number) const
{
    return m_state.AppPath + "emaillist" + number + ".ini";
}

bool DeliveryLists::isKR4() const
{
    const LoggerRecord* current = m_loggers.Record(m_state.CurrentLogger);
    return current && IsKR4(current->LoggerModel);
}

bool DeliveryLists::ReadDeliveryList(const std::string& number)
{
    m_tables.Clear();
    const std::string path = PathOf(number);
    const FileText file = m_files.Read(path);
    m_unseen = file.state == FileState::Unreadable ? path : "";
    if (file.state == FileState::Unreadable)
        return false;
    if (file.state == FileState::NotFound)
        m_files.Replace(path, "");

    const auto unsaved = m_unsaved.find(path);
    LineReader lines(unsaved == m_unsaved.end() ? file.text : unsaved->second);
    std::string_view line;
    std::array<size_t, ListSchedules> counts{};
    while (lines.Next(line))
        takeLine(line, counts);
    return true;
}

void DeliveryLists::takeLine(std::string_view line, std::array<size_t, ListSchedules>& counts)
{
    constexpr size_t KeyLength = 2;
    if (line.size() < KeyLength)
        return;
    const auto schedule = ListScheduleOf(line[0], isKR4());
    const std::string value(line.substr(KeyLength));
    if (schedule && line[1] == ';')
        m_tables.ListDescriptions.at(*schedule) = value;
    LoggerLists* lists = m_tables.Lists(m_state.CurrentLogger);
    if (!schedule || line[1] != ':' || !lists)
        return;
    const size_t position = counts.at(*schedule)++; // an empty address takes a position too
    if (position < MaxListEntries)                  // what lies beyond is lost: meant
        lists->at(*schedule).at(position) = value;
}

std::string DeliveryLists::text() const
{
    const std::string& keys = m_tables.ScheduleKeys;
    std::string text;
    for (size_t schedule = 0; schedule < keys.size(); ++schedule)
        putLine(text, keys[schedule], ';', m_tables.ListDescriptions.at(schedule));
    for (const LoggerLists& logger : m_tables.DeliveryLists)
        for (size_t schedule = 0; schedule < keys.size(); ++schedule)
            for (size_t position = 0; position < MaxListEntries - 1; ++position) // the last one never: meant
                putLine(text, keys[schedule], ':', logger.at(schedule).at(position));
    return text;
}

bool DeliveryLists::WriteDeliveryList()
{
    m_tables.ScheduleKeys = ScheduleKeysOf(isKR4() ? "KR4" : "");
    const LoggerRecord* chosen = m_loggers.Record(m_state.ChosenLogger);
    if (!chosen)
        return false;
    const std::string path = PathOf(ListNumber(chosen->LoggerIconKey));
    if (path == m_unseen)
        return false;
    m_unsaved.erase(path);
    const std::string lists = text();
    if (ReplaceFile(m_files, path, lists))
        return true;
    m_unsaved[path] = lists;
    return false;
}

} // namespace harvelop
