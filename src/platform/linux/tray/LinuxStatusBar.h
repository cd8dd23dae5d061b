// SPDX-License-Identifier: MIT
// Status items for Linux desktops: on the session bus where a watcher with a host runs, now or later, and in
// the X server's own tray where none does. Made by the shell's factory; main thread only.
#pragma once

#include "base/Signal.h"
#include "platform/Shell.h"

#include <QDBusConnection>
#include <QString>

namespace lumenvale {

class StatusHosts;

class LinuxStatusBar final : public StatusBar {
public:
    LinuxStatusBar(const QDBusConnection& bus, QString identifier);
    ~LinuxStatusBar() override;

    std::unique_ptr<StatusItem> createItem(StatusItemContent content) override;
    std::optional<bool> showsItems() override;
    void observe(std::function<void()> changed) override;

private:
    QDBusConnection bus;
    QString identifier;
    std::shared_ptr<StatusHosts> hosts; ///< also its items'
    Subscription answers;
};

} // namespace lumenvale
