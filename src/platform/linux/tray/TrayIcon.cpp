// SPDX-License-Identifier: MIT
#include "platform/linux/tray/TrayIcon.h"

#include <QIcon>
#include <QImage>
#include <QPixmap>
#include <QWheelEvent>

namespace lumenvale {

namespace {

QIcon tintedIcon(const std::function<Bitmap(double)>& draw, bool isLight)
{
    QIcon icon;
    for (const double scale : {1.0, 2.0, 3.0}) {
        const Bitmap bitmap = draw(scale);
        QImage image(bitmap.width, bitmap.height, QImage::Format_ARGB32);
        for (int y = 0; y < bitmap.height; ++y) {
            for (int x = 0; x < bitmap.width; ++x) {
                image.setPixel(x, y, tinted(bitmap.pixels[std::size_t(y) * bitmap.width + x], isLight));
            }
        }
        icon.addPixmap(QPixmap::fromImage(image));
    }
    return icon;
}

} // namespace

std::uint32_t tinted(std::uint32_t pixel, bool isLight)
{
    return (pixel & 0xFF000000u) | (isLight ? 0xF2F2F4u : 0x1D1D1Fu);
}

int WheelSteps::turn(int units)
{
    unused += units;
    const int steps = unused / wheelNotch;
    unused -= steps * wheelNotch;
    return steps;
}

TrayIcon::TrayIcon(const StatusItemContent& content, bool isBarDark) : content(content)
{
    imageChanged(isBarDark);
    icon.setToolTip(QString::fromStdString(content.toolTip));
    menuChanged();
    icon.setContextMenu(&menu);
    icon.installEventFilter(this);
    QObject::connect(&icon, &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason != QSystemTrayIcon::Context)
            this->content.activated();
    });
    icon.show();
}

std::optional<Rect> TrayIcon::frame() const
{
    const QRect place = icon.geometry();
    if (!place.isValid())
        return std::nullopt;
    return Rect{double(place.x()), double(place.y()), double(place.width()), double(place.height())};
}

void TrayIcon::menuChanged()
{
    menu.clear();
    for (const MenuEntry& each : content.menu()) {
        if (each.id.empty()) {
            menu.addSeparator();
            continue;
        }
        QAction* action = menu.addAction(QString::fromStdString(each.title).replace('&', "&&"), each.action);
        action->setCheckable(each.isCheckable);
        action->setChecked(each.isChecked);
    }
}

void TrayIcon::imageChanged(bool isBarDark) { icon.setIcon(tintedIcon(content.image, isBarDark)); }

bool TrayIcon::eventFilter(QObject*, QEvent* event)
{
    if (event->type() != QEvent::Wheel)
        return false;
    if (const int steps = wheel.turn(static_cast<QWheelEvent*>(event)->angleDelta().y()); steps != 0)
        content.scrolled(steps);
    return true;
}

} // namespace lumenvale
