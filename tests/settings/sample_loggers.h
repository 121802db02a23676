// One logger of each kind of link and of each family.
#pragma once

#include "settings/logger_record.h"

namespace harvelop::test
{

inline LoggerRecord SerialLogger()
{
    LoggerRecord record;
    record.LoggerPort = "1";
    record.LoggerModel = "KR200 Series 2";
    record.LoggerSerial = "none";
    record.LoggerBaud = "9600";
    record.LoggerParity = "N";
    record.LoggerDataBits = "8";
    record.LoggerStopBits = "1";
    record.LoggerFlow = "SWFC";
    record.ScheduleOn[0] = "1";
    record.ScheduleOn[4] = "1";
    record.ScheduleRecords[4] = "100";
    record.LoggerToDisk = 1;
    record.LoggerSaveFolder = "/home/user/tallyCore/";
    record.LoggerVersion = "3.51";
    record.LoggerIconKey = "::2";
    record.LoggerMdbOn = "0";
    record.LoggerTimeout = "10";
    return record;
}

inline LoggerRecord ModemLogger()
{
    LoggerRecord record;
    record.LoggerPort = "3";
    record.LoggerModel = "KR305 Series 3";
    record.LoggerSerial = "4711";
    record.LoggerBaud = "0,,12345";
    record.LoggerParity = "at&f,x4";
    record.LoggerDataBits = "19200";
    record.LoggerToDisk = 1;
    record.LoggerViaEmail = 1;
    record.LoggerKept = 1;
    record.LoggerPassword = "se cret";
    record.LoggerDescription = "Pumphouse";
    record.LoggerVersion = "Unknown";
    record.LoggerIconKey = "::3";
    record.LoggerRunProgram = "report.exe";
    record.LoggerMdbOn = "1";
    record.LoggerTableNames[0] = "Levels";
    record.LoggerTableNames[4] = "Events";
    record.LoggerTimeout = "20";
    record.LoggerLinkType = "Dialup";
    return record;
}

inline LoggerRecord NetworkLogger()
{
    LoggerRecord record;
    record.LoggerPort = "10.0.0.5:3000";
    record.LoggerModel = "KR40";
    record.LoggerSerial = "080123";
    record.ScheduleOn[11] = "1";
    record.ScheduleUlast[11] = "1";
    record.ScheduleCSV[11] = "1";
    record.ScheduleHTML[11] = "1";
    record.ScheduleRecords[11] = "2500";
    record.LoggerToDisk = 1;
    record.LoggerViaFTP = 1;
    record.LoggerKept = 1;
    record.LoggerVersion = "6.10";
    record.LoggerIconKey = "::4";
    record.LoggerRunCommand = "sync";
    record.LoggerMdbOn = "0";
    record.LoggerTableNames[11] = "Immediate";
    record.LoggerTimeout = "10";
    record.LoggerLinkType = "Ethernet";
    record.LoggerHost = "10.0.0.5";
    record.LoggerTcpPort = "3000";
    return record;
}

} // namespace harvelop::test
