// SPDX-License-Identifier: MIT
// Stands between the presets and the displays: what the settings window, the panel and the menus do with presets
// goes through here. Main thread only.
#pragma once

#include "presets/PresetActivation.h"
#include "presets/SettingsState.h"
#include "presets/ShortcutRecorder.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace lumenvale {

/// Preferences: "settingsDisplay" is the display that the Displays page shows first when the window is opened
/// without naming one. "settingsPreset" is the preset that was selected last: after a start it counts as active
/// again, without being applied, if the first displays that become known still have its levels.
class PresetEditor {
    PresetDisplayControlling& displays;
    PresetStore& presets;
    SettingsState settings;
    ShortcutRecorder recorder;
    PresetActivation activation; ///< last: its tasks use the others

public:
    /// All references must outlive the editor.
    PresetEditor(PresetDisplayControlling& displays, PresetStore& presets, UserDefaults& defaults);
    PresetEditor(const PresetEditor&) = delete;
    PresetEditor& operator=(const PresetEditor&) = delete;

    // What the parts of the editor publish.
    Published<SettingsTab>& selectedTab = settings.selectedTab;
    Published<std::optional<Uuid>>& activePresetID = activation.activePresetID;
    Published<std::optional<SettingsSelection>>& selection = settings.selection;
    Published<std::optional<PresetEditingSession>>& session = settings.session;
    Published<std::optional<Uuid>>& recordingShortcutID = recorder.recordingShortcutID;
    Published<bool>& isPreparing = activation.isPreparing;
    Published<std::optional<std::string>>& message = activation.message;

    /// Called whenever `recordingShortcutID` changes.
    std::function<void()>& shortcutRecordingChanged = recorder.shortcutRecordingChanged;

    /// Applies a preset from outside the settings window.
    void activate(Uuid id);
    /// Shows a display or a preset in the settings window, or neither. A preset is also applied while the window
    /// is visible. Without `force`, selecting what is selected does nothing.
    void select(std::optional<SettingsSelection> next, bool force = false);
    /// The settings window was shown. `preferred` names the display to show first, by its identifier or as
    /// "display-" and its number.
    void show(const std::optional<std::string>& preferred);
    void selectTab(SettingsTab tab);
    void addPresetFromCurrentLevels();
    void deletePreset(Uuid id);
    /// A live edit on the preset page.
    void setLevel(Uuid presetID, const DisplayInfo& display, double value);
    /// Restores the session's saved preset; false when there is no session to revert.
    bool revert();
    void startRecording(Uuid id);
    void cancelRecording();
    /// Offers an event to a recording in progress; true when it was consumed.
    bool handleKeyEvent(const KeyEvent& event);
    /// The display list or a level changed; `changed` holds the whole list or only the displays that changed. May
    /// be called from within a notification of the display list; but a display that came or went is noticed only
    /// once it stands in the list, so call it again on a later turn of the main loop.
    void displaysChanged(const std::vector<DisplayInfo>& changed);
    /// The settings window lost the focus: ends a recording. The editing session goes on, since the page promises
    /// that Escape restores the preset as it was when it was selected.
    void settingsResignedKey();
    /// The settings window closed: ends the recording, the operation (a preset that waits for earlier writes is
    /// no longer applied) and the session.
    void settingsClosed();

    bool settingsVisible() const { return settings.isVisible; }

private:
    void addPreset();
    bool selectActivePreset();
    void replaceLostDisplay();
};

} // namespace lumenvale
