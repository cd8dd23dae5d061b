// SPDX-License-Identifier: MIT
// The base of the buttons that draw themselves: reached by Tab, pressed by Space and Return, brightened below the
// pointer, and aware of how they came by the focus.
#pragma once

#include <QAbstractButton>

namespace lumenvale {

class PaintedButton : public QAbstractButton {
public:
    explicit PaintedButton(QWidget* parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
};

} // namespace lumenvale
