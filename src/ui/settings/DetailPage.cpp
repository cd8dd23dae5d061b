// SPDX-License-Identifier: MIT
#include "ui/settings/DetailPage.h"

#include "ui/controls/Layouts.h"

namespace lumenvale {

DetailPage::DetailPage(int spacing) : ScrollPage(new QWidget) { makeColumn(widget(), spacing); }

QVBoxLayout* DetailPage::column() const { return static_cast<QVBoxLayout*>(widget()->layout()); }

void DetailPage::resizeEvent(QResizeEvent* event)
{
    const bool isNarrow = width() < narrowWidth;
    const int side = isNarrow ? 12 : 22;
    column()->setContentsMargins(side, 18, side, 18);
    setNarrow(isNarrow);
    ScrollPage::resizeEvent(event);
}

} // namespace lumenvale
