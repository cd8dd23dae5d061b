// SPDX-License-Identifier: MIT
// Finds the parts of a window as a screen reader does, by their accessible names, and works them as a user does.
#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>
#include <QWidget>
#include <gtest/gtest.h>

namespace lumenvale {

/// Delivers what is queued on the loop, redraws included.
inline void turnLoop()
{
    for (int i = 0; i < 10; ++i)
        QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

/// The visible widget of this type and name; null when there is none.
template <typename Widget = QWidget>
Widget* named(const QWidget& window, const QString& name)
{
    for (QWidget* each : window.findChildren<QWidget*>()) {
        auto* typed = dynamic_cast<Widget*>(each); // not every type has Qt's own type information
        if (typed && each->accessibleName() == name && each->isVisibleTo(&window))
            return typed;
    }
    return nullptr;
}

/// Presses the button of this name or text; fails where there is none that can be pressed.
inline void click(const QWidget& window, const QString& name)
{
    for (QAbstractButton* each : window.findChildren<QAbstractButton*>()) {
        if ((each->accessibleName().isEmpty() ? each->text() : each->accessibleName()) != name ||
            !each->isVisibleTo(&window) || !each->isEnabled())
            continue;
        each->click();
        return turnLoop();
    }
    FAIL() << name.toStdString();
}

/// True when some visible label of the window shows exactly this text.
template <typename Label>
bool shows(const QWidget& window, const QString& text)
{
    for (const QWidget* each : window.findChildren<QWidget*>()) {
        const auto* label = dynamic_cast<const Label*>(each);
        if (label && label->text() == text && each->isVisibleTo(&window))
            return true;
    }
    return false;
}

inline void pressKey(QWidget& widget, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QKeyEvent press(QEvent::KeyPress, key, modifiers);
    QApplication::sendEvent(&widget, &press);
    QKeyEvent release(QEvent::KeyRelease, key, modifiers);
    QApplication::sendEvent(&widget, &release);
    turnLoop();
}

/// A mouse event of the left button at a point of the widget; not one that turns the loop.
inline void sendMouse(QWidget& widget, QEvent::Type type, QPointF point)
{
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, point, widget.mapToGlobal(point), button, held, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

/// Turns the wheel by eighths of a degree, away from the user; true when the widget took it.
inline bool turnWheel(QWidget& widget, int delta, Qt::ScrollPhase phase = Qt::NoScrollPhase)
{
    QWheelEvent event(QPointF(5, 5), widget.mapToGlobal(QPointF(5, 5)), {}, {0, delta}, Qt::NoButton,
                      Qt::NoModifier, phase, false);
    event.ignore();
    QApplication::sendEvent(&widget, &event);
    return event.isAccepted();
}

} // namespace lumenvale
