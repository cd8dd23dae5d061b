// SPDX-License-Identifier: MIT
// Writes what goes over the wire into a log, byte for byte, and how long is waited in between.
#pragma once

#include "hardware/HardwareAccess.h"

namespace lumenvale {

/// `access` with every transfer, native call and wait logged to its sink; unchanged where it has none.
HardwareAccess withLogging(HardwareAccess access);

} // namespace lumenvale
