#include "simulator/simulation_report.h"

#include <iomanip>
#include <sstream>

namespace harvelop
{

namespace
{

std::string column(const std::string& text, int width)
{
    std::ostringstream padded;
    padded << std::left << std::setw(width) << text;
    return padded.str();
}

std::string withSpeed(bool isTcp, long baud, const std::string& what)
{
    constexpr int SpeedWidth = 9;
    return column(isTcp ? "tcp" : std::to_string(baud), SpeedWidth) + what;
}

} // namespace

std::string DescribeModel(const ModelRow& row)
{
    return std::string(row.model) + (row.series.empty() ? "" : " Series " + std::string(row.series));
}

PlacedLine DescribeLogger(const LoggerSetup& setup, const std::string& place, Passwords passwords)
{
    const auto row = FindModel(setup.logger.model, setup.logger.series);
    std::string about = withSpeed(setup.IsTcp(), setup.logger.baud, row ? DescribeModel(*row) : setup.logger.model);
    if (!setup.name.empty())
        about += "  " + setup.name;
    if (!setup.link.empty())
        about += "  " + setup.link;
    if (!setup.logger.password.empty())
        about += passwords == Passwords::Told ? "  with the password " + setup.logger.password : "  with a password";
    for (const FailureMode& mode : FailureModes())
        if (mode.failure == setup.logger.failure && mode.failure != Failure::None)
            about += "  " + std::string(mode.name);
    return {setup.IsTcp() ? 0 : setup.com, place, setup.link, setup.IsTcp(), about};
}

PlacedLine DescribeModem(const ModemSetup& setup, const std::string& place)
{
    std::string about = withSpeed(false, setup.modem.baud, "modem");
    if (!setup.link.empty())
        about += "  " + setup.link;
    for (const ModemFailureMode& mode : ModemFailureModes())
        if (mode.failure == setup.modem.failure && mode.failure != ModemFailure::None)
            about += "  " + std::string(mode.name);
    for (const auto& [number, logger] : setup.phoneBook)
        about += "\n        " + number + "  " + logger.logger.model;
    return {setup.com, place, setup.link, false, about};
}

PlacedLine DescribeRecorded(const RecordedLine& recorded, const std::string& place)
{
    const bool isTcp = recorded.com == 0;
    std::string about = withSpeed(isTcp, recorded.baud, "as recorded" + (isTcp ? " of " + recorded.host : ""));
    if (isTcp && place != recorded.host)
        about += "\n        set its address in the program to " + place;
    return {recorded.com, place, {}, isTcp, about};
}

std::string ReportLines(const std::vector<PlacedLine>& lines)
{
    constexpr int ComWidth = 8;
    constexpr int PlaceWidth = 17;
    std::string report;
    for (const PlacedLine& line : lines)
        report += column(line.com > 0 ? "com " + std::to_string(line.com) : "-", ComWidth) +
                  column(line.place, PlaceWidth) + line.about + "\n";
    return report;
}

std::vector<std::string> Assignments(const std::vector<PlacedLine>& lines)
{
    std::vector<std::string> assignments;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const PlacedLine& line = lines[i];
        if (line.isTcp)
            assignments.push_back("TALLYSIM_TCP_" + std::to_string(i + 1) + "=" + line.place);
        else if (line.com > 0)
            assignments.push_back("HARVELOP_COM" + std::to_string(line.com) + "=" +
                                  (line.link.empty() ? line.place : line.link));
    }
    return assignments;
}

} // namespace harvelop
