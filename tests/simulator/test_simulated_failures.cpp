#include "simulator/bench_of_one.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace harvelop::test
{

namespace
{

const std::string Test0 = "TEST0\r\n";
const std::string Report = "T,Pass:52,4,R0,7.18E\r\n";

LoggerConfig failing(Failure failure)
{
    LoggerConfig config;
    config.failure = failure;
    return config;
}

} // namespace

TEST(SimulatedFailure, NoneWorksAsItShould)
{
    EXPECT_EQ(BenchOfOne(failing(Failure::None)).Ask(Del + Test0), "<<\r\n" + Report);
}

TEST(SimulatedFailure, SilentNeverAnswers)
{
    BenchOfOne bench(failing(Failure::Silent));
    EXPECT_EQ(bench.Ask(Del + Test0), "");
    EXPECT_TRUE(bench.logger.OnLine());
}

TEST(SimulatedFailure, NoReplyAnswersTheProbeOnly)
{
    LoggerConfig config = failing(Failure::NoReply);
    config.password = "sesame";
    EXPECT_EQ(BenchOfOne(config).Ask("sesame\r\n" + Del + Test0), "<<\r\n");
}

TEST(SimulatedFailure, EndMarkerMissingLeavesTheReplyOpen)
{
    BenchOfOne bench(failing(Failure::EndMarkerMissing));
    EXPECT_EQ(bench.Ask(Test0), "T,Pass:52,4,R0,7.18E");
}

TEST(SimulatedFailure, SlowBytesSendsOneCharacterAtATime)
{
    LoggerConfig config = failing(Failure::SlowBytes);
    config.gapMs = 30;
    config.chunk = 100;
    BenchOfOne bench(config);
    EXPECT_EQ(bench.Ask(Del), "<<\r\n");
    ASSERT_EQ(bench.arrivals.size(), 4U);
    EXPECT_EQ(bench.arrivals.back().first, 1090);
}

TEST(SimulatedFailure, DropsLineAfterSomeLines)
{
    LoggerConfig config = failing(Failure::DropsLine);
    config.dropAfterLines = 3;
    BenchOfOne bench(config);
    EXPECT_EQ(bench.Ask(Del + Del), "<<\r\n<<\r\n");
    EXPECT_TRUE(bench.logger.OnLine());
    EXPECT_EQ(bench.Ask(Test0 + Del), "");
    EXPECT_FALSE(bench.logger.OnLine());
    EXPECT_EQ(bench.Ask(Del), "");
    EXPECT_EQ(bench.logger.LinesReceived(), 3);
}

TEST(SimulatedFailure, FloodsGarbageForEverAtTheSpeedOfTheLine)
{
    LoggerConfig config = failing(Failure::FloodsGarbage);
    config.baud = 115200;
    BenchOfOne bench(config);
    EXPECT_EQ(bench.logger.NextDueMs(), SimulatedDevice::Never);
    const std::string junk = bench.Ask(Del, 10000);
    EXPECT_NEAR(static_cast<double>(junk.size()), 115200, 200);
    EXPECT_EQ(junk.find('<'), std::string::npos);
    EXPECT_NE(junk.find('\r'), std::string::npos);
    EXPECT_NE(junk.find('\0'), std::string::npos);
    EXPECT_LT(bench.logger.NextDueMs(), bench.nowMs + 100);
}

TEST(SimulatedFailure, FloodThatNobodyTookForLongComesInABoundedPiece)
{
    SimulatedLogger logger(failing(Failure::FloodsGarbage));
    logger.Receive(0, Del);
    EXPECT_LE(logger.Transmit(1e9).size(), 65536U);
}

TEST(SimulatedFailure, FloodsOnASlowLineToo)
{
    LoggerConfig config = failing(Failure::FloodsGarbage);
    config.baud = 50;
    EXPECT_GT(BenchOfOne(config).Ask(Del, 1000).size(), 4U);
}

TEST(SimulatedFailure, FloodsAfterProbeBeginsWithTheFirstOtherLine)
{
    BenchOfOne bench(failing(Failure::FloodsAfterProbe));
    EXPECT_EQ(bench.Ask(Del + Del, 1000), "<<\r\n<<\r\n");
    EXPECT_GT(bench.Ask("Q /H/r\r\n", 1000).size(), 900U);
    EXPECT_EQ(bench.Ask(Del, 1000).find("<<"), std::string::npos);
}

TEST(SimulatedFailure, RefusesPasswordWithoutAWord)
{
    LoggerConfig config = failing(Failure::RefusesPassword);
    config.password = "sesame";
    EXPECT_EQ(BenchOfOne(config).Ask("sesame\r\n" + Test0 + Del), "<<\r\n");
}

TEST(SimulatedFailure, AnswersLateAllButTheProbe)
{
    LoggerConfig config = failing(Failure::AnswersLate);
    config.lateMs = 8000;
    BenchOfOne bench(config);
    bench.Ask(Del + Test0);
    const std::vector<std::pair<double, std::string>> expected{{1000, "<<\r\n"}, {9000, Report}};
    EXPECT_EQ(bench.arrivals, expected);
}

TEST(SimulatedFailure, WrongModelMatchesNoSignatureAndNoName)
{
    const std::string answer = BenchOfOne(failing(Failure::WrongModel)).Ask(Test0);
    EXPECT_TRUE(answer.starts_with("T,")) << answer;
    EXPECT_TRUE(answer.ends_with("\r\n")) << answer;
    for (const ModelRow& row : KnownModels())
        EXPECT_EQ(answer.find(row.IsKR4() ? row.name : row.signature), std::string::npos) << row.model;
}

TEST(SimulatedFailure, AModelThatDoesNotExistAnswersAsAWrongOne)
{
    LoggerConfig config;
    config.model = "KR999";
    BenchOfOne bench(config);
    EXPECT_EQ(bench.Ask(Test0), BenchOfOne(failing(Failure::WrongModel)).Ask(Test0));
    EXPECT_EQ(bench.Ask("/h/U/N\rCHARAC1\r"), "");
}

TEST(SimulatedFailure, ShortReplyHasUnderFiveCharacters)
{
    EXPECT_EQ(BenchOfOne(failing(Failure::ShortReply)).Ask(Test0), "T,1.0\r\n");
}

TEST(SimulatedFailure, NoSerialKeepsItsSerialToItself)
{
    LoggerConfig config = failing(Failure::NoSerial);
    config.model = "KR400";
    BenchOfOne bench(config);
    EXPECT_EQ(bench.Ask("CHARAC1\r\n"), "");
    EXPECT_NE(bench.Ask(Test0), "");
}

TEST(SimulatedFailure, IgnoresFirstAnswersTheSecondTime)
{
    BenchOfOne bench(failing(Failure::IgnoresFirst));
    EXPECT_EQ(bench.Ask(Del), "<<\r\n");
    EXPECT_EQ(bench.Ask(Test0), "");
    EXPECT_EQ(bench.Ask(Test0), Report);
    EXPECT_EQ(bench.Ask(Test0), Report);
}

TEST(SimulatedFailure, EchoesComeBeforeTheAnswer)
{
    EXPECT_EQ(BenchOfOne(failing(Failure::Echoes)).Ask("TEST0\r\n"), "TEST0\r" + Report + "\n");
}

TEST(SimulatedFailure, EndlessReplyIsLongAndOpen)
{
    const std::string answer = BenchOfOne(failing(Failure::EndlessReply)).Ask(Test0);
    EXPECT_EQ(answer.size(), 70002U);
    EXPECT_EQ(answer.find('\r'), std::string::npos);
}

TEST(SimulatedFailure, NulBytesStandBetweenAllCharacters)
{
    EXPECT_EQ(BenchOfOne(failing(Failure::NulBytes)).Ask(Del), std::string("\0<\0<\0\r\0\n", 8));
}

TEST(SimulatedFailure, StopsFlowAfterAProbe)
{
    BenchOfOne bench(failing(Failure::StopsFlow));
    EXPECT_EQ(bench.Ask(Del), "<<\r\n\x13");
    EXPECT_EQ(bench.Ask(Test0), Report);
}

} // namespace harvelop::test
