// SPDX-License-Identifier: MIT
#import <AppKit/NSBitmapImageRep.h>
#import <AppKit/NSTrackingArea.h>
#import <objc/runtime.h>
#include <vector>

NSColorSpaceName const NSDeviceRGBColorSpace = @"NSDeviceRGBColorSpace";

@implementation NSImageRep
@end

@implementation NSBitmapImageRep {
    std::vector<unsigned char> bytes;
}
- (instancetype)initWithBitmapDataPlanes:(unsigned char**)planes
                              pixelsWide:(NSInteger)width
                              pixelsHigh:(NSInteger)height
                           bitsPerSample:(NSInteger)bps
                         samplesPerPixel:(NSInteger)spp
                                hasAlpha:(BOOL)alpha
                                isPlanar:(BOOL)isPlanar
                          colorSpaceName:(NSColorSpaceName)colorSpaceName
                            bitmapFormat:(NSBitmapFormat)bitmapFormat
                             bytesPerRow:(NSInteger)rBytes
                            bitsPerPixel:(NSInteger)pBits
{
    if (planes || bps != 8 || spp != 4 || !alpha || isPlanar || rBytes != 4 * width || pBits != 32)
        return nil; // the only form that is known here
    if ((self = [super init]))
        bytes.resize(static_cast<std::size_t>(rBytes * height));
    return self;
}
- (unsigned char*)bitmapData
{
    return bytes.data();
}
@end

static const char listKey = 0;

/// Keeps `object` with `owner`, after those kept before.
static void append(id owner, id object)
{
    NSArray* const before = objc_getAssociatedObject(owner, &listKey);
    NSMutableArray* const list = before ? [NSMutableArray arrayWithArray:before] : [NSMutableArray array];
    [list addObject:object];
    objc_setAssociatedObject(owner, &listKey, list, OBJC_ASSOCIATION_RETAIN_NONATOMIC);
}

@implementation NSImage (Representations)
- (void)addRepresentation:(NSImageRep*)imageRep
{
    append(self, imageRep);
}
- (NSArray<NSImageRep*>*)representations
{
    return objc_getAssociatedObject(self, &listKey);
}
@end

@implementation NSTrackingArea
- (instancetype)initWithRect:(NSRect)rect
                     options:(NSTrackingAreaOptions)options
                       owner:(id)owner
                    userInfo:(NSDictionary*)userInfo
{
    if ((self = [super init])) {
        _rect = rect;
        _options = options;
        _owner = owner;
        _userInfo = userInfo;
    }
    return self;
}
@end

@implementation NSView (TrackingAreas)
- (void)addTrackingArea:(NSTrackingArea*)trackingArea
{
    append(self, trackingArea);
}
- (NSArray<NSTrackingArea*>*)trackingAreas
{
    return objc_getAssociatedObject(self, &listKey);
}
@end
