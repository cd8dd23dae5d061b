// SPDX-License-Identifier: MIT
#include "presets/PresetStore.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

namespace lumenvale {

namespace {

constexpr char presetsKey[] = "brightnessPresets";
constexpr char unreadableKey[] = "brightnessPresets.unreadable";

/// Removes what no preset may hold: levels outside 0…1 and a shortcut without a key.
void clean(BrightnessPreset& preset)
{
    std::erase_if(preset.values, [](const auto& entry) { return !(entry.second >= 0.0 && entry.second <= 1.0); });
    for (auto& entry : preset.values)
        entry.second += 0.0; // minus zero becomes zero
    if (preset.shortcut && !keyCode(*preset.shortcut))
        preset.shortcut.reset();
}

std::vector<BrightnessPreset> cleaned(std::vector<BrightnessPreset> decoded)
{
    std::set<Uuid> seen;
    std::erase_if(decoded, [&seen](const BrightnessPreset& each) { return !seen.insert(each.id).second; });
    std::ranges::for_each(decoded, clean);
    return decoded;
}

} // namespace

PresetStore::PresetStore(UserDefaults& defaults) : defaults(defaults)
{
    if (const std::optional<PropertyValue> stored = defaults.value(presetsKey)) {
        const auto* data = stored->as<PropertyData>();
        if (auto decoded = decodePresets(data ? *data : PropertyData()))
            presets.set(cleaned(std::move(*decoded)));
        else
            storedIsUnreadable = true;
    }
    failures = defaults.observeFailures([this](const std::string& words) {
        if (words.empty())
            persistenceError.setIfChanged(std::nullopt);
        else if (hasSaved) // else it was not presets that could not be saved
            setPersistenceError(words);
    });
}

const BrightnessPreset* PresetStore::preset(const Uuid& id) const
{
    const auto found = std::ranges::find(*presets, id, &BrightnessPreset::id);
    return found == presets->end() ? nullptr : &*found;
}

BrightnessPreset PresetStore::addPreset(std::map<std::string, double> values,
                                        std::map<std::string, std::string> displayNames)
{
    BrightnessPreset added{Uuid::random(), nextDefaultName(), defaultShortcut(*presets), std::move(values),
                           std::move(displayNames)};
    clean(added);
    presets.modify([&added](auto& list) { list.push_back(added); });
    save();
    announceShortcuts();
    return added;
}

void PresetStore::deletePreset(const Uuid& id)
{
    if (!preset(id))
        return;
    const Uuid deleted = id; // `id` may be a field of the preset
    presets.modify([&deleted](auto& list) {
        std::erase_if(list, [&deleted](const BrightnessPreset& each) { return each.id == deleted; });
    });
    setShortcutError(deleted, std::nullopt);
    save();
    announceShortcuts();
}

void PresetStore::update(const BrightnessPreset& changed)
{
    if (!preset(changed.id))
        return;
    modify(changed.id, [&changed](BrightnessPreset& stored) {
        stored = changed;
        clean(stored);
    });
    save();
    announceShortcuts();
}

void PresetStore::rename(const Uuid& id, const std::string& name)
{
    if (!preset(id))
        return;
    modify(id, [&name](BrightnessPreset& stored) { stored.name = name; });
    save();
}

void PresetStore::setLevel(const Uuid& id, const DisplayInfo& display, double value)
{
    if (!std::isfinite(value) || !preset(id))
        return;
    modify(id, [&](BrightnessPreset& stored) {
        stored.values[display.id] = quantise(display, value);
        stored.displayNames[display.id] = display.name;
        clean(stored);
    });
    save();
}

bool PresetStore::setShortcut(const std::optional<PresetShortcut>& shortcut, const Uuid& id)
{
    if (!preset(id))
        return false;
    const Uuid changed = id;
    const bool isTaken = shortcut && std::ranges::any_of(*presets, [&](const BrightnessPreset& each) {
                             return each.id != changed && each.shortcut && collide(*each.shortcut, *shortcut);
                         });
    if (isTaken) {
        setShortcutError(changed, "This shortcut is already assigned to another preset.");
        return false;
    }
    modify(changed, [&shortcut](BrightnessPreset& stored) { stored.shortcut = shortcut; });
    setShortcutError(changed, std::nullopt);
    save();
    announceShortcuts();
    return true;
}

void PresetStore::save()
{
    auto data = encodePresets(*presets);
    const bool couldNotEncode = std::exchange(isUnencodable, !data);
    if (!data) {
        setPersistenceError(data.error());
        return;
    }
    // A failure of the disk lasts until the disk takes them: it is told later, and would come and go meanwhile.
    if (couldNotEncode)
        persistenceError.setIfChanged(std::nullopt);
    keepUnreadable();
    hasSaved = true;
    defaults.set(presetsKey, PropertyValue(std::move(*data)));
}

/// Changes the stored preset with this id in place.
template <typename Change>
void PresetStore::modify(const Uuid& id, Change change)
{
    presets.modify([&](auto& list) {
        const auto stored = std::ranges::find(list, id, &BrightnessPreset::id);
        if (stored != list.end())
            change(*stored);
    });
}

std::string PresetStore::nextDefaultName() const
{
    std::set<std::string> taken;
    for (const BrightnessPreset& each : *presets)
        taken.insert(displayName(each));
    for (std::size_t number = 1;; ++number) {
        std::string name = "Preset " + std::to_string(number);
        if (!taken.contains(name))
            return name;
    }
}

void PresetStore::setShortcutError(const Uuid& id, std::optional<std::string> message)
{
    auto errors = *shortcutErrors;
    if (message)
        errors.insert_or_assign(id, std::move(*message));
    else
        errors.erase(id);
    shortcutErrors.setIfChanged(std::move(errors));
}

void PresetStore::setPersistenceError(const std::string& words)
{
    persistenceError.setIfChanged("Could not save presets: " + words);
}

void PresetStore::keepUnreadable()
{
    const std::optional<PropertyValue> stored = defaults.value(presetsKey);
    if (!std::exchange(storedIsUnreadable, false) || !stored)
        return;
    std::string key = unreadableKey;
    std::optional<PropertyValue> earlier = defaults.value(key);
    for (std::size_t number = 2; earlier && earlier != stored; ++number) {
        key = unreadableKey + ("." + std::to_string(number));
        earlier = defaults.value(key);
    }
    if (!earlier)
        defaults.set(key, *stored);
}

void PresetStore::announceShortcuts()
{
    if (const auto call = shortcutsChanged) // a copy: it may replace itself
        call();
}

} // namespace lumenvale
