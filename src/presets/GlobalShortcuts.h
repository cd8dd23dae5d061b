// SPDX-License-Identifier: MIT
// Makes each preset's shortcut work system-wide: registers the keys and tells which preset a pressed key means.
// Applies nothing itself. Main thread only; made once, after the preset store.
#pragma once

#include "base/Uuid.h"
#include "presets/BrightnessPreset.h"
#include "presets/HotKeyService.h"

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace lumenvale {

class GlobalShortcuts {
public:
    /// Starts the service; a failure shows in what `registerAll` returns. `onActivate` receives the preset whose
    /// key was pressed. `service` must outlive the object.
    GlobalShortcuts(HotKeyService& service, std::function<void(const Uuid&)> onActivate);
    GlobalShortcuts(const GlobalShortcuts&) = delete;
    GlobalShortcuts& operator=(const GlobalShortcuts&) = delete;
    ~GlobalShortcuts(); ///< stops

    /// Called when the system decides after `registerAll` has returned: a preset's shortcut does not work, for the
    /// reason given in a whole sentence, or works again (empty text). Belongs beside what `registerAll` returned.
    std::function<void(const Uuid& preset, const std::string& message)> statusChanged;

    /// Unregisters everything and registers the shortcuts of `presets`, in their order. Returns a message for each
    /// preset whose shortcut does not work. Does nothing once stopped.
    std::map<Uuid, std::string> registerAll(const std::vector<BrightnessPreset>& presets);

    /// Unregisters everything for good and stops the service.
    void stop();

private:
    void unregisterAll();
    void pressed(std::uint32_t id) const;
    void changed(std::uint32_t id, const std::string& message) const;

    HotKeyService& service;
    std::function<void(const Uuid&)> onActivate;
    std::map<std::uint32_t, Uuid> identifiers; ///< the presets by the ids of their registered keys
    std::uint32_t nextID = 1;                  ///< never reset, so that a late press cannot mean another preset
    bool isStopped = false;
};

} // namespace lumenvale
