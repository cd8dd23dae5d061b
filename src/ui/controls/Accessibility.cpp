// SPDX-License-Identifier: MIT
#include "ui/controls/Accessibility.h"

#include <QVariant>

namespace lumenvale {

namespace {

constexpr char roleProperty[] = "accessibleRole"; // a widget's

QAccessibleInterface* makeWithRole(const QString&, QObject* object)
{
    const QVariant role = object->property(roleProperty);
    if (!role.isValid() || !object->isWidgetType())
        return nullptr;
    return new QAccessibleWidget(static_cast<QWidget*>(object), static_cast<QAccessible::Role>(role.toInt()));
}

} // namespace

void setAccessibleRole(QWidget& widget, QAccessible::Role role)
{
    static const bool installed = [] {
        QAccessible::installFactory(makeWithRole);
        return true;
    }();
    static_cast<void>(installed);
    widget.setProperty(roleProperty, static_cast<int>(role));
}

AccessibleButton::AccessibleButton(QAbstractButton* button, QAccessible::Role role)
    : QAccessibleWidget(button, role)
{
}

QStringList AccessibleButton::actionNames() const
{
    QStringList names = QAccessibleWidget::actionNames();
    if (button()->isEnabled())
        names.prepend(pressAction());
    return names;
}

void AccessibleButton::doAction(const QString& name)
{
    if (name == pressAction())
        button()->click();
    else
        QAccessibleWidget::doAction(name);
}

} // namespace lumenvale
