// SPDX-License-Identifier: MIT
#include "platform/linux/x11/X11FocusFilter.h"

#include <QCoreApplication>
#include <xcb/xcb.h>

namespace lumenvale {

X11FocusFilter::X11FocusFilter() { qApp->installNativeEventFilter(this); }

bool X11FocusFilter::nativeEventFilter(const QByteArray& eventType, void* message, qintptr* /*result*/)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto& event = *static_cast<const xcb_focus_in_event_t*>(message);
    const int type = event.response_type & 0x7F;
    return (type == XCB_FOCUS_IN || type == XCB_FOCUS_OUT) &&
           (event.mode == XCB_NOTIFY_MODE_GRAB || event.mode == XCB_NOTIFY_MODE_UNGRAB);
}

} // namespace lumenvale
