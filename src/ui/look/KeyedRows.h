// SPDX-License-Identifier: MIT
// Rows of a list, kept by identifier: a row stays the same widget as long as its identifier is in the list,
// wherever it moves.
#pragma once

#include "ui/look/TabOrder.h"

#include <QBoxLayout>
#include <QWidget>
#include <algorithm>
#include <utility>
#include <vector>

namespace lumenvale {

template <typename Identifier, typename Row>
class KeyedRows {
public:
    explicit KeyedRows(QBoxLayout* target) : layout(target) {}

    /// Brings the rows into the order of `identifiers`. `make(identifier)` makes a missing row; `update(row,
    /// index)` is then called for each. Returns whether any came, went or moved.
    template <typename Make, typename Update>
    bool assign(const std::vector<Identifier>& identifiers, Make make, Update update)
    {
        const bool isRearranged = !std::ranges::equal(rows, identifiers, {}, &Entry::first);
        if (isRearranged)
            arrange(identifiers, make);
        for (std::size_t i = 0; i < rows.size(); ++i)
            update(*rows[i].second, i);
        return isRearranged;
    }

private:
    using Entry = std::pair<Identifier, Row*>;

    template <typename Make>
    void arrange(const std::vector<Identifier>& identifiers, Make make)
    {
        std::vector<Entry> next;
        for (const Identifier& identifier : identifiers) {
            const auto kept =
                std::find_if(rows.begin(), rows.end(), [&](const auto& each) { return each.first == identifier; });
            next.emplace_back(identifier, kept == rows.end() ? make(identifier) : kept->second);
            if (kept != rows.end())
                rows.erase(kept);
        }
        for (const auto& [identifier, row] : rows) {
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
        orderTabs(*layout->parentWidget()->window());
    }

    QBoxLayout* layout;
    std::vector<Entry> rows;
};

} // namespace lumenvale
