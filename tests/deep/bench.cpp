#include "deep/bench.h"

namespace harvelop::test
{

namespace
{

// The user picks the first job of the list, a moment after it has shown.
class PicksFirst : public JobForm
{
public:
    explicit PicksFirst(DeepBench& bench) : m_bench(bench) {}
    void Show(const std::vector<std::string>& jobs) override
    {
        constexpr double AnswerMs = 300;
        m_visible = true;
        m_bench.pump.After(AnswerMs, [this, job = jobs.empty() ? std::string() : PlainJobName(jobs.front())] {
            m_bench.heart.loading.ChosenJob = job;
            m_bench.heart.loading.JobDeleteConfirmed = true;
            m_visible = false;
        });
    }
    bool IsVisible() const override { return m_visible; }

private:
    DeepBench& m_bench;
    bool m_visible = false;
};

BoxAnswer agreed(const Box& box)
{
    return box.buttons == BoxButtons::YesNo ? BoxAnswer::Yes : BoxAnswer::Ok;
}

// What the converters of flash programs make, a moment after their start.
bool convert(DeepBench& bench, const FakeDesktop::Started& started)
{
    constexpr double WorkMs = 100;
    const std::string image = "S00600004844521B\r\nS206060000AA55FA\r\nS9030000FC\r\n";
    const bool binary = started.path.ends_with("imgbuild.exe");
    bench.pump.After(WorkMs, [&bench, file = bench.heart.state.AppPath + (binary ? "temp.bin" : "temp.sre"), image] {
        bench.files.files[file] = image;
    });
    return true;
}

} // namespace

DeepBench::DeepBench() : jobs(std::make_unique<PicksFirst>(*this))
{
    heart.forms.loadJobs = [this] { return jobs.get(); };
    heart.options.ShowMessages = heart.options.ShowLoadMessages = true;
    heart.options.ModemTimeout = "45";
    heart.link.DefaultTimeout = 5000;
    files.files[ProgramFile] = "BEGIN\"WIND\"\r\nRA1S 1V\r\n\r\nEND\r\n";
    desktop.start = [this](const FakeDesktop::Started& started) { return convert(*this, started); };
    dialogs.whileShown = [this, boxes = size_t(0), choosers = size_t(0)]() mutable {
        if (dialogs.shown.size() > boxes)
            dialogs.Expect(agreed(dialogs.shown.back()));
        else if (dialogs.choosers.size() > choosers)
            dialogs.ExpectChooser(ProgramFile);
        else
            dialogs.ExpectPassword("");
        boxes = dialogs.shown.size();
        choosers = dialogs.choosers.size();
    };
    // As the programs do: what is still queued does not leave any more.
    heart.end.OnEnd = [this] { serial.ClearOutBuffer(); };
}

void DeepBench::StoreSerial(const std::string& model)
{
    LoggerRecord record = SerialRecord(model, std::to_string(Port));
    record.LoggerParity = "None";
    record.LoggerDataBits = "8";
    record.LoggerStopBits = "1";
    record.LoggerFlow = "SWFC";
    StoreAndList(1, record);
    View();
}

void DeepBench::StoreNetwork(const std::string& model)
{
    LoggerRecord record;
    record.LoggerModel = model;
    record.LoggerPort = std::string(Host) + ":" + std::to_string(HostPort);
    StoreAndList(1, record);
    heart.records.ParseLoggerSettings(1);
    View();
}

void DeepBench::StoreDialup(const std::string& model)
{
    LoggerRecord record;
    record.LoggerModel = model;
    record.LoggerPort = std::to_string(Port);
    record.LoggerBaud = "5551234"; // the number to call, for a logger behind a modem
    record.LoggerParity = "at&f";
    record.LoggerDataBits = "9600";
    StoreAndList(1, record);
    heart.records.ParseLoggerSettings(1);
    View();
}

void DeepBench::PlugPort(std::shared_ptr<SimulatedDevice> device, const std::string& speed)
{
    far = std::make_shared<CutDevice>(std::move(device));
    far->whenCut = [this] { pump.After(0, [this] { Unplug(); }); };
    serial.Plug(Port, far, speed);
}

void DeepBench::PlugHost(const std::string& host, int port, std::shared_ptr<SimulatedDevice> device)
{
    far = std::make_shared<CutDevice>(std::move(device));
    far->whenCut = [this] { pump.After(0, [this] { Unplug(); }); };
    sockets.Plug(host, port, far);
}

void DeepBench::Unplug()
{
    serial.ports.erase(Port);
    if (serial.CommPort() == Port)
        serial.Close();
    sockets.places.clear();
    if (!sockets.made.empty() && sockets.made.back())
        sockets.made.back()->PeerCloses();
}

size_t DeepBench::Sent() const
{
    const auto port = std::ranges::count_if(
        serial.events, [](const FakeSerial::Event& event) { return event.kind == FakeSerial::Event::Kind::Sent; });
    const auto network = std::ranges::count_if(
        sockets.steps, [](const std::string& step) { return step.find(" send ") != std::string::npos; });
    return static_cast<size_t>(port + network);
}

void DeepBench::ClosePanel()
{
    if (LoggerPanel* panel = heart.panels.At(1))
        panel->Unload();
}

void DeepBench::ExpectReleased() const
{
    EXPECT_FALSE(serial.PortOpen());
    EXPECT_EQ(heart.link.LinkMode, "None");
    for (const auto* socket : sockets.made)
        EXPECT_TRUE(!socket || socket->State() == SocketControl::Condition::Closed);
    EXPECT_FALSE(heart.loggerControls.Working());
    EXPECT_FALSE(heart.state.SearchRunning);
}

void DeepBench::ExpectUsable()
{
    if (heart.end.Ended())
        return;
    EXPECT_FALSE(messages.Visible());
    for (const auto& panel : made)
        for (const char* button : {"cmdOk", "cmdCancel", "cmdProgram", "cmdProgramClear"})
            EXPECT_FALSE(panel->visible && panel->disabled.contains(button)) << button;
    for (int number = 1; number <= MaxLoggers; ++number)
        heart.panels.Unload(number); // the last one that closes gives the options panel back
    std::map<std::string, bool> enabled;
    for (const auto& [control, on] : optionsForm.changes)
        enabled[control] = on;
    for (const auto& [control, on] : enabled)
        EXPECT_TRUE(on) << control;
    EXPECT_TRUE(optionsForm.formEnabled);

    TestProgram again;
    again.files.files = files.files;
    again.heart.state.AppPath = heart.state.AppPath;
    again.heart.records.LoadFoundLoggers();
    EXPECT_EQ(again.heart.tables.FoundLoggerStrings, heart.tables.FoundLoggerStrings);
}

} // namespace harvelop::test
