// The login test of the mail server: what is sent, shown and left behind.
#include "app/exit_paths.h"
#include "servers/servers_bench.h"

namespace harvelop::test
{
namespace
{

using Lines = std::vector<std::string>;
using testing::ElementsAre;

struct SMTPLogin : testing::Test, ServersBench {
    SMTPLogin() { heart.options.SMTPServerRequiresAuthentication = true; }
};

TEST_F(SMTPLogin, WithoutAuthenticationTheServersNameForUsDecides)
{
    heart.options.SMTPServerRequiresAuthentication = false;
    PlugMail(GoodMail());
    dialogs.whileShown = [this] { EXPECT_FALSE(messages.Visible()); };
    heart.progress.ShowMessageForm();
    TestMail();
    EXPECT_EQ(sockets.steps, (Lines{"1 connect mail.example:2525", "1 send ehlo me\r\n", "1 close"}));
    EXPECT_EQ(OnlyBox().text, "Successfully Connected to SMTP Server at mail.example.     ");
    EXPECT_EQ(OnlyBox().title, " SMTP Server Login Test");
    EXPECT_EQ(OnlyBox().icon, BoxIcon::Information);
    EXPECT_EQ(OnlyBox().buttons, BoxButtons::Ok);
    EXPECT_TRUE(heart.options.SMTPChecked);
    EXPECT_FALSE(heart.options.FTPChecked);
    EXPECT_EQ(panel.okFocused, 1);
    EXPECT_EQ(heart.link.LinkMode, "None");
    EXPECT_FALSE(heart.link.LoginTest);
}

TEST_F(SMTPLogin, EveryStepShowsInTheProgressWindowAndInThePanelsCaption)
{
    PlugMail(GoodMailLogin());
    TestMail();
    const Lines steps = {"Finding SMTP Server ...",
                         "Found SMTP Server at mail.example",
                         "Connecting to SMTP Server ...",
                         "Connected to SMTP Server at mail.example",
                         "Authenticating ...",
                         "Authenticated",
                         "Connected to SMTP Server"};
    Lines windows;
    Lines captions;
    for (const std::string& step : steps) {
        windows.push_back("<- " + step);
        captions.push_back(" " + step);
    }
    EXPECT_EQ(messages.captions, windows);
    captions.insert(captions.end(), 2, PanelCaption);
    EXPECT_EQ(panel.captions, captions);
}

TEST_F(SMTPLogin, LoginSendsTheNameWithOneEqualsSignAndThePasswordWithNone)
{
    PlugMail(GoodMailLogin());
    TestMail();
    EXPECT_THAT(Sent(), ElementsAre("ehlo me\r\n", "AUTH LOGIN\r\n", "YWJj=\r\n", "c2VjcmV0\r\n"));
    EXPECT_EQ(OnlyBox().text, "Successfully Connected to SMTP Server at mail.example.     ");
    EXPECT_TRUE(heart.options.SMTPChecked);
}

TEST_F(SMTPLogin, ANameOfOneCharacterGetsOneEqualsSignTooAndThePasswordIsNeverPadded)
{
    heart.options.SMTPUserName = "a";
    heart.options.SMTPPassword = "b";
    PlugMail(With(With(GoodMailLogin(), "YQ=", {"334 UGFzc3dvcmQ6\r\n"}), "Yg", {"235 go on\r\n"}));
    TestMail();
    EXPECT_THAT(Sent(), ElementsAre("ehlo me\r\n", "AUTH LOGIN\r\n", "YQ=\r\n", "Yg\r\n"));
    EXPECT_TRUE(heart.options.SMTPChecked);
}

TEST_F(SMTPLogin, ALoginWithoutNameAndPasswordIsTriedAllTheSame)
{
    heart.options.SMTPUserName = heart.options.SMTPPassword = "";
    PlugMail(GoodMailLogin());
    TestMail();
    EXPECT_THAT(Sent(), ElementsAre("ehlo me\r\n", "AUTH LOGIN\r\n", "=\r\n", "\r\n"));
}

TEST_F(SMTPLogin, ALoginOfFiftyCharactersAndMoreIsCut)
{
    heart.options.SMTPUserName = std::string(40, 'a');
    PlugMail(GoodMailLogin());
    TestMail();
    EXPECT_EQ(Sent().at(2), "YWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYW=\r\n");
}

TEST_F(SMTPLogin, ARefusedAuthLoginIsOneBoxAndNothingFurtherIsTried)
{
    PlugMail(With(GoodMailLogin(), "AUTH LOGIN", {"504 no\r\n"}));
    TestMail();
    EXPECT_THAT(Sent(), ElementsAre("ehlo me\r\n", "AUTH LOGIN\r\n"));
    EXPECT_EQ(OnlyBox().text, "LOGIN Authentication Type not Supported by this SMTP Server.    ");
    EXPECT_EQ(OnlyBox().title, " SMTP Server Login Test");
    EXPECT_EQ(OnlyBox().icon, BoxIcon::Critical);
    EXPECT_EQ(messages.Caption(), "<- Disconnecting ...");
    EXPECT_EQ(panel.caption, PanelCaption);
    EXPECT_FALSE(heart.options.SMTPChecked);
}

TEST_F(SMTPLogin, ARefusedPasswordIsOneBox)
{
    PlugMail(With(GoodMailLogin(), "c2VjcmV0", {"535 no\r\n"}));
    TestMail();
    EXPECT_THAT(Sent(), ElementsAre("ehlo me\r\n", "AUTH LOGIN\r\n", "YWJj=\r\n", "c2VjcmV0\r\n"));
    EXPECT_EQ(OnlyBox().text, "Account Name or Password is Incorrect.    ");
    EXPECT_EQ(OnlyBox().icon, BoxIcon::Critical);
    EXPECT_EQ(messages.Caption(), "<- Disconnecting ...");
    EXPECT_EQ(panel.caption, PanelCaption);
    EXPECT_FALSE(heart.options.SMTPChecked);
    EXPECT_NEAR(pump.NowMs(), 501 + 3 * 20 + 5000 + 1000, 25);
}

// The password goes out after a refused name as well, and a server that takes it mends nothing.
TEST_F(SMTPLogin, ARefusedNameStillGetsThePasswordAndIsToldOnce)
{
    PlugMail(With(GoodMailLogin(), "YWJj=", {"501 no\r\n"}));
    TestMail();
    EXPECT_THAT(Sent(), ElementsAre("ehlo me\r\n", "AUTH LOGIN\r\n", "YWJj=\r\n", "c2VjcmV0\r\n"));
    EXPECT_EQ(OnlyBox().text, "Account Name or Password is Incorrect.    ");
    EXPECT_FALSE(heart.options.SMTPChecked);
}

TEST_F(SMTPLogin, PlainIsBegunAndRefusedAtOnceWithoutAnyLogin)
{
    heart.options.SMTPAuthenticationType = "PLAIN";
    PlugMail(GoodMailLogin());
    TestMail();
    EXPECT_THAT(Sent(), ElementsAre("ehlo me\r\n", "AUTH PLAIN\r\n"));
    EXPECT_EQ(OnlyBox().text, "PLAIN Authentication not supported by Harvel.    ");
    EXPECT_EQ(OnlyBox().title, " SMTP Server Login Test");
    EXPECT_EQ(OnlyBox().icon, BoxIcon::Critical);
    EXPECT_EQ(messages.Caption(), "<- Authenticating ...");
    EXPECT_LT(pump.NowMs(), 501 + 100 + 1000);
    EXPECT_FALSE(heart.options.SMTPChecked);
}

TEST_F(SMTPLogin, CramMd5IsBegunMisspeltAndRefusedAtOnce)
{
    heart.options.SMTPAuthenticationType = "CRM-MD5";
    PlugMail(GoodMailLogin());
    TestMail();
    EXPECT_THAT(Sent(), ElementsAre("ehlo me\r\n", "AUTH CARM-MD5\r\n"));
    EXPECT_EQ(OnlyBox().text, "CRAM-MD5 Authentication not supported by Harvel.    ");
    EXPECT_EQ(OnlyBox().icon, BoxIcon::Critical);
    EXPECT_EQ(messages.Caption(), "<- Disconnecting ...");
    EXPECT_LT(pump.NowMs(), 501 + 100 + 1000);
    EXPECT_FALSE(heart.options.SMTPChecked);
}

TEST_F(SMTPLogin, AnyOtherTypeLogsInWithNothingAndCountsAsGood)
{
    for (const char* type : {"CRAM-MD5", "login", ""}) {
        SCOPED_TRACE(type);
        heart.options.SMTPChecked = false;
        heart.options.SMTPAuthenticationType = type;
        sockets.steps.clear();
        PlugMail(GoodMailLogin());
        TestMail();
        EXPECT_THAT(Sent(), ElementsAre("ehlo me\r\n"));
        EXPECT_EQ(dialogs.shown.back().text, "Successfully Connected to SMTP Server at mail.example.     ");
        EXPECT_TRUE(heart.options.SMTPChecked);
    }
}

TEST_F(SMTPLogin, WhatIsSaidComesFromTheLanguageFile)
{
    SpeakNumbers();
    PlugMail(GoodMailLogin());
    TestMail();
    EXPECT_THAT(messages.captions, ElementsAre("<- T376 ...", "<- T377 mail.example", "<- T378 ...",
                                               "<- T379 mail.example", "<- T380 ...", "<- T382", "<- T384"));
    EXPECT_EQ(OnlyBox().text, "T711 mail.example .     ");
    EXPECT_EQ(OnlyBox().title, " T198");
}

struct Refusal {
    const char* name;
    const char* type;
    Script script;
    const char* english;
    const char* spoken;
    const char* lastStep; // by number
};

void PrintTo(const Refusal& refusal, std::ostream* out)
{
    *out << refusal.name;
}

const Refusal Refusals[] = {
    {"NoServer",
     "LOGIN",
     {},
     "Can't Find SMTP Server at mail.example.    ",
     "Can't Find SMTP Server at mail.example.    ",
     "T376 ..."},
    {"NotKnown", "LOGIN", With(GoodMail(), "ehlo me", {"421 no\r\n"}),
     "Can't connect to SMTP Server at mail.example.    ", "T712 mail.example.    ", "T378 ..."},
    {"NoLogin", "LOGIN", GoodMail(), "LOGIN Authentication Type not Supported by this SMTP Server.    ", "T714.    ",
     "T381 ..."},
    {"WrongPassword", "LOGIN", Without(GoodMailLogin(), "c2VjcmV0"), "Account Name or Password is Incorrect.    ",
     "T715.    ", "T383 ..."},
    {"Plain", "PLAIN", GoodMail(), "PLAIN Authentication not supported by Harvel.    ", "T213.    ", "T380 ..."},
    {"CramMd5", "CRM-MD5", GoodMail(), "CRAM-MD5 Authentication not supported by Harvel.    ", "T716.    ", "T383 ..."},
};

struct SMTPRefusal : SMTPLogin, testing::WithParamInterface<Refusal> {
    SMTPRefusal()
    {
        heart.options.SMTPAuthenticationType = GetParam().type;
        PlugMail(GetParam().script);
    }
};

TEST_P(SMTPRefusal, IsToldInEnglish)
{
    TestMail();
    EXPECT_EQ(OnlyBox().text, GetParam().english);
    EXPECT_EQ(OnlyBox().title, " SMTP Server Login Test");
    EXPECT_EQ(OnlyBox().icon, BoxIcon::Critical);
    EXPECT_FALSE(heart.options.SMTPChecked);
}

TEST_P(SMTPRefusal, IsToldInTheUsersLanguage)
{
    SpeakNumbers();
    TestMail();
    EXPECT_EQ(OnlyBox().text, GetParam().spoken);
    EXPECT_EQ(OnlyBox().title, " T198");
    EXPECT_EQ(messages.Caption(), std::string("<- ") + GetParam().lastStep);
    EXPECT_EQ(panel.caption, PanelCaption);
}

TEST_P(SMTPRefusal, LeavesTheSocketOpenAsNobodysLink)
{
    TestMail();
    EXPECT_FALSE(SocketsClosed());
    EXPECT_EQ(heart.link.LinkMode, "None");
    EXPECT_EQ(heart.link.DefaultTimeout, 5000);
    const size_t sent = Sent().size();
    heart.exchange.txtCharacterWindow.Clear();
    sockets.made.at(0)->Arrive("250 late\r\n");
    heart.exchange.SendToLogger("TEST0");
    UnloadTaskbar(heart);
    EXPECT_EQ(heart.exchange.txtCharacterWindow.Text(), "");
    EXPECT_EQ(Sent().size(), sent);
    EXPECT_TRUE(SocketsClosed());
}

// And a good test after it takes a socket of its own, and is good.
TEST_P(SMTPRefusal, DoesNotSpoilTheNextTest)
{
    TestMail();
    heart.options.SMTPAuthenticationType = "LOGIN";
    PlugMail(GoodMailLogin());
    TestMail();
    EXPECT_EQ(dialogs.shown.back().icon, BoxIcon::Information);
    EXPECT_TRUE(heart.options.SMTPChecked);
    EXPECT_EQ(sockets.made.size(), 2u);
    EXPECT_FALSE(sockets.made[0]->State() == SocketControl::Condition::Closed);
    EXPECT_EQ(sockets.steps.back(), "2 close");
}

INSTANTIATE_TEST_SUITE_P(Of, SMTPRefusal, testing::ValuesIn(Refusals),
                         [](const auto& refusal) { return std::string(refusal.param.name); });

TEST_F(SMTPLogin, NothingHappensOnceTheWaitsAreAborted)
{
    heart.state.AbortWait = true;
    heart.link.LinkMode = "ComPort";
    heart.smtpTest.TestByUser();
    EXPECT_TRUE(sockets.steps.empty());
    EXPECT_TRUE(panel.captions.empty());
    EXPECT_EQ(heart.link.LinkMode, "ComPort");
    EXPECT_EQ(pump.NowMs(), 0);
}

TEST_F(SMTPLogin, NotByTheUserOnlyAFailureIsTold)
{
    PlugMail(GoodMailLogin());
    heart.smtpTest.RunSMTPTest();
    EXPECT_TRUE(messages.captions.empty());
    EXPECT_EQ(Sent().size(), 4u);
    EXPECT_FALSE(heart.options.SMTPChecked);
    EXPECT_FALSE(SocketsClosed());

    PlugMail({});
    dialogs.Expect(BoxAnswer::Ok);
    heart.smtpTest.RunSMTPTest();
    EXPECT_EQ(OnlyBox().text, "Can't Find SMTP Server at mail.example.    ");
    EXPECT_TRUE(messages.captions.empty());
}

// The last wait of a good test has the former time-out again, cut to a whole number; what follows does not.
TEST_F(SMTPLogin, DefaultTimeoutIsFiveSecondsAfterwardsWhateverItWas)
{
    for (const bool good : {true, false}) {
        PlugMail(good ? GoodMailLogin() : Script());
        heart.link.DefaultTimeout = 1234.75;
        heart.options.SMTPTimeout = "7";
        std::vector<double> seen;
        pump.whenWaiting = [&](double) {
            if (seen.empty() || seen.back() != heart.link.DefaultTimeout)
                seen.push_back(heart.link.DefaultTimeout);
        };
        TestMail();
        EXPECT_EQ(seen, (good ? std::vector<double>{7000, 1234} : std::vector<double>{7000}));
        EXPECT_EQ(heart.link.DefaultTimeout, 5000);
    }
}

TEST_F(SMTPLogin, AFormerTimeoutBeyondSixteenBitsIsKeptAsTheirLargest)
{
    PlugMail(GoodMailLogin());
    heart.link.DefaultTimeout = 1e9;
    double last = 0;
    pump.whenWaiting = [&](double) { last = heart.link.DefaultTimeout; };
    TestMail();
    EXPECT_EQ(last, 32767);
}

} // namespace
} // namespace harvelop::test
