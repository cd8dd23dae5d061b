// SPDX-License-Identifier: MIT
#include "platform/linux/desktop/QtWindowSystem.h"

#include <QGuiApplication>
#include <QScreen>
#include <utility>

namespace lumenvale {

QtWindowSystem::QtWindowSystem()
{
    const auto changed = [this] { changes.emit(); };
    const auto watch = [this, changed](const QScreen* screen) {
        QObject::connect(screen, &QScreen::geometryChanged, &context, changed);
        QObject::connect(screen, &QScreen::refreshRateChanged, &context, changed);
    };
    for (const QScreen* screen : QGuiApplication::screens())
        watch(screen);
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, &context, [changed, watch](QScreen* screen) {
        watch(screen);
        changed();
    });
    QObject::connect(qGuiApp, &QGuiApplication::screenRemoved, &context, changed);
    QObject::connect(qGuiApp, &QGuiApplication::primaryScreenChanged, &context, changed);
}

Subscription QtWindowSystem::observe(std::function<void()> changed)
{
    return changes.subscribe(std::move(changed));
}

std::vector<WindowScreen> QtWindowSystem::screens()
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
