// SPDX-License-Identifier: MIT
// Rows of a list, kept by identifier: a row stays the same widget as long as its identifier is in the list,
// wherever it moves.
#pragma once

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
    /// index)` is then called for each.
    template <typename Make, typename Update>
    void assign(const std::vector<Identifier>& identifiers, Make make, Update update)
    {
        if (!std::ranges::equal(rows, identifiers, {}, &Entry::first))
            arrange(identifiers, make);
        for (std::size_t i = 0; i < rows.size(); ++i)
            update(*rows[i].second, i);
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
        }
        keepTabOrder();
    }

    /// The keyboard walks through the rows as they stand.
    void keepTabOrder()
    {
        for (std::size_t i = 1; i < rows.size(); ++i)
            QWidget::setTabOrder(lastFocusable(rows[i - 1].second), firstFocusable(rows[i].second));
    }
    static bool takesTab(const QWidget* widget) { return (widget->focusPolicy() & Qt::TabFocus) != 0; }
    static QWidget* firstFocusable(QWidget* row)
    {
        if (takesTab(row))
            return row;
        for (QWidget* child : row->template findChildren<QWidget*>()) {
            if (takesTab(child))
                return child;
        }
        return row;
    }
    static QWidget* lastFocusable(QWidget* row)
    {
        QWidget* last = row;
        for (QWidget* child : row->template findChildren<QWidget*>()) {
            if (takesTab(child))
                last = child;
        }
        return last;
    }

    QBoxLayout* layout;
    std::vector<Entry> rows;
};

} // namespace lumenvale
