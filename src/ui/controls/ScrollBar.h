// SPDX-License-Identifier: MIT
// A slim scroll bar: a rounded handle on nothing.
#pragma once

#include <QScrollBar>

namespace lumenvale {

class ScrollBar final : public QScrollBar {
public:
    explicit ScrollBar(QWidget* parent = nullptr);

    QSize sizeHint() const override { return {10, 40}; }

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace lumenvale
