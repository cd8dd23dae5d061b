// SPDX-License-Identifier: MIT
#include "platform/linux/displays/LinuxScreenSource.h"

#include <utility>

namespace lumenvale {

LinuxScreenSource::LinuxScreenSource(SystemPaths paths, WindowSystem* windowSystem)
    : paths(std::move(paths)), windowSystem(windowSystem)
{
}

std::vector<WindowScreen> LinuxScreenSource::windowScreens() const
{
    return windowSystem ? windowSystem->screens() : std::vector<WindowScreen>();
}

std::vector<Screen> LinuxScreenSource::screens() { return joinScreens(readConnectors(paths), windowScreens()); }

bool LinuxScreenSource::isAsleep(std::uint32_t displayID) { return isDark(paths, displayID); }

std::optional<std::uint32_t> LinuxScreenSource::displayAt(Point point)
{
    const std::vector<WindowScreen> windows = windowScreens();
    const std::vector<Screen> joined = joinScreens(readConnectors(paths), windows);
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

} // namespace lumenvale
