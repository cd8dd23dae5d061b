// SPDX-License-Identifier: MIT
#include "platform/macos/displays/WorkspaceNotifications.h"

#import <AppKit/AppKit.h>

namespace lumenvale {

/// The registrations, each with the centre that it was made at.
struct WorkspaceNotifications::Tokens {
    NSMutableArray* centres = [NSMutableArray array];
    NSMutableArray* tokens = [NSMutableArray array];

    void observe(NSNotificationCenter* centre, NSNotificationName name, SystemEvent event,
                 const std::function<void(SystemEvent)>& announced)
    {
        const std::function<void(SystemEvent)> callback =
            announced; // a block would keep the reference, not a copy
        const id token = [centre addObserverForName:name
                                             object:nil
                                              queue:NSOperationQueue.mainQueue
                                         usingBlock:^(NSNotification*) {
                                           callback(event);
                                         }];
        [centres addObject:centre];
        [tokens addObject:token];
    }
};

WorkspaceNotifications::WorkspaceNotifications(std::function<void(SystemEvent)> announced)
    : tokens(std::make_unique<Tokens>())
{
    // Sleep and wake are told by the workspace's own centre only.
    NSNotificationCenter* const workspace = NSWorkspace.sharedWorkspace.notificationCenter;
    using enum SystemEvent;
    tokens->observe(workspace, NSWorkspaceScreensDidSleepNotification, screensDidSleep, announced);
    tokens->observe(workspace, NSWorkspaceScreensDidWakeNotification, screensDidWake, announced);
    tokens->observe(workspace, NSWorkspaceWillSleepNotification, systemWillSleep, announced);
    tokens->observe(workspace, NSWorkspaceDidWakeNotification, systemDidWake, announced);
    tokens->observe(NSNotificationCenter.defaultCenter, NSApplicationDidChangeScreenParametersNotification,
                    screenParametersChanged, announced);
}

WorkspaceNotifications::~WorkspaceNotifications()
{
    NSUInteger index = 0;
    for (NSNotificationCenter* centre in tokens->centres)
        [centre removeObserver:tokens->tokens[index++]];
}

} // namespace lumenvale
