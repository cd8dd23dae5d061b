// SPDX-License-Identifier: MIT
// Owns the ordered list of presets, keeps it in the preferences, and sees to it that no two presets are given
// the same shortcut. Main thread only. Operations on an unknown id do nothing.
#pragma once

#include "base/Published.h"
#include "base/Signal.h"
#include "base/UserDefaults.h"
#include "displays/DisplayInfo.h"
#include "presets/BrightnessPreset.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace lumenvale {

class PresetStore {
public:
    /// Loads the presets from "brightnessPresets". What cannot be read gives an empty list and stays where it is
    /// until the next save, which first copies it to "brightnessPresets.unreadable" or, where something else was
    /// copied there before, to "brightnessPresets.unreadable.2" and so on. `defaults` must outlive the store.
    explicit PresetStore(UserDefaults& defaults);

    Published<std::vector<BrightnessPreset>> presets;
    /// What to show beside a preset's shortcut.
    Published<std::map<Uuid, std::string>> shortcutErrors;
    /// The last save's failure, whether it was noticed at once or while the preferences were brought to the disk;
    /// none once they have been.
    Published<std::optional<std::string>> persistenceError{std::nullopt};

    /// Called after each change that can alter the set of shortcuts.
    std::function<void()> shortcutsChanged;

    const BrightnessPreset* preset(const Uuid& id) const;

    BrightnessPreset addPreset(std::map<std::string, double> values,
                               std::map<std::string, std::string> displayNames);
    void deletePreset(const Uuid& id);
    /// Replaces the preset that has the same id, whole.
    void update(const BrightnessPreset& changed);
    void rename(const Uuid& id, const std::string& name);
    /// Records a level, normalised for the display. Ignores a value that is not finite.
    void setLevel(const Uuid& id, const DisplayInfo& display, double value);
    /// Gives or removes a shortcut. False, with a message in `shortcutErrors`, when another preset has it.
    bool setShortcut(const std::optional<PresetShortcut>& shortcut, const Uuid& id);
    void save();

private:
    template <typename Change>
    void modify(const Uuid& id, Change change);
    std::string nextDefaultName() const;
    void setShortcutError(const Uuid& id, std::optional<std::string> message);
    void setPersistenceError(const std::string& words);
    void keepUnreadable();
    void announceShortcuts();

    UserDefaults& defaults;
    bool hasSaved = false;           ///< since the start
    bool isUnencodable = false;      ///< the presets could not be encoded when they were last to be saved
    bool storedIsUnreadable = false; ///< what is stored did not decode and has not been copied aside
    Subscription failures;
};

} // namespace lumenvale
