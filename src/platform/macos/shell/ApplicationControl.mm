// SPDX-License-Identifier: MIT
#include "platform/macos/shell/ApplicationControl.h"

#import <AppKit/AppKit.h>
#include <utility>

@interface LMVReopenTarget : NSObject {
@public
    std::function<void()> reopened;
}
- (void)install;
- (void)handleReopen:(NSAppleEventDescriptor*)event withReplyEvent:(NSAppleEventDescriptor*)reply;
@end

@implementation LMVReopenTarget
- (void)install
{
    [NSAppleEventManager.sharedAppleEventManager setEventHandler:self
                                                     andSelector:@selector(handleReopen:withReplyEvent:)
                                                   forEventClass:kCoreEventClass
                                                      andEventID:kAEReopenApplication];
}
- (void)handleReopen:(NSAppleEventDescriptor*)event withReplyEvent:(NSAppleEventDescriptor*)reply
{
    const auto call = reopened; // it may end the handler
    call();
}
@end

namespace lumenvale {

struct ReopenHandler::Registration {
    LMVReopenTarget* target;
    id<NSObject> launch;
};

ReopenHandler::ReopenHandler(std::function<void()> reopened) : registration(std::make_unique<Registration>())
{
    LMVReopenTarget* const target = [LMVReopenTarget new];
    target->reopened = std::move(reopened);
    registration->target = target;
    [target install];
    // AppKit installs its own handlers when it finishes launching, over those that are there; that happens when Qt
    // starts AppKit's loop, which is later than this.
    registration->launch =
        [NSNotificationCenter.defaultCenter addObserverForName:NSApplicationWillFinishLaunchingNotification
                                                        object:nil
                                                         queue:nil
                                                    usingBlock:^(NSNotification*) {
                                                      [target install];
                                                    }];
}

ReopenHandler::~ReopenHandler()
{
    [NSNotificationCenter.defaultCenter removeObserver:registration->launch];
    [NSAppleEventManager.sharedAppleEventManager removeEventHandlerForEventClass:kCoreEventClass
                                                                      andEventID:kAEReopenApplication];
}

void setInDock(bool isShown)
{
    const auto policy = isShown ? NSApplicationActivationPolicyRegular : NSApplicationActivationPolicyAccessory;
    if (NSApp.activationPolicy == policy)
        return;
    const BOOL wasActive = NSApp.active;
    [NSApp setActivationPolicy:policy];
    dockChanged().emit();
    if (!wasActive)
        return;
    // Giving up the icon deactivates the program, and its windows go behind others'. A program that gets one while
    // it is active keeps the menu bar of before, which answers no click, until another program was active.
    if (isShown)
        [[NSRunningApplication runningApplicationsWithBundleIdentifier:@"com.apple.dock"].firstObject
            activateWithOptions:0];
    dispatch_async(dispatch_get_main_queue(), ^{
      activateApplication();
    });
}

Signal<>& dockChanged()
{
    static Signal<> signal;
    return signal;
}

// Since macOS 14 there is also `activate`, a mere request, which the system declines for a program whose only
// visible part was a panel that does not activate.
void activateApplication() { [NSApp activateIgnoringOtherApps:YES]; }

void cancelMenuTracking(void* menu) { [(__bridge NSMenu*)menu cancelTracking]; }

} // namespace lumenvale
