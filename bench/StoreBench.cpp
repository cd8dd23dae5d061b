// SPDX-License-Identifier: MIT
// What the display store costs the main thread: a request while a slider is dragged, a whole drag with the writes
// that it makes, and a refresh. The hardware answers at once or in the drag's own time.
#include "base/MemoryUserDefaults.h"
#include "displays/DisplayStore.h"
#include "support/FakeDisplayHardware.h"
#include "support/FakeScreenSource.h"
#include "support/ManualClock.h"

#include <benchmark/benchmark.h>
#include <string>

namespace lumenvale {
namespace {

using namespace std::chrono_literals;

constexpr auto pointerInterval = 8ms; // 125 reports a second
constexpr auto writeDuration = 200ms; // a DDC/CI write and its verification

struct World {
    explicit World(std::int64_t displayCount)
    {
        for (std::int64_t number = 1; number <= displayCount; ++number) {
            const std::string id = "37D8832A-2D66-02CA-B9F7-8F30A301B" + std::to_string(1000 + number);
            screens.connect(id, static_cast<std::uint32_t>(number)).name = "A monitor of some length";
            hardware.monitors[id] = {};
            last = id;
        }
        hardware.holdsAnswers = false;
        store.requestRefresh();
    }

    std::string last;
    ManualClock clock;
    MemoryUserDefaults defaults;
    FakeScreenSource screens;
    FakeSystemEvents events;
    FakeDisplayHardware hardware;
    DisplayStore store{hardware, defaults, screens, events, clock};
    Subscription view = store.displays.subscribe([](const auto& list) { benchmark::DoNotOptimize(list.data()); });
};

/// One `setBrightness` in the middle of a drag; the argument is the number of displays.
void requestBrightness(benchmark::State& state)
{
    World world(state.range(0));
    int request = 0;
    for (auto each : state)
        world.store.setBrightness(world.last, (request++ % 101) / 100.0);
}
BENCHMARK(requestBrightness)->Arg(1)->Arg(8)->Arg(64)->Unit(benchmark::kMicrosecond);

/// A drag of 1,000 requests on one of 64 displays, with a clock, a slow monitor and the monitoring loop.
void dragSlider(benchmark::State& state)
{
    constexpr int requests = 1000;
    World world(64);
    world.hardware.holdsAnswers = true;
    world.store.startMonitoring();
    for (auto each : state) {
        world.hardware.writes.clear();
        world.hardware.log.clear();
        auto answerDue = world.clock.now();
        for (int request = 0; request < requests; ++request) {
            world.store.setBrightness(world.last, (request % 101) / 100.0);
            const bool wasIdle = world.hardware.waitingCount() == 0;
            world.clock.advance(pointerInterval);
            if (wasIdle && world.hardware.waitingCount() > 0)
                answerDue = world.clock.now() + writeDuration;
            else if (!wasIdle && world.clock.now() >= answerDue)
                world.hardware.answer();
        }
        world.clock.advance(1s);
        world.hardware.answerAll();
    }
    const auto writes = static_cast<double>(world.hardware.writes.size());
    state.counters["requests per write"] = requests / writes;
}
BENCHMARK(dragSlider)->Unit(benchmark::kMillisecond);

/// From the request to the published list, with hardware that answers at once.
void refreshDisplays(benchmark::State& state)
{
    World world(state.range(0));
    for (auto each : state) {
        world.store.requestRefresh();
        world.hardware.log.clear();
    }
    using Counter = benchmark::Counter;
    state.counters["per display"] =
        Counter(static_cast<double>(state.range(0)), Counter::kIsIterationInvariantRate | Counter::kInvert);
    state.SetComplexityN(state.range(0));
}
BENCHMARK(refreshDisplays)->RangeMultiplier(2)->Range(1, 64)->Unit(benchmark::kMicrosecond)->Complexity();

} // namespace
} // namespace lumenvale
