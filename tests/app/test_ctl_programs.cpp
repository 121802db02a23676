// Loading of programs from the command line.
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

using CtlLoad = ProgramsCtlTest;

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

} // namespace harvelop::test
