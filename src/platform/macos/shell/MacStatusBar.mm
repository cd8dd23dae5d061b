// SPDX-License-Identifier: MIT
#include "platform/macos/shell/MacStatusBar.h"

#include "platform/macos/displays/AppKitScreens.h"
#include "platform/macos/foundation/NSStrings.h"
#include "platform/macos/shell/TiffImage.h"

#import <AppKit/AppKit.h>

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

NSImage* templateImage(const StatusItemContent& content)
{
    const Bitmap image1 = content.image(1);
    const std::vector<std::uint8_t> file = encodeTiff({{image1, 1}, {content.image(2), 2}});
    NSImage* const image = [[NSImage alloc] initWithData:[NSData dataWithBytes:file.data() length:file.size()]];
    image.size = NSMakeSize(image1.width, image1.height); // in points, whatever page AppKit takes first
    [image setTemplate:YES];                              // tinted to suit the bar
    image.accessibilityDescription = toNSString(content.title);
    return image;
}

class MacStatusItem final : public StatusItem {
public:
    explicit MacStatusItem(const StatusItemContent& content)
        : target([LMVStatusItemTarget new]),
          item([NSStatusBar.systemStatusBar statusItemWithLength:NSVariableStatusItemLength])
    {
        target->activated = content.activated;
        NSStatusBarButton* const button = item.button;
        button.image = templateImage(content);
        button.toolTip = toNSString(content.toolTip);
        button.target = target;
        button.action = @selector(activate:);
    }
    MacStatusItem(const MacStatusItem&) = delete;
    MacStatusItem& operator=(const MacStatusItem&) = delete;
    ~MacStatusItem() override { [NSStatusBar.systemStatusBar removeStatusItem:item]; }

    std::optional<Rect> frame() const override
    {
        NSStatusBarButton* const button = item.button;
        NSWindow* const window = button.window;
        if (!window.screen)
            return std::nullopt;
        const NSRect inWindow = [button convertRect:button.bounds toView:nil];
        const NSRect onScreen = [window convertRectToScreen:inWindow];
        return toolkitRect(onScreen.origin.x, onScreen.origin.y, onScreen.size.width, onScreen.size.height);
    }

    void menuChanged() override {} // a click opens the panel; there is no menu

private:
    LMVStatusItemTarget* target; // the button does not keep it
    NSStatusItem* item;          // nor does the bar keep the item
};

} // namespace

std::unique_ptr<StatusItem> MacStatusBar::createItem(StatusItemContent content)
{
    return std::make_unique<MacStatusItem>(content);
}

} // namespace lumenvale
