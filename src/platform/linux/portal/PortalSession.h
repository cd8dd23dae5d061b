// SPDX-License-Identifier: MIT
// One session of the desktop portal's shortcuts, from its creation to its closing. Main thread only.
//
// Portals differ in how shortcuts are bound. Plasma up to 6.0 takes them with the creation of the session and
// answers with them; a later BindShortcuts only opens its settings there. All others ignore them there and want
// BindShortcuts; some of those answer before the user has decided, with an empty list, and tell the outcome when
// they are asked for it.
#pragma once

#include "platform/linux/portal/PortalShortcut.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QVariantMap>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace lumenvale {

class PortalRequest;

enum class PortalFailure {
    absent,  ///< there is no portal, or it has no shortcuts
    refused, ///< the user or the desktop said no
    stopped, ///< the desktop ended the session
};

class PortalSession final : public QObject {
    Q_OBJECT

public:
    struct Events {
        std::function<void(const std::string& name)> activated;
        /// The names of the shortcuts that have a key now; again whenever the user changes them.
        std::function<void(const std::set<std::string>& names)> bound;
        std::function<void(PortalFailure failure)> failed;
    };

    /// Begins at once: tells the portal who we are, creates the session and binds the shortcuts.
    PortalSession(const QDBusConnection& bus, std::vector<PortalShortcut> shortcuts, Events events);
    ~PortalSession() override; ///< tells the portal to close the session if it exists
    PortalSession(const PortalSession&) = delete;
    PortalSession& operator=(const PortalSession&) = delete;

    /// Gives the session up: no event comes any more, and `closed` is called once the portal knows of it no
    /// longer, at the earliest on the next turn of the loop. The next session needs that, since it has the same
    /// name.
    void close(std::function<void()> closed);

private Q_SLOTS:
    void activated(const QDBusMessage& message);
    void changed(const QDBusMessage& message);
    void ended();

private:
    void createSession();
    void sessionCreated(uint response, const QVariantMap& results);
    void bindShortcuts();
    void listShortcuts();
    void ask(QDBusMessage message, QVariantMap options, std::function<void(uint, const QVariantMap&)> answered);
    bool isOurs(const QDBusMessage& message) const;
    void fail(PortalFailure failure);
    void sendClose();

    QDBusConnection bus;
    std::vector<PortalShortcut> shortcuts;
    Events events;
    std::unique_ptr<PortalRequest> request;
    QString session;                ///< its object path while it exists
    bool isBeingMade = true;        ///< until the portal has answered
    std::function<void()> onClosed; ///< set once the session is given up
};

} // namespace lumenvale
