// SPDX-License-Identifier: MIT
#include "presets/GlobalShortcuts.h"

#include <utility>

namespace lumenvale {

GlobalShortcuts::GlobalShortcuts(HotKeyService& hotKeys, std::function<void(const Uuid&)> activate)
    : service(hotKeys), onActivate(std::move(activate))
{
    HotKeyReference reference = 0;
    handlerStatus = service.installHandler([this](const auto& key) { return keyPressed(key); }, reference);
    if (handlerStatus == 0)
        handler = reference;
    service.setStatusObserver([this](std::uint32_t id, const std::string& text) { statusArrived(id, text); });
}

GlobalShortcuts::~GlobalShortcuts() { stop(); }

std::map<Uuid, std::string> GlobalShortcuts::registerAll(const std::vector<BrightnessPreset>& presets)
{
    unregisterAll();
    std::map<Uuid, std::string> errors;
    if (handlerStatus == 0 && !handler)
        return errors; // stopped
    for (const BrightnessPreset& each : presets) {
        if (!each.shortcut || !keyCode(*each.shortcut))
            continue;
        if (auto error = registerShortcut(each))
            errors.insert_or_assign(each.id, std::move(*error));
    }
    return errors;
}

std::optional<std::string> GlobalShortcuts::registerShortcut(const BrightnessPreset& preset)
{
    if (handlerStatus != 0)
        return "Keyboard shortcut handler could not start (" + std::to_string(handlerStatus) + ").";
    const PresetShortcut& shortcut = *preset.shortcut;
    const HotKeyID id{hotKeySignature, nextID++};
    HotKeyReference reference = 0;
    const std::int32_t status =
        service.registerHotKey(*keyCode(shortcut), carbonModifiers(shortcut), id, displayName(preset), reference);
    if (status != 0 || reference == 0)
        return displayLabel(shortcut) + " could not be registered (" + std::to_string(status) +
               "). It may be used by macOS or another app.";
    registrations.push_back(reference);
    identifiers.insert_or_assign(id.id, preset.id);
    return std::nullopt;
}

void GlobalShortcuts::stop()
{
    unregisterAll();
    service.setStatusObserver(nullptr);
    if (const auto installed = std::exchange(handler, std::nullopt))
        service.removeHandler(*installed);
}

void GlobalShortcuts::unregisterAll()
{
    for (const HotKeyReference each : registrations)
        service.unregisterHotKey(each);
    registrations.clear();
    identifiers.clear();
}

std::int32_t GlobalShortcuts::keyPressed(const std::optional<HotKeyID>& key) const
{
    if (!key || key->signature != hotKeySignature)
        return eventNotHandledStatus;
    const auto found = identifiers.find(key->id);
    if (found != identifiers.end()) {
        const Uuid preset = found->second; // applying it may register anew
        onActivate(preset);
    }
    return 0;
}

void GlobalShortcuts::statusArrived(std::uint32_t id, const std::string& message) const
{
    const auto found = identifiers.find(id);
    if (found == identifiers.end() || !statusChanged)
        return;
    const Uuid preset = found->second;
    statusChanged(preset, message);
}

} // namespace lumenvale
