// The stand-in for the panels of loggers, next to the panels that it stands for.
#include "identify/headless_panel.h"
#include "panel_bench.h"
#include "settings/sample_loggers.h"

namespace harvelop::test
{

namespace
{

// A program without a display.
struct HeadlessBench : TestProgram {
    HeadlessBench()
    {
        heart.state.AppPath = std::string(Directory) + "/";
        heart.state.DriveRoot = desktop.DriveRoot();
    }
    HeadlessPanels panels{heart.panelServices()};
};

std::vector<LoggerRecord> someLoggers()
{
    LoggerRecord fresh = SerialLogger();
    fresh.LoggerSaveFolder.clear();
    fresh.ScheduleRecords.fill("");
    LoggerRecord odd = NetworkLogger();
    odd.LoggerDescription = "B\xFCro, more than 32 characters of text";
    odd.ScheduleRecords[3] = "1234567";
    odd.ScheduleHTML[5] = "1";
    LoggerRecord unknown;
    unknown.LoggerModel = "Unknown";
    return {SerialLogger(), ModemLogger(), NetworkLogger(), fresh, odd, unknown};
}

template <typename Bench> void store(Bench& bench, bool found)
{
    const auto loggers = someLoggers();
    for (size_t i = 0; i < loggers.size(); ++i)
        bench.heart.tables.records.at(i) = loggers[i];
    bench.heart.tables.HaveFoundLoggers = found;
}

// Loads a logger's panel, leaves it hidden and closes it again: the line of its record, then the whole file.
template <typename Bench> std::vector<std::string> loadAndClose(Bench& bench, int number)
{
    bench.heart.state.CurrentLogger = static_cast<std::int16_t>(number);
    bench.heart.panels.Create(number)->Load();
    std::vector<std::string> texts = {bench.heart.tables.FoundLoggerStrings.at(static_cast<size_t>(number - 1)),
                                      bench.heart.link.ConnectionKind, bench.heart.link.LinkDescription};
    bench.heart.panels.Unload(number);
    texts.push_back(bench.heart.tables.Record(number)->LoggerMdbOn);
    texts.push_back(bench.files.files[TestProgram::FoundIni]);
    texts.push_back(bench.files.files[TestProgram::OptionsIni]);
    return texts;
}

} // namespace

TEST(HeadlessPanel, BuildsTheSameRecordsAsThePanel)
{
    for (const bool found : {true, false}) {
        PanelBench forms;
        HeadlessBench headless;
        store(forms, found);
        store(headless, found);
        for (int number = 1; number <= static_cast<int>(someLoggers().size()); ++number)
            EXPECT_EQ(loadAndClose(headless, number), loadAndClose(forms, number)) << number << found;
    }
}

TEST(HeadlessPanel, IsNeverVisible)
{
    HeadlessBench bench;
    store(bench, true);
    LoggerPanel* panel = bench.heart.panels.Create(1);
    panel->SetVisible(true);
    EXPECT_FALSE(panel->IsVisible());
    EXPECT_EQ(bench.heart.panels.CountVisiblePanels(), 0);
}

TEST(HeadlessPanel, OpensTheLoggersPanelAndTakesValues)
{
    HeadlessBench bench;
    store(bench, true);
    HeadlessPanel* panel = bench.panels.Open(3);
    ASSERT_NE(panel, nullptr);
    EXPECT_EQ(bench.heart.panels.At(3), panel);
    EXPECT_EQ(bench.heart.state.CurrentLogger, 3);
    EXPECT_EQ(bench.heart.link.ConnectionKind, "Ethernet");
    PanelValues values = panel->Values();
    values.on[1] = true;
    panel->SetValues(values);
    StorePanel(bench.heart.panelServices(), 3);
    EXPECT_EQ(bench.heart.tables.Record(3)->ScheduleOn[1], "1");
    for (const int number : {0, MaxLoggers + 1})
        EXPECT_EQ(bench.panels.Open(number), nullptr);
}

TEST(HeadlessPanel, DeliveryThatTheAccountsForbidIsOff)
{
    HeadlessBench bench;
    store(bench, true);
    Options& options = bench.heart.options;
    options.FTPServername = options.FTPUserName = options.FTPPassword = "x";
    bench.heart.state.CurrentLogger = 3;
    LoggerPanel* panel = bench.heart.panels.Create(3);
    panel->Load();
    EXPECT_TRUE(panel->Values().viaFTP);
    panel->SetDelivery(std::nullopt, false);
    EXPECT_FALSE(panel->Values().viaFTP);
    EXPECT_FALSE(panel->Values().ftpEnabled);
    EXPECT_FALSE(panel->Values().emailEnabled);
}

TEST(HeadlessPanel, ViewingALoggerEndsWithTheOptionsPanelFree)
{
    HeadlessBench bench;
    store(bench, true);
    for (int i = 1; i <= 6; ++i)
        bench.heart.records.BuildLoggerSettings(i);
    bench.heart.viewing.RebuildList();
    FakeOptions options;
    bench.heart.forms.options = &options;
    bench.heart.state.cbxUnload_TallyCores.Select(1);
    bench.heart.viewing.cmdUnload_View_Click();
    bench.heart.viewing.cmdUnload_View_Click();
    EXPECT_TRUE(options.formEnabled);
    EXPECT_NE(bench.heart.panels.At(2), nullptr);
    bench.heart.forms.options = nullptr;
}

TEST(HeadlessPanel, TheMakerTakesItsPanelsAlong)
{
    TestProgram program;
    {
        HeadlessPanels panels(program.heart.panelServices());
        ASSERT_NE(program.heart.panels.Create(1), nullptr);
    }
    EXPECT_EQ(program.heart.panels.At(1), nullptr);
    EXPECT_EQ(program.heart.panels.Create(1), nullptr);
}

} // namespace harvelop::test
