// SPDX-License-Identifier: MIT
// The small wheel of spokes that turns while something is under way whose end is not known.
#pragma once

#include <QBasicTimer>
#include <QProgressBar>

namespace lumenvale {

/// Turns, and wakes the program for that, only while it is on the screen.
class ProgressIndicator final : public QProgressBar {
    Q_OBJECT

public:
    /// `name` tells screen readers, and the pointer, what is under way.
    explicit ProgressIndicator(const QString& name, QWidget* parent = nullptr);

    QSize sizeHint() const override { return {16, 16}; }

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QBasicTimer turning;
    int foremost = 0; ///< the darkest spoke, clockwise from the top
};

} // namespace lumenvale
