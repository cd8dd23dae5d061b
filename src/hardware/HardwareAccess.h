// SPDX-License-Identifier: MIT
// What the hardware thread works with, as the platform supplies it.
#pragma once

#include "hardware/DisplaySystem.h"
#include "hardware/NativeBrightness.h"
#include "hardware/Pause.h"
#include "hardware/ServiceRegistry.h"

#include <functional>
#include <memory>
#include <string>

namespace lumenvale {

struct HardwareAccess {
    std::unique_ptr<ServiceRegistry> registry;
    std::unique_ptr<DisplaySystem> displaySystem;
    NativeFunctions native;
    Pause pause = blockingPause();
    /// Receives a line for every transfer, native call and wait, on the hardware thread; empty: nothing is logged.
    std::function<void(const std::string&)> log;
};

} // namespace lumenvale
