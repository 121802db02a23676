#include "servers/base64.h"

#include <gtest/gtest.h>

namespace harvelop
{

TEST(Base64, ThreeCharactersGiveFourAndNoPaddingComes)
{
    EXPECT_EQ(EncodeBase64(""), "");
    EXPECT_EQ(EncodeBase64("Man"), "TWFu");
    EXPECT_EQ(EncodeBase64("Ma"), "TWE");
    EXPECT_EQ(EncodeBase64("M"), "TQ");
}

TEST(Base64, WorksOnBytes)
{
    EXPECT_EQ(EncodeBase64(std::string_view("\0\0\0", 3)), "AAAA");
    EXPECT_EQ(EncodeBase64("\xff\xfe\xfd"), "//79");
    EXPECT_EQ(EncodeBase64("\xc3\xa9"), "w6k");
    EXPECT_EQ(CharCodeToBits(0), "00000000");
    EXPECT_EQ(CharCodeToBits(5), "00000101");
    EXPECT_EQ(BitsToNumber("101000"), 40);
    EXPECT_EQ(Base64Char(63), '/');
}

TEST(Base64, FiftyCharactersComeOutAtMost)
{
    EXPECT_EQ(EncodeBase64(std::string(36, 'a')).size(), 48u);
    EXPECT_EQ(EncodeBase64(std::string(37, 'a')).size(), 50u);
    EXPECT_EQ(EncodeBase64(std::string(38, 'a')), "YWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYW");
    EXPECT_EQ(EncodeBase64(std::string(38, 'a') + "z"), EncodeBase64(std::string(38, 'a')));
    EXPECT_EQ(EncodeBase64(std::string(1000, 'a')), EncodeBase64(std::string(38, 'a')));
}

} // namespace harvelop
