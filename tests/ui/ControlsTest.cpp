// SPDX-License-Identifier: MIT
#include "support/ManualClock.h"
#include "support/Views.h"
#include "ui/controls/HoldRepeatButton.h"
#include "ui/controls/LevelSlider.h"
#include "ui/look/Symbols.h"

#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <memory>

namespace lumenvale {
namespace {

/// A mouse event of the left button; it does not turn the loop.
void sendMouse(QWidget& widget, QEvent::Type type, QPointF point)
{
    QMouseEvent event(type, point, widget.mapToGlobal(point), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

constexpr auto press = QEvent::MouseButtonPress, move = QEvent::MouseMove, release = QEvent::MouseButtonRelease;

struct HoldRepeatButtonTest : testing::Test {
    void restore()
    {
        RepeatingStepButton{"plus", "Increase", "Increase by 1", true, [this] { ++steps; }}.update(*button);
        button->setParent(&inner);
        button->show();
        inner.show();
        window.show();
    }
    void send(QEvent::Type type, double y = 12) { sendMouse(*button, type, {16, y}); }

    ManualClock clock;
    int steps = 0;
    QWidget window;
    QWidget inner{&window};
    std::unique_ptr<HoldRepeatButton> button = std::make_unique<HoldRepeatButton>(clock);
};

TEST_F(HoldRepeatButtonTest, StepsAtThePressAfterTheDelayAndThenAtTheIntervalWhileThePointerIsOnIt)
{
    restore();
    // Milliseconds that pass, then an event at a height; steps until then, and whether it looks pressed.
    const std::tuple<int, QEvent::Type, int, int, bool> rows[] = {
        {0, press, 12, 1, true},      {349, move, 12, 1, true},   {1, move, 12, 2, true},
        {79, move, 12, 2, true},      {571, move, -5, 10, false}, {800, move, 12, 10, true},
        {80, release, 12, 11, false}, {800, move, 12, 11, false}};
    for (const auto& [wait, event, y, expected, down] : rows) {
        clock.advance(std::chrono::milliseconds(wait));
        send(event, y);
        EXPECT_TRUE(steps == expected && button->isDown() == down) << wait << ": " << steps;
    }
    pressKey(*button, Qt::Key_Space);
    pressKey(*button, Qt::Key_Return);
    EXPECT_EQ(steps, 13) << "keys step once";
}

TEST_F(HoldRepeatButtonTest, AHoldEndsWithWhatMakesTheButtonUnusable)
{
    QWidget other;
    QEvent deactivation(QEvent::WindowDeactivate);
    const std::function<void()> ends[] = {
        [&] { inner.hide(); }, [&] { button->setParent(&other); }, [&] { RepeatingStepButton().update(*button); },
        [&] { QApplication::sendEvent(&window, &deactivation); }, [&] { button.reset(); }};
    for (const auto& end : ends) {
        restore();
        send(press);
        end();
        EXPECT_EQ(clock.pendingCount(), 0U) << steps;
        EXPECT_FALSE(button && button->isDown()) << steps;
    }
    EXPECT_EQ(steps, 5) << "one at each press";
}

struct LevelSliderTest : testing::Test {
    LevelSliderTest()
    {
        slider.resize(200 + 18 + 2 * LevelSlider::overhang, 24);
        slider.setValue(0.5);
        slider.onChange = [this](double) { ++requests; };
    }
    void send(QEvent::Type type, double fraction)
    {
        sendMouse(slider, type, {LevelSlider::overhang + 9 + fraction * 200, 12});
    }
    /// Checks the value, and how often it was asked for since the last check.
    void expect(double value, int asked, const std::string& why)
    {
        EXPECT_NEAR(slider.value(), value, 1e-9) << why;
        EXPECT_EQ(std::exchange(requests, 0), asked) << why;
    }

    LevelSlider slider;
    int requests = 0;
};

TEST_F(LevelSliderTest, ADragKeepsTheKnobBelowThePointerAndValuesFromOutsideWaitForItsEnd)
{
    // A click beside the knob moves it there; one on it, beside its centre, takes it. Then where a value comes
    // from outside (or -1), what is shown, and how often it was asked for.
    const std::tuple<QEvent::Type, double, double, double, int> rows[] = {
        {press, 0.25, -1, 0.25, 1}, {release, 0.25, -1, 0.25, 0}, {press, 0.28, -1, 0.25, 0},
        {move, 0.38, 0.3, 0.35, 1}, {release, 0.38, -1, 0.3, 0},  {press, 0.3, 0.1, 0.3, 0},
        {move, 1.4, -1, 1.0, 1},    {release, 1.4, -1, 1.0, 0}};
    for (const auto& [event, fraction, outside, expected, asked] : rows) {
        send(event, fraction);
        if (outside >= 0)
            slider.setValue(outside);
        expect(expected, asked, std::to_string(fraction));
    }
    send(press, 1.0);
    slider.setValue(0.2);
    slider.setEnabled(false);
    send(move, 0.6);
    expect(0.2, 0, "a disabled slider is not dragged");
    slider.setEnabled(true);
    slider.setLayoutDirection(Qt::RightToLeft);
    send(press, 0.1);
    expect(0.9, 1, "mirrored");
    QAccessible::queryAccessibleInterface(&slider)->valueInterface()->setCurrentValue(80);
    expect(0.8, 1, "a screen reader's request, in percent");
}

TEST_F(LevelSliderTest, KeysMoveByStepsAndPagesAndToTheEndsAndSmallTurnsOfTheWheelAddUp)
{
    const std::pair<Qt::Key, double> keys[] = {
        {Qt::Key_Right, 0.51}, {Qt::Key_Up, 0.52},    {Qt::Key_Left, 0.51},
        {Qt::Key_Down, 0.5},   {Qt::Key_PageUp, 0.6}, {Qt::Key_Home, 0.0},
        {Qt::Key_Left, 0.0},   {Qt::Key_End, 1.0},    {Qt::Key_PageDown, 0.9}};
    for (const auto& [key, expected] : keys) {
        pressKey(slider, key);
        expect(expected, 1, "key");
    }
    const std::tuple<double, int, double, int> turns[] = {{0.01, -180, 0.89, 1}, {0.01, -60, 0.88, 1},
                                                          {0.01, 40, 0.88, 0},   {0.01, 80, 0.89, 1},
                                                          {0.001, 12, 0.891, 1}, {0.05, 120, 0.941, 1}};
    for (const auto& [step, delta, expected, asked] : turns) {
        slider.setStep(step);
        turnWheel(slider, delta);
        expect(expected, asked, "wheel");
    }
    turnWheel(slider, 120, Qt::ScrollMomentum);
    expect(0.941, 0, "the fingers have left");
    slider.setLayoutDirection(Qt::RightToLeft);
    pressKey(slider, Qt::Key_Left);
    expect(0.991, 1, "leftward is up where the track is mirrored");
}

TEST(LookTest, TheAccentIsTheHighlightColourThatTheUserChose)
{
    for (const QRgb highlight : {0xFFE0457B, 0xFF308CC6, 0xFF000080, 0xFF808080, 0xFF0A0A0C}) {
        QPalette palette = makePalette(true);
        palette.setColor(QPalette::Highlight, QColor(highlight));
        EXPECT_EQ(Theme::of(palette).accent.rgb(), highlight == 0xFFE0457B ? highlight : 0xFF4C8DFF);
        EXPECT_EQ(Theme::of(palette).accent, Theme::of(makePalette(true, QColor(highlight))).accent);
    }
}

TEST(LookTest, EveryTextCanBeReadWhateverTheAccent)
{
    for (int i = 0; i < 2 * 360; i += 10) {
        const Theme theme =
            Theme::of(makePalette(i >= 360, QColor::fromHsl(i % 360, 200, i % 3 == 0 ? 100 : 160)));
        EXPECT_GE(contrast(theme.accentText, theme.accent), 4.5) << i;
        for (const QColor& ground : {theme.window, theme.sidebar, theme.card}) {
            for (const TextColour each : {TextColour::primary, TextColour::secondary, TextColour::accent})
                EXPECT_GE(contrast(theme.of(each), ground), 4.5) << i << ' ' << int(each);
        }
    }
}

TEST(LookTest, SymbolsFillTheirBoxes)
{
    const QString names =
        "laptopcomputer display display.2 exclamationmark.triangle sun.max.fill minus plus checkmark "
        "gearshape arrow.clockwise power slider.horizontal.3 trash doc.on.doc";
    QImage blank(30, 30, QImage::Format_ARGB32_Premultiplied);
    blank.setDevicePixelRatio(1.5);
    blank.fill(Qt::white);
    for (const QString& name : names.split(' ')) {
        QImage image = blank;
        QPainter painter(&image);
        drawSymbol(painter, name, {2, 2, 16, 16}, Qt::black);
        EXPECT_NE(image, blank) << name.toStdString();
        painter.fillRect(2, 2, 16, 16, Qt::white);
        EXPECT_EQ(image, blank) << name.toStdString();
    }
}

} // namespace
} // namespace lumenvale
