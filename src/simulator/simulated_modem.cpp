#include "simulator/simulated_modem.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

namespace harvelop
{

namespace
{

constexpr std::string_view Escape = "+++";
constexpr std::size_t LongestLine = 256;
constexpr std::string_view Junk = "\x81\xfe}\x90{\xa7\r\n~\xc3\x88"; // what another speed makes of an answer

constexpr auto Modes = std::to_array<ModemFailureMode>({
    {ModemFailure::None, "None", "works as it should"},
    {ModemFailure::Silent, "Silent", "answers nothing at all"},
    {ModemFailure::Error, "Error", "answers ERROR to every command"},
    {ModemFailure::Busy, "Busy", "every number that is dialled is busy"},
    {ModemFailure::NoCarrier, "NoCarrier", "every call ends in NO CARRIER"},
    {ModemFailure::NoAnswer, "NoAnswer", "says nothing any more once it has dialled"},
    {ModemFailure::Garbage, "Garbage", "answers junk to every command"},
    {ModemFailure::DropsCall, "DropsCall", "connects, and loses the carrier after a while"},
});

} // namespace

std::span<const ModemFailureMode> ModemFailureModes()
{
    return Modes;
}

std::optional<ModemFailure> ModemFailureByName(std::string_view name)
{
    const auto found = std::ranges::find(Modes, name, &ModemFailureMode::name);
    return found != Modes.end() ? std::optional(found->failure) : std::nullopt;
}

SimulatedModem::SimulatedModem(const ModemConfig& config, PhoneBook phoneBook)
    : m_config(config), m_phoneBook(std::move(phoneBook))
{
}

void SimulatedModem::Receive(double nowMs, std::string_view bytes)
{
    if (m_config.failure == ModemFailure::Silent)
        return;
    advance(nowMs);
    for (const char c : bytes) {
        if (m_mode == Mode::Online)
            takeData(c);
        else
            takeCommandCharacter(c);
    }
}

std::string SimulatedModem::Transmit(double nowMs)
{
    advance(nowMs);
    std::string text;
    while (!m_pieces.empty() && m_pieces.front().dueMs <= nowMs) {
        text += m_pieces.front().text;
        m_pieces.pop_front();
    }
    if (m_far) {
        const std::string heard = m_far->Transmit(nowMs);
        if (m_mode == Mode::Online)
            text += heard;
    }
    return text;
}

double SimulatedModem::NextDueMs() const
{
    const double piece = m_pieces.empty() ? Never : m_pieces.front().dueMs;
    double far = Never;
    if (m_far)
        far = m_far->OnLine() ? m_far->NextDueMs() : m_nowMs;
    return std::min({piece, m_escapeMs, m_dialledMs, m_dropMs, far});
}

// What has happened by itself until now.
void SimulatedModem::advance(double nowMs)
{
    m_nowMs = nowMs;
    if (m_dialledMs <= nowMs)
        finishDialling();
    if (m_escapeMs <= nowMs) {
        m_escapeMs = Never;
        m_escape.clear();
        m_mode = Mode::Command;
        answer("OK");
    }
    if (m_far && (m_dropMs <= nowMs || !m_far->OnLine())) {
        hangUp();
        answer("NO CARRIER");
    }
}

void SimulatedModem::takeCommandCharacter(char c)
{
    if (c == '\n')
        return;
    if (m_echo)
        send(c == '\r' ? "\r\n" : std::string(1, c), 0);
    if (c == '\r')
        takeLine(std::exchange(m_line, {}));
    else if (m_line.size() < LongestLine)
        m_line += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
}

void SimulatedModem::takeData(char c)
{
    const bool begins = m_escape.empty() && m_nowMs - m_lastDataMs >= m_config.guardMs;
    m_lastDataMs = m_nowMs;
    if (c == Escape.front() && m_escape.size() < Escape.size() && (begins || !m_escape.empty())) {
        m_escape += c;
        if (m_escape == Escape)
            m_escapeMs = m_nowMs + m_config.guardMs;
        return;
    }
    m_escapeMs = Never;
    m_far->Receive(m_nowMs, std::exchange(m_escape, {}) + c);
}

// A line is a command from its first "at" on; what stands before, such as a "+++" outside a call, means nothing.
void SimulatedModem::takeLine(const std::string& line)
{
    const std::size_t begin = line.find("at");
    if (begin == std::string::npos)
        return;
    if (m_mode == Mode::Dialling) { // anything that is typed meanwhile gives the call up
        m_mode = Mode::Command;
        m_dialledMs = Never;
    }
    if (m_config.failure == ModemFailure::Garbage)
        send(std::string(Junk), m_config.answerMs);
    else if (m_config.failure == ModemFailure::Error || !takeCommands(std::string_view(line).substr(begin + 2)))
        answer("ERROR");
    else if (m_mode == Mode::Command)
        answer("OK");
}

// False at the first one that is no command.
bool SimulatedModem::takeCommands(std::string_view commands)
{
    constexpr std::string_view Known = "abcfgilmnqstvwxy&0123456789=?, ";
    for (std::size_t at = 0; at < commands.size(); ++at) {
        const char c = commands[at];
        const char next = at + 1 < commands.size() ? commands[at + 1] : '\0';
        if (c == 'd') {
            dial(commands.substr(at + 1));
            return true;
        }
        if (c == 'e')
            m_echo = next != '0';
        else if (c == 'z' || c == 'h')
            hangUp();
        else if (Known.find(c) == std::string_view::npos)
            return false;
        if (c == 'z')
            m_echo = true;
    }
    return true;
}

void SimulatedModem::dial(std::string_view number)
{
    if (!number.empty() && (number.front() == 't' || number.front() == 'p'))
        number.remove_prefix(1);
    hangUp();
    const std::size_t begin = std::min(number.find_first_not_of(' '), number.size());
    m_number = number.substr(begin, number.find_last_not_of(' ') + 1 - begin);
    m_mode = Mode::Dialling;
    m_dialledMs = m_config.failure == ModemFailure::NoAnswer ? Never : m_nowMs + m_config.connectMs;
}

void SimulatedModem::finishDialling()
{
    m_dialledMs = Never;
    m_mode = Mode::Command;
    const auto found = m_phoneBook.find(m_number);
    if (m_config.failure == ModemFailure::Busy)
        return answer("BUSY");
    if (m_config.failure == ModemFailure::NoCarrier || found == m_phoneBook.end() || !found->second->OnLine())
        return answer("NO CARRIER");
    m_far = found->second;
    m_far->Transmit(m_nowMs); // what it said to nobody
    answer(m_config.speed.empty() ? "CONNECT" : "CONNECT " + m_config.speed);
    m_mode = Mode::Online;
    m_lastDataMs = m_nowMs;
    if (m_config.failure == ModemFailure::DropsCall)
        m_dropMs = m_nowMs + m_config.dropAfterMs;
}

void SimulatedModem::hangUp()
{
    m_far = nullptr;
    m_mode = Mode::Command;
    m_escape.clear();
    m_escapeMs = Never;
    m_dropMs = Never;
}

void SimulatedModem::answer(const std::string& word)
{
    // What a call has led to, and its end, come by themselves; only a command takes its time.
    const bool isToCommand = word == "OK" || word == "ERROR";
    send("\r\n" + word + "\r\n", isToCommand ? m_config.answerMs : 0);
}

void SimulatedModem::send(const std::string& text, double delayMs)
{
    const double due = m_nowMs + delayMs;
    m_pieces.push_back({m_pieces.empty() ? due : std::max(due, m_pieces.back().dueMs), text});
}

} // namespace harvelop
