// Listing and clearing of programs from the command line.
#include "programs_ctl.h"

#include <gmock/gmock.h>

namespace harvelop::test
{

namespace
{

using testing::Contains;
using testing::HasSubstr;
using testing::IsSupersetOf;
using testing::Not;

using CtlJobs = ProgramsCtlTest;
using CtlClear = ProgramsCtlTest;

constexpr const char* Jobs = "*FLOW\r\nRAIN 2\r\n";

} // namespace

TEST_F(CtlJobs, AreListedWithTheStar)
{
    kr4->Answer("DIRJOBS", Jobs);
    EXPECT_EQ(Run({"jobs", "2"}), CtlDone);
    EXPECT_EQ(out.str(), "*FLOW\nRAIN2\n");
    EXPECT_TRUE(Said("Getting Job List ...")) << said.str();
    EXPECT_TRUE(Released());
}

TEST_F(CtlJobs, ControlCharactersOfTheListDoNotReachTheTerminal)
{
    kr4->Answer("DIRJOBS", "A\x1b[2J\r\n");
    EXPECT_EQ(Run({"jobs", "2"}), CtlDone);
    EXPECT_EQ(out.str(), "A?[2J\n");
    EXPECT_EQ(Run({"jobs", "2", "--json"}), CtlDone);
    EXPECT_NE(out.str().find("\"A\\u001b[2J\""), std::string::npos) << out.str(); // which JSON escapes
}

TEST_F(CtlJobs, NoneAreTold)
{
    EXPECT_EQ(Run({"jobs", "2"}), CtlFailed);
    EXPECT_EQ(out.str(), "");
    EXPECT_TRUE(Said("Logger 2 lists no jobs."));
}

TEST_F(CtlJobs, ALoggerThatIsNotReachedOrGoesIsTold)
{
    kr4->whenLine = [this](const std::string& line) {
        if (line == "DIRJOBS")
            sockets.made.back()->PeerCloses();
    };
    EXPECT_EQ(Run({"jobs", "2"}), CtlFailed);
    EXPECT_TRUE(Said("The link to logger 2 is lost.")) << said.str();
    kr4->silent = true;
    dialogs.Expect(Ok);
    EXPECT_EQ(Run({"jobs", "2"}), CtlFailed);
    EXPECT_TRUE(Said("Logger 2 was not reached."));
}

TEST_F(CtlClear, DeletesTheNamedJob)
{
    kr4->Answer("DIRJOBS", Jobs);
    kr4->Answer("CURJOB", "*FLOW\r\n");
    EXPECT_EQ(Clear({"2", "--job", "RAIN 2"}, {Yes, Ok}), CtlDone) << said.str();
    EXPECT_THAT(Got(*kr4), Contains("DELJOB\"RAIN2\""));
    EXPECT_THAT(Got(*kr4), Not(Contains("DELJOB*")));
    EXPECT_EQ(Clear({"2", "--job", "*FLOW"}, {Yes, Ok}), CtlDone) << said.str();
    EXPECT_THAT(Got(*kr4), IsSupersetOf({"H", "DELJOB\"FLOW\""}));
}

TEST_F(CtlClear, AJobThatIsNotListedIsRefused)
{
    kr4->Answer("DIRJOBS", Jobs);
    for (const char* name : {"RAIN", "flow", "FLOWS", "x\x1by"}) {
        EXPECT_EQ(Clear({"2", "--job", name}, {Yes, Ok}), CtlFailed);
        EXPECT_EQ(LastBox(), "No Jobs deleted.     ");
    }
    EXPECT_TRUE(Said("Logger 2 lists no job x?y.")) << said.str();
    for (const std::string& line : Got(*kr4))
        EXPECT_THAT(line, Not(testing::StartsWith("DEL")));
}

TEST_F(CtlClear, WithoutJobsThereIsNothingToDelete)
{
    for (const Words& what : {Words{"2", "--job", "FLOW"}, {"2", "--all-jobs"}}) {
        EXPECT_EQ(Clear(what, {Yes, Ok}), CtlFailed);
        EXPECT_EQ(LastBox(), "There are no jobs in the KR400 to delete.     ");
    }
}

TEST_F(CtlClear, DeletesAllJobs)
{
    kr4->Answer("DIRJOBS", Jobs);
    kr4->Answer("CURJOB", "*FLOW\r\n");
    EXPECT_EQ(Clear({"2", "--all-jobs"}, {Yes, Ok}), CtlDone);
    EXPECT_THAT(Got(*kr4), IsSupersetOf({"H", "DELJOB*"}));
}

TEST_F(CtlClear, AJobWithDataIsDeletedOnlyWithAFurtherYes)
{
    kr4->Answer("DIRJOBS", Jobs);
    kr4->Answer("DELJOB\"FLOW\"", {{"FLOW not deleted - it has data\r\n"}, {"FLOW done\r\n"}});
    kr4->Answer("DELDATA\"FLOW\"", "deleted\r\n");
    EXPECT_EQ(Clear({"2", "--job", "FLOW"}, {Yes, No, Ok}), CtlFailed);
    EXPECT_EQ(LastBox(), "No Jobs or Data Deleted.     ");
    kr4->Answer("DELJOB\"FLOW\"", {{"FLOW not deleted - it has data\r\n"}, {"FLOW done\r\n"}});
    EXPECT_EQ(Clear({"2", "--job", "FLOW"}, {Yes, Yes, Ok}), CtlDone) << said.str();
    EXPECT_EQ(LastBox(), "The Job FLOW and all it's Data have been successfully deleted.     ");
}

TEST_F(CtlClear, AJobThatCannotBeDeletedFails)
{
    kr4->Answer("DIRJOBS", Jobs); // and "CURJOB" stays without an answer
    EXPECT_EQ(Clear({"2", "--job", "FLOW"}, {Yes, Ok}), CtlFailed);
    EXPECT_EQ(LastBox(), "There was an error deleting the Job FLOW");
}

TEST_F(CtlClear, DeletesTheProgramsOfAnOlderLogger)
{
    older->Answer("CALARMS CSCANS", "CALARMS CSCANS\r\n");
    EXPECT_EQ(Clear({"1", "--programs"}, {Yes, Ok}), CtlDone) << said.str();
    older->Answer("CALARMS CSCANS", "");
    EXPECT_EQ(Clear({"1", "--programs"}, {Yes, Ok}), CtlFailed);
    EXPECT_EQ(dialogs.shown.back().icon, BoxIcon::Critical);
    EXPECT_EQ(Clear({"1", "--programs"}, {No}), CtlFailed);
}

TEST_F(CtlClear, AsksAboutDataInItsOwnWords)
{
    older->Answer("H BEGIN", Data);
    EXPECT_EQ(Clear({"1", "--programs"}, {Yes, No}), CtlFailed);
    EXPECT_THAT(LastBox(), HasSubstr("before any current programs can be cleared"));
    EXPECT_THAT(Got(*older), Not(Contains("CALARMS CSCANS")));
}

TEST_F(CtlClear, DeletesTheProgramsOnTheCard)
{
    EXPECT_EQ(Clear({"1", "--card"}, {Yes, Ok}), CtlFailed);
    EXPECT_EQ(LastBox(), "No memory card found in the KR200 Series 3 on Com 1.     ");
    older->Answer("9SV(FF0) /U/N", Card);
    EXPECT_EQ(Clear({"1", "--card"}, {Yes, Ok}), CtlDone);
    EXPECT_THAT(Got(*older), Contains("CPROG"));
    EXPECT_EQ(Clear({"1", "--card"}, {No}), CtlFailed);
}

TEST_F(CtlClear, ErasesFlashMemoryOfBothFamilies)
{
    EXPECT_EQ(Clear({"1", "--flash"}, {Yes, Ok}), CtlFailed);
    EXPECT_EQ(dialogs.shown.back().icon, BoxIcon::Critical);
    older->Answer("\x1a"
                  "BOOTSTRAP",
                  "Bootstrap mode\r\n\r\n");
    older->Answer("EF 60000,1", "Erasing FLASH memory\r\nErase successful\r\n");
    older->Answer("J", "Tallycore 2\r\nDone.\r\n");
    EXPECT_EQ(Clear({"1", "--flash"}, {Yes, Ok}), CtlDone) << said.str();
    kr4->Answer("DELFLASHONRESET", "DELFLASHONRESET\r\n");
    EXPECT_EQ(Clear({"2", "--flash"}, {Yes, Ok}), CtlDone) << said.str();
    EXPECT_EQ(Clear({"2", "--flash"}, {No}), CtlFailed);
}

TEST(CtlClearInterrupted, ReleasesTheLinkAndDeletesNothing)
{
    ProgramsCtl whole;
    whole.kr4->Answer("DIRJOBS", Jobs);
    whole.kr4->Answer("CURJOB", "*FLOW\r\n");
    EXPECT_EQ(whole.Clear({"2", "--job", "FLOW"}, {ProgramsCtl::Yes, ProgramsCtl::Ok}), CtlDone);
    for (const char* step : {"/r/e/m/z", "DIRJOBS", "CURJOB"}) {
        ProgramsCtl t;
        t.kr4->Answer("DIRJOBS", Jobs);
        t.interruptMs = whole.SentAt(*whole.kr4, step) + 5;
        t.Answer({ProgramsCtl::Yes});
        t.Run({"clear", "2", "--job", "FLOW"});
        EXPECT_TRUE(t.Released()) << step;
        EXPECT_EQ(t.Got(*t.kr4).back(), step);
        EXPECT_LT(t.pump.NowMs(), t.interruptMs + 500) << step;
    }
}

} // namespace harvelop::test
