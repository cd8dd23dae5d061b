// SPDX-License-Identifier: MIT
#include "displays/DisplayStore.h"

#include "base/NextEmission.h"
#include "displays/DisplayOrder.h"

#include <utility>

namespace lumenvale {

using namespace std::chrono_literals;

namespace {

constexpr char displayOrderKey[] = "displayOrder";
constexpr auto screenChangeDelay = 700ms; // screens come and go in several steps
constexpr auto missedLevelsLast = 60s;
constexpr auto wakeDelay = 1500ms; // monitors take their time to answer again

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

} // namespace

DisplayStore::DisplayStore(DisplayHardwareControlling& hardware, UserDefaults& defaults, ScreenSource& screens,
                           SystemEvents& events, Clock& clock)
    : hardware(hardware), defaults(defaults), screens(screens), clock(clock), savedOrder(loadOrder(defaults)),
      observers(events.subscribe([this](SystemEvent event) { receive(event); }))
{
    writer.writeEnded = [this](const std::string& id, bool isVerified) {
        if (isVerified)
            missedLevels.erase(id);
        monitor.writeEnded(id, isVerified);
    };
    writer.becameIdle = [this] { announceIfIdle(); };
    writer.obstacle = [this](const DisplayInfo& display) { return obstacle ? obstacle(display) : std::string(); };
    late.answered = [this](std::vector<DisplayInfo> list) { show(std::move(list)); };
    monitor.changesSeen = [this](const std::vector<DisplayInfo>& changed) {
        if (brightnessObserved)
            brightnessObserved(changed);
    };
}

DisplayStore::~DisplayStore() = default;

void DisplayStore::receive(SystemEvent event)
{
    switch (event) {
    case SystemEvent::screensDidSleep:
    case SystemEvent::systemWillSleep:
        setPaused(true);
        break;
    case SystemEvent::screensDidWake:
        setPaused(false);
        if (!isRefreshing.get())
            late.watch(clock.now());
        break;
    case SystemEvent::systemDidWake:
        setPaused(false);
        requestRefresh(wakeDelay);
        break;
    case SystemEvent::screenParametersChanged:
        requestRefresh(screenChangeDelay);
        break;
    }
}

void DisplayStore::setPaused(bool paused)
{
    monitor.setPaused(paused);
    late.setPaused(paused);
}

void DisplayStore::requestRefresh(Clock::Duration delay)
{
    const std::int64_t generation = ++refreshGeneration;
    writer.beginRefresh(generation);
    late.stop();
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
    const Clock::TimePoint inspected = clock.now();
    Task<std::vector<DisplayInfo>> inspection = hardware.inspect(connectedDisplays(screens));
    std::vector<DisplayInfo> found = co_await std::move(inspection);
    if (generation == refreshGeneration)
        publish(std::move(found), generation, inspected);
}

void DisplayStore::publish(std::vector<DisplayInfo> found, std::int64_t generation, Clock::TimePoint inspected)
{
    setOrder(mergedOrder(savedOrder, identifiers(found)));
    found = sortedDisplays(std::move(found), savedOrder);
    writer.keepRequests(found);
    monitor.forgetFailedWrites();
    show(std::move(found));
    if (generation != refreshGeneration)
        return; // an observer has asked for the next refresh
    late.watch(inspected);
    isRefreshing.set(false);
    lastRefresh.set(clock.wallTime());
    announceIfIdle();
}

void DisplayStore::setOrder(std::vector<std::string> order)
{
    if (order == savedOrder)
        return;
    savedOrder = std::move(order);
    defaults.set(displayOrderKey, PropertyArray(savedOrder.begin(), savedOrder.end()));
}

void DisplayStore::moveDisplays(const std::set<std::size_t>& sources, std::size_t destination)
{
    std::vector<DisplayInfo> moved = movedDisplays(displays.get(), sources, destination);
    setOrder(overlaidOrder(savedOrder, identifiers(moved)));
    displays.set(std::move(moved));
}

const DisplayInfo* DisplayStore::display(const std::string& id) const { return findDisplay(displays.get(), id); }

void DisplayStore::startMonitoring() { monitor.start(); }

void DisplayStore::stopMonitoring() { monitor.stop(); }

void DisplayStore::setWindowVisible(bool visible) { monitor.setWindowVisible(visible); }

void DisplayStore::setBrightness(const std::string& id, double value, bool force)
{
    missedLevels.erase(id);
    writer.setBrightness(id, value, force);
}

void DisplayStore::apply(const std::map<std::string, double>& levels)
{
    applied = clock.now();
    missedLevels = levels;
    writer.apply(levels);
}

/// Publishes the list; missed levels that can be written now are, and show at once, so that their preset stays
/// active.
void DisplayStore::show(std::vector<DisplayInfo> found)
{
    if (clock.now() - applied > missedLevelsLast)
        missedLevels.clear();
    std::map<std::string, double> levels;
    for (DisplayInfo& each : found) {
        const DisplayInfo* before = display(each.id);
        const bool isBack =
            each.method != ControlMethod::unavailable && before && before->method == ControlMethod::unavailable;
        if (!isBack)
            continue;
        if (auto level = missedLevels.extract(each.id)) {
            each.brightness = level.mapped();
            levels.insert(std::move(level));
        }
    }
    displays.set(std::move(found));
    writer.apply(levels);
}

void DisplayStore::setLevel(const std::string& id, double level)
{
    missedLevels.erase(id);
    writer.setBrightness(id, level, true);
}

/// Nothing is being written, and the displays are known: the first refresh has been published.
bool DisplayStore::isIdle() const
{
    const bool areDisplaysUnknown = isRefreshing.get() && !lastRefresh.get();
    return !writer.isWriting() && !areDisplaysUnknown;
}

void DisplayStore::announceIfIdle()
{
    if (isIdle())
        idle.emit();
}

Task<> DisplayStore::pendingWritesFinished()
{
    while (!isIdle()) {
        NextEmission next(idle);
        co_await next;
        co_await sleepFor(clock, 0ms); // the waiting task goes on from the main loop, not from within this store
    }
}

} // namespace lumenvale
