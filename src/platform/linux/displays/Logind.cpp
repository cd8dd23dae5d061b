// SPDX-License-Identifier: MIT
#include "platform/linux/displays/Logind.h"

#include <QDBusError>
#include <QDBusMessage>
#include <cerrno>
#include <chrono>
#include <utility>

namespace lumenvale {

namespace {

constexpr char service[] = "org.freedesktop.login1";
constexpr char managerPath[] = "/org/freedesktop/login1";
constexpr char managerInterface[] = "org.freedesktop.login1.Manager";
/// The caller's own session, or the user's display session for a caller outside of all sessions.
constexpr char sessionPath[] = "/org/freedesktop/login1/session/auto";
constexpr char sessionInterface[] = "org.freedesktop.login1.Session";
constexpr auto answerTimeout = std::chrono::milliseconds(3000); // it writes a file and answers

int errorNumber(const QDBusError& error)
{
    switch (error.type()) {
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
        return ETIMEDOUT;
    case QDBusError::ServiceUnknown:
    case QDBusError::Disconnected:
    case QDBusError::NoServer:
        return ENOTCONN;
    case QDBusError::UnknownMethod:
    case QDBusError::UnknownObject:
    case QDBusError::UnknownInterface:
        return ENOSYS;
    case QDBusError::AccessDenied: // or the session is not the one at the screen
        return EACCES;
    default:
        return EIO;
    }
}

/// Makes the call and waits for its answer.
int errorOf(const QDBusConnection& bus, const QDBusMessage& call)
{
    if (!bus.isConnected())
        return ENOTCONN;
    const QDBusMessage answer = bus.call(call, QDBus::Block, static_cast<int>(answerTimeout.count()));
    return answer.type() == QDBusMessage::ErrorMessage ? errorNumber(QDBusError(answer)) : 0;
}

} // namespace

int setBrightnessThroughLogind(const QDBusConnection& bus, const std::string& backlight, std::int64_t raw)
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(QLatin1String(service), QLatin1String(sessionPath),
                                       QLatin1String(sessionInterface), QStringLiteral("SetBrightness"));
    call << QStringLiteral("backlight") << QString::fromStdString(backlight) << static_cast<quint32>(raw);
    return errorOf(bus, call);
}

int pingLoginService(const QDBusConnection& bus)
{
    return errorOf(bus, QDBusMessage::createMethodCall(QLatin1String(service), QLatin1String(managerPath),
                                                       QStringLiteral("org.freedesktop.DBus.Peer"),
                                                       QStringLiteral("Ping")));
}

SleepWatch::SleepWatch(QDBusConnection bus, std::function<void(bool)> callback) : callback(std::move(callback))
{
    if (bus.isConnected())
        bus.connect(QLatin1String(service), QLatin1String(managerPath), QLatin1String(managerInterface),
                    QStringLiteral("PrepareForSleep"), this, SLOT(prepareForSleep(bool)));
}

void SleepWatch::prepareForSleep(bool begins) { callback(begins); }

} // namespace lumenvale

#include "moc_Logind.cpp"
