// SPDX-License-Identifier: MIT
#include "platform/linux/tray/StatusNotifierItem.h"

#include "platform/linux/tray/DBusMenu.h"
#include "platform/linux/x11/X11.h"

#include <QDBusMessage>
#include <QIcon>
#include <QtEndian>
#include <algorithm>
#include <cstdlib>
#include <unistd.h>
#include <utility>

namespace lumenvale {

namespace {

/// On a square, as hosts lay items out, in the byte order of the protocol.
DBusImage squareImage(const Bitmap& bitmap, bool isLight)
{
    const int side = std::max(bitmap.width, bitmap.height);
    DBusImage image = {side, side, QByteArray(qsizetype(side) * side * 4, '\0')};
    const int left = (side - bitmap.width) / 2;
    const int top = (side - bitmap.height) / 2;
    for (int y = 0; y < bitmap.height; ++y) {
        for (int x = 0; x < bitmap.width; ++x) {
            const std::uint32_t pixel = tinted(bitmap.pixels[std::size_t(y) * bitmap.width + x], isLight);
            qToBigEndian(pixel, image.pixels.data() + (qsizetype(top + y) * side + left + x) * 4);
        }
    }
    return image;
}

QString newServiceName()
{
    static int count = 100; // Qt counts from 1, on a connection of its own
    return QString("org.kde.StatusNotifierItem-%1-%2").arg(::getpid()).arg(++count);
}

} // namespace

StatusNotifierItem::StatusNotifierItem(const QDBusConnection& bus, const StatusItemContent& content,
                                       const QString& identifier, IsBarDark isBarDark)
    : identifier(identifier), bus(bus), content(content), isBarDark(std::move(isBarDark)),
      serviceName(newServiceName())
{
    registerDBusMenuTypes();
    menu = new DBusMenu(&menuObject, content.menu);
    new StatusNotifierItemAdaptor(this);
    this->bus.registerObject(menuPath, &menuObject, QDBusConnection::ExportAdaptors);
    this->bus.registerObject(objectPath, this, QDBusConnection::ExportAdaptors);
    if (!this->bus.registerService(serviceName))
        serviceName = this->bus.baseService(); // sandboxes allow no other name
}

StatusNotifierItem::~StatusNotifierItem()
{
    bus.unregisterService(serviceName); // hosts remove the item
    bus.unregisterObject(objectPath);
    bus.unregisterObject(menuPath);
}

void StatusNotifierItem::registerWithWatcher()
{
    auto call =
        QDBusMessage::createMethodCall(watcherService, watcherPath, watcherService, "RegisterStatusNotifierItem");
    call << serviceName;
    bus.send(call);
}

void StatusNotifierItem::menuChanged() { menu->announceChange(); }

void StatusNotifierItem::imageChanged() { Q_EMIT findChild<StatusNotifierItemAdaptor*>()->NewIcon(); }

QString StatusNotifierItem::iconName() const
{
    // Hosts tint symbolic icons themselves, to fit their bar. There is one once the program is installed.
    const QString symbolic = "app.lumenvale.Lumenvale-symbolic";
    return QIcon::hasThemeIcon(symbolic) ? symbolic : QString();
}

QList<DBusImage> StatusNotifierItem::images() const
{
    QList<DBusImage> images;
    const bool isLight = isBarDark();
    for (const double scale : {1.0, 1.5, 2.0, 3.0})
        images.append(squareImage(content.image(scale), isLight));
    return images;
}

void StatusNotifierItem::activate(int x, int y)
{
    lastPoint = x11::logicalPoint(x, y);
    content.activated();
}

void StatusNotifierItem::scroll(int delta, const QString& orientation)
{
    if (orientation.compare("vertical", Qt::CaseInsensitive) != 0 || delta == 0)
        return;
    // Some hosts pass on the wheel's own units, others whole steps, and those that do count down as positive,
    // except for MATE, which writes the word with a capital.
    const bool isInSteps = std::abs(delta) < wheelNotch / 8;
    const int sign = delta > 0 ? 1 : -1;
    const int turned = !isInSteps ? delta : (orientation == "vertical" ? -sign : sign) * wheelNotch;
    if (const int steps = wheel.turn(turned); steps != 0)
        content.scrolled(steps);
}

StatusNotifierItemAdaptor::StatusNotifierItemAdaptor(StatusNotifierItem* parent)
    : QDBusAbstractAdaptor(parent), item(*parent)
{
}

QString StatusNotifierItemAdaptor::title() const { return QString::fromStdString(item.shown().title); }

DBusToolTip StatusNotifierItemAdaptor::toolTip() const
{
    return {{}, {}, QString::fromStdString(item.shown().toolTip), {}};
}

void StatusNotifierItemAdaptor::ProvideXdgActivationToken(const QString& token)
{
    qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8()); // where Qt looks for it
}

} // namespace lumenvale
