// SPDX-License-Identifier: MIT
// A status item on the session bus (org.kde.StatusNotifierItem, as all hosts speak it), drawn by the status
// bar's own process. Main thread only.
#pragma once

#include "platform/Shell.h"
#include "platform/linux/tray/DBusMenuTypes.h"
#include "platform/linux/tray/TrayIcon.h"

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QObject>
#include <functional>
#include <optional>

namespace lumenvale {

class DBusMenu;

constexpr char watcherService[] = "org.kde.StatusNotifierWatcher";
constexpr char watcherPath[] = "/StatusNotifierWatcher";

/// Exported as long as it exists; a watcher has to be told of it by `registerWithWatcher`.
class StatusNotifierItem final : public QObject {
    Q_OBJECT

public:
    /// Whether the image is drawn light, for a dark bar.
    using IsBarDark = std::function<bool()>;

    StatusNotifierItem(const QDBusConnection& bus, const StatusItemContent& content, const QString& identifier,
                       IsBarDark isBarDark);
    ~StatusNotifierItem() override;

    /// Announces the item to the watcher that owns its name now.
    void registerWithWatcher();
    void menuChanged();
    void imageChanged();
    /// Where the item was last clicked: across the bar where the bar is known, else a point. Device-independent.
    std::optional<Rect> frame() const { return lastFrame; }

    // What the adaptor passes on.
    const StatusItemContent& shown() const { return content; }
    QString iconName() const;
    QList<DBusImage> images() const;
    void activate(int x, int y);
    void scroll(int delta, const QString& orientation);

    static constexpr char objectPath[] = "/StatusNotifierItem";
    static constexpr char menuPath[] = "/StatusNotifierItem/Menu";
    const QString identifier;

private:
    QDBusConnection bus;
    StatusItemContent content;
    IsBarDark isBarDark;
    QString serviceName;
    QObject menuObject;
    DBusMenu* menu = nullptr; // child of menuObject
    std::optional<Rect> lastFrame;
    WheelSteps wheel;
};

/// The D-Bus face of a StatusNotifierItem, which owns it.
class StatusNotifierItemAdaptor final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category)
    Q_PROPERTY(QString Id READ id)
    Q_PROPERTY(QString Title READ title)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(int WindowId READ windowId)
    Q_PROPERTY(QString IconName READ iconName)
    Q_PROPERTY(QList<lumenvale::DBusImage> IconPixmap READ iconPixmap)
    Q_PROPERTY(QString OverlayIconName READ noName)
    Q_PROPERTY(QList<lumenvale::DBusImage> OverlayIconPixmap READ noImages)
    Q_PROPERTY(QString AttentionIconName READ noName)
    Q_PROPERTY(QList<lumenvale::DBusImage> AttentionIconPixmap READ noImages)
    Q_PROPERTY(QString AttentionMovieName READ noName)
    Q_PROPERTY(lumenvale::DBusToolTip ToolTip READ toolTip)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu)
    Q_PROPERTY(QDBusObjectPath Menu READ menu)

public:
    explicit StatusNotifierItemAdaptor(StatusNotifierItem* parent);

    QString category() const { return "Hardware"; }
    QString id() const { return item.identifier; }
    QString title() const;
    QString status() const { return "Active"; }
    int windowId() const { return 0; }
    QString iconName() const { return item.iconName(); }
    QList<DBusImage> iconPixmap() const { return item.images(); }
    QString noName() const { return {}; }
    QList<DBusImage> noImages() const { return {}; }
    DBusToolTip toolTip() const;
    bool itemIsMenu() const { return false; }
    QDBusObjectPath menu() const { return QDBusObjectPath(StatusNotifierItem::menuPath); }

    // NOLINTBEGIN(readability-identifier-naming): the interface names them
public Q_SLOTS:
    void Activate(int x, int y) { item.activate(x, y); }
    void SecondaryActivate(int x, int y) { item.activate(x, y); }
    /// Only called by hosts that cannot show the menu from the bus; those get the panel.
    void ContextMenu(int x, int y) { item.activate(x, y); }
    void Scroll(int delta, const QString& orientation) { item.scroll(delta, orientation); }
    void ProvideXdgActivationToken(const QString& token);

Q_SIGNALS:
    void NewTitle();
    void NewIcon();
    void NewAttentionIcon();
    void NewOverlayIcon();
    void NewToolTip();
    void NewStatus(const QString& status);
    void NewMenu();
    // NOLINTEND(readability-identifier-naming)

private:
    StatusNotifierItem& item;
};

} // namespace lumenvale
