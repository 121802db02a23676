#include "simulator/bench_of_one.h"

#include <gtest/gtest.h>

namespace harvelop::test
{

namespace
{

const std::string Bootstrap = "\x1a"
                              "BOOTSTRAP\r\n";
const std::string Erase = "EF 60000,1\r\n";
const std::string Erased = "Erasing FLASH memory\r\nErase successful\r\n";
const std::string Booted = "Tallycore Version 7.18\r\nSelf test ... Done.\r\n";
const std::string Hello = "S209060000" // "Hello" at 0x60000
                          "48656C6C6F"
                          "FC\r\n";

// In its monitor.
BenchOfOne inMonitor(const LoggerConfig& config = {})
{
    BenchOfOne bench(config);
    EXPECT_EQ(bench.Ask(Bootstrap), "Bootstrap mode\r\n\r\n");
    EXPECT_TRUE(bench.logger.Memory().bootstrap);
    return bench;
}

LoggerConfig failing(Failure failure)
{
    LoggerConfig config;
    config.failure = failure;
    config.rejectLine = 2;
    return config;
}

} // namespace

TEST(BootstrapMonitor, ErasesTakesRecordsAndResetsTheLogger)
{
    LoggerConfig config;
    config.memory.program = "RA1S 1V\n";
    config.memory.data = true;
    config.memory.cardProgram = "RB\n";
    config.memory.flash = "old";
    BenchOfOne bench = inMonitor(config);
    EXPECT_EQ(bench.Ask(Erase), Erased);
    EXPECT_EQ(bench.logger.Memory().flash, "");
    EXPECT_EQ(bench.Ask("S00600004844521B\r\n" + Hello + "S804060000F5\r\n"), "");
    EXPECT_EQ(bench.logger.Memory().flash, "Hello");
    EXPECT_EQ(bench.Ask("J\r\n"), Booted);
    const LoggerMemory& memory = bench.logger.Memory();
    EXPECT_FALSE(memory.bootstrap);
    EXPECT_EQ(memory.resets, 1);
    EXPECT_EQ(memory.flash, "Hello");
    EXPECT_EQ(memory.program, "");
    EXPECT_FALSE(memory.data);
    EXPECT_EQ(memory.cardProgram, "RB\n");
    EXPECT_EQ(bench.Ask(Del), "<<\r\n");
}

TEST(BootstrapMonitor, HearsNothingElse)
{
    BenchOfOne bench = inMonitor();
    EXPECT_EQ(bench.Ask(Del + "TEST0\r\nQ /H/r\r\n\r\n13SV\r\n" + Bootstrap), "");
}

TEST(BootstrapMonitor, IsThereInTheOlderFamilyOnly)
{
    LoggerConfig config;
    config.model = "KR400";
    BenchOfOne bench(config);
    EXPECT_EQ(bench.Ask(Bootstrap + "J\r\n"), "");
    EXPECT_FALSE(bench.logger.Memory().bootstrap);
}

TEST(BootstrapMonitor, OutsideOfItItsCommandsMeanNothing)
{
    LoggerConfig config;
    config.memory.flash = "old";
    BenchOfOne bench(config);
    EXPECT_EQ(bench.Ask(Erase + Hello + "J\r\n"), "");
    EXPECT_EQ(bench.logger.Memory(), config.memory);
}

TEST(BootstrapMonitor, RefusesRecordsThatAreNotSound)
{
    BenchOfOne bench = inMonitor();
    bench.Ask(Erase);
    for (const char* record :
         {"S", "S2", "SA09060000", "S40900060000F0", "S2090600004", "S20906000048656c6c6fFC", "S20A06000048656C6C6FFB",
          "S20806000048656C6C6FFD", "S2", "S20206F7", "S20G06000048656C6C6FFC"})
        EXPECT_EQ(bench.Ask(record + std::string("\r")), "Record refused: form\r\n") << record;
    EXPECT_EQ(bench.Ask("S20906000048656C6C6FFD\r"), "Record refused: checksum\r\n");
    EXPECT_EQ(bench.Ask("S20906000148656C6C6FFC\r"), "Record refused: checksum\r\n");
    EXPECT_EQ(bench.logger.Memory().flash, "");
}

TEST(BootstrapMonitor, RefusesRecordsOutsideTheProgramArea)
{
    BenchOfOne bench = inMonitor();
    bench.Ask(Erase);
    EXPECT_EQ(bench.Ask("S20505FFFF41B6\r"), "Record refused: address\r\n");
    EXPECT_EQ(bench.Ask("S206070000414170\r"), "Record refused: address\r\n");
    EXPECT_EQ(bench.Ask("S20606FFFF414173\r"), "Record refused: address\r\n");
    EXPECT_EQ(bench.Ask("S104000041BA\r"), "Record refused: address\r\n");
    EXPECT_EQ(bench.Ask("S306FFFFFFFF41BC\r"), "Record refused: address\r\n");
    EXPECT_EQ(bench.Ask("S20506FFFF41B5\r"), "");
    EXPECT_EQ(bench.logger.Memory().flash.size(), BootstrapMonitor::AreaSize);
}

TEST(BootstrapMonitor, RefusesToWriteWhereItIsNotErased)
{
    LoggerConfig config;
    config.memory.flash = "o";
    BenchOfOne bench = inMonitor(config);
    EXPECT_EQ(bench.Ask(Hello), "Record refused: not erased\r\n");
    EXPECT_EQ(bench.logger.Memory().flash, "o");
    EXPECT_EQ(bench.Ask("EF 70000,1\r"), "Bad address\r\n");
}

TEST(BootstrapMonitor, AddressesOfAllWidthsAndGapsAreTaken)
{
    BenchOfOne bench = inMonitor();
    bench.Ask(Erase);
    EXPECT_EQ(bench.Ask("S3060006000442AD\rS20506000041B3\r"), "");
    EXPECT_EQ(bench.logger.Memory().flash, "A\xff\xff\xff"
                                           "B");
}

TEST(BootstrapMonitor, ADamagedImageIsToldWithTheReset)
{
    BenchOfOne bench = inMonitor(failing(Failure::GarblesRecord));
    bench.Ask(Erase);
    EXPECT_EQ(bench.Ask("S00600004844521B\r" + Hello), "Record refused: checksum\r\n");
    EXPECT_EQ(bench.Ask("J\r"), "Tallycore Version 7.18\r\nSelf test ... Flash program damaged.\r\n");
    EXPECT_EQ(bench.logger.Memory().flash, "");
}

TEST(BootstrapMonitor, EraseCanFail)
{
    LoggerConfig config = failing(Failure::EraseFails);
    config.memory.flash = "old";
    BenchOfOne bench = inMonitor(config);
    EXPECT_EQ(bench.Ask(Erase), "Erasing FLASH memory\r\nErase failed\r\n");
    EXPECT_EQ(bench.logger.Memory().flash, "old");
}

TEST(BootstrapMonitor, IgnoredAndRefusedLinesCountThereToo)
{
    LoggerConfig config = failing(Failure::IgnoresLines);
    config.lines = "J";
    BenchOfOne bench = inMonitor(config);
    EXPECT_EQ(bench.Ask("J\r"), "");
    EXPECT_EQ(bench.Ask(Erase), Erased);
    config = failing(Failure::RefusesLines);
    config.lines = "EF";
    BenchOfOne other = inMonitor(config);
    EXPECT_EQ(other.Ask(Erase), "Tallycore 1E9\r\n");
}

} // namespace harvelop::test
