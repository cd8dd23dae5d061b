// SPDX-License-Identifier: MIT
// org.freedesktop.Application (Desktop Entry Specification 1.5, "D-Bus Activation"): how launchers, scripts and
// notifications talk to the program that runs. An adaptor of the object at the program's path; main thread.
#pragma once

#include "platform/Shell.h"

#include <QDBusAbstractAdaptor>
#include <QVariantMap>

namespace lumenvale {

class ApplicationAdaptor final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    ApplicationAdaptor(QObject* parent, const DockContent& called);

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

} // namespace lumenvale
