// SPDX-License-Identifier: MIT
// Offers a flat menu on the session bus in the form that status bars draw by themselves
// (com.canonical.dbusmenu, version 3). An adaptor of the object at the menu's path; main thread only.
#pragma once

#include "platform/Shell.h"
#include "platform/linux/tray/DBusMenuTypes.h"

#include <QDBusAbstractAdaptor>
#include <functional>
#include <map>
#include <optional>
#include <string>

namespace lumenvale {

class DBusMenu final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version)
    Q_PROPERTY(QString TextDirection READ textDirection)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath)

public:
    /// `opened` is called when a host opens the menu.
    DBusMenu(QObject* parent, std::function<Menu()> menu, std::function<void()> opened);

    uint version() const { return 3; }
    QString textDirection() const;
    QString status() const { return "normal"; }
    QStringList iconThemePath() const { return {}; }

    /// Tells the bus that the menu is another one now.
    void announceChange();

    // NOLINTBEGIN(readability-identifier-naming): the interface names them
public Q_SLOTS:
    uint GetLayout(int parentId, int recursionDepth, const QStringList& propertyNames,
                   lumenvale::DBusMenuLayout& layout);
    QList<lumenvale::DBusMenuItem> GetGroupProperties(const QList<int>& ids, const QStringList& propertyNames);
    QDBusVariant GetProperty(int id, const QString& name);
    void Event(int id, const QString& event, const QDBusVariant& data, uint timestamp);
    QList<int> EventGroup(const QList<lumenvale::DBusMenuEvent>& events);
    bool AboutToShow(int id);
    QList<int> AboutToShowGroup(const QList<int>& ids, QList<int>& idErrors);

Q_SIGNALS:
    void ItemsPropertiesUpdated(const QList<lumenvale::DBusMenuItem>& updated,
                                const QList<lumenvale::DBusMenuItemKeys>& removed);
    void LayoutUpdated(uint revision, int parent);
    void ItemActivationRequested(int id, uint timestamp);
    // NOLINTEND(readability-identifier-naming)

private:
    int numberOf(const std::string& entryId);
    std::optional<MenuEntry> entryWithNumber(int id);

    std::function<Menu()> source;
    std::function<void()> opened;
    uint revision = 1;
    /// Numbers stay with their rows, so that a click on a menu that has just changed does what the row said.
    std::map<std::string, int> numbers;
};

} // namespace lumenvale
