// SPDX-License-Identifier: MIT
// What a step button shows and does, as a value; makes the button and keeps it in step.
#pragma once

#include "base/Clock.h"

#include <QString>
#include <functional>

class QWidget;

namespace lumenvale {

class HoldRepeatButton;

struct RepeatingStepButton {
    QString symbol;
    QString label; ///< the accessible name
    QString help;
    bool enabled = false;
    std::function<void()> action; ///< one step

    static HoldRepeatButton* makeButton(Clock& clock, QWidget* parent);
    void updateButton(HoldRepeatButton& button) const;
};

} // namespace lumenvale
