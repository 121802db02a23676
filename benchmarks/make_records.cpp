// make_records DIRECTORY: an application directory with as many loggers as it can hold.
#include "settings/logger_record.h"

#include <fstream>
#include <iostream>

using namespace harvelop;

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: make_records DIRECTORY\n";
        return 2;
    }
    std::ofstream file(std::string(argv[1]) + "/found.ini", std::ios::binary);
    for (int number = 1; number <= MaxLoggers; ++number) {
        LoggerRecord record;
        record.LoggerPort = std::to_string(number % 16 + 1);
        record.LoggerModel = number % 2 == 0 ? "KR40" : "KR200 Series 2";
        record.LoggerSerial = number % 2 == 0 ? std::to_string(80000 + number) : "none";
        record.LoggerBaud = "9600";
        record.LoggerParity = "N";
        record.LoggerDataBits = "8";
        record.LoggerStopBits = "1";
        record.LoggerFlow = "SWFC";
        record.LoggerIconKey = "::" + std::to_string(number);
        file << number << "tallyCoreSettings=" << RecordText(record) << "\r\n";
    }
    file.flush();
    return file ? 0 : 1;
}
