// SPDX-License-Identifier: MIT
#include "ui/look/TabOrder.h"

#include <QLayout>
#include <QScrollArea>
#include <QWidget>
#include <vector>

namespace lumenvale {

namespace {

void collect(QWidget& widget, std::vector<QWidget*>& controls);

void collect(const QLayout& layout, std::vector<QWidget*>& controls)
{
    for (int i = 0; i < layout.count(); ++i) {
        QLayoutItem* const item = layout.itemAt(i);
        if (QWidget* const widget = item->widget())
            collect(*widget, controls);
        else if (const QLayout* const inner = item->layout())
            collect(*inner, controls);
    }
}

void collect(QWidget& widget, std::vector<QWidget*>& controls)
{
    if ((widget.focusPolicy() & Qt::TabFocus) != 0)
        controls.push_back(&widget);
    if (const auto* area = qobject_cast<const QScrollArea*>(&widget); area && area->widget())
        collect(*area->widget(), controls);
    else if (const QLayout* const layout = widget.layout())
        collect(*layout, controls);
}

} // namespace

void orderTabs(QWidget& root)
{
    // The root goes first. The toolkit leaves alone what takes no focus, so for once it does.
    const Qt::FocusPolicy policy = root.focusPolicy();
    root.setFocusPolicy(Qt::TabFocus);
    std::vector<QWidget*> controls = {&root};
    if (const QLayout* const layout = root.layout())
        collect(*layout, controls);
    for (std::size_t i = 1; i < controls.size(); ++i)
        QWidget::setTabOrder(controls[i - 1], controls[i]);
    root.setFocusPolicy(policy);
}

} // namespace lumenvale
