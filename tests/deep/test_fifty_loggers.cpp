// As many loggers as the list takes: kept through saves and searches, viewed, worked on and deleted; the next is
// refused.
#include "app/ctl_bench.h"
#include "deep/bench.h"
#include "identify/panel_work.h"

#include <algorithm>
#include <gmock/gmock.h>

namespace harvelop::test
{

namespace
{

using testing::HasSubstr;

// The three kinds by turns, no two alike.
LoggerRecord numbered(int number)
{
    LoggerRecord record = number % 3 == 0 ? SerialLogger() : number % 3 == 1 ? ModemLogger() : NetworkLogger();
    record.LoggerDescription = "Weir_" + std::to_string(number);
    record.LoggerIconKey = "::" + std::to_string(number);
    record.LoggerKept = 1;
    record.LoggerSaveFolder = "/home/user/tallyCore/" + std::to_string(number) + "/";
    return record;
}

std::vector<LoggerRecord> fifty()
{
    std::vector<LoggerRecord> all;
    for (int number = 1; number <= MaxLoggers; ++number)
        all.push_back(numbered(number));
    return all;
}

struct FiftyBench : DeepBench {
    explicit FiftyBench(int count = MaxLoggers)
    {
        for (int number = 1; number <= count; ++number)
            Store(number, numbered(number));
        heart.state.OptionsLoaded = true;
        heart.records.SaveFoundLoggers();
        heart.viewing.RebuildList();
    }

    // What stands in the file, by the descriptions.
    std::vector<std::string> InFile() const
    {
        TestProgram again;
        again.files.files = files.files;
        again.heart.state.AppPath = heart.state.AppPath;
        again.heart.records.LoadFoundLoggers();
        std::vector<std::string> names;
        for (int number = 1; number <= MaxLoggers; ++number)
            if (again.heart.tables.Holds(number))
                names.push_back(again.heart.tables.Record(number)->LoggerDescription);
        return names;
    }
    static std::vector<std::string> Names(int count)
    {
        std::vector<std::string> names;
        for (int number = 1; number <= count; ++number)
            names.push_back("Weir_" + std::to_string(number));
        return names;
    }
};

} // namespace

TEST(FiftyLoggers, AllAreSavedAndReadBackFieldForField)
{
    const FiftyBench t;
    TestProgram again;
    again.files.files = t.files.files;
    again.heart.state.AppPath = t.heart.state.AppPath;
    again.heart.records.LoadFoundLoggers();
    ASSERT_EQ(again.heart.tables.Count(), MaxLoggers);
    for (int number = 1; number <= MaxLoggers; ++number)
        EXPECT_EQ(RecordText(*again.heart.tables.Record(number)), RecordText(numbered(number))) << number;
}

TEST(FiftyLoggers, ASearchThatFindsOneMoreKeepsThemAll)
{
    FiftyBench t;
    t.PlugPort(Logger("KR200", "2", "3.51"));
    t.Find(" All Ports");
    EXPECT_EQ(t.Search().FoundCount, 1);
    EXPECT_EQ(t.InFile(), FiftyBench::Names(MaxLoggers));
    t.ExpectReleased();
    t.ExpectUsable();
}

TEST(FiftyLoggers, ASearchTakesTheLastFreeSlot)
{
    FiftyBench t(MaxLoggers - 1);
    t.PlugPort(Logger("KR200", "2", "3.51"));
    t.Find(" All Ports");
    ASSERT_TRUE(t.heart.tables.Holds(MaxLoggers));
    EXPECT_EQ(t.Record(MaxLoggers).LoggerModel, "KR200 Series 2");
    EXPECT_EQ(t.InFile().size(), static_cast<size_t>(MaxLoggers));
    t.ExpectReleased();
    t.ExpectUsable();
}

TEST(FiftyLoggers, ThePanelsOfAllCanStandOpenAndOnlyOneWorks)
{
    FiftyBench t;
    for (int number = 1; number <= MaxLoggers; ++number) {
        t.heart.state.cbxUnload_TallyCores.Select(number - 1);
        t.View();
        EXPECT_EQ(t.heart.state.CurrentLogger, number);
    }
    ASSERT_EQ(t.heart.panels.CountVisiblePanels(), MaxLoggers);
    for (int number = 1; number <= MaxLoggers; ++number) {
        bool worked = false;
        RunOnLogger(t.heart.panelServices(), number, [&] {
            worked = true;
            EXPECT_EQ(t.heart.state.CurrentLogger, number);
            EXPECT_TRUE(t.heart.loggerControls.Working());
        });
        EXPECT_TRUE(worked);
    }
    t.ExpectUsable();
    EXPECT_EQ(t.heart.panels.CountVisiblePanels(), 0);
    EXPECT_EQ(t.InFile(), FiftyBench::Names(MaxLoggers));
}

TEST(FiftyLoggers, EachCanBeDeletedAndNoOtherGoesWithIt)
{
    FiftyBench t;
    std::vector<std::string> left = FiftyBench::Names(MaxLoggers);
    for (int deleted = 0; deleted < MaxLoggers; ++deleted) {
        const int index = deleted * 7 % static_cast<int>(left.size()) + 1; // here and there in the list
        t.heart.state.cbxUnload_TallyCores.Select(index - 1);
        t.heart.viewing.DeleteLogger(index);
        left.erase(left.begin() + index - 1);
        ASSERT_EQ(t.InFile(), left) << index;
    }
    EXPECT_EQ(t.heart.tables.Count(), 0);
}

TEST(FiftyLoggers, TheCommandLineListsShowsAndSetsThemAndRefusesOneMore)
{
    StoredCtl t(fifty());
    ASSERT_EQ(t.Run({"list"}), CtlDone);
    for (int number = 1; number <= MaxLoggers; ++number)
        EXPECT_THAT(t.out.str(), HasSubstr("Weir_" + std::to_string(number)));
    ASSERT_EQ(t.Run({"set", "50", "LoggerDescription=Lock"}), CtlDone) << t.said.str();
    ASSERT_EQ(t.Run({"show", "50"}), CtlDone);
    EXPECT_THAT(t.out.str(), HasSubstr("Lock"));
    t.dialogs.Expect(BoxAnswer::Ok);
    const auto before = t.files.files;
    EXPECT_EQ(t.Run({"add", "--model", "KR40", "--tcp", "weir.example.org:7700"}), CtlFailed);
    EXPECT_EQ(t.files.files, before);
    ASSERT_EQ(t.dialogs.shown.size(), 1u);
    EXPECT_THAT(t.dialogs.shown[0].text, HasSubstr("You can only have 50 tallyCores"));
}

} // namespace harvelop::test
