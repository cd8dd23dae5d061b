// SPDX-License-Identifier: MIT
#include "ui/settings/DisconnectedRow.h"

#include "ui/look/Labels.h"

#include <QHBoxLayout>

namespace lumenvale {

DisconnectedRow::DisconnectedRow()
    : title(new ElidedLabel(TextRole::body, TextColour::secondary)),
      value(new ElidedLabel(TextRole::digits, TextColour::secondary))
{
    auto* line = new QHBoxLayout(this);
    line->setContentsMargins(0, 6, 0, 6);
    line->setSpacing(6);
    line->addWidget(new SymbolLabel("display", 16, TextColour::secondary));
    line->addWidget(title, 1);
    value->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    line->addWidget(value);
}

void DisconnectedRow::show(const QString& name, const QString& level)
{
    title->setText(name);
    value->setText(level);
    QWidget::show();
}

} // namespace lumenvale
