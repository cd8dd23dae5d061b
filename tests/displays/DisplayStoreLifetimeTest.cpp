// SPDX-License-Identifier: MIT
// What is left when the store goes away in the middle of its work; the sanitizers watch.
#include "support/StoreFixture.h"

namespace lumenvale {
namespace {

using namespace std::chrono_literals;

struct DisplayStoreLifetime : StoreFixture {
    std::vector<std::function<void()>> script()
    {
        return {
            [this] { store->startMonitoring(); },
            [this] { store->requestRefresh(100ms); },
            [this] { clock.advance(100ms); },
            [this] { hardware.answer(); },
            [this] { clock.advance(750ms); },
            [this] { hardware.answerAll(); },
            [this] { store->setBrightness("A", 0.1); },
            [this] { waits.emplace_back(store->pendingWritesFinished()).start(); },
            [this] { clock.advance(90ms); },
            [this] { store->setBrightness("A", 0.2); },
            [this] {
                store->apply({{"A", 0.3}, {"B", 0.4}, {"C", 0.5}});
            },
            [this] { hardware.answer(); },
            [this] { store->setBrightness("B", 0.6); },
            [this] { hardware.answer(); },
            [this] { events.send(SystemEvent::screenParametersChanged); },
            [this] { store->requestRefresh(); },
            [this] { store->setBrightness("C", 0.7); },
            [this] { hardware.answer(); },
            [this] { hardware.answerAll(); },
            [this] { clock.advance(90ms); },
            [this] { hardware.answerAll(); },
        };
    }

    std::vector<Task<>> waits;
};

TEST_F(DisplayStoreLifetime, DestroyedAfterAnyStepItLeavesNoTimerAndHearsNoAnswer)
{
    const std::size_t steps = script().size();
    for (std::size_t end = 0; end <= steps; ++end) {
        SCOPED_TRACE(end);
        for (const char* id : {"A", "B", "C"})
            plug(id, {.method = *id == 'A' ? ControlMethod::apple : ControlMethod::ddc});
        const auto todo = script();
        for (std::size_t step = 0; step < end; ++step)
            todo[step]();
        waits.clear();
        store.reset();
        EXPECT_EQ(clock.pendingCount(), 0u);
        hardware.answerAll();
        for (const auto event : {SystemEvent::systemDidWake, SystemEvent::screenParametersChanged})
            events.send(event);
        clock.advance(10s);
        EXPECT_TRUE(hardware.waiting().empty());
        for (const char* id : {"A", "B", "C"})
            unplug(id);
        store = std::make_unique<DisplayStore>(hardware, defaults, screens, events, clock);
    }
}

TEST_F(DisplayStoreLifetime, EveryOperationMayBeCalledFromTheMonitoringReport)
{
    plug("A", {.method = ControlMethod::apple});
    plug("B");
    refresh();
    int reports = 0;
    store->brightnessObserved = [&](const std::vector<DisplayInfo>&) {
        ++reports;
        store->setBrightness("A", 0.3);
        store->apply({{"B", 0.4}});
        store->moveDisplays({1}, 0);
        store->requestRefresh(50ms);
        store->startMonitoring();
    };
    store->startMonitoring();
    hardware.monitors["A"].brightness = 0.1;
    clock.advance(750ms);
    hardware.answerAll();
    clock.advance(50ms);
    hardware.answerAll();
    EXPECT_EQ(reports, 1);
    EXPECT_EQ(shownIDs(), (std::vector<std::string>{"B", "A"}));
    EXPECT_EQ(shown("A").brightness, 0.1) << "the refresh dropped the request";
    EXPECT_EQ(shown("B").brightness, 0.4) << "the batch goes on";
    EXPECT_EQ(clock.pendingCount(), 1u) << "one monitoring loop";
}

} // namespace
} // namespace lumenvale
