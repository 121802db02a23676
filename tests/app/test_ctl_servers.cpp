// The login tests from the command line.
#include "ctl_bench.h"
#include "loading/far_end.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace harvelop::test
{

namespace
{

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

struct CtlServers : StoredCtl, testing::Test {
    using StoredCtl::Run;

    CtlServers()
    {
        File("options.ini") = "ShowMessages=1\r\nSMTPServerName=mail.example\r\nSMTPPort=2525\r\n"
                              "SMTPServerRequiresAuthentication=1\r\nSMTPAuthenticationType=LOGIN\r\n"
                              "SMTPUserName=abc\r\nSMTPPassword=secret\r\nSMTPTimeout=10\r\n"
                              "FTPServername=ftp.example\r\nFTPUserName=abc\r\nFTPPassword=secret\r\nFTPTimeout=10\r\n";
    }
    void Serve()
    {
        sockets.Plug("mail.example", 2525, mail);
        sockets.Plug("ftp.example", 21, ftp);
        mail->Answer("ehlo me", "250-mail.example\r\n250 AUTH LOGIN\r\n");
        mail->Answer("AUTH LOGIN", "334 VXNlcm5hbWU6\r\n");
        mail->Answer("YWJj=", "334 UGFzc3dvcmQ6\r\n"); // "abc"
        mail->Answer("c2VjcmV0", "235 go on\r\n");     // "secret"
        ftp->Answer("USER abc", "331 password?\r\n");
        ftp->Answer("PASS secret", "230 go on\r\n");
    }
    // As it comes once the connection stands.
    void Greet()
    {
        pump.After(700, [this] { sockets.made.back()->Arrive("220 ready\r\n"); });
    }
    // Nothing is stored and nothing opened but sockets that are gone by now; no password is told.
    int Test(const std::string& command)
    {
        const auto before = files.files;
        if (!sockets.places.empty())
            Greet();
        dialogs.Expect(BoxAnswer::Ok);
        const int code = Run({command});
        EXPECT_EQ(files.files, before);
        EXPECT_EQ(out.str(), "");
        EXPECT_TRUE(serial.events.empty());
        EXPECT_THAT(sockets.made, testing::Each(nullptr));
        EXPECT_THAT(said.str(), Not(HasSubstr("secret")));
        return code;
    }

    std::shared_ptr<FarEnd> mail = std::make_shared<FarEnd>();
    std::shared_ptr<FarEnd> ftp = std::make_shared<FarEnd>();
};

} // namespace

TEST_F(CtlServers, GoodLoginsAreTold)
{
    Serve();
    EXPECT_EQ(Test("test-smtp"), CtlDone) << said.str();
    EXPECT_THAT(said.str(), HasSubstr("Found SMTP Server at mail.example\n"));
    EXPECT_THAT(dialogs.shown.back().text, HasSubstr("Successfully Connected to SMTP Server at mail.example"));
    EXPECT_EQ(Test("test-ftp"), CtlDone) << said.str();
    EXPECT_THAT(said.str(), HasSubstr("Connected to FTP Server\n"));
    EXPECT_THAT(dialogs.shown.back().text, HasSubstr("Successfully Connected to FTP Server at ftp.example"));
}

TEST_F(CtlServers, RefusedLoginsFail)
{
    Serve();
    mail->Answer("c2VjcmV0", "535 no\r\n");
    ftp->Answer("PASS secret", "530 no\r\n");
    EXPECT_EQ(Test("test-smtp"), CtlFailed);
    EXPECT_THAT(dialogs.shown.back().text, HasSubstr("Account Name or Password is Incorrect"));
    EXPECT_EQ(Test("test-ftp"), CtlFailed);
    EXPECT_THAT(dialogs.shown.back().text, HasSubstr("User Name or Password is Incorrect"));
}

TEST_F(CtlServers, AServerThatIsNotThereFails)
{
    EXPECT_EQ(Test("test-smtp"), CtlFailed);
    EXPECT_THAT(dialogs.shown.back().text, HasSubstr("Can't Find SMTP Server at mail.example"));
    EXPECT_EQ(Test("test-ftp"), CtlFailed);
    EXPECT_THAT(dialogs.shown.back().text, HasSubstr("Can't Find FTP Server at ftp.example"));
}

TEST_F(CtlServers, AnInterruptEndsTheTestWithoutAReport)
{
    Serve();
    mail->Answer("ehlo me", "");
    ftp->Answer("USER abc", "");
    for (const char* command : {"test-smtp", "test-ftp"}) {
        const double start = pump.NowMs();
        interruptMs = 1500;
        Greet();
        Run({command});
        EXPECT_LT(pump.NowMs() - start, 2500) << command;
        EXPECT_TRUE(dialogs.shown.empty());
        EXPECT_THAT(sockets.made, testing::Each(nullptr));
    }
    EXPECT_THAT(sockets.steps, Not(Contains(HasSubstr("Q /H/r"))));
}

TEST_F(CtlServers, WithoutReadableOptionsThereIsNothingToTry)
{
    files.unreadable.insert(OptionsIni);
    for (const char* command : {"test-smtp", "test-ftp"})
        EXPECT_EQ(Refusal({command}), "The file /home/user/loggers/options.ini can't be read.\n");
    files.unreadable.clear();
    files.files.erase(OptionsIni);
    for (const char* command : {"test-smtp", "test-ftp"})
        EXPECT_EQ(Refusal({command}), "There is no file /home/user/loggers/options.ini.\n");
    EXPECT_TRUE(sockets.made.empty());
}

} // namespace harvelop::test
