// SPDX-License-Identifier: MIT
#include "platform/linux/portal/PortalRequest.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <utility>

namespace lumenvale {

namespace {
constexpr char requestInterface[] = "org.freedesktop.portal.Request";
constexpr uint failed = 2;
} // namespace

PortalRequest::PortalRequest(const QDBusConnection& bus, const QString& token, Answer answer)
    : bus(bus), answer(std::move(answer))
{
    QString sender = bus.baseService().mid(1);
    sender.replace(QLatin1Char('.'), QLatin1Char('_'));
    listen(QStringLiteral("/org/freedesktop/portal/desktop/request/%1/%2").arg(sender, token));
}

PortalRequest::~PortalRequest() { listen(QString()); }

void PortalRequest::listen(const QString& where)
{
    const auto response = QStringLiteral("Response");
    if (!path.isEmpty())
        bus.disconnect({}, path, requestInterface, response, this, SLOT(respond(uint, QVariantMap)));
    path = where;
    if (!path.isEmpty())
        bus.connect({}, path, requestInterface, response, this, SLOT(respond(uint, QVariantMap)));
}

void PortalRequest::call(const QDBusMessage& message)
{
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusObjectPath> reply = *watcher;
        if (reply.isError())
            respond(failed, {{QStringLiteral("error"), reply.error().name()}});
        else if (reply.value().path() != path)
            listen(reply.value().path()); // portals before 0.9 choose the path themselves
    });
}

void PortalRequest::respond(uint response, const QVariantMap& results)
{
    if (const Answer callback = std::exchange(answer, nullptr))
        callback(response, results); // may destroy this object
}

} // namespace lumenvale

#include "moc_PortalRequest.cpp"
