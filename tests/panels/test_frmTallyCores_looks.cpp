#include "panel_bench.h"
#include "settings/sample_loggers.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>

#include <tuple>

namespace harvelop::test
{

namespace
{

std::string captionOf(const QWidget& form, const std::string& label)
{
    return Find<QLabel>(form, label).text().toStdString();
}

bool isShown(const QWidget& form, const std::string& control)
{
    return !Find<QWidget>(form, control).isHidden();
}

LoggerRecord loggerOf(const std::string& model)
{
    LoggerRecord record = SerialLogger();
    record.LoggerModel = model;
    return record;
}

// The panel's own keys differ in places from those of the texts, which must do for the options panel too.
QString withoutKey(const std::string& text)
{
    return QString::fromStdString(text).remove('&');
}

constexpr const char* Seams[] = {"cmdSetCom",    "cmdProgram", "cmdProgramClear", "cmdCard",
                                 "cmdCardClear", "cmdFlash",   "cmdFlashClear"};

} // namespace

TEST(FrmTallyCores, EachModelHasItsPictureAndItsSchedules)
{
    const std::vector<std::tuple<std::string, int, bool>> rows = {{"KR20 Series 1", 1, false},
                                                                  {"KR21 Series 2", 9, false},
                                                                  {"KR23 Series 3", 11, false},
                                                                  {"KR200 Series 1", 2, false},
                                                                  {"KR205 Series 2", 3, false},
                                                                  {"KR215 Series 3", 4, false},
                                                                  {"KR300 Series 1", 5, false},
                                                                  {"KR305 Series 2", 6, false},
                                                                  {"KR315 Series 3", 7, false},
                                                                  {"KR40", 12, true},
                                                                  {"KR41", 13, true},
                                                                  {"KR45", 14, true},
                                                                  {"KR400", 8, true}};
    PanelBench bench;
    std::vector<LoggerRecord> loggers;
    for (const auto& row : rows)
        loggers.push_back(loggerOf(std::get<0>(row)));
    bench.Store(loggers);
    for (size_t i = 0; i < rows.size(); ++i) {
        const auto& [model, picture, kr4] = rows[i];
        SCOPED_TRACE(model);
        frmTallyCores& form = bench.View(static_cast<int>(i) + 1);
        EXPECT_EQ(Find<QLabel>(form, "imgTallyCores").property("picture").toInt(), picture);
        EXPECT_FALSE(Find<QLabel>(form, "imgTallyCores").pixmap().isNull());
        EXPECT_EQ(isShown(form, "fraKR400Schedules"), kr4);
        EXPECT_EQ(isShown(form, "fraKR200Schedules"), !kr4);
        EXPECT_EQ(captionOf(form, "lblModel"), "Model : " + model);
        EXPECT_EQ(captionOf(form, "lblSerialNumber"), "Serial : none");
        EXPECT_TRUE(isShown(form, "lblModel") && isShown(form, "lblSerialNumber") &&
                    isShown(form, "lblFirmwareVersion"));
        EXPECT_FALSE(isShown(form, "lblHeading"));
        EXPECT_TRUE(Find<QTabWidget>(form, "tsTallycores").tabBar()->isEnabled());
        form.Unload();
    }
}

TEST(FrmTallyCores, TheModelIsWidenedForTheKR4FamilyButTheKR45)
{
    PanelBench bench;
    bench.Store({loggerOf("KR40"), loggerOf("KR45")});
    const int width = 1700 * bench.View(1).logicalDpiX() / 1440;
    EXPECT_EQ(Find<QLabel>(*bench.Panel(1), "lblModel").minimumWidth(), width);
    EXPECT_EQ(Find<QLabel>(bench.View(2), "lblModel").minimumWidth(), 0);
}

TEST(FrmTallyCores, AnUnknownModelOpensAReducedPanel)
{
    PanelBench bench;
    bench.Store({loggerOf("ZX81")});
    frmTallyCores& form = bench.View(1);
    EXPECT_EQ(bench.Record(1).LoggerModel, "Unknown");
    EXPECT_EQ(Find<QLabel>(form, "imgTallyCores").property("picture").toInt(), 10);
    for (const char* hidden :
         {"lblModel", "lblSerialNumber", "lblFirmwareVersion", "fraKR200Schedules", "fraKR400Schedules"})
        EXPECT_FALSE(isShown(form, hidden)) << hidden;
    EXPECT_TRUE(isShown(form, "lblHeading"));
    EXPECT_TRUE(Find<QLabel>(form, "lblHeading").isEnabled());
    EXPECT_FALSE(Find<QPushButton>(form, "cmdSetCom").isEnabled());
    EXPECT_FALSE(Find<QPushButton>(form, "cmdCreateIcon").isEnabled());
    EXPECT_FALSE(Find<QTabWidget>(form, "tsTallycores").tabBar()->isEnabled());
    EXPECT_TRUE(Find<QPushButton>(form, "cmdOk").isEnabled());
}

TEST(FrmTallyCores, TheSchedulesOfAnUnknownModelSurviveItsPanel)
{
    for (const char* model : {"KR42", "ZX81"}) {
        PanelBench bench;
        LoggerRecord logger = loggerOf(model);
        logger.ScheduleRecords.fill("7");
        logger.ScheduleOn.fill("1");
        bench.Store({logger});
        Find<QPushButton>(bench.View(1), "cmdOk").click();
        EXPECT_EQ(bench.Record(1).LoggerModel, "Unknown");
        EXPECT_EQ(bench.Record(1).ScheduleOn, logger.ScheduleOn) << model;
        EXPECT_EQ(bench.Record(1).ScheduleRecords, logger.ScheduleRecords) << model;
    }
}

TEST(FrmTallyCores, ChangingTheTabIsRememberedForTheNextView)
{
    PanelBench bench;
    bench.Store({SerialLogger()});
    frmTallyCores& first = bench.View(1);
    auto& tabs = Find<QTabWidget>(first, "tsTallycores");
    EXPECT_EQ(tabs.currentIndex(), 0);
    EXPECT_EQ(bench.Record(1).LoggerTab, 1);
    EXPECT_EQ(tabs.currentWidget()->objectName(), "fraDescription");
    tabs.setCurrentIndex(2);
    EXPECT_EQ(bench.Record(1).LoggerTab, 3);
    first.Unload();
    EXPECT_EQ(Find<QTabWidget>(bench.View(1), "tsTallycores").currentWidget()->objectName(), "fraUnloadOptions");
    bench.Panel(1)->SelectTab(2);
    EXPECT_EQ(Find<QTabWidget>(*bench.Panel(1), "tsTallycores").currentWidget()->objectName(), "fraLoadOptions");
}

TEST(FrmTallyCores, TheCardIsSynchronisedOnTheKR4Family)
{
    PanelBench bench;
    bench.Store({SerialLogger(), NetworkLogger()});
    frmTallyCores& older = bench.View(1);
    EXPECT_TRUE(Find<QPushButton>(older, "cmdCard").isEnabled());
    EXPECT_EQ(captionOf(older, "lblCard"), "Send a program to a memory card plugged into the tallyCore, or delete any "
                                           "existing progarms stored on a memory card.");
    frmTallyCores& kr4 = bench.View(2);
    EXPECT_FALSE(Find<QPushButton>(kr4, "cmdCard").isEnabled());
    EXPECT_FALSE(Find<QPushButton>(kr4, "cmdCardClear").isEnabled());
    EXPECT_EQ(captionOf(kr4, "lblCard"),
              "Programs and data for this tallyCore type are automatically synchronised between the memory card and "
              "internal memory when a memory card is plugged into the tallyCore.");
}

TEST(FrmTallyCores, ThePanelStands500TwipsFromTheOptionsPanel)
{
    struct OptionsWindow : QWidget, FakeOptions {
    } window;
    PanelBench bench;
    bench.heart.forms.options = &window;
    window.move(96, 48);
    bench.Store({SerialLogger()});
    frmTallyCores& form = bench.View(1);
    const int step = qRound(500.0 * form.logicalDpiX() / 1440);
    EXPECT_NEAR(form.x(), 96 + step, 1);
    EXPECT_NEAR(form.y(), 48 + step, 1);
    form.Place(5000); // the tenth of a search
    EXPECT_NEAR(form.x(), 96 + qRound(5000.0 * form.logicalDpiX() / 1440), 1);
}

TEST(FrmTallyCores, ALanguageFileNamesTheControls)
{
    PanelBench bench;
    bench.Store({SerialLogger(), NetworkLogger()});
    std::string lines;
    for (int number = 50; number <= 101; ++number)
        lines += std::to_string(number) + ":1:14:T" + std::to_string(number) + "\r\n";
    lines += "804:1:14:Firmware\r\n";
    bench.files.files[std::string(PanelBench::Directory) + "/Deutsch.txt"] = lines;
    bench.heart.options.Language = "Deutsch";
    bench.heart.language.LangActive = true;
    bench.heart.language.LoadLanguageFile();

    frmTallyCores& older = bench.View(1);
    auto& tabs = Find<QTabWidget>(older, "tsTallycores");
    EXPECT_EQ(tabs.tabText(0), "T50");
    EXPECT_EQ(tabs.tabText(2), "T52");
    EXPECT_EQ(tabs.tabBar()->font().pointSize(), 14);
    EXPECT_EQ(Find<QGroupBox>(older, "fraTallyCore").title(), "T82 KR200 Series 2");
    EXPECT_EQ(captionOf(older, "lblFirmwareVersion"), "Firmware : 3.51");
    EXPECT_EQ(captionOf(older, "lblCard"), "T60");
    EXPECT_EQ(Find<QPushButton>(older, "cmdProgram").text(), "T54");
    EXPECT_EQ(Find<QPushButton>(older, "cmdProgram").font().pointSize(), 14);
    EXPECT_EQ(Find<QCheckBox>(older, "chkMdb").text(), "T72");
    EXPECT_EQ(Find<QGroupBox>(older, "Frame1").title(), "T86");
    EXPECT_EQ(Find<QPushButton>(older, "cmdOk").text(), "T98");
    EXPECT_EQ(Find<QPushButton>(older, "cmdApply").text(), "T100");
    EXPECT_EQ(Find<QGroupBox>(older, "fraKR200Schedules").title(), "Schedules"); // has no number: meant
    frmTallyCores& kr4 = bench.View(2);
    EXPECT_EQ(Find<QGroupBox>(kr4, "fraKR400Schedules").title(), "T65");
    EXPECT_EQ(captionOf(kr4, "lblCard"), "T101");
}

TEST(FrmTallyCores, CaptionsAreThoseOfTheNumberedTexts)
{
    PanelBench bench;
    bench.Store({SerialLogger()});
    const frmTallyCores& form = bench.View(1);
    const std::pair<int, const char*> captions[] = {{54, "cmdProgram"},
                                                    {55, "cmdProgramClear"},
                                                    {58, "cmdCard"},
                                                    {62, "cmdFlash"},
                                                    {70, "cmdEditDiskList"},
                                                    {69, "chkSendUnloadToDisk"},
                                                    {72, "chkMdb"},
                                                    {73, "cmdEditMDB"},
                                                    {75, "chkSendUnloadViaEmail"},
                                                    {76, "cmdEditEmailList"},
                                                    {78, "chkSendUnloadViaFTP"},
                                                    {79, "cmdTallyCoresUnload"},
                                                    {80, "cmdRun"},
                                                    {81, "cmdCommand"},
                                                    {83, "cmdSetCom"},
                                                    {84, "cmdCreateIcon"},
                                                    {85, "cmdUpgradeFirmware"},
                                                    {98, "cmdOk"},
                                                    {99, "cmdCancel"},
                                                    {100, "cmdApply"}};
    for (const auto& [number, name] : captions)
        EXPECT_EQ(Find<QAbstractButton>(form, name).text().remove('&'), withoutKey(bench.heart.language.Text(number)));
    const std::pair<int, const char*> frames[] = {
        {53, "fraProgram"},        {57, "fraCard"},        {61, "fraFlash"}, {65, "fraKR400Schedules"},
        {65, "fraKR200Schedules"}, {68, "fraUnload_File"}, {71, "fraMdb"},   {74, "fraUnload_Email"},
        {77, "fraUnload_FTP"},     {86, "Frame1"}};
    for (const auto& [number, name] : frames)
        EXPECT_EQ(Find<QGroupBox>(form, name).title().toStdString(), bench.heart.language.Text(number));
    EXPECT_EQ(captionOf(form, "lblProgram"), bench.heart.language.Text(56));
    EXPECT_EQ(Find<QLabel>(form, "lblUnloadDescription").text().remove('&'), withoutKey(bench.heart.language.Text(67)));
    EXPECT_EQ(captionOf(form, "lblFlash"), bench.heart.language.Text(64));
    EXPECT_EQ(captionOf(form, "lblRecords8"), "Records");
    EXPECT_EQ(captionOf(form, "lblRecords5"), "Records");
    const std::pair<const char*, const char*> headings[] = {{"lblULAST8", "ULAST"}, {"lblUlast5", "ULAST"},
                                                            {"lblCSV8", "CSV"},     {"lblCSV5", "CSV"},
                                                            {"lblHTML8", "HTML"},   {"lblHTML5", "HTML"}};
    for (const auto& [name, heading] : headings)
        EXPECT_EQ(Find<QAbstractButton>(form, name).text(), heading) << name;
    const auto& tabs = Find<QTabWidget>(form, "tsTallycores");
    for (int i = 0; i < tabs.count(); ++i)
        EXPECT_EQ(tabs.tabText(i).toStdString(), bench.heart.language.Text(50 + i));
    EXPECT_EQ(captionOf(form, "lblInternal"), "Internal");
    EXPECT_EQ(captionOf(form, "lblCard1"), "Card");
    EXPECT_EQ(Find<QGroupBox>(form, "draData").title(), "Stored Data (bytes)");
}

TEST(FrmTallyCores, ButtonsWithoutTheirActionSaySo)
{
    PanelBench bench;
    bench.heart.actions = {};
    bench.Store({SerialLogger()});
    frmTallyCores& form = bench.View(1);
    const std::string before = bench.RecordLine(1);
    for (const char* name : Seams) {
        auto& button = Find<QPushButton>(form, name);
        EXPECT_EQ(button.toolTip(), "Not available yet.") << name;
        button.click();
    }
    Find<QPushButton>(form, "cmdUpgradeFirmware").click();
    EXPECT_TRUE(form.isVisible());
    EXPECT_FALSE(Find<QPushButton>(form, "cmdApply").isEnabled());
    EXPECT_EQ(bench.RecordLine(1), before);
    EXPECT_TRUE(bench.dialogs.shown.empty());
    EXPECT_TRUE(bench.desktop.started.empty());
}

TEST(FrmTallyCores, WhatCanOnlyBeReadLooksLikeThePanelAroundIt)
{
    PanelBench bench;
    bench.Store({SerialLogger()});
    frmTallyCores& form = bench.View(1);
    const auto base = [&](const char* field) { return Find<QLineEdit>(form, field).palette().color(QPalette::Base); };
    for (const char* field : {"txtSaveFolder", "txtInternal_0", "txtCard_4"})
        EXPECT_EQ(base(field), form.palette().color(QPalette::Window)) << field;
    EXPECT_EQ(base("txtDescription"), form.palette().color(QPalette::Base));
}

} // namespace harvelop::test
