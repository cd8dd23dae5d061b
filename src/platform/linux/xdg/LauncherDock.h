// SPDX-License-Identifier: MIT
// The desktop's launcher as the program's Dock: org.freedesktop.Application on the session bus, and an entry
// among the applications whose actions are the Dock menu. Made by the shell's factory; main thread only.
#pragma once

#include "platform/Shell.h"
#include "platform/linux/xdg/LauncherEntry.h"

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QObject>
#include <QTimer>
#include <QVariantMap>

namespace lumenvale {

/// org.freedesktop.Application (Desktop Entry Specification 1.5, "D-Bus Activation"): how launchers, scripts and
/// notifications talk to the program that runs. An adaptor of the object at the program's path.
class ApplicationAdaptor final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    ApplicationAdaptor(QObject* parent, const DockContent& content);

    // NOLINTBEGIN(readability-identifier-naming): the interface names them
public Q_SLOTS:
    void Activate(const QVariantMap& platformData);
    /// The program opens no documents; it comes up as when it is activated.
    void Open(const QStringList& uris, const QVariantMap& platformData);
    /// `action` is the identifier of a row of the Dock menu; others are ignored.
    void ActivateAction(const QString& action, const QVariantList& parameter, const QVariantMap& platformData);
    // NOLINTEND(readability-identifier-naming)

private:
    const DockContent& content;
};

class LauncherDock final : public Dock {
public:
    /// `isTemporary`: the entry goes with the program.
    LauncherDock(const QDBusConnection& bus, const ProgramIdentity& identity, LauncherEntry entry,
                 bool isTemporary);
    ~LauncherDock() override;

    void setContent(DockContent newContent) override;
    void setActivationPolicy(ActivationPolicy policy) override;
    void menuChanged() override;
    void cancelTracking() override {} // launchers show their menus themselves

private:
    void writeEntry();

    QDBusConnection bus;
    ProgramIdentity identity;
    LauncherEntry entry;
    bool isTemporary;
    DockContent content;
    bool isShown = false;
    QTimer writeLater; ///< while a name is typed
    QObject object;
};

} // namespace lumenvale
