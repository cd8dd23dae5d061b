// SPDX-License-Identifier: MIT
// A page that scrolls up and down when it is taller than its place, and lets its ground show through.
#pragma once

#include "ui/controls/ScrollBar.h"

#include <QScrollArea>

namespace lumenvale {

/// A page narrower than this puts names above what they name, and keeps less room at its sides.
constexpr int narrowPageWidth = 500;

class ScrollPage final : public QScrollArea {
public:
    explicit ScrollPage(QWidget* content)
    {
        setFrameShape(QFrame::NoFrame);
        setWidgetResizable(true);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setFocusPolicy(Qt::NoFocus);
        setVerticalScrollBar(new ScrollBar);
        setWidget(content);
        content->setAutoFillBackground(false);
        viewport()->setAutoFillBackground(false);
    }
};

} // namespace lumenvale
