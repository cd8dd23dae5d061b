// SPDX-License-Identifier: MIT
// What the fake frameworks lack of bitmaps, under the system's names and with its types and values.
#pragma once
#import <AppKit/AppKit.h>

NS_ASSUME_NONNULL_BEGIN
typedef NSString* NSColorSpaceName;
extern "C" NSColorSpaceName const NSDeviceRGBColorSpace;
typedef NS_OPTIONS(NSUInteger, NSBitmapFormat) { NSBitmapFormatAlphaNonpremultiplied = 1 << 1 };

@interface NSImageRep : NSObject
@property NSSize size;
@end

@interface NSBitmapImageRep : NSImageRep
- (nullable instancetype)initWithBitmapDataPlanes:(unsigned char* _Nullable* _Nullable)planes
                                       pixelsWide:(NSInteger)width
                                       pixelsHigh:(NSInteger)height
                                    bitsPerSample:(NSInteger)bps
                                  samplesPerPixel:(NSInteger)spp
                                         hasAlpha:(BOOL)alpha
                                         isPlanar:(BOOL)isPlanar
                                   colorSpaceName:(NSColorSpaceName)colorSpaceName
                                     bitmapFormat:(NSBitmapFormat)bitmapFormat
                                      bytesPerRow:(NSInteger)rBytes
                                     bitsPerPixel:(NSInteger)pBits;
@property(nullable, readonly) unsigned char* bitmapData;
@end

@interface NSImage (Representations)
- (void)addRepresentation:(NSImageRep*)imageRep;
@end
NS_ASSUME_NONNULL_END
