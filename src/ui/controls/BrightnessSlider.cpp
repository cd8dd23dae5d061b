// SPDX-License-Identifier: MIT
#include "ui/controls/BrightnessSlider.h"

#include "ui/controls/HoldRepeatButton.h"
#include "ui/controls/Labels.h"
#include "ui/controls/Layouts.h"
#include "ui/controls/LevelSlider.h"
#include "ui/look/KeyboardFocus.h"

#include <utility>

namespace lumenvale {

namespace {

constexpr int headerHeight = 20;
constexpr int controlsHeight = 24;
constexpr int reasonHeight = 30; // of two lines, where they take the slider's place
constexpr int obstacleSpacing = 4;
constexpr int symbolSize = 16;
constexpr int smallSymbolSize = 12;
constexpr int warningSize = 14;

bool isControllable(const DisplayInfo& display)
{
    return display.method != ControlMethod::unavailable && display.brightness;
}
bool canBeSet(const BrightnessRow& row) { return !row.disabled && isControllable(row.display); }

} // namespace

BrightnessSlider::BrightnessSlider(Clock& clock)
    : symbol(new SymbolLabel({}, symbolSize, TextColour::secondary)), title(new ElidedLabel(TextRole::name)),
      problem(new SymbolLabel("exclamationmark.triangle", warningSize, TextColour::warning)),
      percentage(new NumberLabel), minus(new HoldRepeatButton(clock)), slider(new LevelSlider),
      plus(new HoldRepeatButton(clock)), obstacle(new TextLabel(TextRole::caption, TextColour::secondary))
{
    setFixedHeight(rowHeight);
    problem->hide();
    obstacle->setContentsMargins(0, obstacleSpacing, 0, 0);
    obstacle->hide();

    auto* headerLine = new QWidget;
    headerLine->setFixedHeight(headerHeight);
    QHBoxLayout* header = makeLine(headerLine, 4);
    header->addWidget(symbol);
    header->addSpacing(2);
    header->addWidget(title);
    header->addWidget(problem);
    header->addStretch(1);
    header->addWidget(new SymbolLabel("sun.max.fill", smallSymbolSize, TextColour::secondary));
    header->addWidget(percentage);

    QHBoxLayout* controls = makeLine(nullptr, 6 - LevelSlider::overhang);
    controls->addWidget(minus, 0, Qt::AlignBottom);
    controls->addWidget(slider, 1);
    controls->addWidget(plus, 0, Qt::AlignBottom);

    QVBoxLayout* rows = makeColumn(this);
    rows->addWidget(headerLine);
    rows->addStretch(1);
    rows->addLayout(controls);
    rows->addWidget(obstacle);
    slider->onChange = [this](double value) { request(value); };
}

void BrightnessSlider::show(const BrightnessRow& row)
{
    if (isShowing && row == shown)
        return showBrightness(); // the slider may still show what was asked for
    isShowing = true;
    shown = row;
    const DisplayInfo& display = shown.display;
    const QString name = qString(shown.title.empty() ? display.name : shown.title);
    setAccessibleName(name);
    symbol->setSymbol(display.isBuiltIn ? "laptopcomputer" : "display");
    title->setText(name);
    problem->setVisible(display.error.has_value());
    const QString error = qString(display.error.value_or(""));
    problem->setToolTip(toolTipText(error));
    problem->setAccessibleName(error);
    problem->setAccessibleDescription(error); // not the tooltip's markup
    slider->setAccessibleName(qString(display.name + " brightness"));
    // Without a problem to show, the status says why a display cannot be set.
    const QString reason = isControllable(display) ? QString() : display.error ? error : qString(display.status);
    setToolTip(toolTipText(reason));
    setAccessibleDescription(reason);
    slider->setReason(reason);
    slider->setFixedHeight(reason.isEmpty() ? controlsHeight : reasonHeight);
    slider->setAccessibleDescription(display.error ? error : reason);
    if (shown.disabled && slider->hasFocus())
        returnsFocus = true;
    if (!canBeSet(shown))
        passFocus(*this, *window());
    slider->setEnabled(canBeSet(shown));
    if (!shown.disabled && std::exchange(returnsFocus, false) && window()->focusWidget() == window())
        slider->setFocus(Qt::OtherFocusReason);
    slider->setStep(stepSize(display));
    const bool isObstacleShown = canBeSet(shown) && display.error && display.isErrorExplained;
    obstacle->setText(isObstacleShown ? error : QString());
    obstacle->setVisible(isObstacleShown);
    fitHeight();
    showBrightness();
}

void BrightnessSlider::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    fitHeight();
}

void BrightnessSlider::fitHeight()
{
    const int extra = obstacle->text().isEmpty() ? 0 : obstacle->heightForWidth(width());
    obstacle->setFixedHeight(extra);
    setFixedHeight(rowHeight + extra);
}

void BrightnessSlider::showBrightness()
{
    const DisplayInfo& display = shown.display;
    percentage->setText(qString(percentageText(display)));
    slider->setValue(display.brightness.value_or(0.0));
    slider->setValueText(percentage->text());
    updateStepButton(*minus, -1);
    updateStepButton(*plus, 1);
}

void BrightnessSlider::request(double value)
{
    // At once, so that a second step on the same turn of the loop starts from the first one's value.
    shown.display.brightness = quantise(shown.display, value);
    showBrightness();
    if (onChange)
        onChange(value);
}

void BrightnessSlider::updateStepButton(HoldRepeatButton& button, int direction)
{
    const DisplayInfo& display = shown.display;
    const double value = display.brightness.value_or(0.0);
    const std::string verb = direction < 0 ? "Decrease" : "Increase";
    const bool isEnabled = canBeSet(shown) && (direction < 0 ? value > 0.0 : value < 1.0);
    if (!isEnabled)
        passFocus(button, *slider);
    RepeatingStepButton{
        .symbol = direction < 0 ? "minus" : "plus",
        .label = qString(verb + " " + display.name + " brightness"),
        .help = qString(verb + " by " + stepSizeText(display) + "; hold to repeat"),
        .enabled = isEnabled,
        .action = [this, direction] { request(step(shown.display, direction)); },
    }
        .update(button);
}

} // namespace lumenvale
