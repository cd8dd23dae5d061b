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

/// While brightness that the editor itself has requested is on its way to the displays, what they show does not
/// count as a change from outside; it is checked once when the last write has ended.
///
/// Preferences: "settingsDisplay" is the display that the Displays page shows first when the window is opened
/// without naming one. "settingsPreset" is the preset that was selected last: after a start it counts as active
/// again, without being applied, if the first displays that become known still have its levels.
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
    /// The settings window lost the focus: ends a recording, and closes the editing session by starting it anew
    /// from the preset as it is stored now. The page can be edited on, but what was changed before stays.
    void settingsResignedKey();
    /// The settings window closed: ends the recording, the operation (a preset that waits for earlier writes is
    /// no longer applied) and the session.
    void settingsClosed();

    bool settingsVisible() const { return isVisible; }

private:
    enum class Trigger { activation, selection };

    static constexpr char settingsPresetKey[] = "settingsPreset";
    static constexpr char settingsDisplayKey[] = "settingsDisplay";

    void cancelOperation();
    void startApplying(const Uuid& id, Trigger trigger);
    Task<> applyPreset(Uuid id, std::int64_t started, Trigger trigger);
    Task<> addPreset(std::int64_t started);
    void showAddedPreset(const BrightnessPreset& added);
    void startWrites(const std::map<std::string, double>& levels);
    Task<> finishWrites();
    void deactivateIfDifferent(const std::vector<DisplayInfo>& shown);
    void restoreActivePreset();
    void replaceLostDisplay();
    bool selectActivePreset();
    std::optional<SettingsSelection> firstDisplay() const;

    bool isVisible = false;
    PresetDisplayControlling& displays;
    PresetStore& presets;
    UserDefaults& defaults;
    std::int64_t generation = 0;      ///< grows with each operation and each cancellation
    std::optional<Uuid> preparingID;  ///< the preset that will be applied when earlier writes have ended
    std::optional<Uuid> restorableID; ///< the preset that may still prove to be active after a start
    bool writesAreOurs = false;       ///< levels that the editor requested are on their way
    std::optional<std::string> preferredDisplayID;
    TaskHandle settling; ///< waits for our writes to end
    TaskHandle operation;
};

} // namespace lumenvale
