// SPDX-License-Identifier: MIT
#include "platform/linux/x11/X11.h"

#include "platform/linux/x11/Xcb.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <cmath>
#include <cstring>

namespace lumenvale::x11 {

namespace {

xcb_connection_t* connection()
{
    const auto* native = qApp->nativeInterface<QNativeInterface::QX11Application>();
    return native ? native->connection() : nullptr;
}

xcb_atom_t atom(xcb_connection_t* server, const char* name)
{
    const auto cookie = xcb_intern_atom(server, false, std::uint16_t(std::strlen(name)), name);
    const auto reply = owned(xcb_intern_atom_reply(server, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

/// The root of the screen that the window is on.
xcb_window_t rootOf(xcb_connection_t* server, xcb_window_t window)
{
    const auto reply = owned(xcb_query_tree_reply(server, xcb_query_tree(server, window), nullptr));
    return reply ? reply->root : xcb_window_t(XCB_WINDOW_NONE);
}

} // namespace

bool hasCompositor()
{
    xcb_connection_t* const server = connection();
    if (!server)
        return false;
    // Extended Window Manager Hints, "_NET_WM_CM_Sn": the manager of screen n owns this selection.
    const auto cookie = xcb_get_selection_owner(server, atom(server, "_NET_WM_CM_S0"));
    const auto reply = owned(xcb_get_selection_owner_reply(server, cookie, nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

void skipTaskbar(WindowHandle window)
{
    xcb_connection_t* const server = connection();
    if (!server)
        return;
    const xcb_atom_t states[] = {atom(server, "_NET_WM_STATE_SKIP_TASKBAR"),
                                 atom(server, "_NET_WM_STATE_SKIP_PAGER")};
    // Qt keeps states that it does not know when it adds its own.
    xcb_change_property(server, XCB_PROP_MODE_APPEND, xcb_window_t(window), atom(server, "_NET_WM_STATE"),
                        XCB_ATOM_ATOM, 32, 2, states);
}

void requestFocus(WindowHandle window)
{
    xcb_connection_t* const server = connection();
    if (!server)
        return;
    constexpr std::uint32_t sourceIsPager = 2; // Extended Window Manager Hints, "Source indication in requests"
    xcb_client_message_event_t message = {};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = xcb_window_t(window);
    message.type = atom(server, "_NET_ACTIVE_WINDOW");
    message.data.data32[0] = sourceIsPager;
    message.data.data32[1] = XCB_CURRENT_TIME;
    xcb_send_event(server, false, rootOf(server, message.window),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(server);
}

std::vector<std::uint32_t> roundedRegion(int width, int height, int radius)
{
    radius = std::clamp(radius, 0, std::min(width, height) / 2);
    std::vector<std::uint32_t> region;
    const auto addRow = [&](int y, int rows, int inset) {
        for (const int value : {inset, y, width - 2 * inset, rows})
            region.push_back(std::uint32_t(value));
    };
    const auto insetOf = [radius](int row) { // where the circle cuts the middle of this row
        const double distance = radius - row - 0.5;
        return int(std::ceil(radius - std::sqrt(radius * radius - distance * distance)));
    };
    for (int row = 0; row < radius; ++row)
        addRow(row, 1, insetOf(row));
    if (height > 2 * radius)
        addRow(radius, height - 2 * radius, 0);
    for (int row = radius - 1; row >= 0; --row)
        addRow(height - 1 - row, 1, insetOf(row));
    return region;
}

void blurBehind(WindowHandle window, const std::vector<std::uint32_t>& region)
{
    xcb_connection_t* const server = connection();
    if (!server)
        return;
    xcb_change_property(server, XCB_PROP_MODE_REPLACE, xcb_window_t(window),
                        atom(server, "_KDE_NET_WM_BLUR_BEHIND_REGION"), XCB_ATOM_CARDINAL, 32,
                        std::uint32_t(region.size()), region.data());
    xcb_flush(server);
}

Point logicalPoint(int x, int y)
{
    for (const QScreen* screen : QGuiApplication::screens()) {
        const double ratio = screen->devicePixelRatio();
        const QRectF native(screen->geometry().topLeft(), QSizeF(screen->size()) * ratio);
        if (native.contains(x, y))
            return {native.x() + (x - native.x()) / ratio, native.y() + (y - native.y()) / ratio};
    }
    return {double(x), double(y)};
}

} // namespace lumenvale::x11
