// Memory cards: programs sent to them, and programs deleted from them.
#include "identify/panel_work.h"
#include "loading/load_bench.h"

namespace harvelop::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

constexpr BoxAnswer Yes = BoxAnswer::Yes;
constexpr BoxAnswer No = BoxAnswer::No;
constexpr BoxAnswer Ok = BoxAnswer::Ok;
constexpr const char* Started = "Memory card program started.     ";

struct CardLoad : ProgramLoadTest {
    explicit CardLoad(const std::string& model = OlderModel, int number = 1) : ProgramLoadTest(model, number)
    {
        HasCard(true);
        far->Answer("CPROG", "CPROG\r\n");
        far->Answer("RUNPROG", "RUNPROG\r\n");
    }
    void Load()
    {
        dialogs.ExpectChooser(ProgramFile);
        heart.programLoading.LoadCardProgram();
    }
    // What has happened since the logger was reached.
    Journal SinceConnected() const
    {
        const auto found = std::find(journal.begin(), journal.end(), "- Searching for Memory Card ...");
        return Journal(found, journal.end());
    }
};

struct KR4CardLoad : CardLoad {
    KR4CardLoad() : CardLoad(KR4Model) {}
};

TEST_F(CardLoad, GoesThroughAllItsSteps)
{
    Expect({Yes, Ok, Yes, Ok});
    Load();
    EXPECT_EQ(journal.front(), "?  Choose a Program to Send to the Card in the KR200 Series 2 on Com 3 ...");
    EXPECT_THAT(SinceConnected(),
                ElementsAre("- Searching for Memory Card ...", "> END", "> /h/R/u/n/E/d/t", "> 9SV(FF0) /U/N",
                            "- Memory Card Found",
                            StartsWith("! Caution : You are about to send a new program to the memory card plugged "),
                            "- Checking for Data ...", "> H BEGIN", "- No Matching Data Found", "> H /E", "> CPROG",
                            "- Sending Program to Card in the KR200 Series 2 on Com 3 ...",
                            "> END /E/h/M/U CSCANS CALARMS G", "> 13SV", "> BEGIN;", "> RA1M 1TK;", "> ;", "> END;",
                            "> \r",
                            "! Program sent successfully to the memory card plugged into the KR200 Series 2 on Com 3.  "
                            "   ",
                            "! Do you want to start running the new memory card program now ?     ", "> RUNPROG",
                            "! Memory card program started.     ", "- "));
    EXPECT_FALSE(heart.loading.CardLoadMode);
    EXPECT_FALSE(messages.Visible());
    EXPECT_EQ(SentAt("CPROG") - SentAt("H /E"), 1000);
    EXPECT_EQ(SentAt("\r") - SentAt("END;"), 100 + 500);
    EXPECT_EQ(SentAt("RUNPROG") - SentAt("\r"), 500);
}

TEST_F(CardLoad, SpeaksTheLanguageOfItsFile)
{
    UseNumberedTexts();
    HasData();
    Expect({Yes, Yes, Ok, Yes, Ok});
    Load();
    EXPECT_EQ(journal.front(), "?  Choose a Program to Send to the Card in the KR200 Series 2 on Com 3 ...");
    const auto steps = Steps();
    EXPECT_THAT(
        std::vector<std::string>(steps.end() - 7, steps.end()),
        ElementsAre("<339> ...", "<340>", "<333> ...", "<335>", "<337> ...", "<331> KR200 Series 2 on Com 3 ...", ""));
    EXPECT_THAT(Boxes(), ElementsAre(Box{"<589> KR200 Series 2 on Com 3. <590>.\r\r<591> : \r\r/home/user/pump.cmd\r\r"
                                         "<592>.",
                                         BoxTitle, BoxIcon::Information, BoxButtons::YesNo},
                                     Box{"<614> KR200 Series 2 on Com 3. <615>. \r\r<616>.", BoxTitle,
                                         BoxIcon::Exclamation, BoxButtons::YesNo},
                                     Box{"<605> KR200 Series 2 on Com 3.     ", "", BoxIcon::Information},
                                     Box{"<606>     ", "", BoxIcon::Question, BoxButtons::YesNo},
                                     Box{"<607>.     ", "", BoxIcon::Information}));
}

TEST_F(CardLoad, ReportsAndAsksInPlainBoxes)
{
    Expect({Yes, Ok, Yes, Ok});
    Load();
    EXPECT_EQ(Boxes()[1].icon, BoxIcon::Information);
    EXPECT_EQ(Boxes()[1].title, "");
    EXPECT_EQ(Boxes()[2], (Box{"Do you want to start running the new memory card program now ?     ", "",
                               BoxIcon::Question, BoxButtons::YesNo}));
    EXPECT_EQ(Boxes()[3], (Box{Started, "", BoxIcon::Information}));
}

TEST_F(CardLoad, WithoutACardNothingIsSent)
{
    HasCard(false);
    Expect({Ok});
    Load();
    EXPECT_EQ(Boxes().back(),
              (Box{"No memory card found in the KR200 Series 2 on Com 3.     ", BoxTitle, BoxIcon::Critical}));
    EXPECT_EQ(Lines().back(), "9SV(FF0) /U/N");
    EXPECT_FALSE(messages.Visible());
    EXPECT_TRUE(heart.loading.CardLoadMode); // until the next load begins
}

TEST_F(CardLoad, WithoutACardItIsSaidInTheLanguageOfItsFile)
{
    UseNumberedTexts();
    HasCard(false);
    Expect({Ok});
    Load();
    EXPECT_EQ(Boxes().back(), (Box{"<629> KR200 Series 2 on Com 3.     ", BoxTitle, BoxIcon::Critical}));
}

TEST_F(CardLoad, ACardOfAnEarlierLookCountsIfTheLoggerTellsNothing)
{
    far->Answer("9SV(FF0) /U/N", "");
    heart.loading.CardPresent.Set(1, true);
    Expect({No});
    Load();
    EXPECT_EQ(Steps().back(), "Program not Sent to the Card");
}

TEST_F(CardLoad, RefusedItIsSaidForASecondAndTheModeIsGone)
{
    Expect({No});
    Load();
    EXPECT_EQ(Steps().back(), "Program not Sent to the Card");
    EXPECT_EQ(Lines().back(), "9SV(FF0) /U/N");
    EXPECT_EQ(Now() - SentAt("9SV(FF0) /U/N"), 10 + 1000 + 1000);
    EXPECT_FALSE(heart.loading.CardLoadMode);
    EXPECT_FALSE(messages.Visible());
}

TEST_F(CardLoad, DataThatTheUserKeepsLeaveTheModeSet)
{
    HasData();
    Expect({Yes, No});
    Load();
    EXPECT_EQ(Lines().back(), "H BEGIN");
    EXPECT_EQ(Steps().back(), "Data Found on Card");
    EXPECT_TRUE(heart.loading.CardLoadMode);
}

TEST_F(CardLoad, WithoutLoadMessagesOnlyTheStartIsAsked)
{
    heart.options.ShowLoadMessages = false;
    HasData();
    Expect({Ok, No});
    Load();
    EXPECT_THAT(SinceConnected(),
                ElementsAre("- Searching for Memory Card ...", "> END", "> /h/R/u/n/E/d/t", "> 9SV(FF0) /U/N",
                            "- Memory Card Found", "- Checking for Data ...", "> H BEGIN", "- Deleting Card Data ...",
                            "> /E", "> CLEAR CDATA", "> H /E", "> CPROG",
                            "- Sending Program to Card in the KR200 Series 2 on Com 3 ...",
                            "> END /E/h/M/U CSCANS CALARMS G", "> 13SV", "> BEGIN;", "> RA1M 1TK;", "> ;", "> END;",
                            "> \r", StartsWith("! Program sent successfully to the memory card "),
                            StartsWith("! Do you want to start running "), "- "));
}

TEST_F(CardLoad, ALoggerThatDoesNotConfirmTheEmptiedCardGetsTheProgramAllTheSame)
{
    far->Answer("CPROG", "");
    Expect({Yes, Ok, No});
    Load();
    EXPECT_EQ(SentAt("END /E/h/M/U CSCANS CALARMS G") - SentAt("CPROG"), 5000);
    EXPECT_THAT(ProgramLines(), ElementsAre("BEGIN;", "RA1M 1TK;", ";", "END;", "\r"));
}

TEST_F(CardLoad, AnErrorStopsTheSendingAndEndsTheMode)
{
    far->Answer("RA1M 1TK;", "Tallycore 2E12\r\n");
    Expect({Yes, Ok});
    Load();
    EXPECT_THAT(ProgramLines(), ElementsAre("BEGIN;", "RA1M 1TK;"));
    EXPECT_THAT(Boxes().back().text, testing::HasSubstr(" at line 2. "));
    EXPECT_FALSE(heart.loading.CardLoadMode);
}

TEST_F(CardLoad, AFileThatCannotBeReadLeavesTheModeSet)
{
    files.files.erase(ProgramFile);
    Expect({Yes, Ok, Ok});
    Load();
    EXPECT_EQ(Boxes().back().text, "There was an error opening the File.     ");
    EXPECT_EQ(Lines().back(), "13SV");
    EXPECT_TRUE(heart.loading.CardLoadMode);
}

TEST_F(CardLoad, AProgramThatIsNotToStartIsLeftOnTheCard)
{
    Expect({Yes, Ok, No});
    Load();
    EXPECT_EQ(Lines().back(), "\r");
    EXPECT_EQ(Boxes().size(), 3u);
}

TEST_F(CardLoad, AProgramThatDoesNotStartIsNotMentioned)
{
    far->Answer("RUNPROG", "");
    far->Answer("\r", "\r\nold text\r\n"); // is not taken for the answer
    Expect({Yes, Ok, Yes});
    Load();
    EXPECT_EQ(Lines().back(), "RUNPROG");
    EXPECT_EQ(Now() - SentAt("RUNPROG"), 5000);
    EXPECT_EQ(Boxes().size(), 3u);
    EXPECT_FALSE(heart.loading.CardLoadMode);
}

TEST_F(CardLoad, ACancelledChoiceConnectsToNothingAndLeavesTheModeSet)
{
    dialogs.ExpectChooser("");
    heart.programLoading.LoadCardProgram();
    EXPECT_THAT(journal, ElementsAre("?  Choose a Program to Send to the Card in the KR200 Series 2 on Com 3 ..."));
    EXPECT_THAT(serial.events, IsEmpty());
    EXPECT_TRUE(heart.loading.CardLoadMode);
}

TEST_F(CardLoad, ALoggerThatIsNotReachedLeavesTheModeSet)
{
    far->silent = true;
    Expect({Ok});
    Load();
    EXPECT_EQ(Boxes().back().text, "Could not find a KR200 Series 2 on Com 3.     ");
    EXPECT_TRUE(heart.loading.CardLoadMode);
    far->silent = false;
    dialogs.ExpectChooser(ProgramFile);
    Expect({Yes, Ok});
    heart.programLoading.LoadProgram();
    EXPECT_THAT(ProgramLines(), ElementsAre("BEGIN", "RA1M 1TK", "", "END")); // which the next load clears
}

TEST_F(CardLoad, TheButtonLocksTheControlsAndClosesTheLink)
{
    dialogs.ExpectChooser(ProgramFile);
    Expect({Yes, Ok, No});
    bool locked = false;
    whenBoxShows = [&](const Box&) { locked = heart.loggerControls.Working(); };
    RunOnLogger(heart.panelServices(), 1, heart.actions.LoadCardProgram);
    EXPECT_TRUE(locked);
    EXPECT_FALSE(heart.loggerControls.Working());
    EXPECT_FALSE(serial.PortOpen());
}

TEST_F(KR4CardLoad, HasNoCautionButTheDataQuestion)
{
    HasData();
    Expect({Yes, Ok, No});
    Load();
    EXPECT_THAT(SinceConnected(),
                ElementsAre("- Searching for Memory Card ...", "> END", "> /h/R/u/n/E/d/t", "> 9SV(FF0) /U/N",
                            "- Memory Card Found", "- Checking for Data ...", "> H BEGIN", "- Data Found on Card",
                            StartsWith("! WARNING : There is Data from a previous program stored on the memory card "),
                            "- Deleting Card Data ...", "> /E", "> CLEAR CDATA", "> H /E", "> CPROG",
                            "- Sending Program to Card in the KR400 on Com 3 ...", "> END /E/h/M/U CSCANS CALARMS G",
                            "> 13SV", "> BEGIN;", "> RA1M 1TK;", "> ;", "> END;", "> \r",
                            "! Program sent successfully to the memory card plugged into the KR400 on Com 3.     ",
                            StartsWith("! Do you want to start running "), "- "));
}

struct CardClearing : CardLoad {
    CardClearing() { Connect(); }
    void Clear() { heart.clearing.ClearCardPrograms(); }
};

TEST_F(CardClearing, GoesThroughAllItsSteps)
{
    Expect({Yes, Ok});
    Clear();
    EXPECT_THAT(journal, ElementsAre(StartsWith("! WARNING : You are about delete all programs"),
                                     "- Searching for Memory Card ...", "> END", "> /h/R/u/n/E/d/t", "> 9SV(FF0) /U/N",
                                     "- Memory Card Found", "- Deleting Memory Card Programs ...", "> /E", "> CPROG",
                                     "! Memory card programs successfully deleted.     "));
    EXPECT_THAT(Boxes(),
                ElementsAre(Box{"WARNING : You are about delete all programs stored on the memory card plugged into "
                                "the KR200 Series 2 on Com 3.     \r\rClick Yes to delete all programs on the card, or "
                                "click No to exit.",
                                BoxTitle, BoxIcon::Exclamation, BoxButtons::YesNo},
                            Box{"Memory card programs successfully deleted.     ", "", BoxIcon::Information}));
    EXPECT_EQ(SentAt("CPROG") - SentAt("/E"), 1000);
    EXPECT_EQ(SentAt("/E") - SentAt("9SV(FF0) /U/N"), 10 + 1000 + 1500); // with the bar that fills meanwhile
    EXPECT_EQ(messages.max, 10);
    EXPECT_FALSE(messages.Visible());
}

TEST_F(CardClearing, SpeaksTheLanguageOfItsFile)
{
    UseNumberedTexts();
    Expect({Yes, Ok});
    Clear();
    EXPECT_THAT(Steps(), ElementsAre("<339> ...", "<340>", "<345> ..."));
    EXPECT_THAT(Boxes(), ElementsAre(Box{"<630> KR200 Series 2 on Com 3.     \r\r<631>.", BoxTitle,
                                         BoxIcon::Exclamation, BoxButtons::YesNo},
                                     Box{"<633>.     ", "", BoxIcon::Information}));
}

TEST_F(CardClearing, WithoutLoadMessagesNothingIsAsked)
{
    heart.options.ShowLoadMessages = false;
    Expect({Ok});
    Clear();
    EXPECT_THAT(Lines(), ElementsAre("END", "/h/R/u/n/E/d/t", "9SV(FF0) /U/N", "/E", "CPROG"));
}

TEST_F(CardClearing, RefusedItIsSaidForASecondAndNothingIsSent)
{
    for (const bool translated : {false, true}) {
        Forget();
        if (translated)
            UseNumberedTexts();
        const long before = Now();
        Expect({No});
        Clear();
        EXPECT_THAT(Steps(), ElementsAre(translated ? "<664>" : "Card Programs not Deleted"));
        EXPECT_EQ(Now() - before, 1000);
        EXPECT_THAT(Lines(), IsEmpty());
        EXPECT_THAT(messages.shows, ElementsAre(false, true, false));
    }
}

TEST_F(CardClearing, ACardRemovedAfterTheQuestionIsMissed)
{
    heart.loading.CardPresent.Set(1, true); // it was there a moment ago
    whenBoxShows = [this](const Box&) { HasCard(false); };
    Expect({Yes, Ok});
    Clear();
    EXPECT_THAT(Lines(), ElementsAre("END", "/h/R/u/n/E/d/t", "9SV(FF0) /U/N"));
    EXPECT_EQ(Boxes().back(),
              (Box{"No memory card found in the KR200 Series 2 on Com 3.     ", "", BoxIcon::Critical}));
    EXPECT_FALSE(messages.Visible());
}

TEST_F(CardClearing, AMissingCardIsToldInTheLanguageOfItsFile)
{
    UseNumberedTexts();
    HasCard(false);
    Expect({Yes, Ok});
    Clear();
    EXPECT_EQ(Boxes().back(), (Box{"<632> KR200 Series 2 on Com 3.     ", "", BoxIcon::Critical}));
}

TEST_F(CardClearing, ALoggerThatDoesNotConfirmItIsToldToBeEmptiedAllTheSame)
{
    far->Answer("CPROG", "");
    Expect({Yes, Ok});
    Clear();
    EXPECT_EQ(Boxes().back().text, "Memory card programs successfully deleted.     ");
    EXPECT_EQ(Now() - SentAt("CPROG"), 5000);
}

TEST_F(CardClearing, TheButtonConnectsFirstAndClosesTheLink)
{
    heart.actions.CloseLink();
    Expect({Yes, Ok});
    ClearOnLogger(heart.panelServices(), 1, heart.actions.ClearCardPrograms, false);
    EXPECT_THAT(Lines(), ElementsAre("END", "/h/R/u/n/E/d/t", "9SV(FF0) /U/N", "/E", "CPROG"));
    EXPECT_FALSE(serial.PortOpen());
    EXPECT_FALSE(heart.loggerControls.Working());
}

TEST_F(CardClearing, TheButtonAsksNothingOfALoggerThatIsNotReached)
{
    far->silent = true;
    Expect({Ok});
    ClearOnLogger(heart.panelServices(), 1, heart.actions.ClearCardPrograms, false);
    EXPECT_EQ(Boxes().back().text, "Could not find a KR200 Series 2 on Com 3.     ");
    EXPECT_FALSE(heart.loggerControls.Working());
}

} // namespace
} // namespace harvelop::test
