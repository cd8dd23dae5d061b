// SPDX-License-Identifier: MIT
#include "ui/BrightnessSlider.h"

#include "ui/HoldRepeatButton.h"
#include "ui/Labels.h"
#include "ui/LevelSlider.h"
#include "ui/PreferredHeight.h"
#include "ui/RepeatingStepButton.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>

namespace lumenvale {

namespace {

constexpr int headerHeight = 20;
constexpr int controlsHeight = 24;
constexpr int symbolSize = 16;
constexpr int smallSymbolSize = 12;
constexpr int warningSize = 14;
/// Arrow keys and the wheel move by this, or by the display's own step where that is larger.
constexpr double coarseStep = 0.01;

QString qString(const std::string& text) { return QString::fromStdString(text); }

bool canBeSet(const BrightnessRow& row)
{
    return !row.disabled && row.display.method != ControlMethod::unavailable && row.display.brightness;
}

double sliderStep(const DisplayInfo& display)
{
    const bool hasUnits = display.method == ControlMethod::ddc && display.maximum > 0;
    return hasUnits ? std::max(coarseStep, 1.0 / display.maximum) : coarseStep;
}

} // namespace

BrightnessSlider::BrightnessSlider(Clock& clock, QWidget* parent)
    : QWidget(parent), symbol(new SymbolLabel({}, symbolSize, TextColour::secondary)),
      title(new ElidedLabel(TextRole::name)),
      problem(new SymbolLabel("exclamationmark.triangle", warningSize, TextColour::warning)),
      sun(new SymbolLabel("sun.max.fill", smallSymbolSize, TextColour::secondary)),
      percentage(new ElidedLabel(TextRole::digits, TextColour::secondary)),
      minus(RepeatingStepButton::makeButton(clock, this)), slider(new LevelSlider),
      plus(RepeatingStepButton::makeButton(clock, this))
{
    setFixedHeight(rowHeight);
    percentage->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    problem->hide();

    auto* header = new QHBoxLayout;
    header->setSpacing(4);
    header->addWidget(symbol);
    header->addSpacing(2);
    header->addWidget(title);
    header->addWidget(problem);
    header->addStretch(1);
    header->addWidget(sun);
    header->addWidget(percentage);

    auto* controls = new QHBoxLayout;
    controls->setSpacing(6);
    controls->addWidget(minus);
    controls->addWidget(slider, 1);
    controls->addWidget(plus);

    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    header->setContentsMargins(0, 0, 0, 0);
    auto* headerLine = new QWidget;
    headerLine->setLayout(header);
    headerLine->setFixedHeight(headerHeight);
    rows->addWidget(headerLine);
    rows->addStretch(1);
    rows->addLayout(controls);
    slider->setFixedHeight(controlsHeight);

    QWidget::setTabOrder(minus, slider);
    QWidget::setTabOrder(slider, plus);
    slider->onChange = [this](double value) {
        if (onChange)
            onChange(value);
    };
}

void BrightnessSlider::show(const BrightnessRow& row)
{
    shown = row;
    const DisplayInfo& display = shown.display;
    symbol->setSymbol(display.isBuiltIn ? "laptopcomputer" : "display");
    title->setText(qString(shown.title.empty() ? display.name : shown.title));
    problem->setVisible(display.error.has_value());
    problem->setToolTip(qString(display.error.value_or("")));
    problem->setAccessibleName(problem->toolTip());
    percentage->setText(qString(percentageText(display)));

    slider->setAccessibleName(qString(display.name + " brightness"));
    slider->setAccessibleDescription(problem->toolTip());
    slider->setEnabled(canBeSet(shown));
    slider->setStep(sliderStep(display));
    slider->setValue(display.brightness.value_or(0.0));
    slider->setValueText(percentage->text());
    updateStepButton(*minus, -1);
    updateStepButton(*plus, 1);
}

void BrightnessSlider::updateStepButton(HoldRepeatButton& button, int direction)
{
    const DisplayInfo& display = shown.display;
    const double value = display.brightness.value_or(0.0);
    const std::string verb = direction < 0 ? "Decrease" : "Increase";
    RepeatingStepButton{
        .symbol = direction < 0 ? "minus" : "plus",
        .label = qString(verb + " " + display.name + " brightness"),
        .help = qString(verb + " by " + stepSizeText(display) + "; hold to repeat"),
        .enabled = canBeSet(shown) && (direction < 0 ? value > 0.0 : value < 1.0),
        .action =
            [this, direction] {
                if (onChange)
                    onChange(step(shown.display, direction));
            },
    }
        .updateButton(button);
}

} // namespace lumenvale
