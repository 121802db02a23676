// The one table of the numbered texts with their English words.
#pragma once

#include <string_view>

namespace harvelop
{

// The title of most boxes, the same in every language.
constexpr const char* BoxTitle = " tallyCore Harvel";

struct MessageText {
    int number; // 1 to 1000: the number in a language file
    std::string_view english;
};

// The English words of a number; empty if the number has none.
std::string_view EnglishText(int number);

} // namespace harvelop
