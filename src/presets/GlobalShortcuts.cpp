// SPDX-License-Identifier: MIT
#include "presets/GlobalShortcuts.h"

#include <utility>

namespace lumenvale {

GlobalShortcuts::GlobalShortcuts(HotKeyService& service, std::function<void(const Uuid&)> onActivate)
    : service(service), onActivate(std::move(onActivate))
{
    service.start({
        .pressed = [this](std::uint32_t id) { pressed(id); },
        .changed = [this](std::uint32_t id, const std::string& message) { changed(id, message); },
    });
}

GlobalShortcuts::~GlobalShortcuts() { stop(); }

std::map<Uuid, std::string> GlobalShortcuts::registerAll(const std::vector<BrightnessPreset>& presets)
{
    std::map<Uuid, std::string> errors;
    if (isStopped)
        return errors;
    unregisterAll();
    for (const BrightnessPreset& each : presets) {
        if (!each.shortcut || !keyCode(*each.shortcut))
            continue;
        const std::uint32_t id = nextID++;
        if (const auto registered = service.registerHotKey(id, *each.shortcut, displayName(each)))
            identifiers.insert_or_assign(id, each.id);
        else
            errors.insert_or_assign(each.id, registered.error());
    }
    return errors;
}

void GlobalShortcuts::stop()
{
    if (std::exchange(isStopped, true))
        return;
    unregisterAll();
    service.stop();
}

void GlobalShortcuts::unregisterAll()
{
    for (const auto& [id, preset] : identifiers)
        service.unregisterHotKey(id);
    identifiers.clear();
}

void GlobalShortcuts::pressed(std::uint32_t id) const
{
    const auto found = identifiers.find(id);
    if (found == identifiers.end())
        return;
    const Uuid preset = found->second; // applying it may register anew
    onActivate(preset);
}

void GlobalShortcuts::changed(std::uint32_t id, const std::string& message) const
{
    const auto found = identifiers.find(id);
    if (found == identifiers.end() || !statusChanged)
        return;
    const Uuid preset = found->second;
    statusChanged(preset, message);
}

} // namespace lumenvale
