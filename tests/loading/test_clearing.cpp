// From the click on Clear to its end: the programs of the older family, the front of the jobs of the other one.
#include "identify/panel_work.h"
#include "loading/clear_bench.h"

namespace harvelop::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

constexpr BoxIcon Information = BoxIcon::Information;
constexpr BoxIcon Exclamation = BoxIcon::Exclamation;
constexpr BoxIcon Critical = BoxIcon::Critical;
constexpr BoxButtons YesNo = BoxButtons::YesNo;

struct ClearOlder : ClearTest {
    ClearOlder() : ClearTest(OlderModel)
    {
        Connect();
        far->Answer("9SV(FF0) /U/N", "\r\n0\r\n");
        far->Answer("CALARMS CSCANS", "CSCANS\r\n");
    }
    void Clear() { heart.clearing.ClearPrograms(); }
};

struct ClearJobs : ClearTest {
    ClearJobs() { Connect(); }
    void Clear() { heart.clearing.ClearPrograms(); }
};

struct ClearClick : ClearTest {
    void Click() { ClearOnLogger(heart.panelServices(), heart.state.CurrentLogger, heart.actions.ClearPrograms, true); }
};

} // namespace

TEST_F(ClearOlder, AsksLooksForDataDeletesAndTells)
{
    dialogs.Expect(BoxAnswer::Yes);
    dialogs.Expect(BoxAnswer::Ok);
    Clear();
    EXPECT_THAT(journal,
                ElementsAre("- Searching for Memory Card ...", "> END", "> /h/R/u/n/E/d/t", "> 9SV(FF0) /U/N",
                            "- No Memory Card Found",
                            "! WARNING : You are about to delete all programs in internal memory in the KR200 Series 2 "
                            "on Com 3.     \r\rClick Yes to delete the programs or No to Exit.",
                            "- Checking for Data ...", "> H BEGIN", "- No Matching Data Found",
                            "- Deleting Programs ...", "> CALARMS CSCANS",
                            "! Programs successfully deleted from the KR200 Series 2 on Com 3.     "));
    EXPECT_EQ(Boxes()[0].title, " tallyCore Harvel");
    EXPECT_EQ(Boxes()[0].icon, Exclamation);
    EXPECT_EQ(Boxes()[0].buttons, YesNo);
    EXPECT_EQ(Boxes()[1].title, "tallyCore Harvel"); // no leading blank
    EXPECT_EQ(Boxes()[1].icon, Information);
    EXPECT_FALSE(messages.Visible());
}

TEST_F(ClearOlder, ARefusalEndsItWithTheProgramsAsTheyWere)
{
    dialogs.Expect(BoxAnswer::No);
    Clear();
    EXPECT_THAT(Lines(), ElementsAre("END", "/h/R/u/n/E/d/t", "9SV(FF0) /U/N"));
    EXPECT_FALSE(messages.Visible());
}

TEST_F(ClearOlder, NothingIsAskedWithoutLoadMessages)
{
    heart.options.ShowLoadMessages = false;
    far->Answer("H BEGIN", "E4\r\n");
    dialogs.Expect(BoxAnswer::Ok);
    Clear();
    EXPECT_THAT(Lines(), ElementsAre("END", "/h/R/u/n/E/d/t", "9SV(FF0) /U/N", "H BEGIN", "/E", "CLEAR CDATA",
                                     "CALARMS CSCANS"));
    EXPECT_EQ(Boxes().size(), 1U);
}

TEST_F(ClearOlder, DataThatAreToBeKeptKeepTheProgramsToo)
{
    far->Answer("H BEGIN", "E4\r\n");
    dialogs.Expect(BoxAnswer::Yes);
    dialogs.Expect(BoxAnswer::No);
    Clear();
    EXPECT_EQ(Lines().back(), "H BEGIN");
    EXPECT_FALSE(messages.Visible());
}

TEST_F(ClearOlder, ALoggerThatDoesNotConfirmIsToldAsAnError)
{
    far->Answer("CALARMS CSCANS", "");
    dialogs.Expect(BoxAnswer::Yes);
    dialogs.Expect(BoxAnswer::Ok);
    Clear();
    EXPECT_EQ(Boxes().back(), (Box{"There was an error deleting the Programs from the KR200 Series 2 on Com 3.     ",
                                   "tallyCore Harvel", Critical}));
}

TEST_F(ClearOlder, WhatStoodInTheWindowIsNoConfirmation)
{
    far->Answer("H BEGIN", "CSCANS\r\n");
    far->Answer("CALARMS CSCANS", "");
    dialogs.Expect(BoxAnswer::Yes);
    dialogs.Expect(BoxAnswer::Ok);
    Clear();
    EXPECT_EQ(Boxes().back().icon, Critical);
}

TEST_F(ClearOlder, TakesItsTime)
{
    dialogs.Expect(BoxAnswer::Yes);
    dialogs.Expect(BoxAnswer::Ok);
    Clear();
    // The card's answer takes 10 ms and a second to be read, the question none. 2000 for "H BEGIN", 1000 to tell, 100,
    // 1500 of the bar; the confirmation 10 more and a second before the box.
    EXPECT_THAT(Times(), ElementsAre(0, 500, 2000, 3010, 3010 + 2000 + 1000 + 100 + 1500));
    EXPECT_EQ(Since(far->lines.front()), 7610 + 10 + 1000);
}

TEST_F(ClearOlder, SpeaksTheUsersLanguage)
{
    UseNumberedTexts();
    dialogs.Expect(BoxAnswer::Yes);
    dialogs.Expect(BoxAnswer::Ok);
    Clear();
    EXPECT_THAT(Boxes(),
                ElementsAre(Box{"<620> " + Logger() + ".     \r\r<621>.", " tallyCore Harvel", Exclamation, YesNo},
                            Box{"<623> " + Logger() + ".     ", "tallyCore Harvel", Information}));
    EXPECT_THAT(Steps(), ElementsAre("<339> ...", "<341>", "<333> ...", "<338>", "<342> ..."));
    far->Answer("CALARMS CSCANS", "");
    Forget();
    dialogs.Expect(BoxAnswer::Yes);
    dialogs.Expect(BoxAnswer::Ok);
    Clear();
    EXPECT_EQ(Boxes().back(), (Box{"<622> " + Logger() + ".     ", "tallyCore Harvel", Critical}));
}

TEST_F(ClearJobs, AsksListsLetsChooseAndDeletes)
{
    Choose("*ALPHA");
    jobs->whenShown = [this, choose = jobs->whenShown] {
        journal.emplace_back("? chooser");
        EXPECT_FALSE(messages.Visible());
        choose();
    };
    dialogs.Expect(BoxAnswer::Yes);
    dialogs.Expect(BoxAnswer::Ok);
    Clear();
    EXPECT_THAT(journal,
                ElementsAre("! WARNING : You are about to delete a job from internal memory in the KR400 on Com 3. You "
                            "will be asked to choose which job you want to delete.    \r\rClick Yes to search for "
                            "current jobs or click No to Exit.",
                            "- Getting Job List ...", "> /r/e/m/z", "> DIRJOBS", "? chooser", "- Checking for Data ...",
                            "> CURJOB", "> /M/E", "> H", "> DELJOB\"ALPHA\"", "- No Data Found",
                            "- Deleting Job ALPHA ...", "- Job ALPHA ",
                            "! The Job ALPHA has been successfully deleted.     ", "- Deleting Job ..."));
    EXPECT_EQ(Boxes()[0].title, " tallyCore Harvel");
    EXPECT_EQ(Boxes()[0].icon, Exclamation);
    EXPECT_EQ(Boxes()[0].buttons, YesNo);
    EXPECT_FALSE(messages.Visible());
}

TEST_F(ClearJobs, ARefusalEndsItBeforeALineIsSent)
{
    dialogs.Expect(BoxAnswer::No);
    Clear();
    EXPECT_THAT(far->lines, IsEmpty());
    EXPECT_THAT(Steps(), IsEmpty());
    EXPECT_THAT(jobs->offers, IsEmpty());
    EXPECT_FALSE(messages.Visible());
}

TEST_F(ClearJobs, AskForNoLeaveWithoutLoadMessagesButForTheJob)
{
    heart.options.ShowLoadMessages = false;
    Choose("ALPHA");
    dialogs.Expect(BoxAnswer::Ok);
    Clear();
    EXPECT_EQ(jobs->offers.size(), 1U);
    EXPECT_THAT(Boxes(), ElementsAre(Box{"The Job ALPHA has been successfully deleted.     ", " tallyCore Harvel",
                                         Information}));
}

TEST_F(ClearJobs, ALoggerWithoutJobsIsToldAndNothingIsOffered)
{
    far->Answer("DIRJOBS", "\r\n");
    dialogs.Expect(BoxAnswer::Yes);
    dialogs.Expect(BoxAnswer::Ok);
    Clear();
    EXPECT_EQ(Boxes().back(),
              (Box{"There are no jobs in the KR400 to delete.     ", " tallyCore Harvel", Information}));
    EXPECT_THAT(jobs->offers, IsEmpty());
    EXPECT_FALSE(heart.loading.JobListEmpty);
    EXPECT_FALSE(messages.Visible());
}

TEST_F(ClearJobs, AChooserThatIsClosedDeletesNothing)
{
    CloseChooser();
    dialogs.Expect(BoxAnswer::Yes);
    dialogs.Expect(BoxAnswer::Ok);
    Clear();
    EXPECT_EQ(Boxes().back(), (Box{"No Jobs deleted.     ", " tallyCore Harvel", Information}));
    EXPECT_EQ(Lines().back(), "DIRJOBS");
    EXPECT_EQ(Steps().back(), "Getting Job List ...");
    EXPECT_FALSE(messages.Visible());
}

TEST_F(ClearJobs, AChooserThatIsClosedLeavesNoAnswerOfAFormerOne)
{
    heart.options.ShowLoadMessages = false;
    Choose("ALPHA");
    dialogs.Expect(BoxAnswer::Ok);
    Clear();
    Forget();
    CloseChooser();
    dialogs.Expect(BoxAnswer::Ok);
    Clear();
    EXPECT_FALSE(heart.loading.JobDeleteConfirmed);
    EXPECT_EQ(Boxes().back().text, "No Jobs deleted.     ");
    EXPECT_EQ(Lines().back(), "DIRJOBS");
}

TEST_F(ClearJobs, WithoutAChooserNothingIsDeleted)
{
    heart.forms.loadJobs = nullptr;
    dialogs.Expect(BoxAnswer::Yes);
    dialogs.Expect(BoxAnswer::Ok);
    Clear();
    EXPECT_EQ(Boxes().back().text, "No Jobs deleted.     ");
}

TEST_F(ClearJobs, OfferWhatTheLoggerListsAndAllOfThem)
{
    CloseChooser();
    heart.options.ShowLoadMessages = false;
    dialogs.Expect(BoxAnswer::Ok);
    Clear();
    EXPECT_THAT(jobs->offers.back(), ElementsAre("*ALPHA", "BETA", "DIRJOBS"));
    far->Answer("DIRJOBS", "DIRJOBS\r\n*ALPHA\r\n");
    dialogs.Expect(BoxAnswer::Ok);
    Clear();
    EXPECT_THAT(jobs->offers.back(), ElementsAre("DIRJOBS", "*ALPHA"));
    far->Answer("DIRJOBS", "*DIRJOBS\r\n"); // another name
    dialogs.Expect(BoxAnswer::Ok);
    Clear();
    EXPECT_THAT(jobs->offers.back(), ElementsAre("*DIRJOBS", "DIRJOBS"));
}

TEST_F(ClearJobs, AGarbledListIsOfferedAsItCame)
{
    CloseChooser();
    heart.options.ShowLoadMessages = false;
    far->Answer("DIRJOBS", "\r\n*ALPHA\r\n"); // its first name is empty
    dialogs.Expect(BoxAnswer::Ok);
    Clear();
    EXPECT_THAT(jobs->offers.back(), ElementsAre("DIRJOBS"));
    far->Answer("DIRJOBS", "\x01?\xFF,x\r\n");
    dialogs.Expect(BoxAnswer::Ok);
    Clear();
    EXPECT_THAT(jobs->offers.back(), ElementsAre("\x01?\xFF", "x", "DIRJOBS"));
}

TEST_F(ClearJobs, GoOnAtOnceWhenTheChooserIsAnswered)
{
    heart.options.ShowLoadMessages = false;
    double answered = 0;
    jobs->whenShown = [this, &answered] {
        pump.After(3600'000, [this, &answered] {
            jobs->visible = false;
            answered = pump.NowMs();
        });
    };
    double told = 0;
    whenBoxShows = [this, &told](const Box&) { told = pump.NowMs(); };
    dialogs.Expect(BoxAnswer::Ok);
    Clear();
    EXPECT_GT(answered, 3600'000);
    EXPECT_EQ(told, answered);
}

TEST_F(ClearJobs, EndWithTheProgramWhileTheChooserStandsOpen)
{
    heart.options.ShowLoadMessages = false;
    jobs->whenShown = [this] { pump.After(AnswerMs, [this] { heart.end.EndProgram(); }); };
    Clear();
    EXPECT_TRUE(jobs->visible);
    EXPECT_EQ(Lines().back(), "DIRJOBS");
    EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(ClearJobs, ShowNoChooserAfterTheEnd)
{
    heart.options.ShowLoadMessages = false;
    pump.After(3500, [this] { heart.end.EndProgram(); }); // the list has arrived by then
    Clear();
    EXPECT_THAT(jobs->offers, IsEmpty());
}

TEST_F(ClearJobs, FailByALineThatGoesWhileTheChooserStandsOpen)
{
    heart.options.ShowLoadMessages = false;
    Choose("BETA");
    jobs->whenShown = [this, choose = jobs->whenShown] {
        pump.After(100, [this] { Unplug(); });
        choose();
    };
    dialogs.Expect(BoxAnswer::Ok);
    Clear();
    EXPECT_EQ(Boxes().back().text, "There was an error deleting the Job BETA");
}

TEST_F(ClearJobs, SpeakTheUsersLanguage)
{
    UseNumberedTexts();
    CloseChooser();
    dialogs.Expect(BoxAnswer::Yes);
    dialogs.Expect(BoxAnswer::Ok);
    Clear();
    EXPECT_THAT(Boxes(),
                ElementsAre(Box{"<624> KR400 on Com 3. <625>.    \r\r<626>.", " tallyCore Harvel", Exclamation, YesNo},
                            Box{"<628>.     ", " tallyCore Harvel", Information}));
    EXPECT_THAT(Steps(), ElementsAre("<343> ..."));
    Forget();
    heart.options.ShowLoadMessages = false;
    Choose("ALPHA");
    dialogs.Expect(BoxAnswer::Ok);
    Clear();
    EXPECT_EQ(Steps().back(), "<344> ...");
    Forget();
    far->Answer("DIRJOBS", "");
    dialogs.Expect(BoxAnswer::Ok);
    Clear();
    EXPECT_THAT(Boxes(), ElementsAre(Box{"<627>.     ", " tallyCore Harvel", Information}));
}

TEST_F(ClearJobs, TheFamilyGoesByTheStoredModelCaseExact)
{
    heart.options.ShowLoadMessages = false;
    heart.tables.Record(1)->LoggerModel = "kr400";
    dialogs.Expect(BoxAnswer::Ok);
    Clear();
    EXPECT_EQ(Lines().front(), "END");
    EXPECT_EQ(Lines().back(), "CALARMS CSCANS");
}

TEST_F(ClearClick, ConnectsClearsAndClosesTheLink)
{
    Choose("ALPHA");
    dialogs.Expect(BoxAnswer::Yes);
    dialogs.Expect(BoxAnswer::Ok);
    bool clearing = false;
    whenBoxShows = [&](const Box&) { clearing = heart.state.ClearMode && heart.loggerControls.Working(); };
    Click();
    EXPECT_TRUE(clearing);
    EXPECT_EQ(Lines().front(), "/r/e/m/z");
    EXPECT_FALSE(heart.state.ClearMode || heart.loggerControls.Working() || serial.PortOpen());
    EXPECT_EQ(heart.link.LinkMode, "None");
    EXPECT_EQ(heart.link.DefaultTimeout, 2000);
}

TEST_F(ClearClick, OfALoggerThatIsNotThereLeavesTheClearModeSet)
{
    far->silent = true;
    dialogs.Expect(BoxAnswer::Ok);
    Click();
    EXPECT_EQ(Boxes().back().text, "Could not find a KR400 on Com 3.     ");
    EXPECT_TRUE(heart.state.ClearMode);
    EXPECT_FALSE(heart.loggerControls.Working() || serial.PortOpen() || messages.Visible());
    // So a later sending asks with the deleting texts.
    far->silent = false;
    far->Answer("H BEGIN", "E4\r\n");
    Connect();
    dialogs.Expect(BoxAnswer::No);
    EXPECT_FALSE(heart.programLoading.CheckForData());
    EXPECT_TRUE(Boxes().back().text.starts_with("WARNING : Data has been found stored in the KR400 on Com 3. "));
}

TEST_F(ClearClick, OfALoggerBehindTheTableOfPortsEndsInABox)
{
    UseLogger(KR4Model, 17);
    dialogs.Expect(BoxAnswer::Ok);
    dialogs.Expect(BoxAnswer::Ok);
    Click();
    EXPECT_EQ(Boxes().back(), (Box{"Subscript out of range", "", Critical}));
    EXPECT_THAT(jobs->offers, IsEmpty());
    EXPECT_TRUE(heart.state.ClearMode);
    EXPECT_FALSE(heart.loggerControls.Working() || serial.PortOpen());
}

TEST_F(ClearClick, ReachesALoggerOnTheNetworkToo)
{
    UseNetworkLogger(KR4Model);
    Choose("ALPHA");
    dialogs.Expect(BoxAnswer::Yes);
    dialogs.Expect(BoxAnswer::Ok);
    Click();
    EXPECT_EQ(Boxes().back().text, "The Job ALPHA has been successfully deleted.     ");
    EXPECT_EQ(heart.link.LinkMode, "None");
    EXPECT_FALSE(heart.state.ClearMode);
}

} // namespace harvelop::test
