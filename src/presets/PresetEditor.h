// SPDX-License-Identifier: MIT
// Stands between the presets and the displays: applies presets, knows which one is active, holds the settings
// window's tab and selection, runs the editing session and the recording of a shortcut. Main thread only.
#pragma once

#include "base/Published.h"
#include "base/TaskScope.h"
#include "base/UserDefaults.h"
#include "displays/PresetDisplayControlling.h"
#include "presets/PresetStore.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace lumenvale {

enum class SettingsTab { general, displays, presets };

struct DisplaySelection {
    std::string id;
    bool operator==(const DisplaySelection& other) const = default;
};
struct PresetSelection {
    Uuid id;
    bool operator==(const PresetSelection& other) const = default;
};
using SettingsSelection = std::variant<DisplaySelection, PresetSelection>;

/// The preset as it was stored when the user selected it.
struct PresetEditingSession {
    BrightnessPreset savedPreset;
    bool operator==(const PresetEditingSession& other) const = default;
};

class PresetEditor {
public:
    /// All references must outlive the editor.
    PresetEditor(PresetDisplayControlling& displays, PresetStore& presets, UserDefaults& defaults);

    Published<SettingsTab> selectedTab{SettingsTab::general};
    Published<std::optional<Uuid>> activePresetID{std::nullopt};
    Published<std::optional<SettingsSelection>> selection{std::nullopt};
    Published<std::optional<PresetEditingSession>> session{std::nullopt};
    Published<std::optional<Uuid>> recordingShortcutID{std::nullopt};
    Published<bool> isPreparing{false};
    Published<std::optional<std::string>> message{std::nullopt};

    /// Called whenever `recordingShortcutID` changes.
    std::function<void()> shortcutRecordingChanged;

    /// Applies a preset from outside the settings window.
    void activate(const Uuid& id);
    void select(const std::optional<SettingsSelection>& next, bool force = false);
    /// The settings window was shown.
    void show(const std::optional<std::string>& preferred);
    void selectTab(SettingsTab tab);
    void addPresetFromCurrentLevels();
    void deletePreset(const Uuid& id);
    /// A live edit on the preset page.
    void setLevel(const Uuid& presetID, const DisplayInfo& display, double value);
    /// Restores the session's saved preset; false when there is no session to revert.
    bool revert();
    void startRecording(const Uuid& id);
    void cancelRecording();
    /// True when the event was consumed.
    bool handleKeyEvent(const KeyEvent& event);
    /// The display list or a level changed.
    void displaysChanged(const std::vector<DisplayInfo>& changed);
    /// The settings window lost the focus: ends a recording.
    void settingsResignedKey();
    /// The settings window closed: ends recording, operation and session.
    void settingsClosed();

    bool settingsVisible() const { return isVisible; }

private:
    bool isVisible = false;
    // to be completed
};

} // namespace lumenvale
