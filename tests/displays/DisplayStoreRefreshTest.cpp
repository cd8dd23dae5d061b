// SPDX-License-Identifier: MIT
#include "support/StoreFixture.h"

namespace lumenvale {
namespace {

using namespace std::chrono_literals;
using Ids = std::vector<std::string>;

struct DisplayStoreRefresh : StoreFixture {};

TEST_F(DisplayStoreRefresh, PublishesTheConnectedDisplaysInTheSavedOrderAndNewOnesLast)
{
    defaults.set("displayOrder", PropertyArray{"B", "X", 7, "A", "B"});
    store = std::make_unique<DisplayStore>(hardware, defaults, screens, events, clock);
    plug("N");
    plug("A");
    plug("B", {.method = ControlMethod::unavailable});
    screens.list.emplace_back(); // a screen without a display number

    store->requestRefresh();
    EXPECT_TRUE(store->isRefreshing.get());
    EXPECT_EQ(hardware.log, (Ids{"inspect N A B"}));
    EXPECT_TRUE(shownIDs().empty());
    hardware.answer();

    EXPECT_EQ(shownIDs(), (Ids{"B", "A", "N"}));
    EXPECT_EQ(savedOrder(), (Ids{"B", "X", "A", "N"}));
    EXPECT_FALSE(store->isRefreshing.get());
    EXPECT_EQ(store->lastRefresh.get(), clock.wallTime());
    EXPECT_EQ(shown("B").status, "No control.");
}

TEST_F(DisplayStoreRefresh, FollowsScreenChangesAfter700AndAWakeAfter1500Milliseconds)
{
    events.send(SystemEvent::screensDidSleep);
    events.send(SystemEvent::screensDidWake);
    events.send(SystemEvent::systemWillSleep);
    EXPECT_FALSE(store->isRefreshing.get());

    events.send(SystemEvent::screenParametersChanged);
    clock.advance(699ms);
    events.send(SystemEvent::screenParametersChanged); // begins the delay anew
    clock.advance(699ms);
    EXPECT_TRUE(hardware.log.empty());
    clock.advance(1ms);
    EXPECT_EQ(hardware.log.size(), 1u);
    hardware.answerAll();

    events.send(SystemEvent::systemDidWake);
    clock.advance(1499ms);
    EXPECT_EQ(hardware.log.size(), 1u);
    clock.advance(1ms);
    EXPECT_EQ(hardware.log.size(), 2u);
}

TEST_F(DisplayStoreRefresh, AMoveIsSavedAtOnceAndHoldsAgainstARefreshUnderWay)
{
    for (const char* id : {"A", "X", "B", "C"})
        plug(id);
    refresh();
    unplug("X");
    refresh();

    store->requestRefresh();
    store->moveDisplays({2}, 0);
    EXPECT_EQ(shownIDs(), (Ids{"C", "A", "B"}));
    EXPECT_EQ(savedOrder(), (Ids{"C", "X", "A", "B"}));
    hardware.answerAll();
    EXPECT_EQ(shownIDs(), (Ids{"C", "A", "B"}));
}

TEST_F(DisplayStoreRefresh, AnObserverMayAskForTheNextRefreshWhileOneIsPublished)
{
    plug("A");
    bool asked = false;
    const Subscription subscription = store->displays.subscribe([&](const auto&) {
        if (!std::exchange(asked, true))
            store->requestRefresh(100ms);
    });
    refresh();
    EXPECT_EQ(shownIDs(), (Ids{"A"}));
    EXPECT_TRUE(store->isRefreshing.get());
    EXPECT_EQ(store->lastRefresh.get(), std::nullopt);
    clock.advance(100ms);
    hardware.answerAll();
    EXPECT_FALSE(store->isRefreshing.get());
}

} // namespace
} // namespace lumenvale
