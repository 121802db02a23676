// A file that always tells what the simulated loggers hold, for tests that can't look into them.
#pragma once

#include "simulator/simulated_logger.h"

#include <map>
#include <memory>
#include <string>

namespace harvelop
{

// A JSON object {"logger 1": {...}, "number 555": {...}} whose entries have the members of LoggerMemory by their names.
// In a text each byte is one character, up to U+00FF. It is replaced in one step whenever something changes: a reader
// sees all of it at any time.
class MemoryFile
{
public:
    explicit MemoryFile(std::string path) : m_path(std::move(path)) {}

    // Writes if that is new; what can't be written comes with the next change.
    void Note(const std::string& name, const LoggerMemory& memory);

    // False if the file can't be written.
    bool Write() const;

private:
    std::string m_path;
    std::map<std::string, LoggerMemory> m_memories;
};

// A logger whose memory is kept in such a file, which must outlive it.
class WatchedLogger : public SimulatedDevice
{
public:
    WatchedLogger(std::unique_ptr<SimulatedLogger> logger, std::string name, MemoryFile& file);

    void Receive(double nowMs, std::string_view bytes) override;
    std::string Transmit(double nowMs) override { return m_logger->Transmit(nowMs); }
    double NextDueMs() const override { return m_logger->NextDueMs(); }
    bool OnLine() const override { return m_logger->OnLine(); }

private:
    std::unique_ptr<SimulatedLogger> m_logger;
    std::string m_name;
    MemoryFile& m_file;
};

} // namespace harvelop
