#include "check_bench.h"
#include "settings/language_check.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace harvelop::test
{

namespace
{

const int FirstUntold = static_cast<int>(MostFindings) + 1;

std::string times(size_t count, const std::string& text)
{
    std::string all;
    for (size_t i = 0; i < count; ++i)
        all += text;
    return all;
}

} // namespace

TEST(CtlCheckRubbish, EachFileIsToldOfOnlySoFar)
{
    for (const char* file : {"options.ini", "found.ini", "emaillist4.ini", "install.ini"}) {
        CheckedCtl t;
        std::string& text = t.File(file);
        text = std::string(file) == "found.ini" ? text : std::string();
        const auto sound =
            static_cast<int>(std::count(text.begin(), text.end(), '\n')) + (std::string(file) == "install.ini" ? 1 : 0);
        text += times(size_t(20) * MostFindings, "rubbish\r\n");
        const std::string said = t.Check();
        EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), FirstUntold) << file;
        EXPECT_TRUE(said.ends_with(AtLine(file, FirstUntold + sound, StoppedHere))) << file << said;
    }
}

TEST(CtlCheckRubbish, OddBytesAreToldOfOnlySoFar)
{
    CheckedCtl t;
    t.File("install.ini") = "Harvel was installed.\r\n" + times(MostFindings, "\x1b\xff\r\n");
    const std::string said = t.Check();
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), FirstUntold);
    EXPECT_TRUE(said.ends_with(StoppedHere + std::string("\n"))) << said;
}

TEST(CtlCheckRubbish, AsManyFindingsAsAreToldAreAll)
{
    CheckedCtl t;
    t.File("install.ini") = "Harvel was installed.\r\n" + times(MostFindings, "more\r\n");
    EXPECT_TRUE(t.Check().ends_with(AtLine("install.ini", FirstUntold, "only the first line counts")));
}

TEST(CtlCheckRubbish, TheFieldsOfAnEndlessLoggerAreOnlyCounted)
{
    CheckedCtl t;
    t.Put("found.ini", "3tallyCoreSettings=", "3tallyCoreSettings=" + RecordText(NetworkLogger()) + times(100000, ","));
    EXPECT_EQ(t.Check(), AtLine("found.ini", 3, "holds 100093 fields; a logger has 93, each with a comma behind it"));
}

} // namespace harvelop::test
