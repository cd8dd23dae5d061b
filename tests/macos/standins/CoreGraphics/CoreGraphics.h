// SPDX-License-Identifier: MIT
// Stands in for the macOS header of this name; see CoreFoundation.h beside it.
#pragma once

#include <IOKit/IOKitLib.h>

using CGDirectDisplayID = std::uint32_t;
using CGDisplayModeRef = struct CGDisplayMode*;
using CGDisplayChangeSummaryFlags = std::uint32_t;
enum CGError : std::int32_t { kCGErrorSuccess = 0, kCGErrorFailure = 1000 };
enum : CGDisplayChangeSummaryFlags { kCGDisplayBeginConfigurationFlag = 1 };
using CGDisplayReconfigurationCallBack = void (*)(CGDirectDisplayID, CGDisplayChangeSummaryFlags, void*);

extern "C" {
CGDirectDisplayID CGMainDisplayID();
boolean_t CGDisplayIsOnline(CGDirectDisplayID);
boolean_t CGDisplayIsAsleep(CGDirectDisplayID);
boolean_t CGDisplayIsBuiltin(CGDirectDisplayID);
std::uint32_t CGDisplayVendorNumber(CGDirectDisplayID);
std::uint32_t CGDisplayModelNumber(CGDirectDisplayID);
std::uint32_t CGDisplaySerialNumber(CGDirectDisplayID);
CGDisplayModeRef CGDisplayCopyDisplayMode(CGDirectDisplayID);
std::size_t CGDisplayModeGetPixelWidth(CGDisplayModeRef);
std::size_t CGDisplayModeGetPixelHeight(CGDisplayModeRef);
double CGDisplayModeGetRefreshRate(CGDisplayModeRef);
CGError CGDisplayRegisterReconfigurationCallback(CGDisplayReconfigurationCallBack, void*);
CGError CGDisplayRemoveReconfigurationCallback(CGDisplayReconfigurationCallBack, void*);
}
