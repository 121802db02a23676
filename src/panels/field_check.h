// What the fields of a stored logger can hold, by the rules of the windows that fill them.
#pragma once

#include "panels/data_check.h"
#include "settings/logger_record.h"

#include <optional>
#include <string>

namespace harvelop
{

// What is odd about a field of the record, whose line holds `raw` for it; nothing if nothing is. The finding's line is
// the caller's to fill in.
std::optional<Finding> CheckField(const RecordField& field, const LoggerRecord& record, const std::string& raw,
                                  const LoggerSurroundings& surroundings);

// "::" and a number.
bool IsIconKey(const std::string& text);

} // namespace harvelop
