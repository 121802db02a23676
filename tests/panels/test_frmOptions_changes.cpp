// Change tracking: what each control's handler does.
#include "panels/options_fixture.h"

namespace harvelop::test
{
namespace
{

class OptionsChanges : public OptionsPanel
{
protected:
    void ExpectApply()
    {
        EXPECT_TRUE(Enabled("cmdApply"));
        Button("cmdApply")->setEnabled(false);
    }
    void ExpectButtonFace(const char* field)
    {
        const QPalette palette = Field(field)->palette();
        EXPECT_EQ(palette.color(QPalette::Disabled, QPalette::Base),
                  palette.color(QPalette::Disabled, QPalette::Button))
            << field;
    }
};

TEST_F(OptionsChanges, CheckBoxesWriteTheirOptionsAtOnce)
{
    p.options.ShowHarvelOnStartup = true;
    Open();
    const std::vector<std::pair<const char*, bool Options::*>> boxes = {
        {"chkUnload_FindPorts", &Options::FindPorts},
        {"chkRunHarvelOnStartup", &Options::RunHarvelOnStartup},
        {"chkUnloadAll", &Options::UnloadAll},
        {"chkShowDir", &Options::ShowDir},
        {"chkSaveToDesktop", &Options::SaveToDesktop},
        {"chkSaveToOneFile", &Options::SaveToOneFile},
        {"chkExitAfterUnload", &Options::ExitAfterUnload},
        {"chkShowMessages", &Options::ShowMessages},
        {"chkLockControls", &Options::LockControls},
        {"chkSaveLogFile", &Options::SaveLogFile},
        {"chkSMTPServerRequiresAuthentication", &Options::SMTPServerRequiresAuthentication},
    };
    for (const auto& [name, option] : boxes) {
        EXPECT_FALSE(p.options.*option) << name;
        Click(name);
        EXPECT_TRUE(p.options.*option) << name;
        ExpectApply();
        Click(name);
        EXPECT_FALSE(p.options.*option) << name;
        ExpectApply();
    }
}

TEST_F(OptionsChanges, TextBoxesWriteTheirOptionsAtOnce)
{
    p.options.SMTPServerRequiresAuthentication = true;
    Open();
    const std::vector<std::pair<const char*, std::string Options::*>> fields = {
        {"txtSMTPServerName", &Options::SMTPServerName},
        {"txtSMTPPort", &Options::SMTPPort},
        {"txtSMTPSender", &Options::SMTPSender},
        {"txtSMTPUserName", &Options::SMTPUserName},
        {"txtSMTPPassword", &Options::SMTPPassword},
        {"txtSMTPTimeout", &Options::SMTPTimeout},
        {"txtFTPServername", &Options::FTPServername},
        {"txtFTPUserName", &Options::FTPUserName},
        {"txtFTPPassword", &Options::FTPPassword},
        {"txtFTPTimeout", &Options::FTPTimeout},
        {"txtSMTPSiteID", &Options::SiteID},
        {"txtFTPSiteID", &Options::SiteID}};
    for (const auto& [name, option] : fields) {
        Type(name, "a-b");
        EXPECT_EQ(p.options.*option, "a-b") << name;
        ExpectApply();
        Type(name, "");
        EXPECT_EQ(p.options.*option, "") << name;
        ExpectApply();
    }
}

TEST_F(OptionsChanges, HidingTheFormForcesUnloadingAtStart)
{
    p.options.ShowHarvelOnStartup = true;
    Open();
    Click("chkShowHarvelOnStartup");
    EXPECT_TRUE(Check("chkRunHarvelOnStartup")->isChecked());
    EXPECT_FALSE(Enabled("chkRunHarvelOnStartup"));
    EXPECT_TRUE(p.options.RunHarvelOnStartup);
    EXPECT_FALSE(p.options.ShowHarvelOnStartup);
    ExpectApply();
    Click("chkShowHarvelOnStartup");
    EXPECT_FALSE(Check("chkRunHarvelOnStartup")->isChecked());
    EXPECT_TRUE(Enabled("chkRunHarvelOnStartup"));
    EXPECT_FALSE(p.options.RunHarvelOnStartup);
    ExpectApply();
}

TEST_F(OptionsChanges, CopyingToTheDesktopFreesItsDirectory)
{
    Open();
    Click("chkSaveToDesktop");
    EXPECT_TRUE(Enabled("txtDesktopDir"));
    Click("chkSaveToDesktop");
    EXPECT_FALSE(Enabled("txtDesktopDir"));
    ExpectButtonFace("txtDesktopDir");
}

TEST_F(OptionsChanges, LockingTurnsItsThreeButtonsOff)
{
    Open();
    Click("chkLockControls");
    for (const char* name : {"cmdUnload_Add", "cmdUnload_Delete", "cmdUnload_FindTallycores"})
        EXPECT_FALSE(Enabled(name)) << name;
    Click("chkLockControls");
    for (const char* name : {"cmdUnload_Add", "cmdUnload_Delete", "cmdUnload_FindTallycores"})
        EXPECT_TRUE(Enabled(name)) << name;
}

TEST_F(OptionsChanges, LockingWhileWorkGoesOnFreesNothingUntilItEnds)
{
    Open();
    p.controls.DisableOptionsControls();
    Click("chkLockControls");
    Click("chkLockControls");
    for (const char* name : {"cmdUnload_Add", "cmdUnload_Delete", "cmdUnload_FindTallycores"})
        EXPECT_FALSE(Enabled(name)) << name;
    Click("chkLockControls");
    p.controls.EnableOptionsControls();
    EXPECT_FALSE(Enabled("cmdUnload_FindTallycores"));
    Click("chkLockControls");
    EXPECT_TRUE(Enabled("cmdUnload_FindTallycores"));
}

TEST_F(OptionsChanges, AuthenticationSelectsLogin)
{
    p.options.SMTPAuthenticationType = "PLAIN";
    Open();
    Click("chkSMTPServerRequiresAuthentication");
    EXPECT_EQ(p.options.SMTPAuthenticationType, "LOGIN");
    EXPECT_TRUE(Find<QRadioButton>("optSMTPLOGIN")->isChecked());
    EXPECT_TRUE(Enabled("optSMTPLOGIN"));
    EXPECT_FALSE(Enabled("optSMTPPLAIN"));
    EXPECT_FALSE(Enabled("optSMTPCRMMD5"));
    EXPECT_TRUE(Enabled("txtSMTPUserName"));
    EXPECT_TRUE(Enabled("txtSMTPPassword"));

    Click("chkSMTPServerRequiresAuthentication");
    EXPECT_EQ(p.options.SMTPAuthenticationType, "LOGIN");
    for (const char* name : {"optSMTPPLAIN", "optSMTPLOGIN", "optSMTPCRMMD5"}) {
        EXPECT_FALSE(Find<QRadioButton>(name)->isChecked()) << name;
        EXPECT_FALSE(Enabled(name)) << name;
    }
    for (const char* name : {"txtSMTPUserName", "txtSMTPPassword"}) {
        EXPECT_FALSE(Enabled(name)) << name;
        ExpectButtonFace(name);
    }
}

TEST_F(OptionsChanges, AuthenticationButtonsWriteTheirTypes)
{
    Open();
    for (const auto& [name, written] : std::vector<std::pair<const char*, const char*>>{
             {"optSMTPPLAIN", "PLAIN"}, {"optSMTPLOGIN", "LOGIN"}, {"optSMTPCRMMD5", "CRM-MD5"}}) {
        Find<QRadioButton>(name)->setChecked(true);
        EXPECT_EQ(p.options.SMTPAuthenticationType, written);
        ExpectApply();
    }
}

TEST_F(OptionsChanges, ThereIsOneSiteID)
{
    Open();
    Type("txtFTPSiteID", "North");
    EXPECT_EQ(Text("txtSMTPSiteID"), "North");
    EXPECT_EQ(p.options.SiteID, "North");
    ExpectApply();
    Type("txtSMTPSiteID", "South");
    EXPECT_EQ(Text("txtFTPSiteID"), "South");
    EXPECT_EQ(p.options.SiteID, "South");
    ExpectApply();
}

TEST_F(OptionsChanges, SizeDropsWhatIsNoNumber)
{
    Open();
    Type("txtSize", "12kB");
    EXPECT_EQ(Text("txtSize"), "12");
    EXPECT_EQ(p.options.LogFileSize, 12);
    ExpectApply();
}

TEST_F(OptionsChanges, SizeThatIsNoNumberLeavesTheOption)
{
    p.options.LogFileSize = 100;
    Open();
    Type("txtSize", "");
    EXPECT_EQ(p.options.LogFileSize, 100);
    Type("txtSize", ".");
    EXPECT_EQ(Text("txtSize"), ".");
    EXPECT_EQ(p.options.LogFileSize, 100);
    Type("txtSize", "1.2.3");
    EXPECT_EQ(Text("txtSize"), "1.2.3");
    EXPECT_EQ(p.options.LogFileSize, 1.2);
    p.options.LogFileSize = 100;
    Click("chkSaveLogFile");
    EXPECT_EQ(p.options.LogFileSize, 100);
}

TEST_F(OptionsChanges, SavingALogTakesItsSize)
{
    Open();
    Type("txtSize", "75");
    p.options.LogFileSize = 1;
    Click("chkSaveLogFile");
    EXPECT_EQ(p.options.LogFileSize, 75);
}

TEST_F(OptionsChanges, DesktopDirDropsWhatAFolderNameCantHold)
{
    p.options.SaveToDesktop = true;
    Open();
    Type("txtDesktopDir", "a_b");
    EXPECT_EQ(p.options.DesktopDir, "a_b");
    Type("txtDesktopDir", "a b\\c");
    EXPECT_EQ(Text("txtDesktopDir"), "abc");
    EXPECT_EQ(p.options.DesktopDir, "abc");
    ExpectApply();
}

TEST_F(OptionsChanges, FilteredFieldsPutTheCaretToTheEnd)
{
    p.options.SaveToDesktop = true;
    p.options.DesktopDir = "Logs";
    Open();
    QLineEdit* field = Field("txtDesktopDir");
    Reveal(field);
    field->setCursorPosition(1);
    QTest::keyClicks(field, "x");
    EXPECT_EQ(Text("txtDesktopDir"), "Lxogs");
    EXPECT_EQ(field->cursorPosition(), 5);

    Type("txtSize", "123");
    field = Field("txtSize");
    field->setCursorPosition(1);
    QTest::keyClicks(field, "9");
    EXPECT_EQ(Text("txtSize"), "1923");
    EXPECT_EQ(field->cursorPosition(), 4);
}

TEST_F(OptionsChanges, PastedTextKeepsItsGoodPart)
{
    p.options.SaveToDesktop = true;
    Open();
    Field("txtDesktopDir")->insert("C:\\My Logs\\2026");
    EXPECT_EQ(p.options.DesktopDir, "CMyLogs2026");
}

class DeliveryChecks : public OptionsPanel
{
protected:
    DeliveryChecks()
    {
        p.options.SMTPServerRequiresAuthentication = true;
        p.panels.Create(1);
    }
};

TEST_F(DeliveryChecks, ReachTheVisiblePanels)
{
    Open();
    panel.visible = true;
    panel.deliveries = 0;
    p.options.SMTPServerName = "";
    Field("txtSMTPServerName")->setText("mail");
    Field("txtSMTPSender")->setText("me@mail");
    Field("txtSMTPUserName")->setText("me");
    EXPECT_EQ(panel.deliveries, 0); // these do not update
    Field("txtSMTPPassword")->setText("secret");
    EXPECT_EQ(panel.email, true); // without a port
    EXPECT_EQ(panel.ftp, false);
    EXPECT_EQ(panel.deliveries, 1);
    Field("txtFTPServername")->setText("ftp");
    EXPECT_EQ(panel.deliveries, 2);
    Field("txtFTPUserName")->setText("me");
    EXPECT_EQ(panel.deliveries, 3);
    EXPECT_EQ(panel.ftp, false);
    Field("txtFTPPassword")->setText("secret");
    EXPECT_EQ(panel.ftp, true);
    Field("txtSMTPPassword")->setText("");
    EXPECT_EQ(panel.email, false);
    Field("txtFTPUserName")->setText("");
    EXPECT_EQ(panel.ftp, false);
}

TEST_F(DeliveryChecks, PassHiddenPanelsOver)
{
    Open();
    Field("txtFTPPassword")->setText("secret");
    EXPECT_EQ(panel.deliveries, 0);
}

TEST_F(DeliveryChecks, EnableThePanelOfTheOptionsAgain)
{
    Open();
    form->SetFormEnabled(false);
    Field("txtFTPPassword")->setText("secret");
    EXPECT_TRUE(form->isEnabled());
}

} // namespace
} // namespace harvelop::test
