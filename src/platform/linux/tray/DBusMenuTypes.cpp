// SPDX-License-Identifier: MIT
#include "platform/linux/tray/DBusMenuTypes.h"

#include <QDBusMetaType>

namespace lumenvale {

namespace {

template <typename... Parts>
QDBusArgument& write(QDBusArgument& out, const Parts&... parts)
{
    out.beginStructure();
    (out << ... << parts);
    out.endStructure();
    return out;
}

template <typename... Parts>
const QDBusArgument& read(const QDBusArgument& in, Parts&... parts)
{
    in.beginStructure();
    (in >> ... >> parts);
    in.endStructure();
    return in;
}

} // namespace

QDBusArgument& operator<<(QDBusArgument& out, const DBusMenuItem& value)
{
    return write(out, value.id, value.properties);
}
const QDBusArgument& operator>>(const QDBusArgument& in, DBusMenuItem& value)
{
    return read(in, value.id, value.properties);
}
QDBusArgument& operator<<(QDBusArgument& out, const DBusMenuLayout& value)
{
    return write(out, value.id, value.properties, value.children);
}
const QDBusArgument& operator>>(const QDBusArgument& in, DBusMenuLayout& value)
{
    return read(in, value.id, value.properties, value.children);
}
QDBusArgument& operator<<(QDBusArgument& out, const DBusMenuEvent& value)
{
    return write(out, value.id, value.event, value.data, value.timestamp);
}
const QDBusArgument& operator>>(const QDBusArgument& in, DBusMenuEvent& value)
{
    return read(in, value.id, value.event, value.data, value.timestamp);
}
QDBusArgument& operator<<(QDBusArgument& out, const DBusMenuItemKeys& value)
{
    return write(out, value.id, value.properties);
}
const QDBusArgument& operator>>(const QDBusArgument& in, DBusMenuItemKeys& value)
{
    return read(in, value.id, value.properties);
}
QDBusArgument& operator<<(QDBusArgument& out, const DBusImage& value)
{
    return write(out, value.width, value.height, value.pixels);
}
const QDBusArgument& operator>>(const QDBusArgument& in, DBusImage& value)
{
    return read(in, value.width, value.height, value.pixels);
}
QDBusArgument& operator<<(QDBusArgument& out, const DBusToolTip& value)
{
    return write(out, value.icon, value.images, value.title, value.description);
}
const QDBusArgument& operator>>(const QDBusArgument& in, DBusToolTip& value)
{
    return read(in, value.icon, value.images, value.title, value.description);
}

void registerDBusMenuTypes()
{
    qDBusRegisterMetaType<DBusMenuItem>();
    qDBusRegisterMetaType<QList<DBusMenuItem>>();
    qDBusRegisterMetaType<DBusMenuLayout>();
    qDBusRegisterMetaType<DBusMenuEvent>();
    qDBusRegisterMetaType<QList<DBusMenuEvent>>();
    qDBusRegisterMetaType<DBusMenuItemKeys>();
    qDBusRegisterMetaType<QList<DBusMenuItemKeys>>();
    qDBusRegisterMetaType<DBusImage>();
    qDBusRegisterMetaType<QList<DBusImage>>();
    qDBusRegisterMetaType<DBusToolTip>();
}

} // namespace lumenvale
