// The program as a process of its own, as people and other tests use it.

#include "simulator/tallysim_bench.h"

#include <gmock/gmock.h>

namespace harvelop::test
{

namespace
{

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::StartsWith;

const std::string Del = "\x7f\r\n";

} // namespace

TEST_F(Tallysim, TellsWhatStandsWhere)
{
    const auto places = Simulate(R"({"loggers": [
        {"model": "KR200", "com": 1, "name": "gate"},
        {"model": "KR400", "com": 9, "baud": 57600, "password": "sesame", "failure": "SlowBytes"},
        {"model": "KR40", "port": "tcp:0"}]})");
    ASSERT_EQ(places.size(), 3U) << told << Errors();
    EXPECT_THAT(places.at("HARVELOP_COM1"), StartsWith("/dev/pts/"));
    EXPECT_THAT(places.at("TALLYSIM_TCP_3"), StartsWith("127.0.0.1:"));
    EXPECT_THAT(told, HasSubstr("KR200 Series 1  gate\n"));
    EXPECT_THAT(told, HasSubstr("com 9   " + places.at("HARVELOP_COM9")));
    EXPECT_THAT(told, HasSubstr("57600    KR400  with a password  SlowBytes\n"));
    EXPECT_THAT(told, testing::Not(HasSubstr("sesame")));
    EXPECT_EQ(End(SIGTERM), 0);
}

TEST_F(Tallysim, WithoutEnvItTellsNoAssignments)
{
    Start({File(R"({"loggers": [{"model": "KR40", "com": 4}]})")});
    told = ReadUntil(output.Get(), "ready\n");
    EXPECT_THAT(told, StartsWith("com 4   /dev/pts/"));
    EXPECT_THAT(told, testing::Not(HasSubstr("=")));
    EXPECT_EQ(End(SIGINT), 0);
}

TEST_F(Tallysim, ModemCallsTheLoggersOfItsPhoneBook)
{
    const auto places = Simulate(R"({"loggers": [{"model": "KR40"}], "modem": {"com": 4, "connect": 10,
        "link": ")" + (folder / "modem").string() +
                                 R"(", "phoneBook": {"555": {"model": "KR200", "series": "2"}}}})");
    ASSERT_EQ(places.size(), 1U) << told << Errors();
    EXPECT_EQ(places.at("HARVELOP_COM4"), (folder / "modem").string());
    EXPECT_THAT(told, HasSubstr("9600     modem"));
    EXPECT_THAT(told, HasSubstr("555  KR200\n"));
    const auto line = OpenTerminal(places.at("HARVELOP_COM4"), 9600);
    EXPECT_EQ(Ask(line, "ate0\r\n", "OK\r\n"), "ate0\r\n\r\nOK\r\n");
    EXPECT_EQ(Ask(line, "atdt555\r\n", "9600\r\n"), "\r\nCONNECT 9600\r\n");
    EXPECT_EQ(Ask(line, Del, Marks), Marks);
    EXPECT_THAT(Ask(line, "TEST0\r\n", "\n"), HasSubstr(":52,5"));
}

TEST_F(Tallysim, LoggersOnTerminalsAnswerATheirOwnSpeed)
{
    const auto places = Simulate(R"({"loggers": [
        {"model": "KR200", "series": "2", "com": 1, "baud": 9600},
        {"model": "KR40", "com": 2, "baud": 56000, "serial": "424242"}]})");
    ASSERT_EQ(places.size(), 2U) << told << Errors();
    const auto older = OpenTerminal(places.at("HARVELOP_COM1"), 9600);
    EXPECT_EQ(Ask(older, Del + Del, Marks + Marks), Marks + Marks);
    EXPECT_THAT(Ask(older, "TEST0\r\n", "\n"), HasSubstr(":52,5"));
    const auto newer = OpenTerminal(places.at("HARVELOP_COM2"), 56000);
    EXPECT_THAT(Ask(newer, "CHARAC1\r\n", "\n"), HasSubstr("424242\r\n"));
}

TEST_F(Tallysim, ALoggerHearsNothingAtAnotherSpeed)
{
    const auto places = Simulate(R"({"loggers": [
        {"model": "KR200", "com": 1, "baud": 56000}, {"model": "KR40", "com": 2}]})");
    ASSERT_EQ(places.size(), 2U) << told << Errors();
    const auto line = OpenTerminal(places.at("HARVELOP_COM1"), 57600);
    const auto other = OpenTerminal(places.at("HARVELOP_COM2"), 9600);
    EXPECT_TRUE(Send(line, Del));
    // One thread serves both lines: when the other one has answered some times, this one has been served as well.
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(Ask(other, Del, Marks), Marks);
    EXPECT_TRUE(SetSpeed(line, 56000));
    EXPECT_THAT(Ask(line, "TEST0\r\n", "\n"), StartsWith("T,"));
}

TEST_F(Tallysim, ALoggerOnTcpAnswers)
{
    const auto places = Simulate(R"({"loggers": [{"model": "KR45", "port": "tcp:0"}]})");
    ASSERT_EQ(places.size(), 1U) << told << Errors();
    for (int i = 0; i < 200; ++i) {
        const auto client = Connect(places.at("TALLYSIM_TCP_1"));
        EXPECT_THAT(Ask(client, "TEST0\r\n", "\n"), StartsWith("T,tallyCore 45 Version "));
    }
}

TEST_F(Tallysim, TranscriptHoldsWhatPassesAndNoPassword)
{
    const fs::path transcript = folder / "transcript";
    const auto places = Simulate(R"({"loggers": [{"model": "KR45", "port": "tcp:0"},
        {"model": "KR45", "port": "tcp:0", "password": "sesame"}],
        "modem": {"com": 4, "connect": 10, "phoneBook": {"555": {"model": "KR40"}}},
        "transcript": ")" + transcript.string() +
                                 R"("})");
    ASSERT_EQ(places.size(), 3U) << told << Errors();
    EXPECT_EQ(Ask(Connect(places.at("TALLYSIM_TCP_1")), "\xff\r\n" + Del, Marks), Marks);
    EXPECT_EQ(Ask(Connect(places.at("TALLYSIM_TCP_2")), "sesame\r\n", "\n"), "Accepted\r\n");
    const auto line = OpenTerminal(places.at("HARVELOP_COM4"), 9600);
    Ask(line, "ate0\r\n", "OK\r\n");
    Ask(line, "atdt555\r\n", "9600\r\n");
    EXPECT_EQ(Ask(line, Del, Marks), Marks);
    EXPECT_EQ(End(SIGTERM), 0);
    std::ifstream file(transcript);
    const std::string text(std::istreambuf_iterator<char>(file), {});
    EXPECT_THAT(
        text,
        StartsWith("[\"logger 1\",\"in\",\"\xef\xbf\xbd\\r\\n\x7f\\r\\n\"]\n[\"logger 1\",\"out\",\"<<\\r\\n\"]\n"));
    EXPECT_THAT(text, HasSubstr("[\"modem\",\"in\",\"atdt555\\r\\n\"]\n[\"modem\",\"out\",\"\\r\\nCONNECT 9600"));
    EXPECT_THAT(text, HasSubstr("[\"number 555\",\"out\",\"<<\\r\\n\"]\n"));
    EXPECT_THAT(text, testing::Not(HasSubstr("logger 2")));
    EXPECT_THAT(text, testing::Not(HasSubstr("sesame")));
}

TEST_F(Tallysim, MemoryFileAlwaysTellsWhatTheLoggersHold)
{
    const fs::path path = folder / "memory";
    const auto held = [&] {
        std::ifstream file(path);
        return std::string(std::istreambuf_iterator<char>(file), {});
    };
    const auto places = Simulate(R"({"loggers": [{"model": "KR45", "port": "tcp:0", "jobs": ["*PUMP+"]}],
        "modem": {"com": 4, "phoneBook": {"555": {"model": "KR200", "card": true, "flash": "\u0000\u00ff"}}},
        "memory": ")" + path.string() +
                                 R"("})");
    ASSERT_EQ(places.size(), 2U) << told << Errors();
    EXPECT_EQ(held(),
              "{\"logger 1\":{\"bootstrap\":false,\"card\":false,\"cardProgram\":\"\",\"data\":false,\"flash\":\"\","
              "\"flashOnReset\":\"Keep\",\"halted\":false,\"jobs\":[{\"current\":true,\"hasData\":true,"
              "\"name\":\"PUMP\",\"text\":\"\"}],\"program\":\"\",\"resets\":0,\"runOnReset\":\"\"},"
              "\"number 555\":{\"bootstrap\":false,\"card\":true,\"cardProgram\":\"\",\"data\":false,"
              "\"flash\":\"\\u0000\xc3\xbf\",\"flashOnReset\":\"Keep\",\"halted\":false,\"jobs\":[],"
              "\"program\":\"\",\"resets\":0,\"runOnReset\":\"\"}}\n");
    const auto client = Connect(places.at("TALLYSIM_TCP_1"));
    Ask(client, "END /E/h/M/U CSCANS CALARMS G\r\n13SV\r\nRA\xff\xc0\r\n\r\nRB\r\n", "RB\r\n");
    EXPECT_THAT(held(), HasSubstr("\"program\":\"RA\xc3\xbf\xc3\x80\\n\\nRB\\n\""));
    EXPECT_EQ(Ask(client, Del, Marks), Marks);
    EXPECT_THAT(Ask(client, "DIRJOBS\r\n", "PUMP\r\n"), HasSubstr("*PUMP"));
    Ask(client, "H\r\nDELDATA*\r\nDELJOB*\r\n", "done\r\n");
    EXPECT_THAT(held(), HasSubstr("\"jobs\":[],\"program\":\"RA"));
}

TEST_F(Tallysim, PasswordIsWantedOverTheLineToo)
{
    const auto places = Simulate(R"({"loggers": [{"model": "KR23", "com": 3, "baud": 1200, "password": "sesame"}]})");
    ASSERT_EQ(places.size(), 1U) << told << Errors();
    const auto line = OpenTerminal(places.at("HARVELOP_COM3"), 1200);
    EXPECT_EQ(Ask(line, "TEST0\r\n" + Del, Marks), Marks);
    EXPECT_EQ(Ask(line, "sesame\r\n", "\n"), "Accepted\r\n");
    EXPECT_THAT(Ask(line, "TEST0\r\n", "\n"), HasSubstr(":59,7"));
}

TEST_F(Tallysim, LinksStandWhileItRuns)
{
    const std::string link = folder / "com1";
    const auto places = Simulate(R"({"loggers": [{"model": "KR40", "com": 1, "link": ")" + link + R"("}]})");
    ASSERT_EQ(places.size(), 1U) << told << Errors();
    EXPECT_EQ(places.at("HARVELOP_COM1"), link);
    EXPECT_EQ(Ask(OpenTerminal(link, 9600), Del, Marks), Marks);
    EXPECT_EQ(End(SIGHUP), 0);
    EXPECT_FALSE(fs::is_symlink(link));
}

TEST_F(Tallysim, AFloodIsBorneByTheProgramAndItsNeighbours)
{
    const auto places = Simulate(R"({"loggers": [
        {"model": "KR40", "com": 1, "baud": 115200, "failure": "FloodsGarbage"}, {"model": "KR40", "com": 2}]})");
    ASSERT_EQ(places.size(), 2U) << told << Errors();
    const auto flooded = OpenTerminal(places.at("HARVELOP_COM1"), 115200);
    EXPECT_TRUE(Send(flooded, Del));
    pollfd wait{flooded.Get(), POLLIN, 0};
    EXPECT_EQ(poll(&wait, 1, PatienceMs), 1);
    const auto other = OpenTerminal(places.at("HARVELOP_COM2"), 9600);
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(Ask(other, Del, Marks), Marks);
    EXPECT_EQ(End(SIGTERM), 0);
}

TEST_F(Tallysim, BadFilesAreToldAndEndWithTwo)
{
    Start({File(R"({"loggers": [{"model": "KR999"}, {"model": "KR40", "bauds": 1}]})")});
    EXPECT_EQ(End(), 2);
    const std::string path = folder / "loggers.json";
    EXPECT_EQ(Errors(), "tallysim: " + path + ": logger 1: there is no model \"KR999\"\ntallysim: " + path +
                            ": logger 2: unknown key \"bauds\"\n");
    Start({folder / "none.json"});
    EXPECT_EQ(End(), 2);
    EXPECT_EQ(Errors(), "tallysim: cannot read " + std::string(folder / "none.json") + "\n");
    Start({folder});
    EXPECT_EQ(End(), 2);
    Start({"/dev/zero"});
    EXPECT_EQ(End(), 2);
}

TEST_F(Tallysim, WrongUsageIsToldAndEndsWithTwo)
{
    const std::vector<std::vector<std::string>> wrong{{}, {"--env"}, {"--what"}, {"a", "b"}, {"--env", "--help"}};
    for (const auto& arguments : wrong) {
        Start(arguments);
        EXPECT_EQ(End(), 2);
        EXPECT_THAT(Errors(), StartsWith("usage: tallysim "));
    }
}

TEST_F(Tallysim, APlaceThatCannotBeHadEndsWithOne)
{
    Start({File(R"({"loggers": [{"model": "KR40", "link": ")" + folder.string() + R"("}]})")});
    EXPECT_EQ(End(), 1);
    EXPECT_EQ(Errors(), "tallysim: cannot make the link " + folder.string() + ": File exists\n");
    Start({File(R"({"loggers": [{"model": "KR40"}], "transcript": ")" + folder.string() + R"("})")});
    EXPECT_EQ(End(), 1);
    EXPECT_EQ(Errors(), "tallysim: cannot write " + folder.string() + "\n");
    Start({File(R"({"loggers": [{"model": "KR40"}], "memory": ")" + folder.string() + R"("})")});
    EXPECT_EQ(End(), 1);
    EXPECT_EQ(Errors(), "tallysim: cannot write " + folder.string() + "\n");
}

TEST_F(Tallysim, TellsItsHelpVersionModelsAndFailures)
{
    const std::vector<std::pair<std::string, std::string>> asked{{"--help", "usage: tallysim"},
                                                                 {"--version", "tallysim " HARVELOP_VERSION "\n"},
                                                                 {"--list-models", "KR205 with a 2 XBMs Series 1\n"},
                                                                 {"--list-failures", "SlowBytes "}};
    for (const auto& [option, expected] : asked) {
        Start({option});
        EXPECT_THAT(ReadUntil(output.Get(), "no such ending"), HasSubstr(expected));
        EXPECT_EQ(End(), 0);
    }
}

} // namespace harvelop::test
