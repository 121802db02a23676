// What it costs to look for a reply in a text that arrives in small pieces and never holds one.
#include "links/response_scan.h"

#include <algorithm>
#include <benchmark/benchmark.h>

using namespace harvelop;

namespace
{

constexpr size_t Piece = 64;

std::string repeated(std::string_view part, size_t size)
{
    std::string text;
    while (text.size() < size)
        text += part;
    text.resize(size);
    return text;
}

void scan(benchmark::State& state, const Markers& markers, std::string_view part)
{
    const std::string text = repeated(part, static_cast<size_t>(state.range(0)));
    for (auto _ : state) {
        ReceiveWindow window;
        ResponseScan responseScan(markers);
        for (size_t at = 0; at < text.size(); at += Piece) {
            window.Append(std::string_view(text).substr(at, Piece));
            benchmark::DoNotOptimize(responseScan.Scan(window));
        }
        if (window.Text().size() != text.size())
            state.SkipWithError("the window lost text");
    }
}

// The marker never begins.
BENCHMARK_CAPTURE(scan, Ordinary, Markers{"T,", 1, "\r", 1}, "21.75 degC 1013.2 hPa 58 %RH ; ")->Arg(32750)->Arg(65500);
// Each line is the marker but for its last character.
BENCHMARK_CAPTURE(scan, NearMisses, Markers{"tallyCore 40 Version ", 1, "\r", 1}, "tallyCore 40 Version_")
    ->Arg(32750)
    ->Arg(65500);
// Every position begins the marker and none completes it.
BENCHMARK_CAPTURE(scan, RepeatedCharacter, Markers{"<<<<<<<<<<<<<<<<<<<<<<<<<<<<<<<>", 1, "\r", 1}, "<")
    ->Arg(32750)
    ->Arg(65500);
// The start is there over and over, the end almost.
BENCHMARK_CAPTURE(scan, EndNeverComes, Markers{"T,", 1, "Accepted\r", 1}, "T,Accepted")->Arg(32750)->Arg(65500);

} // namespace
