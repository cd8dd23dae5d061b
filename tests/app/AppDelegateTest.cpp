// SPDX-License-Identifier: MIT
#include "AppDelegateFixture.h"
#include "platform/macos/shell/PanelPointer.h"
#include "ui/controls/Labels.h"

#include <QMenu>

namespace lumenvale {
namespace {

using AppDelegateTest = AppDelegateFixture;

TEST_F(AppDelegateTest, PresentationShowsAndRemovesTheStatusItemAtRunTime)
{
    launch();
    ASSERT_TRUE(desktop.item);
    delegate->showSettings();
    EXPECT_EQ(QAccessible::queryAccessibleInterface(settings())->role(), QAccessible::Window);
    clickItem();
    click(*settings(), "General");
    click(*settings(), "Dock");
    EXPECT_FALSE(desktop.item);
    EXPECT_FALSE(panel());
    click(*settings(), "Menu bar");
    EXPECT_TRUE(desktop.item);
    using enum ActivationPolicy;
    EXPECT_EQ(desktop.policies, (std::vector{accessory, regular, accessory}));
}

TEST_F(AppDelegateTest, AStartShowsThePanelWhereNothingShowsTheItem)
{
    desktop.showsItems.reset();
    launch();
    delegate->showUnlessVisible();
    EXPECT_FALSE(panel()) << "it is not known yet";
    desktop.showsItems = false;
    desktop.statusBarChanged();
    EXPECT_TRUE(panel());
    desktop.showsItems = true;
    desktop.statusBarChanged();
    using enum ActivationPolicy;
    EXPECT_EQ(desktop.policies, (std::vector{accessory, regular, accessory})) << "the entry leads back meanwhile";
}

TEST_F(AppDelegateTest, PanelOpensAtTheItemAndClosesForClicksInOtherWindows)
{
    plug("A");
    launch();
    hardware.log.clear();
    clickItem();
    EXPECT_FALSE(hardware.log.empty()) << "the displays are read when the panel opens";
    ASSERT_TRUE(panel());
    EXPECT_EQ(panel()->geometry(), QRect(412 - 170, 30, 340, int(preferredHeight(1, 0))));
    QWidget* const shown = panel();
    shown->setWindowFlag(Qt::WindowDoesNotAcceptFocus); // the system makes its window anew
    shown->show();
    EXPECT_EQ(desktop.dressed, 2);
    desktop.clickedOutside();
    clickItem(); // the same click
    EXPECT_FALSE(panel());
    hardware.log.clear();
    settle();
    EXPECT_TRUE(hardware.log.empty()) << "monitors are read seldom while no window shows them";
    delegate->showSettings();
    clickItem();
    press(*panel(), QPointF(10, 500));
    press(*settings(), QPointF(410, 10)); // on the item, which toggles the panel itself
    ASSERT_TRUE(panel());
    press(*settings(), QPointF(10, 500));
    EXPECT_FALSE(panel());
    clickItem();
    press(*panel(), Qt::Key_Escape);
    EXPECT_FALSE(panel());
    clickItem();
    QMenu textMenu;
    textMenu.popup({700, 500});
    press(textMenu, QPointF(705, 505));
    EXPECT_TRUE(panel()) << "it is the menu of one of its texts";
    textMenu.close();
    send(*panel(), QCloseEvent());
    clickItem();
    EXPECT_TRUE(panel()) << "it was closed, not only hidden";
}

TEST_F(AppDelegateTest, DockMenuListsThePresetsAndAppliesThem)
{
    plug("A");
    launch();
    EXPECT_EQ(dockTitles(), (std::vector<std::string>{"Brightness…", "-", "Settings…"}));
    savePreset(" \t", 0.25);
    launch();
    desktop.dock.menu()[2].action();
    EXPECT_EQ(levelOf("A"), 0.25);
    EXPECT_EQ(dockTitles(), (std::vector<std::string>{"Brightness…", "-", "Untitled preset ✓", "-", "Settings…"}));
    EXPECT_GT(desktop.menuChanges, 0);
    delegate->showSettings();
    settle();
    desktop.menuChanges = 0;
    pressKey(*named(*settings(), "Name of A brightness"), Qt::Key_End);
    settle();
    EXPECT_EQ(desktop.menuChanges, 0) << "levels show in no menu";
    desktop.dock.menu()[0].action();
    QWidget* const open = panel();
    ASSERT_TRUE(open);
    desktop.dock.reopen();
    EXPECT_EQ(panel(), open) << "it moves instead of flashing";
    QCursor::setPos(700, 400);
    desktop.dock.menuWillOpen();
    EXPECT_FALSE(panel());
    QCursor::setPos(10, 10); // on the way to the menu's row
    desktop.dock.menu()[0].action();
    EXPECT_GT(panel()->x(), 400) << "it opens where the icon was clicked";
}

TEST_F(AppDelegateTest, SettingsKeepTheirFrameAndRevertAPreset)
{
    plug("A");
    savePreset("Day", 0.25);
    launch();
    delegate->showSettings();
    desktop.dock.menu()[2].action(); // the preset
    settle();
    settings()->setGeometry(20, 40, 600, 400);
    pressKey(*named(*settings(), "Name of A brightness"), Qt::Key_End);
    EXPECT_EQ(levelOf("A"), 1.0);
    send(*settings(), QKeyEvent(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier, {}, true)); // still held
    EXPECT_EQ(levelOf("A"), 1.0);
    press(*settings(), Qt::Key_Escape); // reverts instead of reaching the page
    EXPECT_EQ(levelOf("A"), 0.25);
    pressKey(*named(*settings(), "Name of A brightness"), Qt::Key_Home);
    click(*settings(), "General");
    press(*settings(), Qt::Key_Escape);
    EXPECT_EQ(levelOf("A"), 0.0) << "the page shows no preset";
    settings()->close();
    const auto isReadOften = [this] {
        hardware.log.clear();
        for (int i = 0; i < 3; ++i)
            settle(); // longer than from one reading to the next while a window shows them
        return !hardware.log.empty();
    };
    EXPECT_FALSE(isReadOften()) << "the window is closed";
    delegate->showSettings();
    EXPECT_TRUE(isReadOften());
    settings()->showMinimized();
    EXPECT_FALSE(isReadOften());
    launch();
    delegate->showSettings();
    EXPECT_EQ(settings()->geometry(), QRect(20, 40, 600, 400));
    for (const char* lost : {"200 300 5000 4000", "-3000 -3000 600 400", "x"}) { // saved on screens that are gone
        defaults.set("LumenvaleSettings", lost);
        launch();
        delegate->showSettings();
        EXPECT_TRUE(settings()->screen()->availableGeometry().contains(settings()->geometry())) << lost;
    }
}

TEST_F(AppDelegateTest, ShortcutsApplyPresetsFromTheStartUntilTheEnd)
{
    plug("A");
    savePreset("Day", 1.0);
    start();
    ASSERT_EQ(hotKeys.live.size(), 1u);
    hotKeys.events.pressed(hotKeys.live.begin()->first); // before the displays are known
    EXPECT_EQ(levelOf("A"), 1.0);
    delegate->showSettings(); // on the active preset
    settle();
    hotKeys.events.changed(hotKeys.usedIDs.back(), "The desktop refused the shortcut.");
    turnLoop();
    EXPECT_TRUE(shows<TextLabel>(*settings(), "The desktop refused the shortcut."));
    click(*settings(), "Record keyboard shortcut");
    EXPECT_TRUE(hotKeys.live.empty()) << "no key is kept from the recording";
    press(*settings(), Qt::Key_Escape);
    EXPECT_EQ(hotKeys.live.size(), 1u);
    delegate->applicationWillTerminate();
    EXPECT_TRUE(hotKeys.live.empty());
}

TEST_F(AppDelegateTest, NothingOutlivesTheDelegateWhateverIsOpen)
{
    plug("A");
    savePreset("Day", 1.0);
    launch();
    delegate->showSettings();
    desktop.dock.menu()[2].action(); // a write is under way
    clock.advance(std::chrono::milliseconds(95));
    clickItem();
    delegate->applicationWillTerminate();
    EXPECT_FALSE(desktop.item);
    EXPECT_FALSE(panel());
    EXPECT_FALSE(settings());
    EXPECT_FALSE(desktop.dock.menu);
    EXPECT_FALSE(desktop.clickedOutside);
    delegate.reset();
    turnLoop();
    EXPECT_EQ(clock.pendingCount(), 0u);
    hardware.answerAll(); // late answers reach nothing
}

TEST_F(AppDelegateTest, PointerThatMacOSHandsOnLightsUpWhatIsUnderIt)
{
    plug("A");
    launch();
    clickItem();
    const auto* const button = panel()->findChild<QAbstractButton*>();
    const QPoint inside = button->mapTo(panel(), button->rect().center());
    const QPoint onScreen = panel()->mapToGlobal(inside);
    const auto pass = [&](PointerMotion motion) {
        passPointer(panel()->winId(), motion, {double(inside.x()), double(inside.y())},
                    {double(onScreen.x()), double(onScreen.y())});
        return button->underMouse();
    };
    EXPECT_TRUE((pass(PointerMotion::entered), pass(PointerMotion::moved)));
    EXPECT_FALSE(pass(PointerMotion::left));
}

} // namespace
} // namespace lumenvale
