// SPDX-License-Identifier: MIT
// The list at the left of a settings page: two lines and a symbol for each item, found again by key. Can let the
// user move items, by dragging or with Alt and an arrow key.
#pragma once

#include <QListWidget>
#include <functional>
#include <optional>
#include <vector>

namespace lumenvale {

struct SidebarItem {
    QString key;
    QString title;
    QString detail;
    QString symbol; ///< may be empty
};

class Sidebar final : public QListWidget {
    Q_OBJECT

public:
    Sidebar(const QString& label, bool canMove);

    /// Shows the items; `selected` is the key of the selected one, if any. Calls nothing.
    void show(const std::vector<SidebarItem>& items, const std::optional<QString>& selected);

    std::function<void(const QString& key)> onSelect;
    /// The user wants the item at `source` before the item at `destination` of the present list.
    std::function<void(int source, int destination)> onMove;

    static constexpr int width = 216;
    static constexpr int narrowWidth = 160; ///< in a small window

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void startDrag(Qt::DropActions actions) override;
    void dropEvent(QDropEvent* event) override;

private:
    void keepSelection();

    bool isShowing = false;
    QString draggedKey;
};

} // namespace lumenvale
