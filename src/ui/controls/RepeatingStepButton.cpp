// SPDX-License-Identifier: MIT
#include "ui/controls/RepeatingStepButton.h"

#include "ui/controls/HoldRepeatButton.h"

namespace lumenvale {

HoldRepeatButton* RepeatingStepButton::makeButton(Clock& clock, QWidget* parent)
{
    return new HoldRepeatButton(clock, parent);
}

void RepeatingStepButton::updateButton(HoldRepeatButton& button) const
{
    button.setSymbol(symbol);
    button.setAccessibleName(label);
    button.setToolTip(help);
    button.onStep = action;
    button.setEnabled(enabled);
    if (!enabled)
        button.stopRepeating();
}

} // namespace lumenvale
