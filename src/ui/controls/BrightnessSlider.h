// SPDX-License-Identifier: MIT
// One display's row: symbol, name, problem and percentage above, step buttons and slider below, and under them
// what keeps the display from being set, where that is known. Kept as long as its display is shown, and updated in
// place, so that a slider under the pointer is never replaced.
#pragma once

#include "base/Clock.h"
#include "displays/DisplayInfo.h"

#include <QWidget>
#include <functional>
#include <string>

namespace lumenvale {

class ElidedLabel;
class HoldRepeatButton;
class LevelSlider;
class NumberLabel;
class SymbolLabel;
class TextLabel;

/// What a row shows.
struct BrightnessRow {
    DisplayInfo display;
    std::string title;     ///< shown instead of the display's name, unless empty
    bool disabled = false; ///< for a moment, for a reason that is not the display's

    bool operator==(const BrightnessRow& other) const = default;
};

class BrightnessSlider final : public QWidget {
public:
    /// `clock` must outlive the row.
    explicit BrightnessSlider(Clock& clock);

    /// The user asks for a brightness (0.0 to 1.0). The row shows it already; an owner that does not grant it
    /// calls `show`.
    std::function<void(double)> onChange;

    void show(const BrightnessRow& row);

    /// How much taller it is than `rowHeight`: by what keeps the display from being set.
    int extraHeight() const { return minimumHeight() - rowHeight; }

    static constexpr int rowHeight = 50;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void fitHeight();
    void request(double value);
    void showBrightness();
    void updateStepButton(HoldRepeatButton& button, int direction);

    BrightnessRow shown;
    bool isShowing = false;
    bool returnsFocus = false; ///< the slider had it when the row was disabled for a moment
    SymbolLabel* symbol;
    ElidedLabel* title;
    SymbolLabel* problem;
    NumberLabel* percentage;
    HoldRepeatButton* minus;
    LevelSlider* slider;
    HoldRepeatButton* plus;
    TextLabel* obstacle;
};

} // namespace lumenvale
