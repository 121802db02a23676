#include "core/bounded_table.h"

#include <gtest/gtest.h>
#include <string>

namespace harvelop::test
{
namespace
{

TEST(BoundedTable, HasItsFirstAndItsLastEntry)
{
    BoundedTable<int, 0, 16> table;
    EXPECT_TRUE(table.Set(0, 7));
    EXPECT_TRUE(table.Set(16, 9));
    EXPECT_EQ(table.Get(0), 7);
    EXPECT_EQ(table.Get(16), 9);
    EXPECT_EQ(*table.At(16), 9);
}

TEST(BoundedTable, OutsideItsBoundsNothingIsReadOrDone)
{
    BoundedTable<int, 1, 3> table;
    table.Fill(5);
    for (const int index : {-1, 0, 4, 30000}) {
        EXPECT_FALSE(table.Set(index, 8));
        EXPECT_EQ(table.At(index), nullptr);
        EXPECT_EQ(table.Get(index), 0);
        EXPECT_EQ(table.Get(index, -3), -3);
    }
    for (const int index : {1, 2, 3})
        EXPECT_EQ(table.Get(index), 5);
}

TEST(BoundedTable, EntriesStartOutEmpty)
{
    const BoundedTable<std::string, 0, 16> texts;
    EXPECT_EQ(texts.Get(16), "");
    const BoundedTable<bool, 0, 16> flags;
    EXPECT_FALSE(flags.Get(0));
}

} // namespace
} // namespace harvelop::test
