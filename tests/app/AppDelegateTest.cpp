// SPDX-License-Identifier: MIT
#include "app/AppDelegate.h"

#include "FakeShell.h"
#include "base/MemoryUserDefaults.h"
#include "support/FakeDisplayHardware.h"
#include "support/FakeHotKeyService.h"
#include "support/FakeScreenSource.h"
#include "support/FakeStartupService.h"
#include "support/FakeSystemEvents.h"
#include "support/ManualClock.h"
#include "support/Views.h"
#include "ui/PreferredHeight.h"

#include <QWindow>
#include <gtest/gtest.h>

namespace lumenvale {
namespace {

class NoDiagnostics final : public Diagnostics {
public:
    std::vector<Finding> examine(const std::vector<DisplayInfo>&) override { return {}; }
};

std::vector<std::string> titles(const Menu& menu)
{
    std::vector<std::string> list;
    for (const MenuEntry& each : menu)
        list.push_back(each.id.empty() ? "-" : each.title + (each.isChecked ? " ✓" : ""));
    return list;
}

class AppDelegateTest : public testing::Test {
protected:
    AppDelegateTest() { defaults.set("hasOpenedSettings", true); }

    void savePreset(const std::string& name, const std::map<std::string, double>& values)
    {
        std::vector<BrightnessPreset> list;
        if (const auto stored = readDefault<PropertyData>(defaults, "brightnessPresets"))
            list = *decodePresets(*stored);
        BrightnessPreset preset;
        preset.id = Uuid::random();
        preset.name = name;
        preset.values = values;
        preset.shortcut = defaultShortcut(list);
        list.push_back(preset);
        defaults.set("brightnessPresets", *encodePresets(list));
        saved.push_back(preset);
    }

    void plug(const std::string& id, double brightness = 0.5)
    {
        const bool isFirst = screens.list.empty();
        screens.connect(id, std::uint32_t(screens.list.size() + 1)).isMain = isFirst;
        hardware.monitors[id].brightness = brightness;
    }

    void launch()
    {
        delegate = std::make_unique<AppDelegate>(
            AppServices{hardware, defaults, screens, events, diagnostics, startup, &hotKeys, clock, shell, {}});
        delegate->applicationDidFinishLaunching();
        settle();
    }

    /// Lets everything that is under way come to its end.
    void settle()
    {
        for (int i = 0; i < 5; ++i) {
            clock.advance(std::chrono::milliseconds(100));
            hardware.answerAll();
            turnLoop();
        }
    }

    static QWidget* visibleWindow(bool isPanel)
    {
        for (QWidget* each : QApplication::topLevelWidgets()) {
            if (each->isVisible() && (dynamic_cast<BrightnessPanel*>(each) != nullptr) == isPanel &&
                (isPanel || dynamic_cast<SettingsWindow*>(each)))
                return each;
        }
        return nullptr;
    }
    static QWidget* panel() { return visibleWindow(true); }
    static QWidget* settings() { return visibleWindow(false); }

    static void pressKeyIn(QWidget& window, int key)
    {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(window.windowHandle(), &press);
        turnLoop();
    }

    /// Chooses where the program presents itself, on the General page.
    static void choose(const QString& option)
    {
        for (QAbstractButton* each : settings()->findChildren<QAbstractButton*>()) {
            if (each->text() == option)
                each->click();
        }
        turnLoop();
    }

    MemoryUserDefaults defaults;
    FakeScreenSource screens;
    FakeSystemEvents events;
    FakeDisplayHardware hardware;
    FakeStartupService startup;
    FakeHotKeyService hotKeys;
    NoDiagnostics diagnostics;
    ManualClock clock;
    FakeDesktop desktop;
    Shell shell = makeFakeShell(desktop);
    std::vector<BrightnessPreset> saved;
    std::unique_ptr<AppDelegate> delegate;
};

TEST_F(AppDelegateTest, PresentationShowsAndRemovesTheStatusItemAtRunTime)
{
    launch();
    ASSERT_TRUE(desktop.item);
    EXPECT_EQ(desktop.item->content.toolTip, "Lumenvale — control each display");
    EXPECT_EQ(desktop.item->content.image(2).width, 44);
    desktop.item->content.activated();
    ASSERT_TRUE(panel());
    delegate->showSettings();
    desktop.item->content.activated();
    click(*settings(), "General");
    choose("Dock");
    EXPECT_FALSE(desktop.item);
    EXPECT_FALSE(panel());
    choose("Menu bar");
    EXPECT_TRUE(desktop.item);
    EXPECT_EQ(desktop.policies,
              (std::vector{ActivationPolicy::accessory, ActivationPolicy::regular, ActivationPolicy::accessory}));
}

TEST_F(AppDelegateTest, StatusItemOpensThePanelBelowItselfAndClosesIt)
{
    plug("A");
    plug("B");
    launch();
    desktop.item->content.activated();
    ASSERT_TRUE(panel());
    EXPECT_EQ(panel()->geometry(), QRect(412 - 170, 30, 340, int(preferredHeight(2, 0))));
    EXPECT_EQ(desktop.focused, 1);
    desktop.item->content.activated();
    EXPECT_FALSE(panel());
    EXPECT_FALSE(desktop.clickedOutside);
}

TEST_F(AppDelegateTest, ClickOnTheItemThatClosedThePanelDoesNotOpenItAgain)
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
    press(*panel(), {400, 300});
    press(*settings(), {410, 10}); // on the item, which sees to itself
    EXPECT_TRUE(panel());
    press(*settings(), {10, 500});
    EXPECT_FALSE(panel());
    desktop.item->content.activated();
    pressKeyIn(*panel(), Qt::Key_Escape);
    EXPECT_FALSE(panel());
}

TEST_F(AppDelegateTest, OpenPanelGrowsInPlaceWithTheDisplays)
{
    plug("A");
    launch();
    desktop.item->content.activated();
    const QRect before = panel()->geometry();
    plug("B");
    events.send(SystemEvent::screenParametersChanged);
    clock.advance(std::chrono::seconds(1));
    settle();
    EXPECT_EQ(panel()->geometry(), QRect(before.topLeft(), QSize(340, int(preferredHeight(2, 0)))));
    EXPECT_TRUE(named(*panel(), "Name of B brightness"));
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
    EXPECT_TRUE(panel());
    desktop.dock.menuWillOpen();
    EXPECT_FALSE(panel());
}

TEST_F(AppDelegateTest, ReopeningMovesTheOpenPanelInsteadOfFlashing)
{
    launch();
    desktop.dock.reopen();
    QWidget* const first = panel();
    ASSERT_TRUE(first);
    desktop.dock.reopen();
    EXPECT_EQ(panel(), first);
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

TEST_F(AppDelegateTest, SettingsOpenByThemselvesAtTheFirstLaunchOnly)
{
    defaults.values.clear();
    launch();
    ASSERT_TRUE(settings());
    EXPECT_EQ(settings()->size(), QSize(800, 580));
    EXPECT_EQ(settings()->windowTitle(), "Lumenvale");
    delegate.reset();
    launch();
    EXPECT_FALSE(settings());
}

TEST_F(AppDelegateTest, SettingsWindowKeepsItsFrameAndStartsWithAPresetReverted)
{
    plug("A", 0.9);
    savePreset("Day", {{"A", 0.25}});
    launch();
    desktop.dock.menu()[2].action(); // the preset
    settle();
    delegate->showSettings();
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
    delegate.reset();
    launch();
    delegate->showSettings();
    EXPECT_EQ(settings()->geometry(), QRect(20, 40, 600, 400));
}

TEST_F(AppDelegateTest, ShortcutsApplyPresetsFromTheStartUntilTheEnd)
{
    plug("A");
    savePreset("Day", {{"A", 1.0}});
    launch();
    ASSERT_EQ(hotKeys.live.size(), 1u);
    const HotKeyID id = hotKeys.live.begin()->second.id;
    EXPECT_EQ(hotKeys.handler(id), 0);
    settle();
    EXPECT_EQ(hardware.monitors["A"].brightness, 1.0);
    delegate->applicationWillTerminate();
    EXPECT_TRUE(hotKeys.live.empty());
}

TEST_F(AppDelegateTest, RequestedPresetWaitsUntilTheDisplaysAreKnown)
{
    plug("A");
    savePreset("Day", {{"A", 1.0}});
    delegate = std::make_unique<AppDelegate>(
        AppServices{hardware, defaults, screens, events, diagnostics, startup, &hotKeys, clock, shell, {}});
    delegate->applicationDidFinishLaunching();
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
    launch();
    desktop.item->content.scrolled(-2);
    desktop.item->content.scrolled(-1);
    settle();
    EXPECT_DOUBLE_EQ(hardware.monitors["A"].brightness, 0.35);
    EXPECT_EQ(hardware.monitors["B"].brightness, 0.5);
    desktop.item->content.scrolled(100);
    settle();
    EXPECT_EQ(hardware.monitors["A"].brightness, 1.0);
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
