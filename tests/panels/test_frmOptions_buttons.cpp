// The buttons of the panel, but for those that close it.
#include "panels/options_fixture.h"
#include "support/fake_forms.h"

#include <utility>

namespace harvelop::test
{
namespace
{

class OptionsButtons : public OptionsPanel
{
};

TEST_F(OptionsButtons, DeleteAsksAndDeletesTheChosenLogger)
{
    Store(3);
    Open();
    p.state.cbxUnload_TallyCores.Select(1);
    t.files.files[p.state.AppPath + "emaillist3.ini"] = "x";
    t.dialogs.Expect(BoxAnswer::Yes);
    Click("cmdUnload_Delete");
    ASSERT_EQ(t.dialogs.shown.size(), 1u);
    EXPECT_EQ(t.dialogs.shown[0].text, "Are you sure you want to delete this tallyCore ?     ");
    EXPECT_EQ(t.dialogs.shown[0].title, " tallyCore Harvel");
    EXPECT_EQ(t.dialogs.shown[0].icon, BoxIcon::Exclamation);
    EXPECT_EQ(t.dialogs.shown[0].buttons, BoxButtons::YesNo);
    auto* list = Find<QListWidget>("cbxUnload_TallyCores");
    ASSERT_EQ(list->count(), 2);
    EXPECT_EQ(list->item(0)->text(), "KR40 sn 1 on Com 3");
    EXPECT_EQ(list->item(1)->text(), "KR40 sn 3 on Com 3");
    EXPECT_EQ(list->currentRow(), 0);
    EXPECT_EQ(p.tables.Count(), 2);
    EXPECT_EQ(t.files.files.count(p.state.AppPath + "emaillist3.ini"), 0u);
}

TEST_F(OptionsButtons, DeleteThatIsDeclinedChangesNothing)
{
    Store(2);
    Open();
    t.dialogs.Expect(BoxAnswer::No);
    Click("cmdUnload_Delete");
    EXPECT_EQ(p.tables.Count(), 2);
    EXPECT_TRUE(t.files.writes.empty());
}

TEST_F(OptionsButtons, DeleteOfNothingAsksNothing)
{
    Store(2);
    Open();
    p.state.cbxUnload_TallyCores.Select(-1);
    Click("cmdUnload_Delete");
    EXPECT_TRUE(t.dialogs.shown.empty());
}

TEST_F(OptionsButtons, AddWithFiftyLoggersIsRefused)
{
    int dialogs = 0;
    OptionsServices services = Services();
    services.ShowAddDialog = [&] { ++dialogs; };
    Store(50);
    Load(services);
    p.viewing.RebuildList();
    Show();
    ASSERT_EQ(p.state.cbxUnload_TallyCores.Count(), 50);
    t.dialogs.Expect(BoxAnswer::Ok);
    Click("cmdUnload_Add");
    ASSERT_EQ(t.dialogs.shown.size(), 1u);
    EXPECT_EQ(t.dialogs.shown[0].text, "You can only have 50 tallyCores in the list at once.     ");
    EXPECT_EQ(t.dialogs.shown[0].title, " tallyCore Harvel");
    EXPECT_EQ(t.dialogs.shown[0].icon, BoxIcon::Exclamation);
    EXPECT_EQ(dialogs, 0);
    EXPECT_TRUE(Enabled("cmdApply")); // comes back enabled with the others
}

TEST_F(OptionsButtons, TheRefusalOfAFiftyFirstLoggerSpeaksTheUsersLanguage)
{
    Speak("503:1:9:T503\r\n554:1:9:T554\r\n");
    Store(50);
    Load(Services());
    p.viewing.RebuildList();
    Show();
    t.dialogs.Expect(BoxAnswer::Ok);
    Click("cmdUnload_Add");
    ASSERT_EQ(t.dialogs.shown.size(), 1u);
    EXPECT_EQ(t.dialogs.shown[0].text, "T554");
    EXPECT_EQ(t.dialogs.shown[0].title, " T503");
}

TEST_F(OptionsButtons, AddCountsTheLinesOfTheListNotTheRecords)
{
    int dialogs = 0;
    OptionsServices services = Services();
    services.ShowAddDialog = [&] { ++dialogs; };
    Store(50);
    Load(services);
    Show();
    ASSERT_EQ(p.tables.Count(), 50);
    ASSERT_EQ(p.state.cbxUnload_TallyCores.Count(), 49);
    Click("cmdUnload_Add");
    EXPECT_EQ(dialogs, 1);
}

TEST_F(OptionsButtons, NothingStandsBeforeABox)
{
    FakeAddDialog add;
    p.forms.add = &add;
    p.state.AddDialogOpen = true;
    OptionsServices services = Services();
    services.ShowAddDialog = [] {};
    t.desktop.starts = false;
    t.dialogs.whileShown = [&] {
        add.steps.emplace_back("box");
        EXPECT_FALSE(messages && messages->isVisible());
    };
    const std::vector<std::string> expected = {"clear", "box", "set"};

    t.dialogs.Expect(BoxAnswer::No); // 550
    Load(services);
    Show();
    EXPECT_EQ(std::exchange(add.steps, {}), expected);
    const auto expectClicked = [&](const char* button) {
        p.progress.ShowMessageForm();
        p.controls.EnableOptionsControls();
        t.dialogs.Expect(BoxAnswer::Ok);
        Click(button);
        EXPECT_EQ(std::exchange(add.steps, {}), expected) << button;
    };
    expectClicked("cmdUnload_Unload"); // 555
    Store(50);
    expectClicked("cmdUnload_Unload"); // 531, 532
    p.viewing.RebuildList();
    expectClicked("cmdUnload_Add"); // 554
    EXPECT_EQ(t.dialogs.shown.size(), 4u);
}

TEST_F(OptionsButtons, AddOpensItsDialogInTheModeOfANewLogger)
{
    int dialogs = 0;
    OptionsServices services = Services();
    services.ShowAddDialog = [&] {
        ++dialogs;
        EXPECT_TRUE(p.state.AddingLogger);
        EXPECT_TRUE(p.state.NewLoggerMode);
    };
    Store(1);
    Load(services);
    Show();
    Click("cmdUnload_Add");
    EXPECT_EQ(dialogs, 1);
    EXPECT_EQ(Button("cmdUnload_Add")->toolTip(), "");
}

TEST_F(OptionsButtons, WhatIsNotThereYetDoesNothingAndSaysSo)
{
    Open();
    for (const char* name : {"cmdUnload_Add", "cmdTerminal", "cmdSMTPTestLogin", "cmdFTPTestLogin"}) {
        EXPECT_EQ(Button(name)->toolTip(), "Not available yet.") << name;
        EXPECT_TRUE(Enabled(name)) << name;
        Click(name);
    }
    EXPECT_FALSE(p.state.AddingLogger);
    EXPECT_TRUE(Enabled("cmdTerminal"));
    EXPECT_TRUE(t.dialogs.shown.empty());
}

TEST_F(OptionsButtons, UnloadWithoutLoggersSaysWhatToDo)
{
    t.dialogs.Expect(BoxAnswer::No);
    Load();
    Show();
    t.dialogs.Expect(BoxAnswer::Ok);
    Click("cmdUnload_Unload");
    ASSERT_EQ(t.dialogs.shown.size(), 2u);
    EXPECT_EQ(t.dialogs.shown[1].text,
              "There are no tallyCores configured for Harvel. Click Find to automatically search for tallyCores "
              "connected this computer, or click Add to manually add a tallyCore.     ");
    EXPECT_EQ(t.dialogs.shown[1].title, " tallyCore Harvel");
    EXPECT_EQ(t.dialogs.shown[1].icon, BoxIcon::Information);
    EXPECT_TRUE(t.desktop.started.empty());
    EXPECT_TRUE(t.files.writes.empty());
}

TEST_F(OptionsButtons, UnloadSavesAndStartsTheUnloadProgram)
{
    Open();
    Click("chkUnloadAll");
    Click("cmdUnload_Unload");
    EXPECT_EQ(Saved("UnloadAll"), "True");
    ASSERT_EQ(t.desktop.started.size(), 1u);
    EXPECT_EQ(t.desktop.started[0].path, "/home/user/loggers/harvel.exe");
    EXPECT_TRUE(t.desktop.started[0].arguments.empty());
    EXPECT_TRUE(form->isVisible());
}

TEST_F(OptionsButtons, UnloadThatDoesNotStartSaysSo)
{
    Open();
    t.desktop.starts = false;
    t.dialogs.Expect(BoxAnswer::Ok);
    Click("cmdUnload_Unload");
    ASSERT_EQ(t.dialogs.shown.size(), 1u);
    EXPECT_EQ(t.dialogs.shown[0].text, "The file /home/user/loggers/harvel.exe doesn't exist");
    EXPECT_EQ(t.dialogs.shown[0].title, "");
    EXPECT_EQ(t.dialogs.shown[0].icon, BoxIcon::Critical);
    EXPECT_TRUE(form->isVisible());
}

TEST_F(OptionsButtons, LogIsShownWithoutSaving)
{
    Open();
    Click("smdShowLog");
    EXPECT_EQ(t.desktop.shown, std::vector<std::string>{"/home/user/loggers/harvel.Log"});
    EXPECT_TRUE(t.files.writes.empty());
}

TEST_F(OptionsButtons, TerminalOpensQuietlyOnTheChosenLogger)
{
    OptionsServices services = Services();
    std::vector<std::string> steps;
    services.ShowTerminal = [&] {
        EXPECT_TRUE(p.state.TerminalStarting);
        EXPECT_FALSE(p.state.QuietConnect);
        steps.push_back("show");
    };
    services.ConnectLogger = [&](int number) {
        EXPECT_FALSE(p.state.TerminalStarting);
        EXPECT_TRUE(p.state.QuietConnect);
        EXPECT_EQ(p.state.CurrentLogger, number);
        steps.push_back("connect " + std::to_string(number));
        p.controls.DisableOptionsControls();
        p.controls.EnableOptionsControls();
        EXPECT_FALSE(Enabled("cmdTerminal"));
    };
    Store(3);
    Load(services);
    Show();
    p.state.cbxUnload_TallyCores.Select(2);
    Click("cmdTerminal");
    EXPECT_EQ(steps, (std::vector<std::string>{"show", "connect 3"}));
    EXPECT_FALSE(p.state.QuietConnect);
    EXPECT_TRUE(Enabled("cmdTerminal"));
}

TEST_F(OptionsButtons, TerminalStaysOffWhileItIsUp)
{
    OptionsServices services = Services();
    services.ShowTerminal = [this] { p.state.TerminalOpen = true; };
    services.ConnectLogger = [this](int) { p.controls.DisableOptionsControls(); };
    Store(1);
    Load(services);
    Show();
    Click("cmdTerminal");
    EXPECT_FALSE(Enabled("cmdTerminal"));
}

TEST_F(OptionsButtons, LoginTestsRunWithTheirButtonDisabled)
{
    OptionsServices services = Services();
    int tests = 0;
    services.TestSMTPLogin = [&] {
        ++tests;
        EXPECT_FALSE(p.state.AbortWait);
        EXPECT_FALSE(Enabled("cmdSMTPTestLogin"));
        EXPECT_TRUE(Button("cmdOk")->hasFocus());
    };
    services.TestFTPLogin = [&] {
        ++tests;
        EXPECT_FALSE(p.state.AbortWait);
        EXPECT_FALSE(Enabled("cmdFTPTestLogin"));
        EXPECT_TRUE(Button("cmdOk")->hasFocus());
    };
    Store(1);
    Load(services);
    Show();
    for (const char* name : {"cmdSMTPTestLogin", "cmdFTPTestLogin"}) {
        p.state.AbortWait = true;
        Click(name);
        EXPECT_TRUE(Enabled(name)) << name;
    }
    EXPECT_EQ(tests, 2);
}

TEST_F(OptionsButtons, FtpTestLeavesTheFocusWhileOkIsDisabled)
{
    OptionsServices services = Services();
    services.TestSMTPLogin = [] {};
    services.TestFTPLogin = [] {};
    Store(1);
    Load(services);
    Show();
    QWidget other;
    other.show();
    Button("cmdOk")->setEnabled(false);
    const auto activeAfter = [&](const char* button) {
        QApplication::setActiveWindow(&other);
        Click(button);
        QApplication::processEvents();
        return QApplication::activeWindow();
    };
    EXPECT_EQ(activeAfter("cmdFTPTestLogin"), &other);
    EXPECT_EQ(activeAfter("cmdSMTPTestLogin"), form.get()); // asks for the focus in any case
}

TEST_F(OptionsButtons, ApplyCleansSavesAndStaysOpen)
{
    p.options.SMTPServerRequiresAuthentication = true;
    Open();
    Type("txtSMTPServerName", "mail-1.local");
    Type("txtSMTPPort", "2 5");
    Type("txtSMTPSender", "some_one@mail.local");
    Type("txtSMTPUserName", "me:too");
    Type("txtFTPServername", "ftp/home");
    Type("txtFTPUserName", "user-1 name");
    Type("txtFTPPassword", "p-w_d");
    EXPECT_EQ(p.options.SMTPServerName, "mail-1.local");
    Click("cmdApply");
    EXPECT_EQ(Text("txtSMTPServerName"), "mail1.local");
    EXPECT_EQ(Saved("SMTPServerName"), "mail1.local");
    EXPECT_EQ(Saved("SMTPPort"), "25");
    EXPECT_EQ(Saved("SMTPSender"), "someone@mail.local");
    EXPECT_EQ(Saved("SMTPUserName"), "metoo");
    EXPECT_EQ(Saved("FTPServername"), "ftphome");
    EXPECT_EQ(Saved("FTPUserName"), "user-1 name");
    EXPECT_EQ(Saved("FTPPassword"), "p-w_d");
    EXPECT_FALSE(Enabled("cmdApply"));
    EXPECT_TRUE(form->isVisible());
    EXPECT_FALSE(p.end.Ended());
}

TEST_F(OptionsButtons, FindAsksBeforeItReplacesLoggers)
{
    Store(2);
    Open();
    t.dialogs.Expect(BoxAnswer::Cancel);
    Click("cmdUnload_FindTallycores");
    ASSERT_EQ(t.dialogs.shown.size(), 1u);
    EXPECT_EQ(t.dialogs.shown[0].buttons, BoxButtons::OkCancel);
    EXPECT_EQ(p.tables.Count(), 2);
    EXPECT_TRUE(Enabled("cmdUnload_FindTallycores"));
}

TEST_F(OptionsButtons, EnableOptionsControlsFreesAllButTheLockedOnes)
{
    Open();
    p.state.QuietConnect = true;
    p.options.LockControls = true;
    p.controls.DisableOptionsControls();
    p.controls.EnableOptionsControls();
    for (const char* name : {"cmdUnload_FindTallycores", "cmdUnload_Add", "cmdUnload_Delete", "cmdTerminal"})
        EXPECT_FALSE(Enabled(name)) << name;
    for (const char* name :
         {"cmdUnload_View", "cmdUnload_Unload", "chkUnload_FindPorts", "cbxUnload_Ports", "cbxUnload_TallyCores",
          "cmdSMTPTestLogin", "cmdFTPTestLogin", "cmdApply", "cmdCancel", "cmdOk"})
        EXPECT_TRUE(Enabled(name)) << name;
}

} // namespace
} // namespace harvelop::test
