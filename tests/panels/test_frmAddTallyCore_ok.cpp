// What Ok stores.
#include "add_fixture.h"

namespace harvelop::test
{
namespace
{

TEST(FrmAddTallyCoreOk, ANewLoggerIsStoredListedAndItsPanelOpens)
{
    AddBench b;
    b.Store({SerialLogger(), NetworkLogger()});
    b.Add();
    b.Choose("cbxModel", "KR305");
    b.Choose("cbxSeries", "Series 3");
    b.Fill("txtSerial", "99,1");
    b.Fill("txtPassword", "pa,ss");
    b.Choose("cbxPort", "3");
    b.Choose("cbxBaud", "19200");
    b.Choose("cbxParity", "Odd");
    b.Choose("cbxFlowControl", "HWFC");
    b.Click("cmdOk");

    const LoggerRecord& record = b.Record(3);
    EXPECT_EQ(record.LoggerModel, "KR305 Series 3");
    EXPECT_EQ(record.LoggerSerial, "991");
    EXPECT_EQ(record.LoggerPassword, "pass");
    EXPECT_EQ(record.LoggerPort, "3");
    EXPECT_EQ(record.LoggerBaud, "19200");
    EXPECT_EQ(record.LoggerParity, "Odd");
    EXPECT_EQ(record.LoggerFlow, "HWFC");
    EXPECT_EQ(record.LoggerMdbOn, "0");
    EXPECT_EQ(record.LoggerTimeout, "10");
    EXPECT_EQ(record.LoggerKept, 1);
    EXPECT_EQ(record.LoggerDescription, "");
    EXPECT_EQ(b.RecordLine(3), RecordText(record));
    EXPECT_NE(b.files.files[PanelBench::FoundIni].find("3tallyCoreSettings=" + RecordText(record)), std::string::npos);

    EXPECT_EQ(b.heart.state.CurrentLogger, 3);
    EXPECT_EQ(b.heart.state.ChosenLogger, 3);
    ASSERT_TRUE(b.Panel(3));
    EXPECT_TRUE(b.Panel(3)->isVisible());
    EXPECT_EQ(b.Panel(3)->windowTitle().toStdString(), " KR305 Series 3 tallyCore on Com 3 @ 19200,Odd,8,1,HWFC");
    EXPECT_EQ(b.heart.state.cbxUnload_TallyCores.Count(), 3);
    EXPECT_EQ(b.heart.state.cbxUnload_TallyCores.Selected(), 2);
    EXPECT_FALSE(b.heart.state.AddRebuildPending || b.heart.state.AddingLogger || b.heart.state.NewLoggerMode ||
                 b.heart.state.AddDialogOpen);
    EXPECT_FALSE(b.form && b.form->isVisible());
}

TEST(FrmAddTallyCoreOk, ANewLoggerGetsTheNextIconKey)
{
    AddBench b;
    b.heart.options.Icons = "6";
    b.heart.store.SaveOptions();
    b.Add();
    b.Click("cmdOk");
    EXPECT_EQ(b.Record(1).LoggerIconKey, "::7");
    EXPECT_NE(b.files.files[PanelBench::OptionsIni].find("Icons=7"), std::string::npos);
    EXPECT_NE(b.RecordLine(1).find(",::7,"), std::string::npos);
}

TEST(FrmAddTallyCoreOk, AnEmptyTimeoutBecomes10InTheControlToo)
{
    AddBench b;
    b.Store({NetworkLogger()});
    b.Change(1);
    b.Fill("txtConnectionTimeout", "");
    b.Click("cmdOk");
    EXPECT_EQ(b.Text("txtConnectionTimeout"), "10");
    EXPECT_EQ(b.Record(1).LoggerTimeout, "10");
}

TEST(FrmAddTallyCoreOk, ANewModemLoggerGetsTheDataBitsAndAChangedOneTheSpeed)
{
    AddBench b;
    b.Add();
    b.Choose("cbxModel", "KR40");
    b.Click("optDialup");
    b.Fill("txtPhoneNumber", "0,12");
    b.Fill("txtInitString", "at&f,x4");
    b.Click("cmdOk");
    EXPECT_EQ(b.Record(1).LoggerDataBits, "8");
    EXPECT_EQ(b.Record(1).LoggerBaud, "0,12");
    EXPECT_NE(b.RecordLine(1).find(",0|12,at&f|x4,8,,,"), std::string::npos);
    EXPECT_EQ(b.Panel(1)->windowTitle().toStdString(), " KR40 tallyCore via Modem on Com 1");
    b.Change(1);
    EXPECT_EQ(b.Choice("cbxModemBaud"), "9600"); // 8 is no speed
    EXPECT_EQ(b.Text("txtPhoneNumber"), "0,12");
    b.Click("cmdOk");
    EXPECT_EQ(b.Record(1).LoggerDataBits, "9600");
    EXPECT_NE(b.RecordLine(1).find(",0|12,at&f|x4,9600,,,"), std::string::npos);
}

TEST(FrmAddTallyCoreOk, AChangedLoggerKeepsItsPlaceItsKeyAndItsSchedules)
{
    AddBench b;
    LoggerRecord logger = SerialLogger();
    logger.LoggerDescription = "Dam";
    b.Store({NetworkLogger(), logger});
    frmTallyCores& panel = b.View(2);
    const LoggerRecord before = b.Record(2);
    b.Change(2);
    b.Fill("txtSerial", "S1");
    b.Click("optEthernet");
    b.Fill("txtIP", "10.9.8.7");
    b.Fill("txtTCPPort", "77");
    b.Fill("txtConnectionTimeout", "33");
    b.Click("cmdOk");
    LoggerRecord expected = before;
    expected.LoggerSerial = "S1";
    expected.LoggerPort = "10.9.8.7:77";
    expected.LoggerBaud = expected.LoggerParity = expected.LoggerDataBits = "";
    expected.LoggerStopBits = expected.LoggerFlow = "";
    expected.LoggerTimeout = "33";
    EXPECT_EQ(RecordText(b.Record(2)), RecordText(expected));
    EXPECT_EQ(b.RecordLine(2), RecordText(expected));
    EXPECT_EQ(b.Record(2).LoggerHost, "10.9.8.7");
    EXPECT_EQ(b.Record(2).LoggerLinkType, "Ethernet");
    EXPECT_EQ(panel.windowTitle().toStdString(), " KR200 Series 2 tallyCore at 10.9.8.7:77");
    EXPECT_EQ(Find<QLabel>(panel, "lblSerialNumber").text().toStdString(), "Serial : S1");
    EXPECT_TRUE(panel.isVisible());
    EXPECT_FALSE(b.heart.state.EditingExisting);
    EXPECT_EQ(b.heart.tables.Count(), 2);
}

TEST(FrmAddTallyCoreOk, TheListFollowsAChangeInOrderOfTheSlots)
{
    AddBench b;
    b.Store({NetworkLogger(), SerialLogger()});
    b.heart.state.cbxUnload_TallyCores.Select(1);
    b.heart.state.AddRebuildPending = true; // left by an adding that was cancelled
    b.Change(2);
    b.Choose("cbxPort", "3");
    b.Click("cmdOk");
    EXPECT_EQ(b.heart.state.cbxUnload_TallyCores.Lines(),
              (std::vector<std::string>{"KR40 sn 080123 at 10.0.0.5:3000", "KR200 Series 2 on Com 3"}));
    EXPECT_EQ(b.heart.state.cbxUnload_TallyCores.Selected(), 1);
}

TEST(FrmAddTallyCoreOk, OkWithoutAChangeChangesNothingButTheParityWord)
{
    for (LoggerRecord logger : {SerialLogger(), ModemLogger(), NetworkLogger()}) {
        AddBench b;
        logger.LoggerFlow = logger.LoggerStopBits.empty() ? "" : "SWHWFC";
        b.Store({logger});
        b.Change(1);
        b.Click("cmdOk");
        if (logger.LoggerParity == "N")
            logger.LoggerParity = "None";
        EXPECT_EQ(b.RecordLine(1), RecordText(logger));
    }
}

TEST(FrmAddTallyCoreOk, ADeletedLoggerLeavesNothingToTheNextInItsSlot)
{
    AddBench b;
    b.Store({ModemLogger()});
    b.dialogs.Expect(BoxAnswer::Yes);
    b.heart.viewing.DeleteLogger(1);
    b.Add();
    b.Click("cmdOk");
    EXPECT_EQ(b.Record(1).LoggerRunProgram, "");
    EXPECT_EQ(b.Record(1).LoggerPassword, "");
    EXPECT_EQ(b.Record(1).LoggerViaEmail, 0);
    EXPECT_EQ(b.Record(1).LoggerDescription, "");
}

TEST(FrmAddTallyCoreOk, TheFiftiethLoggerGoesIntoTheLastSlotAndNoneBeyond)
{
    AddBench b;
    b.Store(std::vector<LoggerRecord>(49, NetworkLogger()));
    b.Add();
    b.Click("cmdOk");
    EXPECT_EQ(b.heart.tables.Count(), 50);
    EXPECT_EQ(b.Record(50).LoggerModel, "KR20 Series 1");
    const std::string found = b.files.files[PanelBench::FoundIni];
    b.Add();
    b.Click("cmdOk");
    EXPECT_EQ(b.heart.tables.Count(), 50);
    EXPECT_EQ(b.files.files[PanelBench::FoundIni], found);
}

TEST(FrmAddTallyCoreOk, TheNewPanelMayBeClosedWhileItOpens)
{
    AddBench b;
    b.Add();
    b.pump.After(100, [&] { b.heart.panels.Unload(1); });
    b.Click("cmdOk");
    EXPECT_FALSE(b.Panel(1));
    EXPECT_EQ(b.heart.tables.Count(), 1);
    EXPECT_EQ(b.RecordLine(1), RecordText(b.Record(1)));
    EXPECT_TRUE(b.options.formEnabled);
}

TEST(FrmAddTallyCoreOk, AProgramThatEndsWhileThePanelOpensWritesNothingMore)
{
    AddBench b;
    b.Add();
    size_t writes = 0;
    b.pump.After(100, [&] {
        b.heart.end.EndProgram();
        writes = b.files.writes.size();
    });
    b.Click("cmdOk");
    EXPECT_TRUE(b.heart.end.Ended());
    EXPECT_EQ(b.files.writes.size(), writes);
}

} // namespace
} // namespace harvelop::test
