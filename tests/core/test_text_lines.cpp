#include "core/text_lines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

namespace harvelop::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> lines(std::string_view text)
{
    std::vector<std::string> all;
    LineReader reader(text);
    for (std::string_view line; reader.Next(line);)
        all.emplace_back(line);
    return all;
}

TEST(LineReader, TakesAnyLineEnd)
{
    EXPECT_THAT(lines("a\r\nb\nc\rd"), ElementsAre("a", "b", "c", "d"));
}

TEST(LineReader, KeepsEmptyLinesButNoEmptyRest)
{
    EXPECT_THAT(lines("\r\n\r\na\r\n"), ElementsAre("", "", "a"));
    EXPECT_THAT(lines("\n\ra"), ElementsAre("", "", "a"));
    EXPECT_THAT(lines(""), IsEmpty());
}

TEST(LineReader, PassesOtherBytesThrough)
{
    EXPECT_THAT(lines(std::string_view("a\0b\xff\n", 5)), ElementsAre(std::string("a\0b\xff", 4)));
}

TEST(FindIgnoringCase, FindsTheFirstOccurrence)
{
    EXPECT_EQ(FindIgnoringCase("options.INI", ".ini"), 7u);
    EXPECT_EQ(FindIgnoringCase("aXax", "AX"), 0u);
    EXPECT_EQ(FindIgnoringCase("abc", "d"), std::string_view::npos);
    EXPECT_EQ(FindIgnoringCase("abc", "abcd"), std::string_view::npos);
    EXPECT_EQ(FindIgnoringCase("", "a"), std::string_view::npos);
    EXPECT_EQ(FindIgnoringCase("abc", ""), 0u);
    EXPECT_TRUE(HoldsIgnoringCase("The KR40", "kr4"));
}

TEST(Holds, RegardsCase)
{
    EXPECT_TRUE(Holds("KR400", "KR4"));
    EXPECT_FALSE(Holds("kr400", "KR4"));
}

TEST(OneLine, HasABlankForEachCharacterOfALineEnd)
{
    EXPECT_EQ(OneLine("a\r\nb\nc\rd\te"), "a  b c d\te");
    EXPECT_EQ(OneLine(""), "");
}

TEST(KeepAllowed, DropsEverythingElseAndKeepsTheOrder)
{
    EXPECT_EQ(KeepAllowed("a1-b2", "0123456789"), "12");
    EXPECT_EQ(KeepAllowed("abc", ""), "");
    EXPECT_EQ(KeepAllowed("", "abc"), "");
}

} // namespace
} // namespace harvelop::test
