#include "simulator/simulation_keys.h"

#include <algorithm>
#include <array>

namespace harvelop
{

namespace
{

using nlohmann::json;

constexpr double LongestMs = 24 * 3600 * 1000.0;

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
    if (!ReadText(value, text))
        return false;
    if (text == "pty")
        return true;
    const std::string digits = text.starts_with(Tcp) ? text.substr(Tcp.size()) : "";
    if (digits.empty() || digits.size() > 5 || digits.find_first_not_of("0123456789") != std::string::npos)
        return false;
    constexpr int Highest = 65535;
    const int port = std::stoi(digits);
    if (port <= Highest)
        setup.tcpPort = port;
    return port <= Highest;
}

bool readFailure(const json& value, LoggerConfig& logger)
{
    const auto failure = value.is_string() ? FailureByName(value.get_ref<const std::string&>()) : std::nullopt;
    logger.failure = failure.value_or(Failure::None);
    return failure.has_value();
}

bool readFlag(const json& value, bool& to)
{
    to = value.is_boolean() && value.get<bool>();
    return value.is_boolean();
}

// A text of any characters up to U+00FF, each of which is one byte.
bool readBytes(const json& value, std::string& to)
{
    if (!value.is_string())
        return false;
    const std::string& text = value.get_ref<const std::string&>();
    to.clear();
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto first = static_cast<unsigned char>(text[i]);
        if (first >= 0x80 && first != 0xC2 && first != 0xC3)
            return false;
        to += first < 0x80 ? text[i] : static_cast<char>((first & 0x03U) << 6U | (text[++i] & 0x3F));
    }
    return true;
}

bool readJob(const json& value, Job& job)
{
    if (!ReadText(value, job.name))
        return false;
    job.current = job.name.starts_with('*');
    job.name.erase(0, job.current ? 1 : 0);
    job.hasData = job.name.ends_with('+');
    if (job.hasData)
        job.name.pop_back();
    return !job.name.empty() && job.name.find('"') == std::string::npos;
}

bool readJobs(const json& value, LoggerMemory& memory)
{
    return value.is_array() &&
           std::ranges::all_of(value, [&](const json& job) { return readJob(job, memory.jobs.emplace_back()); });
}

bool readModemFailure(const json& value, ModemConfig& modem)
{
    const auto failure = value.is_string() ? ModemFailureByName(value.get_ref<const std::string&>()) : std::nullopt;
    modem.failure = failure.value_or(ModemFailure::None);
    return failure.has_value();
}

constexpr auto OfLogger = std::to_array<LoggerKey>({
    {"name", "a text for people", [](const json& v, LoggerSetup& s) { return ReadText(v, s.name); }},
    {"model", "a model text of --list-models",
     [](const json& v, LoggerSetup& s) { return ReadText(v, s.logger.model); }},
    {"series", "\"1\", \"2\" or \"3\"; not for the KR4 family",
     [](const json& v, LoggerSetup& s) { return ReadText(v, s.logger.series); }},
    {"version", "a text: 9 characters for the KR4 family, otherwise 4",
     [](const json& v, LoggerSetup& s) { return ReadText(v, s.logger.version); }},
    {"serial", "a text of 6 characters; only for the KR4 family",
     [](const json& v, LoggerSetup& s) { return ReadText(v, s.logger.serial); }},
    {"password", "a text; none is wanted without it",
     [](const json& v, LoggerSetup& s) { return ReadText(v, s.logger.password); }},
    {"lockAfter", "milliseconds without a line after which it wants its password again",
     [](const json& v, LoggerSetup& s) { return readMs(v, s.logger.lockAfterMs); }},
    {"port", "\"pty\" (without it, too) or \"tcp:PORT\" on the loopback, port 0 for any free one", readPort},
    {"com", "a whole number from 1 to 16: the com port that the pty is meant for",
     [](const json& v, LoggerSetup& s) { return readWhole(v, 1, 16, s.com); }},
    {"link", "the path of a symbolic link to make for the pty",
     [](const json& v, LoggerSetup& s) { return ReadText(v, s.link) && !s.link.empty(); }},
    {"baud", "a whole number from 50 to 4000000; 9600 without it",
     [](const json& v, LoggerSetup& s) { return readWhole(v, 50, 4000000, s.logger.baud); }},
    {"pace", "true: characters leave at the line's speed, not at once",
     [](const json& v, LoggerSetup& s) { return readFlag(v, s.logger.pace); }},
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
    {"dropAfter", "a whole number up to 1000000: with which received line DropsLine, GoesSilent, ResetsItself; else 3",
     [](const json& v, LoggerSetup& s) { return readWhole(v, 1, 1000000, s.logger.dropAfterLines); }},
    {"late", "milliseconds: AnswersLate, its delay; 6000 without it",
     [](const json& v, LoggerSetup& s) { return readMs(v, s.logger.lateMs); }},
    {"lines", "a text: IgnoresLines and RefusesLines are about lines that begin so",
     [](const json& v, LoggerSetup& s) { return ReadText(v, s.logger.lines); }},
    {"linesFrom", "a whole number up to 1000000: with which of those lines that begins; 1 without it",
     [](const json& v, LoggerSetup& s) { return readWhole(v, 1, 1000000, s.logger.linesFrom); }},
    {"rejectLine", "a whole number up to 1000000: RejectsLine, RejectsString, GarblesRecord, which one; 3 without it",
     [](const json& v, LoggerSetup& s) { return readWhole(v, 1, 1000000, s.logger.rejectLine); }},
    {"echo", "true: it sends back every line, until \"/e\" forbids it",
     [](const json& v, LoggerSetup& s) { return readFlag(v, s.logger.echo); }},
    {"number", "a text: what it answers to \"13SV\"; \"1\" without it",
     [](const json& v, LoggerSetup& s) { return ReadText(v, s.logger.number); }},
    {"data", "true: logged data are stored",
     [](const json& v, LoggerSetup& s) { return readFlag(v, s.logger.memory.data); }},
    {"card", "true: a memory card is plugged in",
     [](const json& v, LoggerSetup& s) { return readFlag(v, s.logger.memory.card); }},
    {"program", "a text, LF behind each line: the program in internal memory",
     [](const json& v, LoggerSetup& s) { return readBytes(v, s.logger.memory.program); }},
    {"cardProgram", "such a text: the program on the card",
     [](const json& v, LoggerSetup& s) { return readBytes(v, s.logger.memory.cardProgram); }},
    {"flash", "a text: the bytes in flash memory",
     [](const json& v, LoggerSetup& s) { return readBytes(v, s.logger.memory.flash); }},
    {"jobs", "[\"*PUMP\", \"TANK+\", ...]: the KR4 family's jobs, * before the current one, + behind one with data",
     [](const json& v, LoggerSetup& s) { return readJobs(v, s.logger.memory); }},
});

constexpr auto OfModem = std::to_array<ModemKey>({
    {PhoneBookKey, "{\"NUMBER\": {a logger's keys}, ...}: who answers at which number",
     [](const json& v, ModemSetup&) { return v.is_object(); }},
    {"com", "a whole number from 1 to 16: the com port that its pty is meant for",
     [](const json& v, ModemSetup& s) { return readWhole(v, 1, 16, s.com); }},
    {"link", "the path of a symbolic link to make for the pty",
     [](const json& v, ModemSetup& s) { return ReadText(v, s.link) && !s.link.empty(); }},
    {"baud", "a whole number from 50 to 4000000: of the pty; 9600 without it",
     [](const json& v, ModemSetup& s) { return readWhole(v, 50, 4000000, s.modem.baud); }},
    {"speed", "a text: what it reports with CONNECT; \"9600\" without it",
     [](const json& v, ModemSetup& s) { return ReadText(v, s.modem.speed); }},
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

} // namespace

std::span<const LoggerKey> LoggerKeys()
{
    return OfLogger;
}

std::span<const ModemKey> ModemKeys()
{
    return OfModem;
}

bool ReadText(const json& value, std::string& to)
{
    constexpr std::string_view LineEnds("\r\n\0", 3);
    if (!value.is_string() || value.get_ref<const std::string&>().find_first_of(LineEnds) != std::string::npos)
        return false;
    to = value;
    return true;
}

} // namespace harvelop
