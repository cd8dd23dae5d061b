// SPDX-License-Identifier: MIT
#include "ui/controls/HoldRepeatButton.h"
#include "support/ManualClock.h"
#include "support/Views.h"

#include <QAccessible>
#include <QVBoxLayout>
#include <memory>
#include <utility>
#include <vector>

namespace lumenvale {
namespace {

using std::chrono::milliseconds;

struct HoldRepeatButtonTest : testing::Test {
    HoldRepeatButtonTest()
    {
        look.update(*button);
        auto* layout = new QVBoxLayout(&inner);
        layout->addWidget(button.get());
        window.resize(100, 100);
        window.show();
        turnLoop();
    }
    ~HoldRepeatButtonTest() override { button.reset(); }

    void press() { sendMouse(*button, QEvent::MouseButtonPress, {16, 12}); }
    void release() { sendMouse(*button, QEvent::MouseButtonRelease, {16, 12}); }

    ManualClock clock;
    int steps = 0;
    RepeatingStepButton look{"plus", "Increase", "Increase by 1", true, [this] { ++steps; }};
    QWidget window;
    QWidget inner{&window};
    std::unique_ptr<HoldRepeatButton> button = std::make_unique<HoldRepeatButton>(clock);
};

TEST_F(HoldRepeatButtonTest, StepsAtThePressAfterTheDelayAndThenAtTheInterval)
{
    press();
    EXPECT_EQ(steps, 1);
    EXPECT_TRUE(button->isDown());
    clock.advance(milliseconds(349));
    EXPECT_EQ(steps, 1);
    clock.advance(milliseconds(1));
    EXPECT_EQ(steps, 2);
    clock.advance(milliseconds(79));
    EXPECT_EQ(steps, 2);
    clock.advance(milliseconds(571)); // one second in all
    EXPECT_EQ(steps, 10);
    release();
    EXPECT_EQ(clock.pendingCount(), 0U);
    EXPECT_EQ(steps, 10) << "the release is not a click";
    EXPECT_FALSE(button->isDown());
}

TEST_F(HoldRepeatButtonTest, PausesWhileThePointerIsOffTheButton)
{
    press();
    clock.advance(milliseconds(350));
    sendMouse(*button, QEvent::MouseMove, {16, -5});
    EXPECT_FALSE(button->isDown());
    clock.advance(milliseconds(800));
    EXPECT_EQ(steps, 2);
    sendMouse(*button, QEvent::MouseMove, {16, 5});
    EXPECT_TRUE(button->isDown());
    clock.advance(milliseconds(80));
    EXPECT_EQ(steps, 3);
}

TEST_F(HoldRepeatButtonTest, AHoldEndsWithWhatMakesTheButtonUnusable)
{
    QWidget other;
    const std::vector<std::pair<const char*, std::function<void()>>> ends = {
        {"disabled", [&] { button->setEnabled(false); }},
        {"hidden", [&] { button->hide(); }},
        {"inside something hidden", [&] { inner.hide(); }},
        {"its window closed", [&] { window.close(); }},
        {"its window lost the focus",
         [&] {
             QEvent lost(QEvent::WindowDeactivate);
             QApplication::sendEvent(&window, &lost);
         }},
        {"in another window", [&] { button->setParent(&other); }},
        {"updated to be disabled",
         [&] {
             RepeatingStepButton disabled = look;
             disabled.enabled = false;
             disabled.update(*button);
         }},
    };
    for (const auto& [name, end] : ends) {
        SCOPED_TRACE(name);
        steps = 0;
        press();
        ASSERT_EQ(steps, 1);
        end();
        EXPECT_EQ(clock.pendingCount(), 0U);
        EXPECT_FALSE(button->isDown());
        clock.advance(milliseconds(1000));
        EXPECT_EQ(steps, 1);
        button->setParent(&inner);
        inner.layout()->addWidget(button.get());
        look.update(*button);
        window.show();
        inner.show();
        button->show();
    }
}

TEST_F(HoldRepeatButtonTest, AStepThatDisablesOrDestroysTheButtonEndsTheHold)
{
    button->onStep = [&] {
        if (++steps == 3)
            button->setEnabled(false);
    };
    press();
    clock.advance(milliseconds(2000));
    EXPECT_EQ(steps, 3);
    press();
    EXPECT_EQ(steps, 3) << "a press on a disabled button";

    button->setEnabled(true);
    press();
    button.reset();
    EXPECT_EQ(clock.pendingCount(), 0U);
}

TEST_F(HoldRepeatButtonTest, KeysAndScreenReadersStepOnce)
{
    pressKey(*button, Qt::Key_Space);
    EXPECT_EQ(steps, 1);
    pressKey(*button, Qt::Key_Return);
    EXPECT_EQ(steps, 2);
    QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(button.get());
    EXPECT_EQ(reader->text(QAccessible::Name), "Increase");
    EXPECT_TRUE(reader->actionInterface()->actionNames().contains(QAccessibleActionInterface::pressAction()));
    button->click(); // what that action does a moment later
    EXPECT_EQ(steps, 3);
    EXPECT_EQ(clock.pendingCount(), 0U);
}

} // namespace
} // namespace lumenvale
