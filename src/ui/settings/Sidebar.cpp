// SPDX-License-Identifier: MIT
#include "ui/settings/Sidebar.h"

#include "ui/controls/Labels.h"
#include "ui/controls/ScrollPage.h"
#include "ui/look/KeyboardFocus.h"
#include "ui/look/Painting.h"
#include "ui/look/Symbols.h"

#include <QDropEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QStyledItemDelegate>
#include <algorithm>

namespace lumenvale {

namespace {

constexpr int itemHeight = 40;
constexpr int inset = 8;
constexpr int padding = 10;
constexpr int symbolSize = 16;
constexpr double selectionRadius = 7;

enum Role { keyRole = Qt::UserRole, detailRole, symbolRole };

class ItemDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override
    {
        return {100, itemHeight + 2};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        const Theme theme = Theme::of(option.palette);
        const bool selected = option.state.testFlag(QStyle::State_Selected);
        const QRectF box = QRectF(option.rect).adjusted(inset, 1, -inset, -1);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        if (selected) {
            painter->setPen(Qt::NoPen);
            painter->setBrush(theme.accent);
            painter->drawRoundedRect(box, selectionRadius, selectionRadius);
        }
        const bool focused = option.state.testFlag(QStyle::State_HasFocus) && showsFocus(*option.widget);
        if (focused)
            drawFocusRing(*painter, box, selectionRadius, theme);
        if (focused && selected) {
            painter->setPen(QPen(theme.accentText, 1.5));
            painter->setBrush(Qt::NoBrush);
            painter->drawRoundedRect(box.adjusted(2.5, 2.5, -2.5, -2.5), selectionRadius - 2, selectionRadius - 2);
        }
        paintText(*painter, box, option.direction, index, selected ? theme.accentText : theme.text,
                  selected ? theme.accentText : theme.secondary);
        painter->restore();
    }

private:
    static void paintText(QPainter& painter, const QRectF& box, Qt::LayoutDirection direction,
                          const QModelIndex& index, const QColor& primary, const QColor& secondary)
    {
        QRect inner = box.toRect().adjusted(padding, 4, -padding, -4);
        const QString symbol = index.data(symbolRole).toString();
        if (!symbol.isEmpty()) {
            const QRect place(inner.left(), box.toRect().center().y() - symbolSize / 2, symbolSize, symbolSize);
            drawSymbol(painter, symbol, QStyle::visualRect(direction, inner, place), primary);
            inner = QStyle::visualRect(direction, inner, inner.adjusted(symbolSize + 8, 0, 0, 0));
        }
        const auto line = [&](const QRect& place, TextRole role, const QColor& colour, const QString& text) {
            painter.setFont(fontFor(role));
            painter.setPen(colour);
            drawElidedText(painter, place, text, direction);
        };
        const int middle = inner.top() + inner.height() * 11 / 20;
        line(QRect(inner.topLeft(), QPoint(inner.right(), middle)), TextRole::body, primary,
             index.data().toString());
        line(QRect(QPoint(inner.left(), middle), inner.bottomRight()), TextRole::caption, secondary,
             index.data(detailRole).toString());
    }
};

} // namespace

Sidebar::Sidebar(const QString& label, bool canMove)
{
    trackFocus();
    setAccessibleName(label);
    setItemDelegate(new ItemDelegate(this));
    setFrameShape(QFrame::NoFrame);
    setMinimumWidth(120);
    setUniformItemSizes(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBar(new ScrollBar);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setViewportMargins(0, 7, 0, 7);
    viewport()->setAutoFillBackground(false);
    setSelectionMode(QAbstractItemView::SingleSelection);
    if (canMove) {
        setDragDropMode(QAbstractItemView::InternalMove);
        setDefaultDropAction(Qt::MoveAction);
        setDropIndicatorShown(true);
    }
    // Not its current item: a list that gets the focus makes its first item the current one by itself.
    connect(this, &QListWidget::itemSelectionChanged, this, [this] {
        const QList<QListWidgetItem*> chosen = selectedItems();
        if (isShowing)
            return;
        if (chosen.isEmpty())
            keepSelection();
        else if (onSelect)
            onSelect(chosen.front()->data(keyRole).toString());
    });
}

/// A click beside the items takes the selection away, while the page goes on showing the item.
void Sidebar::keepSelection()
{
    isShowing = true;
    if (currentItem())
        currentItem()->setSelected(true);
    isShowing = false;
}

void Sidebar::show(const std::vector<SidebarItem>& items, const std::optional<QString>& selected)
{
    isShowing = true;
    while (count() > static_cast<int>(items.size()))
        delete takeItem(count() - 1);
    while (count() < static_cast<int>(items.size()))
        addItem(QString());
    int current = -1;
    for (std::size_t i = 0; i < items.size(); ++i) {
        const SidebarItem& shownItem = items[i];
        QListWidgetItem* row = item(static_cast<int>(i));
        row->setText(shownItem.title);
        row->setData(keyRole, shownItem.key);
        row->setData(detailRole, shownItem.detail);
        row->setData(symbolRole, shownItem.symbol);
        row->setData(Qt::AccessibleTextRole, QString(shownItem.title + ", " + shownItem.detail));
        row->setToolTip(toolTipText(shownItem.title));
        if (selected == shownItem.key)
            current = static_cast<int>(i);
    }
    if (current < 0)
        clearSelection();
    else if (current != currentRow() || !item(current)->isSelected())
        setCurrentRow(current);
    isShowing = false;
}

void Sidebar::keyPressEvent(QKeyEvent* event)
{
    const bool moves =
        event->modifiers().testFlag(Qt::AltModifier) && dragDropMode() == QAbstractItemView::InternalMove;
    const int row = currentRow();
    if (moves && event->key() == Qt::Key_Up && row > 0 && onMove)
        return onMove(row, row - 1);
    if (moves && event->key() == Qt::Key_Down && row >= 0 && row + 1 < count() && onMove)
        return onMove(row, row + 2);
    QListWidget::keyPressEvent(event);
}

void Sidebar::startDrag(Qt::DropActions actions)
{
    draggedKey = currentItem() ? currentItem()->data(keyRole).toString() : QString();
    QListWidget::startDrag(actions);
}

void Sidebar::dropEvent(QDropEvent* event)
{
    // The store moves the display, and the list follows it; it never moves its own items. While one is dragged it
    // may go, and others may move.
    int source = count() - 1;
    while (source >= 0 && item(source)->data(keyRole).toString() != draggedKey)
        --source;
    const QModelIndex target = indexAt(event->position().toPoint());
    int destination = target.isValid() ? target.row() : count();
    if (target.isValid() && event->position().y() > visualRect(target).center().y())
        ++destination;
    event->setDropAction(Qt::IgnoreAction);
    event->accept();
    if (event->source() == this && source >= 0 && onMove)
        onMove(source, destination);
}

} // namespace lumenvale

#include "moc_Sidebar.cpp"
