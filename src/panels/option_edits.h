// Changes to the options that are told as texts instead of clicks: by the rules of the options panel. What the panel
// would drop silently is refused here, as nobody watches the field, and so is what can't do what it should.
#pragma once

#include "settings/option_keys.h"

#include <optional>
#include <string>
#include <vector>

namespace harvelop
{

// What the panel's field of an option takes.
struct OptionField {
    std::string_view key;
    std::string_view allowed; // empty: every character
    size_t longest = 0;       // 0: no bound
    std::string_view takes = {};
    bool (*holds)(const std::string& value) = nullptr; // whether a value that is not empty can do what it should
};

// By the key in the file; nullptr for what has no such field.
const OptionField* FindOptionField(std::string_view key);

// An option by its key in the file, and what it is to hold. A box is "0" or "1", also "False" or "True".
struct OptionEdit {
    std::string key;
    std::string value;
};

// Whether an option can be changed so at all; the others the program keeps by itself.
bool IsEditable(const OptionKey& key);

// Applies the edits in their order, each to what the ones before have left. All are applied or none: a line that says
// which was refused and why, but never its value; nothing if all are in.
std::optional<std::string> ApplyOptionEdits(Options& options, const std::vector<OptionEdit>& edits);

} // namespace harvelop
