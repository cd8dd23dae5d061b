// SPDX-License-Identifier: MIT
#include "presets/SettingsState.h"

#include <algorithm>

namespace lumenvale {

namespace {

constexpr char settingsPresetKey[] = "settingsPreset";
constexpr char settingsDisplayKey[] = "settingsDisplay";

} // namespace

SettingsState::SettingsState(UserDefaults& defaults)
    : preferredDisplayID(readDefault<std::string>(defaults, settingsDisplayKey)), defaults(defaults)
{
}

void SettingsState::select(const std::optional<SettingsSelection>& next)
{
    const SettingsSelection* selected = next ? &*next : nullptr;
    selection.setIfChanged(next);
    if (const auto* display = std::get_if<DisplaySelection>(selected)) {
        selectedTab.setIfChanged(SettingsTab::displays);
        preferredDisplayID = display->id;
        defaults.set(settingsDisplayKey, display->id);
    }
    if (const auto* preset = std::get_if<PresetSelection>(selected)) {
        selectedTab.setIfChanged(SettingsTab::presets);
        defaults.set(settingsPresetKey, preset->id.toString());
    } else {
        defaults.set(settingsPresetKey, std::nullopt);
    }
}

void SettingsState::openSession(const BrightnessPreset& preset)
{
    if (!isVisible)
        session.setIfChanged(std::nullopt);
    else if (editedPresetID() != preset.id)
        session.set(PresetEditingSession{preset});
}

void SettingsState::forget(const Uuid& presetID)
{
    if (editedPresetID() == presetID)
        session.set(std::nullopt);
    if (selection.get() == SettingsSelection(PresetSelection{presetID}))
        select(std::nullopt);
}

std::optional<Uuid> SettingsState::editedPresetID() const
{
    return session.get() ? std::optional(session.get()->savedPreset.id) : std::nullopt;
}

std::optional<SettingsSelection> SettingsState::firstDisplay(const std::vector<DisplayInfo>& displays) const
{
    if (displays.empty())
        return std::nullopt;
    auto chosen = std::ranges::find_if(displays, [this](const DisplayInfo& each) {
        return each.id == preferredDisplayID ||
               stableIdentifier(std::nullopt, each.displayID) == preferredDisplayID;
    });
    if (chosen == displays.end())
        chosen = std::ranges::find_if(displays, &DisplayInfo::isMain);
    return DisplaySelection{chosen == displays.end() ? displays.front().id : chosen->id};
}

bool SettingsState::showsNoneOf(const std::vector<DisplayInfo>& displays) const
{
    if (!isVisible || selectedTab.get() != SettingsTab::displays)
        return false;
    const auto* shown = selection.get() ? std::get_if<DisplaySelection>(&*selection.get()) : nullptr;
    return !shown || !findDisplay(displays, shown->id);
}

std::optional<Uuid> SettingsState::storedPreset() const
{
    const auto text = readDefault<std::string>(defaults, settingsPresetKey);
    return text ? Uuid::parse(*text) : std::nullopt;
}

} // namespace lumenvale
