// SPDX-License-Identifier: MIT
#include "platform/linux/portal/PortalAppearance.h"

#include "BusCall.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <gtest/gtest.h>
#include <vector>

namespace lumenvale {

struct AccentColour {
    double red, green, blue;
};
QDBusArgument& operator<<(QDBusArgument& out, const AccentColour& value)
{
    out.beginStructure();
    out << value.red << value.green << value.blue;
    out.endStructure();
    return out;
}
const QDBusArgument& operator>>(const QDBusArgument& in, AccentColour& value)
{
    in.beginStructure();
    in >> value.red >> value.green >> value.blue;
    in.endStructure();
    return in;
}

} // namespace lumenvale

Q_DECLARE_METATYPE(lumenvale::AccentColour)

namespace lumenvale {

class SettingsPortalStandIn final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public Q_SLOTS:
    QDBusVariant Read(const QString&, const QString& key)
    {
        const QVariant value = key == "color-scheme" ? QVariant(1u) : QVariant::fromValue(AccentColour{1, 0.5, 0});
        return QDBusVariant(QVariant::fromValue(QDBusVariant(value)));
    }

Q_SIGNALS:
    void SettingChanged(const QString& space, const QString& key, const QDBusVariant& value);
};

namespace {

TEST(PortalAppearance, TellsTheDesktopsChoiceAndItsChanges)
{
    const auto bus = tryStartBus();
    if (!bus)
        GTEST_SKIP() << "dbus-daemon is not installed";
    qDBusRegisterMetaType<AccentColour>();
    QDBusConnection portal = bus->connect();
    SettingsPortalStandIn settings;
    portal.registerObject("/org/freedesktop/portal/desktop", &settings, QDBusConnection::ExportAllContents);
    portal.registerService("org.freedesktop.portal.Desktop");

    const auto source = makePortalAppearance(bus->connect());
    std::vector<AppearanceWish> told;
    source->observe([&told](const AppearanceWish& wish) { told.push_back(wish); });
    ASSERT_TRUE(turnLoopUntil([&told] { return told.size() == 2; }));
    EXPECT_EQ(told.back(), (AppearanceWish{true, 0xFF8000}));

    Q_EMIT settings.SettingChanged("org.gnome.desktop.interface", "color-scheme", QDBusVariant("prefer-light"));
    Q_EMIT settings.SettingChanged("org.freedesktop.appearance", "color-scheme", QDBusVariant(0u));
    Q_EMIT settings.SettingChanged("org.freedesktop.appearance", "accent-color",
                                   QDBusVariant(QVariant::fromValue(AccentColour{-1, 0, 0})));
    ASSERT_TRUE(turnLoopUntil([&told] { return told.size() == 4; }));
    EXPECT_EQ(told.back(), AppearanceWish());
}

} // namespace
} // namespace lumenvale

#include "PortalAppearanceTest.moc"
