// The list of jobs, and the deletion of one or all of them.
#include "loading/clear_bench.h"

namespace harvelop::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr const char* Refused = "Job not deleted - it has data\r\n";

struct Jobs : ClearTest {
    Jobs() { Connect(); }

    std::vector<std::string> Listed()
    {
        std::vector<std::string> names;
        for (int i = 1; !heart.loading.JobList.Get(i).empty(); ++i)
            names.push_back(heart.loading.JobList.Get(i));
        return names;
    }
    void Delete(const std::string& job)
    {
        heart.loading.ChosenJob = job;
        heart.loading.JobHasData = false;
        heart.clearing.DeleteChosenJob();
    }
    // With an answer to the question, and the box that tells what came of it.
    void DeleteWithData(const std::string& job, BoxAnswer decision = BoxAnswer::Yes)
    {
        dialogs.Expect(decision);
        dialogs.Expect(BoxAnswer::Ok);
        Delete(job);
    }
    Box Told() const { return Boxes().back(); }
};

Box Success(const std::string& text)
{
    return {text, " tallyCore Harvel", BoxIcon::Information};
}
Box Error(const std::string& text)
{
    return {text, " tallyCore Harvel", BoxIcon::Critical};
}
Box Warning(const std::string& text)
{
    return {text, " tallyCore Harvel", BoxIcon::Exclamation, BoxButtons::YesNo};
}

std::string namesOf(int count)
{
    std::string listing;
    for (int i = 1; i <= count; ++i)
        listing += "J" + std::to_string(i) + "\r\n";
    return listing;
}

} // namespace

TEST(JobNames, OnePerLineWithoutBlanks)
{
    EXPECT_THAT(JobNames("*ALPHA\r\nBETA\r\n"), ElementsAre("*ALPHA", "BETA"));
    EXPECT_THAT(JobNames(" * AL PHA \r\n  BETA"), ElementsAre("*ALPHA", "BETA"));
    EXPECT_THAT(JobNames("A\rB\r"), ElementsAre("A", "B"));
    EXPECT_THAT(JobNames("A\nB\r\n"), ElementsAre("AB")); // a line feed parts nothing
}

TEST(JobNames, TheFirstEmptyOneEndsThem)
{
    EXPECT_THAT(JobNames("A\r\n\r\nB\r\n"), ElementsAre("A"));
    EXPECT_THAT(JobNames("A\r\n   \r\nB\r\n"), ElementsAre("A"));
    EXPECT_THAT(JobNames("\r\nA\r\n"), IsEmpty());
    EXPECT_THAT(JobNames("A,,B"), ElementsAre("A"));
    EXPECT_THAT(JobNames(""), IsEmpty());
}

TEST(JobNames, AtMostFiveHundredComeThrough)
{
    EXPECT_THAT(JobNames(namesOf(499)), SizeIs(499));
    EXPECT_THAT(JobNames(namesOf(500)), SizeIs(500));
    const auto names = JobNames(namesOf(700));
    ASSERT_THAT(names, SizeIs(500));
    EXPECT_EQ(names.back(), "J500");
}

TEST(JobNames, NoneOfAListOfMoreThanTenThousandCharacters)
{
    const std::string name(9999, 'x');
    EXPECT_THAT(JobNames(name + "\r\n"), ElementsAre(name));
    EXPECT_THAT(JobNames(name + "x\r\n"), IsEmpty());
}

TEST(PlainJobName, HasNoStarsAndNoBlanks)
{
    EXPECT_EQ(PlainJobName("*ALPHA"), "ALPHA");
    EXPECT_EQ(PlainJobName(" * AL*PHA "), "ALPHA");
    EXPECT_EQ(PlainJobName("DIRJOBS"), "DIRJOBS");
    EXPECT_EQ(PlainJobName("\xFF\t"), "\xFF\t");
    EXPECT_EQ(PlainJobName(""), "");
}

TEST_F(Jobs, AreListedInTheLoggersOrder)
{
    far->Answer("DIRJOBS", "ZETA\r\n*ALPHA\r\nBETA\r\n");
    heart.clearing.GetJobList();
    EXPECT_FALSE(heart.loading.JobListEmpty);
    EXPECT_THAT(Listed(), ElementsAre("ZETA", "*ALPHA", "BETA"));
    EXPECT_THAT(Lines(), ElementsAre("/r/e/m/z", "DIRJOBS"));
    EXPECT_THAT(Times(), ElementsAre(0, 2000));
    EXPECT_EQ(Since(far->lines.back()), 2000);
}

TEST_F(Jobs, AListOfFewerThanThreeCharactersCountsAsNone)
{
    heart.clearing.GetJobList();
    for (const char* listing : {"", "A", "A\r"}) {
        far->Answer("DIRJOBS", listing);
        heart.loading.JobListEmpty = false;
        heart.clearing.GetJobList();
        EXPECT_TRUE(heart.loading.JobListEmpty) << listing;
        EXPECT_THAT(Listed(), ElementsAre("*ALPHA", "BETA")); // as it was before
    }
    far->Answer("DIRJOBS", "A\r\n");
    heart.clearing.GetJobList();
    EXPECT_FALSE(heart.loading.JobListEmpty);
    EXPECT_THAT(Listed(), ElementsAre("A"));
}

TEST_F(Jobs, AShorterListLeavesNothingOfALongerOne)
{
    far->Answer("DIRJOBS", namesOf(500));
    heart.clearing.GetJobList();
    EXPECT_THAT(Listed(), SizeIs(500));
    far->Answer("DIRJOBS", "A\r\nB\r\n");
    heart.clearing.GetJobList();
    EXPECT_THAT(Listed(), ElementsAre("A", "B"));
    EXPECT_EQ(heart.loading.JobList.Get(500), "");
}

TEST_F(Jobs, WhatStoodInTheWindowIsNoPartOfTheList)
{
    heart.exchange.txtCharacterWindow.Append("OLD\r\n");
    far->Answer("/r/e/m/z", "NOISE\r\n");
    heart.clearing.GetJobList();
    EXPECT_THAT(Listed(), ElementsAre("*ALPHA", "BETA"));
}

TEST_F(Jobs, AListThatComesTooLateIsNone)
{
    far->Answer("DIRJOBS", "*ALPHA\r\n", 2001);
    heart.clearing.GetJobList();
    EXPECT_TRUE(heart.loading.JobListEmpty);
}

TEST_F(Jobs, OneWithoutDataIsDeletedAtOnce)
{
    far->Answer("DELJOB\"GAMMA\"", "");
    dialogs.Expect(BoxAnswer::Ok);
    Delete("GAMMA");
    EXPECT_THAT(journal, ElementsAre("- Checking for Data ...", "> CURJOB", "> /M/E", "> DELJOB\"GAMMA\"",
                                     "- No Data Found", "- Deleting Job GAMMA ...", "- Job GAMMA ",
                                     "! The Job GAMMA has been successfully deleted.     "));
    EXPECT_EQ(Told(), Success("The Job GAMMA has been successfully deleted.     "));
    EXPECT_FALSE(heart.loading.JobHasData);
    EXPECT_EQ(heart.loading.CurrentJobName, "ALPHA");
    // The answer to "CURJOB" takes 10 ms; then 2000 for the refusal, twice 1000 to tell, 1500 of the bar.
    EXPECT_THAT(Times(), ElementsAre(0, 10, 10));
    EXPECT_EQ(Since(far->lines.front()), 10 + 2000 + 1000 + 1000 + 1500);
}

TEST_F(Jobs, TheRunningOneIsHaltedFirst)
{
    far->Answer("CURJOB", " * AL PHA \r\n");
    dialogs.Expect(BoxAnswer::Ok);
    Delete("ALPHA");
    EXPECT_EQ(heart.loading.CurrentJobName, "ALPHA");
    EXPECT_THAT(Lines(), ElementsAre("CURJOB", "/M/E", "H", "DELJOB\"ALPHA\""));
}

TEST_F(Jobs, WhatStoodInTheWindowIsNotTheRunningOne)
{
    heart.exchange.txtCharacterWindow.Append("BETA\r\nDIRJOBS\r\n");
    dialogs.Expect(BoxAnswer::Ok);
    Delete("ALPHA");
    EXPECT_EQ(heart.loading.CurrentJobName, "ALPHA");
    EXPECT_THAT(Lines(), ElementsAre("CURJOB", "/M/E", "H", "DELJOB\"ALPHA\""));
}

TEST_F(Jobs, AllAreDeletedAtOnceIfNoneHasData)
{
    far->Answer("DELJOB*", "");
    dialogs.Expect(BoxAnswer::Ok);
    Delete("DIRJOBS");
    EXPECT_THAT(Lines(), ElementsAre("CURJOB", "/M/E", "H", "DELJOB*"));
    EXPECT_EQ(Told(), Success("The Job DIRJOBS has been successfully deleted.     "));
}

TEST_F(Jobs, TheTimeoutOfTheirDeletionStays)
{
    heart.link.DefaultTimeout = 5000;
    far->Answer("CURJOB", "*ALPHA\r\n", 2500);
    dialogs.Expect(BoxAnswer::Ok);
    Delete("GAMMA");
    EXPECT_EQ(heart.link.DefaultTimeout, 2000);
    EXPECT_EQ(heart.loading.CurrentJobName, "");
}

// What is told of a job without data rests on the answer to "CURJOB" alone.
TEST_F(Jobs, ADeletionIsToldAsDoneWhateverTheLoggerSaysButThatItHasData)
{
    far->Answer("DELJOB\"GAMMA\"", "No such job\r\n");
    dialogs.Expect(BoxAnswer::Ok);
    Delete("GAMMA");
    EXPECT_EQ(Told(), Success("The Job GAMMA has been successfully deleted.     "));
}

TEST_F(Jobs, ADeletionIsToldAsFailedWhereTheRunningOneIsNotTold)
{
    far->Answer("CURJOB", "");
    dialogs.Expect(BoxAnswer::Ok);
    Delete("ALPHA");
    EXPECT_THAT(Lines(), ElementsAre("CURJOB", "/M/E", "DELJOB\"ALPHA\"")); // not known to be the running one
    // The dots and blanks belong to the title.
    EXPECT_EQ(Told(), (Box{"There was an error deleting the Job ALPHA", " tallyCore Harvel.     ", BoxIcon::Critical}));
    EXPECT_THAT(Steps(), ElementsAre("Checking for Data ...", "No Data Found", "Deleting Job ALPHA ..."));
}

TEST_F(Jobs, OneWithDataIsDeletedWithThemIfTheUserAgrees)
{
    DeleteWithData("BETA");
    EXPECT_THAT(journal,
                ElementsAre("- Checking for Data ...", "> CURJOB", "> /M/E", "> DELJOB\"BETA\"", "- Found Data for Job",
                            "! WARNING : The Job BETA has Data associated with it. If you delete this Job all Data for "
                            "the Job will also be deleted. If you want to keep the Data, click No and either unload it "
                            "or copy it to a memory card.\r\rClick Yes to delete the Job and all Data for the Job, or "
                            "click No to Exit.",
                            "- Deleting Job BETA and all Data ...", "> DELDATA\"BETA\"", "> DELJOB\"BETA\"",
                            "- Job BETA Deleted",
                            "! The Job BETA and all it's Data have been successfully deleted.     "));
    EXPECT_EQ(Boxes()[0], Warning(Boxes()[0].text));
    EXPECT_EQ(Told(), Success("The Job BETA and all it's Data have been successfully deleted.     "));
    EXPECT_TRUE(heart.loading.JobHasData);
    // 2000 for the refusal, 1000 to tell; 1000 to tell and 1500 of the bar; the answers take 10 each; 1000 at the end.
    EXPECT_THAT(Times(), ElementsAre(0, 10, 10, 10 + 5500, 20 + 5500));
    EXPECT_EQ(Since(far->lines.back()), 10 + 1000);
}

TEST_F(Jobs, AllWithDataAreDeletedWithThemIfTheUserAgrees)
{
    DeleteWithData("DIRJOBS");
    EXPECT_THAT(Lines(), ElementsAre("CURJOB", "/M/E", "H", "DELJOB*", "DELALARMS*", "DELDATA*", "DELJOB*"));
    EXPECT_EQ(Boxes()[0],
              Warning("WARNING : There is Data associated with some or all of the Jobs in the KR400 on Com 3. If you "
                      "click Yes, all data and all jobs will be permanently deleted. This action cannot be reversed. "
                      "If you want to keep the Data, click No and either unload it or copy it to a memory card.\r\r"
                      "Click Yes to delete all Jobs and all Data for all Jobs, or click No to Exit."));
    EXPECT_EQ(Told(), Success("The Job DIRJOBS and all it's Data have been successfully deleted.     "));
}

TEST_F(Jobs, TheRunningOneWithDataIsHaltedOnceOnly)
{
    far->Answer("DELJOB\"ALPHA\"", {{Refused}, {"done\r\n"}});
    far->Answer("DELDATA\"ALPHA\"", "deleted\r\n");
    DeleteWithData("ALPHA");
    EXPECT_THAT(Lines(), ElementsAre("CURJOB", "/M/E", "H", "DELJOB\"ALPHA\"", "DELDATA\"ALPHA\"", "DELJOB\"ALPHA\""));
}

TEST_F(Jobs, DataThatAreToBeKeptKeepTheirJobToo)
{
    for (const auto& [job, last] : {std::pair{"BETA", "DELJOB\"BETA\""}, std::pair{"DIRJOBS", "DELJOB*"}}) {
        DeleteWithData(job, BoxAnswer::No);
        EXPECT_EQ(Lines().back(), last);
        EXPECT_EQ(Told(), Success("No Jobs or Data Deleted.     "));
        EXPECT_EQ(Steps().back(), "Found Data for Job");
    }
}

TEST_F(Jobs, DataAreDeletedWithoutAQuestionWithoutMessages)
{
    heart.options.ShowMessages = false;
    dialogs.Expect(BoxAnswer::Ok);
    Delete("BETA");
    EXPECT_THAT(Boxes(), ElementsAre(Success("The Job BETA and all it's Data have been successfully deleted.     ")));
    EXPECT_THAT(Lines(), ElementsAre("CURJOB", "/M/E", "DELJOB\"BETA\"", "DELDATA\"BETA\"", "DELJOB\"BETA\""));
}

TEST_F(Jobs, DataAreAskedForWithoutLoadMessagesToo)
{
    heart.options.ShowLoadMessages = false;
    DeleteWithData("BETA", BoxAnswer::No);
    EXPECT_THAT(Boxes(), SizeIs(2));
}

// The refusal itself holds "deleted" and a line end.
TEST_F(Jobs, ARefusalThatStoodInTheWindowIsNoDeletionOfTheData)
{
    far->Answer("DELDATA\"BETA\"", "");
    DeleteWithData("BETA");
    EXPECT_EQ(Told(), Error("There was an error deleting the Data for Job BETA"));
    EXPECT_EQ(Lines().back(), "DELDATA\"BETA\"");
    far->Answer("DELJOB*", Refused);
    far->Answer("DELDATA*", "");
    DeleteWithData("DIRJOBS");
    EXPECT_EQ(Told(), Error("There was an error deleting the Data for Job DIRJOBS"));
    EXPECT_EQ(Lines().back(), "DELDATA*");
}

TEST_F(Jobs, OfAllOnesAlarmsAndDataOnlyTheDataCount)
{
    far->Answer("DELALARMS*", "");
    DeleteWithData("DIRJOBS");
    EXPECT_EQ(Told(), Success("The Job DIRJOBS and all it's Data have been successfully deleted.     "));
}

TEST_F(Jobs, ADeletionAfterItsDataThatFailsIsTold)
{
    far->Answer("DELJOB\"BETA\"", {{std::string("done ") + Refused}, {"refused\r\n"}});
    DeleteWithData("BETA");
    EXPECT_EQ(Told(), Error("There was an error deleting the Job BETA"));
    far->Answer("DELJOB*", {{std::string("done ") + Refused}, {"refused\r\n"}});
    DeleteWithData("DIRJOBS");
    EXPECT_EQ(Told(), Error("There was an error deleting the Job DIRJOBS"));
}

TEST_F(Jobs, OneHasTenSecondsToGoAndAllHaveTwo)
{
    far->Answer("DELJOB\"BETA\"", {{Refused}, {"done\r\n", 9900}});
    DeleteWithData("BETA");
    EXPECT_EQ(Told().icon, BoxIcon::Information);
    far->Answer("DELJOB\"BETA\"", {{Refused}, {"done\r\n", 10100}});
    DeleteWithData("BETA");
    EXPECT_EQ(Told().icon, BoxIcon::Critical);
    far->Answer("DELJOB*", {{Refused}, {"done\r\n", 1900}});
    DeleteWithData("DIRJOBS");
    EXPECT_EQ(Told().icon, BoxIcon::Information);
    far->Answer("DELJOB*", {{Refused}, {"done\r\n", 2100}});
    DeleteWithData("DIRJOBS");
    EXPECT_EQ(Told().icon, BoxIcon::Critical);
}

TEST_F(Jobs, TheBarIsEmptyAsADeletionBegins)
{
    for (const auto& [job, step] : {std::pair{"BETA", "<- Deleting Job BETA and all Data ..."},
                                    std::pair{"GAMMA", "<- Deleting Job GAMMA ..."}}) {
        heart.progress.SetProgressRange(3);
        heart.progress.ResetProgress();
        std::vector<int> bar;
        pump.whenWaiting = [&, text = std::string(step)](double) {
            if (bar.empty() && messages.Caption() == text)
                bar = {messages.value, messages.max};
        };
        heart.options.ShowMessages = false;
        dialogs.Expect(BoxAnswer::Ok);
        Delete(job);
        EXPECT_THAT(bar, ElementsAre(0, 10)) << job;
    }
}

TEST_F(Jobs, SpeakTheUsersLanguage)
{
    UseNumberedTexts();
    dialogs.Expect(BoxAnswer::Ok);
    Delete("GAMMA");
    // Two words of it are English in every language.
    EXPECT_THAT(Steps(), ElementsAre("<387> ...", "No Data Found", "<393> GAMMA ...", "<391> GAMMA Deleted"));
    EXPECT_EQ(Told(), Success("<733> GAMMA <736>.     "));
    Forget();
    DeleteWithData("BETA");
    EXPECT_THAT(Steps(), ElementsAre("<387> ...", "<388>", "<389> BETA <390> ...", "<391> BETA <392>"));
    EXPECT_THAT(Boxes(), ElementsAre(Warning("<727> BETA <728>.\r\r<729>."), Success("<733> BETA <734>.     ")));
    Forget();
    DeleteWithData("DIRJOBS", BoxAnswer::No);
    EXPECT_THAT(Boxes(), ElementsAre(Warning("<724> KR400 on Com 3. <725>.\r\r<726>."), Success("<730>.     ")));
    far->Answer("DELJOB\"BETA\"", Refused);
    DeleteWithData("BETA");
    EXPECT_EQ(Told(), Error("<732> BETA"));
    far->Answer("DELDATA\"BETA\"", "");
    DeleteWithData("BETA");
    EXPECT_EQ(Told(), Error("<731> BETA"));
    far->Answer("CURJOB", "");
    dialogs.Expect(BoxAnswer::Ok);
    Delete("GAMMA");
    EXPECT_EQ(Told(), (Box{"<735> GAMMA", " tallyCore Harvel.     ", BoxIcon::Critical}));
}

} // namespace harvelop::test
