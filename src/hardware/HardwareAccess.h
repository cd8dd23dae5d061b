// SPDX-License-Identifier: MIT
// What the hardware thread works with, as the platform supplies it.
#pragma once

#include "hardware/DisplayRoutes.h"
#include "hardware/NativeBrightness.h"
#include "hardware/Pause.h"

#include <functional>
#include <memory>
#include <string>

namespace lumenvale {

struct HardwareAccess {
    std::unique_ptr<DisplayRoutes> routes;
    NativeFunctions native;
    /// Cancelled when the program ends: who waits then goes on, and nothing more is transferred.
    CancellationToken stopping;
    Pause pause = blockingPause(stopping);
    /// Receives a line for every route, transfer, native call and wait, on the hardware thread; empty: nothing is
    /// logged.
    std::function<void(const std::string&)> log;
};

/// `access` with channels that transfer nothing more once it is stopping, and with channels, native functions and
/// pause that write to its log where it has one.
HardwareAccess guarded(HardwareAccess access);

} // namespace lumenvale
