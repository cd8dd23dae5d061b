// SPDX-License-Identifier: MIT
#include "platform/linux/x11/X11TrayWatch.h"

#include "platform/linux/x11/X11.h"

#include <QCoreApplication>
#include <utility>
#include <xcb/xcb.h>

namespace lumenvale {

X11TrayWatch::X11TrayWatch(std::function<void()> changed) : changed(std::move(changed)), tray(x11::trayWindow())
{
    qApp->installNativeEventFilter(this);
}

bool X11TrayWatch::nativeEventFilter(const QByteArray& eventType, void* message, qintptr* /*result*/)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto& event = *static_cast<const xcb_destroy_notify_event_t*>(message);
    const bool isEnd = (event.response_type & 0x7F) == XCB_DESTROY_NOTIFY && event.window == tray;
    if (!isEnd && !x11::announcesManager(message))
        return false;
    const xcb_window_t now = x11::trayWindow();
    if (std::exchange(tray, now) != now)
        changed();
    return false;
}

} // namespace lumenvale
