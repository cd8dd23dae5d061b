// SPDX-License-Identifier: MIT
// Finds the parts of a window as a screen reader does, by their accessible names, and works them as a user does.
#pragma once

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <QWheelEvent>
#include <gtest/gtest.h>

namespace lumenvale {

/// Delivers what is queued on the loop, redraws included.
inline void turnLoop()
{
    for (int i = 0; i < 10; ++i)
        QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

/// What a screen reader says of a widget.
inline QString spoken(QWidget& widget, QAccessible::Text kind = QAccessible::Name)
{
    return QAccessible::queryAccessibleInterface(&widget)->text(kind);
}

/// The visible widget of this type and name; null when there is none.
template <typename Widget = QWidget>
Widget* named(const QWidget& window, const QString& name)
{
    for (QWidget* each : window.findChildren<QWidget*>()) {
        auto* typed = dynamic_cast<Widget*>(each); // not every type has Qt's own type information
        if (typed && each->isVisibleTo(&window) && spoken(*each) == name)
            return typed;
    }
    return nullptr;
}

/// True when some visible part of the window reads exactly so.
template <typename Widget = QWidget>
bool shows(const QWidget& window, const QString& text)
{
    return named<Widget>(window, text) != nullptr;
}

/// Presses the button of this name; fails where there is none that can be pressed.
inline void click(const QWidget& window, const QString& name)
{
    auto* button = named<QAbstractButton>(window, name);
    ASSERT_TRUE(button && button->isEnabled()) << name.toStdString();
    button->click();
    turnLoop();
}

inline void pressKey(QWidget& widget, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QKeyEvent press(QEvent::KeyPress, key, modifiers);
    QKeyEvent release(QEvent::KeyRelease, key, modifiers);
    QApplication::sendEvent(&widget, &press);
    QApplication::sendEvent(&widget, &release);
    turnLoop();
}

/// Turns the wheel by eighths of a degree, away from the user.
inline void turnWheel(QWidget& widget, int delta, Qt::ScrollPhase phase = Qt::NoScrollPhase)
{
    QWheelEvent event({5, 5}, {5, 5}, {}, {0, delta}, {}, {}, phase, false);
    QApplication::sendEvent(&widget, &event);
}

} // namespace lumenvale
