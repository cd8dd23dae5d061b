// SPDX-License-Identifier: MIT
#include "displays/BrightnessMonitor.h"

#include <utility>

namespace lumenvale {

using namespace std::chrono_literals;

namespace {

constexpr auto monitoringInterval = 750ms;
// Reading over DDC/CI costs a display some 80 ms of its bus each time and keeps some monitors from power saving.
constexpr int ddcRoundsWhileVisible = 4;
constexpr int ddcRoundsWhileHidden = 40;
constexpr auto errorTime = 5s; // leaves time to read the error of a failed write
constexpr char readStatus[] = "Current hardware brightness read successfully.";

} // namespace

BrightnessMonitor::BrightnessMonitor(DisplayHardwareControlling& hardware, Clock& clock, ScreenSource& screens,
                                     Published<std::vector<DisplayInfo>>& displays,
                                     const Published<bool>& isRefreshing, const BrightnessWriter& writer)
    : hardware(hardware), clock(clock), screens(screens), displays(displays), isRefreshing(isRefreshing),
      writer(writer)
{
}

void BrightnessMonitor::start() { monitoringTask.run(monitor()); }

void BrightnessMonitor::stop() { monitoringTask.cancel(); }

void BrightnessMonitor::setPaused(bool paused) { monitoringPaused = paused; }

void BrightnessMonitor::setWindowVisible(bool visible) { windowVisible = visible; }

void BrightnessMonitor::writeEnded(const std::string& id, bool isVerified)
{
    if (isVerified) {
        failures.erase(id);
        return;
    }
    failures[id] = {.time = clock.now()};
}

Task<> BrightnessMonitor::monitor()
{
    for (;;) {
        co_await sleepFor(clock, monitoringInterval);
        if (monitoringPaused || isRefreshing.get() || writer.isWriting())
            continue;
        const bool isDdcRound = beginsDdcRound();
        const std::vector<std::string> ids = displaysToRead(isDdcRound);
        if (ids.empty())
            continue;
        const std::int64_t revision = writer.revision();
        Task<Readings> reading = read(ids, revision);
        const Readings readings = co_await std::move(reading);
        if (isStale(revision))
            continue;
        for (const std::string& id : ids) {
            if (const auto failure = failures.find(id); failure != failures.end())
                failure->second.isRead = true; // one that cannot be read waits for its turn again
        }
        showReadings(readings);
    }
}

/// Counts the rounds and tells whether DDC displays are due in this one.
bool BrightnessMonitor::beginsDdcRound()
{
    ++roundsSinceDdcRead;
    if (roundsSinceDdcRead < (windowVisible ? ddcRoundsWhileVisible : ddcRoundsWhileHidden))
        return false;
    roundsSinceDdcRead = 0;
    return true;
}

/// The last write failed, and the display was not read since.
bool BrightnessMonitor::isUnconfirmed(const std::string& id) const
{
    const auto failure = failures.find(id);
    return failure != failures.end() && !failure->second.isRead;
}

std::vector<std::string> BrightnessMonitor::displaysToRead(bool isDdcRound) const
{
    std::vector<std::string> ids;
    for (const DisplayInfo& each : displays.get()) {
        const bool isDue = each.method == ControlMethod::apple ||
                           (each.method == ControlMethod::ddc && (isDdcRound || isUnconfirmed(each.id)) &&
                            !screens.isAsleep(each.displayID));
        if (isDue)
            ids.push_back(each.id);
    }
    return ids;
}

/// One display at a time, so that a request made meanwhile waits for one reading and not for all of them.
Task<BrightnessMonitor::Readings> BrightnessMonitor::read(std::vector<std::string> ids, std::int64_t revision)
{
    Readings readings;
    for (const std::string& id : ids) {
        Task<Readings> reading = hardware.currentBrightness(std::vector<std::string>(1, id));
        Readings answer = co_await std::move(reading);
        if (isStale(revision))
            break;
        readings.merge(answer);
    }
    co_return readings;
}

void BrightnessMonitor::showReadings(const Readings& readings)
{
    std::vector<DisplayInfo> list = displays.get();
    std::vector<DisplayInfo> changed;
    for (DisplayInfo& each : list) {
        const auto reading = readings.find(each.id);
        if (reading == readings.end() || !(reading->second >= 0.0 && reading->second <= 1.0))
            continue;
        const bool differs = each.brightness != reading->second;
        each.brightness = reading->second;
        const auto failure = failures.find(each.id);
        if (failure == failures.end() || clock.now() - failure->second.time >= errorTime) {
            each.status = readStatus;
            each.error.reset();
            each.isErrorExplained = false;
        }
        if (differs)
            changed.push_back(each);
    }
    displays.setIfChanged(std::move(list));
    if (!changed.empty() && changesSeen)
        changesSeen(changed);
}

} // namespace lumenvale
