// SPDX-License-Identifier: MIT
// One call to the desktop portal that is answered by a signal (org.freedesktop.portal.Request). Main thread only.
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QVariantMap>
#include <functional>

namespace lumenvale {

class PortalRequest final : public QObject {
    Q_OBJECT

public:
    /// What the portal answered; `response` 0 is success, 1 the user's refusal, anything else a failure.
    using Answer = std::function<void(uint response, const QVariantMap& results)>;

    /// Listens for the answer before the call is made, so that no answer can be missed. The portal's path for the
    /// request follows from the connection's name and `token`.
    PortalRequest(const QDBusConnection& bus, const QString& token, Answer answer);
    ~PortalRequest() override;
    PortalRequest(const PortalRequest&) = delete;
    PortalRequest& operator=(const PortalRequest&) = delete;

    /// Makes the call; an error answers with response 2 and its name under "error".
    void call(const QDBusMessage& message);

private Q_SLOTS:
    void respond(uint response, const QVariantMap& results);

private:
    void listen(const QString& where);

    QDBusConnection bus;
    QString path;
    Answer answer;
};

constexpr char portalService[] = "org.freedesktop.portal.Desktop";
constexpr char portalPath[] = "/org/freedesktop/portal/desktop";

} // namespace lumenvale
