#include "util/SystemUtil.h"

#include "platform/foundation/NSDate.h"
#include "platform/foundation/NSString.h"

#include <benchmark/benchmark.h>

namespace
{

void drawTaskIdentifier(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(SystemUtil::getTaskId());
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(drawTaskIdentifier)->Threads(1)->Threads(2)->Threads(8)->UseRealTime();

void formatDate(benchmark::State& state)
{
    const Ref<NSDate> date = NSDate::date();
    const Ref<NSString> pattern = NSString::stringWithUTF8String("yyyy-MM-dd HH:mm:ss");
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(SystemUtil::DateToString_withFormat(date.get(), pattern.get()));
    }
}
BENCHMARK(formatDate);

void parseDate(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(SystemUtil::getPlistDateSeconds("2019-04-03 12:30:45"));
    }
}
BENCHMARK(parseDate);

void formatNow(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(SystemUtil::getNowDateTime());
    }
}
BENCHMARK(formatNow);

} // namespace
