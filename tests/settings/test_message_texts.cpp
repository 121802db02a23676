#include "settings/message_texts.h"

#include <gtest/gtest.h>

namespace harvelop::test
{
namespace
{

TEST(MessageTexts, FirstLastAndMiddleAreFound)
{
    EXPECT_EQ(EnglishText(1), "&Model");
    EXPECT_EQ(EnglishText(371), "No tallyCores Found on Com");
    EXPECT_EQ(EnglishText(503), "tallyCore Harvel");
    EXPECT_EQ(EnglishText(887), "Digital Channels");
}

TEST(MessageTexts, NumberWithoutWordsIsEmpty)
{
    EXPECT_EQ(EnglishText(209), "");
    EXPECT_EQ(EnglishText(1000), "");
}

TEST(MessageTexts, NumberOutsideTheTableIsEmpty)
{
    EXPECT_EQ(EnglishText(-1), "");
    EXPECT_EQ(EnglishText(0), "");
    EXPECT_EQ(EnglishText(1001), "");
}

TEST(MessageTexts, BoxesWithoutSuffixKeepTheirTrailingBlanks)
{
    for (const int number : {524, 550, 551, 554, 555}) {
        const std::string_view text = EnglishText(number);
        ASSERT_GT(text.size(), 5u) << number;
        EXPECT_EQ(text.substr(text.size() - 5), "     ") << number;
        EXPECT_NE(text[text.size() - 6], ' ') << number;
    }
}

} // namespace
} // namespace harvelop::test
