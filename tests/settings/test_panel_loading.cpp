#include "settings/panel_loading.h"
#include "settings/sample_loggers.h"

#include <gtest/gtest.h>

namespace harvelop::test
{
namespace
{

Options fullAccounts()
{
    Options options;
    options.SMTPServerName = "mail";
    options.SMTPSender = "me";
    options.SMTPPort = "25";
    options.FTPServername = "ftp";
    options.FTPUserName = "user";
    options.FTPPassword = "word";
    return options;
}

TEST(PanelLoading, AccountsAllowEmailWithoutAPort)
{
    Options options = fullAccounts();
    options.SMTPPort.clear();
    EXPECT_TRUE(AccountsAllowEmail(options));
    EXPECT_FALSE(EmailDeliveryReady(options));
}

TEST(PanelLoading, EmailNeedsServerSenderAndPort)
{
    EXPECT_TRUE(EmailDeliveryReady(fullAccounts()));
    for (std::string Options::*needed : {&Options::SMTPServerName, &Options::SMTPSender, &Options::SMTPPort}) {
        Options options = fullAccounts();
        (options.*needed).clear();
        EXPECT_FALSE(EmailDeliveryReady(options));
    }
}

TEST(PanelLoading, EmailWithAuthenticationNeedsAccountAndPasswordToo)
{
    Options options = fullAccounts();
    options.SMTPServerRequiresAuthentication = true;
    EXPECT_FALSE(EmailDeliveryReady(options));
    options.SMTPUserName = "me";
    EXPECT_FALSE(EmailDeliveryReady(options));
    options.SMTPPassword = "word";
    EXPECT_TRUE(EmailDeliveryReady(options));
    options.SMTPUserName.clear();
    EXPECT_FALSE(EmailDeliveryReady(options));
}

TEST(PanelLoading, FtpNeedsServerUserAndPassword)
{
    EXPECT_TRUE(FtpDeliveryReady(fullAccounts()));
    for (std::string Options::*needed : {&Options::FTPServername, &Options::FTPUserName, &Options::FTPPassword}) {
        Options options = fullAccounts();
        (options.*needed).clear();
        EXPECT_FALSE(FtpDeliveryReady(options));
    }
}

TEST(PanelLoading, DeliveryThatTheAccountsDoNotAllowIsOff)
{
    LoggerRecord record = ModemLogger();
    record.LoggerViaEmail = 1;
    record.LoggerViaFTP = 1;
    const PanelValues allowed = LoadPanelValues(record, fullAccounts(), false);
    EXPECT_TRUE(allowed.emailEnabled && allowed.viaEmail && allowed.ftpEnabled && allowed.viaFTP);
    const PanelValues denied = LoadPanelValues(record, Options(), false);
    EXPECT_FALSE(denied.emailEnabled || denied.viaEmail || denied.ftpEnabled || denied.viaFTP);
}

TEST(PanelLoading, DataAlwaysGoToDisk)
{
    LoggerRecord record = SerialLogger();
    record.LoggerToDisk = 0;
    EXPECT_TRUE(LoadPanelValues(record, Options(), false).toDisk);
}

TEST(PanelLoading, GridIsFilledFromTheTables)
{
    LoggerRecord record = SerialLogger();
    record.ScheduleUlast[1] = "1";
    record.ScheduleCSV[2] = "1";
    record.ScheduleOn[3] = "no number";
    const PanelValues values = LoadPanelValues(record, Options(), false);
    EXPECT_TRUE(values.on[0]);
    EXPECT_FALSE(values.on[1]);
    EXPECT_FALSE(values.on[3]);
    EXPECT_TRUE(values.ulast[1]);
    EXPECT_TRUE(values.csv[2]);
    EXPECT_FALSE(values.csv[1]);
    EXPECT_EQ(values.records[4], "100");
}

TEST(PanelLoading, HtmlHoldsUlastAndCsvOn)
{
    LoggerRecord record = NetworkLogger();
    record.ScheduleHTML[5] = "1";
    const PanelValues values = LoadPanelValues(record, Options(), false);
    EXPECT_TRUE(values.html[5]);
    EXPECT_TRUE(values.ulast[5]);
    EXPECT_TRUE(values.csv[5]);
    EXPECT_FALSE(values.on[5]);
    EXPECT_FALSE(values.csv[6]);
}

TEST(PanelLoading, EmptyRecordsBoxesShowZero)
{
    LoggerRecord record = NetworkLogger();
    record.ScheduleRecords.fill("");
    record.ScheduleRecords[3] = "5";
    const PanelValues values = LoadPanelValues(record, Options(), false);
    EXPECT_EQ(values.records[0], "0");
    EXPECT_EQ(values.records[3], "5");
    EXPECT_EQ(values.records[11], "0");
}

TEST(PanelLoading, FreshPanelHasAClearedGrid)
{
    const PanelValues values = LoadPanelValues(NetworkLogger(), Options(), true);
    for (size_t row = 0; row < MaxSchedules; ++row) {
        EXPECT_FALSE(values.on[row] || values.ulast[row] || values.csv[row] || values.html[row]) << row;
        EXPECT_EQ(values.records[row], "0") << row;
    }
}

TEST(PanelLoading, DatabaseBoxAndDescriptionComeFromTheRecordFreshOrNot)
{
    for (const bool fresh : {false, true}) {
        const PanelValues values = LoadPanelValues(ModemLogger(), Options(), fresh);
        EXPECT_TRUE(values.mdb);
        EXPECT_EQ(values.description, "Pumphouse");
    }
    EXPECT_FALSE(LoadPanelValues(SerialLogger(), Options(), false).mdb);
}

TEST(PanelLoading, OnlyTheRowsOfTheFamilyAreStored)
{
    PanelValues values;
    values.on.fill(true);
    values.ulast.fill(true);
    values.csv.fill(true);
    values.html.fill(true);
    values.records.fill("9");

    LoggerRecord older = SerialLogger();
    older.ScheduleOn[5] = "former";
    StorePanelValues(values, older);
    EXPECT_EQ(older.ScheduleOn[4], "1");
    EXPECT_EQ(older.ScheduleOn[5], "former");
    EXPECT_EQ(older.ScheduleRecords[5], "0");

    LoggerRecord newer = NetworkLogger();
    StorePanelValues(values, newer);
    for (size_t row = 0; row < MaxSchedules; ++row) {
        EXPECT_EQ(newer.ScheduleOn[row], "1");
        EXPECT_EQ(newer.ScheduleUlast[row], "1");
        EXPECT_EQ(newer.ScheduleCSV[row], "1");
        EXPECT_EQ(newer.ScheduleHTML[row], "1");
        EXPECT_EQ(newer.ScheduleRecords[row], "9");
    }
}

TEST(PanelLoading, ChecksAndDescriptionAreStored)
{
    PanelValues values;
    values.viaEmail = true;
    values.description = "Weir";
    LoggerRecord record = NetworkLogger();
    record.LoggerToDisk = 0;
    StorePanelValues(values, record);
    EXPECT_EQ(record.LoggerDescription, "Weir");
    EXPECT_EQ(record.LoggerToDisk, 1);
    EXPECT_EQ(record.LoggerViaEmail, 1);
    EXPECT_EQ(record.LoggerViaFTP, 0);
    EXPECT_EQ(record.ScheduleOn[11], "0");
}

TEST(PanelLoading, LoadedValuesStoredAgainChangeNothing)
{
    LoggerRecord record = NetworkLogger();
    StorePanelValues(LoadPanelValues(record, fullAccounts(), false), record);
    EXPECT_EQ(RecordText(record), RecordText(NetworkLogger()));
}

} // namespace
} // namespace harvelop::test
