// SPDX-License-Identifier: MIT
#include "ui/BrightnessPanel.h"

#include <QKeyEvent>

namespace lumenvale {

bool BrightnessPanel::event(QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        const bool isTab = key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab;
        if (isTab && key.modifiers().testFlag(Qt::MetaModifier))
            return false; // the base class lets only Control and Alt pass
    }
    return QWidget::event(event);
}

} // namespace lumenvale
