// SPDX-License-Identifier: MIT
#include "platform/linux/tray/LinuxStatusBar.h"

#include "platform/linux/tray/StatusNotifierItem.h"
#include "platform/linux/tray/TrayIcon.h"
#include "platform/linux/x11/X11TrayWatch.h"

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

} // namespace

/// Whether a host on the session bus shows items: asked at once, and again when the watcher or a host comes or
/// goes. And whether the X server's tray does.
class StatusHosts final : public QObject {
    Q_OBJECT

public:
    explicit StatusHosts(const QDBusConnection& bus)
        : bus(bus), owners(watcherService, bus, QDBusServiceWatcher::WatchForOwnerChange)
    {
        QObject::connect(&owners, &QDBusServiceWatcher::serviceOwnerChanged, this, [this] { look(); });
        for (const char* signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"})
            this->bus.connect(watcherService, watcherPath, watcherService, signal, this, SLOT(look()));
        look();
    }

    std::optional<bool> showsItems() const { return hasHost.value_or(false) || trays.hasTray() ? true : hasHost; }

    std::optional<bool> hasHost; ///< none until the first answer
    Signal<> answered;           ///< also when the answer is the same: the watcher may be another one

private Q_SLOTS:
    void look()
    {
        if (!bus.isConnected()) {
            hasHost = false;
            return;
        }
        auto call =
            QDBusMessage::createMethodCall(watcherService, watcherPath, "org.freedesktop.DBus.Properties", "Get");
        call << QString(watcherService) << QString("IsStatusNotifierHostRegistered");
        call.setAutoStartService(false);
        answer.emplace(bus.asyncCall(call));
        QObject::connect(&*answer, &QDBusPendingCallWatcher::finished, this, [this] {
            const QDBusPendingReply<QDBusVariant> reply = *answer;
            hasHost = reply.isValid() && reply.value().variant().toBool();
            answered.emit();
        });
    }

private:
    QDBusConnection bus;
    QDBusServiceWatcher owners;
    std::optional<QDBusPendingCallWatcher> answer;
    X11TrayWatch trays{[this] {
        if (hasHost)
            answered.emit();
    }};
};

namespace {

class LinuxStatusItem final : public QObject, public StatusItem {
public:
    LinuxStatusItem(const QDBusConnection& bus, const QString& identifier, std::shared_ptr<StatusHosts> hosts,
                    StatusItemContent content)
        : bus(bus), identifier(identifier), content(std::move(content)), hosts(std::move(hosts)),
          answers(this->hosts->answered.subscribe([this] { show(); }))
    {
        qApp->installEventFilter(this);
        if (this->hosts->hasHost)
            show();
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

private:
    void show()
    {
        if (*hosts->hasHost) {
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
    std::shared_ptr<StatusHosts> hosts;
    Subscription answers;
    std::optional<StatusNotifierItem> notifier;
    std::optional<TrayIcon> tray;
};

} // namespace

LinuxStatusBar::LinuxStatusBar(const QDBusConnection& bus, QString identifier)
    : bus(bus), identifier(std::move(identifier)), hosts(std::make_shared<StatusHosts>(bus))
{
}

LinuxStatusBar::~LinuxStatusBar() = default;

std::unique_ptr<StatusItem> LinuxStatusBar::createItem(StatusItemContent content)
{
    return std::make_unique<LinuxStatusItem>(bus, identifier, hosts, std::move(content));
}

std::optional<bool> LinuxStatusBar::showsItems() { return hosts->showsItems(); }

void LinuxStatusBar::observe(std::function<void()> changed)
{
    answers = changed ? hosts->answered.subscribe(std::move(changed)) : Subscription();
}

} // namespace lumenvale

#include "LinuxStatusBar.moc"
