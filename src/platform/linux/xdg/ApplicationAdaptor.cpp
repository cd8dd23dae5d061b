// SPDX-License-Identifier: MIT
#include "platform/linux/xdg/ApplicationAdaptor.h"

namespace lumenvale {

namespace {

void keepActivationToken(const QVariantMap& platformData)
{
    const QByteArray token = platformData.value("activation-token").toString().toUtf8();
    if (!token.isEmpty())
        qputenv("XDG_ACTIVATION_TOKEN", token); // where the toolkit looks for it
}

} // namespace

ApplicationAdaptor::ApplicationAdaptor(QObject* parent, const DockContent& called)
    : QDBusAbstractAdaptor(parent), content(called)
{
}

void ApplicationAdaptor::Activate(const QVariantMap& platformData)
{
    keepActivationToken(platformData);
    if (content.reopen)
        content.reopen();
}

void ApplicationAdaptor::Open(const QStringList&, const QVariantMap& platformData) { Activate(platformData); }

void ApplicationAdaptor::ActivateAction(const QString& action, const QVariantList&,
                                        const QVariantMap& platformData)
{
    if (!content.menu)
        return;
    keepActivationToken(platformData);
    for (const MenuEntry& each : content.menu()) {
        if (!each.id.empty() && each.id == action.toStdString()) {
            each.action();
            return;
        }
    }
}

} // namespace lumenvale
