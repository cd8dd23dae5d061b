// SPDX-License-Identifier: MIT
// Finds the parts of a window as a screen reader does, by their accessible names, and works them as a user does.
#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
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
    for (Widget* each : window.findChildren<Widget*>()) {
        if (each->accessibleName() == name && each->isVisibleTo(&window))
            return each;
    }
    return nullptr;
}

/// Presses the button of this name; fails where there is none that can be pressed.
inline void click(const QWidget& window, const QString& name)
{
    auto* button = named<QAbstractButton>(window, name);
    ASSERT_TRUE(button && button->isEnabled()) << name.toStdString();
    button->click();
    turnLoop();
}

/// True when some visible label of the window shows exactly this text.
template <typename Label>
bool shows(const QWidget& window, const QString& text)
{
    for (const Label* each : window.findChildren<Label*>()) {
        if (each->text() == text && each->isVisibleTo(&window))
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

} // namespace lumenvale
