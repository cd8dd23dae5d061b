// SPDX-License-Identifier: MIT
// The system's service for keyboard shortcuts that work in every program. Main thread only.
#pragma once

#include "presets/PresetShortcut.h"

#include <cstdint>
#include <functional>
#include <string>
#include <tl/expected.hpp>

namespace lumenvale {

class HotKeyService {
public:
    /// Whom the service calls. Each call may register and unregister keys, and may stop the service.
    struct Events {
        /// The key with this id was pressed; not called for repeats.
        std::function<void(std::uint32_t id)> pressed;
        /// The system refused or revoked a key that `registerHotKey` had accepted, for the reason in a whole
        /// sentence for the user; an empty text when the key works again. Systems that decide at once never call.
        std::function<void(std::uint32_t id, const std::string& message)> changed;
    };

    virtual ~HotKeyService() = default;

    /// Begins to deliver presses. Where that fails, `registerHotKey` says so.
    virtual void start(Events toCall) = 0;
    /// Gives back every key and calls nobody any more.
    virtual void stop() = 0;

    /// Registers a key under an id that no registered key has. The error is a whole sentence for the user in the
    /// system's own words: the combination is taken, no keyboard here has the key, or the service is not
    /// available. `description` is what a desktop may show the user in its own list of shortcuts.
    virtual tl::expected<void, std::string> registerHotKey(std::uint32_t id, const PresetShortcut& shortcut,
                                                           const std::string& description) = 0;
    /// Ignores an id that is not registered.
    virtual void unregisterHotKey(std::uint32_t id) = 0;
};

} // namespace lumenvale
