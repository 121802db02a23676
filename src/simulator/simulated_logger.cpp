#include "simulator/simulated_logger.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace harvelop
{

namespace
{

constexpr char Xon = 0x11;
constexpr char Xoff = 0x13;
constexpr std::string_view Probe = "\x7f";
constexpr std::size_t LongestLine = 1 << 16;
constexpr int Refused = 9; // the code of a complaint
constexpr std::size_t EndlessLength = 70000;
constexpr double FloodBlockMs = 10;
constexpr long LargestFloodBlock = 4096;
constexpr double BitsPerCharacter = 10; // start bit, eight data bits, stop bit

double charactersPerMs(const LoggerConfig& config)
{
    return config.baud / BitsPerCharacter / 1000.0;
}

LoggerConfig withSlowBytes(LoggerConfig config)
{
    if (config.failure == Failure::SlowBytes)
        config.chunk = 1;
    return config;
}

// Whether lines are echoed after this one: the last of the switches /E and /e in it decides.
bool echoAfter(std::string_view line, bool before)
{
    const auto on = line.rfind("/E") + 1; // 0: not there
    const auto off = line.rfind("/e") + 1;
    return on == off ? before : on > off;
}

} // namespace

SimulatedLogger::SimulatedLogger(const LoggerConfig& config)
    : m_config(withSlowBytes(config)),
      m_row(FindModel(config.model, config.series)),
      m_noise(config.seed),
      m_memory(config, m_row),
      m_echo(config.echo),
      m_deaf(config.failure == Failure::Silent)
{
}

void SimulatedLogger::Receive(double nowMs, std::string_view bytes)
{
    m_nowMs = nowMs;
    for (const char c : bytes) {
        if (!m_onLine || m_deaf)
            return;
        takeCharacter(c);
    }
}

void SimulatedLogger::takeCharacter(char c)
{
    if (m_config.failure == Failure::Echoes)
        send({c}, 0);
    if (c == '\r') {
        const std::string line = std::exchange(m_line, {});
        const bool tooLong = std::exchange(m_lineTooLong, false);
        if (!line.empty() && !tooLong)
            takeLine(line);
        else if (line.empty())
            takeBlankLine();
    } else if (c == '\n' || c == Xon || c == Xoff) {
        return;
    } else if (m_line.size() < LongestLine) {
        m_line += c;
    } else {
        m_lineTooLong = true;
    }
}

void SimulatedLogger::takeLine(const std::string& line)
{
    ++m_lines;
    if (failsNow())
        return;
    const bool probed = line == Probe;
    const bool floods =
        m_config.failure == Failure::FloodsGarbage || (m_config.failure == Failure::FloodsAfterProbe && !probed);
    if (floods && m_floodMs == Never)
        m_floodMs = m_nowMs;
    if (m_floodMs != Never)
        return;
    if (m_monitor)
        takeMonitorLine(line);
    else if (probed)
        answerProbe();
    else if (m_config.failure != Failure::NoReply && !isLocked(line))
        takeCommand(line);
    m_lastLineMs = m_nowMs;
}

void SimulatedLogger::takeBlankLine()
{
    if (!m_monitor && (m_config.password.empty() || m_unlocked))
        m_memory.TakeBlankLine();
}

// Whether this received line is the one, and what comes with it.
bool SimulatedLogger::failsNow()
{
    if (m_lines < m_config.dropAfterLines)
        return false;
    switch (m_config.failure) {
    case Failure::DropsLine:
        m_onLine = false;
        m_pieces.clear();
        return true;
    case Failure::GoesSilent:
        m_deaf = true;
        return true;
    case Failure::ResetsItself:
        if (m_lines > m_config.dropAfterLines)
            return false;
        reset(true);
        return true;
    default:
        return false;
    }
}

// Whether the line is one that is not obeyed: one that is refused is heard, one that is ignored is not.
bool SimulatedLogger::isDisliked(const std::string& line)
{
    const bool concerned = m_config.failure == Failure::IgnoresLines || m_config.failure == Failure::RefusesLines;
    return concerned && !m_config.lines.empty() && line.starts_with(m_config.lines) &&
           ++m_disliked >= m_config.linesFrom;
}

void SimulatedLogger::showDislike()
{
    if (m_config.failure == Failure::RefusesLines)
        reply(m_memory.ErrorText(Refused));
}

void SimulatedLogger::takeMonitorLine(const std::string& line)
{
    if (isDisliked(line))
        showDislike();
    else if (line == BootstrapMonitor::Leave)
        reset(m_monitor->IsSound());
    else if (const auto answer = m_monitor->Take(line, m_memory.State().flash))
        reply(*answer);
}

// Says whether the logger keeps silent about `line`; the password is dealt with here.
bool SimulatedLogger::isLocked(const std::string& line)
{
    if (m_config.password.empty())
        return false;
    if (m_config.lockAfterMs > 0 && m_nowMs - m_lastLineMs >= m_config.lockAfterMs)
        m_unlocked = false;
    if (line == m_config.password && m_config.failure != Failure::RefusesPassword) {
        m_unlocked = true;
        reply("Accepted");
        return true;
    }
    return !m_unlocked;
}

void SimulatedLogger::takeCommand(const std::string& line)
{
    static constexpr auto Commands = std::to_array<Command>({
        {"TEST0", &SimulatedLogger::answerTest},
        {"/h/U/N", &SimulatedLogger::answerVersion},
        {"CHARAC1", &SimulatedLogger::answerSerial},
        {"\x1a"
         "BOOTSTRAP",
         &SimulatedLogger::enterMonitor},
        {"SINGLEPUSH", &SimulatedLogger::restart},
    });
    const bool disliked = isDisliked(line);
    if (!disliked || m_config.failure == Failure::RefusesLines)
        echo(line);
    if (disliked)
        return showDislike();
    const ProgramMemory::Answer answer = m_memory.Take(line);
    if (answer.text)
        reply(*answer.text);
    const auto found = std::ranges::find(Commands, line, &Command::line);
    if (answer.taken || found == Commands.end())
        return;
    const bool firstTime = m_asked.insert(found->line).second;
    if (m_config.failure == Failure::IgnoresFirst && firstTime)
        return;
    (this->*found->answer)();
}

void SimulatedLogger::echo(const std::string& line)
{
    if (m_echo && m_config.failure != Failure::Echoes)
        send(line + "\r\n", 0);
    m_echo = echoAfter(line, m_echo);
}

void SimulatedLogger::answerProbe()
{
    m_memory.EndSession();
    const bool stops = m_config.failure == Failure::StopsFlow;
    send(m_noise.Harmless(m_config.noise) + "<<\r\n" + (stops ? std::string(1, Xoff) : ""), m_config.delayMs);
}

void SimulatedLogger::answerTest()
{
    switch (m_config.failure) {
    case Failure::ShortReply:
        return reply("T,1.0");
    case Failure::EndlessReply:
        return reply("T," + std::string(EndlessLength, 'x'), "");
    case Failure::EndMarkerMissing:
        return reply(m_row ? TestReport(m_config, *m_row) : UnknownReport(), "");
    case Failure::WrongModel:
        return reply(UnknownReport());
    default:
        return reply(m_row ? TestReport(m_config, *m_row) : UnknownReport());
    }
}

void SimulatedLogger::answerVersion()
{
    if (m_row && m_row->IsKR4())
        reply(VersionReport(m_config, *m_row));
}

void SimulatedLogger::answerSerial()
{
    if (m_row && m_row->IsKR4() && m_config.failure != Failure::NoSerial)
        reply(SerialReport(m_config, *m_row));
}

void SimulatedLogger::enterMonitor()
{
    if (!m_row || m_row->IsKR4())
        return;
    m_memory.EndSession();
    m_memory.State().bootstrap = true;
    m_monitor.emplace(m_config);
    reply("Bootstrap mode\r\n");
}

void SimulatedLogger::restart()
{
    if (m_row && m_row->IsKR4())
        reset(true);
}

void SimulatedLogger::reset(bool flashIsSound)
{
    m_monitor.reset();
    m_memory.Reset();
    m_echo = m_config.echo;
    m_unlocked = false;
    reply(BootReport(m_config, m_row, flashIsSound));
}

void SimulatedLogger::reply(const std::string& line, std::string_view lineEnd)
{
    const bool late = m_config.failure == Failure::AnswersLate;
    send(m_noise.Harmless(m_config.noise) + line + std::string(lineEnd), late ? m_config.lateMs : m_config.delayMs);
}

// Queues the text behind what is still to be sent, in pieces that are due one after the other.
void SimulatedLogger::send(const std::string& text, double delayMs)
{
    std::string wire;
    for (const char c : text) {
        if (m_config.failure == Failure::NulBytes)
            wire += '\0';
        wire += c;
    }
    const double msPerCharacter = m_config.pace ? 1 / charactersPerMs(m_config) : 0;
    const std::size_t whole = m_config.pace ? 1 : wire.size();
    const std::size_t size = m_config.chunk > 0 ? m_config.chunk : whole;
    double due = std::max(m_nowMs + delayMs, m_busyUntilMs);
    for (std::size_t at = 0; at < wire.size(); at += size) {
        const std::string piece = wire.substr(at, size);
        if (at > 0 && m_config.chunk > 0)
            due += m_config.gapMs;
        due += msPerCharacter * static_cast<double>(piece.size());
        m_pieces.push_back({due, piece});
    }
    m_busyUntilMs = due;
}

std::string SimulatedLogger::Transmit(double nowMs)
{
    std::string text;
    while (!m_pieces.empty() && m_pieces.front().dueMs <= nowMs) {
        text += m_pieces.front().text;
        m_pieces.pop_front();
    }
    if (m_floodMs + FloodBlockMs <= nowMs) {
        const long count = std::lround((nowMs - m_floodMs) * charactersPerMs(m_config));
        text += m_noise.Any(static_cast<std::size_t>(std::clamp(count, 1L, LargestFloodBlock)));
        m_floodMs = nowMs;
    }
    return text;
}

double SimulatedLogger::NextDueMs() const
{
    const double pieceMs = m_pieces.empty() ? Never : m_pieces.front().dueMs;
    return std::min(pieceMs, m_floodMs + FloodBlockMs);
}

} // namespace harvelop
