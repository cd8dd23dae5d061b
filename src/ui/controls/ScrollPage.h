// SPDX-License-Identifier: MIT
// A page that scrolls up and down when it is taller than its place, and its slim scroll bar.
#pragma once

#include <QScrollArea>
#include <QScrollBar>

namespace lumenvale {

/// A rounded handle on nothing.
class ScrollBar final : public QScrollBar {
public:
    ScrollBar();

    QSize sizeHint() const override { return {10, 40}; }

protected:
    void paintEvent(QPaintEvent* event) override;
};

/// It lets its ground show through.
class ScrollPage : public QScrollArea {
public:
    explicit ScrollPage(QWidget* content);
};

} // namespace lumenvale
