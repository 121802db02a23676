// The loggers' records and their file, `found.ini` in the application directory. The unload program reads it too: its
// format is a contract.
#pragma once

#include "core/program_state.h"
#include "platform/data_files.h"
#include "settings/logger_panels.h"
#include "settings/logger_record.h"

#include <array>
#include <optional>
#include <string>

namespace harvelop
{

// The tables of the loggers. A slot is empty when its text is.
struct LoggerTables {
    std::array<LoggerRecord, MaxLoggers> records;
    std::array<std::string, MaxLoggers> FoundLoggerStrings;
    bool HaveFoundLoggers = false; // after each load: whether the file held a record

    // By logger number; nullptr outside 1 to 50: the statement that needs it is skipped.
    LoggerRecord* Record(int number);
    const LoggerRecord* Record(int number) const;
    bool Holds(int number) const; // the slot is filled
    int Count() const;            // filled slots
};

// How a line of `found.ini` is read. What it begins with, its number, only counts for a shortcut's look-up.
constexpr std::string_view RecordKey = "tallyCoreSettings="; // in any case
constexpr size_t NumberReach = 4;                            // characters of a line that can be its number

// The record of a line: what stands behind the last "=" of its first 22 characters. So a record that has an "=" of its
// own among them is cut there: that is meant.
std::string_view RecordIn(std::string_view line);

class LoggerRecords
{
public:
    LoggerRecords(LoggerTables& tables, ProgramState& state, LoggerPanels& panels, DataFiles& files)
        : m_tables(tables), m_state(state), m_panels(panels), m_files(files)
    {
    }

    // Writes `found.ini` from the slots' texts, numbered from 1 without gaps. Nothing is shown if that fails; what
    // could not be saved then stands in for the file, so that the loggers in work are neither lost nor mixed with older
    // ones. A file that stands there and can't be read is not replaced, nor is one with a line too many.
    void SaveFoundLoggers();
    bool Saved() const { return !m_unsaved && !m_lineTooMany; } // no save has failed or been left out

    // The user gives up what the file holds, also a line too many: it may be saved over again.
    void GiveUpFile() { m_lineTooMany = false; }

    // Reads `found.ini` into the slots and splits each into the tables. A missing file means no records. A line too
    // many ends it before any record is split; no save then touches the file until a load takes it in whole or
    // `GiveUpFile`.
    void LoadFoundLoggers();

    // Splits the text of slot n into the tables; nothing outside 1 to 50.
    void ParseLoggerSettings(int number);

    // Builds the text of slot n from its panel, if one is loaded, and the tables; saves unless a logger is being
    // deleted. A logger being added is then chosen in the list, where it stands last, and counts as added.
    void BuildLoggerSettings(int number);

    // Takes what an editor has put into the tables of logger n into its text, so that no reload loses it. Its panel is
    // not asked, nothing is saved; an empty slot stays empty.
    void KeepTables(int number);

    // The record number of the first line of `found.ini` that holds the key, as a start from a shortcut looks it up: a
    // plain search for "::" and the key, so key "1" also finds "::12" if that line comes first. None if no line does,
    // or if that line begins with no logger's number.
    std::optional<int> FindLoggerByKey(const std::string& key);

private:
    std::string path() const;

    LoggerTables& m_tables;
    ProgramState& m_state;
    LoggerPanels& m_panels;
    DataFiles& m_files;
    std::optional<std::string> m_unsaved; // the text of a save that failed
    bool m_lineTooMany = false;           // the last load stopped at a line for which there is no slot
};

} // namespace harvelop
