// What the deep tests drive: a whole program on fakes, in virtual time, with a simulated device at the far end whose
// line can be cut at any character and at any line.
#pragma once

#include "identify/fake_panel.h"
#include "simulator/simulated_device.h"

#include <cstdlib>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <string>
#include <utility>

namespace harvelop::test
{

// The long form of these tests, in which no step is left out, runs with HARVELOP_DEEP in the environment.
inline bool IsDeep()
{
    const char* deep = std::getenv("HARVELOP_DEEP");
    return deep && *deep;
}

// How far apart the steps are that a test looks at: all of them in the long form.
inline int Stride(int inShortForm)
{
    return IsDeep() ? 1 : inShortForm;
}

// Passes on what a device says, and counts. At the character or at the line that a test names, the line is cut: nothing
// of what would follow passes any more.
class CutDevice : public SimulatedDevice
{
public:
    explicit CutDevice(std::shared_ptr<SimulatedDevice> device) : m_device(std::move(device)) {}

    void Receive(double nowMs, std::string_view bytes) override
    {
        if (m_cut)
            return;
        if (++lines == cutAtLine)
            cut();
        else
            m_device->Receive(nowMs, bytes);
    }
    std::string Transmit(double nowMs) override
    {
        std::string text = m_cut ? std::string() : m_device->Transmit(nowMs);
        if (cutAtCharacter > 0 && characters + static_cast<long>(text.size()) >= cutAtCharacter) {
            text.resize(static_cast<size_t>(cutAtCharacter - characters));
            cut();
        }
        characters += static_cast<long>(text.size());
        return text;
    }
    double NextDueMs() const override { return m_cut ? Never : m_device->NextDueMs(); }
    bool OnLine() const override { return !m_cut && m_device->OnLine(); }

    long characters = 0;     // that have passed to the program
    long lines = 0;          // pieces that the program has sent
    long cutAtCharacter = 0; // the last one that passes; 0: never
    long cutAtLine = 0;      // the first one that does not pass; 0: never
    std::function<void()> whenCut;

private:
    void cut()
    {
        m_cut = true;
        cutAtCharacter = 0;
        whenCut();
    }

    std::shared_ptr<SimulatedDevice> m_device;
    bool m_cut = false;
};

// A program with an open options panel and one stored logger, whose panel is open; boxes are agreed to.
struct DeepBench : PanelProgram {
    static constexpr const char* ProgramFile = "/home/user/pump.cmd";
    static constexpr const char* Host = "10.0.0.5";
    static constexpr int Port = 3; // the com port of the logger or its modem
    static constexpr int HostPort = 3000;

    DeepBench();

    void StoreSerial(const std::string& model);
    void StoreNetwork(const std::string& model);
    void StoreDialup(const std::string& model);
    void PlugPort(std::shared_ptr<SimulatedDevice> device, const std::string& speed = "9600");
    void PlugHost(const std::string& host, int port, std::shared_ptr<SimulatedDevice> device);

    // The cable is pulled out. The program sees the port, or the connection, close.
    void Unplug();

    // How many pieces have gone out, over whichever link; to the sockets only what is sent counts.
    size_t Sent() const;
    size_t Boxes() const { return dialogs.shown.size() + dialogs.asked.size() + dialogs.choosers.size(); }

    // Closes the panel of the logger, as its Cancel button does.
    void ClosePanel();

    // What holds after each dialogue, however it ended.
    void ExpectReleased() const;
    // What holds besides unless the program has ended: every control can be used again, no progress window stands, and
    // `found.ini` holds what the program believes.
    void ExpectUsable();

    std::shared_ptr<CutDevice> far; // what was plugged last
    FakeAddDialog addDialog;
    FakeTerminal terminal;
    std::unique_ptr<JobForm> jobs;
};

// One dialogue of the program with a logger, a modem or a server.
struct Dialogue {
    const char* name;
    void (*prepare)(DeepBench&);
    void (*go)(DeepBench&);
    bool searches = false; // Stop is what ends it; elsewhere Cancel
};

std::vector<Dialogue> AllDialogues();

inline void PrintTo(const Dialogue& dialogue, std::ostream* out)
{
    *out << dialogue.name;
}

constexpr double LongestRestMs = 5.0 * 60 * 1000; // from whatever disturbs a dialogue to its end

} // namespace harvelop::test
