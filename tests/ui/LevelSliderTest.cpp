// SPDX-License-Identifier: MIT
#include "ui/controls/LevelSlider.h"
#include "support/Views.h"
#include "ui/controls/ScrollPage.h"

#include <QAccessible>
#include <QVBoxLayout>
#include <vector>

namespace lumenvale {
namespace {

struct LevelSliderTest : testing::Test {
    LevelSliderTest()
    {
        slider.resize(width, 24);
        slider.setStep(0.01);
        slider.setValue(0.5);
        slider.onChange = [this](double value) { asked.push_back(value); };
        slider.show();
    }

    /// The x of the knob's centre when the slider shows `fraction`.
    static double xOf(double fraction) { return LevelSlider::overhang + 9 + fraction * way; }
    void press(double x) { sendMouse(slider, QEvent::MouseButtonPress, {x, 12}); }
    void move(double x) { sendMouse(slider, QEvent::MouseMove, {x, 12}); }
    void release(double x) { sendMouse(slider, QEvent::MouseButtonRelease, {x, 12}); }

    static constexpr double way = 200;
    static constexpr int width = int(way) + 18 + 2 * LevelSlider::overhang;
    LevelSlider slider;
    std::vector<double> asked;
};

TEST_F(LevelSliderTest, AClickBesideTheKnobMovesItThereAndADragKeepsItsPlaceBelowThePointer)
{
    press(xOf(0.25));
    release(xOf(0.25));
    EXPECT_DOUBLE_EQ(slider.value(), 0.25);
    slider.setValue(0.5);
    asked.clear();
    press(xOf(0.5) + 6);
    EXPECT_TRUE(asked.empty()) << "taking the knob moves nothing";
    move(xOf(0.5) + 26);
    ASSERT_EQ(asked.size(), 1U);
    EXPECT_DOUBLE_EQ(asked[0], 0.6);
    move(xOf(1.0) + 500);
    EXPECT_DOUBLE_EQ(asked.back(), 1.0);
}

TEST_F(LevelSliderTest, ValuesFromOutsideWaitForTheEndOfADrag)
{
    press(xOf(0.5));
    move(xOf(0.6));
    slider.setValue(0.55);
    EXPECT_DOUBLE_EQ(slider.value(), 0.6) << "below the pointer";
    release(xOf(0.6));
    EXPECT_DOUBLE_EQ(slider.value(), 0.55) << "what the display really has";

    press(xOf(0.55));
    slider.setValue(0.1);
    move(xOf(0.7));
    release(xOf(0.7));
    EXPECT_NEAR(slider.value(), 0.7, 1e-9) << "a value older than the latest request is out of date";
}

TEST_F(LevelSliderTest, ADragEndsWhenTheSliderIsHiddenOrDisabled)
{
    press(xOf(0.5));
    slider.setValue(0.2);
    slider.setEnabled(false);
    EXPECT_DOUBLE_EQ(slider.value(), 0.2);
    move(xOf(0.9));
    slider.setEnabled(true);
    press(xOf(0.2));
    slider.hide();
    slider.show();
    move(xOf(0.9));
    EXPECT_TRUE(asked.empty());
}

TEST_F(LevelSliderTest, KeysMoveByStepsAndPagesAndToTheEnds)
{
    const std::vector<std::pair<int, double>> keys = {
        {Qt::Key_Right, 0.51}, {Qt::Key_Up, 0.52},   {Qt::Key_Left, 0.51},   {Qt::Key_Down, 0.50},
        {Qt::Key_PageUp, 0.6}, {Qt::Key_Home, 0.0},  {Qt::Key_Left, 0.0},    {Qt::Key_PageDown, 0.0},
        {Qt::Key_End, 1.0},    {Qt::Key_Right, 1.0}, {Qt::Key_PageDown, 0.9}};
    for (const auto& [key, expected] : keys) {
        pressKey(slider, key);
        EXPECT_NEAR(slider.value(), expected, 1e-9) << key;
    }
    EXPECT_EQ(asked.size(), keys.size());
    slider.setLayoutDirection(Qt::RightToLeft);
    pressKey(slider, Qt::Key_Left);
    EXPECT_NEAR(slider.value(), 0.91, 1e-9) << "leftward is up where the track is mirrored";
}

TEST_F(LevelSliderTest, SmallTurnsOfTheWheelAddUp)
{
    EXPECT_TRUE(turnWheel(slider, 180));
    EXPECT_NEAR(slider.value(), 0.51, 1e-9);
    turnWheel(slider, 60);
    EXPECT_NEAR(slider.value(), 0.52, 1e-9) << "what was left of the first turn counts";
    for (int i = 0; i < 20; ++i)
        turnWheel(slider, -12);
    EXPECT_NEAR(slider.value(), 0.50, 1e-9);
    EXPECT_EQ(asked.size(), 4U) << "less than a step asks for nothing";
    turnWheel(slider, 120, Qt::ScrollMomentum);
    EXPECT_NEAR(slider.value(), 0.50, 1e-9) << "the fingers have left";

    slider.setStep(0.001);
    turnWheel(slider, 12);
    EXPECT_NEAR(slider.value(), 0.501, 1e-9);
    slider.setStep(0.05);
    turnWheel(slider, 120);
    EXPECT_NEAR(slider.value(), 0.551, 1e-9) << "a notch is never less than a step";
}

TEST_F(LevelSliderTest, APageThatScrollsKeepsTheWheel)
{
    auto* content = new QWidget;
    auto* layout = new QVBoxLayout(content);
    auto* inPage = new LevelSlider;
    layout->addWidget(inPage);
    layout->addSpacing(500);
    ScrollPage page(content);
    page.resize(200, 100);
    page.show();
    turnLoop();
    inPage->clearFocus();
    turnWheel(*inPage, -120);
    EXPECT_DOUBLE_EQ(inPage->value(), 0.0);
    page.activateWindow();
    turnLoop();
    inPage->setFocus();
    EXPECT_TRUE(turnWheel(*inPage, 120));
    EXPECT_DOUBLE_EQ(inPage->value(), 0.01);
}

TEST_F(LevelSliderTest, AScreenReaderSeesAndSetsTheValue)
{
    slider.setAccessibleName("Studio 27 brightness");
    slider.setValueText("50%");
    QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(&slider);
    EXPECT_EQ(reader->role(), QAccessible::Slider);
    EXPECT_EQ(reader->text(QAccessible::Name), "Studio 27 brightness");
    EXPECT_EQ(reader->text(QAccessible::Value), "50%");
    QAccessibleValueInterface* value = reader->valueInterface();
    ASSERT_TRUE(value);
    EXPECT_DOUBLE_EQ(value->currentValue().toDouble(), 0.5);
    EXPECT_DOUBLE_EQ(value->minimumStepSize().toDouble(), 0.01);
    value->setCurrentValue(0.8);
    EXPECT_DOUBLE_EQ(slider.value(), 0.8);
    slider.setEnabled(false);
    value->setCurrentValue(0.1);
    EXPECT_EQ(asked, std::vector<double>{0.8});
}

} // namespace
} // namespace lumenvale
