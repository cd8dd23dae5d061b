// SPDX-License-Identifier: MIT
#include "ui/controls/LevelSliderAccessible.h"

#include "ui/controls/LevelSlider.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace lumenvale {

namespace {

class LevelSliderAccessible final : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit LevelSliderAccessible(LevelSlider* slider) : QAccessibleWidget(slider, QAccessible::Slider) {}

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Value ? slider()->valueText() : QAccessibleWidget::text(kind);
    }

    QVariant currentValue() const override { return slider()->value(); }
    void setCurrentValue(const QVariant& value) override { slider()->request(value.toDouble()); }
    QVariant minimumValue() const override { return 0.0; }
    QVariant maximumValue() const override { return 1.0; }
    QVariant minimumStepSize() const override { return slider()->step(); }

private:
    LevelSlider* slider() const { return static_cast<LevelSlider*>(object()); }
};

QAccessibleInterface* makeAccessible(const QString&, QObject* object)
{
    auto* slider = qobject_cast<LevelSlider*>(object);
    return slider ? new LevelSliderAccessible(slider) : nullptr;
}

} // namespace

void installLevelSliderAccessibility()
{
    static const bool installed = [] {
        QAccessible::installFactory(makeAccessible);
        return true;
    }();
    static_cast<void>(installed);
}

void notifyLevelChanged(LevelSlider& slider)
{
    if (!QAccessible::isActive())
        return;
    QAccessibleValueChangeEvent event(&slider, slider.value());
    QAccessible::updateAccessibility(&event);
}

} // namespace lumenvale
