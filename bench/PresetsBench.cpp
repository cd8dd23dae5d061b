// SPDX-License-Identifier: MIT
// Loading and saving presets, and applying one to many displays. The counter "per preset" (or "per display") is
// the time for each of them: it has to stay level from row to row.
#include "base/MemoryUserDefaults.h"
#include "displays/DisplayStore.h"
#include "presets/PresetEditor.h"
#include "support/FakeDisplayHardware.h"
#include "support/FakeScreenSource.h"
#include "support/ManualClock.h"

#include <benchmark/benchmark.h>
#include <string>

namespace lumenvale {
namespace {

constexpr std::size_t levelsPerPreset = 3;

void fill(MemoryUserDefaults& defaults, std::size_t count)
{
    std::vector<BrightnessPreset> presets;
    for (std::size_t i = 0; i < count; ++i) {
        BrightnessPreset& preset = presets.emplace_back();
        preset.id = Uuid::random();
        preset.name = "Preset " + std::to_string(i);
        preset.shortcut.emplace().recordedKeyCode = static_cast<std::uint32_t>(i);
        for (std::size_t j = 0; j < levelsPerPreset; ++j) {
            const std::string id = Uuid::random().toString();
            preset.values[id] = static_cast<double>(i % 101) / 100;
            preset.displayNames[id] = "Studio 27";
        }
    }
    defaults.set("brightnessPresets", *encodePresets(presets));
}

void countEach(benchmark::State& state, const char* name)
{
    using Counter = benchmark::Counter;
    state.counters[name] =
        Counter(static_cast<double>(state.range(0)), Counter::kIsIterationInvariantRate | Counter::kInvert);
    state.SetComplexityN(state.range(0));
}

void loadPresets(benchmark::State& state)
{
    MemoryUserDefaults defaults;
    fill(defaults, static_cast<std::size_t>(state.range(0)));
    for (auto each : state) {
        PresetStore store(defaults);
        benchmark::DoNotOptimize(store.presets->data());
    }
    countEach(state, "per preset");
}
BENCHMARK(loadPresets)->Arg(10)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond)->Complexity();

/// One change of one preset, which stores them all.
void savePresets(benchmark::State& state)
{
    MemoryUserDefaults defaults;
    fill(defaults, static_cast<std::size_t>(state.range(0)));
    PresetStore store(defaults);
    const Uuid last = store.presets->back().id;
    for (auto each : state)
        store.rename(last, "Evening");
    countEach(state, "per preset");
}
BENCHMARK(savePresets)->Arg(10)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond)->Complexity();

/// From the request to the last write, with hardware that answers at once, and the check that follows.
void applyPreset(benchmark::State& state)
{
    ManualClock clock;
    MemoryUserDefaults defaults;
    FakeScreenSource screens;
    FakeSystemEvents events;
    FakeDisplayHardware hardware;
    hardware.holdsAnswers = false;
    std::map<std::string, double> levels;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        const std::string id = Uuid::random().toString();
        screens.connect(id, static_cast<std::uint32_t>(i + 1));
        hardware.monitors[id] = {};
        levels[id] = 0.25;
    }
    DisplayStore displays(hardware, defaults, screens, events, clock);
    displays.requestRefresh();
    PresetStore store(defaults);
    const Uuid preset = store.addPreset(levels, {}).id;
    PresetEditor editor(displays, store, defaults);
    for (auto each : state) {
        editor.activate(preset);
        hardware.log.clear();
        hardware.writes.clear();
    }
    countEach(state, "per display");
}
BENCHMARK(applyPreset)->Arg(1)->Arg(8)->Arg(64)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace lumenvale
