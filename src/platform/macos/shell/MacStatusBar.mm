// SPDX-License-Identifier: MIT
#include "platform/macos/shell/MacStatusBar.h"

#include "platform/macos/displays/AppKitScreens.h"
#include "platform/macos/foundation/NSStrings.h"
#include "platform/macos/shell/ApplicationControl.h"

#import <AppKit/AppKit.h>
#import <AppKit/NSBitmapImageRep.h>
#include <utility>

@interface LMVStatusItemTarget : NSObject {
@public
    std::function<void()> activated;
}
- (void)activate:(id)sender;
@end

@implementation LMVStatusItemTarget
- (void)activate:(id)sender
{
    const auto call = activated; // it may remove the item
    if (call)
        call();
}
@end

namespace lumenvale {

namespace {

NSString* const itemName = @"Lumenvale";

/// Nil where the system has no memory for it.
NSBitmapImageRep* representation(const Bitmap& bitmap, NSSize points)
{
    NSBitmapImageRep* const result =
        [[NSBitmapImageRep alloc] initWithBitmapDataPlanes:nil
                                                pixelsWide:bitmap.width
                                                pixelsHigh:bitmap.height
                                             bitsPerSample:8
                                           samplesPerPixel:4
                                                  hasAlpha:YES
                                                  isPlanar:NO
                                            colorSpaceName:NSDeviceRGBColorSpace
                                              bitmapFormat:NSBitmapFormatAlphaNonpremultiplied
                                               bytesPerRow:bitmap.width * 4
                                              bitsPerPixel:32];
    unsigned char* sample = result.bitmapData;
    if (!sample)
        return nil;
    for (const std::uint32_t pixel : bitmap.pixels) {
        for (const int shift : {16, 8, 0, 24}) // red, green, blue, opacity
            *sample++ = static_cast<unsigned char>(pixel >> shift);
    }
    result.size = points;
    return result;
}

/// One image for all screens: AppKit draws the representation that has a screen's pixels per point.
NSImage* templateImage(const StatusItemContent& content)
{
    const Bitmap plain = content.image(1);
    const NSSize points = NSMakeSize(plain.width, plain.height);
    NSImage* const image = [[NSImage alloc] initWithSize:points];
    for (const Bitmap& bitmap : {plain, content.image(2)}) {
        if (NSBitmapImageRep* const each = representation(bitmap, points))
            [image addRepresentation:each];
    }
    [image setTemplate:YES]; // tinted to suit the bar
    image.accessibilityDescription = toNSString(content.title);
    return image;
}

class MacStatusItem final : public StatusItem {
public:
    explicit MacStatusItem(StatusItemContent shown)
        : content(std::move(shown)), target([LMVStatusItemTarget new]),
          dockObservation(dockChanged().subscribe([this] { showAnew(); }))
    {
        target->activated = content.activated;
        show();
    }
    MacStatusItem(const MacStatusItem&) = delete;
    MacStatusItem& operator=(const MacStatusItem&) = delete;
    ~MacStatusItem() override { hide(); }

    std::optional<Rect> frame() const override
    {
        NSStatusBarButton* const button = item.button;
        NSWindow* const window = button.window;
        if (!window.screen)
            return std::nullopt;
        const NSRect inWindow = [button convertRect:button.bounds toView:nil];
        const NSRect onScreen = [window convertRectToScreen:inWindow];
        return qtRect(onScreen.origin.x, onScreen.origin.y, onScreen.size.width, onScreen.size.height);
    }

    void menuChanged() override {} // a click opens the panel; there is no menu

private:
    void show()
    {
        item = [NSStatusBar.systemStatusBar statusItemWithLength:NSVariableStatusItemLength];
        item.autosaveName = itemName; // the user's place for it among the others
        NSStatusBarButton* const button = item.button;
        button.image = templateImage(content);
        button.toolTip = toNSString(content.toolTip);
        button.target = target;
        button.action = @selector(activate:);
    }
    /// AppKit forgets the place of an item that is removed; the user's choice is to outlast that.
    void hide()
    {
        NSUserDefaults* const defaults = NSUserDefaults.standardUserDefaults;
        NSString* const key = [@"NSStatusItem Preferred Position " stringByAppendingString:itemName];
        const id place = [defaults objectForKey:key];
        [NSStatusBar.systemStatusBar removeStatusItem:item];
        if (place)
            [defaults setObject:place forKey:key];
    }
    void showAnew() { hide(), show(); }

    StatusItemContent content;
    LMVStatusItemTarget* target; // the button does not keep it
    NSStatusItem* item = nil;    // nor does the bar keep the item
    Subscription dockObservation;
};

} // namespace

std::unique_ptr<StatusItem> MacStatusBar::createItem(StatusItemContent content)
{
    return std::make_unique<MacStatusItem>(std::move(content));
}

} // namespace lumenvale
