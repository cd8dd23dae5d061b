// SPDX-License-Identifier: MIT
// The editor's part for the settings window: tab, selection, recording, opening and closing.
#include "presets/PresetEditor.h"

#include <algorithm>

namespace lumenvale {

// Window

void PresetEditor::show(const std::optional<std::string>& preferred)
{
    if (isVisible)
        return;
    isVisible = true;
    if (preferred)
        preferredDisplayID = preferred;
    if (selectActivePreset())
        return;
    selectedTab.setIfChanged(SettingsTab::displays);
    select(firstDisplay(), true);
}

void PresetEditor::settingsResignedKey()
{
    cancelRecording();
    if (!session.get())
        return;
    if (const BrightnessPreset* preset = presets.preset(session.get()->savedPreset.id))
        session.setIfChanged(PresetEditingSession{*preset});
}

void PresetEditor::settingsClosed()
{
    cancelRecording();
    isVisible = false;
    cancelOperation();
    session.setIfChanged(std::nullopt);
}

// Selection

void PresetEditor::select(std::optional<SettingsSelection> next, bool force)
{
    if (!force && next == selection.get())
        return;
    cancelRecording();
    cancelOperation();
    selection.setIfChanged(next);
    session.setIfChanged(std::nullopt);
    message.setIfChanged(std::nullopt);
    if (const auto* display = next ? std::get_if<DisplaySelection>(&*next) : nullptr) {
        selectedTab.setIfChanged(SettingsTab::displays);
        preferredDisplayID = display->id;
        defaults.set(settingsDisplayKey, display->id);
    }
    const auto* selected = next ? std::get_if<PresetSelection>(&*next) : nullptr;
    if (!selected) {
        defaults.set(settingsPresetKey, std::nullopt);
        return;
    }
    selectedTab.setIfChanged(SettingsTab::presets);
    defaults.set(settingsPresetKey, selected->id.toString());
    const BrightnessPreset* preset = presets.preset(selected->id);
    if (!isVisible || !preset)
        return;
    PresetEditingSession started{*preset};
    activePresetID.setIfChanged(selected->id);
    session.set(std::move(started));
    startApplying(selected->id, Trigger::selection);
}

void PresetEditor::selectTab(SettingsTab tab)
{
    if (tab == selectedTab.get())
        return;
    cancelRecording();
    selectedTab.set(tab);
    if (tab == SettingsTab::displays)
        select(firstDisplay(), true);
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

/// The preferred display, else the main one, else the first of the list.
std::optional<SettingsSelection> PresetEditor::firstDisplay() const
{
    const std::vector<DisplayInfo>& list = displays.displayList();
    if (list.empty())
        return std::nullopt;
    auto chosen = std::ranges::find_if(list, [this](const DisplayInfo& each) {
        return each.id == preferredDisplayID ||
               stableIdentifier(std::nullopt, each.displayID) == preferredDisplayID;
    });
    if (chosen == list.end())
        chosen = std::ranges::find_if(list, &DisplayInfo::isMain);
    return DisplaySelection{chosen == list.end() ? list.front().id : chosen->id};
}

/// Chooses a display again when the one that the Displays page shows is gone, or when it shows none.
void PresetEditor::replaceLostDisplay()
{
    if (!isVisible || selectedTab.get() != SettingsTab::displays)
        return;
    const std::optional<SettingsSelection>& current = selection.get();
    const auto* shown = current ? std::get_if<DisplaySelection>(&*current) : nullptr;
    if (shown &&
        std::ranges::any_of(displays.displayList(), [&](const DisplayInfo& each) { return each.id == shown->id; }))
        return;
    const std::optional<SettingsSelection> next = firstDisplay();
    if (next != current)
        select(next, true);
}

// Recording a shortcut

void PresetEditor::startRecording(Uuid id)
{
    if (recordingShortcutID.get() == id || !presets.preset(id))
        return;
    recordingShortcutID.set(id);
    if (const auto call = shortcutRecordingChanged)
        call();
}

void PresetEditor::cancelRecording()
{
    if (!recordingShortcutID.get())
        return;
    recordingShortcutID.set(std::nullopt);
    if (const auto call = shortcutRecordingChanged)
        call();
}

bool PresetEditor::handleKeyEvent(const KeyEvent& event)
{
    const std::optional<Uuid> recording = recordingShortcutID.get();
    if (!recording)
        return false;
    if (event.keyCode == escapeKeyCode && (event.modifiers & KeyModifier::mask) == 0) {
        cancelRecording();
        return true;
    }
    const std::optional<PresetShortcut> shortcut = shortcutFromKeyEvent(event);
    if (shortcut && presets.setShortcut(shortcut, *recording))
        cancelRecording();
    return true;
}

} // namespace lumenvale
