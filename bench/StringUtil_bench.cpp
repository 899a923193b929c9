#include "util/StringUtil.h"

#include <benchmark/benchmark.h>

namespace
{

void splitText(benchmark::State& state)
{
    std::string text;
    for (std::int64_t piece = 1; piece < state.range(0); ++piece) {
        text += "contact,";
    }
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(StringUtil::split_withPattern(text, ","));
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(splitText)->Arg(10)->Arg(100'000);

void matchPattern(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(StringUtil::IsMatch_withPattern("2019-04-03", "[0-9]+-[0-9]+-[0-9]+"));
    }
}
BENCHMARK(matchPattern)->UseRealTime();

void compareVersions(benchmark::State& state)
{
    const char* first = "10.2.14.3";
    const char* second = "10.2.14.12";
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(first);
        benchmark::DoNotOptimize(StringUtil::CompareVersion_withSecond(first, second));
    }
}
BENCHMARK(compareVersions);

} // namespace
