// SPDX-License-Identifier: MIT
// What the fake frameworks lack of tracking areas, under the system's names and with its types and values.
#pragma once
#import <AppKit/AppKit.h>

NS_ASSUME_NONNULL_BEGIN
typedef NS_OPTIONS(NSUInteger, NSTrackingAreaOptions) {
    NSTrackingMouseEnteredAndExited = 0x01,
    NSTrackingMouseMoved = 0x02,
    NSTrackingActiveAlways = 0x80,
    NSTrackingInVisibleRect = 0x200
};

@interface NSTrackingArea : NSObject
- (instancetype)initWithRect:(NSRect)rect
                     options:(NSTrackingAreaOptions)options
                       owner:(nullable id)owner
                    userInfo:(nullable NSDictionary*)userInfo;
@end

@interface NSView (TrackingAreas)
- (void)addTrackingArea:(NSTrackingArea*)trackingArea;
@end
NS_ASSUME_NONNULL_END
