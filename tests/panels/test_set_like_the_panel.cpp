// What `harvelctl set` stores, next to what real windows store for the same edits.
#include "app/ctl_commands.h"
#include "panel_bench.h"
#include "settings/sample_loggers.h"

#include <QCheckBox>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

#include <sstream>

namespace harvelop::test
{

namespace
{

using Words = std::vector<std::string>;
using Hands = std::function<void(PanelBench&, frmTallyCores&)>; // what the user does on the panel

// A program with stored loggers and filled accounts, and files to begin with.
struct Stored : PanelBench {
    explicit Stored(const std::vector<LoggerRecord>& loggers)
    {
        Options& o = heart.options;
        o.FTPServername = o.FTPUserName = o.FTPPassword = "x";
        o.SMTPServerName = o.SMTPSender = o.SMTPPort = "x";
        Store(loggers);
        heart.store.SaveOptions();
    }
};

void typeOver(QLineEdit& field, const QString& text)
{
    field.selectAll();
    PressKey(field, Qt::Key_Delete);
    Type(field, text);
}

void check(const QWidget& panel, const std::string& box)
{
    Find<QCheckBox>(panel, box).click();
}

// Presses a button of the panel and works with the editor that it opens.
void editBehind(const QWidget& panel, const std::string& button, const std::function<void(const QDialog&)>& work)
{
    bool worked = false;
    QTimer looking;
    QObject::connect(&looking, &QTimer::timeout, &looking, [&] {
        const QPointer<QDialog> editor = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!editor)
            return;
        looking.stop();
        work(*editor);
        worked = true;
        if (editor)
            editor->close();
    });
    looking.start(1);
    Find<QPushButton>(panel, button).click();
    EXPECT_TRUE(worked) << button;
}

void edit(const QDialog& editor, const std::string& field, const QString& text)
{
    typeOver(Find<QLineEdit>(editor, field), text);
}

void press(const QWidget& form, const std::string& button)
{
    Find<QPushButton>(form, button).click();
}

std::string asTheWindow(const std::vector<LoggerRecord>& loggers, int number, const Hands& hands)
{
    Stored bench(loggers);
    frmTallyCores& panel = bench.View(number);
    hands(bench, panel);
    press(panel, "cmdOk");
    return bench.files.files[TestProgram::FoundIni];
}

std::string asTheCommand(const std::vector<LoggerRecord>& loggers, int number, const Words& fields)
{
    TestProgram ctl;
    ctl.files.files = Stored(loggers).files.files;
    Words words = {"set", std::to_string(number)};
    words.insert(words.end(), fields.begin(), fields.end());
    std::ostringstream said;
    std::ostringstream out;
    Console console(said, false, false);
    const auto command = std::get<CtlCommand>(ParseCtlArguments(words));
    EXPECT_EQ(RunCtlCommand(ctl.heart, console, command, TestProgram::Directory, out), CtlDone) << said.str();
    EXPECT_EQ(out.str() + said.str(), "");
    return ctl.files.files[TestProgram::FoundIni];
}

LoggerRecord freshlyFound(LoggerRecord logger)
{
    logger.LoggerSerial.clear();
    logger.LoggerVersion.clear();
    logger.LoggerSaveFolder.clear();
    logger.LoggerMdbOn.clear();
    logger.ScheduleRecords.fill("");
    logger.LoggerTableNames.fill("0");
    return logger;
}

} // namespace

TEST(SetLikeThePanel, OfTheNewFamily)
{
    const std::vector<LoggerRecord> loggers = {SerialLogger(), freshlyFound(NetworkLogger()), ModemLogger()};
    const std::string window = asTheWindow(loggers, 2, [](PanelBench& bench, frmTallyCores& panel) {
        check(panel, "chkKR400K");
        check(panel, "chkKR400Ulast_1");
        check(panel, "chkKR400CSV_2");
        check(panel, "chkKR400HTML_10");
        typeOver(Find<QLineEdit>(panel, "txtKR400_10"), "0250");
        check(panel, "chkSendUnloadViaEmail");
        check(panel, "chkSendUnloadViaFTP");
        Type(Find<QLineEdit>(panel, "txtDescription"), "Weir_3");
        check(panel, "chkMdb");
        editBehind(panel, "cmdEditMDB", [](const QDialog& editor) {
            edit(editor, "txtMDBTableNames_0", "Levels");
            edit(editor, "txtMDBTableNames_11", "Now");
            press(editor, "cmdOk");
        });
        bench.dialogs.ExpectChooser("/tmp");
        press(panel, "cmdEditDiskList");
        bench.dialogs.ExpectChooser("/opt/my report");
        editBehind(panel, "cmdRun", [](const QDialog& editor) {
            press(editor, "cmdEdit");
            press(editor, "cmdEdit");
        });
        editBehind(panel, "cmdCommand", [](const QDialog& editor) {
            edit(editor, "txtRun", "A=\"1\" | x");
            press(editor, "cmdEdit");
        });
    });
    EXPECT_EQ(
        asTheCommand(loggers, 2,
                     {"ScheduleOn.K=1", "ScheduleUlast.B=1", "ScheduleCSV.C=1", "ScheduleHTML.K=1",
                      "ScheduleRecords.K=0250", "LoggerViaEmail=1", "LoggerViaFTP=0", "LoggerDescription=Weir_3",
                      "LoggerMdbOn=1", "LoggerTableNames.A=Levels", "LoggerTableNames.X=Now", "LoggerSaveFolder=/tmp",
                      "LoggerRunProgram=/opt/my report", "LoggerRunCommand=A=\"1\" | x"}),
        window);
    EXPECT_NE(window.find(",Weir_3,Unknown,::4,/opt/my report,A=\"1\" | x,1,Levels,"), std::string::npos) << window;
}

TEST(SetLikeThePanel, OfTheOlderFamily)
{
    LoggerRecord older = ModemLogger();
    older.ScheduleHTML[2] = "1";
    older.ScheduleOn[7] = "1"; // an entry that this family does not use
    const std::vector<LoggerRecord> loggers = {older, freshlyFound(SerialLogger())};
    const std::string window = asTheWindow(loggers, 1, [](PanelBench&, frmTallyCores& panel) {
        check(panel, "chkKR200X");
        check(panel, "chkKR200HTML_4");
        typeOver(Find<QLineEdit>(panel, "txtKR200_4"), "last 12");
        editBehind(panel, "cmdEditMDB", [](const QDialog& editor) {
            edit(editor, "txtMDBTableNames_1", "x");
            edit(editor, "txtMDBTableNames_4", "");
            press(editor, "cmdOk");
        });
        check(panel, "chkMdb");
        check(panel, "chkKR200HTML_2");
        check(panel, "chkKR200CSV_2");
        check(panel, "chkKR200CSV_0");
    });
    EXPECT_EQ(asTheCommand(loggers, 1,
                           {"ScheduleOn.X=1", "ScheduleHTML.X=1", "ScheduleRecords.X=last 12", "LoggerTableNames.B=x",
                            "LoggerTableNames.X=", "LoggerMdbOn=0", "ScheduleHTML.C=0", "ScheduleCSV.C=0",
                            "ScheduleCSV.A=1"}),
              window);
    EXPECT_NE(window.find(",last 12,"), std::string::npos);
}

TEST(SetLikeThePanel, EmptyingTheDescriptionTakesTheDatabaseAlong)
{
    const std::vector<LoggerRecord> loggers = {ModemLogger()};
    const std::string window = asTheWindow(
        loggers, 1, [](PanelBench&, frmTallyCores& panel) { typeOver(Find<QLineEdit>(panel, "txtDescription"), ""); });
    EXPECT_EQ(asTheCommand(loggers, 1, {"LoggerDescription="}), window);
}

TEST(SetLikeThePanel, WhatTheRecordLacksIsFilledInAndWhatIsOddIsCleaned)
{
    LoggerRecord odd = ModemLogger();
    odd.LoggerDescription = "B\xFCro 7";
    odd.ScheduleHTML[1] = "1";
    LoggerRecord nameless = odd;
    nameless.LoggerDescription = "- -";
    LoggerRecord undescribed = odd;
    undescribed.LoggerDescription.clear();
    LoggerRecord longRecords = NetworkLogger();
    longRecords.ScheduleRecords[3] = "1234567";
    longRecords.ScheduleOn[0] = "x";
    const std::vector<LoggerRecord> loggers = {odd,         nameless,    freshlyFound(SerialLogger()),
                                               undescribed, longRecords, freshlyFound(NetworkLogger())};
    for (int number = 1; number <= static_cast<int>(loggers.size()); ++number) {
        const std::string family = number > 4 ? "chkKR400" : "chkKR200";
        const std::string window =
            asTheWindow(loggers, number, [&](PanelBench&, frmTallyCores& panel) { check(panel, family + "B"); });
        EXPECT_EQ(asTheCommand(loggers, number, {"ScheduleOn.B=1"}), window) << number;
    }
}

} // namespace harvelop::test
