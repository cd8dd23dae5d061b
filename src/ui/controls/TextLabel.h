// SPDX-License-Identifier: MIT
// A label whose text wraps and can be selected, in one of the theme's colours.
#pragma once

#include "ui/look/Labels.h"

#include <QLabel>

namespace lumenvale {

class TextLabel final : public QLabel {
    Q_OBJECT

public:
    explicit TextLabel(TextRole role, TextColour colour = TextColour::primary, QWidget* parent = nullptr);

    void setColour(TextColour next);

protected:
    void changeEvent(QEvent* event) override;

private:
    void applyColour();

    TextColour colour;
};

} // namespace lumenvale
