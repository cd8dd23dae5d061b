// SPDX-License-Identifier: MIT
#include "platform/linux/displays/LinuxScreenSource.h"

#include "platform/linux/displays/RandrOutputs.h"
#include "platform/linux/displays/WaylandOutputs.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <string_view>
#include <utility>

namespace lumenvale {

LinuxScreenSource::LinuxScreenSource(std::shared_ptr<KernelRecords> records, WindowSystem* windowSystem,
                                     ModeSources modes)
    : records(std::move(records)), windowSystem(windowSystem), modes(std::move(modes))
{
}

std::vector<WindowScreen> LinuxScreenSource::windowScreens() const
{
    return windowSystem ? windowSystem->screens() : std::vector<WindowScreen>();
}

/// The kernel's modes, where the window system does not know all.
KernelModes LinuxScreenSource::kernelModes(const std::vector<Connector>& connectors,
                                           const std::vector<WindowScreen>& known) const
{
    const auto displays = std::ranges::count_if(connectors, &Connector::isDisplay);
    const auto exact =
        std::ranges::count_if(known, [](const WindowScreen& each) { return each.mode.has_value(); });
    if (!modes.kernel || exact >= displays)
        return {};
    std::set<std::string> cards;
    for (const Connector& each : connectors) {
        if (each.isDisplay())
            cards.insert(each.card);
    }
    return modes.kernel(cards);
}

std::vector<Screen> LinuxScreenSource::screens()
{
    const SharedRecords known = records->lastConnectors();
    const std::vector<WindowScreen> outputs = modes.outputs ? modes.outputs() : std::vector<WindowScreen>();
    if (!windowSystem)
        return describeDisplays(known->connectors, outputs, kernelModes(known->connectors, outputs));
    std::vector<WindowScreen> windows = windowScreens();
    for (WindowScreen& each : windows) {
        const auto output = std::ranges::find(outputs, each.name, &WindowScreen::name);
        if (output != outputs.end())
            each.mode = output->mode;
    }
    return joinScreens(known->connectors, windows, kernelModes(known->connectors, windows));
}

bool LinuxScreenSource::isAsleep(std::uint32_t displayID)
{
    const SharedRecords known = records->lastConnectors();
    return std::ranges::any_of(known->connectors, [displayID](const Connector& each) {
        return each.displayID == displayID && each.isDark();
    });
}

std::optional<std::uint32_t> LinuxScreenSource::displayAt(Point point)
{
    const std::vector<WindowScreen> windows = windowScreens();
    const std::vector<Screen> joined = joinScreens(records->lastConnectors()->connectors, windows);
    std::size_t position = 0; // the window system's screens come first, in its order; nameless ones are left out
    for (const WindowScreen& each : windows) {
        if (each.name.empty())
            continue;
        if (Rect{each.x, each.y, each.width, each.height}.contains(point))
            return joined.at(position).displayID;
        ++position;
    }
    return std::nullopt;
}

std::vector<WindowScreen> sessionOutputs()
{
    constexpr std::chrono::milliseconds patience(500); // it answers at once, or hangs
    const auto variable = [](const char* name) {
        const char* const text = std::getenv(name);
        return std::string_view(text ? text : "");
    };
    if (!variable("WAYLAND_DISPLAY").empty())
        return waylandOutputs(patience);
    const std::string_view server = variable("DISPLAY");
    const bool isLocal = server.starts_with(':') || server.starts_with("unix:");
    return isLocal ? randrOutputs() : std::vector<WindowScreen>(); // not those of a machine that shows our windows
}

} // namespace lumenvale
