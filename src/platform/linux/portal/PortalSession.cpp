// SPDX-License-Identifier: MIT
#include "platform/linux/portal/PortalSession.h"

#include "base/Identity.h"
#include "platform/linux/portal/PortalRequest.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QRandomGenerator>
#include <utility>

namespace lumenvale {

namespace {

constexpr char shortcutsInterface[] = "org.freedesktop.portal.GlobalShortcuts";
constexpr char registryInterface[] = "org.freedesktop.host.portal.Registry";
constexpr char sessionInterface[] = "org.freedesktop.portal.Session";
constexpr uint refusedByUser = 1;

QString makeToken() { return QStringLiteral("lumenvale%1").arg(QRandomGenerator::global()->generate()); }

QDBusMessage portalCall(const char* interface, const char* method)
{
    return QDBusMessage::createMethodCall(portalService, portalPath, interface, method);
}

/// Reads a(sa{sv}) into names and the desktop's words for the keys.
std::map<std::string, std::string> readShortcuts(const QVariant& value)
{
    std::map<std::string, std::string> result;
    if (!value.canConvert<QDBusArgument>())
        return result;
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("a(sa{sv})"))
        return result;
    argument.beginArray();
    while (!argument.atEnd()) {
        QString name;
        QVariantMap properties;
        argument.beginStructure();
        argument >> name >> properties;
        argument.endStructure();
        result[name.toStdString()] =
            properties.value(QStringLiteral("trigger_description")).toString().toStdString();
    }
    argument.endArray();
    return result;
}

QDBusArgument writeShortcuts(const std::vector<PortalShortcut>& shortcuts)
{
    // A structure has no type of its own in Qt's registry, so the array is begun with the signature of an element.
    struct Element {
        static QMetaType type()
        {
            static const QMetaType registered = qDBusRegisterMetaType<std::pair<QString, QVariantMap>>();
            return registered;
        }
    };
    QDBusArgument argument;
    argument.beginArray(Element::type());
    for (const PortalShortcut& shortcut : shortcuts) {
        const QVariantMap properties = {
            {QStringLiteral("description"), QString::fromStdString(shortcut.description)},
            {QStringLiteral("preferred_trigger"), QString::fromStdString(shortcut.trigger)},
        };
        argument.beginStructure();
        argument << QString::fromStdString(shortcut.name) << properties;
        argument.endStructure();
    }
    argument.endArray();
    return argument;
}

} // namespace

PortalSession::PortalSession(const QDBusConnection& connection, std::vector<PortalShortcut> wanted,
                             Events callbacks)
    : bus(connection), shortcuts(std::move(wanted)), events(std::move(callbacks))
{
    bus.connect(portalService, portalPath, shortcutsInterface, QStringLiteral("Activated"), this,
                SLOT(activated(QDBusMessage)));
    bus.connect(portalService, portalPath, shortcutsInterface, QStringLiteral("ShortcutsChanged"), this,
                SLOT(changed(QDBusMessage)));
    // Portals ask programs outside a sandbox who they are. Those that do not know the question answer with an
    // error, and so do those that were told before; both are fine.
    QDBusMessage message = portalCall(registryInterface, "Register");
    message << QString::fromLatin1(applicationIdentifier) << QVariantMap();
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        createSession();
    });
}

PortalSession::~PortalSession()
{
    if (!session.isEmpty())
        bus.send(
            QDBusMessage::createMethodCall(portalService, session, sessionInterface, QStringLiteral("Close")));
}

void PortalSession::createSession()
{
    const QString token = makeToken();
    QDBusMessage message = portalCall(shortcutsInterface, "CreateSession");
    message << QVariantMap{{QStringLiteral("handle_token"), token},
                           {QStringLiteral("session_handle_token"), makeToken()}};
    request = std::make_unique<PortalRequest>(bus, token, [this](uint response, const QVariantMap& results) {
        session = results.value(QStringLiteral("session_handle")).toString();
        if (response == 0 && !session.isEmpty())
            bindShortcuts();
        else
            fail(response);
    });
    request->call(message);
}

void PortalSession::bindShortcuts()
{
    const QString token = makeToken();
    QDBusMessage message = portalCall(shortcutsInterface, "BindShortcuts");
    message << QVariant::fromValue(QDBusObjectPath(session)) << QVariant::fromValue(writeShortcuts(shortcuts))
            << QString() << QVariantMap{{QStringLiteral("handle_token"), token}};
    auto finished = std::move(request); // its answer is being delivered
    finished.release()->deleteLater();
    request = std::make_unique<PortalRequest>(bus, token, [this](uint response, const QVariantMap& results) {
        if (response == 0)
            events.bound(readShortcuts(results.value(QStringLiteral("shortcuts"))));
        else
            fail(response);
    });
    request->call(message);
}

void PortalSession::fail(uint response)
{
    events.failed(response == refusedByUser ? PortalFailure::refused : PortalFailure::absent);
}

void PortalSession::activated(const QDBusMessage& message)
{
    const QVariantList arguments = message.arguments(); // session, name, time, options
    if (arguments.size() >= 2 && arguments.at(0).value<QDBusObjectPath>().path() == session)
        events.activated(arguments.at(1).toString().toStdString());
}

void PortalSession::changed(const QDBusMessage& message)
{
    const QVariantList arguments = message.arguments();
    if (arguments.size() == 2 && arguments.at(0).value<QDBusObjectPath>().path() == session)
        events.bound(readShortcuts(arguments.at(1)));
}

} // namespace lumenvale
