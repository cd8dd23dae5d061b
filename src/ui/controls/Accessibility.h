// SPDX-License-Identifier: MIT
// What screen readers see of widgets that Qt itself has no words for.
#pragma once

#include <QAbstractButton>
#include <QAccessible>
#include <QAccessibleWidget>

namespace lumenvale {

/// Makes the widget be seen in this role, for example as a window or as a list of tabs. To be called before
/// anything else about it is told to screen readers, its name included.
void setAccessibleRole(QWidget& widget, QAccessible::Role role);

/// A button that is no push button. It can be pressed.
class AccessibleButton : public QAccessibleWidget {
public:
    AccessibleButton(QAbstractButton* button, QAccessible::Role role);

    QStringList actionNames() const override;
    void doAction(const QString& name) override;

protected:
    QAbstractButton* button() const { return static_cast<QAbstractButton*>(object()); }
};

/// Makes a `Side` for every `Widget` that a screen reader asks for; a second call does nothing.
template <typename Widget, typename Side>
void installAccessible()
{
    static const bool installed = [] {
        QAccessible::installFactory([](const QString&, QObject* object) -> QAccessibleInterface* {
            auto* widget = dynamic_cast<Widget*>(object); // not every widget has Qt's own type information
            return widget ? new Side(widget) : nullptr;
        });
        return true;
    }();
    static_cast<void>(installed);
}

} // namespace lumenvale
