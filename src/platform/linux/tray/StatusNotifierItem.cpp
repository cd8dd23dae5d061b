// SPDX-License-Identifier: MIT
#include "platform/linux/tray/StatusNotifierItem.h"

#include "platform/linux/tray/BarImage.h"
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

/// In the byte order of the protocol.
DBusImage onTheWire(const Bitmap& bitmap)
{
    DBusImage image = {bitmap.width, bitmap.height, QByteArray(qsizetype(bitmap.pixels.size()) * 4, '\0')};
    qToBigEndian<std::uint32_t>(bitmap.pixels.data(), qsizetype(bitmap.pixels.size()), image.pixels.data());
    return image;
}

/// Whether the desktop's bar gives a symbolic icon the colour of its texts. Others show it as it is drawn, dark.
bool doesBarRecolour()
{
    const QStringList desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(':');
    return std::ranges::any_of(desktops, [](const QString& each) {
        return each == "KDE" || each == "GNOME" || each == "Unity" || each == "XFCE";
    });
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
    menu = new DBusMenu(&menuObject, content.menu, [this] {
        if (const auto place = x11::pointedPlaceOnBar())
            lastFrame = place;
    });
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
    // There is one once the program is installed. Hosts prefer it to the images.
    const QString symbolic = "app.lumenvale.Lumenvale-symbolic";
    return doesBarRecolour() && QIcon::hasThemeIcon(symbolic) ? symbolic : QString();
}

QList<DBusImage> StatusNotifierItem::images() const
{
    QList<DBusImage> images;
    const bool isLight = isBarDark();
    for (const double scale : {1.0, 1.5, 2.0, 3.0})
        images.append(onTheWire(barImage(content.image(scale), scale, isLight)));
    return images;
}

void StatusNotifierItem::activate(int x, int y)
{
    // Some hosts send coordinates of their own, or the same ones wherever the item is. The pointer tells the
    // truth.
    const Point told = x11::logicalPoint(x, y);
    lastFrame = x11::pointedPlaceOnBar().value_or(Rect{told.x, told.y, 0, 0});
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

#include "moc_StatusNotifierItem.cpp"
