#include "panels/run_rules.h"

#include <gtest/gtest.h>

namespace harvelop::test
{

TEST(RunRules, ACommandOfSeveralLinesIsJoinedWithoutSeparators)
{
    EXPECT_EQ(WithoutLineEnds("A\r\nB\nC\rD\n\r"), "ABCD");
    EXPECT_EQ(WithoutLineEnds("\r\n"), "");
    EXPECT_EQ(WithoutLineEnds(" a\tb "), " a\tb ");
}

TEST(RunRules, WhatARecordsFieldCantHoldIsTold)
{
    EXPECT_EQ(WhyNotStored(""), "");
    EXPECT_EQ(WhyNotStored("/home/user/my report;1|2 \"x\""), "");
    EXPECT_EQ(WhyNotStored(","), "A comma can't be stored here.");
    EXPECT_EQ(WhyNotStored("a\nb,"), "A comma can't be stored here.");
    EXPECT_EQ(WhyNotStored("a\nb"), "A line end can't be stored here.");
    EXPECT_EQ(WhyNotStored("a\r"), "A line end can't be stored here.");
}

} // namespace harvelop::test
