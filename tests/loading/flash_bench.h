// Programs on their way to flash memory: the bench of loading with converters that are told what to make, and a trace
// that tells the waits too.
#pragma once

#include "loading/loading_bench.h"

#include <cmath>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace harvelop::test
{

// What a converter makes, and when.
struct Converter {
    std::string file; // in the application directory
    std::string text;
    double ms = 100; // from its start
};
using Converters = std::map<std::string, Converter>; // by path; what is not there can't be started

constexpr const char* FlashApp = "/app/";

// Gives the program an application directory with converters, and its logger the answers of both families.
inline std::shared_ptr<Converters> PrepareFlash(LoadingTest& t)
{
    t.heart.state.AppPath = FlashApp;
    const auto converters = std::make_shared<Converters>(Converters{
        {"/app/imgbuild.exe", {"temp.bin", "image"}},
        {"/app/objcopy.exe", {"temp.sre", "S0\n"}},
        {"/app/recnorm.exe", {"temp.sre", "S00600004844521B\r\nS206060000AA55\r\n"}},
    });
    t.desktop.start = [&t, converters](const FakeDesktop::Started& started) {
        const auto found = converters->find(started.path);
        if (found == converters->end())
            return false;
        t.pump.After(found->second.ms, [&t, made = found->second] { t.files.files[FlashApp + made.file] = made.text; });
        return true;
    };
    t.far->Answer(Bootstrap, "Bootstrap mode\r\n>\r\n", 0);
    t.far->Answer("EF 60000,1", "Erasing FLASH memory\r\nErase successful\r\n", 0);
    t.far->Answer("J", "Tallycore 200\r\nDone.\r\n", 0);
    t.far->Answer("RUNJOBONRESET\"WIND\"", "RUNJOBONRESET\"WIND\"\r\n", 0);
    t.far->Answer("FLASHONRESET", "FLASHONRESET\r\n", 0);
    return converters;
}

// How a box stands in the trace.
inline std::string Told(BoxIcon icon, const std::string& title, const std::string& text)
{
    const std::map<BoxIcon, const char*> signs = {{BoxIcon::None, "plain"},
                                                  {BoxIcon::Critical, "critical"},
                                                  {BoxIcon::Question, "question"},
                                                  {BoxIcon::Exclamation, "warning"},
                                                  {BoxIcon::Information, "information"}};
    return std::string("box ") + signs.at(icon) + " [" + title + "] " + text;
}

class TracedMessages : public FakeMessages
{
public:
    void SetCaption(const std::string& caption) override
    {
        onCaption(caption);
        FakeMessages::SetCaption(caption);
    }
    std::function<void(const std::string&)> onCaption;
};

// What happens from the moment on at which the logger has been identified is in `trace`, in order: captions of the
// progress window, lines that the logger got ("> "), programs started, boxes, and the waits between them. Queued lines
// leave in the next wait.
struct FlashTest : LoadingTest {
    static constexpr double FirstTimeout = 3000;
    const std::string BootstrapLine = std::string("> ") + Bootstrap;

    FlashTest()
    {
        window.onCaption = [this](const std::string& caption) { Note(caption); };
        heart.forms.loadMessages = [this] { return &window; };
        heart.link.DefaultTimeout = FirstTimeout;
        heart.connecting.IdentifyLogger = [this] {
            trace.clear();
            return heart.tables.Record(1)->LoggerModel;
        };
        far->whenLine = [this](const std::string& line) { Note("> " + line); };
        desktop.start = [this, start = desktop.start](const FakeDesktop::Started& started) {
            std::string step = "start " + started.path;
            for (const std::string& argument : started.arguments)
                step += " " + argument;
            Note(step + " in " + started.workingDirectory);
            return start(started);
        };
        whenBoxShows = [this](const Box& box) {
            EXPECT_FALSE(window.Visible()) << box.text;
            Note(Told(box.icon, box.title, box.text));
        };
        answer = [this](const Box& box) { return box.buttons == BoxButtons::YesNo ? reply : BoxAnswer::Ok; };
    }

    void UseOlder() { UseLogger("KR200 Series 3"); }
    void UseKR4(const std::string& version = "4.02")
    {
        UseLogger("KR40");
        heart.tables.Record(1)->LoggerVersion = version;
    }

    // Sends `program`, as if it had been chosen.
    void Load(const std::string& program)
    {
        StoreProgram(program);
        LoadChosen();
    }
    void LoadChosen()
    {
        dialogs.ExpectChooser(ProgramFile);
        heart.flashLoading.LoadFlashProgram();
        Note("end");
    }

    void Note(const std::string& step)
    {
        const long waited = std::lround(pump.NowMs() - m_lastMs);
        m_lastMs = pump.NowMs();
        if (waited > 0 && !trace.empty())
            trace.push_back("wait " + std::to_string(waited));
        trace.push_back(step);
    }
    // Those steps that begin so.
    std::vector<std::string> Traced(const std::string& beginning) const
    {
        std::vector<std::string> found;
        for (const std::string& step : trace)
            if (step.starts_with(beginning))
                found.push_back(step);
        return found;
    }
    std::vector<std::string> LinesSent() const { return Traced("> "); }
    std::vector<std::string> BoxesTold() const { return Traced("box "); }
    // The last steps.
    std::vector<std::string> TraceEnd(size_t count) const
    {
        const size_t first = trace.size() - std::min(count, trace.size());
        return {trace.begin() + static_cast<std::ptrdiff_t>(first), trace.end()};
    }
    bool Has(const std::string& file) const { return files.files.count(FlashApp + file) > 0; }

    std::vector<std::string> trace;
    TracedMessages window;
    BoxAnswer reply = BoxAnswer::Yes; // to questions
    std::shared_ptr<Converters> converters = PrepareFlash(*this);

private:
    double m_lastMs = 0;
};

} // namespace harvelop::test
