// SPDX-License-Identifier: MIT
// The structures of com.canonical.dbusmenu (version 3) and org.kde.StatusNotifierItem on the wire.
#pragma once

#include <QDBusArgument>
#include <QDBusVariant>
#include <QList>
#include <QString>
#include <QVariantMap>

namespace lumenvale {

/// (ia{sv}): a menu row's properties.
struct DBusMenuItem {
    int id = 0;
    QVariantMap properties;
};

/// (ia{sv}av): a row and the rows below it.
struct DBusMenuLayout {
    int id = 0;
    QVariantMap properties;
    QList<QDBusVariant> children; ///< each a DBusMenuLayout
};

/// (isvu): something the user did to a row.
struct DBusMenuEvent {
    int id = 0;
    QString event;
    QDBusVariant data;
    uint timestamp = 0;
};

/// (ias): properties that a row no longer has.
struct DBusMenuItemKeys {
    int id = 0;
    QStringList properties;
};

/// (iiay): ARGB32 in network byte order.
struct DBusImage {
    int width = 0;
    int height = 0;
    QByteArray pixels;
};

/// (sa(iiay)ss)
struct DBusToolTip {
    QString icon;
    QList<DBusImage> images;
    QString title;
    QString description;
};

QDBusArgument& operator<<(QDBusArgument& out, const DBusMenuItem& value);
const QDBusArgument& operator>>(const QDBusArgument& in, DBusMenuItem& value);
QDBusArgument& operator<<(QDBusArgument& out, const DBusMenuLayout& value);
const QDBusArgument& operator>>(const QDBusArgument& in, DBusMenuLayout& value);
QDBusArgument& operator<<(QDBusArgument& out, const DBusMenuEvent& value);
const QDBusArgument& operator>>(const QDBusArgument& in, DBusMenuEvent& value);
QDBusArgument& operator<<(QDBusArgument& out, const DBusMenuItemKeys& value);
const QDBusArgument& operator>>(const QDBusArgument& in, DBusMenuItemKeys& value);
QDBusArgument& operator<<(QDBusArgument& out, const DBusImage& value);
const QDBusArgument& operator>>(const QDBusArgument& in, DBusImage& value);
QDBusArgument& operator<<(QDBusArgument& out, const DBusToolTip& value);
const QDBusArgument& operator>>(const QDBusArgument& in, DBusToolTip& value);

/// Makes the types known to D-Bus. May be called more than once.
void registerDBusMenuTypes();

} // namespace lumenvale

Q_DECLARE_METATYPE(lumenvale::DBusMenuItem)
Q_DECLARE_METATYPE(lumenvale::DBusMenuLayout)
Q_DECLARE_METATYPE(lumenvale::DBusMenuEvent)
Q_DECLARE_METATYPE(lumenvale::DBusMenuItemKeys)
Q_DECLARE_METATYPE(lumenvale::DBusImage)
Q_DECLARE_METATYPE(lumenvale::DBusToolTip)
