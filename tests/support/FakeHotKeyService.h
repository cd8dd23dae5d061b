// SPDX-License-Identifier: MIT
// A hot-key service whose keys the test presses.
#pragma once

#include "presets/HotKeyService.h"

#include <map>
#include <set>
#include <utility>
#include <vector>

namespace lumenvale {

class FakeHotKeyService final : public HotKeyService {
public:
    using Combination = std::pair<std::uint32_t, std::uint32_t>; ///< key code, modifiers

    struct Registration {
        Combination combination;
        HotKeyID id;
        std::string description;
    };

    static constexpr std::int32_t alreadyExistsStatus = -9878;

    std::int32_t installHandler(Handler next, HotKeyReference& reference) override
    {
        if (installStatus != 0)
            return installStatus;
        handler = std::move(next);
        reference = handlerReference;
        return 0;
    }
    void removeHandler(HotKeyReference reference) override
    {
        if (reference == handlerReference)
            handler = nullptr;
    }

    std::int32_t registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers, HotKeyID id,
                                const std::string& description, HotKeyReference& reference) override
    {
        usedIDs.push_back(id.id);
        const Combination combination(keyCode, modifiers);
        if (takenElsewhere.contains(combination) || find(combination))
            return alreadyExistsStatus;
        reference = ++lastReference;
        live.emplace(reference, Registration{combination, id, description});
        return 0;
    }
    void unregisterHotKey(HotKeyReference key) override { strayUnregistrations += live.erase(key) == 0; }

    void setStatusObserver(StatusObserver observer) override { statusObserver = std::move(observer); }

    const Registration* find(Combination combination) const
    {
        for (const auto& [reference, each] : live) {
            if (each.combination == combination)
                return &each;
        }
        return nullptr;
    }

    /// Presses a combination; the handler's answer, or none when the key does nothing.
    std::optional<std::int32_t> press(Combination combination) const
    {
        const Registration* key = find(combination);
        return key ? send(key->id) : std::nullopt;
    }
    /// Delivers an event as it stands.
    std::optional<std::int32_t> send(const std::optional<HotKeyID>& event) const
    {
        return handler ? std::optional(handler(event)) : std::nullopt;
    }

    std::int32_t installStatus = 0;
    std::set<Combination> takenElsewhere;
    Handler handler;
    StatusObserver statusObserver;
    std::map<HotKeyReference, Registration> live;
    std::vector<std::uint32_t> usedIDs; ///< of every attempt
    int strayUnregistrations = 0;       ///< of keys that are not registered

private:
    static constexpr HotKeyReference handlerReference = 77;

    HotKeyReference lastReference = 100;
};

} // namespace lumenvale
