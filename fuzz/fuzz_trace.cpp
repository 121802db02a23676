// Any bytes as a trace: reading must not fail, and a device that replays it must bear any line. Any bytes on a traced
// link: what is written is a trace, and holds no password.
#include "hold.h"
#include "simulator/replay_device.h"
#include "trace/trace_file.h"
#include "trace/trace_mask.h"

#include <algorithm>
#include <string>

using namespace harvelop;

namespace
{

void replay(const std::string& text)
{
    RecordedTrace trace = ReadTrace(text);
    fuzz::Hold(trace.errors.size() <= 10, "no more than ten errors");
    for (RecordedLine& line : trace.lines) {
        std::string heard;
        for (const RecordedStep& step : line.steps)
            if (step.kind == RecordedStep::Kind::Heard)
                heard += step.text + (step.isHidden ? "any\r" : "");
        for (const auto openings : {ReplayDevice::Openings::Exact, ReplayDevice::Openings::Vague}) {
            ReplayDevice device(line, openings, ReplayDevice::Pace::AsRecorded);
            device.Opened(0);
            device.Receive(1, heard);
            device.Opened(2);
            device.Receive(3, std::string_view(text).substr(0, 2000));
            device.Transmit(1e12);
            fuzz::Hold(!device.OnLine() || device.NextDueMs() == SimulatedDevice::Never, "all is said in the end");
        }
    }
}

// Every second piece goes the other way.
void trace(const std::string& text)
{
    constexpr size_t Piece = 7;
    constexpr std::string_view Secret = "sesame";
    TraceSecrets secrets;
    secrets.Learn(Secret);
    TraceMask mask(secrets);
    TraceFormat format;
    std::string written = "# harvelop trace 1, fuzz\n00:00:00.000 tcp1 open \"a:1\"\n";
    std::string shown[2];
    mask.Write = [&](const TraceEntry& entry) {
        written += format.Line(entry);
        for (size_t i = 0; i < entry.text.size(); ++i)
            shown[entry.IsSent()] += entry.hidden[i] == SecretFilter::Shown ? entry.text[i] : '*';
    };
    mask.Opened(PasswordWatch::Line::ComPort);
    bool sent = false;
    for (size_t at = 0; at < text.size(); at += Piece, sent = !sent)
        mask.Take({static_cast<double>(at) / 100, "tcp1", sent ? "out" : "in", text.substr(at, Piece)});
    mask.Flush();
    fuzz::Hold(shown[0].size() + shown[1].size() == text.size(), "nothing is lost");
    for (const std::string& way : shown)
        fuzz::Hold(way.find(Secret) == std::string::npos, "no password is shown");
    fuzz::Hold(ReadTrace(written).errors.empty(), "what is written can be read");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    replay(text);
    replay("# harvelop trace 1\n10:00:00.000 com3 open \"9600,N,8,1\" 0 \"\"\n" + text);
    trace(text);
    return 0;
}
