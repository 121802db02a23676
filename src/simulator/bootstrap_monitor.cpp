#include "simulator/bootstrap_monitor.h"

#include <array>
#include <cstdint>

namespace harvelop
{

namespace
{

constexpr char Erased = '\xff';

struct Record {
    const char* fault = nullptr; // what is wrong with it; the rest is void then
    char type = 0;
    std::uint32_t address = 0;
    std::string data = {};
};

// Two hexadecimal digits in capitals; below 0 if they are none.
int byteOf(char high, char low)
{
    constexpr std::string_view Digits = "0123456789ABCDEF";
    const auto h = Digits.find(high);
    const auto l = Digits.find(low);
    return h == std::string_view::npos || l == std::string_view::npos ? -1 : static_cast<int>(h * 16 + l);
}

Record readRecord(std::string_view line)
{
    constexpr std::array<std::size_t, 10> AddressBytes = {2, 2, 3, 4, 0, 2, 3, 4, 3, 2}; // by type; S4 does not exist
    const std::size_t type = line.size() > 1 ? static_cast<std::size_t>(line[1] - '0') : AddressBytes.size();
    if (type >= AddressBytes.size() || AddressBytes[type] == 0 || line.size() % 2 != 0)
        return {"form"};
    std::string bytes; // count, address, data, checksum
    unsigned sum = 0;
    for (std::size_t at = 2; at < line.size(); at += 2) {
        const int byte = byteOf(line[at], line[at + 1]);
        if (byte < 0)
            return {"form"};
        bytes += static_cast<char>(byte);
        sum += static_cast<unsigned>(byte);
    }
    const std::size_t addressBytes = AddressBytes[type];
    if (bytes.size() < 1 + addressBytes + 1 || static_cast<unsigned char>(bytes[0]) != bytes.size() - 1)
        return {"form"};
    if (sum % 0x100 != 0xFF)
        return {"checksum"};
    Record record{nullptr, line[1], 0, bytes.substr(1 + addressBytes, bytes.size() - addressBytes - 2)};
    for (std::size_t i = 1; i <= addressBytes; ++i)
        record.address = record.address * 0x100 + static_cast<unsigned char>(bytes[i]);
    return record;
}

bool holdsData(const Record& record)
{
    return record.type >= '1' && record.type <= '3';
}

// Why the record can't be written; null if it can.
const char* faultOf(const Record& record, const std::string& flash)
{
    if (record.fault || !holdsData(record))
        return record.fault;
    const auto begin = BootstrapMonitor::AreaBegin;
    if (record.address < begin || record.address + record.data.size() > begin + BootstrapMonitor::AreaSize)
        return "address";
    const std::size_t at = record.address - begin;
    const bool isErased =
        at >= flash.size() || flash.substr(at, record.data.size()).find_first_not_of(Erased) == std::string::npos;
    return isErased ? nullptr : "not erased";
}

} // namespace

BootstrapMonitor::BootstrapMonitor(const LoggerConfig& config)
    : m_failure(config.failure), m_garbledRecord(config.rejectLine)
{
}

std::optional<std::string> BootstrapMonitor::Take(std::string line, std::string& flash)
{
    if (line.starts_with("EF "))
        return erase(line, flash);
    if (line.starts_with('S'))
        return write(std::move(line), flash);
    return std::nullopt;
}

std::optional<std::string> BootstrapMonitor::erase(const std::string& line, std::string& flash)
{
    if (line != "EF 60000,1")
        return "Bad address";
    const std::string begun = "Erasing FLASH memory\r\n";
    if (m_failure == Failure::EraseFails)
        return begun + "Erase failed";
    flash.clear();
    m_records = 0;
    m_refused = 0;
    return begun + "Erase successful";
}

std::optional<std::string> BootstrapMonitor::write(std::string line, std::string& flash)
{
    if (++m_records == m_garbledRecord && m_failure == Failure::GarblesRecord)
        line.back() = line.back() == '0' ? '1' : '0';
    const Record record = readRecord(line);
    if (const char* fault = faultOf(record, flash)) {
        ++m_refused;
        return "Record refused: " + std::string(fault);
    }
    if (holdsData(record)) {
        const std::size_t at = record.address - AreaBegin;
        if (flash.size() < at + record.data.size())
            flash.resize(at + record.data.size(), Erased);
        flash.replace(at, record.data.size(), record.data);
    }
    return std::nullopt;
}

} // namespace harvelop
