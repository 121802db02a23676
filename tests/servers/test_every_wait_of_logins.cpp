// Every wait of both login tests, interrupted: one after the other, until a run has no such wait.
#include "servers/servers_bench.h"

#include <functional>

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
    explicit Bench(const Run& run) : of(run)
    {
        heart.options.SMTPServerRequiresAuthentication = true;
        heart.options.SMTPAuthenticationType = run.type;
        of.mail ? PlugMail(run.script) : PlugFTP(run.script);
        dialogs.whileShown = [this] {
            dialogs.Expect(BoxAnswer::Ok);
            good = good || dialogs.shown.back().icon == BoxIcon::Information;
        };
    }
    void Go() { of.mail ? heart.smtpTest.TestByUser() : heart.ftpTest.TestByUser(); }
    bool Checked() const { return of.mail ? heart.options.SMTPChecked : heart.options.FTPChecked; }

    const Run& of;
    bool good = false; // a box has said so
};

class EveryWaitOfALogin : public testing::TestWithParam<Run>
{
protected:
    struct Moment {
        bool happened = false;
        double ms = 0;
        size_t sent = 0;
        size_t boxes = 0;
    };
    static constexpr double BeforeAnyAnswer = 0.5; // ms
    using Check = std::function<void(Bench&, const Moment&)>;

    static void Walk(const std::function<void(Bench&)>& event, const Check& check)
    {
        for (int wait = 1;; ++wait) {
            SCOPED_TRACE("wait " + std::to_string(wait));
            Bench bench(GetParam());
            Moment moment;
            int waits = 0;
            bench.pump.whenWaiting = [&](double ms) {
                if (++waits == wait)
                    bench.pump.After(std::min(ms / 2, BeforeAnyAnswer), [&] {
                        event(bench);
                        moment = {true, bench.pump.NowMs(), bench.Sent().size(), bench.dialogs.shown.size()};
                    });
            };
            bench.Go();
            if (waits < wait) {
                EXPECT_GT(wait, 2);
                return;
            }
            bench.pump.ServePending();
            ASSERT_TRUE(moment.happened);
            EXPECT_EQ(bench.Sent().size(), moment.sent);
            EXPECT_EQ(bench.dialogs.shown.size(), moment.boxes);
            EXPECT_EQ(bench.Checked(), bench.good);
            EXPECT_THAT(bench.files.writes, IsEmpty());
            EXPECT_EQ(bench.heart.link.DefaultTimeout, 5000);
            EXPECT_EQ(bench.heart.link.LinkMode, "None");
            EXPECT_FALSE(bench.heart.link.LoginTest);
            EXPECT_EQ(bench.panel.caption, ServersBench::PanelCaption);
            EXPECT_TRUE(bench.SocketsClosed());
            check(bench, moment);
            if (HasFailure())
                return; // the other waits would tell the same
        }
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
