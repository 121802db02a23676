#include "settings/language_lines.h"
#include "settings/language_template.h"
#include "settings/message_texts.h"

#include <gtest/gtest.h>

namespace harvelop::test
{
namespace
{

TEST(LanguageTemplate, HoldsEachNumberOnceAndRisingWithFontAndSize)
{
    const std::string text = LanguageTemplate();
    std::vector<int> numbers;
    const int unreadFrom = ReadLanguageLines(text, [&](const LanguageLine& line) {
        if (line.message) {
            numbers.push_back(line.message->number);
            EXPECT_EQ(line.message->font, "1") << line.text;
            EXPECT_EQ(line.message->size, "9") << line.text;
        }
    });
    EXPECT_EQ(unreadFrom, 0);
    EXPECT_EQ(numbers, TextNumbers());
    EXPECT_GT(numbers.size(), 350u);
}

TEST(LanguageTemplate, IsReadBackAsTheEnglishWords)
{
    const std::string text = LanguageTemplate();
    const LanguageEntries entries = EntriesOf(text);
    for (const int number : TextNumbers()) {
        const LanguageEntry& entry = entries[static_cast<size_t>(number - 1)];
        EXPECT_EQ(entry.text, WordsForFile(number)) << number;
        EXPECT_EQ(entry.fontName, "Sans Serif") << number;
        EXPECT_EQ(entry.fontSize, 9) << number;
    }
}

TEST(LanguageTemplate, WordsBringTheBlanksThatTheirPlaceWants)
{
    EXPECT_EQ(WordsForFile(176), "F&ind");
    EXPECT_EQ(WordsForFile(305), "Found a\u00A0");
    EXPECT_EQ(WordsForFile(306), " Series\u00A0");
    EXPECT_EQ(WordsForFile(370), " are available");
    EXPECT_EQ(WordsForFile(554), "You can only have 50 tallyCores in the list at once.") << "no blanks at the end";
    EXPECT_EQ(WordsForFile(1000), "");
    EXPECT_EQ(WordsForFile(209), "");
}

TEST(LanguageTemplate, OnlyItsFontLineNamesAFontAndAllElseIsCommentOrText)
{
    const std::string text = LanguageTemplate();
    int fonts = 0;
    ReadLanguageLines(text, [&](const LanguageLine& line) {
        const auto named = std::count(line.fonts.begin(), line.fonts.end(), true);
        fonts += static_cast<int>(named);
        EXPECT_TRUE(named == 1 || line.message || line.text.starts_with('#')) << line.text;
    });
    EXPECT_EQ(fonts, 1);
}

} // namespace
} // namespace harvelop::test
