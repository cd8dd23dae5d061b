// SPDX-License-Identifier: MIT
// The panel's brightness through the kernel's backlight files. A file that the user may not write is left to the
// login service, which may. Hardware thread only.
#pragma once

#include "hardware/NativeBrightness.h"
#include "platform/Platform.h"
#include "platform/linux/displays/DisplaySnapshot.h"
#include "platform/linux/displays/DisplayTroubles.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace lumenvale {

/// Ways to set a backlight device's raw value. Both return 0 or the system's error number.
struct BacklightWriters {
    std::function<int(const std::filesystem::path& file, std::int64_t raw)> file;
    /// Asks a service that has the right to do it, and waits for its answer. May be empty.
    std::function<int(const std::string& device, std::int64_t raw)> service;
};

/// The functions for the panels of `snapshot` as it was last taken. A panel's levels are the raw values that it is
/// given, and what is read is what the device holds. Failures are the system's error numbers; `troubles` is told
/// of those of the setter. A hold is the advisory lock of the device's file.
NativeFunctions makeLinuxBrightness(std::shared_ptr<const DisplaySnapshot> snapshot, BacklightWriters writers,
                                    std::shared_ptr<DisplayTroubles> troubles, LogSink log);

} // namespace lumenvale
