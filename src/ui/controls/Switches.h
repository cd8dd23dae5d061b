// SPDX-License-Identifier: MIT
// The controls of the General page: a switch, and a choice of one among a few.
#pragma once

#include <QCheckBox>
#include <QStringList>
#include <QWidget>
#include <functional>
#include <vector>

class QAbstractButton;

namespace lumenvale {

/// A check box by nature, a sliding knob by looks.
class ToggleSwitch final : public QCheckBox {
public:
    /// `label` is the accessible name.
    explicit ToggleSwitch(const QString& label);

    QSize sizeHint() const override { return {36, 22}; }
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool hitButton(const QPoint& point) const override { return rect().contains(point); }
    void paintEvent(QPaintEvent* event) override;
};

/// Options side by side.
class SegmentedControl final : public QWidget {
public:
    /// `label` is the accessible name of the whole.
    SegmentedControl(const QString& label, const QStringList& options);

    /// Shows a choice without calling `onChoice`.
    void setChoice(int index);

    /// The user chose another option.
    std::function<void(int)> onChoice;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::vector<QAbstractButton*> segments;
};

} // namespace lumenvale
