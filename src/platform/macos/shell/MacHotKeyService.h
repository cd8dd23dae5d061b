// SPDX-License-Identifier: MIT
// System-wide keys through Carbon's event manager, which delivers presses on the main run loop. Main thread only.
#pragma once

#include "presets/HotKeyService.h"

#include <Carbon/Carbon.h>
#include <map>

namespace lumenvale {

/// The four characters "LMVK": tells our keys from others in the process.
constexpr UInt32 hotKeySignature = 0x4C4D564B;

class MacHotKeyService final : public HotKeyService {
public:
    MacHotKeyService() = default;
    MacHotKeyService(const MacHotKeyService&) = delete;
    MacHotKeyService& operator=(const MacHotKeyService&) = delete;
    ~MacHotKeyService() override; ///< stops

    void start(Events toCall) override;
    void stop() override;
    /// The sentence of an error has the system's status in it.
    tl::expected<void, std::string> registerHotKey(std::uint32_t id, const PresetShortcut& shortcut,
                                                   const std::string& description) override;
    void unregisterHotKey(std::uint32_t id) override;

private:
    static OSStatus deliver(EventHandlerCallRef, EventRef event, void* service);

    Events events;
    EventHandlerRef handler = nullptr; ///< null when it could not be installed, and after `stop`
    OSStatus handlerStatus = noErr;    ///< of its installation
    std::map<std::uint32_t, EventHotKeyRef> registrations;
};

} // namespace lumenvale
