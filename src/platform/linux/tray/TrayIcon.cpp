// SPDX-License-Identifier: MIT
#include "platform/linux/tray/TrayIcon.h"

#include "platform/linux/tray/BarImage.h"
#include "platform/linux/x11/X11.h"

#include <QActionGroup>
#include <QIcon>
#include <QImage>
#include <QPixmap>
#include <QWheelEvent>

namespace lumenvale {

namespace {

QIcon barIcon(const std::function<Bitmap(double)>& draw, bool isLight)
{
    QIcon icon;
    for (const double scale : {1.0, 2.0, 3.0}) {
        const Bitmap bitmap = barImage(draw(scale), scale, isLight);
        const auto* const pixels = reinterpret_cast<const uchar*>(bitmap.pixels.data());
        // The icon keeps a copy.
        icon.addPixmap(
            QPixmap::fromImage(QImage(pixels, bitmap.width, bitmap.height, QImage::Format_ARGB32).copy()));
    }
    return icon;
}

} // namespace

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
        lastPlace = x11::pointedPlaceOnBar();
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
    Rect frame = {double(place.x()), double(place.y()), double(place.width()), double(place.height())};
    if (lastPlace && lastPlace->width == 0) {
        frame.y = lastPlace->y;
        frame.height = lastPlace->height;
    } else if (lastPlace) {
        frame.x = lastPlace->x;
        frame.width = lastPlace->width;
    }
    return frame;
}

void TrayIcon::menuChanged()
{
    menu.clear();
    delete menu.findChild<QActionGroup*>();
    auto* const presets = new QActionGroup(&menu); // has round marks, not empty check boxes
    for (const MenuEntry& each : content.menu()) {
        if (each.id.empty()) {
            menu.addSeparator();
            continue;
        }
        QAction* action = menu.addAction(QString::fromStdString(each.title).replace('&', "&&"), each.action);
        action->setCheckable(each.isCheckable);
        action->setChecked(each.isChecked);
        if (each.isCheckable)
            presets->addAction(action);
    }
}

void TrayIcon::imageChanged(bool isBarDark) { icon.setIcon(barIcon(content.image, isBarDark)); }

bool TrayIcon::eventFilter(QObject*, QEvent* event)
{
    if (event->type() != QEvent::Wheel)
        return false;
    if (const int steps = wheel.turn(static_cast<QWheelEvent*>(event)->angleDelta().y()); steps != 0)
        content.scrolled(steps);
    return true;
}

} // namespace lumenvale
