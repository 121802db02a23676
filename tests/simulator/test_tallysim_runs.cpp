// tallysim with the demo, with a trace, and with a command of its own.
#include "simulator/tallysim_bench.h"

#include <gmock/gmock.h>

namespace harvelop::test
{

namespace
{

using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;
using testing::StartsWith;

using TallysimRuns = Tallysim;
using Words = std::vector<std::string>;

constexpr const char* Trace = "# harvelop trace 1, test\n"
                              "10:00:00.000 com3 open \"1200,N,8,1\" 0 \"/dev/ttyS2\"\n"
                              "10:00:00.000 com3 out \"TEST0\\r\\n\"\n"
                              "10:00:00.100 com3 in \"T,1:52,5\\r\\n\"\n"
                              "10:00:01.000 com3 close\n"
                              "10:00:02.000 com5 open \"9600,N,8,1\" 0 \"/dev/ttyS4\"\n"
                              "10:00:02.000 com5 close\n"
                              "10:00:03.000 tcp1 open \"logger.example.org:21\"\n"
                              "10:00:03.100 tcp1 connected\n"
                              "10:00:03.200 tcp1 in \"220 ready\\r\\n\"\n"
                              "10:00:03.200 tcp1 lost\n";

TEST_F(TallysimRuns, TheDemoNeedsNoFileAndTellsItsPassword)
{
    Start({"--env", "--demo"});
    told = ReadUntil(output.Get(), "ready\n");
    EXPECT_THAT(told, HasSubstr("KR305 Series 3  with the password GREENHOUSE\n"));
    EXPECT_THAT(told, HasSubstr("\nHARVELOP_COM9=/dev/pts/"));
    EXPECT_EQ(End(SIGTERM), 0);
}

TEST_F(TallysimRuns, ACommandFindsTheLinesInItsEnvironmentAndGivesItsExitCode)
{
    setenv("HARVELOP_COM16", "/dev/ttyS15", 1);
    Start(
        {"--demo", "--", "sh", "-c", "echo $HARVELOP_COM1 [$HARVELOP_COM2] [$HARVELOP_COM16] $TALLYSIM_TCP_5; exit 7"});
    unsetenv("HARVELOP_COM16");
    EXPECT_THAT(ReadUntil(output.Get(), "no such ending"),
                MatchesRegex("/dev/pts/[0-9]+ \\[\\] \\[\\] 127.0.0.1:[0-9]+\n"));
    EXPECT_EQ(End(), 7);
    EXPECT_THAT(Errors(), StartsWith("com 1   /dev/pts/"));
    EXPECT_THAT(Errors(), Not(HasSubstr("ready")));
}

TEST_F(TallysimRuns, ACommandTalksToTheLoggers)
{
    Start({File(R"({"loggers": [{"model": "KR40", "com": 1}]})"), "--", "sh", "-c",
           "exec 3<>$HARVELOP_COM1; stty -F $HARVELOP_COM1 9600; printf 'TEST0\\r' >&3; head -n 1 <&3"});
    EXPECT_THAT(ReadUntil(output.Get(), "\n"), StartsWith("T,tallyCore 40 "));
    EXPECT_EQ(End(), 0);
}

TEST_F(TallysimRuns, SignalsReachTheCommand)
{
    Start({"--demo", "--", "sh", "-c", "trap 'exit 5' TERM; echo here; while :; do sleep 0.05; done"});
    EXPECT_EQ(ReadUntil(output.Get(), "\n"), "here\n");
    EXPECT_EQ(End(SIGTERM), 5);
    Start({"--demo", "--", "sh", "-c", "echo here; exec sleep 100"});
    EXPECT_EQ(ReadUntil(output.Get(), "\n"), "here\n");
    EXPECT_EQ(End(SIGHUP), 128 + SIGHUP);
}

TEST_F(TallysimRuns, SignalsThatItsStarterIgnoresAreIgnored)
{
    ignored = {SIGHUP, SIGINT, SIGQUIT};
    const auto places = Simulate(R"({"loggers": [{"model": "KR40", "port": "tcp:0"}]})");
    ASSERT_EQ(places.size(), 1U) << told << Errors();
    for (const int number : ignored) {
        kill(process, number);
        for (int i = 0; i < 2; ++i) // it may have answered once before it saw the signal
            EXPECT_THAT(Ask(Connect(places.at("TALLYSIM_TCP_1")), "TEST0\r\n", "\n"), StartsWith("T,tallyCore 40 "));
    }
    EXPECT_EQ(End(SIGTERM), 0);
}

TEST_F(TallysimRuns, ACommandEndsAlsoWhereTheStarterIgnoresChildren)
{
    ignored = {SIGCHLD};
    Start({"--demo", "--", "sh", "-c", "exit 7"});
    EXPECT_EQ(End(), 7);
}

TEST_F(TallysimRuns, ACommandThatCannotBeStartedIsTold)
{
    Start({"--demo", "--", folder / "none"});
    EXPECT_EQ(End(), 127);
    EXPECT_THAT(Errors(),
                HasSubstr("tallysim: cannot start " + std::string(folder / "none") + ": No such file or directory\n"));
}

TEST_F(TallysimRuns, ATraceAnswersOnLinesOfItsKinds)
{
    Start({"--env", "--replay", File(Trace, "trace")});
    told = ReadUntil(output.Get(), "ready\n");
    EXPECT_THAT(told, MatchesRegex("com 3   /dev/pts/[0-9]+ +1200 +as recorded\n"
                                   "com 5   /dev/pts/[0-9]+ +9600 +as recorded\n"
                                   "-       127.0.0.1:[0-9]+ +tcp +as recorded of logger.example.org:21\n"
                                   "        set its address in the program to 127.0.0.1:[0-9]+\n"
                                   "HARVELOP_COM3=/dev/pts/[0-9]+\nHARVELOP_COM5=/dev/pts/[0-9]+\n"
                                   "TALLYSIM_TCP_3=127.0.0.1:[0-9]+\nready\n"));
    std::string place = told.substr(told.find("HARVELOP_COM3=") + 14);
    const auto line = OpenTerminal(place.substr(0, place.find('\n')), 1200);
    EXPECT_EQ(Ask(line, "TEST0\r\n", "\n"), "T,1:52,5\r\n");
    EXPECT_TRUE(Send(line, "sesame\r\n"));
    EXPECT_EQ(Ask(line, "TEST0\r\n", "\n"), "T,1:52,5\r\n");
    EXPECT_EQ(Errors(), "tallysim: com3: line 3 of the trace did not come; what came is not in the trace and stays "
                        "unanswered\n");
    place = told.substr(told.find("TALLYSIM_TCP_3=") + 15);
    for (int i = 0; i < 3; ++i) {
        const auto caller = Connect(place.substr(0, place.find('\n')));
        EXPECT_EQ(ReadUntil(caller.Get(), "\n"), "220 ready\r\n");
        pollfd hungUp{caller.Get(), POLLRDHUP, 0};
        EXPECT_EQ(poll(&hungUp, 1, PatienceMs), 1);
    }
    EXPECT_EQ(End(SIGTERM), 0);
}

TEST_F(TallysimRuns, BadTracesAreToldByLine)
{
    const std::string path = File(std::string(Trace) + "what\n10:00:04.000 com3 close\n", "trace");
    Start({"--replay", path});
    EXPECT_EQ(End(), 2);
    EXPECT_EQ(Errors(), "tallysim: " + path + ": line 12: it does not begin with a time\n");
    Start({"--replay", "--fast", folder / "none"});
    EXPECT_EQ(End(), 2);
    EXPECT_EQ(Errors(), "tallysim: cannot read " + std::string(folder / "none") + "\n");
}

TEST_F(TallysimRuns, WrongUsageIsToldAndEndsWithTwo)
{
    for (const Words& words : std::vector<Words>{{"--demo", "file"},
                                                 {"--demo", "--"},
                                                 {"--replay"},
                                                 {"--fast", "file"},
                                                 {"--demo", "--fast"},
                                                 {"--", "true"},
                                                 {"--demo", "--env"}}) {
        Start(words);
        EXPECT_EQ(End(), 2);
        EXPECT_THAT(Errors(), StartsWith("usage: tallysim "));
    }
}

} // namespace

} // namespace harvelop::test
