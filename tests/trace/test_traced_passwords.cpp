// Every road by which a password leaves the program or comes back, on the whole program.
#include "servers/servers_bench.h"
#include "simulator/simulated_modem.h"
#include "trace/traced_ctl.h"

namespace harvelop::test
{

namespace
{

using testing::HasSubstr;
using testing::Not;

constexpr const char* Password = "GREENHOUSE";

struct PasswordsTest : testing::Test {
    // The trace holds the masked road, and neither the password nor any four characters of it in a row.
    static void ExpectMasked(const std::string& trace, const std::string& secret = Password)
    {
        EXPECT_THAT(trace, HasSubstr("\\*"));
        for (size_t at = 0; at + 4 <= secret.size(); ++at)
            EXPECT_THAT(trace, Not(HasSubstr(secret.substr(at, 4))));
    }
    static LoggerRecord WithPassword(LoggerRecord record, const std::string& password = Password)
    {
        record.LoggerPassword = password;
        return record;
    }
};

TEST_F(PasswordsTest, GivenToASearch)
{
    TracedCtl ctl;
    ctl.serial.Plug(3, Simulated("KR305", "3", Password), "1200");
    EXPECT_EQ(ctl.RunTraced({"find", "--port", "3", "--yes", "--password", Password}), CtlDone) << ctl.said.str();
    EXPECT_THAT(ctl.Trace(), HasSubstr("com3 in \"Accepted\\r\\n\""));
    ExpectMasked(ctl.Trace());
}

TEST_F(PasswordsTest, AnsweredToAQuestionEvenIfItIsWrong)
{
    TracedCtl ctl;
    ctl.serial.Plug(3, Simulated("KR305", "3", "another"), "1200");
    ctl.typed = Password;
    ctl.RunTraced({"find", "--port", "3"});
    EXPECT_THAT(ctl.Trace(), Not(HasSubstr("Accepted")));
    ExpectMasked(ctl.Trace());
}

TEST_F(PasswordsTest, KeptInARecordForAComPortAndEchoed)
{
    TracedCtl ctl({WithPassword(SerialLogger())});
    LoggerConfig config;
    config.model = "KR200";
    config.series = "2";
    config.password = Password;
    config.failure = Failure::Echoes; // each character, at once
    config.chunk = 1;
    config.gapMs = 5;
    ctl.serial.Plug(1, std::make_shared<SimulatedLogger>(config), "9600");
    ctl.RunTraced({"connect", "1"});
    EXPECT_THAT(ctl.Trace(), HasSubstr("com1 in \"\\*\\rA\""));
    ExpectMasked(ctl.Trace());
}

TEST_F(PasswordsTest, KeptInARecordForAModemAndForANetwork)
{
    TracedCtl ctl({WithPassword(ModemLogger()), WithPassword(NetworkLogger())});
    ModemConfig modem;
    modem.baud = 19200;
    ctl.serial.Plug(3,
                    std::make_shared<SimulatedModem>(modem, PhoneBook{{"0,,12345", Simulated("KR305", "3", Password)}}),
                    "19200");
    ctl.sockets.Plug("10.0.0.5", 3000, Simulated("KR40", "", Password));
    EXPECT_EQ(ctl.RunTraced({"connect", "1"}), CtlDone) << ctl.said.str();
    ExpectMasked(ctl.Trace());
    std::filesystem::remove(ctl.path);
    EXPECT_EQ(ctl.RunTraced({"connect", "2"}), CtlDone) << ctl.said.str();
    ExpectMasked(ctl.Trace());
}

TEST_F(PasswordsTest, EnteredIntoTheAddDialogThatKeepsThem)
{
    TracedCtl ctl;
    ctl.serial.Plug(1, Simulated("KR200", "2", Password), "9600");
    EXPECT_EQ(ctl.RunTraced(
                  {"add", "--model", "KR200", "--series", "2", "--com", "1", "--baud", "9600", "--password", Password}),
              CtlDone)
        << ctl.said.str();
    EXPECT_EQ(ctl.RunTraced({"test", "1"}), CtlDone) << ctl.said.str();
    ExpectMasked(ctl.Trace());
}

TEST_F(PasswordsTest, TypedIntoATerminalRightOrWrong)
{
    TracedCtl ctl({SerialLogger()});
    ctl.serial.Plug(1, Simulated("KR200", "2", Password), "9600");
    ctl.input.lines = {"TANKHOUSE", Password, "TEST0"};
    ctl.RunTraced({"terminal", "1"});
    EXPECT_THAT(ctl.Trace(), HasSubstr("com1 in \"Accepted\\r\\n\""));
    EXPECT_THAT(ctl.Trace(), HasSubstr("com1 in \"T,"));
    ExpectMasked(ctl.Trace());
    ExpectMasked(ctl.Trace(), "TANKHOUSE");
}

TEST_F(PasswordsTest, SentAsALineToALoggerThatIsOpenAlready)
{
    TracedCtl ctl({NetworkLogger()});
    LoggerConfig config;
    config.model = "KR40";
    config.password = Password;
    const auto logger = std::make_shared<SimulatedLogger>(config);
    logger->Receive(0, std::string(Password) + "\r\n"); // somebody else has opened it
    logger->Transmit(0);
    ctl.sockets.Plug("10.0.0.5", 3000, logger);
    EXPECT_EQ(ctl.RunTraced({"send", "1", Password}), CtlDone) << ctl.said.str();
    EXPECT_THAT(ctl.Trace(), HasSubstr("tcp1 in \"Accepted\\r\\n\""));
    ExpectMasked(ctl.Trace());
}

struct LoginsTest : PasswordsTest {
    LoginsTest()
    {
        ctl.File("options.ini") = "Icons=1\r\nSMTPServerName=mail.example\r\nSMTPPort=2525\r\nSMTPTimeout=5\r\n"
                                  "SMTPServerRequiresAuthentication=1\r\nSMTPAuthenticationType=LOGIN\r\n"
                                  "SMTPUserName=abc\r\nSMTPPassword=secret\r\nFTPServername=ftp.example\r\n"
                                  "FTPTimeout=5\r\nFTPUserName=abc\r\nFTPPassword=secret\r\n";
    }
    void Plug(const std::string& host, int port, const Script& script)
    {
        ctl.sockets.Plug(host, port, std::make_shared<ScriptedServer>(script));
    }
    void ExpectNoSecret() const
    {
        ExpectMasked(ctl.Trace(), "secret");
        ExpectMasked(ctl.Trace(), "c2VjcmV0");
    }

    TracedCtl ctl;
};

TEST_F(LoginsTest, ToAMailServer)
{
    Plug("mail.example", 2525, GoodMailLogin());
    EXPECT_EQ(ctl.RunTraced({"test-smtp"}), CtlDone) << ctl.said.str();
    EXPECT_THAT(ctl.Trace(), HasSubstr("tcp1 in \"235 go on\\r\\n\""));
    ExpectNoSecret();
}

TEST_F(LoginsTest, ToAMailServerThatSaysThemBackInPieces)
{
    Script script = GoodMailLogin();
    script["c2VjcmV0"] = {"535 c2VjcmV0 is not\r\n535 secret\r\n", 20, 30};
    Plug("mail.example", 2525, script);
    EXPECT_EQ(ctl.RunTraced({"test-smtp"}), CtlFailed);
    EXPECT_THAT(ctl.Trace(), HasSubstr("tcp1 in \"5\""));
    ExpectNoSecret();
}

TEST_F(LoginsTest, ToAFileServerThatSaysThemBack)
{
    Plug("ftp.example", 21, With(GoodFTP(), "PASS secret", {"230 secret is right\r\n"}));
    EXPECT_EQ(ctl.RunTraced({"test-ftp"}), CtlDone) << ctl.said.str();
    EXPECT_THAT(ctl.Trace(), HasSubstr("tcp1 out \"PASS \\*\\r\\n\""));
    EXPECT_THAT(ctl.Trace(), HasSubstr("tcp1 in \"230 \\*\\r\\n\""));
    ExpectMasked(ctl.Trace(), "secret");
}

} // namespace

} // namespace harvelop::test
