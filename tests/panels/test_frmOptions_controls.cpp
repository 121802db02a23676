// What the panel consists of: names, captions, limits, and what people who can't see it are told.
#include "panels/options_fixture.h"

#include <QAccessible>

namespace harvelop::test
{
namespace
{

struct Caption {
    const char* control;
    const char* words;
};

QString captionOf(const QWidget& widget)
{
    if (const auto* box = qobject_cast<const QGroupBox*>(&widget))
        return box->title();
    return widget.property("text").toString();
}

class OptionsControlsOf : public OptionsPanel
{
protected:
    void ExpectCaptions(const char* page, const std::vector<Caption>& captions)
    {
        Open();
        for (const auto& [control, words] : captions) {
            QWidget* widget = Find(control);
            ASSERT_TRUE(widget);
            EXPECT_EQ(captionOf(*widget).remove('&').toStdString(), words) << control;
            EXPECT_TRUE(Find(page)->isAncestorOf(widget)) << control;
        }
    }
};

TEST_F(OptionsControlsOf, TheWindow)
{
    Open();
    EXPECT_EQ(form->windowTitle(), " tallyCore Harvel Options");
    const std::vector<Caption> tabs = {{"fraTallyCores", "&tallyCores"},
                                       {"fraSMTP", "&Email"},
                                       {"fraFTP", "&FTP"},
                                       {"fraOptions", "&Options"},
                                       {"fraAbout", "&About"}};
    ASSERT_EQ(Tabs()->count(), 5);
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(Tabs()->widget(i)->objectName(), tabs[static_cast<size_t>(i)].control);
        EXPECT_EQ(Tabs()->tabText(i), tabs[static_cast<size_t>(i)].words);
    }
    EXPECT_EQ(Tabs()->currentIndex(), 0);
    EXPECT_EQ(Button("cmdOk")->text().remove('&'), "Ok");
    EXPECT_EQ(Button("cmdCancel")->text().remove('&'), "Cancel");
    EXPECT_EQ(Button("cmdApply")->text().remove('&'), "Apply");
    EXPECT_TRUE(Button("cmdOk")->isDefault());
}

TEST_F(OptionsControlsOf, TheFirstPage)
{
    ExpectCaptions("fraTallyCores",
                   {{"fraSearch", "Search for tallyCores on Com Ports"},
                    {"cmdUnload_FindTallycores", "Find"},
                    {"chkUnload_FindPorts", "Find Ports"},
                    {"fraAdd", "Add a tallyCore"},
                    {"cmdUnload_Add", "Add"},
                    {"lblAdd", "Click the Add button to manually add tallyCores connected to local com ports, via a "
                               "modem, or via Ethernet."},
                    {"fraCurrent", "Current tallyCores"},
                    {"cmdUnload_Delete", "Delete"},
                    {"cmdUnload_View", "View"},
                    {"cmdUnload_Unload", "Unload"},
                    {"cmdTerminal", "Terminal"},
                    {"smdShowLog", "Log"}});
    EXPECT_TRUE(Find("fraSearch")->isAncestorOf(Find<QComboBox>("cbxUnload_Ports")));
    EXPECT_TRUE(Find("fraCurrent")->isAncestorOf(Find<QListWidget>("cbxUnload_TallyCores")));
}

TEST_F(OptionsControlsOf, TheMailPage)
{
    ExpectCaptions("fraSMTP", {{"lblSMTPServerName", "Server Name"},
                               {"lblSMTPPort", "TCP Port"},
                               {"chkSMTPServerRequiresAuthentication", "Server Requires Authentication"},
                               {"fraAuthenticationType", "Authentication Type"},
                               {"optSMTPPLAIN", "PLAIN"},
                               {"optSMTPLOGIN", "LOGIN"},
                               {"optSMTPCRMMD5", "CRAM-MD5"},
                               {"cmdSMTPTestLogin", "Test Login"},
                               {"lblSMTPSender", "Sender"},
                               {"lblSMTPAccountName", "Account Name"},
                               {"lblPassword", "Password"},
                               {"lblSMTPSiteID", "Site ID"},
                               {"Label1", "Timeout (secs)"}});
}

TEST_F(OptionsControlsOf, TheFtpPage)
{
    ExpectCaptions("fraFTP", {{"lblFTPServerName", "Server Name"},
                              {"lblFTPUserName", "User Name"},
                              {"lblFTPPassword", "Password"},
                              {"lblFTPSiteID", "Site ID"},
                              {"lblSiteID", "The Site ID is used as the name of a directory which will be created on "
                                            "the FTP server where data will be sent to."},
                              {"cmdFTPTestLogin", "Test Login"},
                              {"Label3", "Timeout (secs)"}});
}

TEST_F(OptionsControlsOf, TheOptionsPage)
{
    ExpectCaptions("fraOptions", {{"chkShowHarvelOnStartup", "Show Harvel form"},
                                  {"chkRunHarvelOnStartup", "Unload data when Harvel starts"},
                                  {"chkUnloadAll", "Unload everything from all tallyCores"},
                                  {"chkShowDir", "Show unload directory"},
                                  {"chkSaveToDesktop", "Copy to desktop, in this directory ..."},
                                  {"chkSaveToOneFile", "Append unloaded data to last saved file"},
                                  {"chkExitAfterUnload", "Exit after unload"},
                                  {"chkShowMessages", "Show messages during unload"},
                                  {"chkLockControls", "Lock Find, Add and Delete buttons"},
                                  {"chkSaveLogFile", "Save a log file"},
                                  {"lblkB", "kB"}});
}

TEST_F(OptionsControlsOf, LabelsNameTheirFields)
{
    Open();
    const std::vector<Caption> buddies = {{"lblSMTPServerName", "txtSMTPServerName"},
                                          {"lblSMTPPort", "txtSMTPPort"},
                                          {"lblSMTPSender", "txtSMTPSender"},
                                          {"lblSMTPAccountName", "txtSMTPUserName"},
                                          {"lblPassword", "txtSMTPPassword"},
                                          {"lblSMTPSiteID", "txtSMTPSiteID"},
                                          {"Label1", "txtSMTPTimeout"},
                                          {"lblFTPServerName", "txtFTPServername"},
                                          {"lblFTPUserName", "txtFTPUserName"},
                                          {"lblFTPPassword", "txtFTPPassword"},
                                          {"lblFTPSiteID", "txtFTPSiteID"},
                                          {"Label3", "txtFTPTimeout"},
                                          {"lblkB", "txtSize"}};
    for (const auto& [label, field] : buddies)
        EXPECT_EQ(Find<QLabel>(label)->buddy(), Field(field)) << label;
}

TEST_F(OptionsControlsOf, EveryUsableControlHasAnAccessibleName)
{
    Open();
    int seen = 0;
    for (QWidget* control : form->findChildren<QWidget*>(QRegularExpression("^(cmd|smd|chk|opt|txt|cbx|ts)"))) {
        const auto* told = QAccessible::queryAccessibleInterface(control);
        ASSERT_TRUE(told) << control->objectName().toStdString();
        EXPECT_FALSE(told->text(QAccessible::Name).trimmed().isEmpty()) << control->objectName().toStdString();
        ++seen;
    }
    EXPECT_GE(seen, 44);
}

TEST_F(OptionsControlsOf, MnemonicsOfAPageAreDifferent)
{
    Open();
    for (int page = 0; page < Tabs()->count(); ++page) {
        QStringList letters;
        const auto add = [&letters](const QString& text) {
            const QKeySequence keys = QKeySequence::mnemonic(text);
            if (!keys.isEmpty())
                letters << keys.toString();
        };
        for (int i = 0; i < Tabs()->count(); ++i)
            add(Tabs()->tabText(i));
        for (const char* button : {"cmdOk", "cmdCancel", "cmdApply"})
            add(Button(button)->text());
        for (QWidget* control : Tabs()->widget(page)->findChildren<QWidget*>())
            add(captionOf(*control));
        EXPECT_EQ(letters.removeDuplicates(), 0) << page;
    }
}

TEST_F(OptionsControlsOf, TabWalksThePageInReadingOrder)
{
    Open();
    QStringList walk;
    Find("cbxUnload_Ports")->setFocus();
    for (int i = 0; i < 9; ++i) {
        walk << QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(walk, (QStringList{"cbxUnload_Ports", "cmdUnload_FindTallycores", "chkUnload_FindPorts", "cmdUnload_Add",
                                 "cbxUnload_TallyCores", "cmdUnload_View", "cmdUnload_Delete", "cmdTerminal",
                                 "cmdUnload_Unload"}));
}

TEST_F(OptionsControlsOf, FieldsHaveTheirLimits)
{
    Open();
    for (const auto& [name, limit] : std::vector<std::pair<const char*, int>>{
             {"txtSMTPPort", 5}, {"txtSMTPTimeout", 3}, {"txtFTPTimeout", 3}, {"txtSize", 7}, {"txtDesktopDir", 32}})
        EXPECT_EQ(Field(name)->maxLength(), limit) << name;
    Type("txtSMTPPort", "1234567");
    EXPECT_EQ(Text("txtSMTPPort"), "12345");
}

TEST_F(OptionsControlsOf, PasswordsShowAStarForEachCharacter)
{
    Open();
    for (const char* name : {"txtSMTPPassword", "txtFTPPassword"}) {
        Field(name)->setText("abc");
        EXPECT_EQ(Field(name)->displayText(), "***") << name;
    }
}

TEST_F(OptionsControlsOf, TabsCarryTheirHelpContextAndMoveTheFocusToOk)
{
    Open();
    EXPECT_EQ(Tabs()->property("HelpContextID"), 1100);
    for (int i : {1, 2, 3, 4, 0}) {
        Button("cmdCancel")->setFocus();
        Tabs()->setCurrentIndex(i);
        EXPECT_EQ(Tabs()->property("HelpContextID"), 1100 + i);
        EXPECT_TRUE(Button("cmdOk")->hasFocus());
        EXPECT_TRUE(Tabs()->widget(i)->isVisible());
    }
}

TEST_F(OptionsControlsOf, TabsLeaveTheFocusWhileTheTerminalIsUp)
{
    Open();
    p.state.TerminalOpen = true;
    Button("cmdCancel")->setFocus();
    Tabs()->setCurrentIndex(1);
    EXPECT_TRUE(Button("cmdCancel")->hasFocus());
}

TEST_F(OptionsControlsOf, AltAndLetterChoosesATab)
{
    Open();
    QTest::keyClick(form.get(), Qt::Key_F, Qt::AltModifier);
    EXPECT_EQ(Tabs()->currentWidget()->objectName(), "fraFTP");
}

TEST_F(OptionsControlsOf, TheAboutPageIsFilledWhenItIsOpened)
{
    Open();
    EXPECT_EQ(Find<QLabel>("lblAbout_Version")->text(), "tallyCore Harvel Version 2.37 (released 05/05/08)");
    EXPECT_EQ(Find<QLabel>("lblAbout_Description")->text(), "");
    Tabs()->setCurrentIndex(4);
    const QStringList paragraphs = Find<QLabel>("lblAbout_Description")->text().split("\n\n");
    ASSERT_EQ(paragraphs.size(), 6);
    EXPECT_NE(paragraphs[0], "");
    EXPECT_EQ(paragraphs[1],
              "Harvel is a utility that can automatically connect to tallyCores via local com ports, via a modem or "
              "via Ethernet, and can send programs to a tallyCore and unload logged data. Data can be saved to a local "
              "or network location, and can then be sent as an attachment to an email, and sent to an FTP server. ");
    EXPECT_EQ(paragraphs[2], "There are two parts to this software : ");
    EXPECT_EQ(paragraphs[3], "1.  The Harvel Options control panel (harvelop.exe)");
    EXPECT_EQ(paragraphs[4], "2.  The Harvel utility (harvel.exe)");
    EXPECT_EQ(paragraphs[5], "Unload options for Harvel are configured using the Options control panel (this program). "
                             "When Harvel is run it uses these options when unloading data from tallyCores.");
    const QString credits = Find<QLabel>("lblAbout_Credits")->text();
    EXPECT_TRUE(credits.contains("README"));
    EXPECT_TRUE(credits.contains("the person who installed this program"));
}

TEST_F(OptionsControlsOf, ToolTipsSayWhyAControlCantBeUsed)
{
    Open();
    const auto tip = [this](const char* name) { return Find(name)->toolTip().toStdString(); };
    EXPECT_EQ(tip("cmdApply"), "Nothing has been changed.");
    EXPECT_EQ(tip("txtSMTPPassword"), "Check Server Requires Authentication first.");
    EXPECT_EQ(tip("optSMTPPLAIN"), "Harvel can only log in by LOGIN.");
    EXPECT_EQ(tip("cmdUnload_FindTallycores"), "");

    p.controls.DisableOptionsControls();
    EXPECT_EQ(tip("cmdUnload_FindTallycores"), "Wait until the work in hand is done.");
    EXPECT_EQ(tip("cmdOk"), "Wait until the work in hand is done.");
    EXPECT_EQ(tip("cmdApply"), "Wait until the work in hand is done.");
    p.controls.EnableOptionsControls();
    EXPECT_EQ(tip("cmdUnload_FindTallycores"), "");

    form->SetFormEnabled(false);
    EXPECT_EQ(tip("cmdOk"), "Close the panel of the tallyCore first.");
    form->SetFormEnabled(true);
    EXPECT_EQ(tip("cmdOk"), "");

    Click("chkLockControls");
    EXPECT_EQ(tip("cmdUnload_Delete"),
              "Locked by the check box Lock Find, Add and Delete buttons on the page Options.");
}

} // namespace
} // namespace harvelop::test
