#include "links/get_field.h"

#include <gtest/gtest.h>

namespace harvelop::test
{
namespace
{

TEST(GetField, CountsFromOne)
{
    EXPECT_EQ(GetField("a,bc,d", 1), "a");
    EXPECT_EQ(GetField("a,bc,d", 2), "bc");
    EXPECT_EQ(GetField("a,bc,d", 3), "d");
    EXPECT_EQ(GetField("alone", 1), "alone");
}

TEST(GetField, AnEmptyMiddleFieldIsEmpty)
{
    EXPECT_EQ(GetField("a,,c", 2), "");
    EXPECT_EQ(GetField("a,,c", 3), "c");
    EXPECT_EQ(GetField(",b", 1), "");
    EXPECT_EQ(GetField(",b", 2), "b");
}

TEST(GetField, BeyondTheLastFieldThereIsNothing)
{
    EXPECT_EQ(GetField("a,b", 3), "");
    EXPECT_EQ(GetField("a,b,", 3), "");
    EXPECT_EQ(GetField("a", 2), "");
}

TEST(GetField, AnEmptyRecordHasNoFields)
{
    EXPECT_EQ(GetField("", 1), "");
}

TEST(GetField, ARecordOverTenThousandCharactersHasNoFields)
{
    std::string record = "first," + std::string(9993, 'x') + ",";
    ASSERT_EQ(record.size(), 10000u);
    EXPECT_EQ(GetField(record, 1), "first");
    EXPECT_EQ(GetField(record, 2).size(), 9993u);
    record += "y";
    EXPECT_EQ(GetField(record, 1), "");
}

TEST(GetField, NumbersRunFrom1To500)
{
    const std::string record = std::string(499, ',') + "last,beyond";
    EXPECT_EQ(GetField(record, 500), "last");
    EXPECT_EQ(GetField(record, 501), "");
    EXPECT_EQ(GetField(record, 0), "");
    EXPECT_EQ(GetField(record, -1), "");
}

TEST(GetField, EachOfTheDelimitersPartsFields)
{
    EXPECT_EQ(GetField("a;b c", 2, "; "), "b");
    EXPECT_EQ(GetField("a;b c", 3, "; "), "c");
    EXPECT_EQ(GetField("a; b", 2, "; "), "");
    EXPECT_EQ(GetField("aXbxc", 2, "x"), "c");
    EXPECT_EQ(GetField("a,b;c", 1, ";"), "a,b");
}

TEST(GetField, WithoutDelimitersACommaParts)
{
    EXPECT_EQ(GetField("a,b", 2, ""), "b");
}

TEST(GetField, BytesPassThrough)
{
    const std::string record("a\0b,\xff\r\n", 7);
    EXPECT_EQ(GetField(record, 1), std::string("a\0b", 3));
    EXPECT_EQ(GetField(record, 2), "\xff\r\n");
}

} // namespace
} // namespace harvelop::test
