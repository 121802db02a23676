// What it costs to clean a program for flash memory, and to encode a login.
#include "loading/program_cleaner.h"
#include "servers/base64.h"

#include <benchmark/benchmark.h>

using namespace harvelop;

namespace
{

std::string repeated(std::string_view part, size_t size)
{
    std::string text;
    while (text.size() < size)
        text += part;
    text.resize(size);
    return text;
}

// A line of each kind, and no more than the cleaner may count.
void clean(benchmark::State& state)
{
    const std::string program =
        repeated("RA10S/u 1V(\"Wind speed, m/s\")'of the mast\r\n  2..4TK abcdef=1CV 'air\r\n\\remark\r\n",
                 static_cast<size_t>(state.range(0)));
    for (auto _ : state) {
        std::int16_t size = 0;
        benchmark::DoNotOptimize(CleanProgram(program, size));
        if (size == 0)
            state.SkipWithError("nothing was cleaned");
    }
}
BENCHMARK(clean)->Arg(16383)->Arg(32767);

void encode(benchmark::State& state)
{
    const std::string text = repeated("user@example.com", static_cast<size_t>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(EncodeBase64(text));
}
BENCHMARK(encode)->Arg(127)->Arg(255);

} // namespace
