// Jobs and flash memory of the KR4 family.
#include "simulator/bench_of_one.h"

#include <gtest/gtest.h>

namespace harvelop::test
{

namespace
{

const std::string Job1 = "BEGIN\"PUMP\"\nRA1S\n\nEND\n";

LoggerConfig withJobs(const std::string& version = "")
{
    LoggerConfig config;
    config.model = "KR400";
    config.version = version;
    config.memory.jobs = {{"TANK"}, {"PUMP", true, true, Job1}, {"WELL"}};
    return config;
}

std::vector<std::string> names(const BenchOfOne& bench)
{
    std::vector<std::string> all;
    for (const Job& job : bench.logger.Memory().jobs)
        all.push_back((job.current ? "*" : "") + job.name);
    return all;
}

} // namespace

TEST(SimulatedJobs, AreListedWithAStarAtTheCurrentOne)
{
    BenchOfOne bench(withJobs());
    EXPECT_EQ(bench.Ask("/r/e/m/z\r\nDIRJOBS\r\n"), " TANK\r\n*PUMP\r\n WELL\r\n");
    EXPECT_EQ(bench.Ask("CURJOB\r\n"), "*PUMP\r\n");
}

TEST(SimulatedJobs, WithoutAnyTheListIsShorterThanThreeCharacters)
{
    LoggerConfig config;
    config.model = "KR40";
    BenchOfOne bench(config);
    EXPECT_EQ(bench.Ask("DIRJOBS\r\n"), "\r\n");
    EXPECT_EQ(bench.Ask("CURJOB\r\n"), "No current job\r\n");
    EXPECT_EQ(bench.Ask("DELJOB\"X\"\r\n"), "tallyCore KR400 E7\r\n");
    EXPECT_EQ(bench.Ask("DELDATA\"X\"\r\n"), "tallyCore KR400 E7\r\n");
    EXPECT_EQ(bench.Ask("RUNJOBONRESET\"\"\r\n"), "tallyCore KR400 E7\r\n");
    EXPECT_EQ(bench.Ask("DELJOB*\r\n"), "All jobs done\r\n");
}

TEST(SimulatedJobs, TheOlderFamilyKnowsNothingOfThem)
{
    BenchOfOne bench({});
    EXPECT_EQ(bench.Ask("DIRJOBS\r\nCURJOB\r\nDELJOB*\r\nDELJOB\"X\"\r\nSINGLEPUSH\r\nFLASHONRESET\r\n"), "");
    bench.Ask("BEGIN\"PUMP\"\r\nEND\r\n");
    EXPECT_EQ(bench.logger.Memory(), LoggerMemory());
}

TEST(SimulatedJobs, OneWithoutDataIsDeleted)
{
    BenchOfOne bench(withJobs());
    EXPECT_EQ(bench.Ask("/M/E\r\nDELJOB\"TANK\"\r\n"), "DELJOB\"TANK\"\r\nTANK done\r\n");
    EXPECT_EQ(names(bench), (std::vector<std::string>{"*PUMP", "WELL"}));
}

TEST(SimulatedJobs, TheRunningOneMustBeHaltedFirst)
{
    LoggerConfig config = withJobs();
    config.memory.jobs[1].hasData = false;
    BenchOfOne bench(config);
    EXPECT_EQ(bench.Ask("DELJOB\"PUMP\"\r\n"), "PUMP not deleted - it is running\r\n");
    EXPECT_EQ(bench.Ask("H\r\nDELJOB\"PUMP\"\r\n"), "PUMP done\r\n");
    EXPECT_EQ(names(bench), (std::vector<std::string>{"TANK", "WELL"}));
}

TEST(SimulatedJobs, OneWithDataIsDeletedAfterItsData)
{
    BenchOfOne bench(withJobs());
    EXPECT_EQ(bench.Ask("H\r\nDELJOB\"PUMP\"\r\n"), "PUMP not deleted - it has data\r\n");
    EXPECT_EQ(bench.Ask("DELDATA\"PUMP\"\r\n"), "Data of PUMP deleted\r\n");
    EXPECT_EQ(bench.Ask("DELJOB\"PUMP\"\r\n"), "PUMP done\r\n");
    EXPECT_EQ(names(bench), (std::vector<std::string>{"TANK", "WELL"}));
}

TEST(SimulatedJobs, AllAreDeletedTogether)
{
    BenchOfOne bench(withJobs());
    EXPECT_EQ(bench.Ask("H\r\nDELJOB*\r\n"), "PUMP not deleted - it has data\r\n");
    EXPECT_EQ(names(bench), (std::vector<std::string>{"*PUMP"}));
    EXPECT_EQ(bench.Ask("DELALARMS*\r\n"), "All alarms deleted\r\n");
    EXPECT_EQ(bench.Ask("DELDATA*\r\n"), "All data deleted\r\n");
    EXPECT_EQ(bench.Ask("DELJOB*\r\n"), "All jobs done\r\n");
    EXPECT_EQ(names(bench), std::vector<std::string>());
}

TEST(SimulatedJobs, AJobIsWhatStandsFromBeginToEnd)
{
    BenchOfOne bench(withJobs());
    bench.Ask("' a remark\r\nBEGIN\"NEW\"\r\nRA1S\r\n\r\nH\r\nEND\r\n\r\n' another\r\n");
    EXPECT_EQ(names(bench), (std::vector<std::string>{"TANK", "PUMP", "WELL", "*NEW"}));
    EXPECT_EQ(bench.logger.Memory().jobs.back().text, "BEGIN\"NEW\"\nRA1S\n\nH\nEND\n");
    EXPECT_FALSE(bench.logger.Memory().halted);
    bench.Ask("BEGIN\"TANK\" RB5S END\r\n");
    EXPECT_EQ(names(bench), (std::vector<std::string>{"*TANK", "PUMP", "WELL", "NEW"}));
    EXPECT_EQ(bench.logger.Memory().jobs.front().text, "BEGIN\"TANK\" RB5S END\n");
}

TEST(SimulatedJobs, AProgramInMemoryMakesItsJobsToo)
{
    BenchOfOne bench(withJobs());
    bench.Ask("END /E/h/M/U CSCANS CALARMS G\r\n13SV\r\nBEGIN\"NEW\"\r\nRA1S\r\n\r\nEND\r\n");
    EXPECT_EQ(bench.logger.Memory().program, "BEGIN\"NEW\"\nRA1S\n\nEND\n");
    EXPECT_EQ(bench.logger.Memory().jobs.back().text, bench.logger.Memory().program);
}

TEST(SimulatedJobs, AJobWithoutItsEndIsForgotten)
{
    BenchOfOne bench(withJobs());
    bench.Ask("BEGIN\"NEW\"\r\nRA1S\r\nQ /H/r\r\nEND\r\n");
    EXPECT_EQ(names(bench), (std::vector<std::string>{"TANK", "*PUMP", "WELL"}));
}

TEST(SimulatedJobs, FlashTakesTheJobWithTheResetWhenToldSo)
{
    BenchOfOne bench(withJobs("4.06.0001"));
    EXPECT_EQ(bench.Ask("H\r\nRUNJOBONRESET\"PUMP\"\r\n"), "RUNJOBONRESET accepted\r\n");
    EXPECT_EQ(bench.logger.Memory().flashOnReset, FlashOnReset::Keep);
    EXPECT_EQ(bench.Ask("FLASHONRESET\r\n"), "FLASHONRESET accepted\r\n");
    EXPECT_EQ(bench.logger.Memory().flash, "");
    EXPECT_EQ(bench.Ask("SINGLEPUSH\r\n"), "tallyCore 400 Version 4.06.0001\r\nSelf test ... Done.\r\n");
    EXPECT_EQ(bench.logger.Memory().flash, Job1);
    EXPECT_EQ(names(bench), (std::vector<std::string>{"TANK", "*PUMP", "WELL"}));
    EXPECT_EQ(bench.logger.Memory().resets, 1);
    EXPECT_FALSE(bench.logger.Memory().halted);
}

TEST(SimulatedJobs, FromVersion5OnFlashNeedsNotBeTold)
{
    for (const auto& [version, flash] :
         {std::pair("5.00.0001", Job1), std::pair("4.99.0001", std::string()), std::pair("V5.000001", std::string())}) {
        BenchOfOne bench(withJobs(version));
        bench.Ask("RUNJOBONRESET\"PUMP\"\r\nSINGLEPUSH\r\n");
        EXPECT_EQ(bench.logger.Memory().flash, flash) << version;
    }
}

TEST(SimulatedJobs, FlashIsErasedWithTheReset)
{
    LoggerConfig config = withJobs();
    config.memory.flash = "old";
    config.memory.runOnReset = "TANK";
    BenchOfOne bench(config);
    EXPECT_EQ(bench.Ask("DELONRESET\r\n"), "DELONRESET accepted\r\n");
    EXPECT_EQ(bench.Ask("DELFLASHONRESET\r\n"), "DELFLASHONRESET accepted\r\n");
    EXPECT_EQ(bench.logger.Memory().flash, "old");
    EXPECT_EQ(bench.logger.Memory().flashOnReset, FlashOnReset::Erase);
    bench.Ask("SINGLEPUSH\r\n");
    EXPECT_EQ(bench.logger.Memory().flash, "");
    EXPECT_EQ(names(bench), (std::vector<std::string>{"TANK", "*PUMP", "WELL"}));
}

} // namespace harvelop::test
