// Opening the panel.
#include "panels/frmSupport.h"
#include "panels/options_fixture.h"

namespace harvelop::test
{
namespace
{

class OptionsLoad : public OptionsPanel
{
};

TEST_F(OptionsLoad, StandsAtItsStoredPlace)
{
    p.options.OptionsTop = 1500;
    p.options.OptionsLeft = 0;
    Open();
    EXPECT_EQ(form->pos(), QPoint(0, TwipsToPixels(1500, *form)));
}

TEST_F(OptionsLoad, StandsAt1000TwipsWithoutOne)
{
    Open();
    EXPECT_EQ(form->pos(), QPoint(TwipsToPixels(1000, *form), TwipsToPixels(1000, *form)));
}

TEST_F(OptionsLoad, ComesBackIntoViewFromOffEveryScreen)
{
    p.options.OptionsTop = 200000;
    p.options.OptionsLeft = -90000;
    Open();
    EXPECT_TRUE(form->screen()->availableGeometry().contains(form->geometry()));
}

TEST_F(OptionsLoad, ClearsTheStopFlagsAndSetsOptionsLoaded)
{
    p.state.StopLinkWork = p.state.StopSearch = true;
    Open();
    EXPECT_FALSE(p.state.StopLinkWork);
    EXPECT_FALSE(p.state.StopSearch);
    EXPECT_TRUE(p.state.OptionsLoaded);
    EXPECT_EQ(p.forms.options, form.get());
    form.reset();
    EXPECT_EQ(p.forms.options, nullptr);
}

TEST_F(OptionsLoad, LoadsOnlyOnce)
{
    Open();
    p.options.UnloadAll = true;
    form->Load();
    EXPECT_FALSE(Check("chkUnloadAll")->isChecked());
    EXPECT_EQ(p.state.cbxUnload_TallyCores.Count(), 1);
}

TEST_F(OptionsLoad, ApplyIsDisabledAtItsEnd)
{
    p.options.SMTPServerRequiresAuthentication = true;
    p.options.SMTPServerName = "mail";
    p.options.SiteID = "site";
    Open();
    EXPECT_FALSE(Enabled("cmdApply"));
}

TEST_F(OptionsLoad, ShowsTheOptions)
{
    Options& o = p.options;
    o.FindPorts = o.ShowHarvelOnStartup = o.UnloadAll = o.SaveToDesktop = o.SaveToOneFile = o.SaveLogFile = true;
    o.DesktopDir = "Unloads";
    o.LogFileSize = 250.5;
    o.SMTPServerName = "mail.local";
    o.SMTPPort = "587";
    o.SMTPSender = "me@mail.local";
    o.SMTPUserName = "me";
    o.SMTPPassword = "secret";
    o.SMTPTimeout = "20";
    o.SiteID = "North";
    o.FTPServername = "ftp.local";
    o.FTPUserName = "ftp me";
    o.FTPPassword = "ftp secret";
    o.FTPTimeout = "30";
    const Options before = o;
    Open();
    for (const char* name : {"chkUnload_FindPorts", "chkShowHarvelOnStartup", "chkUnloadAll", "chkSaveToDesktop",
                             "chkSaveToOneFile", "chkSaveLogFile"})
        EXPECT_TRUE(Check(name)->isChecked()) << name;
    for (const char* name : {"chkRunHarvelOnStartup", "chkShowDir", "chkExitAfterUnload", "chkShowMessages",
                             "chkLockControls", "chkSMTPServerRequiresAuthentication"})
        EXPECT_FALSE(Check(name)->isChecked()) << name;
    EXPECT_EQ(Text("txtDesktopDir"), "Unloads");
    EXPECT_EQ(Text("txtSize"), "250.5");
    EXPECT_EQ(Text("txtSMTPServerName"), "mail.local");
    EXPECT_EQ(Text("txtSMTPPort"), "587");
    EXPECT_EQ(Text("txtSMTPSender"), "me@mail.local");
    EXPECT_EQ(Text("txtSMTPUserName"), "me");
    EXPECT_EQ(Text("txtSMTPPassword"), "secret");
    EXPECT_EQ(Text("txtSMTPTimeout"), "20");
    EXPECT_EQ(Text("txtSMTPSiteID"), "North");
    EXPECT_EQ(Text("txtFTPServername"), "ftp.local");
    EXPECT_EQ(Text("txtFTPUserName"), "ftp me");
    EXPECT_EQ(Text("txtFTPPassword"), "ftp secret");
    EXPECT_EQ(Text("txtFTPTimeout"), "30");
    EXPECT_EQ(Text("txtFTPSiteID"), "North");
    EXPECT_EQ(o.LogFileSize, before.LogFileSize);
    EXPECT_EQ(o.DesktopDir, before.DesktopDir);
    EXPECT_TRUE(o.ShowHarvelOnStartup);
}

TEST_F(OptionsLoad, EmptyTimeoutsBecomeFive)
{
    Open();
    EXPECT_EQ(p.options.SMTPTimeout, "5");
    EXPECT_EQ(p.options.FTPTimeout, "5");
    EXPECT_EQ(Text("txtSMTPTimeout"), "5");
}

TEST_F(OptionsLoad, BytesThatAreNoUtf8StayAsTheyAre)
{
    p.options.SMTPPassword = "p\xE4ss";
    p.options.SMTPServerRequiresAuthentication = true;
    Open();
    EXPECT_EQ(p.options.SMTPPassword, "p\xE4ss");
}

TEST_F(OptionsLoad, LongPasswordsAreNotCut)
{
    p.options.FTPPassword = std::string(100000, 'x');
    Open();
    EXPECT_EQ(p.options.FTPPassword.size(), 100000u);
}

TEST_F(OptionsLoad, ValuesLongerThanTheirFieldsAreKept)
{
    Options& o = p.options;
    o.SMTPPort = "1234567";
    o.SMTPTimeout = "12345";
    o.FTPTimeout = "54321";
    o.DesktopDir = "A folder " + std::string(40, 'x');
    const Options before = o;
    Open();
    Click("cmdOk");
    for (std::string Options::*text :
         {&Options::SMTPPort, &Options::SMTPTimeout, &Options::FTPTimeout, &Options::DesktopDir})
        EXPECT_EQ(o.*text, before.*text);
}

class StoredSize : public OptionsPanel, public testing::WithParamInterface<double>
{
};

TEST_P(StoredSize, IsKept)
{
    p.options.LogFileSize = GetParam();
    Open();
    EXPECT_EQ(p.options.LogFileSize, GetParam());
    Click("chkSaveLogFile"); // takes the size from its field
    EXPECT_EQ(p.options.LogFileSize, GetParam());
}

INSTANTIATE_TEST_SUITE_P(Odd, StoredSize, testing::Values(123456789.0, 0.00001, 1e20, -5.0, 0.1));

TEST_F(OptionsLoad, UnloadingAtStartIsKeptWithTheFormShown)
{
    p.options.ShowHarvelOnStartup = p.options.RunHarvelOnStartup = true;
    Open();
    EXPECT_TRUE(p.options.RunHarvelOnStartup);
    EXPECT_TRUE(Check("chkRunHarvelOnStartup")->isChecked());
    EXPECT_TRUE(Enabled("chkRunHarvelOnStartup"));
}

TEST_F(OptionsLoad, UnloadingAtStartIsForcedWithoutTheForm)
{
    Open();
    EXPECT_TRUE(p.options.RunHarvelOnStartup);
    EXPECT_TRUE(Check("chkRunHarvelOnStartup")->isChecked());
    EXPECT_FALSE(Enabled("chkRunHarvelOnStartup"));
}

TEST_F(OptionsLoad, AuthenticationWritesLoginWhateverWasStored)
{
    p.options.SMTPServerRequiresAuthentication = true;
    p.options.SMTPAuthenticationType = "PLAIN";
    Open();
    EXPECT_EQ(p.options.SMTPAuthenticationType, "LOGIN");
    EXPECT_TRUE(Find<QRadioButton>("optSMTPLOGIN")->isChecked());
    EXPECT_TRUE(Enabled("optSMTPLOGIN"));
    EXPECT_FALSE(Enabled("optSMTPPLAIN"));
    EXPECT_FALSE(Enabled("optSMTPCRMMD5"));
}

TEST_F(OptionsLoad, StoredCramSelectsItsButtonOnceAndThenNone)
{
    p.options.SMTPAuthenticationType = "CRAM-MD5";
    Open();
    EXPECT_TRUE(Find<QRadioButton>("optSMTPCRMMD5")->isChecked());
    EXPECT_EQ(p.options.SMTPAuthenticationType, "CRM-MD5");
    form.reset();
    p.state.cbxUnload_TallyCores.Clear();
    Open();
    for (const char* name : {"optSMTPPLAIN", "optSMTPLOGIN", "optSMTPCRMMD5"})
        EXPECT_FALSE(Find<QRadioButton>(name)->isChecked()) << name;
    EXPECT_EQ(p.options.SMTPAuthenticationType, "CRM-MD5");
}

TEST_F(OptionsLoad, DesktopDirIsEnabledByItsOption)
{
    Open();
    EXPECT_FALSE(Enabled("txtDesktopDir"));
    form.reset();
    p.options.SaveToDesktop = true;
    Load();
    EXPECT_TRUE(Enabled("txtDesktopDir"));
}

TEST_F(OptionsLoad, ListsThePortsAndRestoresTheLastSearch)
{
    p.options.AvailablePorts = "1,3,";
    p.link.PortAvailable[0] = p.link.PortAvailable[2] = true;
    p.options.LastSearch = "2";
    Open();
    auto* ports = Find<QComboBox>("cbxUnload_Ports");
    ASSERT_EQ(ports->count(), 3);
    EXPECT_EQ(ports->itemText(0), " All Ports");
    EXPECT_EQ(ports->itemText(1), " Com 1");
    EXPECT_EQ(ports->currentText(), " Com 3");
}

TEST_F(OptionsLoad, AnEmptyPortTextBecomesAllPorts)
{
    p.options.AvailablePorts = "3,";
    p.options.LastSearch = "7";
    Open();
    EXPECT_EQ(p.state.cbxUnload_Ports.Text(), " All Ports");
    EXPECT_EQ(Find<QComboBox>("cbxUnload_Ports")->placeholderText(), " All Ports");
}

TEST_F(OptionsLoad, SelectsTheLoggerChosenLast)
{
    Store(3);
    p.options.LastUtallyCore = 2;
    Open();
    auto* list = Find<QListWidget>("cbxUnload_TallyCores");
    ASSERT_EQ(list->count(), 3);
    EXPECT_EQ(list->item(0)->text(), "KR40 sn 1 on Com 3");
    EXPECT_EQ(list->currentRow(), 2);
}

TEST_F(OptionsLoad, AStoredIndexThatSelectsNothingEndsOnTheFirstLogger)
{
    Store(3);
    p.options.LastUtallyCore = 49;
    Open();
    EXPECT_EQ(Find<QListWidget>("cbxUnload_TallyCores")->currentRow(), 0);
}

TEST_F(OptionsLoad, LockControlsLocksItsThreeButtons)
{
    p.options.LockControls = true;
    Open();
    for (const char* name : {"cmdUnload_Add", "cmdUnload_Delete", "cmdUnload_FindTallycores"})
        EXPECT_FALSE(Enabled(name)) << name;
    EXPECT_TRUE(Enabled("cmdUnload_View"));
}

constexpr const char* FirstUseQuestion =
    "There are no tallyCores configured for Harvel. Do you want to automatically search for tallyCores connected to "
    "this computer now ?     ";

TEST_F(OptionsLoad, NoToTheFirstUseQuestionLeavesThePanelOpenAndEmpty)
{
    t.dialogs.Expect(BoxAnswer::No);
    Load();
    Show();
    ASSERT_EQ(t.dialogs.shown.size(), 1u);
    EXPECT_EQ(t.dialogs.shown[0].text, FirstUseQuestion);
    EXPECT_EQ(t.dialogs.shown[0].title, " tallyCore Harvel");
    EXPECT_EQ(t.dialogs.shown[0].icon, BoxIcon::Question);
    EXPECT_EQ(t.dialogs.shown[0].buttons, BoxButtons::YesNo);
    EXPECT_FALSE(p.end.Ended());
    EXPECT_TRUE(p.state.OptionsLoaded);
    EXPECT_EQ(Find<QListWidget>("cbxUnload_TallyCores")->count(), 0);
}

TEST_F(OptionsLoad, AnEmptyListSaysWhatToDoNext)
{
    t.dialogs.Expect(BoxAnswer::No);
    Load();
    Show();
    auto* hint = Find<QLabel>("lblEmpty");
    EXPECT_TRUE(hint->isVisible());
    EXPECT_EQ(hint->text(), "There are no tallyCores configured for Harvel. Click Find to automatically search for "
                            "tallyCores connected this computer, or click Add to manually add a tallyCore.");
    p.state.cbxUnload_TallyCores.Add("KR40");
    EXPECT_FALSE(hint->isVisible());
}

TEST_F(OptionsLoad, NoToTheFirstUseQuestionEndsAProgramStartedForOneLogger)
{
    p.state.LaunchCommand = "::7";
    t.dialogs.Expect(BoxAnswer::No);
    Load();
    EXPECT_TRUE(p.end.Ended());
    EXPECT_FALSE(p.state.OptionsLoaded);
    EXPECT_TRUE(t.files.writes.empty());
}

TEST_F(OptionsLoad, YesToTheFirstUseQuestionSearches)
{
    p.options.LastSearch = "0";
    p.options.AvailablePorts = "0";
    t.dialogs.Expect(BoxAnswer::Yes);
    t.dialogs.Expect(BoxAnswer::Ok); // none found
    bool visibleMeanwhile = false;
    t.pump.After(50, [&] { visibleMeanwhile = form->isVisible() && form->focusWidget() == Button("cmdOk"); });
    form = std::make_unique<frmOptions>(Services());
    form->Load();
    EXPECT_TRUE(visibleMeanwhile);
    ASSERT_EQ(t.dialogs.shown.size(), 2u);
    EXPECT_EQ(t.dialogs.shown[1].text, "No tallyCores were found connected to this Computer.     ");
    EXPECT_FALSE(messages->isVisible());
    EXPECT_FALSE(Enabled("cmdApply"));
    EXPECT_TRUE(p.state.OptionsLoaded);
}

TEST_F(OptionsLoad, YesToTheFirstUseQuestionSearchesInALockedInstallationToo)
{
    p.options.LockControls = true;
    p.options.AvailablePorts = "0";
    t.dialogs.Expect(BoxAnswer::Yes);
    t.dialogs.Expect(BoxAnswer::Ok);
    Load();
    ASSERT_EQ(t.dialogs.shown.size(), 2u);
    EXPECT_EQ(t.dialogs.shown[1].text, "No tallyCores were found connected to this Computer.     ");
    EXPECT_FALSE(Enabled("cmdUnload_FindTallycores"));
}

TEST_F(OptionsLoad, TheProgressWindowIsHiddenAfterTheSearchOfAFirstUse)
{
    p.options.AvailablePorts = "0";
    t.dialogs.Expect(BoxAnswer::Yes);
    t.dialogs.Expect(BoxAnswer::Ok);
    bool shown = false;
    t.dialogs.whileShown = [&] {
        if (t.dialogs.shown.size() == 2)
            t.pump.After(25, [&] { // in the last wait of the search, which has hidden it by then
                p.progress.ShowMessageForm();
                shown = messages->isVisible();
            });
    };
    Load();
    EXPECT_TRUE(shown);
    EXPECT_FALSE(messages->isVisible());
}

TEST_F(OptionsLoad, ClosingInTheSearchOfAFirstUseEndsQuietly)
{
    p.options.LastSearch = "0";
    p.options.AvailablePorts = "1,3,";
    p.link.PortAvailable[0] = p.link.PortAvailable[2] = true;
    t.serial.Plug(1, nullptr, "");
    t.serial.Plug(3, nullptr, "");
    t.dialogs.Expect(BoxAnswer::Yes);
    t.pump.After(3000, [this] { form->close(); });
    form = std::make_unique<frmOptions>(Services());
    form->Load();
    EXPECT_TRUE(p.end.Ended());
    EXPECT_TRUE(p.state.StopSearch);
    EXPECT_FALSE(p.state.OptionsLoaded);
    EXPECT_LT(t.pump.NowMs(), 3010);
}

} // namespace
} // namespace harvelop::test
