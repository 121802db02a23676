// The monitor in which an older logger lets its flash memory be written.
#pragma once

#include "simulator/logger_config.h"

#include <optional>
#include <string>
#include <string_view>

namespace harvelop
{

// Takes lines: "EF 60000,1" erases the program area, an S-record writes into it, "J" leaves the monitor, which is the
// logger's business. Records come in capitals; a wrong form, checksum or address, and a place that is not erased, are
// told and nothing is written. S0 and S5 to S9 are checked and mean nothing else. Everything else is taken in silence.
class BootstrapMonitor
{
public:
    static constexpr std::string_view Leave = "J";
    static constexpr unsigned AreaBegin = 0x60000;
    static constexpr unsigned AreaSize = 0x10000; // bytes

    explicit BootstrapMonitor(const LoggerConfig& config);

    // What it answers; none: silence. `flash` holds the area up to the last byte written.
    std::optional<std::string> Take(std::string line, std::string& flash);

    // No record has been refused since the area was erased.
    bool IsSound() const { return m_refused == 0; }

private:
    std::optional<std::string> erase(const std::string& line, std::string& flash);
    std::optional<std::string> write(std::string line, std::string& flash);

    Failure m_failure;
    int m_garbledRecord;
    int m_records = 0;
    int m_refused = 0;
};

} // namespace harvelop
