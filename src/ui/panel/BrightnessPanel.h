// SPDX-License-Identifier: MIT
// The floating window of the brightness menu. Its flags, level and place are its creator's, and so is Escape; Tab
// and Shift-Tab walk through its controls, and every other key is passed on.
#pragma once

#include <QWidget>
#include <functional>

namespace lumenvale {

class BrightnessPanel final : public QWidget {
public:
    using QWidget::QWidget;

    /// The system's window was made, or made anew: what was set on it natively is to be set again.
    std::function<void()> windowMade;

protected:
    bool event(QEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void showEvent(QShowEvent* event) override;
};

} // namespace lumenvale
