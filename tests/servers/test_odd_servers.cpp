// Servers that refuse, stall, drip, flood or close, time-outs that are none, and what must not leak: for both logins.
#include "app/exit_paths.h"
#include "servers/servers_bench.h"
#include "support/wait_walk.h"

namespace harvelop::test
{
namespace
{

using Lines = std::vector<std::string>;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

struct Login {
    const char* name;
    const char* place;
    int port;
    void (*start)(Program&);
    std::string Options::*timeout;
    bool Options::*checked;
    Script good;
    const char* notFound; // the box for a server that does not greet
    const char* refused;  // and for one that says nothing behind its greeting
    const char* first;    // the line that follows the greeting
};

void PrintTo(const Login& login, std::ostream* out)
{
    *out << login.name;
}

const Login Logins[] = {
    {"Mail", "mail.example", 2525, [](Program& heart) { heart.smtpTest.TestByUser(); }, &Options::SMTPTimeout,
     &Options::SMTPChecked, GoodMailLogin(), "Can't Find SMTP Server at mail.example.    ",
     "Can't connect to SMTP Server at mail.example.    ", "ehlo me\r\n"},
    {"FTP", "ftp.example", 21, [](Program& heart) { heart.ftpTest.TestByUser(); }, &Options::FTPTimeout,
     &Options::FTPChecked, GoodFTP(), "Can't Find FTP Server at ftp.example.    ",
     "User Name or Password is Incorrect.    ", "USER abc\r\n"},
};

struct OddServer : ServersBench, testing::TestWithParam<Login> {
    OddServer() { heart.options.SMTPServerRequiresAuthentication = true; }

    std::string Place() const { return std::string(GetParam().place) + ":" + std::to_string(GetParam().port); }
    void Plug(const Script& script)
    {
        sockets.Plug(GetParam().place, GetParam().port, std::make_shared<ScriptedServer>(script));
    }
    // Runs the test, which ends in one box; gives when that showed.
    double Run()
    {
        double boxMs = 0;
        dialogs.whileShown = [&] { boxMs = pump.NowMs(); };
        dialogs.Expect(BoxAnswer::Ok);
        GetParam().start(heart);
        EXPECT_EQ(heart.link.LinkMode, "None");
        EXPECT_EQ(heart.link.DefaultTimeout, 5000);
        EXPECT_EQ(panel.caption, PanelCaption);
        EXPECT_FALSE(heart.link.LoginTest);
        return boxMs;
    }
    bool Good() const { return heart.options.*GetParam().checked; }
};

TEST_P(OddServer, ThatRefusesTheConnectionIsWaitedForAndToldOnce)
{
    EXPECT_NEAR(Run(), 5000, 1);
    EXPECT_EQ(OnlyBox().text, GetParam().notFound);
    EXPECT_EQ(sockets.steps.at(0), "1 connect " + Place());
    EXPECT_THAT(Sent(), IsEmpty());
}

TEST_P(OddServer, ThatNeitherAcceptsNorRefusesIsWaitedForAndToldOnce)
{
    sockets.places[Place()] = {nullptr, false};
    EXPECT_NEAR(Run(), 5000, 1);
    EXPECT_EQ(OnlyBox().text, GetParam().notFound);
    EXPECT_THAT(Sent(), IsEmpty());
}

TEST_P(OddServer, ThatAcceptsAndIsSilentIsNotFound)
{
    Plug({});
    EXPECT_NEAR(Run(), 5000, 1);
    EXPECT_EQ(OnlyBox().text, GetParam().notFound);
}

TEST_P(OddServer, ThatGreetsWithAnotherCodeIsNotFound)
{
    Plug(With(GetParam().good, Greeting, {"421 too busy\r\n"}));
    EXPECT_NEAR(Run(), 5000, 1);
    EXPECT_EQ(OnlyBox().text, GetParam().notFound);
    EXPECT_THAT(Sent(), IsEmpty());
}

TEST_P(OddServer, WhoseLineHasNoEndHasNotAnswered)
{
    Plug(With(GetParam().good, Greeting, {"220 ready"}));
    Run();
    EXPECT_EQ(OnlyBox().text, GetParam().notFound);
}

TEST_P(OddServer, ThatStallsBehindItsGreetingIsWaitedFor)
{
    Plug({{Greeting, {"220 ready\r\n"}}});
    EXPECT_NEAR(Run(), 501 + 5000, 1);
    EXPECT_EQ(OnlyBox().text, GetParam().refused);
    EXPECT_THAT(Sent(), ElementsAre(GetParam().first));
}

TEST_P(OddServer, ThatDripsIsGoodWhileEachAnswerComesInTime)
{
    Script script = GetParam().good;
    for (auto& [line, answer] : script)
        answer.dripMs = 100;
    Plug(script);
    Run();
    EXPECT_TRUE(Good());
}

TEST_P(OddServer, ThatDripsTooSlowlyIsNotFound)
{
    Plug(With(GetParam().good, Greeting, {"220 ready\r\n", 20, 600}));
    EXPECT_NEAR(Run(), 5000, 1);
    EXPECT_EQ(OnlyBox().text, GetParam().notFound);
}

// More than the receive window holds comes before each answer.
TEST_P(OddServer, ThatFloodsIsGoodOnceTheAnswerComesBehindTheFlood)
{
    Script script = GetParam().good;
    for (auto& [line, answer] : script)
        answer = {std::string(70000, 'x') + "\r\n" + answer.text, 20, 1, false, 1000};
    Plug(script);
    Run();
    EXPECT_TRUE(Good());
    EXPECT_TRUE(heart.exchange.txtCharacterWindow.WindowOverflowed);
}

TEST_P(OddServer, WhoseFloodNeverEndsIsGivenUpInTime)
{
    Plug({});
    std::function<void()> flood = [&] {
        if (!sockets.made.empty() && sockets.made.back() &&
            sockets.made.back()->State() == SocketControl::Condition::Connected)
            sockets.made.back()->Arrive(std::string(8000, 'x'));
        if (pump.NowMs() < 10000)
            pump.After(10, flood);
    };
    flood();
    EXPECT_NEAR(Run(), 5000, 20);
    EXPECT_EQ(OnlyBox().text, GetParam().notFound);
    EXPECT_LT(heart.exchange.txtCharacterWindow.Text().size(), ReceiveWindow::OverflowLength);
}

TEST_P(OddServer, ThatClosesBehindItsGreetingIsSentNothingMore)
{
    Plug(With(GetParam().good, Greeting, {"220 ready\r\n", 20, 0, true}));
    EXPECT_NEAR(Run(), 501 + 5000, 1);
    EXPECT_EQ(OnlyBox().text, GetParam().refused);
    EXPECT_THAT(Sent(), IsEmpty());
}

TEST_P(OddServer, ThatClosesInsteadOfAGreetingIsNotFound)
{
    Plug({{Greeting, {"", 20, 0, true}}});
    EXPECT_NEAR(Run(), 5000, 1);
    EXPECT_EQ(OnlyBox().text, GetParam().notFound);
    EXPECT_THAT(Sent(), IsEmpty());
}

// Each answer at once when connected: what was to be said later has been said before.
TEST_P(OddServer, ThatSaysAllAnswersInItsGreetingHasAnsweredNothing)
{
    std::string all;
    for (const auto& [line, answer] : GetParam().good)
        all += answer.text;
    Plug({{Greeting, {all}}});
    Run();
    EXPECT_EQ(OnlyBox().text, GetParam().refused);
    EXPECT_THAT(Sent(), ElementsAre(GetParam().first));
}

TEST_P(OddServer, IsNotMistakenForWhatWasReceivedBefore)
{
    heart.exchange.txtCharacterWindow.Set("220\r250\r331\r230\r");
    Plug({});
    Run();
    EXPECT_EQ(OnlyBox().text, GetParam().notFound);
}

// No line goes to a socket that is still connecting, and the empty one to a socket that stands already.
TEST_P(OddServer, GetsABareLineEndOnlyIfTheConnectionStandsByThen)
{
    Plug(GetParam().good);
    Run();
    EXPECT_EQ(Sent().front(), GetParam().first);
    Plug(GetParam().good);
    sockets.places[Place()].atOnce = true;
    sockets.steps.clear();
    Run();
    EXPECT_EQ(Sent().at(0), "\r\n");
    EXPECT_EQ(Sent().at(1), GetParam().first);
    EXPECT_TRUE(Good());
}

TEST_P(OddServer, IsNotWaitedForWithoutATimeout)
{
    for (const char* timeout : {"", "0", "abc", "-5", "0.0"}) {
        SCOPED_TRACE(timeout);
        Plug(GetParam().good);
        heart.options.*GetParam().timeout = timeout;
        const double before = pump.NowMs();
        EXPECT_EQ(Run(), before);
        EXPECT_EQ(dialogs.shown.back().text, GetParam().notFound);
    }
    EXPECT_THAT(Sent(), IsEmpty());
    EXPECT_FALSE(Good());
}

TEST_P(OddServer, IsWaitedForAsManySecondsAsTheTimeoutSays)
{
    for (const auto& [timeout, ms] : {std::pair{"0.5", 500.0}, {"3", 3000.0}, {"999", 999000.0}, {" 2 ", 2000.0}}) {
        Plug({});
        heart.options.*GetParam().timeout = timeout;
        const double before = pump.NowMs();
        EXPECT_NEAR(Run() - before, ms, 2) << timeout;
    }
}

TEST_P(OddServer, IsReachedWithoutAnyWindow)
{
    heart.forms.options = nullptr;
    heart.progress.Loaded(nullptr);
    Plug(GetParam().good);
    Run();
    EXPECT_TRUE(Good());
}

TEST_P(OddServer, NeverMakesThePasswordShowAnywhere)
{
    const std::string encoded = "c2VjcmV0";
    std::vector<Script> scripts = {GetParam().good};
    for (const auto& [line, answer] : GetParam().good)
        scripts.push_back(Without(GetParam().good, line));
    for (const Script& script : scripts) {
        Plug(script);
        Run();
    }
    EXPECT_EQ(dialogs.shown.size(), scripts.size());
    EXPECT_THAT(Told(), Not(HasSubstr("secret")));
    EXPECT_THAT(Told(), Not(HasSubstr(encoded)));
    EXPECT_THAT(files.writes, IsEmpty());
}

// The menu's Exit in each wait of a good test: a server is no logger.
TEST_P(OddServer, IsNeverSentTheLineThatLoggersGetAtTheEnd)
{
    struct Bench : ServersBench {
        struct Moment {
        };
        Moment Now() const { return {}; }
    };
    const auto plug = [](Bench& t) {
        t.heart.options.SMTPServerRequiresAuthentication = true;
        t.sockets.Plug(GetParam().place, GetParam().port, std::make_shared<ScriptedServer>(GetParam().good));
        t.dialogs.whileShown = [&t] { t.dialogs.Expect(BoxAnswer::Ok); };
    };
    const auto start = [](Bench& t) { GetParam().start(t.heart); };
    const auto exit = [](Bench& t) { mpopExit_Click(t.heart); };
    WaitWalk<Bench>{plug, start, exit}.Walk([](Bench& t, const Bench::Moment&) {
        for (const std::string& line : t.Sent())
            EXPECT_THAT(line, Not(HasSubstr("Q /H/r")));
        EXPECT_TRUE(t.SocketsClosed());
    });
}

TEST_P(OddServer, LeavesALoggersLinkItsLineAtTheEnd)
{
    Plug(GetParam().good);
    Run();
    sockets.places["10.0.0.5:3000"] = {};
    heart.ethernet.OpenEthernet("10.0.0.5", "3000", "TCP");
    heart.waiting.WaitMs(600);
    sockets.steps.clear();
    UnloadTaskbar(heart);
    EXPECT_THAT(Sent(), ElementsAre("Q /H/r\r\n\r\n"));
}

INSTANTIATE_TEST_SUITE_P(Of, OddServer, testing::ValuesIn(Logins),
                         [](const auto& login) { return std::string(login.param.name); });

TEST(OddPorts, WhatIsNoPortIsTriedAsOneThatNobodyListensOn)
{
    for (const char* port : {"", "0", "abc", "70000"}) {
        ServersBench bench;
        bench.heart.options.SMTPPort = port;
        bench.TestMail();
        EXPECT_EQ(bench.sockets.steps.at(0), "1 connect mail.example:0");
        EXPECT_EQ(bench.OnlyBox().text, "Can't Find SMTP Server at mail.example.    ");
    }
}

} // namespace
} // namespace harvelop::test
