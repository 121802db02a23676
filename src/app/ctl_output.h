// What `harvelctl` prints of the loggers.
#pragma once

#include "settings/logger_records.h"

#include <string>

namespace harvelop
{

// A table of the stored loggers, a line each under a heading; empty without any.
std::string LoggersAsTable(const LoggerTables& tables);
std::string LoggersAsJson(const LoggerTables& tables);

// All 93 fields of a logger by their tables' names: a line each, a schedule's entry as "ScheduleOn.A".
std::string LoggerAsText(const LoggerRecord& record);
// An object of the tables' names; a schedule table is an array of its twelve entries.
std::string LoggerAsJson(const LoggerRecord& record, int number);

} // namespace harvelop
