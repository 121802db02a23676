#include "panels/table_name_rules.h"

#include <algorithm>

namespace harvelop
{

std::vector<std::string> ScheduleCaptions(std::string_view model)
{
    std::vector<std::string> captions;
    for (const char letter : ScheduleLetters(model))
        captions.push_back(std::string("Schedule ") + letter);
    return captions;
}

std::string_view ShownEntry(std::string_view stored)
{
    return stored == "0" ? std::string_view() : stored;
}

std::optional<size_t> FirstDuplicate(const ScheduleTexts& names)
{
    for (auto name = names.begin(); name != names.end(); ++name)
        if (!ShownEntry(*name).empty() && std::find(name + 1, names.end(), *name) != names.end())
            return static_cast<size_t>(name - names.begin());
    return std::nullopt;
}

} // namespace harvelop
