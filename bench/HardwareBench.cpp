// SPDX-License-Identifier: MIT
// How much time the hardware path takes beyond the waits that the protocol prescribes. The counter "ratio" is the
// time taken over the sum of the waits; at most 1.02 is wanted. Then what it takes without waiting, by the number
// of displays.
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

HardwareAccess oneMonitor()
{
    const FakeDisplay monitor{.identifier = "MONITOR", .route = {.service = std::make_shared<FakeDdcMonitor>()}};
    return {.routes = std::make_unique<FakeRoutes>(std::make_shared<FakeDisplays>(FakeDisplays{{1, monitor}}))};
}

DisplayInfo record(std::uint32_t displayID, const std::string& id)
{
    DisplayInfo display;
    display.id = id;
    display.displayID = displayID;
    return display;
}

/// What the system says of one of many monitors that differ in nothing but their connection.
PropertyDictionary identicalMonitor(const std::string& location)
{
    return {{"DisplayYearManufacture", 2021},  {"DisplayWeekManufacture", 10},
            {"DisplayVendorID", 0x10AC},       {"DisplayProductID", 0x411E},
            {"DisplayVerticalImageSize", 300}, {"DisplayHorizontalImageSize", 530},
            {"IODisplayLocation", location},   {"DisplayProductName", PropertyDictionary{{"en_US", "Studio"}}}};
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
    DisplayEndpoints endpoints(oneMonitor());
    measure(state, readWaits, [&] { endpoints.inspect({record(1, "MONITOR")}); });
}
BENCHMARK(probeOverWaits)->Unit(benchmark::kMillisecond)->Iterations(10);

void setAndVerifyOverWaits(benchmark::State& state)
{
    DisplayEndpoints endpoints(oneMonitor());
    endpoints.inspect({record(1, "MONITOR")});
    measure(state, writeWaits + settleWait + readWaits,
            [&] { benchmark::DoNotOptimize(endpoints.setBrightness(0.4, "MONITOR")); });
}
BENCHMARK(setAndVerifyOverWaits)->Unit(benchmark::kMillisecond)->Iterations(10);

/// Work that is not waiting, by the number of displays: the waits return at once.
void inspection(benchmark::State& state)
{
    const auto count = static_cast<std::uint32_t>(state.range(0));
    FakeDisplaySystem::Displays displays;
    std::vector<FakeEntry> entries;
    std::vector<DisplayInfo> records;
    for (std::uint32_t number = 1; number <= count; ++number) {
        const std::string path = "/framebuffer/" + std::to_string(number);
        displays.emplace(number, identicalMonitor(path));
        entries.push_back({"AppleCLCD2", {{"EDID UUID", "10AC1E41-0000-0000-0A1F-0104A5351E78"}}, path, nullptr});
        entries.push_back(
            {"DCPAVServiceProxy", {{"Location", "External"}}, path, std::make_shared<FakeDdcMonitor>()});
        records.push_back(record(number, path));
    }
    DisplayEndpoints endpoints(
        {.routes = std::make_unique<ServiceDiscovery>(std::make_unique<FakeRegistry>(std::move(entries)),
                                                      std::make_unique<FakeDisplaySystem>(std::move(displays))),
         .pause = [](std::chrono::microseconds) {}});
    for (auto each : state)
        benchmark::DoNotOptimize(endpoints.inspect(records));
    state.counters["per display"] =
        benchmark::Counter(count, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(inspection)->Arg(1)->Arg(3)->Arg(16)->Arg(64)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace lumenvale
