// SPDX-License-Identifier: MIT
// What a user would notice first of the program's place on the screen, on fakes of Foundation and AppKit.
#include "platform/macos/shell/ApplicationControl.h"
#include "platform/macos/shell/MacPanelWindows.h"
#include "platform/macos/shell/MacStatusBar.h"

#import <AppKit/NSBitmapImageRep.h>
#import <AppKit/NSTrackingArea.h>
#include <fakesdk/objc.h>
#include <gtest/gtest.h>

// What the fakes lack.

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
    if ((self = [super init]))
        bytes.resize(static_cast<std::size_t>(rBytes * height));
    return self;
}
- (unsigned char*)bitmapData
{
    return bytes.data();
}
@end

static NSBitmapImageRep* drawnLast;

@implementation NSImage (Representations)
- (void)addRepresentation:(NSImageRep*)imageRep
{
    drawnLast = (NSBitmapImageRep*)imageRep;
}
@end

#pragma clang diagnostic ignored "-Wincomplete-implementation" // none is made here
@implementation NSTrackingArea
@end

@implementation NSView (NoTrackingAreas)
- (NSArray<NSTrackingArea*>*)trackingAreas
{
    return nil;
}
@end

namespace lumenvale {
namespace {

using namespace fakesdk;

struct MacShellTest : testing::Test {
    MacShellTest()
    {
        reset();
        resetApplication();
        setActive(false);
        window = [[NSPanel alloc] initWithContentRect:NSMakeRect(0, 0, 340, 200)
                                            styleMask:NSWindowStyleMaskTitled
                                              backing:NSBackingStoreBuffered
                                                defer:NO];
        handle = reinterpret_cast<WindowHandle>((__bridge void*)window.contentView);
    }
    void TearDown() override
    {
        EXPECT_EQ(faults(), std::vector<std::string>());
        EXPECT_EQ(missingSelectors(), std::vector<std::string>());
    }

    NSPanel* window;
    WindowHandle handle;
};

TEST_F(MacShellTest, APanelFloatsAndTakesKeysWithoutActivatingTheProgram)
{
    MacPanelWindows windows;
    windows.dress(handle);
    window.level = 8; // as Qt may set it again
    windows.focus(handle);
    EXPECT_FALSE(NSApp.active);
    EXPECT_EQ(window.firstResponder, window.contentView);
    EXPECT_EQ(window.styleMask, 128U);
    EXPECT_EQ(window.level, 101);
    EXPECT_EQ(window.collectionBehavior, 266U);
    EXPECT_FALSE(window.hidesOnDeactivate);
}

TEST_F(MacShellTest, AnotherWindowComesToTheFrontWithTheProgramWhichKeepsThatWithoutItsIcon)
{
    setInDock(true);
    EXPECT_EQ(NSApp.activationPolicy, NSApplicationActivationPolicyRegular);
    MacPanelWindows().focus(handle);
    EXPECT_TRUE(NSApp.active);
    EXPECT_TRUE(window.keyWindow);
    setInDock(false);
    EXPECT_EQ(NSApp.activationPolicy, NSApplicationActivationPolicyAccessory);
    EXPECT_TRUE(NSApp.active);
}

TEST_F(MacShellTest, AStatusItemIsShownUntilItEndsWhichItsOwnClickMayDo)
{
    machine().displays = {{.id = 5, .width = 2560, .height = 1440}};
    MacStatusBar bar;
    std::unique_ptr<StatusItem> item;
    StatusItemContent content;
    content.image = [](double scale) {
        const int size = int(18 * scale);
        return Bitmap{size, size, std::vector<std::uint32_t>(std::size_t(size * size), 0x80010203)};
    };
    content.activated = [&] { item.reset(); };
    item = bar.createItem(content);
    NSStatusBarButton* const button = statusItems()[0].button;
    EXPECT_TRUE([button.image isTemplate]);
    EXPECT_EQ(drawnLast.size.width, 18);
    const unsigned char* const samples = drawnLast.bitmapData;
    EXPECT_EQ(std::vector(samples, samples + 4), (std::vector<unsigned char>{1, 2, 3, 0x80}));
    EXPECT_EQ(item->frame()->y, 0) << "in the menu bar, at the top";
    [button performClick:nil];
    EXPECT_EQ(statusItems().count, 0U);
}

} // namespace
} // namespace lumenvale

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    @autoreleasepool {
        fakesdk::startApplication();
        return RUN_ALL_TESTS();
    }
}
