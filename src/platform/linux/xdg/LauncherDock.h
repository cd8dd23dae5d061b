// SPDX-License-Identifier: MIT
// The desktop's launcher as the program's Dock: org.freedesktop.Application on the session bus, and an entry
// among the applications whose actions are the Dock menu. Made by the shell's factory; main thread only.
#pragma once

#include "platform/Shell.h"
#include "platform/linux/xdg/LauncherEntry.h"

#include <QDBusConnection>
#include <QObject>

namespace lumenvale {

class LauncherDock final : public Dock {
public:
    /// `isTemporary`: the entry goes with the program.
    LauncherDock(QDBusConnection bus, ProgramIdentity identity, LauncherEntry entry, bool isTemporary);
    ~LauncherDock() override;

    void setContent(DockContent content) override;
    void setActivationPolicy(ActivationPolicy policy) override;
    void menuChanged() override;
    void cancelTracking() override {} // launchers show their menus themselves

private:
    QDBusConnection bus;
    ProgramIdentity identity;
    LauncherEntry entry;
    bool isTemporary;
    DockContent content;
    bool isShown = false;
    QObject object;
};

} // namespace lumenvale
