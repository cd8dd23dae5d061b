// SPDX-License-Identifier: MIT
#include "ui/panel/PresetRowAccessible.h"

#include "ui/panel/PresetRow.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace lumenvale {

namespace {

class PresetRowAccessible final : public QAccessibleWidget {
public:
    explicit PresetRowAccessible(PresetRow* row) : QAccessibleWidget(row, QAccessible::Button) {}

    QString text(QAccessible::Text kind) const override
    {
        // Not the base class's description, which is the tooltip where there is none.
        return kind == QAccessible::Value ? row()->accessibleDescription() : QAccessibleWidget::text(kind);
    }
    QStringList actionNames() const override
    {
        QStringList names = QAccessibleWidget::actionNames();
        if (row()->isEnabled())
            names.prepend(pressAction());
        return names;
    }
    void doAction(const QString& name) override
    {
        if (name == pressAction())
            row()->click();
        else
            QAccessibleWidget::doAction(name);
    }

private:
    PresetRow* row() const { return static_cast<PresetRow*>(object()); }
};

QAccessibleInterface* makeAccessible(const QString&, QObject* object)
{
    auto* row = qobject_cast<PresetRow*>(object);
    return row ? new PresetRowAccessible(row) : nullptr;
}

} // namespace

void installPresetRowAccessibility()
{
    static const bool installed = [] {
        QAccessible::installFactory(makeAccessible);
        return true;
    }();
    static_cast<void>(installed);
}

} // namespace lumenvale
