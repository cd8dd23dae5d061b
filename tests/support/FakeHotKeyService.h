// SPDX-License-Identifier: MIT
// A hot-key service whose keys the test presses.
#pragma once

#include "base/Words.h"
#include "presets/HotKeyService.h"

#include <algorithm>
#include <map>
#include <vector>

namespace lumenvale {

class FakeHotKeyService final : public HotKeyService {
public:
    void start(Events toCall) override { events = std::move(toCall); }
    void stop() override { events = {}; }

    tl::expected<void, std::string> registerHotKey(std::uint32_t id, const PresetShortcut& shortcut,
                                                   const std::string& description) override
    {
        usedIDs.push_back(id);
        if (std::ranges::any_of(takenElsewhere, [&](const auto& each) { return collide(each, shortcut); }) ||
            find(shortcut))
            return tl::unexpected(displayLabel(shortcut, portableWords) + " is taken.");
        live.emplace(id, Registration{shortcut, description});
        return {};
    }
    void unregisterHotKey(std::uint32_t id) override { strayUnregistrations += live.erase(id) == 0; }

    /// The id of the key, or none when it is not registered.
    std::optional<std::uint32_t> find(const PresetShortcut& shortcut) const
    {
        const auto key =
            std::ranges::find_if(live, [&](const auto& each) { return collide(each.second.shortcut, shortcut); });
        return key == live.end() ? std::nullopt : std::optional(key->first);
    }
    /// Does nothing where the key is not registered.
    void press(const PresetShortcut& shortcut) const
    {
        if (const auto id = find(shortcut))
            events.pressed(*id);
    }

    struct Registration {
        PresetShortcut shortcut;
        std::string description;
    };

    Events events;
    std::vector<PresetShortcut> takenElsewhere;
    std::map<std::uint32_t, Registration> live;
    std::vector<std::uint32_t> usedIDs; ///< of every attempt
    int strayUnregistrations = 0;       ///< of keys that are not registered
};

} // namespace lumenvale
