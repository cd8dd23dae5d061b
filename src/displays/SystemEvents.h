// SPDX-License-Identifier: MIT
// What the system announces about its screens and its sleep.
#pragma once

#include "base/Signal.h"

#include <functional>

namespace lumenvale {

enum class SystemEvent {
    screensDidSleep,
    screensDidWake,
    systemWillSleep,
    systemDidWake,
    screenParametersChanged, ///< a display was connected, removed or reconfigured
};

class SystemEvents {
public:
    virtual ~SystemEvents() = default;

    /// Calls `observer` on the main thread for every event from now on.
    [[nodiscard]] virtual Subscription subscribe(std::function<void(SystemEvent)> observer) = 0;
};

} // namespace lumenvale
