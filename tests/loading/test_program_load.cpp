// The sending of a program to a logger's internal memory, as the user and the logger see it.
#include "identify/panel_work.h"
#include "loading/load_bench.h"

namespace harvelop::test
{
namespace
{

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::StartsWith;

constexpr BoxAnswer Yes = BoxAnswer::Yes;
constexpr BoxAnswer No = BoxAnswer::No;
constexpr BoxAnswer Ok = BoxAnswer::Ok;

struct ProgramLoad : ProgramLoadTest {
    ProgramLoad() { Connect(); }
};

struct KR4ProgramLoad : ProgramLoadTest {
    KR4ProgramLoad() : ProgramLoadTest(KR4Model) { Connect(); }
};

TEST_F(ProgramLoad, GoesThroughAllItsSteps)
{
    Expect({Yes, Ok});
    Send();
    EXPECT_THAT(journal,
                ElementsAre("- Searching for Memory Card ...", "> END", "> /h/R/u/n/E/d/t", "> 9SV(FF0) /U/N",
                            "- No Memory Card Found",
                            StartsWith("! Caution : You are about to send a new program to the KR200 "),
                            "- Checking for Data ...", "> H BEGIN", "- No Matching Data Found",
                            "- Sending New Program to the KR200 Series 2 on Com 3 ...",
                            "> END /E/h/M/U CSCANS CALARMS G", "> 13SV", "> BEGIN", "> RA1M 1TK", "> ", "> END",
                            "! Program sent successfully to the KR200 Series 2 on Com 3 and started running. "
                            "    ",
                            "- "));
    EXPECT_FALSE(messages.Visible());
    EXPECT_FALSE(heart.end.Ended());
    EXPECT_TRUE(heart.link.LinkConnected);
}

TEST_F(ProgramLoad, SpeaksTheLanguageOfItsFile)
{
    UseNumberedTexts();
    HasData();
    Expect({Yes, Yes, Ok});
    Send();
    EXPECT_THAT(Steps(), ElementsAre("<339> ...", "<341>", "<333> ...", "<354>", "<336> ...",
                                     "<330> KR200 Series 2 on Com 3 ...", ""));
    EXPECT_THAT(Boxes(), ElementsAre(testing::Field(&Box::text, StartsWith("<585> ")),
                                     testing::Field(&Box::text, StartsWith("<608> ")),
                                     testing::Field(&Box::text, "<603> KR200 Series 2 on Com 3 .     ")));
}

TEST_F(ProgramLoad, PausesAsLongAsTheLoggerNeeds)
{
    Expect({Yes, Ok});
    Send();
    const long search = SentAt("END");
    EXPECT_EQ(SentAt("/h/R/u/n/E/d/t") - search, 500);
    EXPECT_EQ(SentAt("9SV(FF0) /U/N") - search, 2000);
    const long answered = SentAt("9SV(FF0) /U/N") + 10;
    EXPECT_EQ(SentAt("H BEGIN") - answered, 1000);
    EXPECT_EQ(SentAt("END /E/h/M/U CSCANS CALARMS G") - SentAt("H BEGIN"), 3000);
    EXPECT_EQ(SentAt("13SV") - SentAt("END /E/h/M/U CSCANS CALARMS G"), 1000);
    EXPECT_EQ(SentAt("BEGIN") - SentAt("13SV"), 510);
    EXPECT_EQ(Now() - SentAt(""), 100 + 100 + 500 + 500);
}

TEST_F(ProgramLoad, TakesATenthOfASecondALine)
{
    std::string text;
    for (int line = 1; line <= 500; ++line)
        text += std::to_string(line) + "CV=1\r\n";
    StoreProgram(text);
    Expect({Yes, Ok});
    Send();
    EXPECT_EQ(SentAt("500CV=1") - SentAt("1CV=1"), 49900);
    EXPECT_EQ(ProgramLines().size(), 500u);
}

TEST_F(ProgramLoad, TheBarMovesByTheLengthOfEachLineAndIsFullAtTheEnd)
{
    Expect({Yes, Ok});
    std::vector<int> moves;
    int total = 0;
    far->whenLine = [&](const std::string&) {
        moves.push_back(messages.value);
        total = messages.max;
    };
    Send();
    EXPECT_EQ(total, 5 + 8 + 0 + 3);
    EXPECT_THAT(std::vector<int>(moves.end() - 4, moves.end()), ElementsAre(5, 13, 13, 13)); // steps never fill it
    EXPECT_EQ(messages.value, total);
}

TEST_F(ProgramLoad, DataInMemoryAreErasedAfterAQuestion)
{
    HasData();
    Expect({Yes, Yes, Ok});
    std::vector<bool> shown;
    whenBoxShows = [&](const Box&) { shown.push_back(messages.Visible()); };
    Send();
    EXPECT_THAT(std::vector<std::string>(journal.begin() + 6, journal.end()),
                ElementsAre("- Checking for Data ...", "> H BEGIN", "- Data Found in Memory",
                            StartsWith("! WARNING : There is Data from a previous program stored in the KR200 "),
                            "- Deleting Memory Data ...", "> /E", "> CLEAR CDATA",
                            "- Sending New Program to the KR200 Series 2 on Com 3 ...",
                            "> END /E/h/M/U CSCANS CALARMS G", "> 13SV", "> BEGIN", "> RA1M 1TK", "> ", "> END",
                            StartsWith("! Program sent successfully"), "- "));
    EXPECT_THAT(shown, ElementsAre(false, false, false)); // the progress window, before each box
    EXPECT_EQ(SentAt("CLEAR CDATA") - SentAt("/E"), 1000);
    EXPECT_EQ(SentAt("/E") - SentAt("H BEGIN"), 2000 + 1000 + 1500); // with the bar that fills meanwhile
}

TEST_F(ProgramLoad, ALoggerThatDoesNotConfirmTheErasureGetsTheProgramAllTheSame)
{
    HasData();
    far->Answer("CLEAR CDATA", "");
    Expect({Yes, Yes, Ok});
    Send();
    EXPECT_THAT(ProgramLines(), ElementsAre("BEGIN", "RA1M 1TK", "", "END"));
    EXPECT_EQ(SentAt("END /E/h/M/U CSCANS CALARMS G") - SentAt("CLEAR CDATA"), 5000);
}

TEST_F(ProgramLoad, RefusedItIsSaidForASecondAndNothingIsSent)
{
    for (const BoxAnswer refusal : {No, BoxAnswer::Cancel}) {
        Forget();
        Expect({refusal});
        Send();
        EXPECT_EQ(Steps().back(), "Program not Sent to the tallyCore");
        EXPECT_EQ(Lines().back(), "9SV(FF0) /U/N");
        EXPECT_EQ(Now() - SentAt("9SV(FF0) /U/N"), 10 + 1000 + 1000);
        EXPECT_FALSE(messages.Visible());
        EXPECT_EQ(heart.link.ResponseText, std::to_string(static_cast<int>(refusal)));
    }
}

TEST_F(ProgramLoad, DataThatTheUserKeepsStopTheSendingWithoutAWord)
{
    HasData();
    Expect({Yes, No});
    Send();
    EXPECT_EQ(Steps().back(), "Data Found in Memory");
    EXPECT_EQ(Lines().back(), "H BEGIN");
    EXPECT_FALSE(messages.Visible());
    EXPECT_EQ(heart.link.ResponseText, "7");
}

TEST_F(ProgramLoad, WithoutLoadMessagesNothingIsAskedAndDataAreErased)
{
    heart.options.ShowLoadMessages = false;
    HasData();
    Expect({Ok});
    Send();
    EXPECT_THAT(journal, ElementsAre("- Searching for Memory Card ...", "> END", "> /h/R/u/n/E/d/t", "> 9SV(FF0) /U/N",
                                     "- No Memory Card Found", "- Checking for Data ...", "> H BEGIN",
                                     "- Deleting Memory Data ...", "> /E", "> CLEAR CDATA",
                                     "- Sending New Program to the KR200 Series 2 on Com 3 ...",
                                     "> END /E/h/M/U CSCANS CALARMS G", "> 13SV", "> BEGIN", "> RA1M 1TK", "> ",
                                     "> END", StartsWith("! Program sent successfully to the"), "- "));
}

TEST_F(ProgramLoad, ACardInTheLoggerChangesTheNoteAndTheDataQuestion)
{
    HasCard(true);
    HasData();
    Expect({Yes, Yes, Ok});
    Send();
    EXPECT_THAT(Boxes()[0].text, testing::HasSubstr("the one you have selected. .\r\r"));
    EXPECT_THAT(Boxes()[1].text, StartsWith("WARNING : There is Data from a previous program stored on the memory "));
    EXPECT_THAT(Steps(), ElementsAre("Searching for Memory Card ...", "Memory Card Found", "Checking for Data ...",
                                     "Data Found on Card", "Deleting Card Data ...",
                                     "Sending New Program to the KR200 Series 2 on Com 3 ...", ""));
    EXPECT_THAT(ProgramLines(), ElementsAre("BEGIN", "RA1M 1TK", "", "END")); // as it stands: to memory
}

TEST_F(ProgramLoad, TheTextsOfADeletionStayUntilOneHasSucceeded)
{
    heart.state.ClearMode = true;
    HasData();
    Expect({Yes, No});
    Send();
    EXPECT_THAT(Boxes().back().text, StartsWith("WARNING : Data has been found stored in the KR200 "));
}

TEST_F(KR4ProgramLoad, GoesThroughTheSameSteps)
{
    HasData();
    far->Answer("13SV", "13SV\r\nKR400\r\n");
    Expect({Yes, Yes, Ok});
    Send();
    EXPECT_THAT(journal,
                ElementsAre("- Searching for Memory Card ...", "> END", "> /h/R/u/n/E/d/t", "> 9SV(FF0) /U/N",
                            "- No Memory Card Found",
                            StartsWith("! Caution : You are about to send a new program to "
                                       "the KR400 on Com 3.\r\rYou have selected"),
                            "- Checking for Data ...", "> H BEGIN", "- Data Found in Memory",
                            StartsWith("! WARNING : There is Data from a previous program stored in the KR400 "),
                            "- Deleting Memory Data ...", "> /E", "> CLEAR CDATA",
                            "- Sending New Program to the KR400 on Com 3 ...", "> END /E/h/M/U CSCANS CALARMS G",
                            "> 13SV", "> BEGIN", "> RA1M 1TK", "> ", "> END",
                            "! Program sent successfully to the KR400 on Com 3 and started running.     ", "- "));
}

TEST_F(KR4ProgramLoad, RefusedItHasATextOfItsOwn)
{
    UseNumberedTexts();
    Expect({No});
    Send();
    EXPECT_EQ(Steps().back(), "<329>");
}

TEST_F(ProgramLoad, OnlyAModelThatHoldsKR4InThatCaseIsOfItsFamily)
{
    for (const auto& [model, text] : {std::pair{"KR40", "<593>"}, std::pair{"My KR4", "<593>"},
                                      std::pair{"kr400", "<585>"}, std::pair{"KR 400", "<585>"}}) {
        Forget();
        UseNumberedTexts();
        heart.tables.Record(1)->LoggerModel = model;
        Expect({No});
        Send();
        EXPECT_THAT(Boxes().back().text, StartsWith(text)) << model;
    }
}

TEST_F(ProgramLoad, WithoutAnAnswerAboutTheCardWhatWasKnownStands)
{
    for (const bool known : {false, true}) {
        Forget();
        far->Answer("9SV(FF0) /U/N", known ? "\r\nERR\r\n" : "");
        heart.loading.CardPresent.Set(1, known);
        Expect({No});
        Send();
        EXPECT_EQ(heart.loading.CardPresent.Get(1), known);
        EXPECT_THAT(Steps(), ElementsAre("Searching for Memory Card ...", "Program not Sent to the tallyCore"));
        EXPECT_EQ(Boxes().back().text.find(". .\r\r") != std::string::npos, known);
    }
}

TEST_F(ProgramLoad, TheLinkAndTheControlsAreTheButtonsAffair)
{
    dialogs.ExpectChooser(ProgramFile);
    Expect({Yes, Ok});
    LoadOnLogger(heart.panelServices(), 1);
    EXPECT_THAT(dialogs.choosers, ElementsAre(testing::AllOf(
                                      testing::Field(&ScriptedDialogs::Chooser::title,
                                                     " Choose a Program to Send to the KR200 Series 2 on Com 3 ..."),
                                      testing::Field(&ScriptedDialogs::Chooser::startIn, "/home/user/loggers/"))));
    EXPECT_THAT(ProgramLines(), ElementsAre("BEGIN", "RA1M 1TK", "", "END"));
    EXPECT_THAT(Lines(), ElementsAre("END", "/h/R/u/n/E/d/t", "9SV(FF0) /U/N", "H BEGIN",
                                     "END /E/h/M/U CSCANS CALARMS G", "13SV", "BEGIN", "RA1M 1TK", "", "END"));
    EXPECT_FALSE(serial.PortOpen());
    EXPECT_EQ(heart.link.LinkMode, "None");
    EXPECT_FALSE(heart.loggerControls.Working());
    EXPECT_FALSE(heart.end.Ended());
}

TEST_F(ProgramLoad, ACancelledChoiceConnectsToNothing)
{
    heart.loading.ProgramFileName = "/home/user/former.cmd";
    heart.loading.CardLoadMode = true;
    dialogs.ExpectChooser("");
    heart.programLoading.LoadProgram();
    EXPECT_THAT(Lines(), IsEmpty());
    EXPECT_THAT(heart.loading.ProgramFileName, IsEmpty());
    EXPECT_FALSE(heart.loading.CardLoadMode); // each start of a load clears it
    EXPECT_EQ(dialogs.choosers.back().title, " Choose a Program to Send to the KR200 Series 2 on Com 3 ...");
}

TEST_F(ProgramLoad, TheChooserOfFlashNamesFlashWhateverTheCard)
{
    heart.loading.FlashLoadMode = heart.loading.CardLoadMode = true;
    dialogs.ExpectChooser(ProgramFile);
    heart.programLoading.ChooseProgramFile();
    EXPECT_EQ(dialogs.choosers.back().title, " Choose a Program to Send to Flash in the KR200 Series 2 on Com 3 ...");
    EXPECT_EQ(heart.loading.ProgramFileName, ProgramFile);
    EXPECT_FALSE(messages.Visible());
}

TEST_F(ProgramLoad, OverTheNetworkTheLoggerGetsTheSameLines)
{
    UseNetworkLogger(KR4Model);
    dialogs.ExpectChooser(ProgramFile);
    Expect({Yes, Ok});
    LoadOnLogger(heart.panelServices(), 1);
    EXPECT_THAT(ProgramLines(), ElementsAre("BEGIN", "RA1M 1TK", "", "END"));
    EXPECT_EQ(Boxes().back().text, "Program sent successfully to the KR400 at 10.0.0.5:3000 and started running.     ");
    EXPECT_EQ(heart.link.LinkMode, "None");
}

} // namespace
} // namespace harvelop::test
