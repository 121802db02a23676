#include "settings/language_template.h"

#include "settings/language_lines.h"
#include "settings/message_texts.h"

#include <algorithm>
#include <iterator>

namespace harvelop
{

namespace
{

constexpr TextJoint Joints[] = {
    {305, false, true},                     // found: the model
    {306, true, true},                      // its series
    {307, true, true},                      // its port
    {313, false, true},                     // looking for a logger
    {322, false, true}, {367, false, true}, // the one port
    {368, true, false}, {369, false, true}, // several ports
    {370, true, false}, {372, false, true}, // trying a speed and a port
    {373, true, false}, {503, true, false}, // behind the port of 553
    {553, false, true}, {635, true, false}, // behind a full stop
};

// The font and size of a Qt program on Debian where the desktop has no say.
constexpr std::string_view Head =
    "# A language file of tallyCore Harvel, in UTF-8. Every text has one line of four parts:\n"
    "#   number : font : size in points : text\n"
    "# The font is one of the five that lines of \"Font\", a digit, \"=\" and its name can give, from the first\n"
    "# column on. A size of 0 keeps that of the desktop. The number sign makes a comment of its whole line.\n"
    "# A letter behind & is the key of its control: it must differ from those on the same page of a window.\n"
    "# Blanks before a text count, those at the end of a line do not: where a text needs one it ends in a\n"
    "# no-break space (U+00A0). \"harvelctl language-check FILE\" tells what is missing, doubled or malformed.\n"
    "Font1=Sans Serif\n";
constexpr std::string_view FontAndSize = ":1:9:";

} // namespace

const TextJoint* JointOf(int number)
{
    const auto* joint = std::ranges::find(Joints, number, &TextJoint::number);
    return joint == std::end(Joints) ? nullptr : joint;
}

std::string WordsForFile(int number)
{
    std::string words(EnglishText(number));
    words.erase(words.find_last_not_of(' ') + 1);
    const TextJoint* joint = JointOf(number);
    if (joint && joint->blankBefore)
        words.insert(0, " ");
    if (joint && joint->blankBehind)
        words += NoBreakSpace;
    return words;
}

std::string LanguageTemplate()
{
    std::string text(Head);
    for (const int number : TextNumbers())
        text.append(std::to_string(number)).append(FontAndSize).append(WordsForFile(number)).append("\n");
    return text;
}

} // namespace harvelop
