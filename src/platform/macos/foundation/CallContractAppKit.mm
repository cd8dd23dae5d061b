// SPDX-License-Identifier: MIT
// The constants of the system's object interfaces on which this folder relies. Part of every build, like
// CallContract.cpp; selectors, their types and their availability the compiler checks where they are used.
#import <AppKit/AppKit.h>
#import <AppKit/NSBitmapImageRep.h>
#import <AppKit/NSTrackingArea.h>
#import <ServiceManagement/ServiceManagement.h>
#import <objc/runtime.h>

static_assert(NSWindowStyleMaskNonactivatingPanel == 1 << 7);
static_assert((NSWindowCollectionBehaviorMoveToActiveSpace | NSWindowCollectionBehaviorTransient |
               NSWindowCollectionBehaviorFullScreenAuxiliary) == 266);
static_assert(NSVisualEffectMaterialPopover == 6 && NSVisualEffectBlendingModeBehindWindow == 0 &&
              NSVisualEffectStateActive == 1);
static_assert(NSWindowToolbarStylePreference == 2 && NSWindowBelow == -1);
static_assert((NSEventMaskLeftMouseDown | NSEventMaskRightMouseDown) == 10);
static_assert(NSApplicationActivationPolicyRegular == 0 && NSApplicationActivationPolicyAccessory == 1);
static_assert(SMAppServiceStatusNotRegistered == 0 && SMAppServiceStatusEnabled == 1 &&
              SMAppServiceStatusRequiresApproval == 2 && SMAppServiceStatusNotFound == 3);
static_assert(NSViewWidthSizable == 2 && NSViewHeightSizable == 16);
static_assert(kCoreEventClass == 0x61657674 && kAEReopenApplication == 0x72617070);
static_assert(sizeof(BOOL) == 1 && sizeof(NSInteger) == 8 && sizeof(CGFloat) == 8);
static_assert(NSActivityUserInitiatedAllowingIdleSystemSleep == 0x00EFFFFF);
static_assert(OBJC_ASSOCIATION_RETAIN_NONATOMIC == 1);
static_assert(NSBitmapFormatAlphaNonpremultiplied == 2);
static_assert(NSTrackingActiveAlways == 0x80);
