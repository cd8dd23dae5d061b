// SPDX-License-Identifier: MIT
// How requested brightness reaches the displays.
#include "displays/DisplayStore.h"

#include <algorithm>
#include <cmath>
#include <coroutine>
#include <utility>

namespace lumenvale {

using namespace std::chrono_literals;

namespace {

constexpr auto coalescingWindow = 90ms; // requests that come in this time replace each other
constexpr char applyingStatus[] = "Applying brightness…";

/// Awaits a signal's next emission.
class NextEmission {
public:
    explicit NextEmission(Signal<>& source) : signal(source) {}

    bool await_ready() const noexcept { return false; }
    void await_suspend(std::coroutine_handle<> waiter)
    {
        subscription = signal.subscribe([waiter] { waiter.resume(); });
    }
    void await_resume() const noexcept {}

private:
    Signal<>& signal;
    Subscription subscription;
};

/// The display with this identifier, which is in the list.
DisplayInfo& listed(std::vector<DisplayInfo>& list, const std::string& id)
{
    return *std::find_if(list.begin(), list.end(), [&](const DisplayInfo& each) { return each.id == id; });
}

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

void DisplayStore::setBrightness(const std::string& requestedID, double value, bool force)
{
    const DisplayInfo* target = display(requestedID);
    if (!target || !accepts(*target, value, force))
        return;
    const std::string id = target->id; // `requestedID` may stand in the list that changes below
    const double level = quantise(*target, value);
    ++writeRevision;
    withdrawFromBatch(id);
    pendingValues[id] = level;
    if (!writes.contains(id))
        writes[id].run(writeRequests(id, refreshGeneration));
    displays.modify([&](std::vector<DisplayInfo>& list) { showRequest(listed(list, id), level); });
}

Task<> DisplayStore::writeRequests(std::string id, std::int64_t generation)
{
    do {
        co_await sleepFor(clock, coalescingWindow);
        if (generation != refreshGeneration)
            co_return;
        const auto pending = pendingValues.extract(id);
        if (pending.empty())
            break;
        const double level = quantise(*display(id), pending.mapped());
        Task<Outcome> write = hardware.setBrightness(level, id);
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

void DisplayStore::apply(const std::map<std::string, double>& levels)
{
    std::map<std::string, double> accepted;
    for (const DisplayInfo& each : displays.get()) {
        const auto level = levels.find(each.id);
        if (level == levels.end() || !accepts(each, level->second, true))
            continue;
        ++writeRevision;
        accepted[each.id] = quantise(each, level->second);
        pendingValues.erase(each.id);
        addToBatch(each.id, accepted[each.id]);
    }
    if (accepted.empty())
        return;
    displays.modify([&](std::vector<DisplayInfo>& list) {
        for (const auto& [id, level] : accepted)
            showRequest(listed(list, id), level);
    });
    if (!batchTask.isRunning())
        batchTask.run(writeBatch());
}

void DisplayStore::setLevel(const std::string& id, double level) { setBrightness(id, level, true); }

/// No wait between the displays: nobody drags a batch, and each display has one newest level here.
Task<> DisplayStore::writeBatch()
{
    while (!batchLevels.empty()) {
        const BatchLevel next = batchLevels.front();
        batchLevels.erase(batchLevels.begin());
        batchWrite = next.id;
        const double level = quantise(*display(next.id), next.level);
        Task<Outcome> write = hardware.setBrightness(level, next.id);
        const Outcome outcome = co_await std::move(write);
        if (batchWrite != next.id)
            continue; // a refresh or a newer request will show something newer
        batchWrite.reset();
        showOutcome(next.id, outcome);
    }
    batchTask.cancel(); // the work is done: whoever waits for it must not find it running
    announceIfIdle();
}

void DisplayStore::addToBatch(const std::string& id, double level)
{
    withdrawFromBatch(id);
    batchLevels.push_back({id, level});
}

void DisplayStore::withdrawFromBatch(const std::string& id)
{
    std::erase_if(batchLevels, [&](const BatchLevel& each) { return each.id == id; });
    if (batchWrite == id)
        batchWrite.reset();
}

/// A value of this display waits, or is on its way in the batch and its outcome will be shown.
bool DisplayStore::hasNewerRequest(const std::string& id) const
{
    return pendingValues.contains(id) || batchWrite == id ||
           std::any_of(batchLevels.begin(), batchLevels.end(),
                       [&](const BatchLevel& each) { return each.id == id; });
}

/// Shows in a refresh's result what was requested since, and drops what can no longer be written.
void DisplayStore::keepRequests(std::vector<DisplayInfo>& found)
{
    std::set<std::string> kept;
    for (DisplayInfo& each : found) {
        const DisplayInfo* shown = display(each.id);
        if (!shown || !shown->brightness || each.method == ControlMethod::unavailable ||
            !(writes.contains(each.id) || hasNewerRequest(each.id)))
            continue;
        showRequest(each, *shown->brightness); // of a display with a request, that is the request
        kept.insert(each.id);
    }
    std::erase_if(pendingValues, [&](const auto& each) { return !kept.contains(each.first); });
    std::erase_if(batchLevels, [&](const BatchLevel& each) { return !kept.contains(each.id); });
}

void DisplayStore::showOutcome(const std::string& id, const Outcome& outcome)
{
    if (!display(id))
        return;
    if (outcome) {
        unconfirmed.erase(id);
    } else {
        unconfirmed.insert(id);
        roundsSinceDdcRead = 0; // leaves time to read the error, which the next reading in turn clears
    }
    const bool isNewest = !hasNewerRequest(id); // else what was asked for since stays on show
    displays.modify([&](std::vector<DisplayInfo>& list) {
        DisplayInfo& shown = listed(list, id);
        shown.error = outcome ? std::nullopt : std::optional(std::string(description(outcome.error())));
        if (isNewest && outcome) {
            shown.brightness = *outcome;
            shown.status = "Hardware brightness verified at " + percentageText(shown) + ".";
        } else if (isNewest) {
            shown.status = *shown.error;
        }
    });
}

bool DisplayStore::isWriting() const { return !writes.empty() || !batchLevels.empty() || batchTask.isRunning(); }

/// The first refresh is under way.
bool DisplayStore::areDisplaysUnknown() const { return isRefreshing.get() && !lastRefresh.get(); }

void DisplayStore::announceIfIdle()
{
    if (!isWriting())
        writesEnded.emit();
}

Task<> DisplayStore::pendingWritesFinished()
{
    while (isWriting() || areDisplaysUnknown()) {
        {
            NextEmission ended(writesEnded);
            co_await ended;
        }
        co_await sleepFor(clock, 0ms); // the waiting task goes on from the main loop, not from within this store
    }
}

} // namespace lumenvale
