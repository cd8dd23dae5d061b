// SPDX-License-Identifier: MIT
#include "presets/PresetEditor.h"

#include <cmath>
#include <utility>

namespace lumenvale {

PresetEditor::PresetEditor(PresetDisplayControlling& displays, PresetStore& presets, UserDefaults& defaults)
    : displays(displays), presets(presets), settings(defaults), recorder(presets), activation(displays, presets)
{
    activation.restoreWhenShown(settings.storedPreset());
}

// The settings window

void PresetEditor::show(const std::optional<std::string>& preferred)
{
    if (settings.isVisible)
        return;
    settings.isVisible = true;
    if (preferred)
        settings.preferredDisplayID = preferred;
    if (selectActivePreset())
        return;
    selectedTab.setIfChanged(SettingsTab::displays);
    select(settings.firstDisplay(displays.displayList()), true);
}

void PresetEditor::settingsResignedKey() { cancelRecording(); }

void PresetEditor::settingsClosed()
{
    cancelRecording();
    settings.isVisible = false;
    activation.cancelOperation();
    session.setIfChanged(std::nullopt);
}

void PresetEditor::selectTab(SettingsTab tab)
{
    if (tab == selectedTab.get())
        return;
    cancelRecording();
    selectedTab.set(tab);
    if (tab == SettingsTab::displays)
        select(settings.firstDisplay(displays.displayList()), true);
    else if (tab == SettingsTab::presets && !selectActivePreset())
        select(std::nullopt, true);
}

/// Selects the active preset, which applies it again and opens its session; false when there is none.
bool PresetEditor::selectActivePreset()
{
    const std::optional<Uuid> active = activePresetID.get();
    if (!active || !presets.preset(*active))
        return false;
    select(PresetSelection{*active}, true);
    return true;
}

void PresetEditor::select(std::optional<SettingsSelection> next, bool force)
{
    if (!force && next == selection.get())
        return;
    cancelRecording();
    activation.cancelOperation();
    session.setIfChanged(std::nullopt);
    message.setIfChanged(std::nullopt);
    settings.select(next);
    const auto* selected = next ? std::get_if<PresetSelection>(&*next) : nullptr;
    const BrightnessPreset* stored = selected ? presets.preset(selected->id) : nullptr;
    if (!settings.isVisible || !stored)
        return;
    const BrightnessPreset preset = *stored;
    activePresetID.setIfChanged(preset.id);
    settings.openSession(preset);
    activation.startApplying(preset.id, false);
}

/// Chooses a display again when the one that the Displays page shows is gone, or when it shows none.
void PresetEditor::replaceLostDisplay()
{
    if (!settings.showsNoneOf(displays.displayList()))
        return;
    const std::optional<SettingsSelection> next = settings.firstDisplay(displays.displayList());
    if (next != selection.get())
        select(next, true);
}

// The displays

void PresetEditor::activate(Uuid id)
{
    cancelRecording();
    const BrightnessPreset* stored = presets.preset(id);
    if (!stored)
        return;
    const BrightnessPreset preset = *stored;
    activation.cancelOperation();
    activePresetID.setIfChanged(id);
    settings.select(PresetSelection{id});
    settings.openSession(preset);
    activation.startApplying(id, true);
}

void PresetEditor::displaysChanged(const std::vector<DisplayInfo>& changed)
{
    activation.restore();
    replaceLostDisplay(); // before the next, whose message it would clear
    activation.deactivateIfDifferent(changed);
}

// Editing

void PresetEditor::setLevel(Uuid presetID, const DisplayInfo& display, double value)
{
    if (isPreparing.get() || settings.editedPresetID() != presetID)
        return;
    if (!std::isfinite(value) || !presets.preset(presetID))
        return;
    const std::string displayID = display.id; // `display` may stand in the list that the write changes
    activation.write([&] {
        presets.setLevel(presetID, display, value);
        displays.setLevel(displayID, value);
    });
}

bool PresetEditor::revert()
{
    const std::optional<Uuid> edited = settings.editedPresetID();
    if (!edited || !presets.preset(*edited))
        return false;
    const BrightnessPreset saved = session.get()->savedPreset;
    activation.cancelOperation();
    activePresetID.setIfChanged(saved.id);
    activation.write([&] {
        presets.update(saved);
        displays.apply(saved.values);
    });
    message.set("Reverted this editing session and restored the saved preset.");
    return true;
}

void PresetEditor::addPresetFromCurrentLevels()
{
    cancelRecording();
    activation.cancelOperation();
    session.setIfChanged(std::nullopt);
    message.setIfChanged(std::nullopt);
    activation.startPreparing([this] { addPreset(); });
}

void PresetEditor::addPreset()
{
    if (!settings.isVisible)
        return activation.cancelOperation();
    const std::int64_t started = activation.currentGeneration();
    isPreparing.setIfChanged(false);
    std::map<std::string, double> levels;
    std::map<std::string, std::string> names;
    for (const DisplayInfo& each : displays.displayList()) {
        if (!each.brightness)
            continue;
        levels[each.id] = *each.brightness;
        names[each.id] = each.name;
    }
    if (levels.empty())
        return message.set("No readable display brightness values are available.");
    const BrightnessPreset added = presets.addPreset(std::move(levels), std::move(names));
    if (activation.currentGeneration() != started)
        return; // an observer of the presets has started something else
    activePresetID.setIfChanged(added.id);
    settings.select(PresetSelection{added.id});
    settings.openSession(added);
}

void PresetEditor::deletePreset(Uuid id)
{
    if (!presets.preset(id))
        return;
    presets.deletePreset(id);
    if (recordingShortcutID.get() == id)
        cancelRecording();
    activation.forget(id);
    settings.forget(id);
}

// Recording a shortcut

void PresetEditor::startRecording(Uuid id) { recorder.start(id); }

void PresetEditor::cancelRecording() { recorder.cancel(); }

bool PresetEditor::handleKeyEvent(const KeyEvent& event) { return recorder.handleKeyEvent(event); }

} // namespace lumenvale
