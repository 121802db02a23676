// How tallysim tells what it simulates, to people and to programs.
#pragma once

#include "simulator/report_texts.h"
#include "simulator/simulation_file.h"
#include "simulator/trace_reader.h"

#include <string>
#include <vector>

namespace harvelop
{

// One line of the simulation: where it stands, and what stands there.
struct PlacedLine {
    int com = 0;            // 1 to 16; 0: none
    std::string place = {}; // a device path, or address:port
    std::string link = {};  // a symbolic link to the device; may be empty
    bool isTcp = false;
    std::string about = {}; // speed, model and more; further lines begin with blanks
};

enum class Passwords { Untold, Told };

PlacedLine DescribeLogger(const LoggerSetup& setup, const std::string& place, Passwords passwords);
PlacedLine DescribeModem(const ModemSetup& setup, const std::string& place);
PlacedLine DescribeRecorded(const RecordedLine& recorded, const std::string& place);

std::string DescribeModel(const ModelRow& row);

// "com 1   /dev/pts/3       9600     KR200 Series 2", each with its line end.
std::string ReportLines(const std::vector<PlacedLine>& lines);

// "HARVELOP_COM1=/dev/pts/3" and "TALLYSIM_TCP_2=127.0.0.1:7700", where the 2 counts the lines from 1.
std::vector<std::string> Assignments(const std::vector<PlacedLine>& lines);

} // namespace harvelop
