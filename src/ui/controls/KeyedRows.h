// SPDX-License-Identifier: MIT
// A column of rows, kept by identifier: a row stays the same widget as long as its identifier is in the list,
// wherever it moves. The column is hidden while it has no rows.
#pragma once

#include "ui/look/KeyboardFocus.h"

#include <QVBoxLayout>
#include <QWidget>
#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

namespace lumenvale {

template <typename Identifier, typename Row>
class KeyedRows final : public QWidget {
public:
    using Make = std::function<Row*(const Identifier&)>;

    /// `spacing` lies between two rows; `make` makes the row of an identifier that is new to the list.
    KeyedRows(int spacing, Make make) : layout(new QVBoxLayout(this)), make(std::move(make))
    {
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(spacing);
    }

    /// Brings the rows into the order of `items`, whose identifiers `key` tells, and calls `update(row, item)` for
    /// each. Returns whether any came, went or moved.
    template <typename Item, typename Key, typename Update>
    bool assign(const std::vector<Item>& items, Key key, Update update)
    {
        const bool isRearranged = !std::ranges::equal(rows, items, {}, &Entry::first, key);
        if (isRearranged)
            arrange(items, key);
        for (std::size_t i = 0; i < rows.size(); ++i)
            update(*rows[i].second, items[i]);
        setVisible(!rows.empty());
        return isRearranged;
    }

private:
    using Entry = std::pair<Identifier, Row*>;

    template <typename Item, typename Key>
    void arrange(const std::vector<Item>& items, Key key)
    {
        std::vector<Entry> next;
        for (const Item& item : items) {
            const Identifier& identifier = std::invoke(key, item);
            const auto kept = std::ranges::find(rows, identifier, &Entry::first);
            next.emplace_back(identifier, kept == rows.end() ? make(identifier) : kept->second);
            if (kept != rows.end())
                rows.erase(kept);
        }
        for (const auto& [identifier, row] : rows) {
            passFocus(*row, *window());
            row->hide();
            row->deleteLater(); // it may be calling us
        }
        rows = std::move(next);
        for (std::size_t i = 0; i < rows.size(); ++i) {
            const int position = static_cast<int>(i);
            if (layout->indexOf(rows[i].second) != position)
                layout->insertWidget(position, rows[i].second);
            rows[i].second->setVisible(true); // else the layout would only do so on the loop's next turn
        }
        orderTabs(*window());
    }

    QVBoxLayout* layout;
    Make make;
    std::vector<Entry> rows;
};

} // namespace lumenvale
