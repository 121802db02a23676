#include "core/windows_version.h"

#include <gtest/gtest.h>

namespace harvelop
{

TEST(WindowsVersion, EveryRowHasItsName)
{
    struct Row {
        int major, minor, platform;
        const char* name;
    };
    const Row rows[] = {{3, 51, 2, "Windows NT 3.51"},
                        {4, 0, 1, "Windows95 "},
                        {4, 10, 1, "Windows98 "},
                        {4, 90, 1, "Windows ME "},
                        {4, 7, 1, "Unknown Windows 9x system "},
                        {4, 0, 2, "Windows NT 4"},
                        {4, 1, 2, "Unknown NT 4-based version"},
                        {5, 0, 2, "Windows 2000"},
                        {5, 1, 2, "Windows XP"},
                        {5, 2, 2, "Unknown Windows NT 5 system"},
                        {6, 1, 2, "Unknown Windows system"}};
    for (const Row& row : rows) {
        const auto text = DescribeWindows(WindowsVersion{row.major, row.minor, 2600, row.platform, ""});
        EXPECT_EQ(text.substr(0, text.find('\r')), row.name);
        EXPECT_NE(text.find("Windows Version Number = " + std::to_string(row.major) + "." + std::to_string(row.minor) +
                            ".2600"),
                  std::string::npos);
    }
}

TEST(WindowsVersion, PanelsAreTallerOnXpOnly)
{
    EXPECT_TRUE(TallerPanel(DescribeWindows(WindowsVersion{5, 1, 2600, 2, ""})));
    EXPECT_FALSE(TallerPanel(DescribeWindows(WindowsVersion{5, 0, 2195, 2, ""})));
    EXPECT_FALSE(TallerPanel(DescribeWindows(std::nullopt)));
}

TEST(WindowsVersion, TheServicePackIsCutAtItsFirstNul)
{
    const auto text = DescribeWindows(WindowsVersion{5, 1, 2600, 2, std::string(" SP2\0rest", 9)});
    EXPECT_EQ(text.substr(0, text.find('\r')), "Windows XP SP2");
}

TEST(WindowsVersion, AFailingCallIsTold)
{
    EXPECT_EQ(DescribeWindows(std::nullopt).find("Unable to get version information. GetVersionEx returned "), 0u);
    EXPECT_FALSE(GetVersion());
    EXPECT_EQ(GetWindowsDir(), "");
}

TEST(WindowsVersion, TrimAtNullLooksAtTheFirst255Characters)
{
    EXPECT_EQ(TrimAtNull("abc"), "abc");
    EXPECT_EQ(TrimAtNull(std::string_view("ab\0c", 4)), "ab");
    std::string far(300, 'x');
    far[255] = '\0';
    EXPECT_EQ(TrimAtNull(far), far);
    far[254] = '\0';
    EXPECT_EQ(TrimAtNull(far).size(), 254u);
}

} // namespace harvelop
