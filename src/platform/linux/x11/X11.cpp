// SPDX-License-Identifier: MIT
#include "platform/linux/x11/X11.h"

#include "platform/linux/x11/Xcb.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <xcb/shape.h>

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

xcb_window_t root(xcb_connection_t* server) { return xcb_setup_roots_iterator(xcb_get_setup(server)).data->root; }

/// The root of the screen that the window is on.
xcb_window_t rootOf(xcb_connection_t* server, xcb_window_t window)
{
    const auto reply = owned(xcb_query_tree_reply(server, xcb_query_tree(server, window), nullptr));
    return reply ? reply->root : xcb_window_t(XCB_WINDOW_NONE);
}

/// The list that a property of the window holds; empty without one.
std::vector<std::uint32_t> listOf(xcb_connection_t* server, xcb_window_t window, const char* property)
{
    constexpr std::uint32_t longest = 1024;
    const auto cookie = xcb_get_property(server, false, window, atom(server, property), XCB_ATOM_ANY, 0, longest);
    const auto reply = owned(xcb_get_property_reply(server, cookie, nullptr));
    if (!reply || reply->format != 32)
        return {};
    const auto* const values = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {values, values + reply->value_len};
}

/// The window of the program that does what this selection of the first screen stands for.
xcb_window_t ownerOf(xcb_connection_t* server, const char* selection)
{
    const auto cookie = xcb_get_selection_owner(server, atom(server, selection));
    const auto reply = owned(xcb_get_selection_owner_reply(server, cookie, nullptr));
    return reply ? reply->owner : xcb_window_t(XCB_WINDOW_NONE);
}

bool isBar(xcb_connection_t* server, xcb_window_t window)
{
    return std::ranges::count(listOf(server, window, "_NET_WM_WINDOW_TYPE"),
                              atom(server, "_NET_WM_WINDOW_TYPE_DOCK")) > 0;
}

/// The bar that holds this point of the root window. Some window managers put bars into frames of their own.
std::optional<xcb_window_t> barAt(xcb_connection_t* server, xcb_window_t root, std::int16_t x, std::int16_t y)
{
    for (xcb_window_t window = root; window != XCB_WINDOW_NONE;) {
        if (isBar(server, window))
            return window;
        const auto reply = owned(xcb_translate_coordinates_reply(
            server, xcb_translate_coordinates(server, root, window, x, y), nullptr));
        window = reply ? reply->child : xcb_window_t(XCB_WINDOW_NONE);
    }
    return std::nullopt;
}

} // namespace

bool hasCompositor()
{
    xcb_connection_t* const server = connection();
    return server && ownerOf(server, "_NET_WM_CM_S0") != XCB_WINDOW_NONE; // Extended Window Manager Hints
}

std::uint32_t trayWindow()
{
    xcb_connection_t* const server = connection();
    const xcb_window_t tray = server ? ownerOf(server, "_NET_SYSTEM_TRAY_S0") : 0; // System Tray Protocol
    const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;                    // which Qt selects too
    if (tray == XCB_WINDOW_NONE)
        return tray;
    xcb_change_window_attributes(server, tray, XCB_CW_EVENT_MASK, &mask);
    return ownerOf(server, "_NET_SYSTEM_TRAY_S0"); // its end may have come before the selection of events
}

bool announcesManager(const void* event)
{
    // Inter-Client Communication Conventions Manual, "Manager Selections": sent to the root window, of which Qt
    // hears such messages.
    static const xcb_atom_t manager = atom(connection(), "MANAGER");
    const auto& message = *static_cast<const xcb_client_message_event_t*>(event);
    return (message.response_type & 0x7F) == XCB_CLIENT_MESSAGE && message.type == manager;
}

void setClass(WindowHandle window, const std::string& identifier)
{
    xcb_connection_t* const server = connection();
    if (!server)
        return;
    // Inter-Client Communication Conventions Manual, WM_CLASS: instance and class, each with its zero.
    const std::string value = identifier + '\0' + identifier + '\0';
    xcb_change_property(server, XCB_PROP_MODE_REPLACE, xcb_window_t(window), XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
                        std::uint32_t(value.size()), value.data());
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

void showOnEveryDesktop(WindowHandle window)
{
    xcb_connection_t* const server = connection();
    if (!server)
        return;
    constexpr std::uint32_t everyDesktop = 0xFFFFFFFF; // Extended Window Manager Hints, "_NET_WM_DESKTOP"
    xcb_change_property(server, XCB_PROP_MODE_REPLACE, xcb_window_t(window), atom(server, "_NET_WM_DESKTOP"),
                        XCB_ATOM_CARDINAL, 32, 1, &everyDesktop);
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

std::vector<std::uint32_t> roundedRegion(const QRect& box, int radius)
{
    radius = std::clamp(radius, 0, std::min(box.width(), box.height()) / 2);
    std::vector<std::uint32_t> region;
    const auto addRow = [&](int y, int rows, int inset) {
        for (const int value : {box.x() + inset, box.y() + y, box.width() - 2 * inset, rows})
            region.push_back(std::uint32_t(value));
    };
    const auto insetOf = [radius](int row) { // where the circle cuts the middle of this row
        const double distance = radius - row - 0.5;
        return int(std::ceil(radius - std::sqrt(radius * radius - distance * distance)));
    };
    for (int row = 0; row < radius; ++row)
        addRow(row, 1, insetOf(row));
    if (box.height() > 2 * radius)
        addRow(radius, box.height() - 2 * radius, 0);
    for (int row = radius - 1; row >= 0; --row)
        addRow(box.height() - 1 - row, 1, insetOf(row));
    return region;
}

bool doesBlur()
{
    xcb_connection_t* const server = connection();
    if (!server)
        return false;
    // KWin has this property on the root window while its effect is loaded. No other compositor reads it.
    const auto list = owned(xcb_list_properties_reply(server, xcb_list_properties(server, root(server)), nullptr));
    const auto* const names = list ? xcb_list_properties_atoms(list.get()) : nullptr;
    return names && std::count(names, names + xcb_list_properties_atoms_length(list.get()),
                               atom(server, "_KDE_NET_WM_BLUR_BEHIND_REGION")) > 0;
}

bool knowsFrameExtents()
{
    xcb_connection_t* const server = connection();
    return server && std::ranges::count(listOf(server, root(server), "_NET_SUPPORTED"),
                                        atom(server, "_GTK_FRAME_EXTENTS")) > 0;
}

void setFrameExtents(WindowHandle window, const QRect& whole, const QRect& content)
{
    xcb_connection_t* const server = connection();
    if (!server)
        return;
    std::array<std::uint32_t, 4> extents = {};
    std::ranges::copy(std::array{content.left() - whole.left(), whole.right() - content.right(),
                                 content.top() - whole.top(), whole.bottom() - content.bottom()},
                      extents.begin());
    xcb_change_property(server, XCB_PROP_MODE_REPLACE, xcb_window_t(window), atom(server, "_GTK_FRAME_EXTENTS"),
                        XCB_ATOM_CARDINAL, 32, extents.size(), extents.data());
}

void setInputRegion(WindowHandle window, const QRect& content)
{
    xcb_connection_t* const server = connection();
    const xcb_query_extension_reply_t* const shape =
        server ? xcb_get_extension_data(server, &xcb_shape_id) : nullptr;
    if (!shape || !shape->present) // a request to a missing extension would end the connection
        return;
    const xcb_rectangle_t clickable = {std::int16_t(content.x()), std::int16_t(content.y()),
                                       std::uint16_t(content.width()), std::uint16_t(content.height())};
    xcb_shape_rectangles(server, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED,
                         xcb_window_t(window), 0, 0, 1, &clickable);
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

std::optional<Rect> pointedPlaceOnBar()
{
    xcb_connection_t* const server = connection();
    if (!server)
        return std::nullopt;
    const xcb_window_t whole = root(server);
    const auto pointer = owned(xcb_query_pointer_reply(server, xcb_query_pointer(server, whole), nullptr));
    const auto bar =
        pointer ? barAt(server, whole, pointer->root_x, pointer->root_y) : std::optional<xcb_window_t>();
    if (!bar)
        return std::nullopt;
    const auto size = owned(xcb_get_geometry_reply(server, xcb_get_geometry(server, *bar), nullptr));
    const auto place = owned(
        xcb_translate_coordinates_reply(server, xcb_translate_coordinates(server, *bar, whole, 0, 0), nullptr));
    if (!size || !place)
        return std::nullopt;
    const Point at = logicalPoint(pointer->root_x, pointer->root_y);
    const Point begin = logicalPoint(place->dst_x, place->dst_y);
    const Point end = logicalPoint(place->dst_x + size->width - 1, place->dst_y + size->height - 1);
    const double width = end.x - begin.x + 1;
    const double height = end.y - begin.y + 1;
    return width >= height ? Rect{at.x, begin.y, 0, height} : Rect{begin.x, at.y, width, 0};
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
