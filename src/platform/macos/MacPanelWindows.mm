// SPDX-License-Identifier: MIT
#include "platform/macos/MacPanelWindows.h"

#include "platform/macos/ApplicationControl.h"

#import <AppKit/AppKit.h>
#import <QuartzCore/QuartzCore.h>

/// A setter of NSPanel without a public declaration.
@protocol LMVPreventsActivation
- (void)_setPreventsActivation:(BOOL)prevents;
@end

namespace lumenvale {

namespace {

/// The toolkit's handle is its view, the content of a window that it owns. Never kept: the window may be made
/// anew.
NSWindow* windowOf(WindowHandle handle)
{
    NSView* const view = (__bridge NSView*)reinterpret_cast<void*>(handle);
    return view.window;
}

/// AppKit tells the window server only when it makes a panel whether clicks on it activate the program; the
/// toolkit offers no flag for that. Where this setter exists it tells it now. Without it the first click in the
/// panel activates the program, and everything else works.
void preventActivation(NSWindow* window)
{
    if ([window respondsToSelector:@selector(_setPreventsActivation:)])
        [(id<LMVPreventsActivation>)window _setPreventsActivation:YES];
}

bool isDressed(NSWindow* window) { return (window.styleMask & NSWindowStyleMaskNonactivatingPanel) != 0; }

/// The material lies behind the toolkit's view: in it, it would cover what the toolkit draws, and the toolkit's
/// view must stay the content view.
NSVisualEffectView* material(NSWindow* window)
{
    NSView* const content = window.contentView;
    NSView* const frame = content.superview;
    for (NSView* each in frame.subviews) {
        if ([each isKindOfClass:NSVisualEffectView.class])
            return (NSVisualEffectView*)each;
    }
    NSVisualEffectView* const view = [[NSVisualEffectView alloc] initWithFrame:content.frame];
    view.material = NSVisualEffectMaterialPopover;
    view.blendingMode = NSVisualEffectBlendingModeBehindWindow;
    view.state = NSVisualEffectStateActive; // also while another program is the active one
    view.wantsLayer = YES;
    view.layer.masksToBounds = YES;
    view.autoresizingMask = NSViewWidthSizable | NSViewHeightSizable;
    [frame addSubview:view positioned:NSWindowBelow relativeTo:content];
    return view;
}

class OutsideClickMonitor final : public EventMonitor {
public:
    explicit OutsideClickMonitor(const std::function<void()>& clicked)
    {
        const std::function<void()> call = clicked;
        monitor =
            [NSEvent addGlobalMonitorForEventsMatchingMask:NSEventMaskLeftMouseDown | NSEventMaskRightMouseDown
                                                   handler:^(NSEvent*) {
                                                     const auto kept = call; // the call ends this monitor
                                                     kept();
                                                   }];
    }
    OutsideClickMonitor(const OutsideClickMonitor&) = delete;
    OutsideClickMonitor& operator=(const OutsideClickMonitor&) = delete;
    ~OutsideClickMonitor() override
    {
        if (monitor)
            [NSEvent removeMonitor:monitor];
    }

private:
    id monitor;
};

} // namespace

bool MacPanelWindows::dress(WindowHandle handle)
{
    NSWindow* const window = windowOf(handle);
    window.styleMask = NSWindowStyleMaskNonactivatingPanel;
    preventActivation(window);
    window.level = NSPopUpMenuWindowLevel;
    window.collectionBehavior = NSWindowCollectionBehaviorMoveToActiveSpace | NSWindowCollectionBehaviorTransient |
                                NSWindowCollectionBehaviorFullScreenAuxiliary;
    window.hidesOnDeactivate = NO;
    window.opaque = NO;
    window.backgroundColor = NSColor.clearColor;
    window.hasShadow = YES;
    return true;
}

void MacPanelWindows::blurBehind(WindowHandle handle, double, double, double cornerRadius)
{
    NSWindow* const window = windowOf(handle);
    NSVisualEffectView* const view = material(window);
    view.frame = window.contentView.frame;
    view.layer.cornerRadius = cornerRadius;
    [window invalidateShadow]; // it follows the outline
}

void MacPanelWindows::focus(WindowHandle handle)
{
    NSWindow* const window = windowOf(handle);
    if (!isDressed(window)) {
        window.toolbarStyle = NSWindowToolbarStylePreference;
        activateApplication();
    }
    [window makeFirstResponder:window.contentView]; // the toolkit's view, which hands keys on
    [window makeKeyAndOrderFront:nil];
}

std::unique_ptr<EventMonitor> MacPanelWindows::monitorOutsideClicks(WindowHandle, std::function<void()> clicked)
{
    return std::make_unique<OutsideClickMonitor>(clicked);
}

} // namespace lumenvale
