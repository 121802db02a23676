// A whole program with a progress window and an options panel that only remember, and loggers to plug into its ports.
#pragma once

#include "identify/headless_panel.h"
#include "simulator/simulated_logger.h"
#include "support/fake_forms.h"
#include "support/test_program.h"

#include <algorithm>
#include <initializer_list>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace harvelop::test
{

// Answers each line that it knows with a fixed text, at once, and remembers all lines.
class ScriptedLogger : public SimulatedDevice
{
public:
    explicit ScriptedLogger(std::map<std::string, std::string> answers) : m_answers(std::move(answers)) {}

    void Receive(double nowMs, std::string_view bytes) override
    {
        m_dueMs = nowMs;
        for (const char c : bytes) {
            if (c != '\r') {
                if (c != '\n')
                    m_line += c;
                continue;
            }
            lines.push_back(m_line);
            if (const auto found = m_answers.find(m_line); found != m_answers.end())
                m_out += found->second;
            m_line.clear();
        }
    }
    std::string Transmit(double) override { return std::exchange(m_out, {}); }
    double NextDueMs() const override { return m_out.empty() ? Never : m_dueMs; }

    std::vector<std::string> lines;

private:
    std::map<std::string, std::string> m_answers;
    std::string m_line;
    std::string m_out;
    double m_dueMs = 0;
};

inline std::shared_ptr<SimulatedLogger> Logger(const std::string& model, const std::string& series,
                                               const std::string& version, const std::string& serial = "",
                                               const std::string& password = "")
{
    LoggerConfig config;
    config.model = model;
    config.series = series;
    config.version = version;
    config.serial = serial;
    config.password = password;
    return std::make_shared<SimulatedLogger>(config);
}

struct IdentifyProgram : TestProgram {
    FakeMessages messages;
    FakeOptions optionsForm;

    IdentifyProgram()
    {
        Installed();
        heart.state.AppPath = "/home/user/loggers/";
        heart.state.DriveRoot = "/home/user/";
        heart.link.ConnectionKind = "RS232";
        heart.forms.options = &optionsForm;
        heart.forms.loadMessages = [this]() -> MessageForm* { return &messages; };
        files.files[OptionsIni] = "Icons=1\r\n";
        heart.options.Icons = "1";
    }

    SearchState& Search() { return heart.search; }
    LoggerRecord& Record(int number) { return *heart.tables.Record(number); }
    std::string& Text(int number) { return heart.tables.FoundLoggerStrings.at(static_cast<size_t>(number - 1)); }

    // Puts a record into a slot, its text too.
    void Store(int number, const LoggerRecord& record)
    {
        Record(number) = record;
        Text(number) = RecordText(record);
        heart.tables.HaveFoundLoggers = true;
    }

    // An open line to the device, which then stands on com port 3.
    void OpenLine(std::shared_ptr<SimulatedDevice> device)
    {
        serial.Plug(3, std::move(device), "");
        heart.rs232.OpenComPort(3);
    }

    void Find(const std::string& ports)
    {
        for (const auto& [port, what] : serial.ports)
            heart.link.PortAvailable.at(static_cast<size_t>(port - 1)) = true;
        heart.state.cbxUnload_Ports.SetText(ports);
        heart.portSearch.cmdUnload_FindTallycores_Click();
    }

    // A language file in which each text is its number in brackets.
    void UseLanguage(std::initializer_list<int> numbers)
    {
        std::string text;
        for (const int number : numbers)
            text += std::to_string(number) + ":1:8:[" + std::to_string(number) + "]\r\n";
        files.files["/home/user/loggers/Test.txt"] = text;
        heart.options.Language = "Test";
        heart.language.LangActive = true;
        heart.language.LoadLanguageFile();
    }

    // What was sent, each with the time from `since` in whole milliseconds: "500 Q /H/r\r\n\r\n".
    std::vector<std::string> Wire(double since = 0)
    {
        heart.waiting.ServeEvents();
        std::vector<std::string> wire;
        for (const auto& event : serial.events)
            if (event.kind == FakeSerial::Event::Kind::Sent && event.ms >= since)
                wire.push_back(std::to_string(std::lround(event.ms - since)) + " " + event.text);
        return wire;
    }

    bool Said(const std::string& text) const
    {
        return std::find(messages.captions.begin(), messages.captions.end(), "<- " + text) != messages.captions.end();
    }
};

} // namespace harvelop::test
