// SPDX-License-Identifier: MIT
// What the fake frameworks lack of tracking areas, under the system's names and with its types and values.
#pragma once
#import <AppKit/AppKit.h>

NS_ASSUME_NONNULL_BEGIN
typedef NS_OPTIONS(NSUInteger, NSTrackingAreaOptions) {
    NSTrackingActiveInActiveApp = 0x40,
    NSTrackingActiveAlways = 0x80
};

@interface NSTrackingArea : NSObject
- (instancetype)initWithRect:(NSRect)rect
                     options:(NSTrackingAreaOptions)options
                       owner:(nullable id)owner
                    userInfo:(nullable NSDictionary*)userInfo;
@property(readonly) NSRect rect;
@property(readonly) NSTrackingAreaOptions options;
@property(nullable, readonly, weak) id owner;
@property(nullable, readonly, copy) NSDictionary* userInfo;
@end

@interface NSView (TrackingAreas)
- (void)addTrackingArea:(NSTrackingArea*)trackingArea;
@property(readonly, copy) NSArray<NSTrackingArea*>* trackingAreas;
@end
NS_ASSUME_NONNULL_END
