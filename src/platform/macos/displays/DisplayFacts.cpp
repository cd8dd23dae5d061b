// SPDX-License-Identifier: MIT
#include "platform/macos/displays/DisplayFacts.h"

#include "platform/macos/foundation/PropertyConversion.h"

#include <ColorSync/ColorSync.h>
#include <CoreGraphics/CoreGraphics.h>

namespace lumenvale {

namespace {

std::optional<ScreenMode> currentMode(CGDirectDisplayID display)
{
    const CFReference<CGDisplayModeRef> mode(CGDisplayCopyDisplayMode(display));
    if (!mode)
        return std::nullopt;
    return ScreenMode{static_cast<std::int64_t>(CGDisplayModeGetPixelWidth(mode.get())),
                      static_cast<std::int64_t>(CGDisplayModeGetPixelHeight(mode.get())),
                      CGDisplayModeGetRefreshRate(mode.get())};
}

} // namespace

std::optional<std::string> displayUuid(std::uint32_t displayID)
{
    const CFReference<CFUUIDRef> uuid(CGDisplayCreateUUIDFromDisplayID(displayID));
    if (!uuid)
        return std::nullopt;
    const CFReference<CFStringRef> text(CFUUIDCreateString(kCFAllocatorDefault, uuid.get()));
    return toText(text.get());
}

Screen displayFacts(std::uint32_t displayID)
{
    Screen screen;
    screen.displayID = displayID;
    screen.uuid = displayUuid(displayID);
    screen.isBuiltIn = CGDisplayIsBuiltin(displayID) != 0;
    screen.isMain = displayID == CGMainDisplayID();
    screen.vendor = CGDisplayVendorNumber(displayID);
    screen.model = CGDisplayModelNumber(displayID);
    screen.serial = CGDisplaySerialNumber(displayID);
    screen.mode = currentMode(displayID);
    return screen;
}

} // namespace lumenvale
