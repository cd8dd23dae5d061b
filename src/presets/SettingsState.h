// SPDX-License-Identifier: MIT
// What the settings window shows: tab, selection and editing session. Remembers the selection in the preferences.
// Main thread only.
#pragma once

#include "base/Published.h"
#include "base/UserDefaults.h"
#include "displays/DisplayInfo.h"
#include "presets/BrightnessPreset.h"

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

/// What the settings window shows: tab, selected display or preset, and the editing session. Main thread.
class SettingsState {
public:
    /// `defaults` must outlive the state. Reads "settingsDisplay".
    explicit SettingsState(UserDefaults& defaults);

    Published<SettingsTab> selectedTab{SettingsTab::general};
    Published<std::optional<SettingsSelection>> selection{std::nullopt};
    Published<std::optional<PresetEditingSession>> session{std::nullopt};

    bool isVisible = false;                        ///< the settings window is on the screen
    std::optional<std::string> preferredDisplayID; ///< an identifier, or "display-" and a display's number

    /// Selects, turns to the tab where the selection is shown, and stores "settingsPreset" and "settingsDisplay".
    void select(const std::optional<SettingsSelection>& next);
    /// Starts an editing session unless there is one of this preset; none while the window is not visible.
    void openSession(const BrightnessPreset& preset);
    /// Drops selection and session where they are of this preset.
    void forget(const Uuid& presetID);

    /// The preset of the session.
    std::optional<Uuid> editedPresetID() const;
    /// The display to show first: the preferred one, else the main one, else the first; none of an empty list.
    std::optional<SettingsSelection> firstDisplay(const std::vector<DisplayInfo>& displays) const;
    /// The Displays tab is on the screen and shows no display of this list.
    bool showsNoneOf(const std::vector<DisplayInfo>& displays) const;
    /// The preset that was selected when the program ended last.
    std::optional<Uuid> storedPreset() const;

private:
    UserDefaults& defaults;
};

} // namespace lumenvale
