#include "simulator/simulation_file.h"

#include "simulator/report_texts.h"
#include "simulator/simulation_keys.h"

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>

namespace harvelop
{

namespace
{

using nlohmann::json;

constexpr std::size_t MostLoggers = 64;
constexpr std::size_t KR4VersionLength = 9;
constexpr std::size_t OlderVersionLength = 4;
constexpr std::size_t SerialLength = 6;

template <typename Table> std::string helpOf(const Table& keys)
{
    std::string help;
    for (const auto& key : keys) {
        std::string name(key.name);
        name.resize(12, ' ');
        help += "  " + name + " " + std::string(key.takes) + "\n";
    }
    return help;
}

std::string inQuotes(const std::string& text)
{
    return json(text).dump(-1, ' ', false, json::error_handler_t::replace);
}

// What a logger is told to be must be possible, whatever the order of its keys.
std::vector<std::string> faults(const LoggerSetup& setup)
{
    const LoggerConfig& logger = setup.logger;
    std::vector<std::string> found;
    if (!FindModel(logger.model, ""))
        return {"there is no model " + inQuotes(logger.model)};
    const auto row = FindModel(logger.model, logger.series);
    if (!row)
        return {"there is no " + inQuotes(logger.model) + " of series " + inQuotes(logger.series)};
    const std::size_t versionLength = row->IsKR4() ? KR4VersionLength : OlderVersionLength;
    if (!logger.version.empty() && logger.version.size() != versionLength)
        found.push_back("\"version\" of this model has " + std::to_string(versionLength) + " characters");
    if (!logger.serial.empty() && !row->IsKR4())
        found.push_back("\"serial\" is told by the KR4 family only");
    if (!logger.serial.empty() && logger.serial.size() != SerialLength)
        found.push_back("\"serial\" has 6 characters");
    if (!logger.memory.jobs.empty() && !row->IsKR4())
        found.push_back("\"jobs\" are for the KR4 family only");
    const bool needsLines = logger.failure == Failure::IgnoresLines || logger.failure == Failure::RefusesLines;
    if (needsLines && logger.lines.empty())
        found.push_back("this failure needs \"lines\"");
    if (logger.failure == Failure::RefusesPassword && logger.password.empty())
        found.push_back("\"RefusesPassword\" needs a \"password\"");
    if (setup.IsTcp() && setup.com > 0)
        found.push_back("\"com\" is for a pty");
    if (setup.IsTcp() && !setup.link.empty())
        found.push_back("\"link\" is for a pty");
    return found;
}

struct Reading {
    SimulationFile file;
    std::map<std::string, std::string> taken; // places that only one logger can have, and which has it

    void readLogger(const json& entry);
    void readModem(const json& entry);
    void tell(const std::string& who, const std::string& fault) { file.errors.push_back(who + ": " + fault); }
    template <typename Table, typename Setup>
    void readKeys(const json& entry, const std::string& who, const Table& keys, Setup& setup);
    LoggerSetup readSetup(const json& entry, const std::string& who);
    void claim(const std::string& place, const std::string& logger);
};

void Reading::claim(const std::string& place, const std::string& logger)
{
    const auto [holder, isFree] = taken.emplace(place, logger);
    if (!isFree)
        file.errors.push_back(logger + ": " + place + " is taken by " + holder->second);
}

template <typename Table, typename Setup>
void Reading::readKeys(const json& entry, const std::string& who, const Table& keys, Setup& setup)
{
    for (const auto& [name, value] : entry.items()) {
        const auto key = std::ranges::find_if(keys, [&word = name](const auto& one) { return one.name == word; });
        if (key == keys.end())
            tell(who, "unknown key " + inQuotes(name));
        else if (!key->read(value, setup))
            tell(who, inQuotes(name) + " takes " + std::string(key->takes));
    }
}

LoggerSetup Reading::readSetup(const json& entry, const std::string& who)
{
    LoggerSetup setup;
    const std::size_t before = file.errors.size();
    if (!entry.is_object()) {
        tell(who, "is no object {...}");
    } else {
        readKeys(entry, who, LoggerKeys(), setup);
        if (!entry.contains("model"))
            tell(who, "has no \"model\"");
    }
    if (file.errors.size() == before)
        for (const std::string& fault : faults(setup))
            tell(who, fault);
    return setup;
}

void Reading::readLogger(const json& entry)
{
    const std::string logger = "logger " + std::to_string(file.loggers.size() + 1);
    LoggerSetup setup = readSetup(entry, logger);
    if (setup.com > 0)
        claim("com " + std::to_string(setup.com), logger);
    if (!setup.link.empty())
        claim("link " + inQuotes(setup.link), logger);
    if (setup.tcpPort > 0)
        claim("TCP port " + std::to_string(setup.tcpPort), logger);
    file.loggers.push_back(std::move(setup));
}

void Reading::readModem(const json& entry)
{
    const std::string who = "modem";
    if (!entry.is_object())
        return tell(who, "is no object {...}");
    ModemSetup setup;
    readKeys(entry, who, ModemKeys(), setup);
    const auto book = entry.find(PhoneBookKey);
    if (book != entry.end() && book->is_object()) {
        if (book->size() > MostLoggers)
            tell(who, "the phone book takes " + std::to_string(MostLoggers) + " loggers");
        for (const auto& [number, logger] : book->items()) {
            const std::string callee = "number " + inQuotes(number);
            const LoggerSetup called = setup.phoneBook[number] = readSetup(logger, callee);
            if (called.com > 0 || called.IsTcp() || !called.link.empty())
                tell(callee, "\"com\", \"port\" and \"link\" are for a logger with a line of its own");
        }
    }
    if (setup.com > 0)
        claim("com " + std::to_string(setup.com), who);
    if (!setup.link.empty())
        claim("link " + inQuotes(setup.link), who);
    file.modem = std::move(setup);
}

} // namespace

SimulationFile ReadSimulationFile(std::string_view text)
{
    if (text.size() > LargestSimulationFile)
        return {{}, {"the file is longer than a mebibyte"}};
    json root;
    try {
        root = json::parse(text);
    } catch (const json::parse_error& error) {
        return {{}, {"not valid JSON near character " + std::to_string(error.byte)}};
    } catch (const json::out_of_range&) {
        return {{}, {"a number in it is too large"}};
    }
    if (!root.is_object() || !root.contains("loggers") || !root["loggers"].is_array())
        return {{}, {"the file must be of the form {\"loggers\": [{\"model\": ...}, ...]}"}};

    Reading reading;
    for (const auto& [name, value] : root.items())
        if (name != "loggers" && name != "modem" && name != "transcript" && name != "memory")
            reading.file.errors.push_back("unknown key " + inQuotes(name));
    const json& loggers = root["loggers"];
    if (loggers.empty() || loggers.size() > MostLoggers) {
        reading.file.errors.push_back("\"loggers\" takes 1 to " + std::to_string(MostLoggers) + " loggers");
        return reading.file;
    }
    for (const json& entry : loggers)
        reading.readLogger(entry);
    if (root.contains("modem"))
        reading.readModem(root["modem"]);
    if (root.contains("transcript") && !ReadText(root["transcript"], reading.file.transcript))
        reading.file.errors.push_back("\"transcript\" takes the path of a file");
    if (root.contains("memory") && !ReadText(root["memory"], reading.file.memory))
        reading.file.errors.push_back("\"memory\" takes the path of a file");
    return reading.file;
}

std::string SimulationFileHelp()
{
    return helpOf(LoggerKeys());
}

std::string ModemHelp()
{
    return helpOf(ModemKeys());
}

} // namespace harvelop
