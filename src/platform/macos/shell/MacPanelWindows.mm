// SPDX-License-Identifier: MIT
#include "platform/macos/shell/MacPanelWindows.h"

#include "platform/macos/displays/AppKitScreens.h"
#include "platform/macos/shell/ApplicationControl.h"
#include "platform/macos/shell/PanelPointer.h"

#import <AppKit/AppKit.h>
#import <AppKit/NSTrackingArea.h>
#import <QuartzCore/QuartzCore.h>
#import <objc/runtime.h>

/// A setter of NSPanel without a public declaration.
@protocol LMVPreventsActivation
- (void)_setPreventsActivation:(BOOL)prevents;
@end

/// Hands what the pointer does over a panel's view on, while Qt does not.
@interface LMVPanelPointer : NSObject {
@public
    __weak NSView* view;
}
@end

@implementation LMVPanelPointer
- (void)pass:(lumenvale::PointerMotion)motion of:(NSEvent*)event
{
    NSView* const panel = view;
    if (!panel || NSApp.active)
        return;                                                                      // Qt hears of it by itself
    const NSPoint inside = [panel convertPoint:event.locationInWindow fromView:nil]; // Qt's view is flipped
    const NSRect spot =
        [panel.window convertRectToScreen:NSMakeRect(event.locationInWindow.x, event.locationInWindow.y, 0, 0)];
    const lumenvale::Rect onScreen = lumenvale::qtRect(spot.origin.x, spot.origin.y, 0, 0);
    lumenvale::passPointer(reinterpret_cast<lumenvale::WindowHandle>((__bridge void*)panel), motion,
                           {inside.x, inside.y}, {onScreen.x, onScreen.y});
}
- (void)mouseEntered:(NSEvent*)event
{
    [self pass:lumenvale::PointerMotion::entered of:event];
}
- (void)mouseMoved:(NSEvent*)event
{
    [self pass:lumenvale::PointerMotion::moved of:event];
}
- (void)mouseExited:(NSEvent*)event
{
    [self pass:lumenvale::PointerMotion::left of:event];
}
@end

namespace lumenvale {

namespace {

/// Qt's handle is its view, the content of a window that it owns. Never kept: Qt may make
/// another view, and may put this one into another window.
NSView* viewOf(WindowHandle handle) { return (__bridge NSView*)reinterpret_cast<void*>(handle); }

/// Kept on a panel's view, and so what tells one from other windows: the radius of its corners.
constexpr char cornerRadiusKey = 0;
/// Kept on it likewise: its LMVPanelPointer.
constexpr char pointerKey = 0;

NSNumber* cornerRadiusOf(NSView* view) { return objc_getAssociatedObject(view, &cornerRadiusKey); }

void setCornerRadius(NSView* view, double radius)
{
    objc_setAssociatedObject(view, &cornerRadiusKey, @(radius), OBJC_ASSOCIATION_RETAIN_NONATOMIC);
}

/// AppKit tells the window server only when it makes a panel whether clicks on it activate the program;
/// Qt offers no flag for that. Where this setter exists it tells it now. Without it the first click in the
/// panel activates the program, and everything else works.
void preventActivation(NSWindow* window)
{
    if ([window respondsToSelector:@selector(_setPreventsActivation:)])
        [(id<LMVPreventsActivation>)window _setPreventsActivation:YES];
}

void makePanel(NSWindow* window)
{
    if (window.styleMask != NSWindowStyleMaskNonactivatingPanel) // AppKit may rebuild the frame for it
        window.styleMask = NSWindowStyleMaskNonactivatingPanel;
    preventActivation(window);
    window.level = NSPopUpMenuWindowLevel;
    window.collectionBehavior = NSWindowCollectionBehaviorMoveToActiveSpace | NSWindowCollectionBehaviorTransient |
                                NSWindowCollectionBehaviorFullScreenAuxiliary;
    window.hidesOnDeactivate = NO;
    window.opaque = NO;
    window.backgroundColor = NSColor.clearColor;
    window.hasShadow = YES;
}

/// The material lies behind Qt's view: in it, it would cover what Qt draws, and Qt's
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

void layMaterial(NSWindow* window, double cornerRadius)
{
    NSVisualEffectView* const view = material(window);
    view.frame = window.contentView.frame;
    view.layer.cornerRadius = cornerRadius;
    [window invalidateShadow]; // it follows the outline
}

/// While the program is not the active one, which a panel's seldom is, Qt drops what the pointer does: nothing
/// under it would light up or show its help. An area of our own hears of it then, as long as the view exists.
void followPointer(NSView* view)
{
    if (objc_getAssociatedObject(view, &pointerKey))
        return;
    LMVPanelPointer* const pointer = [LMVPanelPointer new];
    pointer->view = view;
    objc_setAssociatedObject(view, &pointerKey, pointer,
                             OBJC_ASSOCIATION_RETAIN_NONATOMIC); // the area does not keep it
    [view addTrackingArea:[[NSTrackingArea alloc]
                              initWithRect:view.bounds
                                   options:NSTrackingMouseEnteredAndExited | NSTrackingMouseMoved |
                                           NSTrackingActiveAlways | NSTrackingInVisibleRect
                                     owner:pointer
                                  userInfo:nil]];
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

void MacPanelWindows::dress(WindowHandle handle)
{
    NSView* const view = viewOf(handle);
    setCornerRadius(view, 0);
    makePanel(view.window);
}

void MacPanelWindows::setShape(WindowHandle handle, const Rect&, double cornerRadius)
{
    NSView* const view = viewOf(handle);
    setCornerRadius(view, cornerRadius);
    layMaterial(view.window, cornerRadius);
}

void MacPanelWindows::focus(WindowHandle handle)
{
    NSView* const view = viewOf(handle);
    NSWindow* const window = view.window;
    if (NSNumber* const cornerRadius = cornerRadiusOf(view)) { // again, for the window may be another one by now
        makePanel(window);
        layMaterial(window, cornerRadius.doubleValue);
        followPointer(view);
    } else {
        window.toolbarStyle = NSWindowToolbarStylePreference;
        activateApplication();
    }
    [window makeFirstResponder:window.contentView]; // Qt's view, which hands keys on
    [window makeKeyAndOrderFront:nil];
    [window orderFrontRegardless]; // in sight also where the system does not let the program become the active one
}

std::unique_ptr<EventMonitor> MacPanelWindows::monitorOutsideClicks(WindowHandle, std::function<void()> clicked)
{
    return std::make_unique<OutsideClickMonitor>(clicked);
}

} // namespace lumenvale
