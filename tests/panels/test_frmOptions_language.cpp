// The panel with a language file.
#include "panels/options_fixture.h"

namespace harvelop::test
{
namespace
{

class OptionsLanguage : public OptionsPanel
{
};

TEST_F(OptionsLanguage, CaptionsAndFontsComeByTheirNumbers)
{
    std::string lines = "Font2=Courier\r\n";
    for (int i = 98; i <= 223; ++i)
        lines += std::to_string(i) + ":2:14:text " + std::to_string(i) + "\r\n";
    Speak(lines);
    Open();
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(Tabs()->tabText(i), QString("text %1").arg(170 + i));
    const std::vector<std::pair<const char*, int>> captions = {
        {"cmdOk", 98},
        {"cmdCancel", 99},
        {"cmdApply", 100},
        {"cmdUnload_FindTallycores", 176},
        {"chkUnload_FindPorts", 177},
        {"cmdUnload_Add", 179},
        {"lblAdd", 180},
        {"cmdUnload_Delete", 182},
        {"cmdUnload_View", 183},
        {"cmdUnload_Unload", 184},
        {"cmdTerminal", 185},
        {"lblSMTPServerName", 186},
        {"chkSMTPServerRequiresAuthentication", 187},
        {"optSMTPPLAIN", 189},
        {"optSMTPLOGIN", 190},
        {"optSMTPCRMMD5", 191},
        {"cmdSMTPTestLogin", 192},
        {"lblSMTPSender", 193},
        {"lblSMTPAccountName", 194},
        {"lblPassword", 195},
        {"lblSMTPSiteID", 196},
        {"lblFTPServerName", 197},
        {"lblFTPUserName", 198},
        {"lblFTPPassword", 199},
        {"lblFTPSiteID", 200},
        {"lblSiteID", 201},
        {"cmdFTPTestLogin", 202},
        {"chkShowHarvelOnStartup", 203},
        {"chkRunHarvelOnStartup", 204},
        {"chkUnloadAll", 205},
        {"chkShowDir", 206},
        {"chkSaveToDesktop", 207},
        {"chkSaveToOneFile", 208},
        {"chkExitAfterUnload", 210},
        {"chkShowMessages", 211},
        {"chkLockControls", 212},
        {"lblSMTPPort", 223},
    };
    for (const auto& [control, number] : captions) {
        EXPECT_EQ(Find(control)->property("text").toString(), QString("text %1").arg(number)) << control;
        EXPECT_EQ(Find(control)->font().family(), "Courier") << control;
        EXPECT_EQ(Find(control)->font().pointSize(), 14) << control;
    }
    for (const auto& [control, number] : std::vector<std::pair<const char*, int>>{
             {"fraSearch", 175}, {"fraAdd", 178}, {"fraCurrent", 181}, {"fraAuthenticationType", 188}})
        EXPECT_EQ(Find<QGroupBox>(control)->title(), QString("text %1").arg(number));
    EXPECT_EQ(Find<QLabel>("Label1")->text().remove('&'), "Timeout (secs)");
    EXPECT_EQ(Button("smdShowLog")->text().remove('&'), "Log");
}

TEST_F(OptionsLanguage, AboutPageKeepsTheOlderVersion)
{
    Speak("1000:1:9:About \r\n213:1:9:freigegeben\r\n214:1:9:one\r\n215:1:9:two\r\n216:1:9:three\r\n217:1:9:four\r\n"
          "218:1:9:five\r\n219:1:9:six\r\n220:1:9:see\r\n221:1:9:ask\r\n222:1:9:end\r\n");
    Open();
    EXPECT_EQ(Find<QLabel>("lblAbout_Version")->text(), "AbouttallyCore Harvel 2.18 (freigegeben 07/06/04)");
    EXPECT_EQ(Find<QLabel>("lblAbout_Description")->text(), "one\n\ntwo\n\nthree\n\nfour\n\nfive\n\nsix");
    const QString credits = Find<QLabel>("lblAbout_Credits")->text();
    EXPECT_TRUE(credits.startsWith("see") && credits.contains("ask") && credits.endsWith("end"));
    Tabs()->setCurrentIndex(4);
    EXPECT_EQ(Find<QLabel>("lblAbout_Description")->text(), "one\n\ntwo\n\nthree\n\nfour\n\nfive\n\nsix");
}

TEST_F(OptionsLanguage, FirstUseQuestionIsAskedInIt)
{
    Speak("503:1:9:tallyCore Harvest\r\n550:1:9:Search now?\r\n");
    t.dialogs.Expect(BoxAnswer::No);
    Load();
    EXPECT_EQ(t.dialogs.shown[0].text, "Search now?");
    EXPECT_EQ(t.dialogs.shown[0].title, " tallyCore Harvest");
}

TEST_F(OptionsLanguage, BoxesSpeakTheUsersLanguage)
{
    Speak("503:1:9:tallyCore Harvest\r\n531:1:9:Datei\r\n532:1:9:fehlt\r\n554:1:9:Genug.\r\n555:1:9:Keine.\r\n"
          "737:1:9:Wirklich\r\n");
    OptionsServices services = Services();
    services.ShowAddDialog = [] {};
    t.desktop.starts = false;
    Store(50);
    Load(services);
    p.viewing.RebuildList();
    p.state.cbxUnload_TallyCores.Select(0);
    Show();
    for (const char* button : {"cmdUnload_Add", "cmdUnload_Unload", "cmdUnload_Delete"}) {
        t.dialogs.Expect(BoxAnswer::No);
        Click(button);
    }
    p.tables.HaveFoundLoggers = false;
    t.dialogs.Expect(BoxAnswer::Ok);
    Click("cmdUnload_Unload");
    ASSERT_EQ(t.dialogs.shown.size(), 4u);
    EXPECT_EQ(t.dialogs.shown[0].text, "Genug.");
    EXPECT_EQ(t.dialogs.shown[0].title, " tallyCore Harvest");
    EXPECT_EQ(t.dialogs.shown[1].text, "Datei /home/user/loggers/harvel.exe fehlt");
    EXPECT_EQ(t.dialogs.shown[1].title, "");
    EXPECT_EQ(t.dialogs.shown[2].text, "Wirklich ?     ");
    EXPECT_EQ(t.dialogs.shown[2].title, " tallyCore Harvel"); // in every language
    EXPECT_EQ(t.dialogs.shown[3].text, "Keine.");
    EXPECT_EQ(t.dialogs.shown[3].title, " tallyCore Harvest");
}

} // namespace
} // namespace harvelop::test
