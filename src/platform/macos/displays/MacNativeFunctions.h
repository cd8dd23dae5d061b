// SPDX-License-Identifier: MIT
// The brightness functions of the system's DisplayServices library, which has no public header and is loaded at
// run time.
#pragma once

#include "hardware/NativeBrightness.h"

namespace lumenvale {

/// Loads the library once; what is missing stays empty. The handle closes it.
NativeFunctions loadDisplayServices();

} // namespace lumenvale
