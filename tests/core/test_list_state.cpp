#include "core/list_state.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace harvelop::test
{
namespace
{

using testing::ElementsAre;

ListState threeLines()
{
    ListState list;
    for (const char* line : {"one", "two", "three"})
        list.Add(line);
    return list;
}

TEST(ListState, StartsEmptyWithNothingChosen)
{
    const ListState list;
    EXPECT_EQ(list.Count(), 0);
    EXPECT_EQ(list.Selected(), -1);
    EXPECT_EQ(list.Text(), "");
}

TEST(ListState, InsertPutsLinesWhereTold)
{
    ListState list = threeLines();
    list.Insert(0, "zero");
    list.Insert(4, "four");
    EXPECT_THAT(list.Lines(), ElementsAre("zero", "one", "two", "three", "four"));
}

TEST(ListState, InsertOutsideTheLinesChangesNothing)
{
    ListState list = threeLines();
    list.Insert(-1, "x");
    list.Insert(4, "x");
    EXPECT_EQ(list.Count(), 3);
}

TEST(ListState, TheChosenLineStaysChosenAsOthersComeAndGo)
{
    ListState list = threeLines();
    list.Select(1);
    list.Insert(0, "zero");
    EXPECT_EQ(list.Selected(), 2);
    list.Insert(2, "before");
    EXPECT_EQ(list.Selected(), 3);
    list.Add("last");
    list.RemoveAt(0);
    EXPECT_EQ(list.Selected(), 2);
    list.RemoveAt(3);
    EXPECT_EQ(list.Selected(), 2);
    EXPECT_EQ(list.Text(), "two");
    EXPECT_EQ(list.Lines()[2], "two");
}

TEST(ListState, RemovingTheChosenLineLeavesNothingChosen)
{
    ListState list = threeLines();
    list.Select(1);
    list.RemoveAt(1);
    EXPECT_EQ(list.Selected(), -1);
    EXPECT_EQ(list.Text(), "");
    EXPECT_THAT(list.Lines(), ElementsAre("one", "three"));
}

TEST(ListState, RemovingOutsideTheLinesChangesNothing)
{
    ListState list = threeLines();
    list.RemoveAt(-1);
    list.RemoveAt(3);
    EXPECT_EQ(list.Count(), 3);
}

TEST(ListState, SelectingOutsideTheLinesChangesNothing)
{
    ListState list = threeLines();
    list.Select(2);
    list.Select(3);
    list.Select(-2);
    EXPECT_EQ(list.Selected(), 2);
    EXPECT_EQ(list.Text(), "three");
}

TEST(ListState, SelectingMinusOneChoosesNothing)
{
    ListState list = threeLines();
    list.Select(2);
    list.Select(-1);
    EXPECT_EQ(list.Selected(), -1);
    EXPECT_EQ(list.Text(), "");
}

TEST(ListState, ATextSelectsItsLineOrStandsAlone)
{
    ListState list = threeLines();
    list.SetText("two");
    EXPECT_EQ(list.Selected(), 1);
    list.SetText("seven");
    EXPECT_EQ(list.Selected(), -1);
    EXPECT_EQ(list.Text(), "seven");
}

TEST(ListState, ClearingForgetsLinesAndChoice)
{
    ListState list = threeLines();
    list.Select(0);
    list.Clear();
    EXPECT_EQ(list.Count(), 0);
    EXPECT_EQ(list.Selected(), -1);
    EXPECT_EQ(list.Text(), "");
}

TEST(ListState, TellsOfEachChangeAndOfNothingElse)
{
    ListState list = threeLines();
    int changes = 0;
    list.Changed = [&] { ++changes; };
    list.Add("four");
    list.Select(0);
    list.SetText("two");
    list.RemoveAt(0);
    list.Clear();
    EXPECT_EQ(changes, 5);
    list.Insert(9, "x");
    list.RemoveAt(9);
    list.Select(9);
    EXPECT_EQ(changes, 5);
}

} // namespace
} // namespace harvelop::test
