#include "platform/qt/line_settings.h"

#include <gtest/gtest.h>

namespace harvelop
{

TEST(LineSettings, AreReadFromTheirText)
{
    const auto line = ReadLineSettings("56000,e,7,2");
    ASSERT_TRUE(line);
    EXPECT_EQ(line->baud, 56000);
    EXPECT_EQ(line->parity, 'E');
    EXPECT_EQ(line->dataBits, 7);
    EXPECT_EQ(line->stopBits, StopBits::Two);
    EXPECT_EQ(ReadLineSettings("300,N,8,1.5")->stopBits, StopBits::OneAndHalf);
    EXPECT_EQ(ReadLineSettings("300,N,8,1")->stopBits, StopBits::One);
    EXPECT_EQ(ReadLineSettings("50,N,8,1")->baud, 50);
    for (const char parity : {'N', 'E', 'O', 'M', 'S'})
        EXPECT_EQ(ReadLineSettings(std::string("9600,") + parity + ",8,1")->parity, parity);
}

TEST(LineSettings, AnyOtherTextIsRefused)
{
    for (const char* text :
         {"",           ",,,",         "9600",        "9600,N,8",    "9600,N,8,",   "9600,N,8,1,",       "9600,N,8,3",
          "9600,X,8,1", "9600,NN,8,1", "9600,,8,1",   "9600,N,4,1",  "9600,N,9,1",  "0,N,8,1",           "8,N,8,1",
          "49,N,8,1",   "-9600,N,8,1", " 9600,N,8,1", "9600 ,N,8,1", "9600x,N,8,1", "99999999999,N,8,1", "9600,N,8x,1"})
        EXPECT_FALSE(ReadLineSettings(text)) << text;
}

} // namespace harvelop
