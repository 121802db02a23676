// To which addresses each schedule's data goes, with a description of each list: one small file per logger, which the
// unload program reads. Its format is a contract.
#pragma once

#include "core/program_state.h"
#include "platform/data_files.h"
#include "settings/logger_records.h"

#include <array>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace harvelop
{

constexpr int ListSchedules = 13;  // schedules that can have a list; index 0: all schedules
constexpr int MaxListEntries = 20; // positions of a list, from 1; the last one is never stored
using AddressList = std::array<std::string, MaxListEntries>; // position - 1
using LoggerLists = std::array<AddressList, ListSchedules>;  // by schedule index

// Only one logger's lists are in memory at a time.
struct DeliveryTables {
    std::string ScheduleKeys;                                // of the logger written last
    std::array<std::string, ListSchedules> ListDescriptions; // by schedule index
    std::vector<LoggerLists> DeliveryLists{MaxLoggers};      // by logger number - 1

    LoggerLists* Lists(int number); // of a logger; nullptr outside 1 to 50
    void Clear();                   // empties the lists of all loggers, and the descriptions
};

// The keys of a model's schedules, "0" for all of them first: "0ABCDEFGHIJKX" or "0ABCDX". A key's position is its
// schedule index.
std::string ScheduleKeysOf(std::string_view model);

// Which schedule a key of a file stands for. "F" to "K" have their places in the older family too, where nothing writes
// them back; the place of "E" belongs to "X" there. So these lines of a logger that has changed its model are lost at
// the next save: that is meant.
std::optional<size_t> ListScheduleOf(char key, bool kr4);

// The N of a logger's file: up to five characters behind the "::" of its key; empty without a key.
std::string ListNumber(std::string_view iconKey);

class DeliveryLists
{
public:
    DeliveryLists(DeliveryTables& tables, const ProgramState& state, const LoggerTables& loggers, DataFiles& files)
        : m_tables(tables), m_state(state), m_loggers(loggers), m_files(files)
    {
    }

    // Empties all lists and descriptions, then reads emaillist<number>.ini into those of `CurrentLogger`. A missing
    // file is created empty. False if a file stands there that can't be read: until a read has seen it, no write
    // replaces it.
    bool ReadDeliveryList(const std::string& number);

    // Writes the file of `ChosenLogger` by the keys of the family of `CurrentLogger`. False if that failed; the old
    // file then stands, and the next read gives what could not be saved.
    bool WriteDeliveryList();

    std::string PathOf(const std::string& number) const; // of emaillist<number>.ini

    DeliveryTables& Tables() { return m_tables; }

private:
    bool isKR4() const;
    void takeLine(std::string_view line, std::array<size_t, ListSchedules>& counts);
    std::string text() const;

    DeliveryTables& m_tables;
    const ProgramState& m_state;
    const LoggerTables& m_loggers;
    DataFiles& m_files;
    std::string m_unseen;                         // the path that the last read could not read; empty: it could
    std::map<std::string, std::string> m_unsaved; // by path: the text of a save that failed
};

} // namespace harvelop
