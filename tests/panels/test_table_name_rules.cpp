#include "panels/table_name_rules.h"

#include <gtest/gtest.h>

namespace harvelop::test
{

namespace
{

using Captions = std::vector<std::string>;

ScheduleTexts names(const std::vector<std::pair<size_t, std::string>>& entries)
{
    ScheduleTexts texts;
    for (const auto& [entry, name] : entries)
        texts.at(entry) = name;
    return texts;
}

} // namespace

TEST(TableNameRules, TheOlderFamilysFifthRowIsScheduleX)
{
    for (const char* model : {"KR20 Series 1", "KR315 Series 3", "kr40", "Unknown", ""})
        EXPECT_EQ(ScheduleCaptions(model),
                  (Captions{"Schedule A", "Schedule B", "Schedule C", "Schedule D", "Schedule X"}))
            << model;
}

TEST(TableNameRules, TheKR4FamilyHasARowForEachSchedule)
{
    for (const char* model : {"KR40", "KR45", "KR400"})
        EXPECT_EQ(ScheduleCaptions(model),
                  (Captions{"Schedule A", "Schedule B", "Schedule C", "Schedule D", "Schedule E", "Schedule F",
                            "Schedule G", "Schedule H", "Schedule I", "Schedule J", "Schedule K", "Schedule X"}))
            << model;
}

TEST(TableNameRules, WhatWasNeverAssignedShowsAsEmpty)
{
    EXPECT_EQ(ShownEntry("0"), "");
    EXPECT_EQ(ShownEntry(""), "");
    EXPECT_EQ(ShownEntry("00"), "00");
    EXPECT_EQ(ShownEntry("Tank"), "Tank");
}

TEST(TableNameRules, LettersOfBothCasesDigitsAndTheUnderscoreAreAllowed)
{
    EXPECT_EQ(TableNameChars.size(), 26U + 26U + 10U + 1U);
    for (const char c : {'A', 'Z', 'a', 'z', '0', '9', '_'})
        EXPECT_NE(TableNameChars.find(c), std::string_view::npos) << c;
    for (const char c : {' ', ',', '.', '-', '|', '\r', '\n', '\0'})
        EXPECT_EQ(TableNameChars.find(c), std::string_view::npos) << c;
}

TEST(TableNameRules, BlankNamesAreNoDuplicates)
{
    EXPECT_EQ(FirstDuplicate({}), std::nullopt);
    EXPECT_EQ(FirstDuplicate(UnassignedSchedules()), std::nullopt);
    EXPECT_EQ(FirstDuplicate(names({{0, "0"}, {7, "0"}, {3, "Tank"}})), std::nullopt);
}

TEST(TableNameRules, NamesAreComparedExactly)
{
    EXPECT_EQ(FirstDuplicate(names({{0, "Tank"}, {1, "TANK"}, {2, "Tank_"}, {3, "00"}})), std::nullopt);
    EXPECT_EQ(FirstDuplicate(names({{1, "Tank"}, {2, "Mill"}, {3, "Tank"}, {4, "Mill"}})), 1U);
    EXPECT_EQ(FirstDuplicate(names({{0, "00"}, {1, "00"}})), 0U);
}

TEST(TableNameRules, AllTwelveEntriesCount)
{
    for (size_t entry = 1; entry < MaxSchedules; ++entry)
        EXPECT_EQ(FirstDuplicate(names({{0, "Tank"}, {entry, "Tank"}})), 0U) << entry;
    EXPECT_EQ(FirstDuplicate(names({{10, "Tank"}, {11, "Tank"}})), 10U);
}

} // namespace harvelop::test
