// SPDX-License-Identifier: MIT
// Stands in for the macOS header of this name; see CoreFoundation.h beside it.
#pragma once
#include <CoreFoundation/CoreFoundation.h>
extern "C" CFUUIDRef CGDisplayCreateUUIDFromDisplayID(std::uint32_t);
