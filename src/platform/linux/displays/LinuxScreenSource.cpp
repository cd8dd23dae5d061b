// SPDX-License-Identifier: MIT
#include "platform/linux/displays/LinuxScreenSource.h"

#include <QGuiApplication>
#include <QScreen>
#include <utility>

namespace lumenvale {

LinuxScreenSource::LinuxScreenSource(SystemPaths paths, WindowScreens windowScreens)
    : paths(std::move(paths)), windowScreens(std::move(windowScreens))
{
}

std::vector<Screen> LinuxScreenSource::screens()
{
    return joinScreens(readConnectors(paths), windowScreens ? windowScreens() : std::vector<WindowScreen>());
}

bool LinuxScreenSource::isAsleep(std::uint32_t displayID) { return isDark(paths, displayID); }

std::optional<std::uint32_t> LinuxScreenSource::displayAt(Point point)
{
    const std::vector<WindowScreen> windows = windowScreens ? windowScreens() : std::vector<WindowScreen>();
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

std::vector<WindowScreen> qtWindowScreens()
{
    std::vector<WindowScreen> result;
    for (const QScreen* screen : QGuiApplication::screens()) {
        WindowScreen window;
        window.name = screen->name().toStdString();
        window.model = screen->model().trimmed().toStdString();
        window.serialNumber = screen->serialNumber().trimmed().toStdString();
        window.x = screen->geometry().x();
        window.y = screen->geometry().y();
        window.width = screen->geometry().width();
        window.height = screen->geometry().height();
        window.pixelRatio = screen->devicePixelRatio();
        window.refreshRate = screen->refreshRate();
        window.isPrimary = screen == QGuiApplication::primaryScreen();
        result.push_back(std::move(window));
    }
    return result;
}

} // namespace lumenvale
