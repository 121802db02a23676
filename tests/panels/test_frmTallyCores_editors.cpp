#include "panel_bench.h"
#include "panels/panel_rules.h"
#include "settings/sample_loggers.h"

#include <QCheckBox>
#include <QClipboard>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

namespace harvelop::test
{

namespace
{

LoggerRecord described(LoggerRecord logger, const std::string& description)
{
    logger.LoggerDescription = description;
    return logger;
}

// Does `work` with the editor that opens next, and closes it if it still stands open then.
void withNextEditor(const std::function<void(QDialog&)>& work)
{
    auto* looking = new QTimer(qApp);
    QObject::connect(looking, &QTimer::timeout, looking, [looking, work] {
        const QPointer<QDialog> editor = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!editor)
            return;
        looking->stop();
        looking->deleteLater();
        work(*editor);
        if (editor)
            editor->close();
    });
    looking->start(1);
}

void click(const QWidget& form, const std::string& button)
{
    Find<QPushButton>(form, button).click();
}

} // namespace

TEST(FrmTallyCores, AChosenFolderShowsAndCanBeApplied)
{
    PanelBench bench;
    bench.Store({SerialLogger()});
    frmTallyCores& form = bench.View(1);
    EXPECT_TRUE(Find<QLineEdit>(form, "txtSaveFolder").isReadOnly());
    bench.dialogs.ExpectChooser("/data");
    click(form, "cmdEditDiskList");
    EXPECT_EQ(Find<QLineEdit>(form, "txtSaveFolder").text(), "/data/");
    EXPECT_TRUE(Find<QPushButton>(form, "cmdApply").isEnabled());
    EXPECT_EQ(bench.dialogs.choosers.at(0).title, "Choose a Folder for the KR200 Series 2 on Com 1");
    click(form, "cmdApply");
    EXPECT_NE(bench.RecordLine(1).find(",/data/,"), std::string::npos);
}

TEST(FrmTallyCores, ADrivesRootOrNoFolderLeavesTheSaveFolderAsItWas)
{
    PanelBench bench;
    bench.Store({SerialLogger()});
    frmTallyCores& form = bench.View(1);
    const std::string before = bench.Record(1).LoggerSaveFolder;
    for (const char* chosen : {"/", ""}) {
        bench.dialogs.ExpectChooser(chosen);
        click(form, "cmdEditDiskList");
    }
    EXPECT_EQ(bench.Record(1).LoggerSaveFolder, before);
    EXPECT_EQ(Find<QLineEdit>(form, "txtSaveFolder").text().toStdString(), before);
    EXPECT_FALSE(Find<QPushButton>(form, "cmdApply").isEnabled());
    EXPECT_TRUE(bench.dialogs.shown.empty());
}

TEST(FrmTallyCores, APanelClosedWhileItsFolderIsChosenIsLeftAlone)
{
    PanelBench bench;
    bench.Store({SerialLogger()});
    const QPointer<frmTallyCores> form = &bench.View(1);
    bench.dialogs.ExpectChooser("/data");
    bench.dialogs.whileShown = [&] {
        form->close();
        PanelBench::RunDeletions();
    };
    click(*form, "cmdEditDiskList");
    EXPECT_FALSE(form);
}

TEST(FrmTallyCores, EachEditorOpensForThePanelsOwnLogger)
{
    PanelBench bench;
    bench.Store({described(SerialLogger(), "Mill"), described(NetworkLogger(), "Weir")});
    bench.Record(1).LoggerMdbOn = "1";
    frmTallyCores& form = bench.View(1);
    bench.View(2);
    for (const auto& [button, editor] : {std::pair{"cmdEditMDB", "frmEditMDB"},
                                         {"cmdEditEmailList", "frmUnloadLists"},
                                         {"cmdRun", "frmRun"},
                                         {"cmdCommand", "frmRun"},
                                         {"cmdCreateIcon", "frmIcon"}}) {
        bench.heart.state.CurrentLogger = 2;
        std::string opened;
        withNextEditor([&](QDialog& shown) {
            opened = shown.objectName().toStdString();
            EXPECT_EQ(bench.heart.state.CurrentLogger, 1) << opened;
            EXPECT_EQ(bench.heart.state.ChosenLogger, 1) << opened;
            EXPECT_EQ(bench.heart.link.LinkDescription, "KR200 Series 2 on Com 1") << opened;
        });
        click(form, button);
        EXPECT_EQ(opened, editor);
    }
    EXPECT_EQ(bench.heart.state.ListKind, "Email");
    EXPECT_EQ(bench.heart.state.RunEditKind, "Command");
    EXPECT_TRUE(form.isVisible());
}

TEST(FrmTallyCores, APanelClosedWhileItsEditorStandsOpenTakesItAlong)
{
    for (const char* button : {"cmdEditMDB", "cmdEditEmailList", "cmdRun", "cmdCreateIcon"}) {
        PanelBench bench;
        LoggerRecord logger = described(SerialLogger(), "Mill");
        logger.LoggerMdbOn = "1";
        bench.Store({logger});
        const QPointer<frmTallyCores> form = &bench.View(1);
        withNextEditor([&](QDialog&) {
            form->Unload();
            PanelBench::RunDeletions();
        });
        click(*form, button);
        EXPECT_FALSE(form) << button;
        EXPECT_EQ(bench.Panel(1), nullptr);
    }
}

TEST(FrmTallyCores, NothingIsWrittenOrMadeOnceTheProgramHasEndedBehindAnEditor)
{
    for (const char* button : {"cmdEditMDB", "cmdEditEmailList", "cmdRun", "cmdCommand", "cmdCreateIcon"}) {
        PanelBench bench;
        LoggerRecord logger = described(SerialLogger(), "Mill");
        logger.LoggerMdbOn = "1";
        bench.Store({logger});
        frmTallyCores& form = bench.View(1);
        std::map<std::string, std::string> left;
        withNextEditor([&](QDialog& editor) {
            bench.heart.end.EndProgram();
            left = bench.files.files;
            if (auto* unload = editor.findChild<QRadioButton*>("optUnload"))
                unload->click();
            if (auto* ok = editor.findChild<QPushButton*>("cmdOk"))
                ok->click();
        });
        click(form, button);
        click(form, "cmdOk");
        EXPECT_EQ(bench.files.files, left) << button;
        EXPECT_TRUE(bench.desktop.shortcuts.empty());
        EXPECT_TRUE(bench.desktop.started.empty());
    }
}

TEST(FrmTallyCores, TheProgramsEndWhileAFolderIsChosenChangesNoFile)
{
    PanelBench bench;
    bench.Store({SerialLogger()});
    frmTallyCores& form = bench.View(1);
    std::map<std::string, std::string> left;
    bench.dialogs.ExpectChooser("/data");
    bench.dialogs.whileShown = [&] {
        bench.heart.end.EndProgram();
        left = bench.files.files;
    };
    click(form, "cmdEditDiskList");
    form.close();
    EXPECT_EQ(bench.files.files, left);
}

TEST(FrmTallyCores, PastedLineEndsTearNoRecord)
{
    PanelBench bench;
    bench.Store({SerialLogger(), NetworkLogger()});
    frmTallyCores& form = bench.View(1);
    QApplication::clipboard()->setText("Mill\r\nnorth");
    Find<QLineEdit>(form, "txtDescription").paste();
    Find<QCheckBox>(form, "chkKR200HTML_0").click();
    QApplication::clipboard()->setText("1\n2");
    Find<QLineEdit>(form, "txtKR200_0").paste();
    click(form, "cmdOk");
    EXPECT_EQ(bench.heart.tables.Count(), 2);
    EXPECT_EQ(bench.Record(1).LoggerDescription.find_first_of("\r\n"), std::string::npos);
    EXPECT_TRUE(bench.Record(1).LoggerDescription.starts_with("Mill")) << bench.Record(1).LoggerDescription;
    EXPECT_EQ(bench.Record(1).LoggerIconKey, "::2");
    EXPECT_EQ(bench.Record(2).LoggerIconKey, "::4");
}

TEST(FrmTallyCores, APasteIntoTheDescriptionIsCleanedBeforeASave)
{
    PanelBench bench;
    bench.Store({SerialLogger()});
    frmTallyCores& form = bench.View(1);
    auto& description = Find<QLineEdit>(form, "txtDescription");
    QApplication::clipboard()->setText("Mill, north;side");
    description.paste();
    EXPECT_EQ(description.text(), "Mill, north;side"); // only the last character is looked at while typing
    click(form, "cmdApply");
    EXPECT_EQ(description.text(), "Millnorthside");
    EXPECT_EQ(bench.Record(1).LoggerDescription, "Millnorthside");
}

TEST(FrmTallyCores, ACommaThatIsNotYetCleanedNeverReachesTheRecord)
{
    PanelBench bench;
    LoggerRecord logger = SerialLogger();
    logger.ScheduleHTML[0] = "1";
    logger.LoggerTimeout = "35";
    bench.Store({logger});
    frmTallyCores& form = bench.View(1);
    QApplication::clipboard()->setText("Mill,north");
    Find<QLineEdit>(form, "txtDescription").paste();
    Find<QLineEdit>(form, "txtKR200_0").selectAll();
    Type(Find<QLineEdit>(form, "txtKR200_0"), "1,5");
    withNextEditor([](QDialog&) {});
    click(form, "cmdCreateIcon"); // builds the record from the panel as it stands
    EXPECT_EQ(bench.Record(1).LoggerDescription, "Millnorth");
    EXPECT_EQ(bench.Record(1).ScheduleRecords[0], "15");
    EXPECT_EQ(bench.Record(1).LoggerTimeout, "35");
}

TEST(FrmTallyCores, TheDescriptionIsStrippedByTheFilterThatRanLast)
{
    PanelBench bench;
    bench.Store({described(SerialLogger(), "Mill_7")});
    frmTallyCores& form = bench.View(1);
    EXPECT_EQ(bench.heart.state.AllowedChars, DescriptionChars);
    bench.heart.state.AllowedChars = "0123456789";
    click(form, "cmdOk");
    EXPECT_EQ(bench.Record(1).LoggerDescription, "7");
}

TEST(FrmTallyCores, WhatToRunAfterAnUnloadCanBeAppliedOnceItHasChanged)
{
    PanelBench bench;
    bench.Store({SerialLogger()});
    frmTallyCores& form = bench.View(1);
    withNextEditor([](QDialog&) {});
    click(form, "cmdCommand");
    EXPECT_FALSE(Find<QPushButton>(form, "cmdApply").isEnabled());
    withNextEditor([&](QDialog&) { bench.Record(1).LoggerRunCommand = "STATUS"; });
    click(form, "cmdCommand");
    EXPECT_TRUE(Find<QPushButton>(form, "cmdApply").isEnabled());
    click(form, "cmdApply");
    EXPECT_NE(bench.RecordLine(1).find(",STATUS,"), std::string::npos);
}

TEST(FrmTallyCores, AnotherPanelsApplyLosesNothingThatAnEditorHasChanged)
{
    PanelBench bench;
    bench.Store({SerialLogger(), NetworkLogger()});
    frmTallyCores& form = bench.View(1);
    frmTallyCores& other = bench.View(2);
    bench.dialogs.ExpectChooser("/data");
    click(form, "cmdEditDiskList");
    withNextEditor([&](QDialog&) { bench.Record(1).LoggerRunCommand = "STATUS"; });
    click(form, "cmdCommand");
    Find<QPushButton>(other, "cmdOk").click(); // reloads all records
    EXPECT_EQ(bench.Record(1).LoggerSaveFolder, "/data/");
    EXPECT_EQ(bench.Record(1).LoggerRunCommand, "STATUS");
}

} // namespace harvelop::test
