#include "basic/bas_user_defaults.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <string>

namespace
{

std::string path()
{
    return (std::filesystem::temp_directory_path() / "tessaline-bench-settings.json").string();
}

std::string keyOf(std::int64_t member)
{
    return "color_" + std::to_string(member);
}

/// A store of so many colour settings, saved in a file that goes with it.
struct Settings {
    explicit Settings(std::int64_t members)
    {
        for (std::int64_t i = 0; i < members; ++i) {
            store.SetString(keyOf(i).c_str(), "32,186,234");
        }
        store.WriteAll();
    }
    ~Settings() { std::filesystem::remove(path()); }
    Settings(const Settings&) = delete;
    Settings& operator=(const Settings&) = delete;

    BASUserDefaults store{"bench", path().c_str(), nullptr};
};

void load(benchmark::State& state)
{
    const Settings settings(state.range(0));
    for ([[maybe_unused]] auto _ : state) {
        const BASUserDefaults store("bench", path().c_str(), nullptr);
        benchmark::DoNotOptimize(store.IsOk());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(load)->Range(16, 65536);

void save(benchmark::State& state)
{
    const Settings settings(state.range(0));
    for ([[maybe_unused]] auto _ : state) {
        settings.store.WriteAll();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(save)->Range(16, 65536);

void readLastColour(benchmark::State& state)
{
    const Settings settings(state.range(0));
    const std::string last = keyOf(state.range(0) - 1);
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(settings.store.GetRGB(last.c_str()));
    }
}
BENCHMARK(readLastColour)->Range(16, 4096);

} // namespace
