// SPDX-License-Identifier: MIT
// Puts presets on the displays, one operation at a time, and knows which preset they show. Main thread only.
//
// While brightness that was requested here is on its way to the displays, what they show does not count as a
// change from outside; it is checked once when the last write has ended.
#pragma once

#include "base/Published.h"
#include "base/Task.h"
#include "displays/PresetDisplayControlling.h"
#include "presets/PresetStore.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace lumenvale {

class PresetActivation {
public:
    /// The references must outlive the activation.
    PresetActivation(PresetDisplayControlling& displays, const PresetStore& presets);

    Published<std::optional<Uuid>> activePresetID{std::nullopt};
    Published<bool> isPreparing{false};
    Published<std::optional<std::string>> message{std::nullopt};

    /// Applies the preset as soon as earlier writes have ended, and then says so in `message` when `isAnnounced`.
    /// Call `cancelOperation` before.
    void startApplying(const Uuid& id, bool isAnnounced);
    /// Calls `finish` as soon as earlier writes have ended, unless the operation is cancelled before. Call
    /// `cancelOperation` before.
    void startPreparing(std::function<void()> finish);
    /// Ends the operation. What the displays did while it was prepared went unnoticed, so the active preset is
    /// compared now; one that was not applied yet stays active only if the displays match it already.
    void cancelOperation();
    /// Tells whether an operation begun since then has replaced the one with this number.
    std::int64_t currentGeneration() const { return generation; }

    /// Calls `request`, which requests brightness, and counts it as ours until the writes have ended.
    void write(const std::function<void()>& request);

    /// Ends the active preset when one of these displays does not show its level, and says so, or leaves the error
    /// of our own failed write on show. Not while an operation is prepared or our own writes are under way.
    void deactivateIfDifferent(const std::vector<DisplayInfo>& shown);
    /// After a start: this preset becomes active, without being applied, if the first displays that become known
    /// still have its levels and no operation comes before.
    void restoreWhenShown(const std::optional<Uuid>& id);
    /// Looks whether the preset of `restoreWhenShown` is on the displays.
    void restore();
    /// The preset is gone.
    void forget(const Uuid& id);

private:
    Task<> prepare(std::function<void()> finish);
    Task<> finishWrites();
    void noteFailures(const BrightnessPreset& preset);
    void apply(const Uuid& id, bool isAnnounced);

    PresetDisplayControlling& displays;
    const PresetStore& presets;
    std::int64_t generation = 0;      ///< grows with each cancellation, thus with each operation
    std::optional<Uuid> preparingID;  ///< the preset that will be applied when earlier writes have ended
    std::optional<Uuid> restorableID; ///< the preset that may still prove to be active after a start
    std::set<std::string> failed; ///< displays on which our last write failed; what they show is not from outside
    bool writesAreOurs = false;   ///< brightness that was requested here is on its way
    TaskHandle settling;          ///< waits for our writes to end
    TaskHandle operation;
};

} // namespace lumenvale
