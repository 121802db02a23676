// Changes to a stored logger that are told as texts instead of clicks: by the rules of its panel and of the panel's
// editors. What the panel would drop silently while the user types is refused here, as nobody watches the field.
#pragma once

#include "settings/language_tables.h"
#include "settings/logger_panels.h"
#include "settings/logger_record.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace harvelop
{

// A field by its table's name, a schedule's entry as "ScheduleOn.A", and what it is to hold. A box is "0" or "1".
struct RecordEdit {
    std::string field;
    std::string value;
};

// A logger whose panel is open: the state of its controls, and the record, which takes at once what the panel's editors
// store.
struct EditedLogger {
    PanelValues values;
    LoggerRecord record;
};

// What the rules ask for beside the logger.
struct EditSurroundings {
    const LanguageTables& language;
    std::function<bool(const std::string& path)> isFolder;
};

// Applies the edits in their order, each to what the ones before have left, then cleans the description as the panel
// does before it stores. All are applied or none: a line that says which field was refused and why, but never its
// value; nothing if all are in. A box that has the wanted state already is left alone, also one that the user may not
// change.
std::optional<std::string> ApplyEdits(EditedLogger& logger, const std::vector<RecordEdit>& edits,
                                      const EditSurroundings& surroundings);

} // namespace harvelop
