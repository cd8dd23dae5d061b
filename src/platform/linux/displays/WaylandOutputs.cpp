// SPDX-License-Identifier: MIT
#include "platform/linux/displays/WaylandOutputs.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <deque>
#include <memory>
#include <poll.h>
#include <string_view>
#include <utility>
#include <wayland-client.h>
#include <xdg-output-client.h>

namespace lumenvale {

namespace {

using Time = std::chrono::steady_clock;

template <auto destroy>
struct Destroy {
    template <typename Proxy>
    void operator()(Proxy* proxy) const
    {
        destroy(proxy);
    }
};
using Connection = std::unique_ptr<wl_display, Destroy<wl_display_disconnect>>;
using Callback = std::unique_ptr<wl_callback, Destroy<wl_callback_destroy>>;
using Registry = std::unique_ptr<wl_registry, Destroy<wl_registry_destroy>>;
using LogicalOutputs = std::unique_ptr<zxdg_output_manager_v1, Destroy<zxdg_output_manager_v1_destroy>>;

struct Output {
    std::unique_ptr<wl_output, Destroy<wl_output_destroy>> proxy;
    std::unique_ptr<zxdg_output_v1, Destroy<zxdg_output_v1_destroy>> logical;
    WindowScreen screen;
    std::int32_t transform = WL_OUTPUT_TRANSFORM_NORMAL;
    std::int32_t scale = 1;
};

Output& outputOf(void* data) { return *static_cast<Output*>(data); }

constexpr wl_output_listener outputListener = {
    .geometry =
        [](void* data, wl_output*, std::int32_t x, std::int32_t y, std::int32_t, std::int32_t, std::int32_t,
           const char*, const char* model, std::int32_t transform) {
            Output& output = outputOf(data);
            output.screen.x = x;
            output.screen.y = y;
            output.screen.model = model;
            output.transform = transform;
        },
    .mode =
        [](void* data, wl_output*, std::uint32_t flags, std::int32_t width, std::int32_t height,
           std::int32_t milliHertz) {
            if ((flags & WL_OUTPUT_MODE_CURRENT) != 0)
                outputOf(data).screen.mode = ScreenMode{width, height, milliHertz / 1000.0};
        },
    .done = [](void*, wl_output*) {},
    .scale = [](void* data, wl_output*, std::int32_t scale) { outputOf(data).scale = std::max(scale, 1); },
    .name = [](void* data, wl_output*, const char* name) { outputOf(data).screen.name = name; },
    .description = [](void*, wl_output*, const char*) {},
};

constexpr zxdg_output_v1_listener logicalListener = {
    .logical_position =
        [](void* data, zxdg_output_v1*, std::int32_t x, std::int32_t y) {
            outputOf(data).screen.x = x;
            outputOf(data).screen.y = y;
        },
    .logical_size =
        [](void* data, zxdg_output_v1*, std::int32_t width, std::int32_t height) {
            outputOf(data).screen.width = width;
            outputOf(data).screen.height = height;
        },
    .done = [](void*, zxdg_output_v1*) {},
    .name = [](void* data, zxdg_output_v1*, const char* name) { outputOf(data).screen.name = name; },
    .description = [](void*, zxdg_output_v1*, const char*) {},
};

/// What the compositor offers.
struct Globals {
    std::deque<Output> outputs; ///< which the listeners point to
    LogicalOutputs manager;     ///< of the outputs' places in points; none with old compositors
};

template <typename Proxy>
Proxy* bindGlobal(wl_registry* registry, std::uint32_t name, const wl_interface& interface, std::uint32_t version,
                  std::uint32_t newest)
{
    return static_cast<Proxy*>(wl_registry_bind(registry, name, &interface, std::min(version, newest)));
}

constexpr wl_registry_listener registryListener = {
    .global =
        [](void* data, wl_registry* registry, std::uint32_t name, const char* interface, std::uint32_t version) {
            Globals& globals = *static_cast<Globals*>(data);
            if (std::string_view(interface) == wl_output_interface.name) {
                Output& output = globals.outputs.emplace_back();
                output.proxy.reset(bindGlobal<wl_output>(registry, name, wl_output_interface, version, 4));
                wl_output_add_listener(output.proxy.get(), &outputListener, &output);
            } else if (std::string_view(interface) == zxdg_output_manager_v1_interface.name) {
                globals.manager.reset(bindGlobal<zxdg_output_manager_v1>(
                    registry, name, zxdg_output_manager_v1_interface, version, 3));
            }
        },
    .global_remove = [](void*, wl_registry*, std::uint32_t) {},
};

constexpr wl_callback_listener doneListener = {
    .done = [](void* data, wl_callback*, std::uint32_t) { *static_cast<bool*>(data) = true; },
};

/// Hands what the compositor sends to the listeners. False when nothing came until `deadline`.
bool receive(wl_display* display, Time::time_point deadline)
{
    if (wl_display_prepare_read(display) != 0) // some have come already
        return wl_display_dispatch_pending(display) >= 0;
    wl_display_flush(display);
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Time::now());
    pollfd state = {wl_display_get_fd(display), POLLIN, 0};
    if (left.count() <= 0 || ::poll(&state, 1, static_cast<int>(left.count())) <= 0) {
        wl_display_cancel_read(display);
        return false;
    }
    return wl_display_read_events(display) == 0 && wl_display_dispatch_pending(display) >= 0;
}

/// All requests so far are answered. Unlike the library's own round trip it ends when the compositor hangs.
bool roundTrip(wl_display* display, Time::time_point deadline)
{
    bool isDone = false;
    const Callback callback(wl_display_sync(display));
    wl_callback_add_listener(callback.get(), &doneListener, &isDone);
    while (!isDone) {
        if (!receive(display, deadline))
            return false;
    }
    return true;
}

WindowScreen finished(const Output& output)
{
    WindowScreen screen = output.screen;
    if (!screen.mode)
        return screen;
    const bool isTurned = output.transform % 2 != 0; // by 90 or 270 degrees
    if (isTurned)
        std::swap(screen.mode->pixelWidth, screen.mode->pixelHeight);
    screen.refreshRate = screen.mode->refreshRate;
    if (!output.logical) { // whole scales only
        screen.width = static_cast<double>(screen.mode->pixelWidth) / output.scale;
        screen.height = static_cast<double>(screen.mode->pixelHeight) / output.scale;
    }
    return screen;
}

} // namespace

std::vector<WindowScreen> waylandOutputs(std::chrono::milliseconds patience)
{
    const Time::time_point deadline = Time::now() + patience;
    const Connection connection(wl_display_connect(nullptr));
    if (!connection)
        return {};
    Globals globals;
    const Registry registry(wl_display_get_registry(connection.get()));
    wl_registry_add_listener(registry.get(), &registryListener, &globals);
    if (!roundTrip(connection.get(), deadline))
        return {};
    for (Output& each : globals.outputs) {
        if (!globals.manager)
            break;
        each.logical.reset(zxdg_output_manager_v1_get_xdg_output(globals.manager.get(), each.proxy.get()));
        zxdg_output_v1_add_listener(each.logical.get(), &logicalListener, &each);
    }
    if (!roundTrip(connection.get(), deadline))
        return {};
    std::vector<WindowScreen> screens;
    for (const Output& each : globals.outputs)
        screens.push_back(finished(each));
    if (!screens.empty())
        screens.front().isPrimary = true; // the protocol names none; Qt takes the first, too
    return screens;
}

bool isWaylandSession()
{
    const char* const name = std::getenv("WAYLAND_DISPLAY");
    const char* const type = std::getenv("XDG_SESSION_TYPE");
    return (name && *name != '\0') || (type && std::string_view(type) == "wayland");
}

} // namespace lumenvale
