// SPDX-License-Identifier: MIT
#include "app/desktop/LocalEventMonitor.h"

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>
#include <QWindow>
#include <utility>

namespace lumenvale {

LocalEventMonitor::LocalEventMonitor(Handler called) : handler(std::move(called))
{
    qApp->installEventFilter(this);
}

bool LocalEventMonitor::eventFilter(QObject* watched, QEvent* event)
{
    QWindow* window = nullptr;
    if (watched->isWindowType())
        window = static_cast<QWindow*>(watched);
    else if (event->type() == QEvent::ShortcutOverride && watched->isWidgetType()) // never sent to windows
        window = static_cast<QWidget*>(watched)->window()->windowHandle();
    if (!window)
        return false;
    const Handler call = handler; // it may end this monitor
    return call(window, event);
}

} // namespace lumenvale
