// Every wait of both login tests, interrupted: one after the other, until a run has no such wait.
#include "servers/servers_bench.h"
#include "support/wait_walk.h"

namespace harvelop::test
{
namespace
{

using testing::IsEmpty;

struct Run {
    const char* name;
    bool mail;
    const char* type; // of the mail login
    Script script;
};

void PrintTo(const Run& run, std::ostream* out)
{
    *out << run.name;
}

const Run Runs[] = {
    {"Mail", true, "LOGIN", GoodMailLogin()},
    {"MailOfAnotherType", true, "", GoodMail()},
    {"MailNotFound", true, "LOGIN", {}},
    {"MailNotKnown", true, "LOGIN", Without(GoodMailLogin(), "ehlo me")},
    {"MailWithoutLogin", true, "LOGIN", GoodMail()},
    {"MailWrongName", true, "LOGIN", Without(GoodMailLogin(), "YWJj=")},
    {"MailWrongPassword", true, "LOGIN", Without(GoodMailLogin(), "c2VjcmV0")},
    {"MailPlain", true, "PLAIN", GoodMail()},
    {"MailCramMd5", true, "CRM-MD5", GoodMail()},
    {"FTP", false, "", GoodFTP()},
    {"FTPNotFound", false, "", {}},
    {"FTPUnknownName", false, "", Without(GoodFTP(), "USER abc")},
    {"FTPWrongPassword", false, "", Without(GoodFTP(), "PASS secret")},
};

struct Bench : ServersBench {
    void Use(const Run& run)
    {
        heart.options.SMTPServerRequiresAuthentication = true;
        heart.options.SMTPAuthenticationType = run.type;
        run.mail ? PlugMail(run.script) : PlugFTP(run.script);
        dialogs.whileShown = [this] {
            dialogs.Expect(BoxAnswer::Ok);
            good = good || dialogs.shown.back().icon == BoxIcon::Information;
        };
    }
    void Go(const Run& run) { run.mail ? heart.smtpTest.TestByUser() : heart.ftpTest.TestByUser(); }
    bool Checked(const Run& run) const { return run.mail ? heart.options.SMTPChecked : heart.options.FTPChecked; }

    struct Moment {
        double ms = 0;
        size_t sent = 0;
        size_t boxes = 0;
    };
    Moment Now() const { return {pump.NowMs(), Sent().size(), dialogs.shown.size()}; }

    bool good = false; // a box has said so
};

class EveryWaitOfALogin : public testing::TestWithParam<Run>
{
protected:
    using Moment = Bench::Moment;

    static void Walk(const WaitWalk<Bench>::Step& event, const WaitWalk<Bench>::Check& check)
    {
        const WaitWalk<Bench> walk{[](Bench& t) { t.Use(GetParam()); }, [](Bench& t) { t.Go(GetParam()); }, event};
        walk.Walk([&](Bench& t, const Moment& then) {
            EXPECT_EQ(t.Sent().size(), then.sent);
            EXPECT_EQ(t.dialogs.shown.size(), then.boxes);
            EXPECT_EQ(t.Checked(GetParam()), t.good);
            EXPECT_THAT(t.files.writes, IsEmpty());
            EXPECT_EQ(t.heart.link.DefaultTimeout, 5000);
            EXPECT_EQ(t.heart.link.LinkMode, "None");
            EXPECT_FALSE(t.heart.link.LoginTest);
            EXPECT_EQ(t.panel.caption, ServersBench::PanelCaption);
            EXPECT_TRUE(t.SocketsClosed());
            check(t, then);
        });
    }
    // What is under way goes on to its end: the connection's half second, and at most two closings of a second each.
    static void EndsSoon(Bench& bench, const Moment& moment) { EXPECT_LE(bench.pump.NowMs(), moment.ms + 3500); }
};

} // namespace

TEST_P(EveryWaitOfALogin, EndsAtOnceWithTheProgram)
{
    Walk([](Bench& t) { t.heart.end.EndProgram(); },
         [](Bench& t, const Moment& then) { EXPECT_EQ(t.pump.NowMs(), then.ms); });
}

TEST_P(EveryWaitOfALogin, EndsQuietlyWhenItIsAborted)
{
    Walk([](Bench& t) { t.heart.state.AbortWait = true; }, EndsSoon);
}

TEST_P(EveryWaitOfALogin, EndsQuietlyOnceTheOptionsPanelIsClosed)
{
    Walk([](Bench& t) { t.heart.state.StopLinkWork = true; }, [](Bench&, const Moment&) {});
}

INSTANTIATE_TEST_SUITE_P(Of, EveryWaitOfALogin, testing::ValuesIn(Runs),
                         [](const auto& run) { return std::string(run.param.name); });

} // namespace harvelop::test
