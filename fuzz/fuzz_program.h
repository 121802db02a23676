// A whole program on fakes, in virtual time: what stands at the far end says what the input holds, and a user who
// agrees to everything answers all boxes.
#pragma once

#include "app/program.h"
#include "hold.h"
#include "identify/headless_panel.h"
#include "settings/logger_record.h"
#include "simulator/simulated_device.h"
#include "support/fake_desktop.h"
#include "support/fake_serial.h"
#include "support/fake_sockets.h"
#include "support/memory_files.h"
#include "support/virtual_pump.h"

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace harvelop::fuzz
{

// Answers whatever it is sent with the next piece of a text; a server says the first one by itself. Pieces are parted
// by the character 30; behind the last one it is silent.
class SaysPieces : public SimulatedDevice
{
public:
    explicit SaysPieces(std::string_view text, bool speaksFirst = false) : m_text(text)
    {
        if (speaksFirst)
            Receive(0, {});
    }

    void Receive(double nowMs, std::string_view) override
    {
        constexpr char Parting = '\x1e';
        constexpr double AnswerMs = 10;
        const size_t end = std::min(m_text.find(Parting), m_text.size());
        m_out += m_text.substr(0, end);
        m_text.erase(0, end + 1);
        m_dueMs = nowMs + AnswerMs;
    }
    std::string Transmit(double nowMs) override
    {
        return nowMs < m_dueMs ? std::string() : std::exchange(m_out, std::string());
    }
    double NextDueMs() const override { return m_out.empty() ? Never : m_dueMs; }

private:
    std::string m_text;
    std::string m_out;
    double m_dueMs = 0;
};

class Agrees : public Dialogs
{
public:
    BoxAnswer Show(const Box& box) override
    {
        Hold(!box.text.empty(), "a box says something");
        return box.buttons == BoxButtons::YesNo ? BoxAnswer::Yes : BoxAnswer::Ok;
    }
    std::string AskPassword(const std::string&, const std::string&) override { return "key"; }
    std::string BrowseFolder(const std::string&, const std::string&) override { return {}; }
    std::string OpenFile(const std::string&, const std::string&, const std::string&) override { return file; }

    std::string file; // what the user chooses
};

// The user takes the first job of the list.
class TakesFirst : public JobForm
{
public:
    explicit TakesFirst(LoadingState& loading) : m_loading(loading) {}
    void Show(const std::vector<std::string>& jobs) override
    {
        m_loading.ChosenJob = jobs.empty() ? "" : jobs.front();
        m_loading.JobDeleteConfirmed = true;
    }
    bool IsVisible() const override { return false; }

private:
    LoadingState& m_loading;
};

struct FuzzProgram {
    static constexpr const char* Directory = "/home/user/loggers/";
    static constexpr const char* ProgramFile = "/home/user/pump.cmd";

    FuzzProgram()
    {
        heart.state.AppPath = Directory;
        heart.forms.loadJobs = [this] { return &jobs; };
        heart.options.ShowMessages = heart.options.ShowLoadMessages = true;
        dialogs.file = ProgramFile;
    }

    // Logger 1 is of that model, and stands at com port 3 or, if `port` says so, elsewhere.
    void Store(const std::string& model, const std::string& port = "3")
    {
        LoggerRecord record;
        record.LoggerModel = model;
        record.LoggerPort = port;
        record.LoggerBaud = "9600";
        record.LoggerParity = "None";
        record.LoggerDataBits = "8";
        record.LoggerStopBits = "1";
        record.LoggerFlow = "SWFC";
        heart.tables.FoundLoggerStrings[0] = RecordText(record);
        heart.records.ParseLoggerSettings(1);
        heart.state.CurrentLogger = 1;
    }
    void PlugHost(const std::string& host, int port, std::string_view says, bool speaksFirst)
    {
        sockets.Plug(host, port, std::make_shared<SaysPieces>(says, speaksFirst));
    }
    void PlugPort(std::string_view says) { serial.Plug(3, std::make_shared<SaysPieces>(says), ""); }

    // What holds after each dialogue, whatever the far end said.
    void HoldReleased() const
    {
        constexpr double LongestMs = 6.0 * 3600 * 1000; // of the dialogue
        Hold(pump.NowMs() < LongestMs, "a dialogue comes to its end");
        Hold(!serial.PortOpen(), "the port is closed");
        Hold(std::all_of(
                 sockets.made.begin(), sockets.made.end(),
                 [](const auto* socket) { return !socket || socket->State() == SocketControl::Condition::Closed; }),
             "the sockets are closed");
        Hold(!heart.loggerControls.Working(), "the controls are free");
        Hold(!heart.state.SearchRunning, "no search runs");
        for (const auto& [path, text] : files.files)
            Hold(path.starts_with("/home/user/"), "files are written where the program works");
    }

    test::VirtualPump pump;
    test::FakeSerial serial{pump};
    test::FakeSockets sockets{pump};
    Agrees dialogs;
    test::MemoryFiles files;
    test::MemorySettings settings;
    test::FakeDesktop desktop;
    Program heart{{pump, serial, sockets, dialogs, files, settings, desktop}};
    TakesFirst jobs{heart.loading};
};

} // namespace harvelop::fuzz
