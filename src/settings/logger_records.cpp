#include "settings/logger_records.h"

#include "core/text_lines.h"
#include "core/text_numbers.h"
#include "settings/panel_loading.h"
#include "settings/replace_file.h"

#include <algorithm>

namespace harvelop
{

std::string_view RecordIn(std::string_view line)
{
    constexpr size_t KeyReach = 22;
    const size_t equals = line.substr(0, KeyReach).rfind('=');
    return equals == std::string_view::npos ? std::string_view() : line.substr(equals + 1);
}

LoggerRecord* LoggerTables::Record(int number)
{
    return number >= 1 && number <= MaxLoggers ? &records[static_cast<size_t>(number - 1)] : nullptr;
}

const LoggerRecord* LoggerTables::Record(int number) const
{
    return number >= 1 && number <= MaxLoggers ? &records[static_cast<size_t>(number - 1)] : nullptr;
}

bool LoggerTables::Holds(int number) const
{
    return number >= 1 && number <= MaxLoggers && !FoundLoggerStrings[static_cast<size_t>(number - 1)].empty();
}

int LoggerTables::Count() const
{
    return static_cast<int>(std::count_if(FoundLoggerStrings.begin(), FoundLoggerStrings.end(),
                                          [](const std::string& text) { return !text.empty(); }));
}

std::string LoggerRecords::path() const
{
    return m_state.AppPath + "found.ini";
}

void LoggerRecords::SaveFoundLoggers()
{
    if (m_lineTooMany)
        return; // the file holds more than the slots took in: a save would lose the rest
    std::string text;
    int count = 0;
    for (const std::string& record : m_tables.FoundLoggerStrings)
        if (!record.empty())
            text.append(std::to_string(++count)).append(RecordKey).append(record).append(CrLf);
    m_unsaved.reset();
    if (!ReplaceFile(m_files, path(), text))
        m_unsaved = text;
}

void LoggerRecords::LoadFoundLoggers()
{
    m_tables.FoundLoggerStrings.fill("");
    m_tables.HaveFoundLoggers = false;
    m_lineTooMany = false;
    const FileText file = m_unsaved ? FileText{FileState::Read, *m_unsaved} : m_files.Read(path());
    LineReader lines(file.text);
    std::string_view line;
    size_t row = 0;
    while (lines.Next(line)) {
        if (!HoldsIgnoringCase(line, RecordKey))
            continue;
        m_tables.HaveFoundLoggers = true;
        m_lineTooMany = row == m_tables.FoundLoggerStrings.size();
        if (m_lineTooMany)
            return; // a line too many leaves all records unsplit: that is meant
        m_tables.FoundLoggerStrings[row++] = RecordIn(line);
    }
    for (int number = 1; number <= MaxLoggers; ++number)
        if (m_tables.Holds(number))
            ParseLoggerSettings(number);
}

void LoggerRecords::ParseLoggerSettings(int number)
{
    if (LoggerRecord* record = m_tables.Record(number))
        ParseRecord(m_tables.FoundLoggerStrings[static_cast<size_t>(number - 1)], *record);
}

void LoggerRecords::BuildLoggerSettings(int number)
{
    if (LoggerRecord* record = m_tables.Record(number)) {
        if (const LoggerPanel* panel = m_panels.At(number))
            StorePanelValues(panel->Values(), *record);
        m_tables.FoundLoggerStrings[static_cast<size_t>(number - 1)] = RecordText(*record);
    }
    if (!m_state.DeletingLogger)
        SaveFoundLoggers();
    if (m_state.AddingLogger) {
        ListState& list = m_state.cbxUnload_TallyCores;
        list.Select(list.Count() - 1);
        m_state.AddingLogger = false;
    }
}

void LoggerRecords::KeepTables(int number)
{
    if (m_tables.Holds(number))
        m_tables.FoundLoggerStrings[static_cast<size_t>(number - 1)] = RecordText(*m_tables.Record(number));
}

std::optional<int> LoggerRecords::FindLoggerByKey(const std::string& key)
{
    const FileText file = m_unsaved ? FileText{FileState::Read, *m_unsaved} : m_files.Read(path());
    LineReader lines(file.text);
    std::string_view line;
    while (lines.Next(line)) {
        if (!Holds(line, "::" + key))
            continue;
        const size_t settings = FindIgnoringCase(line, RecordKey);
        if (settings == std::string_view::npos)
            return std::nullopt;
        const auto number = ToInt16(line.substr(0, std::min(settings, NumberReach)));
        return number && m_tables.Record(*number) ? std::optional<int>(*number) : std::nullopt;
    }
    return std::nullopt;
}

} // namespace harvelop
