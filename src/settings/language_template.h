// A complete language file in English, for translators to begin with.
#pragma once

#include <string>
#include <string_view>

namespace harvelop
{

constexpr std::string_view NoBreakSpace = "\xC2\xA0"; // a blank at the end of a line would be dropped

// Numbers whose text is put right against other words while a language file is in use: it brings the blanks along that
// its place wants. In front a plain one does; behind only a no-break space survives the reading.
struct TextJoint {
    int number;
    bool blankBefore;
    bool blankBehind;
};
// None if the number's call sites put the blanks themselves.
const TextJoint* JointOf(int number);

// The English words of a number as a language file has to spell them, with the blanks of its joint; empty if the
// program uses no such number. What the boxes have at the end to grow wider is left out: no reader would see it.
std::string WordsForFile(int number);

// The file: how it is made, as comments, its font, and a line for each number that the program uses, sorted.
std::string LanguageTemplate();

} // namespace harvelop
