// SPDX-License-Identifier: MIT
// The running program as it shows itself on the session bus: app.lumenvale.Lumenvale.Displays. Main thread.
#pragma once

#include "displays/RunningProgram.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <functional>
#include <optional>

namespace lumenvale {

/// The interface, and the object that has it, below the program's own.
constexpr char displaysInterface[] = "app.lumenvale.Lumenvale.Displays";
constexpr char displaysObject[] = "/Displays";

class ProgramOnBus final : public QObject, public RunningProgram {
    Q_OBJECT

public:
    /// Where a program is looked for.
    struct Place {
        QString service;
        QString path;   ///< of the object with the interface
        QString folder; ///< of the simulated monitors; empty for the real displays
    };

    /// `connect` is called by `observe`.
    ProgramOnBus(std::function<QDBusConnection()> connect, Place place);

    void observe(Observer newObserver) override;

private:
    Q_SLOT void receive(const QString& displays);
    void ask();
    void tell(const std::optional<std::string>& displays);

    std::function<QDBusConnection()> connect;
    Place place;
    Observer observer;
    std::optional<QDBusConnection> bus;
    std::optional<QDBusServiceWatcher> watcher;
    bool isOurs = false; ///< the program controls the displays that this command means
};

} // namespace lumenvale
