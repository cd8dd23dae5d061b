// SPDX-License-Identifier: MIT
// A switch: a check box by nature, a sliding knob by looks.
#pragma once

#include <QCheckBox>

namespace lumenvale {

class ToggleSwitch final : public QCheckBox {
public:
    /// `label` is the accessible name.
    explicit ToggleSwitch(const QString& label, QWidget* parent = nullptr);

    QSize sizeHint() const override { return {36, 22}; }
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool hitButton(const QPoint& point) const override { return rect().contains(point); }
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
};

} // namespace lumenvale
