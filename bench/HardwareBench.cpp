// SPDX-License-Identifier: MIT
// How much time the hardware path takes beyond the waits that the protocol prescribes. The counter "ratio" is the
// time taken over the sum of the waits; at most 1.02 is wanted.
#include "hardware/DdcExchange.h"
#include "hardware/DisplayEndpoints.h"
#include "support/FakeHardwareAccess.h"

#include <benchmark/benchmark.h>

namespace lumenvale {
namespace {

using namespace std::chrono_literals;

constexpr auto readWaits = 10ms + 10ms + 50ms;
constexpr auto writeWaits = 10ms + 10ms;
constexpr auto settleWait = 80ms;

/// Runs `work` once an iteration and reports its time over `waits`.
template <typename Work>
void measure(benchmark::State& state, std::chrono::microseconds waits, Work work)
{
    std::chrono::duration<double> total{};
    for (auto each : state) {
        const auto begin = std::chrono::steady_clock::now();
        work();
        total += std::chrono::steady_clock::now() - begin;
    }
    const std::chrono::duration<double> prescribed = waits;
    state.counters["ratio"] = total / (prescribed * static_cast<double>(state.iterations()));
}

HardwareAccess oneMonitor(const std::shared_ptr<FakeDdcMonitor>& monitor)
{
    const auto displays = std::make_shared<FakeDisplaySystem::Displays>();
    (*displays)[1] = {.uuid = "MONITOR", .information = PropertyDictionary{{"IODisplayLocation", "/one"}}};
    std::vector<FakeEntry> entries = {{"AppleCLCD2", {}, "/one", nullptr},
                                      {"DCPAVServiceProxy", {{"Location", "External"}}, "", monitor}};
    return {.registry = std::make_unique<FakeRegistry>(std::move(entries)),
            .displaySystem = std::make_unique<FakeDisplaySystem>(displays)};
}

DisplayInfo record()
{
    DisplayInfo display;
    display.id = "MONITOR";
    display.displayID = 1;
    return display;
}

void exchangeOverWaits(benchmark::State& state)
{
    FakeDdcMonitor monitor;
    const Pause pause = blockingPause();
    measure(state, readWaits, [&] { readVcp(&monitor, luminanceVcpCode, {}, pause); });
}
BENCHMARK(exchangeOverWaits)->Unit(benchmark::kMillisecond)->Iterations(10);

void probeOverWaits(benchmark::State& state)
{
    DisplayEndpoints endpoints(oneMonitor(std::make_shared<FakeDdcMonitor>()));
    measure(state, readWaits, [&] { endpoints.inspect({record()}, {}); });
}
BENCHMARK(probeOverWaits)->Unit(benchmark::kMillisecond)->Iterations(10);

void setAndVerifyOverWaits(benchmark::State& state)
{
    DisplayEndpoints endpoints(oneMonitor(std::make_shared<FakeDdcMonitor>()));
    endpoints.inspect({record()}, {});
    measure(state, writeWaits + settleWait + readWaits,
            [&] { benchmark::DoNotOptimize(endpoints.setBrightness(0.4, "MONITOR")); });
}
BENCHMARK(setAndVerifyOverWaits)->Unit(benchmark::kMillisecond)->Iterations(10);

} // namespace
} // namespace lumenvale
