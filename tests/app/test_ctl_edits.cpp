#include "ctl_bench.h"

#include <gtest/gtest.h>

namespace harvelop::test
{

namespace
{

// The lines of `show` that hold something.
std::string filled(StoredCtl& t, const std::string& number)
{
    EXPECT_EQ(t.Run({"show", number}), CtlDone);
    std::istringstream lines(t.out.str());
    std::string kept;
    for (std::string line; std::getline(lines, line);)
        if (!line.ends_with("=") && !line.ends_with("=0"))
            kept += line + "\n";
    return kept;
}

} // namespace

TEST(CtlSet, WhatIsSetIsThereAfterARestart)
{
    StoredCtl t;
    EXPECT_EQ(
        t.Run({"set", "1", "ScheduleOn.A=0", "ScheduleHTML.X=1", "LoggerDescription=Weir", "LoggerMdbOn=1",
               "LoggerTableNames.A=Levels", "LoggerSaveFolder=/tmp", "LoggerRunProgram=/bin/a=b", "LoggerRunCommand="}),
        CtlDone);
    EXPECT_EQ(t.out.str() + t.said.str(), "");
    EXPECT_EQ(filled(t, "1"), "LoggerPort=1\nLoggerModel=KR200 Series 2\nLoggerSerial=none\nLoggerBaud=9600\n"
                              "LoggerParity=N\nLoggerDataBits=8\nLoggerStopBits=1\nLoggerFlow=SWFC\n"
                              "ScheduleOn.X=1\nScheduleUlast.X=1\nScheduleCSV.A=1\nScheduleCSV.B=1\nScheduleCSV.C=1\n"
                              "ScheduleCSV.D=1\nScheduleCSV.X=1\nScheduleHTML.X=1\nScheduleRecords.X=100\n"
                              "LoggerToDisk=1\nLoggerSaveFolder=/tmp/\nLoggerDescription=Weir\nLoggerVersion=3.51\n"
                              "LoggerIconKey=::2\nLoggerRunProgram=/bin/a=b\nLoggerMdbOn=1\nLoggerTableNames.A=Levels\n"
                              "LoggerTimeout=10\n");
}

TEST(CtlSet, OtherLoggersStayByteForByte)
{
    LoggerRecord odd = ModemLogger();
    odd.LoggerDescription = "caf\xE9 - -";
    odd.LoggerSaveFolder.clear();
    StoredCtl t({odd, SerialLogger(), NetworkLogger()});
    EXPECT_EQ(t.Run({"set", "2", "ScheduleOn.B=1"}), CtlDone);
    LoggerRecord changed = SerialLogger();
    changed.ScheduleOn[1] = "1";
    EXPECT_EQ(t.File("found.ini"), "1tallyCoreSettings=" + RecordText(odd) +
                                       "\r\n2tallyCoreSettings=" + RecordText(changed) +
                                       "\r\n3tallyCoreSettings=" + RecordText(NetworkLogger()) + "\r\n");
}

TEST(CtlSet, TheLastSlotCanBeSetToo)
{
    StoredCtl t(std::vector<LoggerRecord>(MaxLoggers, SerialLogger()));
    EXPECT_EQ(t.Run({"set", "50", "ScheduleOn.B=1"}), CtlDone);
    const std::string& found = t.File("found.ini");
    EXPECT_EQ(std::count(found.begin(), found.end(), '\n'), MaxLoggers);
    LoggerRecord changed = SerialLogger();
    changed.ScheduleOn[1] = "1";
    EXPECT_TRUE(found.ends_with("\r\n50tallyCoreSettings=" + RecordText(changed) + "\r\n"));
}

TEST(CtlSet, WhatBreaksARuleIsRefusedAndLeavesNoTrace)
{
    StoredCtl t;
    EXPECT_EQ(t.Refusal({"set", "1", "ScheduleOn.B=1", "ScheduleHTML.A=1", "ScheduleCSV.A=0"}),
              "ScheduleCSV.A is held on by HTML.\n");
    EXPECT_EQ(t.Refusal({"set", "1", "LoggerSaveFolder=/no/such/folder"}),
              "LoggerSaveFolder wants the whole path of an existing folder.\n");
    EXPECT_EQ(t.Refusal({"set", "2", "LoggerViaEmail=1"}),
              "LoggerViaEmail can't be on: the email account in the options is not filled in.\n");
    EXPECT_EQ(t.Refusal({"set", "4", "ScheduleOn.A=1"}), "There is no logger 4.\n");
    EXPECT_EQ(t.Refusal({"set", "1", "LoggerNonsense=1"}), "LoggerNonsense is no field of a logger.\n");
    EXPECT_TRUE(t.files.writes.empty());
}

TEST(CtlSet, AValueIsNeverToldBack)
{
    StoredCtl t;
    for (const char* word : {"LoggerPassword=seesaw", "LoggerDescription=see saw", "LoggerRunCommand=see,saw",
                             "LoggerSaveFolder=seesaw", "ScheduleOn.A=seesaw", "LoggerNonsense=seesaw"})
        EXPECT_EQ(t.Refusal({"set", "1", word}).find("saw"), std::string::npos) << word;
}

TEST(CtlSet, TheAccountsOfTheOptionsCount)
{
    StoredCtl t;
    t.File("options.ini") = "FTPServername=ftp\r\nFTPUserName=me\r\nFTPPassword=x\r\n";
    EXPECT_EQ(t.Run({"set", "1", "LoggerViaFTP=1"}), CtlDone);
    LoggerRecord changed = SerialLogger();
    changed.LoggerViaFTP = 1;
    EXPECT_TRUE(t.File("found.ini").starts_with("1tallyCoreSettings=" + RecordText(changed) + "\r\n"));
    EXPECT_NE(t.File("options.ini").find("FTPUserName=me\r\n"), std::string::npos);
}

TEST(CtlSet, OptionsThatCannotBeReadTakeNoDeliveryAway)
{
    LoggerRecord delivers = SerialLogger();
    delivers.LoggerViaEmail = 1;
    StoredCtl t({delivers});
    t.File("options.ini") = "SMTPServerName=mail\r\n";
    t.files.unreadable.insert(TestProgram::OptionsIni);
    EXPECT_EQ(t.Refusal({"set", "1", "ScheduleOn.B=1"}), "The file /home/user/loggers/options.ini can't be read.\n");
}

TEST(CtlSet, NoPortIsTouched)
{
    StoredCtl t;
    t.serial.Plug(1, nullptr, "");
    EXPECT_EQ(t.Run({"set", "1", "ScheduleOn.B=1"}), CtlDone);
    EXPECT_TRUE(t.serial.events.empty());
}

TEST(CtlSet, WhatCannotBeSavedIsToldAndLeftAlone)
{
    StoredCtl t;
    t.files.full = true;
    EXPECT_EQ(t.Refusal({"set", "1", "ScheduleOn.B=1"}), "The file /home/user/loggers/found.ini can't be written.\n");
}

TEST(CtlSet, ALoggersFileThatCannotBeTakenInIsLeftAlone)
{
    StoredCtl t(std::vector<LoggerRecord>(MaxLoggers + 1, SerialLogger()));
    for (const char* verb : {"set", "show", "lists"}) {
        std::vector<std::string> words = {verb, "1"};
        if (words[0] == "set")
            words.emplace_back("ScheduleOn.B=1");
        EXPECT_EQ(t.Refusal(words), "The file /home/user/loggers/found.ini holds more than 50 loggers.\n");
    }
    EXPECT_EQ(t.Refusal({"list"}), "The file /home/user/loggers/found.ini holds more than 50 loggers.\n");
    t.files.unreadable.insert(TestProgram::FoundIni);
    EXPECT_EQ(t.Refusal({"set", "1", "ScheduleOn.B=1"}), "The file /home/user/loggers/found.ini can't be read.\n");
    EXPECT_TRUE(t.files.writes.empty());
}

TEST(CtlSet, AMissingLanguageFileFails)
{
    StoredCtl t;
    t.File("options.ini") = "UseLangFile=1\r\n";
    t.dialogs.Expect(BoxAnswer::Ok);
    EXPECT_EQ(t.Refusal({"set", "1", "ScheduleOn.B=1"}), "");
}

} // namespace harvelop::test
