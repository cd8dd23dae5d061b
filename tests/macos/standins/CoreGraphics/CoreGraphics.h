// SPDX-License-Identifier: MIT
// Stands in for the macOS header of this name; see CoreFoundation.h beside it.
#pragma once

#include <IOKit/IOKitLib.h>

using CGDirectDisplayID = std::uint32_t;
using CGDisplayModeRef = struct CGDisplayMode*;
using CGDisplayChangeSummaryFlags = std::uint32_t;
enum CGError : std::int32_t { kCGErrorSuccess = 0, kCGErrorFailure = 1000 };
enum : CGDisplayChangeSummaryFlags {
    kCGDisplayBeginConfigurationFlag = 1 << 0,
    kCGDisplayAddFlag = 1 << 4,
    kCGDisplayRemoveFlag = 1 << 5,
};
using CGDisplayReconfigurationCallBack = void (*)(CGDirectDisplayID, CGDisplayChangeSummaryFlags, void*);

extern "C" {

CGDirectDisplayID CGMainDisplayID();
boolean_t CGDisplayIsOnline(CGDirectDisplayID display);
boolean_t CGDisplayIsAsleep(CGDirectDisplayID display);
boolean_t CGDisplayIsBuiltin(CGDirectDisplayID display);
std::uint32_t CGDisplayVendorNumber(CGDirectDisplayID display);
std::uint32_t CGDisplayModelNumber(CGDirectDisplayID display);
std::uint32_t CGDisplaySerialNumber(CGDirectDisplayID display);
CGDisplayModeRef CGDisplayCopyDisplayMode(CGDirectDisplayID display);
std::size_t CGDisplayModeGetPixelWidth(CGDisplayModeRef mode);
std::size_t CGDisplayModeGetPixelHeight(CGDisplayModeRef mode);
double CGDisplayModeGetRefreshRate(CGDisplayModeRef mode);
CGError CGDisplayRegisterReconfigurationCallback(CGDisplayReconfigurationCallBack callback, void* user);
CGError CGDisplayRemoveReconfigurationCallback(CGDisplayReconfigurationCallBack callback, void* user);
}
