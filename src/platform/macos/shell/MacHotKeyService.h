// SPDX-License-Identifier: MIT
// System-wide keys through Carbon's event manager, which delivers presses on the main run loop. Main thread only.
#pragma once

#include "presets/HotKeyService.h"

#include <Carbon/Carbon.h>
#include <map>
#include <memory>

namespace lumenvale {

class MacHotKeyService final : public HotKeyService {
public:
    MacHotKeyService() = default;
    MacHotKeyService(const MacHotKeyService&) = delete;
    MacHotKeyService& operator=(const MacHotKeyService&) = delete;
    /// Gives back what is still registered.
    ~MacHotKeyService() override;

    std::int32_t installHandler(Handler handler, HotKeyReference& reference) override;
    void removeHandler(HotKeyReference handler) override;
    std::int32_t registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers, HotKeyID id,
                                const std::string& description, HotKeyReference& reference) override;
    void unregisterHotKey(HotKeyReference key) override;
    /// Carbon decides at once.
    void setStatusObserver(StatusObserver) override {}

private:
    /// The user data of an installed handler: stays where it is until the handler is removed.
    struct Installed {
        std::shared_ptr<const Handler> handler;
        EventHandlerRef reference = nullptr;
    };

    static OSStatus deliver(EventHandlerCallRef, EventRef event, void* installed);

    std::map<HotKeyReference, std::unique_ptr<Installed>> handlers;
    std::map<HotKeyReference, EventHotKeyRef> keys;
    HotKeyReference last = 0;
};

} // namespace lumenvale
