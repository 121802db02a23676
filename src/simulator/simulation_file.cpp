#include "simulator/simulation_file.h"

#include "simulator/report_texts.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <nlohmann/json.hpp>

namespace harvelop
{

namespace
{

using nlohmann::json;

constexpr std::size_t MostLoggers = 64;
constexpr double LongestMs = 24 * 3600 * 1000.0;
constexpr std::size_t KR4VersionLength = 9;
constexpr std::size_t OlderVersionLength = 4;
constexpr std::size_t SerialLength = 6;

bool isLine(const std::string& text)
{
    return text.find_first_of(std::string_view("\r\n\0", 3)) == std::string::npos;
}

bool readText(const json& value, std::string& to)
{
    if (!value.is_string() || !isLine(value.get_ref<const std::string&>()))
        return false;
    to = value;
    return true;
}

template <typename Number> bool readWhole(const json& value, double least, double most, Number& to)
{
    const bool whole = value.is_number_integer() && value.get<double>() >= least && value.get<double>() <= most;
    if (whole)
        to = value.get<Number>();
    return whole;
}

bool readMs(const json& value, double& to)
{
    const bool fits = value.is_number() && value.get<double>() >= 0 && value.get<double>() <= LongestMs;
    if (fits)
        to = value;
    return fits;
}

bool readPort(const json& value, LoggerSetup& setup)
{
    constexpr std::string_view Tcp = "tcp:";
    std::string text;
    if (!readText(value, text))
        return false;
    if (text == "pty")
        return true;
    const std::string digits = text.starts_with(Tcp) ? text.substr(Tcp.size()) : "";
    if (digits.empty() || digits.size() > 5 || digits.find_first_not_of("0123456789") != std::string::npos)
        return false;
    setup.tcpPort = std::stoi(digits);
    return setup.tcpPort <= 65535;
}

bool readFailure(const json& value, LoggerConfig& logger)
{
    const auto failure = value.is_string() ? FailureByName(value.get_ref<const std::string&>()) : std::nullopt;
    logger.failure = failure.value_or(Failure::None);
    return failure.has_value();
}

bool readPace(const json& value, LoggerConfig& logger)
{
    logger.pace = value.is_boolean() && value.get<bool>();
    return value.is_boolean();
}

bool readModemFailure(const json& value, ModemConfig& modem)
{
    const auto failure = value.is_string() ? ModemFailureByName(value.get_ref<const std::string&>()) : std::nullopt;
    modem.failure = failure.value_or(ModemFailure::None);
    return failure.has_value();
}

template <typename Setup> struct KeyOf {
    std::string_view name;
    std::string_view takes;
    bool (*read)(const json&, Setup&);
};
using Key = KeyOf<LoggerSetup>;
using ModemKey = KeyOf<ModemSetup>;

constexpr auto Keys = std::to_array<Key>({
    {"name", "a text for people", [](const json& v, LoggerSetup& s) { return readText(v, s.name); }},
    {"model", "a model text of --list-models",
     [](const json& v, LoggerSetup& s) { return readText(v, s.logger.model); }},
    {"series", "\"1\", \"2\" or \"3\"; not for the KR4 family",
     [](const json& v, LoggerSetup& s) { return readText(v, s.logger.series); }},
    {"version", "a text: 9 characters for the KR4 family, otherwise 4",
     [](const json& v, LoggerSetup& s) { return readText(v, s.logger.version); }},
    {"serial", "a text of 6 characters; only for the KR4 family",
     [](const json& v, LoggerSetup& s) { return readText(v, s.logger.serial); }},
    {"password", "a text; none is wanted without it",
     [](const json& v, LoggerSetup& s) { return readText(v, s.logger.password); }},
    {"lockAfter", "milliseconds without a line after which it wants its password again",
     [](const json& v, LoggerSetup& s) { return readMs(v, s.logger.lockAfterMs); }},
    {"port", "\"pty\" (without it, too) or \"tcp:PORT\" on the loopback, port 0 for any free one", readPort},
    {"com", "a whole number from 1 to 16: the com port that the pty is meant for",
     [](const json& v, LoggerSetup& s) { return readWhole(v, 1, 16, s.com); }},
    {"link", "the path of a symbolic link to make for the pty",
     [](const json& v, LoggerSetup& s) { return readText(v, s.link) && !s.link.empty(); }},
    {"baud", "a whole number from 50 to 4000000; 9600 without it",
     [](const json& v, LoggerSetup& s) { return readWhole(v, 50, 4000000, s.logger.baud); }},
    {"pace", "true: characters leave at the line's speed, not at once",
     [](const json& v, LoggerSetup& s) { return readPace(v, s.logger); }},
    {"delay", "milliseconds from a command to its reply",
     [](const json& v, LoggerSetup& s) { return readMs(v, s.logger.delayMs); }},
    {"chunk", "a whole number up to 65536: replies leave in pieces of so many characters",
     [](const json& v, LoggerSetup& s) { return readWhole(v, 1, 65536, s.logger.chunk); }},
    {"gap", "milliseconds between such pieces; 20 without it",
     [](const json& v, LoggerSetup& s) { return readMs(v, s.logger.gapMs); }},
    {"noise", "a whole number up to 65536: characters of line noise before every reply",
     [](const json& v, LoggerSetup& s) { return readWhole(v, 0, 65536, s.logger.noise); }},
    {"seed", "a whole number from 1 to 2000000000: another noise",
     [](const json& v, LoggerSetup& s) { return readWhole(v, 1, 2e9, s.logger.seed); }},
    {"failure", "a failure mode of --list-failures",
     [](const json& v, LoggerSetup& s) { return readFailure(v, s.logger); }},
    {"dropAfter", "a whole number up to 1000000: DropsLine, with which received line the line goes; 3 without it",
     [](const json& v, LoggerSetup& s) { return readWhole(v, 1, 1000000, s.logger.dropAfterLines); }},
    {"late", "milliseconds: AnswersLate, its delay; 6000 without it",
     [](const json& v, LoggerSetup& s) { return readMs(v, s.logger.lateMs); }},
});

// The phone book is read apart, as its entries are loggers.
constexpr std::string_view PhoneBookKey = "phoneBook";

constexpr auto ModemKeys = std::to_array<ModemKey>({
    {PhoneBookKey, "{\"NUMBER\": {a logger's keys}, ...}: who answers at which number",
     [](const json& v, ModemSetup&) { return v.is_object(); }},
    {"com", "a whole number from 1 to 16: the com port that its pty is meant for",
     [](const json& v, ModemSetup& s) { return readWhole(v, 1, 16, s.com); }},
    {"link", "the path of a symbolic link to make for the pty",
     [](const json& v, ModemSetup& s) { return readText(v, s.link) && !s.link.empty(); }},
    {"baud", "a whole number from 50 to 4000000: of the pty; 9600 without it",
     [](const json& v, ModemSetup& s) { return readWhole(v, 50, 4000000, s.modem.baud); }},
    {"speed", "a text: what it reports with CONNECT; \"9600\" without it",
     [](const json& v, ModemSetup& s) { return readText(v, s.modem.speed); }},
    {"delay", "milliseconds from a command to its answer; 20 without it",
     [](const json& v, ModemSetup& s) { return readMs(v, s.modem.answerMs); }},
    {"connect", "milliseconds from dialling to the answer; 2000 without it",
     [](const json& v, ModemSetup& s) { return readMs(v, s.modem.connectMs); }},
    {"guard", "milliseconds of silence around \"+++\"; 50 without it",
     [](const json& v, ModemSetup& s) { return readMs(v, s.modem.guardMs); }},
    {"failure", "Silent, Error, Busy, NoCarrier, NoAnswer, Garbage or DropsCall",
     [](const json& v, ModemSetup& s) { return readModemFailure(v, s.modem); }},
    {"dropAfter", "milliseconds: DropsCall, how long a call stands; 3000 without it",
     [](const json& v, ModemSetup& s) { return readMs(v, s.modem.dropAfterMs); }},
});

template <typename Table> std::string helpOf(const Table& keys)
{
    std::string help;
    for (const auto& key : keys) {
        std::string name(key.name);
        name.resize(10, ' ');
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
        readKeys(entry, who, Keys, setup);
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
    readKeys(entry, who, ModemKeys, setup);
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
    }
    if (!root.is_object() || !root.contains("loggers") || !root["loggers"].is_array())
        return {{}, {"the file must be of the form {\"loggers\": [{\"model\": ...}, ...]}"}};

    Reading reading;
    for (const auto& [name, value] : root.items())
        if (name != "loggers" && name != "modem" && name != "transcript")
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
    if (root.contains("transcript") && !readText(root["transcript"], reading.file.transcript))
        reading.file.errors.push_back("\"transcript\" takes the path of a file");
    return reading.file;
}

std::string SimulationFileHelp()
{
    return helpOf(Keys);
}

std::string ModemHelp()
{
    return helpOf(ModemKeys);
}

} // namespace harvelop
