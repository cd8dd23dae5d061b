// SPDX-License-Identifier: MIT
// The system's service for keyboard shortcuts that work in every program. Main thread only. Statuses are the
// system's codes; 0 is success.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace lumenvale {

struct HotKeyID {
    std::uint32_t signature = 0; ///< four characters that tell our keys from others in the process
    std::uint32_t id = 0;
};

/// Names an installed handler or a registered key; never 0.
using HotKeyReference = std::uint64_t;

/// The answer of a handler that does not know the key.
constexpr std::int32_t eventNotHandledStatus = -9874;

class HotKeyService {
public:
    /// Receives a press, or none where the system's event could not be read; returns 0 or a status.
    using Handler = std::function<std::int32_t(const std::optional<HotKeyID>&)>;
    /// Receives the id of a key that the system refused or revoked after `registerHotKey` had returned 0, with a
    /// whole sentence for the user; an empty text when it works again.
    using StatusObserver = std::function<void(std::uint32_t id, const std::string& message)>;

    virtual ~HotKeyService() = default;

    /// Starts the delivery of presses. Sets `reference` on success.
    virtual std::int32_t installHandler(Handler handler, HotKeyReference& reference) = 0;
    virtual void removeHandler(HotKeyReference handler) = 0;

    /// Registers a key (Macintosh virtual key code, HotKeyModifier bits). Sets `reference` on success.
    /// `description` is what a desktop may show the user in its own list of shortcuts.
    virtual std::int32_t registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers, HotKeyID id,
                                        const std::string& description, HotKeyReference& reference) = 0;
    virtual void unregisterHotKey(HotKeyReference key) = 0;

    /// Sets who hears of keys that stop or start working later. Systems that decide at once never call it.
    virtual void setStatusObserver(StatusObserver observer) = 0;
};

} // namespace lumenvale
