// SPDX-License-Identifier: MIT
#include "platform/linux/portal/PortalAppearance.h"

#include "platform/linux/portal/PortalRequest.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <array>
#include <cmath>
#include <utility>

namespace lumenvale {

namespace {

constexpr char interface[] = "org.freedesktop.portal.Settings";
constexpr char settings[] = "org.freedesktop.appearance";
constexpr char colorScheme[] = "color-scheme"; ///< u: 1 dark, 2 light, others no preference
constexpr char accentColor[] = "accent-color"; ///< (ddd): sRGB from 0 to 1; out of range: none

/// `Read` wraps its value twice.
QVariant unwrapped(QVariant value)
{
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

std::optional<bool> wantsDark(const QVariant& value)
{
    const uint scheme = value.toUInt();
    return scheme == 1 || scheme == 2 ? std::optional(scheme == 1) : std::nullopt;
}

std::optional<std::uint32_t> accent(const QVariant& value)
{
    if (!value.canConvert<QDBusArgument>())
        return std::nullopt;
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != "(ddd)")
        return std::nullopt;
    std::array<double, 3> parts{};
    argument.beginStructure();
    for (double& part : parts)
        argument >> part;
    argument.endStructure(); // or what it holds is lost
    std::uint32_t colour = 0;
    for (const double part : parts) {
        if (!(part >= 0 && part <= 1))
            return std::nullopt;
        colour = colour << 8 | std::uint32_t(std::lround(part * 255));
    }
    return colour;
}

class PortalAppearance final : public QObject, public AppearanceSource {
    Q_OBJECT

public:
    explicit PortalAppearance(QDBusConnection bus) : bus(std::move(bus)) {}

    void observe(Observer next) override
    {
        observer = std::move(next);
        qRegisterMetaType<QDBusVariant>(); // the connection finds the slot's types by their names
        bus.connect(portalService, portalPath, interface, "SettingChanged", this,
                    SLOT(settingChanged(QString, QString, QDBusVariant)));
        for (const char* key : {colorScheme, accentColor})
            read(key);
    }

private Q_SLOTS:
    void settingChanged(const QString& space, const QString& key, const QDBusVariant& value)
    {
        if (space == settings)
            take(key, value.variant());
    }

private:
    void read(const QString& key)
    {
        auto call = QDBusMessage::createMethodCall(portalService, portalPath, interface, "Read");
        call << QString(settings) << key;
        auto* answer = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
        QObject::connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer, key] {
            const QDBusPendingReply<QDBusVariant> reply = *answer;
            answer->deleteLater();
            if (reply.isValid())
                take(key, reply.value().variant());
        });
    }

    void take(const QString& key, const QVariant& value)
    {
        if (key == colorScheme)
            wish.isDark = wantsDark(unwrapped(value));
        else if (key == accentColor)
            wish.accent = accent(unwrapped(value));
        else
            return;
        observer(wish);
    }

    QDBusConnection bus;
    Observer observer;
    AppearanceWish wish;
};

} // namespace

std::unique_ptr<AppearanceSource> makePortalAppearance(const QDBusConnection& bus)
{
    return std::make_unique<PortalAppearance>(bus);
}

} // namespace lumenvale

#include "PortalAppearance.moc"
