#include "simulator/bench_of_one.h"

#include <gtest/gtest.h>

namespace harvelop::test
{

namespace
{

// What a reader finds between `start` and the next carriage return.
std::string between(const std::string& text, const std::string& start)
{
    const auto from = text.find(start);
    const auto to = from == std::string::npos ? from : text.find('\r', from);
    return to == std::string::npos ? "" : text.substr(from + start.size(), to - from - start.size());
}

LoggerConfig configOf(const ModelRow& row)
{
    LoggerConfig config;
    config.model = row.model;
    config.series = row.series;
    return config;
}

} // namespace

TEST(SimulatedLogger, OlderModelsReportTheirSignatureAloneAndTheirVersion)
{
    for (const ModelRow& row : KnownModels()) {
        if (row.IsKR4())
            continue;
        LoggerConfig config = configOf(row);
        config.version = "6.35";
        const std::string report = between(BenchOfOne(config).Ask("TEST0\r\n"), "T,");
        ASSERT_GE(report.size(), 5U) << row.model;
        EXPECT_LE(report.size(), 30U) << row.model;
        EXPECT_EQ(report.substr(report.size() - 5, 4), "6.35") << row.model;
        for (const ModelRow& other : KnownModels())
            if (!other.IsKR4()) {
                EXPECT_EQ(report.find(other.signature) != std::string::npos, other.signature == row.signature)
                    << report << " and " << other.signature;
            }
    }
}

TEST(SimulatedLogger, KR4FamilyTellsNameVersionAndSerial)
{
    const std::vector<std::pair<std::string, std::size_t>> serialPositions{
        {"KR40", 27}, {"KR41", 27}, {"KR45", 27}, {"KR400", 22}};
    for (const auto& [model, position] : serialPositions) {
        LoggerConfig config;
        config.model = model;
        config.version = "8.02.0003";
        config.serial = "A91827";
        BenchOfOne bench(config);
        const std::string name = "tallyCore " + model.substr(2);
        EXPECT_TRUE(between(bench.Ask("TEST0\r\n"), "T,").starts_with(name + " Version 8.02.0003")) << model;
        EXPECT_EQ(between(bench.Ask("/h/U/N\r\n"), name + " Version "), "8.02.0003") << model;
        EXPECT_EQ(between(bench.Ask("CHARAC1\r\n"), "Serial Number").substr(position - 1), "A91827") << model;
    }
}

TEST(SimulatedLogger, OlderModelsKeepSilentToTheCommandsOfTheKR4Family)
{
    BenchOfOne bench({});
    EXPECT_EQ(bench.Ask("/h/U/N\r\nCHARAC1\r\n"), "");
}

TEST(SimulatedLogger, UnsetTextsGetUsualValues)
{
    LoggerConfig config;
    EXPECT_EQ(BenchOfOne(config).Ask("TEST0\r"), "T,Pass:52,4,R0,7.18E\r\n");
    config.model = "KR40";
    EXPECT_EQ(BenchOfOne(config).Ask("TEST0\r"), "T,tallyCore 40 Version 5.06.0001 Flash 2.01\r\n");
}

TEST(SimulatedLogger, TwoProbesGiveTwoMarks)
{
    BenchOfOne bench({});
    EXPECT_EQ(bench.Ask(Del + Del), "<<\r\n<<\r\n");
}

TEST(SimulatedLogger, OtherLinesAreTakenInSilence)
{
    BenchOfOne bench({});
    EXPECT_EQ(bench.Ask("Q /H/r\r\n\r\nQ /H/r/M/U/N\r\n\r\nEND\r\n/h/R/U/N\r\n\r\ntest0\r\n TEST0\r\n"), "");
    EXPECT_EQ(bench.logger.LinesReceived(), 6);
}

TEST(SimulatedLogger, ALineMayComeInPiecesAndWithFlowControlInIt)
{
    BenchOfOne bench({});
    EXPECT_EQ(bench.Ask("TE"), "");
    EXPECT_EQ(bench.Ask("S\x11T\x13"), "");
    EXPECT_EQ(bench.Ask("0"), "");
    EXPECT_NE(bench.Ask("\r"), "");
}

TEST(SimulatedLogger, AnEndlessLineIsForgottenWhole)
{
    BenchOfOne bench({});
    EXPECT_EQ(bench.Ask(std::string(1 << 20, 'x') + "\r"), "");
    EXPECT_EQ(bench.logger.LinesReceived(), 0);
    EXPECT_NE(bench.Ask("TEST0\r"), "");
}

TEST(SimulatedLogger, WithAPasswordItAnswersOnlyTheProbeUntilItHearsIt)
{
    LoggerConfig config;
    config.password = "sesame";
    BenchOfOne bench(config);
    EXPECT_EQ(bench.Ask("TEST0\r\n"), "");
    EXPECT_EQ(bench.Ask(Del), "<<\r\n");
    EXPECT_EQ(bench.Ask("Sesame\r\nsesame \r\n\r\nTEST0\r\n"), "");
    EXPECT_EQ(bench.Ask("sesame\r\n"), "Accepted\r\n");
    EXPECT_NE(bench.Ask("TEST0\r\n"), "");
    EXPECT_EQ(bench.Ask("sesame\r\n"), "Accepted\r\n");
    EXPECT_NE(bench.Ask("TEST0\r\n"), "");
}

TEST(SimulatedLogger, WantsItsPasswordAgainAfterALongSilence)
{
    LoggerConfig config;
    config.password = "sesame";
    config.lockAfterMs = 5000;
    BenchOfOne bench(config);
    bench.Ask("sesame\r\n");
    bench.nowMs += 4999;
    EXPECT_NE(bench.Ask("TEST0\r\n"), "");
    bench.nowMs += 4999;
    EXPECT_NE(bench.Ask("TEST0\r\n"), "");
    bench.nowMs += 5000;
    EXPECT_EQ(bench.Ask("TEST0\r\n"), "");
    EXPECT_EQ(bench.Ask("sesame\r\n"), "Accepted\r\n");
}

TEST(SimulatedLogger, AnswersAtOnceWithoutADelay)
{
    BenchOfOne bench({});
    bench.Ask("TEST0\r\n");
    ASSERT_EQ(bench.arrivals.size(), 1U);
    EXPECT_EQ(bench.arrivals[0].first, 1000);
}

TEST(SimulatedLogger, ADelayedAnswerIsNotThereBeforeItsTime)
{
    LoggerConfig config;
    config.delayMs = 250;
    SimulatedLogger logger(config);
    logger.Receive(100, Del);
    EXPECT_EQ(logger.NextDueMs(), 350);
    EXPECT_EQ(logger.Transmit(349), "");
    EXPECT_EQ(logger.Transmit(350), "<<\r\n");
    EXPECT_EQ(logger.NextDueMs(), SimulatedDevice::Never);
}

TEST(SimulatedLogger, PiecesFollowEachOtherWithGaps)
{
    LoggerConfig config;
    config.delayMs = 10;
    config.chunk = 3;
    config.gapMs = 7;
    BenchOfOne bench(config);
    bench.Ask(Del + Del);
    const std::vector<std::pair<double, std::string>> expected{{1010, "<<\r"}, {1017, "\n<<\r"}, {1024, "\n"}};
    EXPECT_EQ(bench.arrivals, expected);
}

TEST(SimulatedLogger, PaceIsThatOfTheLine)
{
    LoggerConfig config;
    config.baud = 1200;
    config.pace = true;
    BenchOfOne bench(config);
    EXPECT_EQ(bench.Ask(Del), "<<\r\n");
    ASSERT_EQ(bench.arrivals.size(), 4U);
    EXPECT_NEAR(bench.arrivals[0].first, 1000 + 10000.0 / 1200, 0.001);
    EXPECT_NEAR(bench.arrivals[3].first, 1000 + 4 * 10000.0 / 1200, 0.001);
}

TEST(SimulatedLogger, NoiseStandsBeforeRepliesAndHoldsNothingOfThem)
{
    LoggerConfig config;
    config.noise = 500;
    BenchOfOne bench(config);
    const std::string answer = bench.Ask(Del + "TEST0\r\n");
    ASSERT_GT(answer.size(), 1000U);
    for (const char c : answer.substr(0, 500))
        EXPECT_GE(static_cast<unsigned char>(c), 0x80);
    EXPECT_EQ(answer.substr(500, 4), "<<\r\n");
    EXPECT_EQ(between(answer, "T,"), "Pass:52,4,R0,7.18E");
}

TEST(SimulatedLogger, TheSeedDecidesTheNoise)
{
    LoggerConfig config;
    config.noise = 50;
    const std::string first = BenchOfOne(config).Ask(Del);
    EXPECT_EQ(BenchOfOne(config).Ask(Del), first);
    config.seed = 2;
    EXPECT_NE(BenchOfOne(config).Ask(Del), first);
}

} // namespace harvelop::test
