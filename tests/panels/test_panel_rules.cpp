#include "panels/panel_rules.h"

#include <gtest/gtest.h>
#include <string>

namespace harvelop
{

namespace
{

constexpr int Short = 5;
constexpr int Long = 12;

} // namespace

TEST(PanelRules, HtmlHoldsUlastAndCsvOn)
{
    PanelValues values;
    values.html[1] = true;
    ApplyHtmlRule(values, Short);
    EXPECT_TRUE(values.ulast[1]);
    EXPECT_TRUE(values.csv[1]);
    EXPECT_FALSE(values.ulast[0]);
    EXPECT_FALSE(AccessOf(values, 1).ulast);
    EXPECT_FALSE(AccessOf(values, 1).csv);
    EXPECT_TRUE(AccessOf(values, 1).records);
    EXPECT_TRUE(AccessOf(values, 0).ulast);
    EXPECT_TRUE(AccessOf(values, 0).csv);
    EXPECT_FALSE(AccessOf(values, 0).records);
}

TEST(PanelRules, UncheckingHtmlFreesItsBoxesAndLeavesThemChecked)
{
    PanelValues values;
    values.html[2] = true;
    ApplyHtmlRule(values, Short);
    values.html[2] = false;
    ApplyHtmlRule(values, Short);
    EXPECT_TRUE(values.ulast[2]);
    EXPECT_TRUE(values.csv[2]);
    EXPECT_TRUE(AccessOf(values, 2).ulast);
    EXPECT_TRUE(AccessOf(values, 2).csv);
}

TEST(PanelRules, TheDatabaseHoldsCsvOnWhateverHtmlDoes)
{
    PanelValues values;
    values.html[0] = true;
    ApplyHtmlRule(values, Short);
    values.mdb = true;
    ApplyMdbRule(values, Short);
    EXPECT_TRUE(values.csv[3]);
    EXPECT_FALSE(AccessOf(values, 3).csv);

    values.html[0] = false;
    ApplyHtmlRule(values, Short);
    EXPECT_TRUE(values.csv[0]);
    EXPECT_FALSE(AccessOf(values, 0).csv);
}

TEST(PanelRules, WithoutTheDatabaseCsvGoesInAllRowsWithoutHtml)
{
    PanelValues values;
    values.mdb = true;
    ApplyMdbRule(values, Short);
    values.html[0] = true;
    ApplyHtmlRule(values, Short);
    values.mdb = false;
    ApplyMdbRule(values, Short);
    EXPECT_TRUE(values.csv[0]);
    EXPECT_FALSE(values.csv[1]);
    EXPECT_TRUE(AccessOf(values, 1).csv);
}

TEST(PanelRules, AColumnIsSetWhileFewerThanHalfOfItIsChecked)
{
    for (const auto& [rows, threshold] : {std::pair{Short, 3}, std::pair{Long, 6}}) {
        PanelValues values;
        for (int i = 0; i < threshold - 1; ++i)
            values.on[static_cast<size_t>(i)] = true;
        EXPECT_TRUE(ToggleColumn(values, rows, GridColumn::On));
        for (int i = 0; i < rows; ++i)
            EXPECT_TRUE(values.on[static_cast<size_t>(i)]) << i;

        values = {};
        for (int i = 0; i < threshold; ++i)
            values.on[static_cast<size_t>(i)] = true;
        EXPECT_TRUE(ToggleColumn(values, rows, GridColumn::On));
        for (int i = 0; i < rows; ++i)
            EXPECT_FALSE(values.on[static_cast<size_t>(i)]) << i;
    }
}

TEST(PanelRules, TogglingUlastLeavesRowsAloneThatHtmlHoldsOn)
{
    PanelValues values;
    for (size_t i = 0; i < 3; ++i)
        values.html[i] = true;
    ApplyHtmlRule(values, Short);
    ToggleColumn(values, Short, GridColumn::Ulast);
    EXPECT_TRUE(values.ulast[0]);
    EXPECT_FALSE(values.ulast[4]);
}

TEST(PanelRules, TogglingHtmlOnHoldsUlastAndCsvOn)
{
    PanelValues values;
    ToggleColumn(values, Long, GridColumn::HTML);
    for (size_t i = 0; i < Long; ++i)
        EXPECT_TRUE(values.html[i] && values.ulast[i] && values.csv[i]) << i;
    ToggleColumn(values, Long, GridColumn::HTML);
    EXPECT_FALSE(values.html[0]);
    EXPECT_TRUE(values.csv[0]);
}

TEST(PanelRules, OnlyTheLongGridsCsvIsClosedWhileTheDatabaseIsOn)
{
    PanelValues values;
    values.mdb = true;
    ApplyMdbRule(values, Long);
    EXPECT_FALSE(ToggleColumn(values, Long, GridColumn::CSV));
    EXPECT_TRUE(values.csv[0]);
    EXPECT_TRUE(ToggleColumn(values, Short, GridColumn::CSV));
    EXPECT_FALSE(values.csv[0]);
}

TEST(PanelRules, EachModelHasItsPictureAndAllElseThatOfTheUnknownModel)
{
    const std::pair<int, const char*> pictures[] = {
        {1, "kr20"},  {9, "kr21"},     {11, "kr23"},    {2, "kr200"},    {3, "kr205"}, {4, "kr215"},
        {5, "kr300"}, {6, "kr305"},    {7, "kr315"},    {12, "kr40"},    {13, "kr41"}, {14, "kr45"},
        {8, "kr400"}, {10, "unknown"}, {-1, "unknown"}, {15, "unknown"},
    };
    for (const auto& [item, name] : pictures)
        EXPECT_EQ(PictureFile(item), ":/panels/pictures/" + std::string(name) + ".svg") << item;
}

} // namespace harvelop
