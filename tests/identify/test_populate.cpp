#include "fake_panel.h"

#include <gtest/gtest.h>

namespace harvelop::test
{

using Lines = std::vector<std::string>;

namespace
{

// What a search leaves of one find.
void foundOn(IdentifyProgram& t, int find, int port, const std::string& model, const std::string& series)
{
    const auto entry = static_cast<size_t>(port - 1);
    SearchState& search = t.Search();
    search.FoundCount = static_cast<std::int16_t>(find);
    search.FoundPorts.at(static_cast<size_t>(find - 1)) = port;
    search.PortBaud.at(entry) = "9600";
    search.PortParity.at(entry) = "N";
    search.PortDataBits.at(entry) = "8";
    search.PortStopBits.at(entry) = "1";
    search.PortFlow.at(entry) = "SWFC";
    search.IdentifiedModel.Set(find, model);
    search.IdentifiedSeries.Set(find, series);
    search.IdentifiedVersion.Set(find - 1, "7.18");
    search.IdentifiedSerial.Set(find - 1, IsKR4(model) ? "012345" : "");
}

} // namespace

TEST(Populate, EachFindBecomesARecordAndAHiddenPanel)
{
    PanelProgram t;
    t.heart.state.SearchRunning = true;
    foundOn(t, 1, 3, "KR200 with a XBM", "2");
    foundOn(t, 2, 16, "KR45", "");
    t.heart.viewing.PopulateTallycoresFormsWithFoundTallyCores();
    ASSERT_EQ(t.made.size(), 2u);
    for (const auto& panel : t.made) {
        EXPECT_FALSE(panel->visible);
        EXPECT_EQ(panel->steps,
                  (Lines{"load", "describe " + t.heart.tables.Record(panel->number)->LoggerModel, "set up"}));
    }
    EXPECT_EQ(t.made[0]->setUp.picture, 2);
    EXPECT_EQ(t.made[0]->setUp.model, "KR200 Series 2");
    EXPECT_EQ(t.made[1]->setUp.picture, 14);
    EXPECT_EQ(t.made[1]->setUp.modelWidth, 1700); // here the KR45 too
    EXPECT_EQ(t.heart.state.CurrentLogger, 2);

    const LoggerRecord& older = t.Record(1);
    EXPECT_EQ(older.LoggerModel, "KR200 Series 2");
    EXPECT_EQ(older.LoggerPort, "3");
    EXPECT_EQ(older.LoggerBaud, "9600");
    EXPECT_EQ(older.LoggerParity, "N");
    EXPECT_EQ(older.LoggerDataBits, "8");
    EXPECT_EQ(older.LoggerStopBits, "1");
    EXPECT_EQ(older.LoggerFlow, "SWFC");
    EXPECT_EQ(older.LoggerTimeout, "10");
    EXPECT_EQ(older.LoggerVersion, "7.18");
    EXPECT_EQ(older.LoggerIconKey, "::2");
    EXPECT_EQ(older.LoggerLinkType, "RS232");
    EXPECT_EQ(t.Record(2).LoggerModel, "KR45");
    EXPECT_EQ(t.Record(2).LoggerSerial, "012345");
    EXPECT_EQ(t.Record(2).LoggerPort, "16");
    EXPECT_EQ(t.Record(2).LoggerIconKey, "::3");
    EXPECT_EQ(t.heart.tables.Count(), 2);
    EXPECT_TRUE(t.heart.tables.HaveFoundLoggers);
}

TEST(Populate, EveryOlderModelIsStoredAsItsKeyAndItsSeries)
{
    for (const ModelRow& row : KnownModels()) {
        if (row.IsKR4())
            continue;
        PanelProgram t;
        foundOn(t, 1, 3, std::string(row.model), std::string(row.series));
        t.heart.viewing.PopulateTallycoresFormsWithFoundTallyCores();
        const std::string key(row.model.substr(0, row.model.find(' ')));
        EXPECT_EQ(t.Record(1).LoggerModel, key + " Series " + std::string(row.series)) << row.model;
    }
}

TEST(Populate, AModelThatNobodyKnowsBecomesUnknown)
{
    PanelProgram t;
    foundOn(t, 1, 3, "", "");
    t.heart.viewing.PopulateTallycoresFormsWithFoundTallyCores();
    EXPECT_EQ(t.Search().IdentifiedModel.Get(1), "Unknown");
    EXPECT_EQ(t.Record(1).LoggerModel, "Unknown");
    EXPECT_FALSE(t.made[0]->setUp.known);
    EXPECT_FALSE(t.made[0]->setUp.reduced); // only the view takes everything away
    EXPECT_EQ(t.made[0]->setUp.picture, 10);
}

TEST(Populate, AKeyIsNeverUsedTwiceAndACounterThatIsNoNumberGivesNone)
{
    PanelProgram t;
    t.files.files[TestProgram::OptionsIni] = "Icons=41\r\n";
    foundOn(t, 1, 3, "KR40", "");
    t.heart.viewing.PopulateTallycoresFormsWithFoundTallyCores();
    t.heart.viewing.PopulateTallycoresFormsWithFoundTallyCores();
    EXPECT_EQ(t.Record(1).LoggerIconKey, "::43");

    PanelProgram broken;
    broken.files.files[TestProgram::OptionsIni] = "Icons=many\r\n";
    foundOn(broken, 1, 3, "KR40", "");
    broken.heart.viewing.PopulateTallycoresFormsWithFoundTallyCores();
    EXPECT_EQ(broken.Record(1).LoggerIconKey, "");
    EXPECT_EQ(broken.heart.tables.Count(), 1);
}

TEST(Populate, NothingIsMadeAfterTheEnd)
{
    PanelProgram t;
    foundOn(t, 1, 3, "KR40", "");
    t.heart.end.EndProgram();
    t.heart.viewing.PopulateTallycoresFormsWithFoundTallyCores();
    EXPECT_TRUE(t.made.empty());
}

TEST(Populate, ASearchUnloadsThePanelsOfBeforeAndNoSaveBringsTheirLoggersBack)
{
    PanelProgram t;
    t.StoreAndList(1, SerialRecord("KR40", "4"));
    FakePanel& former = t.View();
    t.serial.Plug(2, nullptr, "");
    t.dialogs.Expect(BoxAnswer::Ok);
    t.dialogs.Expect(BoxAnswer::Ok);
    t.Find(" All Ports");
    EXPECT_EQ(former.steps.back(), "unload");
    EXPECT_EQ(t.heart.tables.Count(), 0);
    EXPECT_EQ(t.files.files[TestProgram::FoundIni], "");
    EXPECT_EQ(t.heart.panels.At(1), nullptr);
}

TEST(Populate, FindsReplaceAFileWithALineTooMany)
{
    PanelProgram t;
    std::string tooLong;
    for (int n = 1; n <= MaxLoggers + 1; ++n)
        tooLong += std::to_string(n) + "tallyCoreSettings=" + RecordText(SerialRecord("KR41", "3")) + "\r\n";
    t.files.files[TestProgram::FoundIni] = tooLong;
    t.heart.records.LoadFoundLoggers();
    t.heart.viewing.RebuildList();
    t.heart.state.cbxUnload_TallyCores.Select(0);
    t.serial.Plug(4, Logger("KR40", "", "5.06.0001", "012345"), "57600");
    t.View();
    EXPECT_EQ(t.files.files[TestProgram::FoundIni], tooLong) << "a look at a logger loses none";

    t.dialogs.Expect(BoxAnswer::Ok);
    t.Find(" All Ports");
    EXPECT_EQ(t.heart.tables.Count(), 1);
    EXPECT_EQ(t.Record(1).LoggerModel, "KR40");
    EXPECT_EQ(t.files.files[TestProgram::FoundIni], "1tallyCoreSettings=" + RecordText(t.Record(1)) + "\r\n");
    EXPECT_TRUE(t.heart.records.Saved());
}

TEST(Populate, AFindOpensThePanelOfEachLogger)
{
    PanelProgram t;
    t.serial.Plug(4, Logger("KR40", "", "5.06.0001", "012345"), "57600");
    t.serial.Plug(5, Logger("KR200", "1", "7.18"), "115200");
    t.Find(" All Ports");
    ASSERT_EQ(t.made.size(), 4u); // a hidden one and one to see of each
    EXPECT_EQ(t.made[0]->caption, " Found this KR40 on Com 4 @ 57600,N,8,1,SWFC");
    EXPECT_EQ(t.made[1]->twips, 1000);
    EXPECT_EQ(t.made[1]->steps.back(), "replaced");
    EXPECT_EQ(t.made[2]->caption, " KR40 on Com 4 @ 57600,N,8,1,SWFC");
    EXPECT_TRUE(t.made[2]->visible);
    EXPECT_EQ(t.made[3]->caption, " KR200 Series 1 on Com 5 @ 115200,N,8,1,SWFC");
    EXPECT_TRUE(t.made[3]->visible);
    EXPECT_FALSE(t.optionsForm.formEnabled);
    EXPECT_EQ(t.heart.state.CurrentLogger, 2);
}

} // namespace harvelop::test
