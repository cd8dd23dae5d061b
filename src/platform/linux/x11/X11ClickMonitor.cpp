// SPDX-License-Identifier: MIT
#include "platform/linux/x11/X11ClickMonitor.h"

#include <utility>
#include <xcb/xinput.h>

namespace lumenvale {

namespace {

constexpr std::uint32_t lastClickButton = 3; ///< those above are the wheel's

bool isClick(const xcb_generic_event_t& event, std::uint8_t extension)
{
    if ((event.response_type & 0x7F) != XCB_GE_GENERIC)
        return false;
    const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
    if (generic.extension != extension)
        return false;
    if (generic.event_type == XCB_INPUT_RAW_TOUCH_BEGIN)
        return true;
    return generic.event_type == XCB_INPUT_RAW_BUTTON_PRESS &&
           reinterpret_cast<const xcb_input_raw_button_press_event_t&>(event).detail <= lastClickButton;
}

} // namespace

X11ClickMonitor::X11ClickMonitor(std::function<void()> pressed)
    : pressed(std::move(pressed)), server(xcb_connect(nullptr, nullptr))
{
    if (xcb_connection_has_error(server.get()) || !select())
        return;
    notifier = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(server.get()), QSocketNotifier::Read);
    QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(), [this] { readEvents(); });
}

bool X11ClickMonitor::select()
{
    const auto* extension = xcb_get_extension_data(server.get(), &xcb_input_id);
    if (!extension || !extension->present)
        return false;
    const auto asked = xcb_input_xi_query_version(server.get(), 2, 2); // 2.1 reports presses during grabs too
    const auto version = owned(xcb_input_xi_query_version_reply(server.get(), asked, nullptr));
    if (!version || version->major_version < 2)
        return false;
    const struct {
        xcb_input_event_mask_t header;
        std::uint32_t bits;
    } mask = {{XCB_INPUT_DEVICE_ALL_MASTER, 1},
              XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_TOUCH_BEGIN};
    const auto roots = xcb_setup_roots_iterator(xcb_get_setup(server.get()));
    xcb_input_xi_select_events(server.get(), roots.data->root, 1, &mask.header);
    return xcb_flush(server.get()) > 0;
}

void X11ClickMonitor::readEvents()
{
    const std::uint8_t extension = xcb_get_extension_data(server.get(), &xcb_input_id)->major_opcode;
    bool wasClicked = false;
    while (const auto event = owned(xcb_poll_for_event(server.get())))
        wasClicked = wasClicked || isClick(*event, extension);
    if (xcb_connection_has_error(server.get()))
        notifier->setEnabled(false);
    if (!wasClicked)
        return;
    const auto call = pressed; // it may end this monitor
    call();
}

} // namespace lumenvale
