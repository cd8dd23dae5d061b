// SPDX-License-Identifier: MIT
#include "platform/macos/displays/AppKitScreens.h"

#include "platform/macos/foundation/NSStrings.h"

#import <AppKit/AppKit.h>

namespace lumenvale {

Rect qtRect(double x, double y, double width, double height)
{
    // The first screen holds the origin; NSScreen.mainScreen is the one with the focus.
    const double top = NSScreen.screens.firstObject.frame.size.height;
    return {x, top - y - height, width, height};
}

std::vector<AppKitScreen> appKitScreens()
{
    std::vector<AppKitScreen> screens;
    @autoreleasepool {
        for (NSScreen* each in NSScreen.screens) {
            AppKitScreen screen;
            const id number = each.deviceDescription[@"NSScreenNumber"];
            if ([number isKindOfClass:NSNumber.class])
                screen.displayID = [number unsignedIntValue];
            screen.name = toStdString(each.localizedName);
            const NSRect frame = each.frame;
            screen.frame = qtRect(frame.origin.x, frame.origin.y, frame.size.width, frame.size.height);
            screens.push_back(screen);
        }
    }
    return screens;
}

} // namespace lumenvale
