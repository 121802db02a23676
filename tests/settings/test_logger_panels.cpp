#include "settings/logger_panels.h"

#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace harvelop::test
{
namespace
{

struct PanelStub : LoggerPanel {
    void Load() override {}
    PanelValues Values() const override { return {}; }
    void SetUp(const PanelSetUp&) override {}
    void SetCaption(const std::string&) override {}
    void Place(int) override {}
    void SetVisible(bool on) override { visible = on; }
    bool IsVisible() const override { return visible; }
    void DescribeModel(const std::string&) override {}
    void SetControlEnabled(std::string_view, bool) override {}
    void SetPanelEnabled(bool) override {}
    void SetDelivery(std::optional<bool>, std::optional<bool>) override {}
    void Unload() override
    {
        ++unloads;
        if (whileClosing)
            whileClosing();
    }
    void Replaced() override { ++replacements; }

    bool visible = false;
    int unloads = 0;
    int replacements = 0;
    std::function<void()> whileClosing;
};

struct LoggerPanelsTest : testing::Test {
    LoggerPanelsTest()
    {
        panels.Make = [this](int) {
            made.push_back(std::make_unique<PanelStub>());
            return made.back().get();
        };
    }

    std::vector<std::unique_ptr<PanelStub>> made;
    LoggerPanels panels;
};

TEST_F(LoggerPanelsTest, PanelIsHeldByItsNumber)
{
    LoggerPanel* panel = panels.Create(50);
    EXPECT_EQ(panel, made[0].get());
    EXPECT_EQ(panels.At(50), panel);
    EXPECT_EQ(panels.At(1), nullptr);
}

TEST_F(LoggerPanelsTest, NumbersOutsideTheTableHaveNoPanel)
{
    for (const int number : {0, -3, 51}) {
        EXPECT_EQ(panels.Create(number), nullptr);
        EXPECT_EQ(panels.At(number), nullptr);
        panels.Unload(number);
    }
    EXPECT_TRUE(made.empty());
}

TEST_F(LoggerPanelsTest, NothingIsMadeWithoutAMaker)
{
    panels.Make = nullptr;
    EXPECT_EQ(panels.Create(1), nullptr);
}

TEST_F(LoggerPanelsTest, FailingMakerLeavesTheFormerPanel)
{
    LoggerPanel* former = panels.Create(1);
    panels.Make = [](int) { return nullptr; };
    EXPECT_EQ(panels.Create(1), nullptr);
    EXPECT_EQ(panels.At(1), former);
    EXPECT_EQ(made[0]->replacements, 0);
}

TEST_F(LoggerPanelsTest, SecondPanelOfALoggerTakesThePlaceOfTheFirst)
{
    panels.Create(4);
    LoggerPanel* second = panels.Create(4);
    EXPECT_EQ(panels.At(4), second);
    EXPECT_EQ(made[0]->replacements, 1);
    EXPECT_EQ(made[0]->unloads, 0);
    EXPECT_EQ(made[1]->replacements, 0);
}

TEST_F(LoggerPanelsTest, PanelStillCountsWhileItCloses)
{
    panels.Create(2)->SetVisible(true);
    int counted = -1;
    made[0]->whileClosing = [&] { counted = panels.CountVisiblePanels(); };
    panels.Unload(2);
    EXPECT_EQ(counted, 1);
    EXPECT_EQ(panels.At(2), nullptr);
    panels.Unload(2);
    EXPECT_EQ(made[0]->unloads, 1);
}

TEST_F(LoggerPanelsTest, PanelThatForgetsItselfWhileItClosesMayBeGone)
{
    panels.Create(2);
    made[0]->whileClosing = [&] { panels.Forget(made[0].get()); };
    panels.Unload(2);
    EXPECT_EQ(panels.At(2), nullptr);
}

TEST_F(LoggerPanelsTest, PanelMadeWhileTheFormerClosesStays)
{
    panels.Create(2);
    made[0]->whileClosing = [&] { panels.Create(2); };
    panels.Unload(2);
    EXPECT_EQ(panels.At(2), made[1].get());
}

TEST_F(LoggerPanelsTest, ForgettingAReplacedPanelLeavesItsSuccessor)
{
    panels.Create(2);
    panels.Create(2);
    panels.Forget(made[0].get());
    EXPECT_EQ(panels.At(2), made[1].get());
}

TEST_F(LoggerPanelsTest, OnlyVisiblePanelsAreCounted)
{
    EXPECT_EQ(panels.CountVisiblePanels(), 0);
    panels.Create(1)->SetVisible(true);
    panels.Create(2);
    panels.Create(50)->SetVisible(true);
    EXPECT_EQ(panels.CountVisiblePanels(), 2);
}

} // namespace
} // namespace harvelop::test
