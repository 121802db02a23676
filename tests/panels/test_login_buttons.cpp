// The buttons of the login tests over the tests themselves.
#include "app/desktop_program.h"
#include "panels/options_fixture.h"
#include "servers/servers_bench.h"

namespace harvelop::test
{
namespace
{

struct LoginButton {
    const char* name;
    const char* button;
    const char* other;
    const char* server; // the field of its server's name
    const char* place;
    int port;
    const char* first; // what the server is asked first
    const char* caption;
    Script good;
};

void PrintTo(const LoginButton& login, std::ostream* out)
{
    *out << login.name;
}

const LoginButton LoginButtons[] = {
    {"Mail", "cmdSMTPTestLogin", "cmdFTPTestLogin", "txtSMTPServerName", "mail.example", 2525, "1 send ehlo me\r\n",
     " Finding SMTP Server ...", GoodMail()},
    {"FTP", "cmdFTPTestLogin", "cmdSMTPTestLogin", "txtFTPServername", "ftp.example", 21, "1 send USER abc\r\n",
     " Finding FTP Server ...", GoodFTP()},
};

class LoginTestButtons : public OptionsPanel, public testing::WithParamInterface<LoginButton>
{
protected:
    static constexpr double Meanwhile = 200; // ms; the connection stands, and nothing was asked yet

    LoginTestButtons()
    {
        p.options.SMTPServerName = "mail.example";
        p.options.SMTPPort = "2525";
        p.options.FTPServername = "ftp.example";
        p.options.FTPUserName = "abc";
        p.options.FTPPassword = "secret";
        Plug(GetParam().place);
        Store(1);
        OptionsServices services = Services();
        services.TestSMTPLogin = [this] { p.smtpTest.TestByUser(); };
        services.TestFTPLogin = [this] { p.ftpTest.TestByUser(); };
        services.ShowAddDialog = services.ShowTerminal = [this] { ++begun; };
        services.ConnectLogger = [this](int) { ++begun; };
        Load(services);
        Show();
    }
    void Plug(const std::string& host)
    {
        t.sockets.Plug(host, GetParam().port, std::make_shared<ScriptedServer>(GetParam().good));
    }
    // `event` happens in a wait of the test.
    void ClickWith(const std::function<void()>& event)
    {
        t.pump.After(Meanwhile, [this, event] {
            happened = true;
            event();
        });
        Click(GetParam().button);
        EXPECT_TRUE(happened);
    }
    // Closes the panel in the middle of the test: saved, ended, and nothing sent or told.
    void EndBy(const std::function<void()>& way)
    {
        ClickWith(way);
        EXPECT_TRUE(p.end.Ended());
        EXPECT_FALSE(form->isVisible());
        EXPECT_NEAR(t.pump.NowMs(), Meanwhile, 0.001);
        EXPECT_THAT(t.sockets.steps, testing::ElementsAre(testing::HasSubstr("1 connect "), "1 close"));
        EXPECT_TRUE(t.dialogs.shown.empty());
        EXPECT_NE(Saved("SMTPServerName"), "(not saved)");
    }

    int begun = 0; // what another button has begun
    bool happened = false;
};

TEST_P(LoginTestButtons, RunTheTestAndComeBack)
{
    t.dialogs.Expect(BoxAnswer::Ok);
    ClickWith([this] {
        EXPECT_FALSE(Enabled(GetParam().button));
        EXPECT_EQ(form->windowTitle().toStdString(), GetParam().caption);
        EXPECT_TRUE(Button("cmdOk")->hasFocus());
        EXPECT_TRUE(Enabled("cmdOk"));
        EXPECT_TRUE(Enabled("cmdCancel"));
        EXPECT_FALSE(Enabled("cmdApply"));
    });
    ASSERT_EQ(t.dialogs.shown.size(), 1u);
    EXPECT_EQ(t.dialogs.shown[0].icon, BoxIcon::Information);
    EXPECT_EQ(t.sockets.steps.at(1), GetParam().first);
    EXPECT_TRUE(Enabled(GetParam().button));
    EXPECT_EQ(Button(GetParam().button)->toolTip(), "");
    EXPECT_EQ(form->windowTitle(), " tallyCore Harvel Options");
    EXPECT_TRUE(Button("cmdOk")->hasFocus());
    EXPECT_FALSE(Enabled("cmdApply"));
    EXPECT_TRUE(t.files.writes.empty());
}

TEST_P(LoginTestButtons, ComeBackAfterAFailureForAnotherTest)
{
    t.sockets.places.clear();
    t.dialogs.Expect(BoxAnswer::Ok);
    Click(GetParam().button);
    EXPECT_EQ(t.dialogs.shown.back().icon, BoxIcon::Critical);
    EXPECT_TRUE(Enabled(GetParam().button));
    EXPECT_EQ(form->windowTitle(), " tallyCore Harvel Options");
    Plug(GetParam().place);
    t.dialogs.Expect(BoxAnswer::Ok);
    Click(GetParam().button);
    EXPECT_EQ(t.dialogs.shown.back().icon, BoxIcon::Information);
}

TEST_P(LoginTestButtons, BeginNothingASecondTimeAndKeepOtherDialoguesOut)
{
    const char* held[] = {GetParam().button, GetParam().other, "cmdUnload_FindTallycores",
                          "cmdUnload_Add",   "cmdUnload_View", "cmdTerminal"};
    t.dialogs.Expect(BoxAnswer::Ok);
    ClickWith([&] {
        for (const char* name : held) {
            EXPECT_FALSE(Enabled(name)) << name;
            EXPECT_EQ(Button(name)->toolTip(), "Wait until the work in hand is done.") << name;
            Click(name);
        }
        auto* list = Find<QListWidget>("cbxUnload_TallyCores");
        QTest::keyClick(list, Qt::Key_Return); // View, by the list
    });
    EXPECT_EQ(t.sockets.made.size(), 1u);
    EXPECT_EQ(begun, 0);
    EXPECT_EQ(panel.shows, 0);
    EXPECT_EQ(t.dialogs.shown.size(), 1u);
    for (const char* name : held) {
        EXPECT_TRUE(Enabled(name)) << name;
        EXPECT_EQ(Button(name)->toolTip(), "") << name;
    }
}

TEST_P(LoginTestButtons, GiveBackWhatTheLockLeavesHoweverItWasChangedMeanwhile)
{
    for (const bool locked : {true, false}) {
        Plug(GetParam().place);
        t.dialogs.Expect(BoxAnswer::Ok);
        ClickWith([&] {
            Check("chkLockControls")->setChecked(locked);
            EXPECT_FALSE(Enabled("cmdUnload_FindTallycores"));
            EXPECT_FALSE(Enabled("cmdUnload_Add"));
        });
        for (const char* name : {"cmdUnload_FindTallycores", "cmdUnload_Add", "cmdUnload_Delete"})
            EXPECT_EQ(Enabled(name), !locked) << name;
        EXPECT_TRUE(Enabled("cmdApply")); // an option has changed
    }
}

TEST_P(LoginTestButtons, UseWhatStandsInTheFieldsAsItIs)
{
    Plug("my-server_1");
    t.dialogs.Expect(BoxAnswer::Ok);
    Type(GetParam().server, "my-server_1");
    Click(GetParam().button);
    EXPECT_EQ(t.sockets.steps.at(0), "1 connect my-server_1:" + std::to_string(GetParam().port));
    EXPECT_EQ(t.dialogs.shown.back().icon, BoxIcon::Information);
    EXPECT_EQ(Text(GetParam().server), "my-server_1");
}

TEST_P(LoginTestButtons, TestEmptyFieldsToo)
{
    t.dialogs.Expect(BoxAnswer::Ok);
    Type(GetParam().server, "");
    Click(GetParam().button);
    EXPECT_EQ(t.sockets.steps.at(0), "1 connect :" + std::to_string(GetParam().port));
    EXPECT_EQ(t.dialogs.shown.back().icon, BoxIcon::Critical);
}

TEST_P(LoginTestButtons, AreEndedByOk)
{
    EndBy([this] { Click("cmdOk"); });
}

TEST_P(LoginTestButtons, AreEndedByCancel)
{
    EndBy([this] { Click("cmdCancel"); });
}

TEST_P(LoginTestButtons, AreEndedByEscape)
{
    EndBy([this] { QTest::keyClick(form.get(), Qt::Key_Escape); });
}

TEST_P(LoginTestButtons, AreEndedByTheCloseBox)
{
    EndBy([this] { form->close(); });
}

INSTANTIATE_TEST_SUITE_P(Of, LoginTestButtons, testing::ValuesIn(LoginButtons),
                         [](const auto& login) { return std::string(login.param.name); });

TEST(LoginTestsOfTheProgram, StartFromTheirButtons)
{
    TestProgram t;
    t.Installed();
    t.files.files[TestProgram::OptionsIni] = "AvailablePorts=0\r\nFindPorts=0\r\n";
    t.dialogs.Expect(BoxAnswer::No); // to a first search
    DesktopProgram program({t.pump, t.serial, t.sockets, t.dialogs, t.files, t.settings, t.desktop});
    program.Start("");
    program.heart.options.SMTPServerName = "mail.example";
    program.heart.options.SMTPPort = "25";
    program.heart.options.FTPServername = "ftp.example";
    auto* form = dynamic_cast<frmOptions*>(program.heart.forms.options);
    ASSERT_TRUE(form);
    for (const char* name : {"cmdSMTPTestLogin", "cmdFTPTestLogin"}) {
        t.dialogs.Expect(BoxAnswer::Ok);
        form->findChild<QPushButton*>(name)->click();
    }
    ASSERT_EQ(t.dialogs.shown.size(), 3u);
    EXPECT_EQ(t.dialogs.shown[1].text, "Can't Find SMTP Server at mail.example.    ");
    EXPECT_EQ(t.dialogs.shown[2].text, "Can't Find FTP Server at ftp.example.    ");
    EXPECT_THAT(t.sockets.steps, testing::ElementsAre("1 connect mail.example:25", "2 connect ftp.example:21"));
}

} // namespace
} // namespace harvelop::test
