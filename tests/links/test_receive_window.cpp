#include "links/receive_window.h"

#include <gtest/gtest.h>

namespace harvelop::test
{
namespace
{

TEST(ReceiveWindow, Grows)
{
    ReceiveWindow window;
    window.Append("ab");
    window.Append("");
    window.Append("c");
    EXPECT_EQ(window.Text(), "abc");
    EXPECT_EQ(window.Generation(), ReceiveWindow().Generation());
}

TEST(ReceiveWindow, HoldsJustUnderItsLimit)
{
    ReceiveWindow window;
    window.Append(std::string(65499, 'x'));
    window.Append("y");
    EXPECT_EQ(window.Text().size(), 65500u);
    EXPECT_FALSE(window.WindowOverflowed);
    EXPECT_EQ(window.WindowClearCount, 0);
}

TEST(ReceiveWindow, BecomesEmptyAtItsLimit)
{
    ReceiveWindow window;
    window.Append(std::string(65500, 'x'));
    const auto generation = window.Generation();
    window.Append("y");
    EXPECT_EQ(window.Text(), "");
    EXPECT_TRUE(window.WindowOverflowed);
    EXPECT_EQ(window.WindowClearCount, 1);
    EXPECT_NE(window.Generation(), generation);
    window.Append("next");
    EXPECT_EQ(window.Text(), "next");
}

TEST(ReceiveWindow, AnOversizedChunkLeavesItEmpty)
{
    ReceiveWindow window;
    window.Append("before");
    window.Append(std::string(1000000, 'x'));
    EXPECT_EQ(window.Text(), "");
    window.Append(std::string(65501, 'x'));
    EXPECT_EQ(window.Text(), "");
    EXPECT_EQ(window.WindowClearCount, 2);
}

TEST(ReceiveWindow, CanBeClearedAndSet)
{
    ReceiveWindow window;
    window.Append("abc");
    auto generation = window.Generation();
    window.Clear();
    EXPECT_EQ(window.Text(), "");
    EXPECT_NE(window.Generation(), generation);
    generation = window.Generation();
    window.Set("new");
    EXPECT_EQ(window.Text(), "new");
    EXPECT_NE(window.Generation(), generation);
    EXPECT_FALSE(window.WindowOverflowed);
}

TEST(ReceiveWindow, ATextPutThereOverflowsToo)
{
    ReceiveWindow window;
    window.Set(std::string(65501, 'x'));
    EXPECT_EQ(window.Text(), "");
    EXPECT_TRUE(window.WindowOverflowed);
    EXPECT_EQ(window.WindowClearCount, 1);
}

} // namespace
} // namespace harvelop::test
