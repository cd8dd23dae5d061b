// SPDX-License-Identifier: MIT
// How brightness that was changed outside the program is noticed.
#include "displays/DisplayStore.h"

#include <utility>

namespace lumenvale {

using namespace std::chrono_literals;

namespace {

constexpr auto monitoringInterval = 750ms;
// Reading over DDC/CI costs a display some 80 ms of its bus each time and keeps some monitors from power saving.
constexpr int ddcRoundsWhileVisible = 4;
constexpr int ddcRoundsWhileHidden = 40;
constexpr char readStatus[] = "Current hardware brightness read successfully.";

} // namespace

void DisplayStore::startMonitoring() { monitoringTask.run(monitor()); }

void DisplayStore::stopMonitoring() { monitoringTask.cancel(); }

void DisplayStore::setWindowVisible(bool visible) { windowVisible = visible; }

Task<> DisplayStore::monitor()
{
    for (;;) {
        co_await sleepFor(clock, monitoringInterval);
        if (monitoringPaused || isRefreshing.get() || isWriting())
            continue;
        ++roundsSinceDdcRead;
        const bool isDdcRound =
            roundsSinceDdcRead >= (windowVisible ? ddcRoundsWhileVisible : ddcRoundsWhileHidden);
        if (isDdcRound)
            roundsSinceDdcRead = 0;
        const std::vector<std::string> ids = displaysToRead(isDdcRound);
        if (ids.empty())
            continue;
        const std::int64_t revision = writeRevision;
        Task<Readings> reading = read(ids, revision);
        const Readings readings = co_await std::move(reading);
        if (isStale(revision))
            continue;
        for (const std::string& id : ids)
            unconfirmed.erase(id); // one that cannot be read waits for its turn again
        showReadings(readings, isDdcRound);
    }
}

std::vector<std::string> DisplayStore::displaysToRead(bool isDdcRound) const
{
    std::vector<std::string> ids;
    for (const DisplayInfo& each : displays.get()) {
        const bool isDue = each.method == ControlMethod::apple ||
                           (each.method == ControlMethod::ddc && (isDdcRound || unconfirmed.contains(each.id)) &&
                            !screens.isAsleep(each.displayID));
        if (isDue)
            ids.push_back(each.id);
    }
    return ids;
}

/// One display at a time, so that a request made meanwhile waits for one reading and not for all of them.
Task<DisplayStore::Readings> DisplayStore::read(std::vector<std::string> ids, std::int64_t revision)
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

void DisplayStore::showReadings(const Readings& readings, bool isDdcRound)
{
    std::vector<DisplayInfo> list = displays.get();
    std::vector<DisplayInfo> changed;
    for (DisplayInfo& each : list) {
        const auto reading = readings.find(each.id);
        if (reading == readings.end() || !(reading->second >= 0.0 && reading->second <= 1.0))
            continue;
        const bool differs = each.brightness != reading->second;
        each.brightness = reading->second;
        if (each.method == ControlMethod::apple ||
            isDdcRound) { // else it was read out of turn after a failed write
            each.status = readStatus;
            each.error.reset();
        }
        if (differs)
            changed.push_back(each);
    }
    displays.setIfChanged(std::move(list));
    if (!changed.empty() && brightnessObserved)
        brightnessObserved(changed);
}

} // namespace lumenvale
