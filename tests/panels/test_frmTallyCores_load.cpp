#include "panel_bench.h"
#include "settings/sample_loggers.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace harvelop::test
{

namespace
{

std::string captionOf(const QWidget& form, const std::string& label)
{
    return Find<QLabel>(form, label).text().toStdString();
}

bool isChecked(const QWidget& form, const std::string& box)
{
    return Find<QCheckBox>(form, box).isChecked();
}

} // namespace

TEST(FrmTallyCores, LoadsARecordOfTheOlderFamily)
{
    PanelBench bench;
    bench.Store({SerialLogger()});
    frmTallyCores& form = bench.View(1);
    EXPECT_EQ(form.Tag(), 1);
    EXPECT_TRUE(isChecked(form, "chkKR200A"));
    EXPECT_FALSE(isChecked(form, "chkKR200B"));
    EXPECT_TRUE(isChecked(form, "chkKR200X"));
    EXPECT_EQ(Find<QLineEdit>(form, "txtKR200_4").text(), "100");
    EXPECT_EQ(Find<QLineEdit>(form, "txtSaveFolder").text(), "/home/user/tallyCore/");
    EXPECT_TRUE(Find<QLineEdit>(form, "txtSaveFolder").isReadOnly());
    EXPECT_TRUE(isChecked(form, "chkSendUnloadToDisk"));
    EXPECT_FALSE(Find<QCheckBox>(form, "chkSendUnloadToDisk").isEnabled());
    EXPECT_EQ(Find<QGroupBox>(form, "fraTallyCore").title(), "tallyCore KR200 Series 2");
    EXPECT_EQ(captionOf(form, "lblFirmwareVersion"), "Firmware Version : 3.51");
    EXPECT_EQ(form.windowTitle(), " KR200 Series 2 on Com 1 @ 9600,N,8,1,SWFC");
    EXPECT_EQ(Find<QLineEdit>(form, "txtInternal_0").text(), "");
    EXPECT_EQ(Find<QLineEdit>(form, "txtCard_0").text(), "");
}

TEST(FrmTallyCores, LoadsARecordOfTheKR4Family)
{
    PanelBench bench;
    LoggerRecord logger = NetworkLogger();
    logger.LoggerDescription = "Boiler";
    bench.Store({logger});
    frmTallyCores& form = bench.View(1);
    EXPECT_TRUE(isChecked(form, "chkKR400X"));
    EXPECT_TRUE(isChecked(form, "chkKR400Ulast_11"));
    EXPECT_TRUE(isChecked(form, "chkKR400CSV_11"));
    EXPECT_TRUE(isChecked(form, "chkKR400HTML_11"));
    EXPECT_FALSE(Find<QCheckBox>(form, "chkKR400CSV_11").isEnabled());
    EXPECT_FALSE(Find<QCheckBox>(form, "chkKR400Ulast_11").isEnabled());
    EXPECT_EQ(Find<QLineEdit>(form, "txtKR400_11").text(), "2500");
    EXPECT_TRUE(Find<QLineEdit>(form, "txtKR400_11").isEnabled());
    EXPECT_FALSE(Find<QLineEdit>(form, "txtKR400_0").isEnabled());
    EXPECT_EQ(Find<QLineEdit>(form, "txtDescription").text(), "Boiler");
    EXPECT_EQ(Find<QLineEdit>(form, "txtDescription").maxLength(), 32);
    EXPECT_EQ(Find<QLineEdit>(form, "txtKR400_0").maxLength(), 4);
}

TEST(FrmTallyCores, LoadingBuildsTheRecordFromWhatThePanelShows)
{
    PanelBench bench;
    LoggerRecord older = SerialLogger();
    older.LoggerSaveFolder.clear();
    older.ScheduleHTML[1] = "1";
    older.ScheduleRecords[2].clear();
    bench.Store({older, NetworkLogger()});
    bench.heart.options.FTPServername = "ftp";
    bench.heart.options.FTPUserName = "me";
    bench.heart.options.FTPPassword = "secret";
    bench.View(1);
    EXPECT_EQ(bench.RecordLine(1), "1,KR200 Series 2,none,9600,N,8,1,SWFC,1,0,0,0,1,0,0,0,0,0,0,0,"
                                   "0,1,0,0,0,0,0,0,0,0,0,0,0,1,0,0,0,0,0,0,0,0,0,0,0,1,0,0,0,0,0,0,0,0,0,0,"
                                   "0,0,0,0,100,0,0,0,0,0,0,0,1,0,0,/home/user/tallyCore/,0,,,3.51,::2,,,0,"
                                   ",,,,,,,,,,,,10,");
    bench.View(2);
    EXPECT_EQ(bench.RecordLine(2), "10.0.0.5:3000,KR40,080123,,,,,,0,0,0,0,0,0,0,0,0,0,0,1,0,0,0,0,0,0,0,0,0,0,0,1,"
                                   "0,0,0,0,0,0,0,0,0,0,0,1,0,0,0,0,0,0,0,0,0,0,0,1,0,0,0,0,0,0,0,0,0,0,0,2500,"
                                   "1,0,1,/home/user/tallyCore/,1,,,6.10,::4,,sync,0,,,,,,,,,,,,Immediate,10,");
    EXPECT_EQ(bench.files.files[PanelBench::FoundIni],
              "1tallyCoreSettings=" + bench.RecordLine(1) + "\r\n2tallyCoreSettings=" + bench.RecordLine(2) + "\r\n");
}

TEST(FrmTallyCores, ValuesComeBackFromTheControls)
{
    PanelBench bench;
    bench.Store({SerialLogger(), NetworkLogger()});
    for (const int number : {1, 2}) {
        frmTallyCores& form = bench.View(number);
        const std::string family = number == 1 ? "KR200" : "KR400";
        Find<QCheckBox>(form, "chk" + family + "B").click();
        Find<QCheckBox>(form, "chk" + family + "Ulast_2").click();
        Find<QCheckBox>(form, "chk" + family + "CSV_3").click();
        Find<QCheckBox>(form, "chk" + family + "HTML_1").click();
        Type(Find<QLineEdit>(form, "txt" + family + "_1"), "7");
        const PanelValues values = form.Values();
        EXPECT_TRUE(values.on[1]);
        EXPECT_TRUE(values.ulast[2]);
        EXPECT_TRUE(values.csv[3]);
        EXPECT_TRUE(values.html[1]);
        EXPECT_EQ(values.records[1], "07");
        EXPECT_TRUE(values.toDisk);
        EXPECT_FALSE(values.mdb);
    }
}

TEST(FrmTallyCores, StoredTextsThatAreTooLongToTypeAreKept)
{
    PanelBench bench;
    LoggerRecord logger = NetworkLogger();
    logger.LoggerDescription = "A description of more than 32 characters";
    logger.ScheduleRecords[0] = "123456";
    bench.Store({logger});
    bench.View(1);
    EXPECT_EQ(bench.Record(1).LoggerDescription, logger.LoggerDescription);
    EXPECT_EQ(bench.Record(1).ScheduleRecords[0], "123456");
}

TEST(FrmTallyCores, ANewLoggerStartsWithAClearedGridAndZeroRecords)
{
    PanelBench bench;
    LoggerRecord logger = SerialLogger();
    logger.ScheduleRecords.fill("");
    bench.Store({logger});
    bench.heart.state.NewLoggerMode = true;
    frmTallyCores& form = bench.View(1);
    EXPECT_FALSE(isChecked(form, "chkKR200A"));
    EXPECT_EQ(Find<QLineEdit>(form, "txtKR200_4").text(), "0");
    EXPECT_EQ(bench.Record(1).ScheduleOn[0], "0");
    EXPECT_FALSE(bench.heart.state.NewLoggerMode);
}

TEST(FrmTallyCores, AnEmptySaveFolderBecomesTheStandardOne)
{
    PanelBench bench;
    LoggerRecord logger = SerialLogger();
    logger.LoggerSaveFolder.clear();
    bench.Store({logger});
    EXPECT_EQ(Find<QLineEdit>(bench.View(1), "txtSaveFolder").text(), "/home/user/tallyCore/");
    EXPECT_EQ(bench.Record(1).LoggerSaveFolder, "/home/user/tallyCore/");
}

TEST(FrmTallyCores, AHomeDirectoryWithACommaShiftsNoField)
{
    PanelBench bench;
    bench.heart.state.DriveRoot = "/home/o,neil/";
    LoggerRecord logger = SerialLogger();
    logger.LoggerSaveFolder.clear();
    bench.Store({logger});
    EXPECT_EQ(Find<QLineEdit>(bench.View(1), "txtSaveFolder").text(), "");
    bench.heart.records.LoadFoundLoggers();
    EXPECT_EQ(bench.Record(1).LoggerIconKey, "::2");
}

TEST(FrmTallyCores, LoadingNamesTheLoggerForMessages)
{
    PanelBench bench;
    bench.Store({SerialLogger(), ModemLogger(), NetworkLogger()});
    bench.View(1);
    EXPECT_EQ(bench.heart.link.LinkDescription, "KR200 Series 2 on Com 1");
    EXPECT_EQ(bench.heart.link.ConnectionKind, "RS232");
    bench.View(2);
    EXPECT_EQ(bench.heart.link.LinkDescription, "KR305 Series 3 via Modem on Com 3");
    EXPECT_EQ(bench.heart.link.ConnectionKind, "Dialup");
    bench.View(3);
    EXPECT_EQ(bench.heart.link.LinkDescription, "KR40 at 10.0.0.5:3000");
    EXPECT_EQ(bench.heart.link.ConnectionKind, "Ethernet");
}

TEST(FrmTallyCores, DeliveryIsOffWithoutAccounts)
{
    PanelBench bench;
    LoggerRecord logger = SerialLogger();
    logger.LoggerViaEmail = 1;
    logger.LoggerViaFTP = 1;
    bench.Store({logger, logger});
    frmTallyCores& without = bench.View(1);
    for (const char* box : {"chkSendUnloadViaEmail", "chkSendUnloadViaFTP"}) {
        EXPECT_FALSE(isChecked(without, box));
        EXPECT_FALSE(Find<QCheckBox>(without, box).isEnabled());
        EXPECT_FALSE(Find<QCheckBox>(without, box).toolTip().isEmpty());
    }
    Options& options = bench.heart.options;
    options.SMTPServerName = options.SMTPSender = options.FTPServername = options.FTPUserName = options.FTPPassword =
        "x";
    options.SMTPPort = "25";
    frmTallyCores& with = bench.View(2);
    EXPECT_TRUE(isChecked(with, "chkSendUnloadViaEmail"));
    EXPECT_TRUE(isChecked(with, "chkSendUnloadViaFTP"));
    EXPECT_TRUE(Find<QCheckBox>(with, "chkSendUnloadViaFTP").toolTip().isEmpty());
}

TEST(FrmTallyCores, AnEmptyMailPortDisablesEmailAtLoadUntilTheOptionsEnableIt)
{
    PanelBench bench;
    bench.Store({SerialLogger()});
    bench.heart.options.SMTPServerName = "mail";
    bench.heart.options.SMTPSender = "me";
    frmTallyCores& form = bench.View(1);
    EXPECT_FALSE(Find<QCheckBox>(form, "chkSendUnloadViaEmail").isEnabled());
    form.SetDelivery(true, std::nullopt);
    EXPECT_TRUE(Find<QCheckBox>(form, "chkSendUnloadViaEmail").isEnabled());
    EXPECT_FALSE(Find<QCheckBox>(form, "chkSendUnloadViaFTP").isEnabled());
    EXPECT_FALSE(Find<QPushButton>(form, "cmdApply").isEnabled());

    Find<QCheckBox>(form, "chkSendUnloadViaEmail").click();
    form.SetDelivery(false, true);
    EXPECT_FALSE(isChecked(form, "chkSendUnloadViaEmail"));
    EXPECT_FALSE(Find<QCheckBox>(form, "chkSendUnloadViaEmail").isEnabled());
    EXPECT_TRUE(Find<QCheckBox>(form, "chkSendUnloadViaFTP").isEnabled());
}

TEST(FrmTallyCores, LoadingLocksTheOptionsPanel)
{
    PanelBench bench;
    bench.Store({SerialLogger()});
    bench.View(1);
    EXPECT_FALSE(bench.options.formEnabled);
    ASSERT_EQ(bench.options.changes.size(), 14U);
    EXPECT_EQ(bench.options.changes.front(), std::pair(std::string("cmdUnload_FindTallycores"), false));
    EXPECT_EQ(bench.options.changes.back(), std::pair(std::string("cmdOk"), false));
}

TEST(FrmTallyCores, APanelMadeWhileAddingHasNeitherComNorIconNorEsc)
{
    PanelBench bench;
    bench.Store({SerialLogger()});
    bench.heart.state.AddingLogger = true;
    bench.heart.state.ChosenLogger = 1;
    bench.heart.viewing.cmdUnload_View_Click();
    frmTallyCores& form = *bench.Panel(1);
    EXPECT_FALSE(Find<QPushButton>(form, "cmdSetCom").isEnabled());
    EXPECT_FALSE(Find<QPushButton>(form, "cmdCreateIcon").isEnabled());
    PressKey(form, Qt::Key_Escape);
    EXPECT_TRUE(form.isVisible());
    EXPECT_FALSE(bench.heart.state.AddingLogger);
    EXPECT_EQ(bench.Record(1).LoggerKept, 1);

    frmTallyCores& later = bench.View(1);
    EXPECT_TRUE(Find<QPushButton>(later, "cmdSetCom").isEnabled());
    EXPECT_TRUE(Find<QPushButton>(later, "cmdCreateIcon").isEnabled());
}

} // namespace harvelop::test
