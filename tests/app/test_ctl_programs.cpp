// Loading, listing and clearing of programs from the command line.
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
using testing::IsSupersetOf;
using testing::Not;

using Words = std::vector<std::string>;

constexpr const char* ProgramFile = "/home/user/pump.cmd";
constexpr const char* NoCard = "\r\n0\r\n"; // the answers to "9SV(FF0) /U/N"
constexpr const char* Card = "\r\n1\r\n";
constexpr const char* Data = "Tallycore 2E4\r\n"; // to "H BEGIN"

LoggerRecord olderLogger()
{
    LoggerRecord record = SerialLogger();
    record.LoggerModel = "KR200 Series 3";
    return record;
}

// An older logger with flash memory on com port 1, a KR40 on the network, and another older one that has no flash.
struct ProgramsCtl : StoredCtl {
    ProgramsCtl() : StoredCtl({olderLogger(), NetworkLogger(), SerialLogger()})
    {
        File("options.ini") = "Icons=4\r\nShowMessages=1\r\nShowLoadMessages=1\r\n";
        files.files[ProgramFile] = "BEGIN\"FLOW\"\r\nRA1M\r\nEND\r\n";
        older->Identify("KR200 Series 3");
        older->Answer("9SV(FF0) /U/N", NoCard);
        older->Answer("13SV", "13SV\r\n2\r\n");
        serial.Plug(1, older, "9600");
        kr4->Identify("KR40");
        sockets.Plug("10.0.0.5", 3000, kr4);
    }

    void Answer(const std::vector<BoxAnswer>& answers)
    {
        for (const BoxAnswer answer : answers)
            dialogs.Expect(answer);
    }
    int Load(const Words& where, const std::vector<BoxAnswer>& answers)
    {
        dialogs.ExpectChooser(ProgramFile);
        return RunWith("load", where, answers);
    }
    int Clear(const Words& what, const std::vector<BoxAnswer>& answers) { return RunWith("clear", what, answers); }

    bool Said(const std::string& line) const
    {
        return ("\n" + said.str()).find("\n" + line + "\n") != std::string::npos;
    }
    std::string LastBox() const { return dialogs.shown.empty() ? "" : dialogs.shown.back().text; }
    // Nothing is open any more.
    bool Released() const
    {
        return !serial.PortOpen() && std::all_of(sockets.made.begin(), sockets.made.end(), [](FakeSocket* socket) {
            return !socket || socket->State() == SocketControl::Condition::Closed;
        });
    }
    Words Got(const FarEnd& logger) const
    {
        Words lines;
        for (const auto& line : logger.lines)
            lines.push_back(line.text);
        return lines;
    }

    double SentAt(const FarEnd& logger, const std::string& text) const
    {
        for (const auto& line : logger.lines)
            if (line.text == text)
                return line.ms;
        ADD_FAILURE() << "never sent: " << text;
        return 0;
    }

    std::shared_ptr<FarEnd> older = std::make_shared<FarEnd>();
    std::shared_ptr<FarEnd> kr4 = std::make_shared<FarEnd>();

    static constexpr BoxAnswer Yes = BoxAnswer::Yes;
    static constexpr BoxAnswer No = BoxAnswer::No;
    static constexpr BoxAnswer Ok = BoxAnswer::Ok;

private:
    // All boxes must have been shown; whatever comes of it, the link is released and nothing is printed as a result.
    int RunWith(const std::string& verb, const Words& rest, const std::vector<BoxAnswer>& answers)
    {
        Words words = {verb};
        words.insert(words.end(), rest.begin(), rest.end());
        const size_t before = dialogs.shown.size();
        Answer(answers);
        const int code = Run(words);
        EXPECT_EQ(dialogs.shown.size() - before, answers.size());
        EXPECT_TRUE(Released());
        EXPECT_EQ(out.str(), "");
        return code;
    }
};

struct CtlLoad : ProgramsCtl, testing::Test {
    using ProgramsCtl::Run;
};
using CtlJobs = CtlLoad;
using CtlClear = CtlLoad;

constexpr const char* Jobs = "*FLOW\r\nRAIN 2\r\n";

} // namespace

TEST_F(CtlLoad, SendsTheFileToTheMemory)
{
    EXPECT_EQ(Load({"1", ProgramFile}, {Yes, Ok}), CtlDone) << said.str();
    EXPECT_THAT(Got(*older), IsSupersetOf({"BEGIN\"FLOW\"", "RA1M", "END"}));
    EXPECT_THAT(dialogs.shown.at(0).text, HasSubstr(ProgramFile));
    EXPECT_THAT(LastBox(), HasSubstr("Program sent successfully to the KR200 Series 3 on Com 1"));
    EXPECT_TRUE(Said("Sending New Program to the KR200 Series 3 on Com 1 ...")) << said.str();
}

TEST_F(CtlLoad, ReachesTheNetworkToo)
{
    EXPECT_EQ(Load({"2", ProgramFile}, {Yes, Ok}), CtlDone) << said.str();
    EXPECT_THAT(Got(*kr4), Contains("RA1M"));
}

TEST_F(CtlLoad, ARefusedCautionFailsAndSendsNothing)
{
    EXPECT_EQ(Load({"1", ProgramFile}, {No}), CtlFailed);
    EXPECT_THAT(Got(*older), Not(Contains("RA1M")));
    EXPECT_TRUE(Said("Program not Sent to the tallyCore"));
}

TEST_F(CtlLoad, DataThatIsToBeKeptFails)
{
    older->Answer("H BEGIN", Data);
    EXPECT_EQ(Load({"1", ProgramFile}, {Yes, No}), CtlFailed);
    EXPECT_THAT(LastBox(), HasSubstr("before the new program can be sent"));
    EXPECT_THAT(Got(*older), Not(Contains("CLEAR CDATA")));
    EXPECT_EQ(Load({"1", ProgramFile}, {Yes, Yes, Ok}), CtlDone);
    EXPECT_THAT(Got(*older), IsSupersetOf({"CLEAR CDATA", "RA1M"}));
}

TEST_F(CtlLoad, ALineThatTheLoggerRejectsFails)
{
    older->Answer("BEGIN\"FLOW\"", "Tallycore 2E7\r\n");
    EXPECT_EQ(Load({"1", ProgramFile}, {Yes, Ok}), CtlFailed);
    EXPECT_EQ(dialogs.shown.back().icon, BoxIcon::Critical);
    EXPECT_THAT(LastBox(), HasSubstr("at line 1."));
    EXPECT_THAT(Got(*older), Not(Contains("RA1M")));
}

TEST_F(CtlLoad, AsksNothingWhereTheOptionsWantNoQuestions)
{
    File("options.ini") = "ShowLoadMessages=0\r\n";
    older->Answer("H BEGIN", Data);
    EXPECT_EQ(Load({"1", ProgramFile}, {Ok}), CtlDone);
    EXPECT_THAT(Got(*older), IsSupersetOf({"CLEAR CDATA", "RA1M"}));
}

TEST_F(CtlLoad, ToTheCardEndsWithAnOfferThatMayBeDeclined)
{
    older->Answer("9SV(FF0) /U/N", Card);
    EXPECT_EQ(Load({"1", ProgramFile, "--card"}, {Yes, Ok, No}), CtlDone) << said.str();
    EXPECT_THAT(Got(*older), IsSupersetOf({"CPROG", "RA1M;"}));
    EXPECT_THAT(Got(*older), Not(Contains("RUNPROG")));
}

TEST_F(CtlLoad, AnOfferThatIsTakenMustBeConfirmed)
{
    older->Answer("9SV(FF0) /U/N", Card);
    EXPECT_EQ(Load({"1", ProgramFile, "--card"}, {Yes, Ok, Yes}), CtlFailed);
    EXPECT_THAT(Got(*older), Contains("RUNPROG"));
    EXPECT_TRUE(Said("No confirmation came from logger 1."));
    older->Answer("RUNPROG", "RUNPROG\r\n");
    EXPECT_EQ(Load({"1", ProgramFile, "--card"}, {Yes, Ok, Yes, Ok}), CtlDone);
    EXPECT_FALSE(Said("No confirmation came from logger 1."));
}

TEST_F(CtlLoad, WithoutACardNothingGoesThere)
{
    EXPECT_EQ(Load({"1", ProgramFile, "--card"}, {Ok}), CtlFailed);
    EXPECT_EQ(LastBox(), "No memory card found in the KR200 Series 3 on Com 1.     ");
    EXPECT_THAT(Got(*older), Not(Contains("CPROG")));
}

TEST_F(CtlLoad, FlashOfAnOlderLoggerTakesTheImage)
{
    older->Answer("J", "Tallycore 2\r\nDone.\r\n");
    File("temp.sre") = "S0030000FC\r\n"; // as the converters make it
    EXPECT_EQ(Load({"1", ProgramFile, "--flash"}, {Yes, Ok}), CtlDone) << said.str();
    EXPECT_THAT(Got(*older), IsSupersetOf({"EF 60000,1", "S0030000FC", "J"}));
    EXPECT_EQ(files.files.count(std::string(Directory) + "/temp.sre"), 0u);
}

TEST_F(CtlLoad, FlashOfAnOlderLoggerThatDoesNotComeBackFails)
{
    File("temp.sre") = "S0030000FC\r\n"; // as the converters make it
    EXPECT_EQ(Load({"1", ProgramFile, "--flash"}, {Yes}), CtlFailed);
    EXPECT_TRUE(Said("No confirmation came from logger 1.")) << said.str();
}

TEST_F(CtlLoad, FlashWithoutItsConvertersFails)
{
    desktop.starts = false;
    EXPECT_EQ(Load({"1", ProgramFile, "--flash"}, {Ok, Ok, Ok, Yes, Ok}), CtlFailed);
    EXPECT_EQ(LastBox(), "There was an error sending the file to the tallyCore.     \r");
}

TEST_F(CtlLoad, FlashOfTheNewerFamilyOffersAReset)
{
    kr4->Answer("RUNJOBONRESET\"FLOW\"", "RUNJOBONRESET\r\n");
    kr4->Answer("FLASHONRESET", "FLASHONRESET\r\n");
    EXPECT_EQ(Load({"2", ProgramFile, "--flash"}, {Yes, Ok, No}), CtlDone) << said.str();
    EXPECT_THAT(Got(*kr4), Not(Contains("SINGLEPUSH")));
    EXPECT_EQ(Load({"2", ProgramFile, "--flash"}, {Yes, Ok, Yes, Ok}), CtlDone) << said.str();
    EXPECT_THAT(Got(*kr4), Contains("SINGLEPUSH"));
}

TEST_F(CtlLoad, AResetMayTakeTheLinkAlong)
{
    kr4->Answer("RUNJOBONRESET\"FLOW\"", "RUNJOBONRESET\r\n");
    kr4->whenLine = [this](const std::string& line) {
        if (line == "SINGLEPUSH")
            sockets.made.back()->PeerCloses();
    };
    EXPECT_EQ(Load({"2", ProgramFile, "--flash"}, {Yes, Ok, Yes, Ok}), CtlDone) << said.str();
}

TEST_F(CtlLoad, FlashThatIsNotConfirmedFailsThoughTheResetIsTold)
{
    EXPECT_EQ(Load({"2", ProgramFile, "--flash"}, {Yes, Yes, Ok}), CtlFailed);
    EXPECT_EQ(LastBox(), "tallyCore reset and Flash program started.     ");
    EXPECT_TRUE(Said("No confirmation came from logger 2.")) << said.str();
}

TEST_F(CtlLoad, ALinkThatIsLostIsToldThoughTheDialogueEndsWell)
{
    kr4->whenLine = [this](const std::string& line) {
        if (line == "RA1M")
            sockets.made.back()->PeerCloses();
    };
    EXPECT_EQ(Load({"2", ProgramFile}, {Yes, Ok}), CtlFailed);
    EXPECT_TRUE(Said("The link to logger 2 is lost.")) << said.str();
}

TEST_F(CtlLoad, ALoggerThatIsNotReachedFails)
{
    older->silent = true;
    for (const Words& words : {Words{"load", "1", ProgramFile},
                               {"load", "1", ProgramFile, "--card"},
                               {"load", "1", ProgramFile, "--flash"},
                               {"clear", "1", "--programs"}}) {
        if (words[0] == "load")
            dialogs.ExpectChooser(ProgramFile);
        Answer({Ok});
        EXPECT_EQ(Run(words), CtlFailed);
        EXPECT_TRUE(Said("Logger 1 was not reached.")) << said.str();
        EXPECT_TRUE(Released());
    }
}

TEST_F(CtlLoad, AFileThatIsMissingOrUnreadableIsRefusedBeforeAnythingIsOpened)
{
    for (const char* option : {"--card", "--flash", "--yes"})
        EXPECT_EQ(Refusal({"load", "1", "/home/user/none.cmd", option}), "There is no file /home/user/none.cmd.\n");
    files.unreadable.insert(ProgramFile);
    EXPECT_EQ(Refusal({"load", "1", ProgramFile}), "The file /home/user/pump.cmd can't be read.\n");
    EXPECT_TRUE(serial.events.empty());
}

TEST_F(CtlLoad, WhatTheModelHasNoUseForIsRefusedBeforeAnythingIsOpened)
{
    files.files.erase(OptionsIni); // and is not made anew
    const std::vector<std::pair<Words, std::string>> refused = {
        {{"load", "2", ProgramFile, "--card"}, "A KR40 keeps its card as its memory by itself.\n"},
        {{"clear", "2", "--card"}, "A KR40 keeps its card as its memory by itself.\n"},
        {{"clear", "2", "--programs"}, "A KR40 keeps its programs as jobs; --job and --all-jobs delete them.\n"},
        {{"clear", "1", "--job", "FLOW"}, "A KR200 Series 3 keeps no jobs; --programs deletes what it runs.\n"},
        {{"clear", "1", "--all-jobs"}, "A KR200 Series 3 keeps no jobs; --programs deletes what it runs.\n"},
        {{"jobs", "1"}, "A KR200 Series 3 keeps no jobs.\n"},
        {{"load", "3", ProgramFile, "--flash"}, "A KR200 Series 2 has no flash memory.\n"},
        {{"clear", "3", "--flash"}, "A KR200 Series 2 has no flash memory.\n"}};
    for (const auto& [words, reason] : refused)
        EXPECT_EQ(Refusal(words), reason);
    EXPECT_TRUE(serial.events.empty());
    EXPECT_TRUE(sockets.made.empty());
}

TEST_F(CtlLoad, LoggersAndOptionsThatCannotBeReadAreTold)
{
    const std::vector<Words> commands = {
        {"load", "4", ProgramFile}, {"jobs", "4"}, {"clear", "4", "--flash"}, {"clear", "4", "--job", "A"}};
    for (const Words& words : commands)
        EXPECT_EQ(Refusal(words), "There is no logger 4.\n");
    files.unreadable.insert(OptionsIni);
    for (const Words& words : {Words{"load", "2", ProgramFile}, {"jobs", "2"}, {"clear", "2", "--all-jobs"}})
        EXPECT_EQ(Refusal(words), "The file /home/user/loggers/options.ini can't be read.\n");
}

TEST_F(CtlLoad, AnInterruptReleasesTheLinkAndSendsNoFurtherLine)
{
    std::string& program = files.files[ProgramFile];
    for (int line = 0; line < 300; ++line)
        program += "RA1M\r\n";
    dialogs.ExpectChooser(ProgramFile);
    dialogs.Expect(Yes);
    interruptMs = 30000;
    Run({"load", "1", ProgramFile});
    EXPECT_TRUE(Released());
    EXPECT_GT(older->lines.size(), 50u);
    EXPECT_LT(older->lines.size(), 300u);
    EXPECT_LE(older->lines.back().ms, interruptMs + 100); // what was in the line by then
    EXPECT_LT(pump.NowMs(), interruptMs + 500);
}

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
