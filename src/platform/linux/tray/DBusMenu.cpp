// SPDX-License-Identifier: MIT
#include "platform/linux/tray/DBusMenu.h"

#include <QGuiApplication>
#include <utility>

namespace lumenvale {

namespace {

constexpr int rootId = 0;
constexpr char checkedSuffix[] = " checked";

QString label(const std::string& title)
{
    return QString::fromStdString(title).replace('_', "__"); // a single one marks a mnemonic
}

QVariantMap properties(const MenuEntry& entry)
{
    if (entry.id.empty())
        return {{"type", "separator"}};
    QVariantMap all = {{"label", label(entry.title)}};
    if (entry.isChecked) {                // an empty check box would look like something to switch on
        all["toggle-type"] = "checkmark"; // LXQt's themes have no picture for round marks
        all["toggle-state"] = 1;
    }
    return all;
}

/// Hosts take a row's kind of mark as they first see it: with and without one it is another row to them.
std::string numberedName(const MenuEntry& entry) { return entry.isChecked ? entry.id + checkedSuffix : entry.id; }

QVariantMap selected(QVariantMap all, const QStringList& names)
{
    if (!names.isEmpty())
        all.removeIf([&names](const QVariantMap::iterator& each) { return !names.contains(each.key()); });
    return all;
}

} // namespace

DBusMenu::DBusMenu(QObject* parent, std::function<Menu()> menu, std::function<void()> opened)
    : QDBusAbstractAdaptor(parent), source(std::move(menu)), opened(std::move(opened))
{
    registerDBusMenuTypes();
}

QString DBusMenu::textDirection() const { return QGuiApplication::isRightToLeft() ? "rtl" : "ltr"; }

void DBusMenu::announceChange()
{
    ++revision;
    // Of the rows that they have already, some hosts read only this.
    Q_EMIT ItemsPropertiesUpdated(GetGroupProperties({}, {}), {});
    Q_EMIT LayoutUpdated(revision, rootId);
}

int DBusMenu::numberOf(const std::string& entryId)
{
    return numbers.emplace(entryId, int(numbers.size()) + 1).first->second;
}

std::optional<MenuEntry> DBusMenu::entryWithNumber(int id)
{
    for (const MenuEntry& each : source()) {
        if (!each.id.empty() && (numberOf(each.id) == id || numberOf(each.id + checkedSuffix) == id))
            return each;
    }
    return std::nullopt;
}

uint DBusMenu::GetLayout(int parentId, int recursionDepth, const QStringList& propertyNames,
                         DBusMenuLayout& layout)
{
    layout.id = parentId;
    if (parentId != rootId) {
        if (const auto entry = entryWithNumber(parentId))
            layout.properties = selected(properties(*entry), propertyNames);
        return revision;
    }
    layout.properties = selected({{"children-display", "submenu"}}, propertyNames);
    if (recursionDepth == 0)
        return revision;
    int separators = 0;
    for (const MenuEntry& each : source()) {
        const std::string id = each.id.empty() ? "separator " + std::to_string(++separators) : numberedName(each);
        const DBusMenuLayout row = {numberOf(id), selected(properties(each), propertyNames), {}};
        layout.children.append(QDBusVariant(QVariant::fromValue(row)));
    }
    return revision;
}

QList<DBusMenuItem> DBusMenu::GetGroupProperties(const QList<int>& ids, const QStringList& propertyNames)
{
    QList<DBusMenuItem> items;
    if (ids.isEmpty() || ids.contains(rootId))
        items.append({rootId, selected({{"children-display", "submenu"}}, propertyNames)});
    int separators = 0;
    for (const MenuEntry& each : source()) {
        const int id =
            numberOf(each.id.empty() ? "separator " + std::to_string(++separators) : numberedName(each));
        if (ids.isEmpty() || ids.contains(id))
            items.append({id, selected(properties(each), propertyNames)});
    }
    return items;
}

QDBusVariant DBusMenu::GetProperty(int id, const QString& name)
{
    const auto entry = entryWithNumber(id);
    return QDBusVariant(entry ? properties(*entry).value(name, QString()) : QString());
}

void DBusMenu::Event(int id, const QString& event, const QDBusVariant&, uint)
{
    if (id == rootId && event == "opened")
        opened();
    const auto entry = event == "clicked" ? entryWithNumber(id) : std::nullopt;
    if (entry && entry->action)
        entry->action();
}

QList<int> DBusMenu::EventGroup(const QList<DBusMenuEvent>& events)
{
    QList<int> unknown;
    for (const DBusMenuEvent& each : events) {
        if (each.id != rootId && !entryWithNumber(each.id))
            unknown.append(each.id);
        else
            Event(each.id, each.event, each.data, each.timestamp);
    }
    return unknown;
}

bool DBusMenu::AboutToShow(int id)
{
    if (id == rootId)
        opened();
    return false; // every change has been announced
}

QList<int> DBusMenu::AboutToShowGroup(const QList<int>& ids, QList<int>& idErrors)
{
    idErrors.clear();
    for (const int id : ids)
        AboutToShow(id);
    return {};
}

} // namespace lumenvale

#include "moc_DBusMenu.cpp"
