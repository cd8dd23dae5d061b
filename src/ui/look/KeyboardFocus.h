// SPDX-License-Identifier: MIT
// The keyboard's way through a window: the order of its controls, and the ring around the one that has the focus.
#pragma once

#include <QRectF>

class QPainter;
class QWidget;

namespace lumenvale {

struct Theme;

/// Makes Tab go through all controls below `root` as they stand in its layouts. To be called after controls came
/// or moved: Qt appends new ones at the end.
void orderTabs(QWidget& root);

/// Gives the focus to `to` when `from`, or what is in it, has it. To be called before `from` is disabled or
/// hidden: Qt gives the focus to the next control, and a key pressed again would act there.
void passFocus(const QWidget& from, QWidget& to);

/// Remembers from now on how widgets come by the focus. Controls call it when they are made.
void trackFocus();

/// True when the widget has the focus and got it by the keyboard, so that a ring helps; a click needs none, and
/// ends it.
bool showsFocus(const QWidget& widget);

/// The ring around what has the keyboard focus. `box` is the control's; the ring lies just inside.
void drawFocusRing(QPainter& painter, const QRectF& box, double radius, const Theme& theme);

} // namespace lumenvale
