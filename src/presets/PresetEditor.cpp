// SPDX-License-Identifier: MIT
#include "presets/PresetEditor.h"

#include <cmath>
#include <utility>

namespace lumenvale {

namespace {

constexpr double levelTolerance = 0.0001; // of displays without hardware units

bool differs(const DisplayInfo& display, double level)
{
    const double shown = *display.brightness;
    if (display.method == ControlMethod::ddc)
        return std::trunc(shown * display.maximum) != std::trunc(level * display.maximum);
    return std::abs(shown - level) > levelTolerance;
}

enum class Comparison { nothingKnown, same, different };

Comparison compare(const std::vector<DisplayInfo>& shown, const BrightnessPreset& preset)
{
    Comparison result = Comparison::nothingKnown;
    for (const DisplayInfo& each : shown) {
        const auto level = preset.values.find(each.id);
        if (!each.brightness || level == preset.values.end())
            continue;
        if (differs(each, level->second))
            return Comparison::different;
        result = Comparison::same;
    }
    return result;
}

} // namespace

PresetEditor::PresetEditor(PresetDisplayControlling& shown, PresetStore& store, UserDefaults& preferences)
    : displays(shown), presets(store), defaults(preferences),
      preferredDisplayID(readDefault<std::string>(preferences, settingsDisplayKey))
{
    if (const auto text = readDefault<std::string>(defaults, settingsPresetKey))
        restorableID = Uuid::parse(*text);
    restoreActivePreset();
}

// Applying

void PresetEditor::activate(Uuid id)
{
    cancelRecording();
    const BrightnessPreset* stored = presets.preset(id);
    if (!stored)
        return;
    const BrightnessPreset preset = *stored;
    cancelOperation();
    activePresetID.setIfChanged(id);
    selectedTab.setIfChanged(SettingsTab::presets);
    selection.setIfChanged(PresetSelection{id});
    defaults.set(settingsPresetKey, id.toString());
    if (!isVisible)
        session.setIfChanged(std::nullopt);
    else if (!session.get() || session.get()->savedPreset.id != id)
        session.set(PresetEditingSession{preset});
    startApplying(id, Trigger::activation);
}

/// Ends the operation. What the displays did while it was prepared went unnoticed, so the active preset is
/// compared now; one that was not applied yet stays active only if the displays match it already.
void PresetEditor::cancelOperation()
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

void PresetEditor::startApplying(const Uuid& id, Trigger trigger)
{
    preparingID = id;
    isPreparing.setIfChanged(true);
    operation.run(applyPreset(id, generation, trigger));
}

Task<> PresetEditor::applyPreset(Uuid id, std::int64_t started, Trigger trigger)
{
    co_await displays.pendingWritesFinished();
    if (generation != started)
        co_return;
    const BrightnessPreset* stored = presets.preset(id);
    if (!stored || (trigger == Trigger::selection && !isVisible)) {
        cancelOperation();
        co_return;
    }
    const BrightnessPreset preset = *stored;
    preparingID.reset();
    writesAreOurs = true;
    isPreparing.setIfChanged(false);
    startWrites(preset.values);
    if (trigger == Trigger::activation && generation == started)
        message.set("Applied " + displayName(preset) + ".");
}

void PresetEditor::startWrites(const std::map<std::string, double>& levels)
{
    writesAreOurs = true; // the display list announces the new levels before `apply` returns
    displays.apply(levels);
    settling.run(finishWrites());
}

Task<> PresetEditor::finishWrites()
{
    co_await displays.pendingWritesFinished();
    writesAreOurs = false;
    deactivateIfDifferent(displays.displayList());
}

// Changes from outside

void PresetEditor::displaysChanged(const std::vector<DisplayInfo>& changed)
{
    restoreActivePreset();
    replaceLostDisplay();
    deactivateIfDifferent(changed);
}

void PresetEditor::deactivateIfDifferent(const std::vector<DisplayInfo>& shown)
{
    if (isPreparing.get() || writesAreOurs || !activePresetID.get())
        return;
    const BrightnessPreset* preset = presets.preset(*activePresetID.get());
    if (!preset || compare(shown, *preset) != Comparison::different)
        return;
    activePresetID.set(std::nullopt);
    message.set("Brightness changed outside the preset. This preset is no longer active.");
}

void PresetEditor::restoreActivePreset()
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

// Editing

void PresetEditor::setLevel(Uuid presetID, const DisplayInfo& display, double value)
{
    if (isPreparing.get() || !session.get() || session.get()->savedPreset.id != presetID)
        return;
    if (!std::isfinite(value) || !presets.preset(presetID))
        return;
    const std::string displayID = display.id; // `display` may stand in the list that the write changes
    writesAreOurs = true;
    presets.setLevel(presetID, display, value);
    displays.setLevel(displayID, value);
    settling.run(finishWrites());
}

bool PresetEditor::revert()
{
    if (!session.get() || !presets.preset(session.get()->savedPreset.id))
        return false;
    const BrightnessPreset saved = session.get()->savedPreset;
    cancelOperation();
    activePresetID.setIfChanged(saved.id);
    writesAreOurs = true;
    presets.update(saved);
    startWrites(saved.values);
    message.set("Reverted this editing session and restored the saved preset.");
    return true;
}

void PresetEditor::addPresetFromCurrentLevels()
{
    cancelRecording();
    cancelOperation();
    session.setIfChanged(std::nullopt);
    message.setIfChanged(std::nullopt);
    isPreparing.setIfChanged(true);
    operation.run(addPreset(generation));
}

Task<> PresetEditor::addPreset(std::int64_t started)
{
    co_await displays.pendingWritesFinished();
    if (generation != started)
        co_return;
    if (!isVisible) {
        cancelOperation();
        co_return;
    }
    isPreparing.setIfChanged(false);
    std::map<std::string, double> levels;
    std::map<std::string, std::string> names;
    for (const DisplayInfo& each : displays.displayList()) {
        if (!each.brightness)
            continue;
        levels[each.id] = *each.brightness;
        names[each.id] = each.name;
    }
    if (levels.empty()) {
        message.set("No readable display brightness values are available.");
        co_return;
    }
    const BrightnessPreset added = presets.addPreset(std::move(levels), std::move(names));
    if (generation == started) // nobody who heard of the new preset started something else
        showAddedPreset(added);
}

void PresetEditor::showAddedPreset(const BrightnessPreset& added)
{
    activePresetID.setIfChanged(added.id);
    selectedTab.setIfChanged(SettingsTab::presets);
    selection.setIfChanged(PresetSelection{added.id});
    defaults.set(settingsPresetKey, added.id.toString());
    session.set(PresetEditingSession{added});
}

void PresetEditor::deletePreset(Uuid id)
{
    if (!presets.preset(id))
        return;
    presets.deletePreset(id);
    if (recordingShortcutID.get() == id)
        cancelRecording();
    if (preparingID == id)
        cancelOperation();
    if (activePresetID.get() == id)
        activePresetID.set(std::nullopt);
    if (session.get() && session.get()->savedPreset.id == id)
        session.set(std::nullopt);
    if (selection.get() == SettingsSelection(PresetSelection{id})) {
        selection.set(std::nullopt);
        defaults.set(settingsPresetKey, std::nullopt);
    }
}

} // namespace lumenvale
