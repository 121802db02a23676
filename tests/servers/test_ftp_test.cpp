// The login test of the FTP server: what is sent, shown and left behind.
#include "servers/servers_bench.h"

namespace harvelop::test
{
namespace
{

using Lines = std::vector<std::string>;
using testing::ElementsAre;

struct FTPLogin : testing::Test, ServersBench {
};

TEST_F(FTPLogin, NameAndPasswordAreTriedOnPort21AndNothingElseIs)
{
    PlugFTP(GoodFTP());
    dialogs.whileShown = [this] { EXPECT_FALSE(messages.Visible()); };
    heart.progress.ShowMessageForm();
    TestFTP();
    EXPECT_EQ(sockets.steps,
              (Lines{"1 connect ftp.example:21", "1 send USER abc\r\n", "1 send PASS secret\r\n", "1 close"}));
    EXPECT_EQ(OnlyBox().text, "Successfully Connected to FTP Server at ftp.example.     ");
    EXPECT_EQ(OnlyBox().title, " FTP Server Login Test");
    EXPECT_EQ(OnlyBox().icon, BoxIcon::Information);
    EXPECT_EQ(OnlyBox().buttons, BoxButtons::Ok);
    EXPECT_TRUE(heart.options.FTPChecked);
    EXPECT_FALSE(heart.options.SMTPChecked);
    EXPECT_EQ(panel.okFocused, 1);
    EXPECT_EQ(heart.link.LinkMode, "None");
    EXPECT_FALSE(heart.link.LoginTest);
}

TEST_F(FTPLogin, EveryStepShowsInTheProgressWindowAndInThePanelsCaption)
{
    PlugFTP(GoodFTP());
    TestFTP();
    EXPECT_THAT(messages.captions, ElementsAre("<- Finding FTP Server ...", "<- Found FTP Server at ftp.example",
                                               "<- Connecting to FTP Server ...", "<- Connected to FTP Server"));
    EXPECT_THAT(panel.captions, ElementsAre(" Finding FTP Server ...", " Found FTP Server at ftp.example",
                                            " Connecting to FTP Server ...", " Connected to FTP Server", PanelCaption));
}

TEST_F(FTPLogin, WhatIsSaidComesFromTheLanguageFileButForTheTitleOfSuccess)
{
    SpeakNumbers();
    PlugFTP(GoodFTP());
    TestFTP();
    EXPECT_THAT(messages.captions, ElementsAre("<- T312 ...", "<- T308 ftp.example", "<- T310 ...", "<- T311"));
    EXPECT_EQ(OnlyBox().text, "T570 ftp.example .     ");
    EXPECT_EQ(OnlyBox().title, " FTP Server Login Test");
}

struct Refusal {
    const char* name;
    Script script;
    const char* english;
    const char* spoken;
    const char* lastStep;
    Lines sent;
};

void PrintTo(const Refusal& refusal, std::ostream* out)
{
    *out << refusal.name;
}

const Refusal Refusals[] = {
    {"NoServer", {}, "Can't Find FTP Server at ftp.example.    ", "T309 ftp.example.    ", "T312 ...", {}},
    {"UnknownName",
     With(GoodFTP(), "USER abc", {"530 no\r\n"}),
     "User Name or Password is Incorrect.    ",
     "T572.    ",
     "T310 ...",
     {"USER abc\r\n"}},
    {"WrongPassword",
     With(GoodFTP(), "PASS secret", {"530 no\r\n"}),
     "User Name or Password is Incorrect.    ",
     "T573.    ",
     "T310 ...",
     {"USER abc\r\n", "PASS secret\r\n"}},
    // Who asks for no password is taken for one that refuses the name: meant.
    {"NoPasswordWanted",
     With(GoodFTP(), "USER abc", {"230 welcome\r\n"}),
     "User Name or Password is Incorrect.    ",
     "T572.    ",
     "T310 ...",
     {"USER abc\r\n"}},
};

struct FTPRefusal : FTPLogin, testing::WithParamInterface<Refusal> {
    FTPRefusal() { PlugFTP(GetParam().script); }
};

TEST_P(FTPRefusal, IsToldInEnglishAndNothingFurtherIsSent)
{
    TestFTP();
    EXPECT_EQ(OnlyBox().text, GetParam().english);
    EXPECT_EQ(OnlyBox().title, " FTP Server Login Test");
    EXPECT_EQ(OnlyBox().icon, BoxIcon::Critical);
    EXPECT_EQ(Sent(), GetParam().sent);
    EXPECT_FALSE(heart.options.FTPChecked);
    EXPECT_EQ(panel.caption, PanelCaption);
    EXPECT_TRUE(SocketsClosed());
    EXPECT_EQ(heart.link.LinkMode, "None");
}

TEST_P(FTPRefusal, IsToldInTheUsersLanguage)
{
    SpeakNumbers();
    TestFTP();
    EXPECT_EQ(OnlyBox().text, GetParam().spoken);
    EXPECT_EQ(OnlyBox().title, " T571");
    EXPECT_EQ(messages.Caption(), std::string("<- ") + GetParam().lastStep);
}

TEST_P(FTPRefusal, TakesTwoSecondsBehindItsBoxWhereAGoodTestTakesOne)
{
    double boxMs = 0;
    dialogs.whileShown = [&] { boxMs = pump.NowMs(); };
    TestFTP();
    EXPECT_NEAR(pump.NowMs() - boxMs, 2000, 0.001);
    EXPECT_EQ(panel.okFocused, 2);
    PlugFTP(GoodFTP());
    TestFTP();
    EXPECT_NEAR(pump.NowMs() - boxMs, 1000, 0.001);
}

INSTANTIATE_TEST_SUITE_P(Of, FTPRefusal, testing::ValuesIn(Refusals),
                         [](const auto& refusal) { return std::string(refusal.param.name); });

TEST_F(FTPLogin, ACodeAnywhereInTheAnswerCounts)
{
    PlugFTP(With(With(GoodFTP(), "USER abc", {"500 error 3310\r\n"}), "PASS secret", {"no 12302 here\r\n"}));
    TestFTP();
    EXPECT_TRUE(heart.options.FTPChecked);
}

TEST_F(FTPLogin, NotByTheUserTheBoxOfAFailureHasAnotherTitle)
{
    PlugFTP({});
    SpeakNumbers();
    dialogs.Expect(BoxAnswer::Ok);
    heart.ftpTest.PrepareFTPTest();
    heart.ftpTest.RunFTPTest();
    EXPECT_EQ(OnlyBox().title, " tallyCore : Harvel");
    EXPECT_EQ(OnlyBox().text, "T309 ftp.example.    ");
}

TEST_F(FTPLogin, DefaultTimeoutComesBackAsAWholeNumberOfSixteenBits)
{
    for (const auto& [before, after] : {std::pair{1234.75, 1234.0}, {5000.0, 5000.0}, {60000.0, 32767.0}}) {
        PlugFTP(GoodFTP());
        heart.options.FTPTimeout = "7";
        heart.link.DefaultTimeout = before;
        pump.whenWaiting = [this](double) { EXPECT_EQ(heart.link.DefaultTimeout, 7000); };
        TestFTP();
        EXPECT_EQ(heart.link.DefaultTimeout, after);
    }
}

TEST_F(FTPLogin, EmptyFieldsAreTriedAndTold)
{
    heart.options.FTPServername = heart.options.FTPUserName = heart.options.FTPPassword = "";
    TestFTP();
    EXPECT_EQ(sockets.steps.at(0), "1 connect :21");
    EXPECT_EQ(OnlyBox().text, "Can't Find FTP Server at .    ");
    sockets.Plug("", 21, std::make_shared<ScriptedServer>(With(GoodFTP(), "USER ", {"331 password?\r\n"})));
    TestFTP();
    EXPECT_THAT(Sent(), ElementsAre("USER \r\n", "PASS \r\n"));
}

} // namespace
} // namespace harvelop::test
