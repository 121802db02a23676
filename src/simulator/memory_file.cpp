#include "simulator/memory_file.h"

#include <cstdio>
#include <fstream>
#include <nlohmann/json.hpp>
#include <utility>

namespace harvelop
{

namespace
{

using nlohmann::json;

std::string inUtf8(const std::string& bytes)
{
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x80)
            text += static_cast<char>(0xC0U | byte >> 6U);
        text += byte < 0x80 ? c : static_cast<char>(0x80U | (byte & 0x3FU));
    }
    return text;
}

json jsonOf(const Job& job)
{
    return {{"name", inUtf8(job.name)}, {"current", job.current}, {"hasData", job.hasData}, {"text", inUtf8(job.text)}};
}

json jsonOf(const LoggerMemory& memory)
{
    constexpr const char* OnReset[] = {"Keep", "Take", "Erase"};
    json jobs = json::array();
    for (const Job& job : memory.jobs)
        jobs.push_back(jsonOf(job));
    return {{"data", memory.data},
            {"program", inUtf8(memory.program)},
            {"card", memory.card},
            {"cardProgram", inUtf8(memory.cardProgram)},
            {"jobs", jobs},
            {"flash", inUtf8(memory.flash)},
            {"runOnReset", inUtf8(memory.runOnReset)},
            {"flashOnReset", OnReset[static_cast<int>(memory.flashOnReset)]},
            {"halted", memory.halted},
            {"bootstrap", memory.bootstrap},
            {"resets", memory.resets}};
}

} // namespace

void MemoryFile::Note(const std::string& name, const LoggerMemory& memory)
{
    const auto [entry, isNew] = m_memories.emplace(name, memory);
    if (!isNew && entry->second == memory)
        return;
    entry->second = memory;
    Write();
}

bool MemoryFile::Write() const
{
    json all = json::object();
    for (const auto& [logger, memory] : m_memories)
        all[logger] = jsonOf(memory);
    const std::string fresh = m_path + ".new";
    std::ofstream file(fresh, std::ios::binary | std::ios::trunc);
    file << all.dump() << '\n';
    file.close();
    return file.good() && std::rename(fresh.c_str(), m_path.c_str()) == 0;
}

WatchedLogger::WatchedLogger(std::unique_ptr<SimulatedLogger> logger, std::string name, MemoryFile& file)
    : m_logger(std::move(logger)), m_name(std::move(name)), m_file(file)
{
    m_file.Note(m_name, m_logger->Memory());
}

void WatchedLogger::Receive(double nowMs, std::string_view bytes)
{
    m_logger->Receive(nowMs, bytes);
    m_file.Note(m_name, m_logger->Memory());
}

} // namespace harvelop
