// SPDX-License-Identifier: MIT
// A choice of one among a few, side by side.
#pragma once

#include <QStringList>
#include <QWidget>
#include <functional>
#include <vector>

class QAbstractButton;

namespace lumenvale {

class SegmentedControl final : public QWidget {
public:
    /// `label` is the accessible name of the whole.
    SegmentedControl(const QString& label, const QStringList& options, QWidget* parent = nullptr);

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
