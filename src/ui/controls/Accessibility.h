// SPDX-License-Identifier: MIT
// How a control of our own tells Qt what screen readers are to see of it.
#pragma once

#include <QAccessible>
#include <QAccessibleWidget>

namespace lumenvale {

/// Makes a `Side` for every `Widget` that a screen reader asks for. `Widget` needs Q_OBJECT; a second call does
/// nothing.
template <typename Widget, typename Side>
void installAccessible()
{
    static const bool installed = [] {
        QAccessible::installFactory([](const QString&, QObject* object) -> QAccessibleInterface* {
            auto* widget = qobject_cast<Widget*>(object);
            return widget ? new Side(widget) : nullptr;
        });
        return true;
    }();
    static_cast<void>(installed);
}

} // namespace lumenvale
