#include "panel_bench.h"
#include "settings/sample_loggers.h"

#include <QCheckBox>
#include <QClipboard>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>

namespace harvelop::test
{

namespace
{

bool isChecked(const QWidget& form, const std::string& box)
{
    return Find<QCheckBox>(form, box).isChecked();
}

LoggerRecord loggerOf(const std::string& model)
{
    LoggerRecord record = SerialLogger();
    record.LoggerModel = model;
    return record;
}

} // namespace

TEST(FrmTallyCores, EveryChangeEnablesApply)
{
    PanelBench bench;
    LoggerRecord logger = loggerOf("KR400");
    logger.LoggerDescription = "Mill";
    bench.Store({logger, SerialLogger()});
    Options& options = bench.heart.options;
    options.SMTPServerName = options.SMTPSender = options.FTPServername = options.FTPUserName = options.FTPPassword =
        "x";
    options.SMTPPort = "25";
    for (const int number : {1, 2}) {
        frmTallyCores& form = bench.View(number);
        auto& apply = Find<QPushButton>(form, "cmdApply");
        int changes = 0;
        for (QCheckBox* box : form.findChildren<QCheckBox*>()) {
            if (!box->isEnabled() || !box->isVisibleTo(box->parentWidget()) || box->parentWidget()->isHidden())
                continue;
            ++changes;
            apply.setEnabled(false);
            box->click();
            EXPECT_TRUE(apply.isEnabled()) << box->objectName().toStdString();
        }
        for (QLineEdit* field : form.findChildren<QLineEdit*>()) {
            if (!field->isEnabled() || field->isReadOnly() || field->parentWidget()->isHidden())
                continue;
            ++changes;
            apply.setEnabled(false);
            PressKey(*field, Qt::Key_Home);
            PressKey(*field, Qt::Key_Delete);
            EXPECT_TRUE(apply.isEnabled()) << field->objectName().toStdString();
        }
        EXPECT_GT(changes, number == 1 ? 50 : 20);
    }
}

TEST(FrmTallyCores, AResizeClearsTheTracesOfLoading)
{
    PanelBench bench;
    bench.Store({SerialLogger()});
    frmTallyCores& form = bench.View(1);
    EXPECT_FALSE(Find<QCheckBox>(form, "chkMdb").isEnabled());
    EXPECT_FALSE(Find<QPushButton>(form, "cmdEditMDB").isEnabled());
    Find<QCheckBox>(form, "chkKR200B").click();
    form.resize(form.width() + 40, form.height());
    QApplication::processEvents();
    EXPECT_FALSE(Find<QPushButton>(form, "cmdApply").isEnabled());
    EXPECT_TRUE(isChecked(form, "chkKR200B"));
}

TEST(FrmTallyCores, TheGridFollowsHtmlAndTheDatabase)
{
    PanelBench bench;
    LoggerRecord logger = SerialLogger();
    logger.LoggerDescription = "Mill";
    bench.Store({logger});
    frmTallyCores& form = bench.View(1);
    auto& csv = Find<QCheckBox>(form, "chkKR200CSV_1");
    auto& html = Find<QCheckBox>(form, "chkKR200HTML_1");
    html.click();
    EXPECT_TRUE(csv.isChecked() && !csv.isEnabled());
    EXPECT_FALSE(csv.toolTip().isEmpty());
    EXPECT_TRUE(Find<QLineEdit>(form, "txtKR200_1").isEnabled());
    Find<QCheckBox>(form, "chkMdb").click();
    EXPECT_EQ(bench.Record(1).LoggerMdbOn, "1");
    EXPECT_TRUE(Find<QPushButton>(form, "cmdEditMDB").isEnabled());
    html.click();
    EXPECT_TRUE(csv.isChecked() && !csv.isEnabled());
    EXPECT_TRUE(Find<QCheckBox>(form, "chkKR200Ulast_1").isChecked());
    EXPECT_TRUE(Find<QCheckBox>(form, "chkKR200Ulast_1").isEnabled());
    Find<QCheckBox>(form, "chkMdb").click();
    EXPECT_EQ(bench.Record(1).LoggerMdbOn, "0");
    EXPECT_TRUE(!csv.isChecked() && csv.isEnabled());
}

TEST(FrmTallyCores, HeadingsAndTheFrameToggleTheirColumns)
{
    PanelBench bench;
    bench.Store({SerialLogger()}); // 2 of 5 schedules are on
    frmTallyCores& form = bench.View(1);
    form.SelectTab(3);
    auto& frame = Find<QGroupBox>(form, "fraKR200Schedules");
    const QPoint background(frame.width() - 3, frame.height() - 3);
    ClickAt(frame, background);
    for (const char* box : {"chkKR200A", "chkKR200B", "chkKR200C", "chkKR200D", "chkKR200X"})
        EXPECT_TRUE(isChecked(form, box)) << box;
    ClickAt(frame, background);
    EXPECT_FALSE(isChecked(form, "chkKR200A"));
    ClickAt(frame, Find<QWidget>(form, "txtKR200_0").geometry().center());
    EXPECT_FALSE(isChecked(form, "chkKR200A"));
    Find<QToolButton>(form, "lblUlast5").click();
    EXPECT_TRUE(isChecked(form, "chkKR200Ulast_4"));
    Find<QToolButton>(form, "lblHTML5").click();
    EXPECT_TRUE(isChecked(form, "chkKR200HTML_0"));
    EXPECT_FALSE(Find<QCheckBox>(form, "chkKR200CSV_0").isEnabled());
}

TEST(FrmTallyCores, TheCsvHeadingOfTheLongGridIsClosedWhileTheDatabaseIsOn)
{
    PanelBench bench;
    LoggerRecord kr4 = NetworkLogger();
    kr4.LoggerDescription = "Mill";
    kr4.LoggerMdbOn = "1";
    kr4.ScheduleCSV.fill("1");
    LoggerRecord older = SerialLogger();
    older.LoggerDescription = "Barn";
    older.LoggerMdbOn = "1";
    older.ScheduleCSV.fill("1");
    bench.Store({kr4, older});
    frmTallyCores& longGrid = bench.View(1);
    Find<QToolButton>(longGrid, "lblCSV8").click();
    EXPECT_TRUE(isChecked(longGrid, "chkKR400CSV_0"));
    EXPECT_FALSE(Find<QPushButton>(longGrid, "cmdApply").isEnabled());
    frmTallyCores& shortGrid = bench.View(2);
    Find<QToolButton>(shortGrid, "lblCSV5").click();
    EXPECT_FALSE(isChecked(shortGrid, "chkKR200CSV_0"));
    EXPECT_TRUE(Find<QPushButton>(shortGrid, "cmdApply").isEnabled());
}

TEST(FrmTallyCores, OnlyDigitsAreAcceptedInTheRecordsOfTheKR4Family)
{
    PanelBench bench;
    bench.Store({NetworkLogger(), SerialLogger()});
    frmTallyCores& kr4 = bench.View(1);
    auto& records = Find<QLineEdit>(kr4, "txtKR400_11");
    records.setText("25");
    records.setCursorPosition(1);
    bench.dialogs.Expect(BoxAnswer::Ok);
    Type(records, "a");
    EXPECT_EQ(records.text(), "25");
    EXPECT_EQ(records.cursorPosition(), 1);
    ASSERT_EQ(bench.dialogs.shown.size(), 1U);
    EXPECT_EQ(bench.dialogs.shown[0].text, "Invalid Character.     ");
    EXPECT_EQ(bench.dialogs.shown[0].icon, BoxIcon::Critical);

    FakeMessages messages;
    bench.heart.progress.Loaded(&messages);
    bench.heart.progress.ShowMessageForm();
    ASSERT_TRUE(messages.Visible());
    QApplication::clipboard()->setText("1x2y3"); // the fifth character finds no room
    records.selectAll();
    for (int wrong = 0; wrong < 2; ++wrong)
        bench.dialogs.Expect(BoxAnswer::Ok);
    records.paste();
    EXPECT_EQ(records.text(), "12");
    EXPECT_EQ(bench.dialogs.shown.size(), 3U);
    EXPECT_FALSE(messages.Visible()); // no box stands behind the progress
    bench.heart.progress.Loaded(nullptr);

    frmTallyCores& older = bench.View(2);
    Find<QCheckBox>(older, "chkKR200HTML_0").click();
    Type(Find<QLineEdit>(older, "txtKR200_0"), "a");
    EXPECT_EQ(Find<QLineEdit>(older, "txtKR200_0").text(), "0a");
}

TEST(FrmTallyCores, ADescriptionHoldsItsCharactersOnly)
{
    PanelBench bench;
    bench.Store({SerialLogger()});
    frmTallyCores& form = bench.View(1);
    auto& description = Find<QLineEdit>(form, "txtDescription");
    Type(description, "a b\xE9_");
    EXPECT_EQ(description.text(), "ab_");
    description.setText("a b");
    description.setCursorPosition(1);
    Find<QPushButton>(form, "cmdApply").click();
    EXPECT_EQ(description.text(), "ab");
    EXPECT_EQ(bench.Record(1).LoggerDescription, "ab");
}

TEST(FrmTallyCores, WithoutADescriptionThereIsNoDatabase)
{
    PanelBench bench;
    bench.Store({SerialLogger()});
    frmTallyCores& form = bench.View(1);
    auto& mdb = Find<QCheckBox>(form, "chkMdb");
    auto& description = Find<QLineEdit>(form, "txtDescription");
    Type(description, "a");
    EXPECT_TRUE(mdb.isEnabled());
    mdb.click();
    EXPECT_TRUE(isChecked(form, "chkKR200CSV_0"));
    PressKey(description, Qt::Key_Backspace);
    EXPECT_FALSE(mdb.isEnabled());
    EXPECT_FALSE(mdb.isChecked());
    EXPECT_FALSE(mdb.toolTip().isEmpty());
    EXPECT_EQ(bench.Record(1).LoggerMdbOn, "0");
    EXPECT_FALSE(isChecked(form, "chkKR200CSV_0"));
}

} // namespace harvelop::test
