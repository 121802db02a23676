// A data logger of either family as it behaves at its serial line, for tests, demonstrations and measurements.
#pragma once

#include "simulator/bootstrap_monitor.h"
#include "simulator/line_noise.h"
#include "simulator/logger_config.h"
#include "simulator/program_memory.h"
#include "simulator/report_texts.h"
#include "simulator/simulated_device.h"

#include <deque>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace harvelop
{

// Takes lines that end in CR; LF, XON and XOFF mean nothing to it, and empty lines only in a program. What it answers
// to is a table of commands here and one in ProgramMemory; every other line is taken in silence. A logger with a
// password answers only the probe (the character 127 as a line) until a line equals the password. "BOOTSTRAP" behind
// the character 26 leads a logger of the older family into its BootstrapMonitor, which is left by a reset.
class SimulatedLogger : public SimulatedDevice
{
public:
    // With a model that does not exist it answers as one that nobody knows.
    explicit SimulatedLogger(const LoggerConfig& config);

    void Receive(double nowMs, std::string_view bytes) override;
    std::string Transmit(double nowMs) override;
    double NextDueMs() const override;
    bool OnLine() const override { return m_onLine; }

    // Lines received so far, the empty ones not counted.
    int LinesReceived() const { return m_lines; }

    // What it holds now.
    const LoggerMemory& Memory() const { return m_memory.State(); }

private:
    struct Piece {
        double dueMs;
        std::string text;
    };
    struct Command {
        std::string_view line;
        void (SimulatedLogger::*answer)();
    };

    void takeCharacter(char c);
    void takeLine(const std::string& line);
    void takeBlankLine();
    void takeCommand(const std::string& line);
    void takeMonitorLine(const std::string& line);
    bool failsNow();
    bool isDisliked(const std::string& line);
    void showDislike();
    void echo(const std::string& line);
    bool isLocked(const std::string& line);

    void answerProbe();
    void answerTest();
    void answerVersion();
    void answerSerial();
    void enterMonitor();
    void restart();

    void reset(bool flashIsSound);
    void reply(const std::string& line, std::string_view lineEnd = "\r\n");
    void send(const std::string& text, double delayMs);

    const LoggerConfig m_config;
    const std::optional<ModelRow> m_row;
    LineNoise m_noise;
    ProgramMemory m_memory;
    std::optional<BootstrapMonitor> m_monitor; // while it is in there
    bool m_echo;
    bool m_deaf = false; // for good
    int m_disliked = 0;  // lines so far that `lines` of the configuration is about
    double m_nowMs = 0;
    std::string m_line;
    bool m_lineTooLong = false;
    int m_lines = 0;
    bool m_onLine = true;
    bool m_unlocked = false;
    double m_lastLineMs = 0;
    std::set<std::string_view> m_asked;
    std::deque<Piece> m_pieces;
    double m_busyUntilMs = 0;
    double m_floodMs = Never;
};

} // namespace harvelop
