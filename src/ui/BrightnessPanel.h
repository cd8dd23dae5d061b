// SPDX-License-Identifier: MIT
// The floating window of the brightness menu. Its flags, level and place are its creator's, and so is Escape; Tab
// and Shift-Tab walk through its controls, and every other key is passed on.
#pragma once

#include <QWidget>

namespace lumenvale {

class BrightnessPanel final : public QWidget {
public:
    using QWidget::QWidget;

protected:
    bool focusNextPrevChild(bool next) override;
    void showEvent(QShowEvent* event) override;
};

} // namespace lumenvale
