// What `harvelctl` prints of the loggers.
#pragma once

#include "settings/logger_records.h"

#include <string>
#include <string_view>
#include <vector>

namespace harvelop
{

// The text with a "?" for each control character that is not among `kept`: what a file, a command line or a logger
// holds may be anything, and a terminal obeys such characters.
std::string Printable(std::string_view text, std::string_view kept = {});

// A table of the stored loggers, a line each under a heading; empty without any.
std::string LoggersAsTable(const LoggerTables& tables);
std::string LoggersAsJson(const LoggerTables& tables);

// All 93 fields of a logger by their tables' names: a line each, a schedule's entry as "ScheduleOn.A".
std::string LoggerAsText(const LoggerRecord& record);
// An object of the tables' names; a schedule table is an array of its twelve entries.
std::string LoggerAsJson(const LoggerRecord& record, int number);

// An object of the fields that differ, named as `LoggerAsText` names them, with what they hold now.
std::string ChangesAsJson(const LoggerRecord& before, const LoggerRecord& now);

struct ShownList {
    std::string key;     // "0", "A", …
    std::string caption; // "All Schedules", "Schedule A", …
    std::string description;
    std::vector<std::string> addresses = {};
};

// A line for each list that holds something, with its description, and under it a line for each address.
std::string ListsAsText(const std::vector<ShownList>& lists);
// An array of objects, the empty lists among them.
std::string ListsAsJson(const std::vector<ShownList>& lists);

} // namespace harvelop
