// SPDX-License-Identifier: MIT
#include "platform/linux/LinuxScreenSource.h"

#include <QGuiApplication>
#include <QScreen>
#include <utility>

namespace lumenvale {

LinuxScreenSource::LinuxScreenSource(SystemPaths roots, WindowScreens source)
    : paths(std::move(roots)), windowScreens(std::move(source))
{
}

std::vector<Screen> LinuxScreenSource::screens()
{
    return joinScreens(readConnectors(paths), windowScreens ? windowScreens() : std::vector<WindowScreen>());
}

bool LinuxScreenSource::isAsleep(std::uint32_t displayID)
{
    question.emit();
    const std::optional<Connector> connector = findConnector(paths, displayID);
    return connector && connector->isAsleep;
}

Subscription LinuxScreenSource::subscribeToQuestions(std::function<void()> observer)
{
    return question.subscribe(std::move(observer));
}

std::vector<WindowScreen> qtWindowScreens()
{
    std::vector<WindowScreen> result;
    for (const QScreen* screen : QGuiApplication::screens()) {
        WindowScreen window;
        window.name = screen->name().toStdString();
        window.model = screen->model().trimmed().toStdString();
        window.serialNumber = screen->serialNumber().trimmed().toStdString();
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
