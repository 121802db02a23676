// What the fields of a stored logger can hold, by the rules of the windows that fill them.
#pragma once

#include "panels/data_check.h"
#include "settings/logger_record.h"

#include <optional>
#include <string>
#include <string_view>

namespace harvelop
{

// What is odd about a field of the record, whose line holds `raw` for it; nothing if nothing is. The finding's line is
// the caller's to fill in.
std::optional<Finding> CheckField(const RecordField& field, const LoggerRecord& record, std::string_view raw,
                                  const LoggerSurroundings& surroundings);

// "LoggerPort", or an entry as "ScheduleOn.A"; behind the schedules of the model's family an entry has a number.
std::string FieldName(const RecordField& field, const std::string& model);

// "::" and a number.
bool IsIconKey(const std::string& text);

} // namespace harvelop
