// SPDX-License-Identifier: MIT
#include "platform/linux/displays/LinuxScreenSource.h"

#include <algorithm>
#include <utility>

namespace lumenvale {

LinuxScreenSource::LinuxScreenSource(std::shared_ptr<KernelRecords> records, WindowSystem* windowSystem)
    : records(std::move(records)), windowSystem(windowSystem)
{
}

std::vector<WindowScreen> LinuxScreenSource::windowScreens() const
{
    return windowSystem ? windowSystem->screens() : std::vector<WindowScreen>();
}

std::vector<Screen> LinuxScreenSource::screens()
{
    return joinScreens(records->last()->connectors, windowScreens());
}

bool LinuxScreenSource::isAsleep(std::uint32_t displayID)
{
    const SharedRecords known = records->last();
    return std::ranges::any_of(known->connectors, [displayID](const Connector& each) {
        return each.displayID == displayID && each.isDark();
    });
}

std::optional<std::uint32_t> LinuxScreenSource::displayAt(Point point)
{
    const std::vector<WindowScreen> windows = windowScreens();
    const std::vector<Screen> joined = joinScreens(records->last()->connectors, windows);
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
