// The rules of the names that a logger's data get in the database: one table for each schedule.
#pragma once

#include "settings/logger_record.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace harvelop
{

// The characters that a table's name may hold, and how many can be typed.
constexpr std::string_view TableNameChars = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_";
constexpr int TableNameLength = 32;

// What the schedules of a model are called, in the order of a record's entries: "Schedule A", …. The editor has as many
// rows; the entries behind them are not edited and keep what they hold.
std::vector<std::string> ScheduleCaptions(std::string_view model);

// A stored entry as the user sees it. "0" is what an entry holds that was never assigned: it means the same as an empty
// one and shows as empty.
std::string_view ShownEntry(std::string_view stored);

// The first entry whose name, compared exactly, a later one bears too; none if all names are unique or blank. All
// twelve entries count, also those of which a family shows no row: that is meant.
std::optional<size_t> FirstDuplicate(const ScheduleTexts& names);

} // namespace harvelop
