// SPDX-License-Identifier: MIT
// Discovery, order and refresh. Writing is in DisplayStoreWrites.cpp, reading in DisplayStoreMonitoring.cpp.
#include "displays/DisplayStore.h"

#include "displays/DisplayOrder.h"

#include <algorithm>
#include <utility>

namespace lumenvale {

using namespace std::chrono_literals;

namespace {

constexpr char displayOrderKey[] = "displayOrder";
constexpr auto screenChangeDelay = 700ms; // screens come and go in several steps
constexpr auto wakeDelay = 1500ms;        // monitors take their time to answer again

std::vector<std::string> loadOrder(const UserDefaults& defaults)
{
    const auto saved = readDefault<PropertyArray>(defaults, displayOrderKey).value_or(PropertyArray{});
    std::vector<std::string> order;
    for (const PropertyValue& each : saved) {
        if (const auto* id = each.as<std::string>())
            order.push_back(*id);
    }
    return mergedOrder(order, {});
}

std::vector<DisplayInfo> connectedDisplays(ScreenSource& screens)
{
    std::vector<DisplayInfo> found;
    for (const Screen& screen : screens.screens()) {
        if (std::optional<DisplayInfo> made = makeDisplayInfo(screen))
            found.push_back(std::move(*made));
    }
    return found;
}

} // namespace

DisplayStore::DisplayStore(DisplayHardwareControlling& controller, UserDefaults& preferences, ScreenSource& source,
                           SystemEvents& events, Clock& time)
    : hardware(controller), defaults(preferences), screens(source), clock(time),
      savedOrder(loadOrder(preferences)),
      observers(events.subscribe([this](SystemEvent event) { receive(event); }))
{
}

DisplayStore::~DisplayStore() = default;

void DisplayStore::receive(SystemEvent event)
{
    switch (event) {
    case SystemEvent::screensDidSleep:
    case SystemEvent::systemWillSleep:
        monitoringPaused = true;
        break;
    case SystemEvent::screensDidWake:
        monitoringPaused = false;
        break;
    case SystemEvent::systemDidWake:
        monitoringPaused = false;
        requestRefresh(wakeDelay);
        break;
    case SystemEvent::screenParametersChanged:
        requestRefresh(screenChangeDelay);
        break;
    }
}

void DisplayStore::requestRefresh(Clock::Duration delay)
{
    ++writeRevision;
    writes.clear();
    pendingValues.clear();
    batchWrite.reset();
    const std::int64_t generation = ++refreshGeneration;
    isRefreshing.setIfChanged(true);
    refreshTask.run(refresh(delay, generation)); // cancels the one before
    announceIfIdle();
}

Task<> DisplayStore::refresh(Clock::Duration delay, std::int64_t generation)
{
    if (delay > 0ms)
        co_await sleepFor(clock, delay);
    if (generation != refreshGeneration)
        co_return;
    Task<std::vector<DisplayInfo>> inspection = hardware.inspect(connectedDisplays(screens));
    std::vector<DisplayInfo> found = co_await std::move(inspection);
    if (generation == refreshGeneration)
        publish(std::move(found), generation);
}

void DisplayStore::publish(std::vector<DisplayInfo> found, std::int64_t generation)
{
    setOrder(mergedOrder(savedOrder, identifiers(found)));
    found = sortedDisplays(std::move(found), savedOrder);
    keepRequests(found);
    unconfirmed.clear();
    displays.set(std::move(found));
    if (generation != refreshGeneration)
        return; // an observer has asked for the next refresh
    isRefreshing.set(false);
    lastRefresh.set(clock.wallTime());
    announceIfIdle();
}

void DisplayStore::setOrder(std::vector<std::string> order)
{
    savedOrder = std::move(order);
    defaults.set(displayOrderKey, PropertyArray(savedOrder.begin(), savedOrder.end()));
}

void DisplayStore::moveDisplays(const std::set<std::size_t>& sources, std::size_t destination)
{
    std::vector<DisplayInfo> moved = movedDisplays(displays.get(), sources, destination);
    setOrder(overlaidOrder(savedOrder, identifiers(moved)));
    displays.set(std::move(moved));
}

const DisplayInfo* DisplayStore::display(const std::string& id) const
{
    const std::vector<DisplayInfo>& list = displays.get();
    const auto found =
        std::find_if(list.begin(), list.end(), [&](const DisplayInfo& each) { return each.id == id; });
    return found == list.end() ? nullptr : &*found;
}

} // namespace lumenvale
