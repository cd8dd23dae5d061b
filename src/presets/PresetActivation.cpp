// SPDX-License-Identifier: MIT
#include "presets/PresetActivation.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace lumenvale {

namespace {

constexpr double levelTolerance = 0.0001; // of displays without hardware units

/// Compares what is shown with what a write of the level puts on the display.
bool differs(const DisplayInfo& display, double level)
{
    const double shown = *display.brightness;
    const double written = quantise(display, level);
    if (display.method == ControlMethod::ddc)
        return std::trunc(shown * display.maximum) != std::trunc(written * display.maximum);
    return std::abs(shown - written) > levelTolerance;
}

bool isCompared(const DisplayInfo& display, const BrightnessPreset& preset)
{
    return display.brightness && preset.values.contains(display.id);
}

/// The first display that does not show the preset's level, or null.
const DisplayInfo* firstDifferent(const std::vector<DisplayInfo>& shown, const BrightnessPreset& preset)
{
    const auto found = std::ranges::find_if(shown, [&preset](const DisplayInfo& each) {
        return isCompared(each, preset) && differs(each, preset.values.at(each.id));
    });
    return found == shown.end() ? nullptr : &*found;
}

enum class Comparison { nothingKnown, same, different };

Comparison compare(const std::vector<DisplayInfo>& shown, const BrightnessPreset& preset)
{
    if (firstDifferent(shown, preset))
        return Comparison::different;
    const bool isKnown =
        std::ranges::any_of(shown, [&preset](const DisplayInfo& each) { return isCompared(each, preset); });
    return isKnown ? Comparison::same : Comparison::nothingKnown;
}

} // namespace

PresetActivation::PresetActivation(PresetDisplayControlling& displays, const PresetStore& presets)
    : displays(displays), presets(presets)
{
}

void PresetActivation::startApplying(const Uuid& id, bool isAnnounced)
{
    preparingID = id;
    startPreparing([this, id, isAnnounced] { apply(id, isAnnounced); });
}

void PresetActivation::startPreparing(std::function<void()> finish)
{
    isPreparing.setIfChanged(true);
    operation.run(prepare(std::move(finish)));
}

Task<> PresetActivation::prepare(std::function<void()> finish)
{
    const std::int64_t started = generation;
    co_await displays.pendingWritesFinished();
    if (generation == started)
        finish();
}

void PresetActivation::apply(const Uuid& id, bool isAnnounced)
{
    const BrightnessPreset* stored = presets.preset(id);
    if (!stored)
        return cancelOperation();
    const std::int64_t started = generation;
    const BrightnessPreset preset = *stored;
    preparingID.reset();
    write([&] {
        isPreparing.setIfChanged(false);
        displays.apply(preset.values);
    });
    if (isAnnounced && generation == started)
        message.set("Applied " + displayName(preset) + ".");
}

void PresetActivation::cancelOperation()
{
    operation.cancel();
    ++generation;
    restorableID.reset();
    const bool wasUnapplied = std::exchange(preparingID, std::nullopt).has_value();
    if (!isPreparing.get())
        return;
    isPreparing.set(false);
    const std::optional<Uuid> active = activePresetID.get();
    const BrightnessPreset* preset = active ? presets.preset(*active) : nullptr;
    const Comparison comparison = preset ? compare(displays.displayList(), *preset) : Comparison::nothingKnown;
    const bool isDifferent = comparison == Comparison::different && !writesAreOurs;
    if (active && (isDifferent || (wasUnapplied && comparison != Comparison::same)))
        activePresetID.set(std::nullopt);
}

void PresetActivation::write(const std::function<void()>& request)
{
    if (!failed.empty())
        message.setIfChanged(std::nullopt);
    failed.clear();
    writesAreOurs = true; // the new levels are announced before `request` returns
    request();
    settling.run(finishWrites());
}

Task<> PresetActivation::finishWrites()
{
    co_await displays.pendingWritesFinished();
    writesAreOurs = false;
    const std::optional<Uuid> active = activePresetID.get();
    if (const BrightnessPreset* preset = active ? presets.preset(*active) : nullptr)
        noteFailures(*preset);
    deactivateIfDifferent(displays.displayList());
}

/// Shows the first error that our writes have left behind.
void PresetActivation::noteFailures(const BrightnessPreset& preset)
{
    std::string words;
    for (const DisplayInfo& each : displays.displayList()) {
        if (!each.error || !preset.values.contains(each.id))
            continue;
        failed.insert(each.id);
        if (words.empty())
            words = each.name + ": " + *each.error;
    }
    if (!words.empty())
        message.set(words);
}

void PresetActivation::deactivateIfDifferent(const std::vector<DisplayInfo>& shown)
{
    if (isPreparing.get() || writesAreOurs || !activePresetID.get())
        return;
    const BrightnessPreset* preset = presets.preset(*activePresetID.get());
    const DisplayInfo* different = preset ? firstDifferent(shown, *preset) : nullptr;
    if (!different)
        return;
    const bool isTold = different->error && failed.contains(different->id);
    const std::string words = different->error
                                  ? different->name + ": " + *different->error
                                  : "Brightness changed outside the preset. This preset is no longer active.";
    activePresetID.set(std::nullopt); // its observers may replace the list
    if (!isTold)
        message.set(words);
}

void PresetActivation::restoreWhenShown(const std::optional<Uuid>& id)
{
    restorableID = id;
    restore();
}

void PresetActivation::restore()
{
    const BrightnessPreset* preset = restorableID ? presets.preset(*restorableID) : nullptr;
    if (!preset)
        return;
    const Comparison comparison = compare(displays.displayList(), *preset);
    if (comparison == Comparison::nothingKnown)
        return;
    if (comparison == Comparison::same)
        activePresetID.setIfChanged(restorableID);
    restorableID.reset();
}

void PresetActivation::forget(const Uuid& id)
{
    if (preparingID == id)
        cancelOperation();
    if (activePresetID.get() == id)
        activePresetID.set(std::nullopt);
}

} // namespace lumenvale
