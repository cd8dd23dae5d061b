// SPDX-License-Identifier: MIT
#include "AppDelegateFixture.h"

#include "ui/controls/Labels.h"

#include <QProgressBar>

namespace lumenvale {
namespace {

std::vector<std::string> titles(const Menu& menu)
{
    std::vector<std::string> list;
    for (const MenuEntry& each : menu)
        list.push_back(each.id.empty() ? "-" : each.title + (each.isChecked ? " ✓" : ""));
    return list;
}

TEST_F(AppDelegateTest, PresentationShowsAndRemovesTheStatusItemAtRunTime)
{
    launch();
    ASSERT_TRUE(desktop.item);
    delegate->showSettings();
    desktop.item->content.activated();
    click(*settings(), "General");
    click(*settings(), "Dock");
    EXPECT_FALSE(desktop.item);
    EXPECT_FALSE(panel());
    click(*settings(), "Menu bar");
    EXPECT_TRUE(desktop.item);
    EXPECT_EQ(desktop.policies,
              (std::vector{ActivationPolicy::accessory, ActivationPolicy::regular, ActivationPolicy::accessory}));
}

TEST_F(AppDelegateTest, StatusItemOpensThePanelBelowItselfWhichGrowsInPlaceWithTheDisplays)
{
    plug("A");
    launch();
    desktop.item->content.activated();
    ASSERT_TRUE(panel());
    EXPECT_EQ(panel()->geometry(), QRect(412 - 170, 30, 340, int(preferredHeight(1, 0))));
    EXPECT_EQ(desktop.focused, 1);
    plug("B");
    events.send(SystemEvent::screenParametersChanged);
    clock.advance(std::chrono::seconds(1));
    settle();
    EXPECT_EQ(panel()->geometry(), QRect(412 - 170, 30, 340, int(preferredHeight(2, 0))));
    desktop.item->content.activated();
    EXPECT_FALSE(panel());
    EXPECT_FALSE(desktop.clickedOutside);

    hardware.log.clear();
    for (int round = 0; round < 6; ++round) {
        clock.advance(std::chrono::milliseconds(750));
        hardware.answerAll();
    }
    EXPECT_TRUE(hardware.log.empty()) << "nobody sees it, so monitors are read seldom";
}

TEST_F(AppDelegateTest, TheClickOnTheItemThatClosedThePanelDoesNotOpenItAgain)
{
    launch();
    desktop.item->content.activated();
    desktop.clickedOutside();
    EXPECT_FALSE(panel());
    desktop.item->content.activated(); // the same click
    EXPECT_FALSE(panel());
    desktop.item->content.activated();
    ASSERT_TRUE(panel());
    desktop.clickedOutside();
    clock.advance(std::chrono::seconds(1));
    desktop.item->content.activated();
    EXPECT_TRUE(panel());
}

TEST_F(AppDelegateTest, EscapeAndClicksInOtherWindowsCloseThePanel)
{
    launch();
    delegate->showSettings();
    desktop.item->content.activated();
    ASSERT_TRUE(panel());
    pressKeyIn(*settings(), Qt::Key_Escape); // another window's
    pressKeyIn(*panel(), Qt::Key_A);
    ASSERT_TRUE(panel());
    const auto press = [](QWidget& window, QPointF global) {
        QMouseEvent event(QEvent::MouseButtonPress, QPointF(), QPointF(), global, Qt::LeftButton, Qt::LeftButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(window.windowHandle(), &event);
        turnLoop();
    };
    press(*settings(), {410, 10}); // on the item, which sees to itself
    EXPECT_TRUE(panel());
    press(*settings(), {10, 500});
    EXPECT_FALSE(panel());
    desktop.item->content.activated();
    pressKeyIn(*panel(), Qt::Key_Escape);
    EXPECT_FALSE(panel());
}

TEST_F(AppDelegateTest, DockMenuListsThePresetsAndAppliesThem)
{
    plug("A");
    launch();
    EXPECT_EQ(titles(desktop.dock.menu()), (std::vector<std::string>{"Brightness…", "-", "Settings…"}));
    delegate.reset();
    savePreset(" \t", {{"A", 0.25}});
    savePreset("Day", {{"A", 1.0}});
    launch();
    EXPECT_EQ(titles(desktop.dock.menu()),
              (std::vector<std::string>{"Brightness…", "-", "Untitled preset", "Day", "-", "Settings…"}));
    desktop.dock.menu()[2].action();
    settle();
    EXPECT_EQ(hardware.monitors["A"].brightness, 0.25);
    EXPECT_EQ(titles(desktop.dock.menu())[2], "Untitled preset ✓");
    EXPECT_GT(desktop.dockMenuChanges, 0);
    EXPECT_GT(desktop.item->menuChanges, 0);
    desktop.dock.menu()[0].action();
    QWidget* const open = panel();
    ASSERT_TRUE(open);
    desktop.dock.reopen();
    EXPECT_EQ(panel(), open) << "it moves instead of flashing";
    desktop.dock.menuWillOpen();
    EXPECT_FALSE(panel());
}

TEST_F(AppDelegateTest, APanelWhoseWindowIsMadeAnewIsDressedAnew)
{
    launch();
    desktop.item->content.activated();
    EXPECT_EQ(desktop.dressed, 1);
    QWidget* const shown = panel();
    shown->setWindowFlag(Qt::WindowDoesNotAcceptFocus);
    shown->show();
    EXPECT_EQ(desktop.dressed, 2);
}

TEST_F(AppDelegateTest, SettingsOpenAtTheFirstLaunchOnlyKeepTheirFrameAndRevertAPreset)
{
    plug("A", 0.9);
    savePreset("Day", {{"A", 0.25}});
    defaults.set("hasOpenedSettings", std::nullopt);
    launch();
    ASSERT_TRUE(settings());
    desktop.dock.menu()[2].action(); // the preset
    settle();
    settings()->setGeometry(20, 40, 600, 400);
    auto* slider = named(*settings(), "Name of A brightness");
    ASSERT_TRUE(slider);
    pressKey(*slider, Qt::Key_End);
    settle();
    EXPECT_EQ(hardware.monitors["A"].brightness, 1.0);
    pressKeyIn(*settings(), Qt::Key_Escape); // reverts instead of reaching the page
    settle();
    EXPECT_EQ(hardware.monitors["A"].brightness, 0.25);
    settings()->close();
    EXPECT_FALSE(settings());
    const std::size_t writes = hardware.writes.size();
    delegate->showSettings();
    settle();
    EXPECT_GT(hardware.writes.size(), writes) << "opened on the active preset, they apply it again";
    click(*settings(), "Refresh");
    turnLoop();
    EXPECT_TRUE(named<QProgressBar>(*settings(), "Refreshing…"));
    settle();
    EXPECT_FALSE(named<QProgressBar>(*settings(), "Refreshing…"));
    settings()->close();
    delegate.reset();
    launch();
    EXPECT_FALSE(settings());
    delegate->showSettings();
    EXPECT_EQ(settings()->geometry(), QRect(20, 40, 600, 400));
    settings()->close();
    delegate.reset();
    defaults.set("LumenvaleSettings", "200 300 5000 4000"); // on a screen that is gone
    launch();
    delegate->showSettings();
    EXPECT_TRUE(settings()->screen()->availableGeometry().contains(settings()->geometry()));
}

TEST_F(AppDelegateTest, ShortcutsApplyPresetsFromTheStartUntilTheEnd)
{
    plug("A");
    savePreset("Day", {{"A", 1.0}});
    start();
    ASSERT_EQ(hotKeys.live.size(), 1u);
    hotKeys.events.pressed(hotKeys.live.begin()->first); // before the displays are known
    settle();
    EXPECT_EQ(hardware.monitors["A"].brightness, 1.0);
    delegate->showSettings(); // on the active preset
    settle();
    hotKeys.events.changed(hotKeys.usedIDs.back(), "The desktop refused the shortcut.");
    turnLoop();
    EXPECT_TRUE(shows<TextLabel>(*settings(), "The desktop refused the shortcut."));
    click(*settings(), "Record keyboard shortcut");
    EXPECT_TRUE(hotKeys.live.empty()) << "no key is kept from the recording";
    click(*settings(), "Cancel");
    EXPECT_EQ(hotKeys.live.size(), 1u);
    delegate->applicationWillTerminate();
    EXPECT_TRUE(hotKeys.live.empty());
}

TEST_F(AppDelegateTest, RequestedPresetWaitsUntilTheDisplaysAreKnown)
{
    plug("A");
    savePreset("Day", {{"A", 1.0}});
    start();
    delegate->perform({DesktopRequest::Action::applyPreset, "Day", "token"});
    EXPECT_EQ(desktop.activationToken, "token");
    settle();
    EXPECT_EQ(hardware.monitors["A"].brightness, 1.0);
    delegate->perform({DesktopRequest::Action::openSettings, "", ""});
    EXPECT_TRUE(settings());
    delegate->perform({DesktopRequest::Action::showPanel, "", ""});
    EXPECT_TRUE(panel());
}

TEST_F(AppDelegateTest, WheelOverTheItemChangesTheMainDisplay)
{
    plug("A", 0.5);
    plug("B", 0.5);
    std::swap(screens.list[0].isMain, screens.list[1].isMain);
    launch();
    desktop.item->content.scrolled(-2);
    desktop.item->content.scrolled(-1);
    settle();
    EXPECT_DOUBLE_EQ(hardware.monitors["B"].brightness, 0.35);
    EXPECT_EQ(hardware.monitors["A"].brightness, 0.5);
    desktop.item->content.scrolled(100);
    settle();
    EXPECT_EQ(hardware.monitors["B"].brightness, 1.0);
}

TEST_F(AppDelegateTest, NothingOutlivesTheDelegateWhateverIsOpen)
{
    plug("A");
    savePreset("Day", {{"A", 1.0}});
    launch();
    delegate->showSettings();
    desktop.item->content.activated();
    desktop.dock.menu()[2].action(); // a write is under way
    clock.advance(std::chrono::milliseconds(95));
    desktop.item->content.activated();
    delegate->applicationWillTerminate();
    EXPECT_FALSE(desktop.item);
    EXPECT_FALSE(panel());
    EXPECT_FALSE(desktop.dock.menu);
    EXPECT_FALSE(desktop.clickedOutside);
    delegate.reset();
    turnLoop();
    EXPECT_EQ(clock.pendingCount(), 0u);
    hardware.answerAll(); // late answers find nobody
    EXPECT_FALSE(settings());
}

} // namespace
} // namespace lumenvale
