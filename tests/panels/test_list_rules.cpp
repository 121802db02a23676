#include "core/text_lines.h"
#include "panels/list_rules.h"

#include <gtest/gtest.h>

namespace harvelop::test
{
namespace
{

std::string lines(int count)
{
    std::string text;
    for (int i = 1; i <= count; ++i)
        text += "a" + std::to_string(i) + "\r\n";
    return text;
}

bool isEmptyFrom(const AddressList& addresses, size_t position)
{
    for (size_t i = position; i < addresses.size(); ++i)
        if (!addresses.at(i).empty())
            return false;
    return true;
}

TEST(AddressCharacters, AreLettersDigitsPointAtAndUnderline)
{
    EXPECT_EQ(AddressChars.size(), 67u);
    EXPECT_EQ(KeepAllowed("Ann.B_2@Example.com", AddressChars), "Ann.B_2@Example.com");
    EXPECT_EQ(KeepAllowed("a\r\nb\r\n", AddressChars), "a\r\nb\r\n");
    EXPECT_EQ(KeepAllowed("<Ann-Marie+x>, \"b\";\t:c\xC3\xA9", AddressChars), "AnnMariexbc");
    EXPECT_EQ(KeepAllowed(std::string("a\0b", 3), AddressChars), "ab");
}

TEST(AddressesOfAText, AreItsLines)
{
    const AddressList addresses = AddressesIn("a@b\r\nc@d\r\n");
    EXPECT_EQ(addresses[0], "a@b");
    EXPECT_EQ(addresses[1], "c@d");
    EXPECT_TRUE(isEmptyFrom(addresses, 2));
    EXPECT_TRUE(isEmptyFrom(AddressesIn(""), 0));
}

TEST(AddressesOfAText, LastLineMayLackItsEnd)
{
    EXPECT_EQ(AddressesIn("a@b\r\nc@d")[1], "c@d");
}

TEST(AddressesOfAText, EmptyLineTakesAPosition)
{
    const AddressList addresses = AddressesIn("\r\na\r\n\r\nb");
    EXPECT_EQ(addresses[0], "");
    EXPECT_EQ(addresses[1], "a");
    EXPECT_EQ(addresses[2], "");
    EXPECT_EQ(addresses[3], "b");
    EXPECT_EQ(AddressText(addresses), "a\r\nb\r\n");
}

TEST(AddressesOfAText, CarriageReturnAloneMovesOnAndSkipsNothingElse)
{
    const AddressList addresses = AddressesIn("a\rb\r");
    EXPECT_EQ(addresses[0], "a");
    EXPECT_EQ(addresses[1], "b");
}

TEST(AddressesOfAText, LineFeedAloneMovesNotOn)
{
    EXPECT_EQ(AddressesIn("a\nb")[0], "a\nb");
}

TEST(AddressesOfAText, TwentiethIsDropped)
{
    EXPECT_EQ(AddressesIn(lines(19))[18], "a19");
    const AddressList addresses = AddressesIn(lines(20));
    EXPECT_EQ(addresses[18], "a19");
    EXPECT_EQ(addresses[19], "");
}

TEST(AddressesOfAText, ComeFromItsFirstFiveThousandCharacters)
{
    const std::string longest(4990, 'x');
    EXPECT_EQ(AddressesIn(longest + "\r\nabcdefgh")[1], "abcdefgh"); // 5000 in all
    EXPECT_EQ(AddressesIn(longest + "\r\nabcdefghi")[1], "abcdefgh");
    EXPECT_EQ(AddressesIn(std::string(1 << 20, 'x'))[0].size(), 5000u);
    EXPECT_TRUE(isEmptyFrom(AddressesIn(std::string(4999, 'x') + "\r\nlost"), 1));
}

TEST(TextOfAddresses, LeavesOutEmptyOnesAndTheLastPosition)
{
    AddressList addresses;
    addresses.fill("a");
    addresses[3] = "";
    addresses[19] = "twentieth";
    std::string expected;
    for (int i = 0; i < 18; ++i)
        expected += "a\r\n";
    EXPECT_EQ(AddressText(addresses), expected);
    EXPECT_EQ(AddressText({}), "");
}

TEST(CaptionsOfSchedules, FollowTheFamily)
{
    const std::vector<std::string> older = {"All Schedules", "Schedule A", "Schedule B",
                                            "Schedule C",    "Schedule D", "Schedule X"};
    EXPECT_EQ(ListCaptions("KR23 Series 3"), older);
    const auto captions = ListCaptions("KR400");
    ASSERT_EQ(captions.size(), 13u);
    EXPECT_EQ(captions.front(), "All Schedules");
    EXPECT_EQ(captions[11], "Schedule K");
    EXPECT_EQ(captions.back(), "Schedule X");
}

TEST(CaptionsOfSchedules, StandAtTheIndexOfTheirKey)
{
    for (const char* model : {"KR40", "KR200"}) {
        const auto captions = ListCaptions(model);
        const std::string keys = ScheduleKeysOf(model);
        ASSERT_EQ(captions.size(), keys.size());
        for (size_t i = 1; i < keys.size(); ++i)
            EXPECT_EQ(captions[i].back(), keys[i]);
    }
}

} // namespace
} // namespace harvelop::test
