#include "core/text_numbers.h"

#include <gtest/gtest.h>
#include <limits>

namespace harvelop::test
{
namespace
{

TEST(ToDouble, TakesSignFractionExponentAndBlanksAround)
{
    EXPECT_EQ(ToDouble("45"), 45.0);
    EXPECT_EQ(ToDouble("  45 "), 45.0);
    EXPECT_EQ(ToDouble("+45"), 45.0);
    EXPECT_EQ(ToDouble("-4.5"), -4.5);
    EXPECT_EQ(ToDouble(".5"), 0.5);
    EXPECT_EQ(ToDouble("-.5"), -0.5);
    EXPECT_EQ(ToDouble("5."), 5.0);
    EXPECT_EQ(ToDouble("1e3"), 1000.0);
    EXPECT_EQ(ToDouble("1.5E-2"), 0.015);
    EXPECT_EQ(ToDouble("007"), 7.0);
}

TEST(ToDouble, FailsOnAnythingElse)
{
    for (const char* text : {"",  " ", "abc", "1 2", "12x", "0x10", "inf", "nan", "-inf", "+-1",   "-+1",   "--1",
                             "+", "-", ".",   "-.",  "e3",  "1e",   "1,5", "\t1", "1\n",  "1e999", "-1e999"})
        EXPECT_FALSE(ToDouble(text)) << text;
    EXPECT_FALSE(ToDouble(std::string_view("1\0", 2)));
}

TEST(ToInt16, RoundsHalvesToTheEvenNumber)
{
    EXPECT_EQ(ToInt16("2.5"), 2);
    EXPECT_EQ(ToInt16("3.5"), 4);
    EXPECT_EQ(ToInt16("-2.5"), -2);
    EXPECT_EQ(ToInt16("2.51"), 3);
}

TEST(ToInt16, HoldsItsRange)
{
    EXPECT_EQ(ToInt16("32767"), 32767);
    EXPECT_EQ(ToInt16("-32768"), -32768);
    EXPECT_EQ(ToInt16("32767.4"), 32767);
    EXPECT_FALSE(ToInt16("32768"));
    EXPECT_FALSE(ToInt16("32767.5"));
    EXPECT_FALSE(ToInt16("-32769"));
    EXPECT_FALSE(ToInt16("1e300"));
    EXPECT_FALSE(ToInt16(""));
}

TEST(ToBoolean, TakesWordsInAnyCaseAndNumbers)
{
    EXPECT_EQ(ToBoolean("True"), true);
    EXPECT_EQ(ToBoolean("tRUE"), true);
    EXPECT_EQ(ToBoolean(" false "), false);
    EXPECT_EQ(ToBoolean("0"), false);
    EXPECT_EQ(ToBoolean("0.0"), false);
    EXPECT_EQ(ToBoolean("-1"), true);
    EXPECT_EQ(ToBoolean("2"), true);
    EXPECT_FALSE(ToBoolean("yes").has_value());
    EXPECT_FALSE(ToBoolean("").has_value());
    EXPECT_FALSE(ToBoolean("Truee").has_value());
}

TEST(BooleanText, IsAWord)
{
    EXPECT_EQ(BooleanText(true), "True");
    EXPECT_EQ(BooleanText(false), "False");
}

TEST(NumberText, IsTheShortestThatReadsBack)
{
    EXPECT_EQ(NumberText(0.0), "0");
    EXPECT_EQ(NumberText(-0.0), "0");
    EXPECT_EQ(NumberText(5000.0), "5000");
    EXPECT_EQ(NumberText(-0.1), "-0.1");
    EXPECT_EQ(NumberText(0.1f), "0.1");
    EXPECT_EQ(NumberText(123456789.0), "123456789");
}

TEST(NumberText, ReadsBackAsTheSameValue)
{
    for (const double value : {1.0 / 3, 1e15, 1e-5, 12345.678, 1e300, std::numeric_limits<double>::min()})
        EXPECT_EQ(ToDouble(NumberText(value)), value);
}

} // namespace
} // namespace harvelop::test
