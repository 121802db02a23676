#include "settings/logger_controls.h"
#include "settings/sample_loggers.h"
#include "support/virtual_pump.h"

#include <gtest/gtest.h>
#include <set>

namespace harvelop::test
{
namespace
{

struct LockPanel : LoggerPanel {
    void Load() override {}
    PanelValues Values() const override { return {}; }
    void SetUp(const PanelSetUp&) override {}
    void SetCaption(const std::string&) override {}
    void Place(int) override {}
    void SetVisible(bool) override {}
    bool IsVisible() const override { return true; }
    void DescribeModel(const std::string&) override {}
    void SetControlEnabled(std::string_view control, bool on) override
    {
        if (on)
            disabled.erase(std::string(control));
        else
            disabled.insert(std::string(control));
    }
    void SetPanelEnabled(bool on) override { enabled = on; }
    void SetDelivery(std::optional<bool>, std::optional<bool>) override {}
    void Unload() override {}
    void Replaced() override {}

    std::set<std::string> disabled;
    bool enabled = true;
};

struct HiddenMessages : MessageForm {
    void SetVisible(bool on) override { visible = on; }
    void SetCaption(const std::string&) override {}
    void SetBar(int, int) override {}
    bool visible = true;
};

struct LockTest : testing::Test {
    LockTest()
    {
        panels.Make = [this](int number) { return &made.at(static_cast<size_t>(number - 1)); };
        for (int number = 1; number <= 2; ++number)
            panels.Create(number);
        state.CurrentLogger = 1;
        progress.Loaded(&messages);
    }

    LockPanel& First() { return made[0]; }
    LockPanel& Second() { return made[1]; }

    std::array<LockPanel, 2> made;
    ProgramState state;
    LoggerTables tables;
    LoggerPanels panels;
    Forms forms;
    ProgramEnd end;
    VirtualPump pump;
    Waiting waiting{pump, end};
    Progress progress{forms, state, waiting};
    HiddenMessages messages;
    LoggerControls controls{state, tables, panels, progress};
};

const std::set<std::string> AllButtons = {"cmdCancel",     "cmdCard", "cmdCardClear", "cmdFlash",
                                          "cmdFlashClear", "cmdOk",   "cmdProgram",   "cmdProgramClear"};

TEST_F(LockTest, WorkDisablesTheButtonsOfTheCurrentPanel)
{
    controls.DisableLoggerControls();
    EXPECT_EQ(First().disabled, AllButtons);
    EXPECT_TRUE(First().enabled);
}

TEST_F(LockTest, AllComeBackOnTheOlderFamilyAlsoTheFlashButtonsOfSeriesWithoutFlash)
{
    *tables.Record(1) = SerialLogger();
    First().disabled = {"cmdFlash", "cmdFlashClear"};
    controls.DisableLoggerControls();
    controls.EnableLoggerControls();
    EXPECT_TRUE(First().disabled.empty());
}

TEST_F(LockTest, TheCardButtonsOfTheKR4FamilyStayDisabled)
{
    *tables.Record(1) = SerialLogger();
    tables.Record(1)->LoggerModel = "KR400";
    controls.DisableLoggerControls();
    controls.EnableLoggerControls();
    EXPECT_EQ(First().disabled, (std::set<std::string>{"cmdCard", "cmdCardClear"}));
}

TEST_F(LockTest, OtherPanelsAreLockedAsAWholeMeanwhile)
{
    controls.DisableLoggerControls();
    EXPECT_FALSE(Second().enabled);
    EXPECT_TRUE(Second().disabled.empty());
    controls.EnableLoggerControls();
    EXPECT_TRUE(Second().enabled);
}

TEST_F(LockTest, EnablingHidesTheProgressWindow)
{
    controls.EnableLoggerControls();
    EXPECT_FALSE(messages.visible);
}

TEST_F(LockTest, ALoggerWithoutAPanelIsPassedOver)
{
    state.CurrentLogger = 7;
    controls.DisableLoggerControls();
    controls.EnableLoggerControls();
    state.CurrentLogger = 0;
    controls.DisableLoggerControls();
    controls.EnableLoggerControls();
    EXPECT_TRUE(First().disabled.empty());
    EXPECT_TRUE(First().enabled);
}

} // namespace
} // namespace harvelop::test
