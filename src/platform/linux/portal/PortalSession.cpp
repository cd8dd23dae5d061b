// SPDX-License-Identifier: MIT
#include "platform/linux/portal/PortalSession.h"

#include "base/Identity.h"
#include "platform/linux/portal/PortalRequest.h"

#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QRandomGenerator>
#include <QTimer>
#include <utility>

namespace lumenvale {

namespace {

constexpr char shortcutsInterface[] = "org.freedesktop.portal.GlobalShortcuts";
constexpr char registryInterface[] = "org.freedesktop.host.portal.Registry";
constexpr char portalSessionInterface[] = "org.freedesktop.portal.Session";
/// Some desktops remember the user's keys under this name, so it is the same in every run.
constexpr char sessionToken[] = "lumenvale";
constexpr uint refusedByUser = 1;

QDBusMessage portalCall(const char* interface, const char* method)
{
    return QDBusMessage::createMethodCall(portalService, portalPath, interface, method);
}

} // namespace

PortalSession::PortalSession(const QDBusConnection& bus, std::vector<PortalShortcut> shortcuts, Events events)
    : bus(bus), shortcuts(std::move(shortcuts)), events(std::move(events))
{
    this->bus.connect(portalService, portalPath, shortcutsInterface, "Activated", this,
                      SLOT(activated(QDBusMessage)));
    this->bus.connect(portalService, portalPath, shortcutsInterface, "ShortcutsChanged", this,
                      SLOT(changed(QDBusMessage)));
    // Portals ask programs outside a sandbox who they are. Those that do not know the question answer with an
    // error, and so do those that were told before; both are fine.
    QDBusMessage message = portalCall(registryInterface, "Register");
    message << QString(applicationIdentifier) << QVariantMap();
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        createSession();
    });
}

PortalSession::~PortalSession()
{
    if (!session.isEmpty())
        sendClose();
}

void PortalSession::close(std::function<void()> closed)
{
    const bool isClosing = static_cast<bool>(onClosed);
    events = {};
    onClosed = std::move(closed);
    if (!isBeingMade && !isClosing)
        sendClose();
}

/// Closes the session if there is one, and then calls whoever gave it up.
void PortalSession::sendClose()
{
    const QString path = std::exchange(session, QString());
    if (path.isEmpty()) {
        QTimer::singleShot(0, this, [this] { onClosed(); });
        return;
    }
    auto message = QDBusMessage::createMethodCall(portalService, path, portalSessionInterface, "Close");
    message.setAutoStartService(false);
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this] { onClosed(); });
}

/// Makes a call that the portal answers later, by a request.
void PortalSession::ask(QDBusMessage message, QVariantMap options,
                        std::function<void(uint, const QVariantMap&)> answered)
{
    const QString token = QString("lumenvale%1").arg(QRandomGenerator::global()->generate());
    options["handle_token"] = token;
    if (request)
        request.release()->deleteLater(); // its answer may be being delivered
    request = std::make_unique<PortalRequest>(bus, token, std::move(answered));
    request->call(message << options);
}

void PortalSession::createSession()
{
    ask(portalCall(shortcutsInterface, "CreateSession"),
        {{"session_handle_token", sessionToken}, {"shortcuts", writePortalShortcuts(shortcuts)}},
        [this](uint response, const QVariantMap& results) { sessionCreated(response, results); });
}

void PortalSession::sessionCreated(uint response, const QVariantMap& results)
{
    isBeingMade = false;
    session = results.value("session_handle").toString();
    if (onClosed) {
        sendClose();
        return;
    }
    if (response != 0 || session.isEmpty()) {
        const QString error = results.value("error").toString();
        const bool isRefused =
            response == refusedByUser || error.endsWith(".NotAllowed") || error.endsWith(".AccessDenied");
        fail(isRefused ? PortalFailure::refused : PortalFailure::absent);
        return;
    }
    bus.connect(portalService, session, portalSessionInterface, "Closed", this, SLOT(ended()));
    if (const QVariant bound = results.value("shortcuts"); bound.isValid())
        events.bound(readBoundShortcuts(bound));
    else
        bindShortcuts();
}

void PortalSession::bindShortcuts()
{
    QDBusMessage message = portalCall(shortcutsInterface, "BindShortcuts");
    message << QVariant::fromValue(QDBusObjectPath(session)) << writePortalShortcuts(shortcuts) << QString();
    ask(message, {}, [this](uint response, const QVariantMap& results) {
        const std::set<std::string> bound = readBoundShortcuts(results.value("shortcuts"));
        if (response != 0)
            fail(PortalFailure::refused); // there is a session, so there are shortcuts
        else if (bound.empty())
            listShortcuts();
        else if (events.bound)
            events.bound(bound);
    });
}

void PortalSession::listShortcuts()
{
    QDBusMessage message = portalCall(shortcutsInterface, "ListShortcuts");
    message << QVariant::fromValue(QDBusObjectPath(session));
    ask(message, {}, [this](uint, const QVariantMap& results) {
        if (events.bound)
            events.bound(readBoundShortcuts(results.value("shortcuts")));
    });
}

void PortalSession::fail(PortalFailure failure)
{
    if (events.failed)
        events.failed(failure);
}

/// Whether a signal, whose first argument is a session, is about this one.
bool PortalSession::isOurs(const QDBusMessage& message) const
{
    return !session.isEmpty() && message.arguments().value(0).value<QDBusObjectPath>().path() == session;
}

void PortalSession::activated(const QDBusMessage& message)
{
    const auto call = events.activated; // it may end this object
    if (call && isOurs(message))
        call(message.arguments().value(1).toString().toStdString()); // session, name, time, options
}

void PortalSession::changed(const QDBusMessage& message)
{
    const auto call = events.bound;
    if (call && isOurs(message))
        call(readBoundShortcuts(message.arguments().value(1)));
}

void PortalSession::ended()
{
    session.clear();
    if (const auto call = events.failed)
        call(PortalFailure::stopped);
}

} // namespace lumenvale

#include "moc_PortalSession.cpp"
