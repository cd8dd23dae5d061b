// SPDX-License-Identifier: MIT
// The login service on the system bus (org.freedesktop.login1): it sets the brightness of the active session's
// panels, and announces that the machine goes to sleep and wakes.
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <cstdint>
#include <functional>
#include <string>

namespace lumenvale {

/// Sets a backlight device's raw value (Session.SetBrightness; systemd 243 or newer). Waits for the answer, at
/// most 3 seconds. Returns 0 or an error number: ENOTCONN without the bus or the service, ETIMEDOUT, EACCES when
/// it is refused. Hardware thread.
int setBrightnessThroughLogind(const QDBusConnection& bus, const std::string& backlight, std::int64_t raw);

/// Asks the service, which is started for it, for a sign of life. Waits and returns as above. Any thread.
int pingLoginService(const QDBusConnection& bus);

/// Calls back on the main thread with true before the machine sleeps and with false when it has woken
/// (Manager.PrepareForSleep). Silent without a system bus.
class SleepWatch final : public QObject {
    Q_OBJECT

public:
    SleepWatch(QDBusConnection bus, std::function<void(bool isGoingToSleep)> callback);

private:
    Q_SLOT void prepareForSleep(bool begins);

    std::function<void(bool)> callback;
};

} // namespace lumenvale
