// A dial-up modem that takes AT commands, with the devices that can be called through it.
#pragma once

#include "simulator/simulated_device.h"

#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace harvelop
{

// The ways in which a modem or its call can fail. ModemFailureModes() names each and says what it does.
enum class ModemFailure { None, Silent, Error, Busy, NoCarrier, NoAnswer, Garbage, DropsCall };

struct ModemFailureMode {
    ModemFailure failure;
    std::string_view name;
    std::string_view effect;
};

std::span<const ModemFailureMode> ModemFailureModes();

// The failure of that name, case exact; none if there is no such name.
std::optional<ModemFailure> ModemFailureByName(std::string_view name);

struct ModemConfig {
    int baud = 9600;            // between the computer and the modem
    std::string speed = "9600"; // what it reports behind "CONNECT"; empty: the word alone
    double answerMs = 20;       // from a command to its answer
    double connectMs = 2000;    // from dialling to what becomes of it
    double guardMs = 50;        // the silence around "+++" that makes it an escape
    double dropAfterMs = 3000;  // DropsCall: how long the call stands
    ModemFailure failure = ModemFailure::None;
};

// By the number that is dialled. A number that is not there ends in "NO CARRIER".
using PhoneBook = std::map<std::string, std::shared_ptr<SimulatedDevice>>;

// Echoes until "ate0". In a call it passes everything on; "+++" between two silences leads back to the commands with
// the call still standing; "ath", "atz", "at&h" and another number hang up.
class SimulatedModem : public SimulatedDevice
{
public:
    SimulatedModem(const ModemConfig& config, PhoneBook phoneBook);

    void Receive(double nowMs, std::string_view bytes) override;
    std::string Transmit(double nowMs) override;
    double NextDueMs() const override;

    bool InCall() const { return m_far != nullptr; }

private:
    enum class Mode { Command, Dialling, Online };
    struct Piece {
        double dueMs;
        std::string text;
    };

    void advance(double nowMs);
    void takeCommandCharacter(char c);
    void takeData(char c);
    void takeLine(const std::string& line);
    bool takeCommands(std::string_view commands);
    void dial(std::string_view number);
    void finishDialling();
    void hangUp();
    void answer(const std::string& word);
    void send(const std::string& text, double delayMs);

    const ModemConfig m_config;
    const PhoneBook m_phoneBook;
    double m_nowMs = 0;
    Mode m_mode = Mode::Command;
    bool m_echo = true;
    std::string m_line;
    std::string m_number;
    std::shared_ptr<SimulatedDevice> m_far; // the other end of the call
    std::string m_escape;                   // as much of "+++" as has come
    double m_lastDataMs = -Never;
    double m_escapeMs = Never; // when "+++" will have been an escape
    double m_dialledMs = Never;
    double m_dropMs = Never;
    std::deque<Piece> m_pieces;
};

} // namespace harvelop
