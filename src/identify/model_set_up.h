// How a panel looks for a model, as plain functions over a table.
#pragma once

#include "settings/logger_panels.h"

#include <optional>
#include <string>
#include <string_view>

namespace harvelop
{

struct ModelLook {
    std::string_view key; // "KR200"
    int picture = 0;
    bool kr4 = false; // the schedules of the KR4 family
};

// The key of a model text: its first 4 characters if it has exactly 4 or begins with "KR20 ", "KR21 " or "KR23 ",
// otherwise its first 5.
std::string ModelKey(std::string_view model);

// The row of a model text; none for an unknown model.
std::optional<ModelLook> LookOf(std::string_view model);

} // namespace harvelop
