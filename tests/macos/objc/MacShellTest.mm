// SPDX-License-Identifier: MIT
// The Objective-C++ files on fakes of Foundation, AppKit and ServiceManagement.
#include "platform/macos/displays/AppKitScreens.h"
#include "platform/macos/displays/MacScreenSource.h"
#include "platform/macos/displays/MacSystemEvents.h"
#include "platform/macos/shell/ApplicationControl.h"
#include "platform/macos/shell/MacPanelWindows.h"
#include "platform/macos/shell/MacStatusBar.h"
#include "platform/macos/shell/SystemStartupService.h"

#import <AppKit/NSBitmapImageRep.h>
#import <AppKit/NSTrackingArea.h>
#import <Carbon/Carbon.h>
#import <QuartzCore/QuartzCore.h>
#include <fakesdk/objc.h>
#include <gtest/gtest.h>

extern "C" {
void* objc_autoreleasePoolPush();
void objc_autoreleasePoolPop(void* pool);
}

namespace lumenvale {
namespace {

using namespace fakesdk;

struct MacShellTest : testing::Test {
    void SetUp() override
    {
        pool = objc_autoreleasePoolPush();
        reset();
        resetApplication();
        machine().displays = {{.id = 5, .width = 2560, .height = 1440, .name = "Größe"},
                              {.id = 7,
                               .width = 1920,
                               .height = 1080,
                               .uuid = "37D8832A-2D66-02CA-B9F7-8F30A301B230",
                               .bounds = {{2560, 0}, {0, 0}},
                               .asleep = true}};
    }

    void TearDown() override
    {
        resetApplication();
        objc_autoreleasePoolPop(pool);
        EXPECT_EQ(leaks(), std::vector<std::string>());
        EXPECT_EQ(faults(), std::vector<std::string>());
        EXPECT_EQ(missingSelectors(), std::vector<std::string>());
        reset();
    }

    void* pool = nullptr;
};

NSPanel* makePanel(NSWindowStyleMask mask = NSWindowStyleMaskBorderless | NSWindowStyleMaskUtilityWindow)
{
    return [[NSPanel alloc] initWithContentRect:NSMakeRect(0, 0, 340, 200)
                                      styleMask:mask
                                        backing:NSBackingStoreBuffered
                                          defer:NO];
}

WindowHandle handleOf(NSWindow* window)
{
    return reinterpret_cast<WindowHandle>((__bridge void*)window.contentView);
}

TEST_F(MacShellTest, ScreensHaveTheirFactsAndAPlaceThatIsCountedFromTheTop)
{
    MacScreenSource source;
    const std::vector<Screen> screens = source.screens();
    ASSERT_EQ(screens.size(), 2U);
    EXPECT_EQ(screens[0].displayID, 5U);
    EXPECT_EQ(screens[0].name, "Größe");
    EXPECT_TRUE(screens[0].isMain);
    EXPECT_EQ(screens[0].frameWidth, 2560);
    EXPECT_EQ(screens[1].uuid, "37D8832A-2D66-02CA-B9F7-8F30A301B230");
    EXPECT_EQ(screens[1].mode->pixelWidth, 1920);
    EXPECT_TRUE(source.isAsleep(7));
    EXPECT_FALSE(source.isAsleep(5));
    EXPECT_EQ(source.displayAt({100, 1439}), 5U);
    EXPECT_EQ(source.displayAt({2560, 0}), 7U);
    EXPECT_EQ(source.displayAt({2560, 1200}), std::nullopt) << "below the second screen";
}

TEST_F(MacShellTest, SleepWakeAndChangesOfTheScreensAreAnnouncedToSubscribers)
{
    std::vector<SystemEvent> heard;
    {
        MacSystemEvents events;
        postWorkspace(NSWorkspaceDidWakeNotification); // nothing is subscribed yet
        const Subscription subscription = events.subscribe([&](SystemEvent event) { heard.push_back(event); });
        postWorkspace(NSWorkspaceScreensDidSleepNotification);
        postWorkspace(NSWorkspaceWillSleepNotification);
        postWorkspace(NSWorkspaceDidWakeNotification);
        postWorkspace(NSWorkspaceScreensDidWakeNotification);
        screensChanged();
        reconfigure(7, 1); // begins
        reconfigure(7, 1 << 5);
    }
    using enum SystemEvent;
    EXPECT_EQ(heard, (std::vector{screensDidSleep, systemWillSleep, systemDidWake, screensDidWake,
                                  screenParametersChanged, screenParametersChanged}));
    postWorkspace(NSWorkspaceDidWakeNotification);
    EXPECT_EQ(heard.size(), 6U);
}

TEST_F(MacShellTest, TheLoginItemHasTheSystemsStateAndWords)
{
    SystemStartupService item;
    EXPECT_EQ(item.status(), StartupStatus::off);
    EXPECT_TRUE(item.setEnabled(true));
    EXPECT_EQ(item.status(), StartupStatus::enabled);
    login().status = SMAppServiceStatusRequiresApproval;
    EXPECT_EQ(item.status(), StartupStatus::requiresApproval);
    for (const int status : {3, 4, -1}) {
        login().status = SMAppServiceStatus(status);
        EXPECT_EQ(item.status(), StartupStatus::unavailable);
    }
    login().error = "Operation not permitted";
    EXPECT_EQ(item.setEnabled(false).error(), "Operation not permitted");
    item.openSystemSettings();
    EXPECT_EQ(login().settingsOpened, 1);
}

TEST_F(MacShellTest, AStatusItemIsShownUntilItEndsWhichItsOwnClickMayDo)
{
    MacStatusBar bar;
    std::unique_ptr<StatusItem> item;
    StatusItemContent content;
    content.title = "Lumenvale";
    content.image = [](double scale) {
        const int size = int(18 * scale);
        return Bitmap{size, size, std::vector<std::uint32_t>(std::size_t(size * size), 0x80010203)};
    };
    content.activated = [&] { item.reset(); };
    item = bar.createItem(content);
    NSStatusBarButton* const button = statusItems()[0].button;
    NSImage* const image = button.image;
    EXPECT_TRUE([image isTemplate]);
    EXPECT_TRUE([image.accessibilityDescription isEqual:@"Lumenvale"]);
    ASSERT_EQ(image.representations.count, 2U);
    for (NSBitmapImageRep* each in image.representations) {
        EXPECT_EQ(each.size.width, 18);
        const unsigned char* const samples = each.bitmapData;
        EXPECT_EQ(std::vector(samples, samples + 4), (std::vector<unsigned char>{1, 2, 3, 0x80}));
    }
    EXPECT_EQ(item->frame()->y, 0) << "in the menu bar, at the top";
    [button performClick:nil];
    EXPECT_EQ(statusItems().count, 0U);
}

TEST_F(MacShellTest, ADressedPanelFloatsAndDoesNotActivateAlsoInAnotherWindow)
{
    NSPanel* const first = makePanel();
    NSView* const view = first.contentView;
    const WindowHandle handle = handleOf(first);
    [view addTrackingArea:[[NSTrackingArea alloc]
                              initWithRect:view.bounds
                                   options:NSTrackingMouseEnteredAndExited | NSTrackingActiveInActiveApp
                                     owner:view
                                  userInfo:nil]];
    MacPanelWindows windows;
    EXPECT_TRUE(windows.dress(handle));
    windows.blurBehind(handle, 340, 200, 12);
    NSPanel* const panel = makePanel(); // Qt puts its view into another window
    first.contentView = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, 340, 200)];
    panel.contentView = view;
    setActive(false);
    for (int round = 0; round < 2; ++round)
        windows.focus(handle);
    EXPECT_TRUE(panel.visible);
    EXPECT_FALSE(NSApp.active);
    EXPECT_EQ(panel.firstResponder, view);
    EXPECT_EQ(panel.styleMask, 128U);
    EXPECT_EQ(panel.level, 101);
    EXPECT_EQ(panel.collectionBehavior, 266U);
    EXPECT_FALSE(panel.opaque);
    EXPECT_TRUE(panel.hasShadow);
    EXPECT_FALSE(panel.hidesOnDeactivate);
    ASSERT_EQ(view.trackingAreas.count, 2U);
    EXPECT_EQ(view.trackingAreas[1].options, NSTrackingMouseEnteredAndExited | NSTrackingActiveAlways);
    NSArray<NSView*>* const views = view.superview.subviews;
    ASSERT_EQ(views.count, 2U);
    EXPECT_EQ(views[1], view);
    NSVisualEffectView* const effect = (NSVisualEffectView*)views[0];
    EXPECT_EQ(effect.material, NSVisualEffectMaterialPopover);
    EXPECT_EQ(effect.state, NSVisualEffectStateActive);
    EXPECT_EQ(effect.layer.cornerRadius, 12);
    EXPECT_EQ(effect.frame.size.width, 340);
}

TEST_F(MacShellTest, AWindowThatIsNoPanelComesToTheFrontWithTheProgram)
{
    NSPanel* const window = makePanel(NSWindowStyleMaskTitled);
    setActive(false);
    MacPanelWindows().focus(handleOf(window));
    EXPECT_TRUE(NSApp.active);
    EXPECT_TRUE(window.keyWindow);
    EXPECT_EQ(window.toolbarStyle, NSWindowToolbarStylePreference);
    [window close];
}

TEST_F(MacShellTest, PressesInOtherProgramsAreToldUntilTheMonitorEnds)
{
    int presses = 0;
    std::unique_ptr<EventMonitor> monitor = MacPanelWindows().monitorOutsideClicks(0, [&] {
        if (++presses == 2)
            monitor.reset();
    });
    sendGlobalEvent(mouseDown());
    EXPECT_EQ(presses, 1);
    sendGlobalEvent(mouseDown());
    EXPECT_EQ(presses, 2);
    EXPECT_EQ(eventMonitors(), 0U);
}

TEST_F(MacShellTest, TheDockIconComesAndGoesAndItsClicksSurviveTheEndOfLaunching)
{
    setActive(true);
    setInDock(true);
    EXPECT_EQ(NSApp.activationPolicy, NSApplicationActivationPolicyRegular);
    setInDock(false);
    EXPECT_EQ(NSApp.activationPolicy, NSApplicationActivationPolicyAccessory);
    EXPECT_TRUE(NSApp.active) << "what was in front stays there";
    int reopened = 0;
    const auto finishLaunching = [] {
        [NSNotificationCenter.defaultCenter postNotificationName:NSApplicationWillFinishLaunchingNotification
                                                          object:NSApp];
    };
    {
        const ReopenHandler handler([&] { ++reopened; });
        EXPECT_TRUE(sendAppleEvent(kCoreEventClass, kAEReopenApplication));
        // AppKit puts its own handler in this place, and then tells that it will finish launching.
        [NSAppleEventManager.sharedAppleEventManager removeEventHandlerForEventClass:kCoreEventClass
                                                                          andEventID:kAEReopenApplication];
        finishLaunching();
        EXPECT_TRUE(sendAppleEvent(kCoreEventClass, kAEReopenApplication));
    }
    finishLaunching();
    EXPECT_FALSE(sendAppleEvent(kCoreEventClass, kAEReopenApplication));
    EXPECT_EQ(reopened, 2);
}

/// Compares the objects that are left after a round of all tests with those after the round before; the first two
/// fill the caches of the fakes.
class LiveObjects final : public testing::Environment {
public:
    void TearDown() override
    {
        const std::map<std::string, int> now = liveObjects();
        if (++round == 3) {
            EXPECT_EQ(now, before);
        }
        before = now;
    }

private:
    int round = 0;
    std::map<std::string, int> before;
};

} // namespace
} // namespace lumenvale

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    GTEST_FLAG_SET(repeat, 3);
    GTEST_FLAG_SET(recreate_environments_when_repeating, true);
    testing::AddGlobalTestEnvironment(new lumenvale::LiveObjects);
    fakesdk::startApplication();
    return RUN_ALL_TESTS();
}
