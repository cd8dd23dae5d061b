// SPDX-License-Identifier: MIT
// The Objective-C++ files on fakes of Foundation, AppKit and ServiceManagement.
#include "platform/macos/displays/AppKitScreens.h"
#include "platform/macos/displays/MacScreenSource.h"
#include "platform/macos/displays/MacSystemEvents.h"
#include "platform/macos/shell/ApplicationControl.h"
#include "platform/macos/shell/MacPanelWindows.h"
#include "platform/macos/shell/MacStatusBar.h"
#include "platform/macos/shell/SystemStartupService.h"

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
using fakesdk::Display;

struct MacShellTest : testing::Test {
    void SetUp() override
    {
        pool = objc_autoreleasePoolPush();
        reset();
        resetApplication();
        Display first;
        first.id = 5;
        first.width = 2560;
        first.height = 1440;
        first.name = "Größe";
        Display second;
        second.id = 7;
        second.width = 1920;
        second.height = 1080;
        second.bounds.origin = {2560, 0};
        second.asleep = true;
        second.uuid = "37D8832A-2D66-02CA-B9F7-8F30A301B230";
        machine().displays = {first, second};
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

NSPanel* makePanel(NSWindowStyleMask mask)
{
    return [[NSPanel alloc] initWithContentRect:NSMakeRect(0, 0, 340, 200)
                                      styleMask:mask
                                        backing:NSBackingStoreBuffered
                                          defer:NO];
}

NSEvent* mouseEvent(NSEventType type)
{
    return [NSEvent mouseEventWithType:type
                              location:NSMakePoint(0, 0)
                         modifierFlags:0
                             timestamp:0
                          windowNumber:0
                               context:nil
                           eventNumber:0
                            clickCount:1
                              pressure:1];
}

WindowHandle handleOf(NSWindow* window)
{
    return reinterpret_cast<WindowHandle>((__bridge void*)window.contentView);
}

TEST_F(MacShellTest, ScreensHaveTheirNumberNameAndSize)
{
    MacScreenSource source;
    const std::vector<Screen> screens = source.screens();
    ASSERT_EQ(screens.size(), 2U);
    EXPECT_EQ(screens[0].displayID, 5U);
    EXPECT_EQ(screens[0].name, "Größe");
    EXPECT_TRUE(screens[0].isMain);
    EXPECT_EQ(screens[0].frameWidth, 2560);
    EXPECT_EQ(screens[1].uuid, "37D8832A-2D66-02CA-B9F7-8F30A301B230");
    EXPECT_EQ(screens[1].frameHeight, 1080);
    EXPECT_EQ(screens[1].mode->pixelWidth, 1920);
    EXPECT_TRUE(source.isAsleep(7));
    EXPECT_FALSE(source.isAsleep(5));
}

TEST_F(MacShellTest, PointsOfTheDesktopAreCountedFromTheTop)
{
    EXPECT_EQ(appKitScreens()[1].frame, (Rect{2560, 0, 1920, 1080}));
    MacScreenSource source;
    EXPECT_EQ(source.displayAt({100, 1439}), 5U);
    EXPECT_EQ(source.displayAt({2560, 0}), 7U);
    EXPECT_EQ(source.displayAt({2560, 1200}), std::nullopt); // below the second screen
}

TEST_F(MacShellTest, SleepWakeAndChangesOfTheScreensAreAnnouncedToSubscribers)
{
    std::vector<SystemEvent> heard;
    {
        MacSystemEvents events;
        postWorkspace(NSWorkspaceDidWakeNotification); // nobody listens yet
        const Subscription subscription = events.subscribe([&](SystemEvent event) { heard.push_back(event); });
        postWorkspace(NSWorkspaceScreensDidSleepNotification);
        postWorkspace(NSWorkspaceWillSleepNotification);
        postWorkspace(NSWorkspaceDidWakeNotification);
        postWorkspace(NSWorkspaceScreensDidWakeNotification);
        screensChanged();
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
    const auto result = item.setEnabled(false);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(), "Operation not permitted");
    item.openSystemSettings();
    EXPECT_EQ(login().settingsOpened, 1);
}

TEST_F(MacShellTest, AStatusItemIsShownAsLongAsItExists)
{
    int activations = 0;
    StatusItemContent content;
    content.title = "Lumenvale";
    content.toolTip = "Lumenvale — control each display";
    content.image = [](double scale) {
        const int width = int(22 * scale);
        const int height = int(18 * scale);
        return Bitmap{width, height, std::vector<std::uint32_t>(std::size_t(width * height), 0xFF000000)};
    };
    content.activated = [&] { ++activations; };
    {
        MacStatusBar bar;
        const auto item = bar.createItem(content);
        ASSERT_EQ(statusItems().count, 1U);
        NSStatusBarButton* const button = statusItems()[0].button;
        EXPECT_TRUE([button.toolTip isEqual:@"Lumenvale — control each display"]);
        EXPECT_TRUE([button.image isTemplate]);
        EXPECT_TRUE([button.image.accessibilityDescription isEqual:@"Lumenvale"]);
        [button performClick:nil];
        EXPECT_EQ(activations, 1);
        const auto frame = item->frame();
        ASSERT_TRUE(frame);
        EXPECT_EQ(frame->y, 0); // in the menu bar, at the top
        EXPECT_GT(frame->width, 0);
    }
    EXPECT_EQ(statusItems().count, 0U);
}

TEST_F(MacShellTest, AnItemMayBeRemovedByItsOwnClick)
{
    MacStatusBar bar;
    std::unique_ptr<StatusItem> item;
    StatusItemContent content;
    content.image = [](double) { return Bitmap{1, 1, {0}}; };
    content.activated = [&] { item.reset(); };
    item = bar.createItem(content);
    [statusItems()[0].button performClick:nil];
    EXPECT_EQ(statusItems().count, 0U);
}

TEST_F(MacShellTest, ADressedPanelFloatsAndDoesNotActivate)
{
    NSPanel* const panel = makePanel(NSWindowStyleMaskBorderless | NSWindowStyleMaskUtilityWindow);
    MacPanelWindows windows;
    EXPECT_TRUE(windows.canBlend());
    for (int round = 0; round < 2; ++round) { // again, as after a change of the window's flags
        panel.styleMask = NSWindowStyleMaskUtilityWindow;
        panel.level = 8;
        EXPECT_TRUE(windows.dress(handleOf(panel)));
        windows.blurBehind(handleOf(panel), 340, 200, 12);
    }
    EXPECT_EQ(panel.styleMask, 128U);
    EXPECT_EQ(panel.level, 101);
    EXPECT_EQ(panel.collectionBehavior, 266U);
    EXPECT_FALSE(panel.opaque);
    EXPECT_TRUE(panel.hasShadow);
    EXPECT_FALSE(panel.hidesOnDeactivate);
    NSArray<NSView*>* const views = panel.contentView.superview.subviews;
    ASSERT_EQ(views.count, 2U);
    EXPECT_EQ(views[1], panel.contentView);
    NSVisualEffectView* const effect = (NSVisualEffectView*)views[0];
    ASSERT_TRUE([effect isKindOfClass:NSVisualEffectView.class]);
    EXPECT_EQ(effect.material, 6);
    EXPECT_EQ(effect.state, 1);
    EXPECT_EQ(effect.layer.cornerRadius, 12);
    EXPECT_TRUE(effect.layer.masksToBounds);
    EXPECT_EQ(effect.frame.size.width, 340);

    setActive(false);
    windows.focus(handleOf(panel));
    EXPECT_TRUE(panel.visible);
    EXPECT_FALSE(NSApp.active);
    EXPECT_EQ(panel.firstResponder, panel.contentView);
}

TEST_F(MacShellTest, APanelThatTheToolkitPutIntoAnotherWindowIsDressedWhenItIsShown)
{
    NSPanel* const first = makePanel(NSWindowStyleMaskBorderless);
    MacPanelWindows windows;
    NSView* const view = first.contentView;
    const WindowHandle handle = handleOf(first);
    windows.dress(handle);
    windows.blurBehind(handle, 340, 200, 12);
    NSPanel* const second = makePanel(NSWindowStyleMaskBorderless);
    first.contentView = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, 340, 200)];
    second.contentView = view;
    setActive(false);
    windows.focus(handle);
    EXPECT_FALSE(NSApp.active);
    EXPECT_TRUE(second.visible);
    EXPECT_EQ(second.styleMask, 128U);
    EXPECT_EQ(second.level, 101);
    NSArray<NSView*>* const views = view.superview.subviews;
    ASSERT_EQ(views.count, 2U);
    EXPECT_EQ(views[0].layer.cornerRadius, 12);
}

TEST_F(MacShellTest, AWindowThatIsNoPanelComesToTheFrontWithTheProgram)
{
    NSWindow* const window = [[NSWindow alloc] initWithContentRect:NSMakeRect(0, 0, 800, 580)
                                                         styleMask:NSWindowStyleMaskTitled
                                                           backing:NSBackingStoreBuffered
                                                             defer:NO];
    setActive(false);
    MacPanelWindows().focus(handleOf(window));
    EXPECT_TRUE(NSApp.active);
    EXPECT_TRUE(window.keyWindow);
    EXPECT_EQ(window.toolbarStyle, NSWindowToolbarStylePreference);
    [window close];
}

TEST_F(MacShellTest, ClicksInOtherProgramsAreToldUntilTheMonitorEnds)
{
    int clicks = 0;
    std::unique_ptr<EventMonitor> monitor = MacPanelWindows().monitorOutsideClicks(0, [&] {
        ++clicks;
        monitor.reset();
    });
    EXPECT_EQ(eventMonitors(), 1U);
    sendGlobalEvent(mouseDown());
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(eventMonitors(), 0U);

    const auto another = MacPanelWindows().monitorOutsideClicks(0, [&] { ++clicks; });
    sendGlobalEvent(mouseEvent(NSEventTypeRightMouseDown));
    EXPECT_EQ(clicks, 2);
    sendGlobalEvent(mouseEvent(NSEventTypeLeftMouseUp));
    sendGlobalEvent(mouseEvent(NSEventTypeRightMouseUp));
    EXPECT_EQ(clicks, 2); // presses only
}

TEST_F(MacShellTest, TheDockIconComesAndGoes)
{
    setInDock(true);
    EXPECT_EQ(NSApp.activationPolicy, NSApplicationActivationPolicyRegular);
    setInDock(false);
    EXPECT_EQ(NSApp.activationPolicy, NSApplicationActivationPolicyAccessory);
    setActive(true);
    setInDock(true);
    setInDock(false); // what was in front stays there
    EXPECT_TRUE(NSApp.active);
}

TEST_F(MacShellTest, ClicksOnTheDockIconSurviveTheEndOfLaunching)
{
    int reopened = 0;
    {
        const ReopenHandler handler([&] { ++reopened; });
        EXPECT_TRUE(sendAppleEvent(kCoreEventClass, kAEReopenApplication));
        // AppKit puts its own handler in this place, and then tells that it will finish launching.
        [NSAppleEventManager.sharedAppleEventManager removeEventHandlerForEventClass:kCoreEventClass
                                                                          andEventID:kAEReopenApplication];
        [NSNotificationCenter.defaultCenter postNotificationName:NSApplicationWillFinishLaunchingNotification
                                                          object:NSApp];
        EXPECT_TRUE(sendAppleEvent(kCoreEventClass, kAEReopenApplication));
    }
    [NSNotificationCenter.defaultCenter postNotificationName:NSApplicationWillFinishLaunchingNotification
                                                      object:NSApp];
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
