// SPDX-License-Identifier: MIT
#include "platform/linux/tray/LinuxStatusBar.h"

#include "platform/linux/tray/StatusNotifierItem.h"
#include "platform/linux/tray/TrayIcon.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QGuiApplication>
#include <QPalette>
#include <optional>
#include <utility>

namespace lumenvale {

namespace {

/// The shell of GNOME has a dark bar in every theme, and XFCE's starts with one; others colour it as they colour
/// windows. A guess: nothing asks for less than an image that can be seen on the other kind too.
bool isBarDark()
{
    const QString desktop = qEnvironmentVariable("XDG_CURRENT_DESKTOP");
    return desktop.contains("GNOME") || desktop.contains("Unity") || desktop.contains("XFCE") ||
           QGuiApplication::palette().windowText().color().lightness() > 127;
}

class LinuxStatusItem final : public QObject, public StatusItem {
    Q_OBJECT

public:
    LinuxStatusItem(const QDBusConnection& bus, const QString& identifier, StatusItemContent content)
        : bus(bus), identifier(identifier), content(std::move(content)),
          owners(watcherService, bus, QDBusServiceWatcher::WatchForOwnerChange)
    {
        QObject::connect(&owners, &QDBusServiceWatcher::serviceOwnerChanged, this, [this] { lookForHost(); });
        for (const char* signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"})
            this->bus.connect(watcherService, watcherPath, watcherService, signal, this, SLOT(lookForHost()));
        qApp->installEventFilter(this);
        lookForHost();
    }

    std::optional<Rect> frame() const override
    {
        if (notifier)
            return notifier->frame();
        return tray ? tray->frame() : std::nullopt;
    }

    void menuChanged() override
    {
        if (notifier)
            notifier->menuChanged();
        if (tray)
            tray->menuChanged();
    }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::ApplicationPaletteChange) {
            if (notifier)
                notifier->imageChanged();
            if (tray)
                tray->imageChanged(isBarDark());
        }
        return false;
    }

private Q_SLOTS:
    /// Asks the watcher whether a host shows its items.
    void lookForHost()
    {
        if (!bus.isConnected()) {
            use(false);
            return;
        }
        auto call =
            QDBusMessage::createMethodCall(watcherService, watcherPath, "org.freedesktop.DBus.Properties", "Get");
        call << QString(watcherService) << QString("IsStatusNotifierHostRegistered");
        call.setAutoStartService(false);
        answer.emplace(bus.asyncCall(call));
        QObject::connect(&*answer, &QDBusPendingCallWatcher::finished, this, [this] {
            const QDBusPendingReply<QDBusVariant> reply = *answer;
            use(reply.isValid() && reply.value().variant().toBool());
        });
    }

private:
    void use(bool hasHost)
    {
        if (hasHost) {
            tray.reset();
            if (!notifier)
                notifier.emplace(bus, content, identifier, isBarDark);
            notifier->registerWithWatcher();
        } else {
            notifier.reset();
            if (!tray && QGuiApplication::platformName() == "xcb")
                tray.emplace(content, isBarDark());
        }
    }

    QDBusConnection bus;
    QString identifier;
    StatusItemContent content;
    QDBusServiceWatcher owners;
    std::optional<QDBusPendingCallWatcher> answer;
    std::optional<StatusNotifierItem> notifier;
    std::optional<TrayIcon> tray;
};

} // namespace

LinuxStatusBar::LinuxStatusBar(QDBusConnection bus, QString identifier)
    : bus(std::move(bus)), identifier(std::move(identifier))
{
}

std::unique_ptr<StatusItem> LinuxStatusBar::createItem(StatusItemContent content)
{
    return std::make_unique<LinuxStatusItem>(bus, identifier, std::move(content));
}

} // namespace lumenvale

#include "LinuxStatusBar.moc"
