// SPDX-License-Identifier: MIT
// One session of the desktop portal's shortcuts, from its creation to its closing. Main thread only.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QVariantMap>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace lumenvale {

class PortalRequest;

struct PortalShortcut {
    std::string name;        ///< what the desktop remembers it by
    std::string description; ///< what the desktop shows the user
    std::string trigger;     ///< the key we would like, see portalTrigger
};

enum class PortalFailure {
    absent,  ///< there is no portal, or it has no shortcuts
    refused, ///< the user or the desktop said no
};

class PortalSession final : public QObject {
    Q_OBJECT

public:
    struct Events {
        std::function<void(const std::string& name)> activated;
        /// The shortcuts in force, by name, with the desktop's words for their keys; also after the user changed
        /// them.
        std::function<void(const std::map<std::string, std::string>& triggers)> bound;
        std::function<void(PortalFailure failure)> failed;
    };

    /// Begins at once: tells the portal who we are, creates the session and binds the shortcuts.
    PortalSession(const QDBusConnection& bus, std::vector<PortalShortcut> shortcuts, Events events);
    ~PortalSession() override;
    PortalSession(const PortalSession&) = delete;
    PortalSession& operator=(const PortalSession&) = delete;

private Q_SLOTS:
    void activated(const QDBusMessage& message);
    void changed(const QDBusMessage& message);

private:
    void createSession();
    void bindShortcuts();
    void fail(uint response);

    QDBusConnection bus;
    std::vector<PortalShortcut> shortcuts;
    Events events;
    std::unique_ptr<PortalRequest> request;
    QString session; // its object path once it exists
};

} // namespace lumenvale
