#include "core/options_controls.h"
#include "support/fake_forms.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace harvelop::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class OptionsControlsTest : public testing::Test
{
protected:
    OptionsControlsTest() { forms.options = &panel; }

    std::vector<std::string> enabled()
    {
        panel.changes.clear();
        controls.EnableOptionsControls();
        std::vector<std::string> names;
        for (const auto& [control, on] : panel.changes) {
            EXPECT_TRUE(on) << control;
            names.push_back(control);
        }
        return names;
    }

    FakeOptions panel;
    Forms forms;
    ProgramState state;
    bool lockControls = false;
    OptionsControls controls{forms, state, lockControls};
};

TEST_F(OptionsControlsTest, DisablesInOrder)
{
    controls.DisableOptionsControls();
    EXPECT_THAT(panel.changes, ElementsAre(Pair("cmdUnload_FindTallycores", false), Pair("cmdUnload_Add", false),
                                           Pair("cmdUnload_View", false), Pair("cmdUnload_Delete", false),
                                           Pair("cmdUnload_Unload", false), Pair("cmdTerminal", false),
                                           Pair("chkUnload_FindPorts", false), Pair("cbxUnload_Ports", false),
                                           Pair("cbxUnload_TallyCores", false), Pair("cmdSMTPTestLogin", false),
                                           Pair("cmdFTPTestLogin", false), Pair("cmdApply", false),
                                           Pair("cmdCancel", false), Pair("cmdOk", false)));
}

TEST_F(OptionsControlsTest, EnablesInAnOrderOfItsOwn)
{
    EXPECT_THAT(enabled(), ElementsAre("cmdUnload_FindTallycores", "cmdUnload_Add", "cmdUnload_Delete",
                                       "cmdUnload_View", "cmdUnload_Unload", "cmdTerminal", "chkUnload_FindPorts",
                                       "cbxUnload_Ports", "cbxUnload_TallyCores", "cmdSMTPTestLogin", "cmdFTPTestLogin",
                                       "cmdApply", "cmdCancel", "cmdOk"));
}

TEST_F(OptionsControlsTest, FindAddAndDeleteStayOffInALockedInstallation)
{
    lockControls = true;
    EXPECT_THAT(enabled(), ElementsAre("cmdUnload_View", "cmdUnload_Unload", "cmdTerminal", "chkUnload_FindPorts",
                                       "cbxUnload_Ports", "cbxUnload_TallyCores", "cmdSMTPTestLogin", "cmdFTPTestLogin",
                                       "cmdApply", "cmdCancel", "cmdOk"));
}

TEST_F(OptionsControlsTest, TerminalStaysOffWhileConnectingForIt)
{
    state.QuietConnect = true;
    EXPECT_THAT(enabled(),
                ElementsAre("cmdUnload_FindTallycores", "cmdUnload_Add", "cmdUnload_Delete", "cmdUnload_View",
                            "cmdUnload_Unload", "chkUnload_FindPorts", "cbxUnload_Ports", "cbxUnload_TallyCores",
                            "cmdSMTPTestLogin", "cmdFTPTestLogin", "cmdApply", "cmdCancel", "cmdOk"));
}

TEST_F(OptionsControlsTest, PassesOnWhatConcernsTheWholePanel)
{
    controls.SetFormEnabled(false);
    controls.SetCaption(" Harvel");
    controls.FocusOk();
    EXPECT_FALSE(panel.formEnabled);
    EXPECT_EQ(panel.caption, " Harvel");
    EXPECT_EQ(panel.okFocused, 1);
}

TEST_F(OptionsControlsTest, NothingHappensWithoutAPanel)
{
    forms.options = nullptr;
    controls.DisableOptionsControls();
    controls.EnableOptionsControls();
    controls.SetFormEnabled(false);
    controls.SetCaption("x");
    controls.FocusOk();
    EXPECT_THAT(panel.changes, IsEmpty());
    EXPECT_TRUE(panel.formEnabled);
    EXPECT_EQ(panel.okFocused, 0);
}

} // namespace
} // namespace harvelop::test
