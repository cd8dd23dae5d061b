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
    Pause pause = blockingPause();
    /// Receives a line for every route, transfer, native call and wait, on the hardware thread; empty: nothing is
    /// logged.
    std::function<void(const std::string&)> log;
};

/// `access` with its routes, native functions and pause writing to its log; unchanged where it has none.
HardwareAccess withLogging(HardwareAccess access);

} // namespace lumenvale
