// SPDX-License-Identifier: MIT
#include "displays/BrightnessWriter.h"

#include "displays/Diagnostics.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

namespace lumenvale {

using namespace std::chrono_literals;

namespace {

constexpr auto coalescingWindow = 90ms; // requests that come in this time replace each other
constexpr char applyingStatus[] = "Applying brightness…";

bool accepts(const DisplayInfo& display, double value, bool force)
{
    return std::isfinite(value) && display.method != ControlMethod::unavailable && (display.brightness || force);
}

void showRequest(DisplayInfo& display, double level)
{
    display.brightness = quantise(display, level);
    display.status = applyingStatus;
}

} // namespace

BrightnessWriter::BrightnessWriter(DisplayHardwareControlling& hardware, Clock& clock,
                                   Published<std::vector<DisplayInfo>>& displays)
    : hardware(hardware), clock(clock), displays(displays)
{
}

void BrightnessWriter::setBrightness(const std::string& id, double value, bool force)
{
    const DisplayInfo* target = findDisplay(displays.get(), id);
    if (!target || !accepts(*target, value, force))
        return;
    const std::string targetID = target->id; // `id` may stand in the list that changes below
    const double level = quantise(*target, value);
    ++writeRevision;
    withdrawFromBatch(targetID);
    pendingValues[targetID] = level;
    if (!writes.contains(targetID))
        writes[targetID].run(writeRequests(targetID, refreshGeneration));
    displays.modify([&](std::vector<DisplayInfo>& list) { showRequest(*findDisplay(list, targetID), level); });
}

Task<> BrightnessWriter::writeRequests(std::string id, std::int64_t generation)
{
    do {
        co_await sleepFor(clock, coalescingWindow);
        if (generation != refreshGeneration)
            co_return;
        const auto pending = pendingValues.extract(id);
        if (pending.empty())
            break;
        Task<Outcome> write = hardware.setBrightness(writableLevel(id, pending.mapped()), id);
        const Outcome outcome = co_await std::move(write);
        if (generation != refreshGeneration)
            co_return;
        showOutcome(id, outcome);
    } while (generation == refreshGeneration && pendingValues.contains(id));
    if (generation != refreshGeneration)
        co_return; // the refresh has emptied `writes`, and another task may stand in this one's place
    writes.erase(id);
    announceIfIdle();
}

void BrightnessWriter::apply(const std::map<std::string, double>& levels)
{
    std::map<std::string, double> accepted;
    for (const DisplayInfo& each : displays.get()) {
        const auto level = levels.find(each.id);
        if (level == levels.end() || !accepts(each, level->second, true))
            continue;
        ++writeRevision;
        accepted[each.id] = quantise(each, level->second);
        pendingValues.erase(each.id);
        withdrawFromBatch(each.id);
        batchLevels.push_back({each.id, accepted[each.id]});
    }
    if (accepted.empty())
        return;
    displays.modify([&](std::vector<DisplayInfo>& list) {
        for (const auto& [id, level] : accepted)
            showRequest(*findDisplay(list, id), level);
    });
    if (!batchTask.isRunning())
        batchTask.run(writeBatch());
}

/// Does not wait between the displays: each has only its newest level here.
Task<> BrightnessWriter::writeBatch()
{
    while (!batchLevels.empty()) {
        const BatchLevel next = batchLevels.front();
        batchLevels.erase(batchLevels.begin());
        batchWrite = next.id;
        Task<Outcome> write = hardware.setBrightness(writableLevel(next.id, next.level), next.id);
        const Outcome outcome = co_await std::move(write);
        if (batchWrite != next.id)
            continue; // a refresh or a newer request will show something newer
        batchWrite.reset();
        showOutcome(next.id, outcome);
    }
    batchTask.cancel(); // the work is done: `isWriting` must say so to those who wait
    announceIfIdle();
}

void BrightnessWriter::beginRefresh(std::int64_t generation)
{
    ++writeRevision;
    refreshGeneration = generation;
    writes.clear();
    pendingValues.clear();
    batchWrite.reset();
}

void BrightnessWriter::keepRequests(std::vector<DisplayInfo>& found)
{
    std::set<std::string> kept;
    for (DisplayInfo& each : found) {
        const DisplayInfo* shown = findDisplay(displays.get(), each.id);
        if (!shown || !shown->brightness || each.method == ControlMethod::unavailable ||
            !(writes.contains(each.id) || hasNewerRequest(each.id)))
            continue;
        showRequest(each, *shown->brightness); // of a display with a request, that is the request
        kept.insert(each.id);
    }
    std::erase_if(pendingValues, [&](const auto& each) { return !kept.contains(each.first); });
    std::erase_if(batchLevels, [&](const BatchLevel& each) { return !kept.contains(each.id); });
}

void BrightnessWriter::withdrawFromBatch(const std::string& id)
{
    std::erase_if(batchLevels, [&](const BatchLevel& each) { return each.id == id; });
    if (batchWrite == id)
        batchWrite.reset();
}

/// A value of this display waits, or is on its way in the batch and its outcome will be shown.
bool BrightnessWriter::hasNewerRequest(const std::string& id) const
{
    return pendingValues.contains(id) || batchWrite == id ||
           std::ranges::find(batchLevels, id, &BatchLevel::id) != batchLevels.end();
}

/// In the units that the display has now; a refresh may have found others since the request.
double BrightnessWriter::writableLevel(const std::string& id, double level) const
{
    return quantise(*findDisplay(displays.get(), id), level);
}

/// Empty where the error's own text says all that is known.
std::string BrightnessWriter::causeOf(BrightnessError error, const DisplayInfo& display) const
{
    return obstacle && mayHaveObstacle(error) ? obstacle(display) : std::string();
}

void BrightnessWriter::showOutcome(const std::string& id, const Outcome& outcome)
{
    const DisplayInfo* display = findDisplay(displays.get(), id);
    if (!display)
        return;
    const std::string cause = outcome ? std::string() : causeOf(outcome.error(), *display);
    if (writeEnded)
        writeEnded(id, outcome.has_value());
    if (!outcome && display->method == ControlMethod::unavailable)
        return; // a refresh has found meanwhile that it cannot be controlled, and its status says why
    const bool isNewest = !hasNewerRequest(id); // else what was asked for since stays on show
    displays.modify([&](std::vector<DisplayInfo>& list) {
        DisplayInfo& shown = *findDisplay(list, id);
        shown.error.reset();
        if (!outcome)
            shown.error = cause.empty() ? std::string(description(outcome.error())) : cause;
        shown.isErrorExplained = !cause.empty();
        if (isNewest && outcome) {
            shown.brightness = *outcome;
            shown.status = "Hardware brightness verified at " + percentageText(shown) + ".";
        } else if (isNewest) {
            shown.status = *shown.error;
        }
    });
}

void BrightnessWriter::announceIfIdle()
{
    if (!isWriting() && becameIdle)
        becameIdle();
}

} // namespace lumenvale
