// The numbered texts with their English words. They stand in the tables of message_captions.h, message_steps.h,
// message_boxes.h and message_panel_captions.h; a text holds neither the values nor the suffix (" ...", ".     ") that
// its call site adds; where the call site adds no suffix, the trailing blanks of a box stand in the table. An & stands
// before the letter that is the key of a control.
#pragma once

#include <string_view>
#include <vector>

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

// All numbers that the program uses, rising.
std::vector<int> TextNumbers();

} // namespace harvelop
