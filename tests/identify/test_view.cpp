#include "fake_panel.h"

#include <gtest/gtest.h>

namespace harvelop::test
{

using Lines = std::vector<std::string>;

TEST(View, AnEmptyListShowsNothing)
{
    PanelProgram t;
    t.heart.viewing.cmdUnload_View_Click();
    EXPECT_TRUE(t.made.empty());
    EXPECT_EQ(t.pump.NowMs(), 0);
    EXPECT_TRUE(t.optionsForm.changes.empty());
}

TEST(View, ATextWithoutAChosenLineShowsNothing)
{
    PanelProgram t;
    t.heart.state.cbxUnload_TallyCores.SetText("KR40 on Com 3");
    t.heart.viewing.cmdUnload_View_Click();
    EXPECT_EQ(t.heart.state.CurrentLogger, 0);
    EXPECT_TRUE(t.made.empty());
}

TEST(View, ThePanelIsLoadedSetUpPlacedAndShown)
{
    PanelProgram t;
    t.Store(1, SerialRecord("KR20 Series 1", "1"));
    t.StoreAndList(2, SerialRecord("KR200 Series 2", "4"));
    bool dialogClosed = false;
    t.heart.viewing.UnloadAddDialog = [&] { dialogClosed = true; };
    FakePanel& panel = t.View();
    EXPECT_EQ(t.heart.state.CurrentLogger, 2);
    EXPECT_EQ(panel.number, 2);
    EXPECT_EQ(panel.steps, (Lines{"load", "caption", "set up", "place", "show"}));
    EXPECT_EQ(panel.twips, 500);
    EXPECT_EQ(panel.caption, " KR200 Series 2 on Com 4 @ 9600,E,7,2,HWFC");
    EXPECT_EQ(panel.setUp.picture, 2);
    EXPECT_FALSE(panel.setUp.kr4Schedules);
    EXPECT_TRUE(panel.setUp.known);
    EXPECT_EQ(panel.setUp.model, "KR200 Series 2");
    EXPECT_EQ(panel.setUp.serial, "none");
    EXPECT_EQ(panel.setUp.modelWidth, 0);
    EXPECT_TRUE(dialogClosed);
    EXPECT_NEAR(t.pump.NowMs(), 200, 0.5);
    EXPECT_FALSE(t.optionsForm.formEnabled);
}

TEST(View, TheCaptionNamesTheWayToTheLogger)
{
    LoggerRecord network = SerialRecord("KR40", "10.0.0.5:3000");
    LoggerRecord modem = SerialRecord("KR200 Series 1", "2");
    modem.LoggerBaud = "0,,12345";
    modem.LoggerStopBits = "";
    const std::pair<LoggerRecord, const char*> english[] = {{network, " KR40 at 10.0.0.5:3000"},
                                                            {modem, " KR200 Series 1 via Modem on Com 2"}};
    for (const auto& [record, caption] : english) {
        PanelProgram t;
        t.StoreAndList(1, record);
        EXPECT_EQ(t.View().caption, caption);
    }
    const std::pair<LoggerRecord, const char*> other[] = {
        {network, " KR40 [803] 10.0.0.5:3000"},
        {modem, " KR200 Series 1 [802] 2"},
        {SerialRecord("KR20 Series 1", "3"), " KR20 Series 1 [801] 3 @ 9600,E,7,2,HWFC"}};
    for (const auto& [record, caption] : other) {
        PanelProgram t;
        t.UseLanguage({800, 801, 802, 803});
        t.StoreAndList(1, record);
        EXPECT_EQ(t.View().caption, caption);
    }
}

TEST(View, DuringASearchTheCaptionTellsTheFindAndThePanelsCascade)
{
    PanelProgram t;
    LoggerRecord kept = SerialRecord("KR41", "10.0.0.5:3000");
    kept.LoggerKept = 1;
    t.Store(1, kept);
    for (int number = 2; number <= 10; ++number)
        t.StoreAndList(number, SerialRecord("KR200 Series 2", "4"));
    t.heart.state.SearchRunning = true;
    t.Search().IdentifiedModel.Set(9, "KR200 with a XBM"); // the ninth find stands in the tenth slot
    EXPECT_EQ(t.View().caption, " Found this KR200 with a XBM on Com 4 @ 9600,N,8,1,SWFC");
    EXPECT_EQ(t.made.back()->twips, 5000);

    t.UseLanguage({800, 801});
    EXPECT_EQ(t.View().caption, " [800] KR200 with a XBM [801] 4 @ 9600,N,8,1,SWFC");
}

TEST(View, TheWidthOfTheModelIsSetForTheKR4FamilyButTheKR45)
{
    const std::pair<const char*, int> widths[] = {
        {"KR40", 1700}, {"KR41", 1700}, {"KR400", 1700}, {"KR45", 0}, {"KR300 Series 1", 0}};
    for (const auto& [model, width] : widths) {
        PanelProgram t;
        t.StoreAndList(1, SerialRecord(model, "4"));
        FakePanel& panel = t.View();
        EXPECT_EQ(panel.setUp.modelWidth, width) << model;
        EXPECT_EQ(panel.setUp.kr4Schedules, IsKR4(model)) << model;
    }
}

TEST(View, AnUnknownModelOpensAReducedPanel)
{
    for (const char* model : {"Unknown", "", "KR9"}) {
        PanelProgram t;
        t.StoreAndList(1, SerialRecord(model, "4"));
        FakePanel& panel = t.View();
        EXPECT_FALSE(panel.setUp.known);
        EXPECT_TRUE(panel.setUp.reduced);
        EXPECT_EQ(panel.setUp.picture, 10);
        EXPECT_EQ(t.Record(1).LoggerModel, "Unknown");
    }
}

TEST(View, TwiceTheSameLoggerGivesTwoPanels)
{
    PanelProgram t;
    t.StoreAndList(1, SerialRecord("KR40", "4"));
    t.View();
    t.View();
    ASSERT_EQ(t.made.size(), 2u);
    EXPECT_EQ(t.heart.panels.At(1), t.made[1].get());
    EXPECT_TRUE(t.made[0]->visible);
    EXPECT_EQ(t.made[0]->steps.back(), "replaced");
}

TEST(View, APanelClosedInTheWaitFreesTheOptionsPanel)
{
    PanelProgram t;
    t.StoreAndList(1, SerialRecord("KR40", "4"));
    t.pump.After(100, [&] { t.made.back()->visible = false; });
    t.View();
    EXPECT_TRUE(t.optionsForm.formEnabled);
    EXPECT_EQ(t.optionsForm.okFocused, 1);
    EXPECT_EQ(t.optionsForm.changes.back(), (std::pair<std::string, bool>{"cmdOk", true}));
}

TEST(View, WithoutADisplayOnlyTheWaitAndTheControlsAreLeft)
{
    IdentifyProgram t;
    t.Store(1, SerialRecord("KR40", "4"));
    t.heart.viewing.RebuildList();
    t.heart.state.cbxUnload_TallyCores.Select(0);
    t.heart.viewing.cmdUnload_View_Click();
    EXPECT_NEAR(t.pump.NowMs(), 200, 0.5);
    EXPECT_EQ(t.optionsForm.okFocused, 1);
}

TEST(View, AStartForOneLoggerKeepsItsNumberOnce)
{
    PanelProgram t;
    t.Store(1, SerialRecord("KR40", "4"));
    t.StoreAndList(2, SerialRecord("KR41", "5"));
    t.heart.state.cbxUnload_TallyCores.Select(0);
    t.heart.state.SingleLoggerMode = true;
    t.heart.state.CurrentLogger = 2;
    EXPECT_EQ(t.View().number, 2);
    EXPECT_FALSE(t.heart.state.SingleLoggerMode);
    EXPECT_EQ(t.View().number, 1);
}

TEST(View, AddingTakesTheLoggerThatWasEntered)
{
    PanelProgram t;
    t.StoreAndList(1, SerialRecord("KR40", "4"));
    t.heart.state.cbxUnload_TallyCores.Clear();
    t.Record(1).LoggerDescription = "first";
    t.heart.viewing.AddLoggerToList(1);
    t.heart.state.AddingLogger = true;
    t.heart.state.ChosenLogger = 2;
    t.Record(2) = SerialRecord("KR41", "10.0.0.5:3000");
    EXPECT_EQ(t.View().number, 2);
    EXPECT_EQ(t.heart.state.CurrentLogger, 2);
    EXPECT_EQ(t.Record(2).LoggerKept, 1);
    EXPECT_EQ(t.heart.state.cbxUnload_TallyCores.Lines(), (Lines{"first", "KR41 sn none at 10.0.0.5:3000"}));
    EXPECT_FALSE(t.heart.state.AddingLogger); // the load has built the record
    EXPECT_TRUE(t.heart.tables.Holds(2));
}

TEST(View, NothingOpensAfterTheEnd)
{
    PanelProgram t;
    t.StoreAndList(1, SerialRecord("KR40", "4"));
    t.heart.end.EndProgram();
    t.heart.viewing.cmdUnload_View_Click();
    EXPECT_TRUE(t.made.empty());
}

TEST(View, ThePanelsThatASearchOpensDoNotHideEachOther)
{
    PanelProgram t;
    t.serial.Plug(2, Logger("KR200", "1", "7.18"), "115200");
    t.serial.Plug(5, Logger("KR40", "", "5.06.0001", "012345"), "115200");
    t.Find(" All Ports");
    std::vector<int> places;
    for (const auto& panel : t.made)
        if (panel->visible)
            places.push_back(panel->twips);
    EXPECT_EQ(places, (std::vector<int>{500, 1000}));
}

} // namespace harvelop::test
