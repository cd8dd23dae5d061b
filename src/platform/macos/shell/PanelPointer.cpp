// SPDX-License-Identifier: MIT
#include "platform/macos/shell/PanelPointer.h"

#include <QEnterEvent>
#include <QGuiApplication>
#include <QWindow>

namespace lumenvale {

void passPointer(WindowHandle handle, PointerMotion motion, Point inside, Point onScreen)
{
    const QPointF local(inside.x, inside.y);
    const QPointF global(onScreen.x, onScreen.y);
    QEnterEvent enter(local, local, global);
    QMouseEvent move(QEvent::MouseMove, local, local, global, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QEvent leave(QEvent::Leave);
    QEvent& event = motion == PointerMotion::entered ? enter : motion == PointerMotion::moved ? move : leave;
    for (QWindow* const window : QGuiApplication::topLevelWindows()) {
        if (window->isVisible() && window->winId() == handle) {
            QCoreApplication::sendEvent(window, &event);
            return;
        }
    }
}

} // namespace lumenvale
