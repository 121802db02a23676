// Any bytes as a program file and as what a converter has made of one: cleaning keeps its promises, sending ends.
// The same bytes as lines for the simulated logger's monitor, which takes no record that is wrong.
#include "core/text_lines.h"
#include "fuzz_program.h"
#include "identify/panel_work.h"
#include "loading/program_cleaner.h"
#include "loading/program_load.h"
#include "simulator/bootstrap_monitor.h"

using namespace harvelop;

namespace
{

constexpr size_t LongestSent = 2000; // each line waits for its answer

void checkCleaner(const std::string& text)
{
    std::int16_t before = 0;
    const auto clean = CleanProgram(text, before);
    const auto bytes = ProgramFileBytes(text);
    fuzz::Hold(!bytes || *bytes >= 0, "a size is a size");
    if (!clean)
        return;
    fuzz::Hold(before >= 0, "no size runs over");
    LineReader lines(*clean);
    std::string_view line;
    while (lines.Next(line))
        fuzz::Hold(line.find('\r') == std::string_view::npos, "a line is one line");
    fuzz::Hold(clean->empty() || clean->ends_with("\r\n"), "each line has its end");
}

void checkMonitor(const std::string& text)
{
    BootstrapMonitor monitor{LoggerConfig()};
    std::string flash;
    LineReader lines(text);
    std::string_view line;
    while (lines.Next(line))
        monitor.Take(std::string(line), flash);
    fuzz::Hold(flash.size() <= BootstrapMonitor::AreaSize, "flash memory has its size");
}

void send(const std::string& text, const char* model, const std::function<void()> LoggerActions::*action)
{
    fuzz::FuzzProgram t;
    t.files.files[fuzz::FuzzProgram::ProgramFile] = text;
    t.files.files[std::string(fuzz::FuzzProgram::Directory) + "temp.sre"] = text;
    t.PlugPort("");
    t.Store(model);
    t.heart.connecting.IdentifyLogger = [&] { return std::string(model); };
    RunOnLogger(t.heart.panelServices(), 1, t.heart.actions.*action);
    t.HoldReleased();
    fuzz::Hold(t.files.files[fuzz::FuzzProgram::ProgramFile] == text, "the user's file stands");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    checkCleaner(text);
    checkMonitor(text);
    checkMonitor("EF 60000,1\n" + text);
    if (size > LongestSent)
        return 0;
    for (const char* model : {"KR200 Series 3", "KR400"}) {
        send(text, model, &LoggerActions::LoadProgram);
        send(text, model, &LoggerActions::LoadFlashProgram);
    }
    return 0;
}
