// Programs, cards and data: what both families have.
#include "simulator/bench_of_one.h"

#include <gtest/gtest.h>

namespace harvelop::test
{

namespace
{

const std::string WakeUp = "Q /H/r\r\n\r\n";
const std::string Begin = "END /E/h/M/U CSCANS CALARMS G\r\n";
const std::string BeginEchoed = "13SV\r\n1\r\n";

LoggerConfig kr4()
{
    LoggerConfig config;
    config.model = "KR400";
    return config;
}

LoggerConfig withCard()
{
    LoggerConfig config;
    config.memory.card = true;
    return config;
}

LoggerConfig failing(Failure failure, const std::string& lines = "", LoggerConfig config = {})
{
    config.failure = failure;
    config.lines = lines;
    config.rejectLine = 2;
    return config;
}

} // namespace

TEST(ProgramMemory, AProgramIsWhatComesBehindTheQuestionForTheNumber)
{
    LoggerConfig config;
    config.memory.program = "OLD\n";
    config.number = "17";
    BenchOfOne bench(config);
    EXPECT_EQ(bench.Ask(Begin + "13SV\r\n"), "13SV\r\n17\r\n");
    EXPECT_EQ(bench.logger.Memory().program, "");
    EXPECT_EQ(bench.Ask("13SV\r\n\r\nTEST0\r\n  H\xff \r\nEND\r\n"), "13SV\r\nTEST0\r\n  H\xff \r\nEND\r\n");
    EXPECT_EQ(bench.logger.Memory().program, "13SV\n\nTEST0\n  H\xff \nEND\n");
}

TEST(ProgramMemory, AProgramEndsWhenTheLoggerIsWokenAnew)
{
    for (const std::string& waking : {WakeUp, Del}) {
        BenchOfOne bench({});
        bench.Ask(Begin + "RA\r\n\r\n" + waking + "RB\r\n\r\n");
        EXPECT_EQ(bench.logger.Memory().program, "RA\n\n");
        EXPECT_NE(bench.Ask("TEST0\r\n").find("T,Pass"), std::string::npos);
    }
}

TEST(ProgramMemory, ALineOfAProgramMayBeAsLongAsAProgram)
{
    const std::string line(32767, 'x');
    BenchOfOne bench({});
    bench.Ask(Begin + line + "\r\n");
    EXPECT_EQ(bench.logger.Memory().program, line + "\n");
}

TEST(ProgramMemory, AProgramWithoutEndFillsTheMemoryAndIsRefusedThen)
{
    const std::string line(60000, 'x');
    BenchOfOne bench({});
    bench.Ask(Begin + "/e\r\n");
    for (int i = 0; i < 17; ++i)
        EXPECT_EQ(bench.Ask(line + "\r\n"), "");
    EXPECT_EQ(bench.Ask(line + "\r\n"), "Tallycore 1E8\r\n");
}

TEST(ProgramMemory, ARejectedLineIsToldAndNotKept)
{
    BenchOfOne bench(failing(Failure::RejectsLine));
    EXPECT_EQ(bench.Ask(Begin + "13SV\r\n"), BeginEchoed);
    EXPECT_EQ(bench.Ask("RA\r\n"), "RA\r\n");
    EXPECT_EQ(bench.Ask("RB\r\n"), "RB\r\nTallycore 1E10\r\n");
    EXPECT_EQ(bench.Ask("RC\r\n"), "RC\r\n");
    EXPECT_EQ(bench.logger.Memory().program, "RA\nRC\n");
    EXPECT_EQ(BenchOfOne(failing(Failure::RejectsLine, "", kr4())).Ask(Begin + "/e\r\nRA\r\n"),
              "/e\r\ntallyCore KR400 E10\r\n");
    EXPECT_EQ(BenchOfOne(failing(Failure::RejectsString)).Ask(Begin + "/e\r\nRA\r\n"),
              "/e\r\nSerial sensor control string error\r\n");
}

TEST(ProgramMemory, BlankLinesCountAsLinesOfAProgram)
{
    LoggerConfig config = failing(Failure::RejectsLine);
    config.rejectLine = 3;
    BenchOfOne bench(config);
    EXPECT_EQ(bench.Ask(Begin + "RA\r\n\r\nRB\r\n"), "RA\r\nRB\r\nTallycore 1E10\r\n");
    EXPECT_EQ(bench.logger.Memory().program, "RA\n\n");
}

TEST(ProgramMemory, ARejectionCanComeLate)
{
    LoggerConfig config = failing(Failure::RejectsLine);
    config.delayMs = 150;
    BenchOfOne bench(config);
    bench.Ask(Begin + "RA\r\n");
    const double sent = bench.nowMs;
    bench.Ask("RB\r\n");
    ASSERT_EQ(bench.arrivals.size(), 2U);
    EXPECT_EQ(bench.arrivals[0], std::pair(sent, std::string("RB\r\n")));
    EXPECT_EQ(bench.arrivals[1], std::pair(sent + 150, std::string("Tallycore 1E10\r\n")));
}

TEST(ProgramMemory, TellsOfStoredDataUntilTheyAreCleared)
{
    LoggerConfig config;
    config.memory.data = true;
    BenchOfOne bench(config);
    EXPECT_EQ(bench.Ask("H BEGIN\r\n"), "Tallycore 1E4\r\n");
    EXPECT_TRUE(bench.logger.Memory().halted);
    EXPECT_EQ(bench.Ask("/E\r\nCLEAR CDATA\r\n"), "CLEAR CDATA\r\n");
    EXPECT_FALSE(bench.logger.Memory().data);
    EXPECT_EQ(bench.Ask("H BEGIN\r\n"), "H BEGIN\r\n");
    LoggerConfig newer = kr4();
    newer.memory.jobs = {{"PUMP", true, true}};
    BenchOfOne other(newer);
    EXPECT_EQ(other.Ask("H BEGIN\r\n"), "tallyCore KR400 E4\r\n");
    other.Ask("CLEAR CDATA\r\n");
    EXPECT_EQ(other.Ask("H BEGIN\r\n"), "");
}

TEST(ProgramMemory, ProgramsAreClearedByClearingSchedulesAndAlarms)
{
    LoggerConfig config;
    config.memory.program = "RA\n";
    config.echo = true;
    BenchOfOne bench(config);
    EXPECT_EQ(bench.Ask("CALARMS CSCANS\r\n"), "CALARMS CSCANS\r\n");
    EXPECT_EQ(bench.logger.Memory().program, "");
}

TEST(ProgramMemory, TellsWhetherThereIsACard)
{
    const std::string ask = "END\r\n/h/R/u/n/E/d/t\r\n9SV(FF0) /U/N\r\n";
    EXPECT_EQ(BenchOfOne(withCard()).Ask(ask), "9SV(FF0) /U/N\r\n1\r\n");
    EXPECT_EQ(BenchOfOne({}).Ask(ask), "9SV(FF0) /U/N\r\n0\r\n");
    const std::string unreadable = BenchOfOne(failing(Failure::CardUnreadable, "", withCard())).Ask(ask);
    EXPECT_EQ(unreadable, "9SV(FF0) /U/N\r\n?\r\n");
}

TEST(ProgramMemory, TheCardTakesLinesUntilAnEmptyOneAndCanBeRun)
{
    LoggerConfig config = withCard();
    config.memory.cardProgram = "OLD\n";
    BenchOfOne bench(config);
    EXPECT_EQ(bench.Ask("H /E\r\n"), "");
    EXPECT_EQ(bench.Ask("CPROG\r\n"), "CPROG\r\n");
    EXPECT_EQ(bench.logger.Memory().cardProgram, "");
    EXPECT_EQ(bench.Ask(Begin + "13SV\r\n"), Begin + BeginEchoed);
    EXPECT_EQ(bench.Ask("RA;\r\n;\r\nTEST0;\r\n\r\r\n"), "RA;\r\n;\r\nTEST0;\r\n");
    EXPECT_EQ(bench.logger.Memory().cardProgram, "RA\n\nTEST0\n");
    EXPECT_EQ(bench.logger.Memory().program, "");
    EXPECT_EQ(bench.Ask("RUNPROG\r\nRB;\r\n"), "RUNPROG\r\nRunning the card program\r\nRB;\r\n");
    EXPECT_EQ(bench.logger.Memory().program, "RA\n\nTEST0\n");
}

TEST(ProgramMemory, ACardLineCanBeRejected)
{
    BenchOfOne bench(failing(Failure::RejectsLine, "", withCard()));
    EXPECT_EQ(bench.Ask("CPROG\r\nRA;\r\nRB;\r\n"), "Tallycore 1E10\r\n");
    EXPECT_EQ(bench.logger.Memory().cardProgram, "RA\n");
}

TEST(ProgramMemory, WithoutACardItsCommandsAreRefused)
{
    BenchOfOne bench({});
    EXPECT_EQ(bench.Ask("CPROG\r\nRUNPROG\r\nRA;\r\n"), "Tallycore 1E2\r\nTallycore 1E2\r\n");
    EXPECT_EQ(bench.logger.Memory(), LoggerMemory());
}

TEST(ProgramMemory, ACardThatIsOpenDoesNotOutlastTheSession)
{
    BenchOfOne bench(withCard());
    bench.Ask("CPROG\r\n" + WakeUp + Begin + "RA;\r\n");
    EXPECT_EQ(bench.logger.Memory().cardProgram, "");
    EXPECT_EQ(bench.logger.Memory().program, "RA;\n");
}

TEST(Echo, IsSwitchedByTheLinesThemselves)
{
    BenchOfOne bench({});
    EXPECT_EQ(bench.Ask("H\r\n/E\r\nH\r\n/M/E\r\nH /e\r\nH\r\n/e/E\r\nH\r\n/E/e\r\nH\r\n"),
              "H\r\n/M/E\r\nH /e\r\nH\r\n/E/e\r\n");
    EXPECT_EQ(bench.Ask(Del), "<<\r\n");
}

TEST(Echo, DoesNotGiveAPasswordAway)
{
    LoggerConfig config;
    config.echo = true;
    config.password = "sesame";
    BenchOfOne bench(config);
    EXPECT_EQ(bench.Ask("H\r\nsesame\r\nH\r\n"), "Accepted\r\nH\r\n");
}

TEST(SimulatedFailure, IgnoredLinesAreNotHeard)
{
    LoggerConfig config = failing(Failure::IgnoresLines, "CLEAR");
    config.memory.data = true;
    config.echo = true;
    BenchOfOne bench(config);
    EXPECT_EQ(bench.Ask("CLEAR CDATA\r\nH\r\n"), "H\r\n");
    EXPECT_TRUE(bench.logger.Memory().data);
    EXPECT_EQ(BenchOfOne(failing(Failure::IgnoresLines, "13SV")).Ask(Begin + "13SV\r\nRA\r\n"), "RA\r\n");
}

TEST(SimulatedFailure, RefusedLinesAreHeardAndNotObeyed)
{
    LoggerConfig config = failing(Failure::RefusesLines, "CLEAR");
    config.memory.data = true;
    config.echo = true;
    BenchOfOne bench(config);
    EXPECT_EQ(bench.Ask("CLEAR CDATA\r\nH\r\n"), "CLEAR CDATA\r\nTallycore 1E9\r\nH\r\n");
    EXPECT_TRUE(bench.logger.Memory().data);
}

TEST(SimulatedFailure, DislikeCanBeginWithALaterLine)
{
    for (const Failure failure : {Failure::IgnoresLines, Failure::RefusesLines}) {
        LoggerConfig config = failing(failure, "13SV");
        config.linesFrom = 3;
        BenchOfOne bench(config);
        EXPECT_EQ(bench.Ask("13SV\r\n13SV\r\n"), "1\r\n1\r\n");
        EXPECT_EQ(bench.Ask("13SV\r\n"), failure == Failure::IgnoresLines ? "" : "Tallycore 1E9\r\n");
    }
}

TEST(SimulatedFailure, GoesSilentWithOneOfItsLines)
{
    LoggerConfig config = failing(Failure::GoesSilent);
    config.dropAfterLines = 3;
    BenchOfOne bench(config);
    EXPECT_EQ(bench.Ask("13SV\r\n" + Del), "1\r\n<<\r\n");
    EXPECT_EQ(bench.Ask("13SV\r\n" + Del + "13SV\r\n"), "");
    EXPECT_TRUE(bench.logger.OnLine());
}

TEST(SimulatedFailure, ResetsItselfWithOneOfItsLines)
{
    LoggerConfig config = failing(Failure::ResetsItself);
    config.dropAfterLines = 4;
    BenchOfOne bench(config);
    EXPECT_EQ(bench.Ask(Begin + "13SV\r\nRA\r\n"), BeginEchoed + "RA\r\n");
    EXPECT_EQ(bench.Ask("RB\r\n"), "Tallycore Version 7.18\r\nSelf test ... Done.\r\n");
    EXPECT_EQ(bench.logger.Memory().program, "");
    EXPECT_EQ(bench.Ask("RC\r\n13SV\r\n"), "1\r\n");
    EXPECT_EQ(bench.logger.Memory().resets, 1);
    config.dropAfterLines = 2;
    BenchOfOne other(config);
    other.Ask("\x1a"
              "BOOTSTRAP\r\n");
    other.Ask("EF 60000,1\r\n");
    EXPECT_FALSE(other.logger.Memory().bootstrap);
    EXPECT_EQ(other.Ask(Del), "<<\r\n");
}

} // namespace harvelop::test
