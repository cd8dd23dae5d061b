// SPDX-License-Identifier: MIT
#include "ui/look/KeyboardFocus.h"

#include "ui/look/Theme.h"

#include <QApplication>
#include <QFocusEvent>
#include <QLayout>
#include <QPainter>
#include <QPointer>
#include <QScrollArea>
#include <QWidget>
#include <vector>

namespace lumenvale {

namespace {

constexpr char fromKeyboard[] = "focusFromKeyboard"; // a widget's property

/// Sees the focus arrive at widgets. A click gives it to its own widget, or to another when it hides the one that
/// had it.
class FocusTracker final : public QObject {
public:
    explicit FocusTracker(QApplication* application) : QObject(application)
    {
        application->installEventFilter(this);
    }

    bool eventFilter(QObject* object, QEvent* event) override
    {
        if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::KeyPress)
            usesMouse = event->type() == QEvent::MouseButtonPress;
        if (object->isWidgetType())
            follow(static_cast<QWidget&>(*object), *event);
        return QObject::eventFilter(object, event);
    }

private:
    void follow(QWidget& widget, const QEvent& event) const
    {
        if (event.type() == QEvent::FocusIn) {
            const Qt::FocusReason reason = static_cast<const QFocusEvent&>(event).reason();
            if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason) // else it was here before
                widget.setProperty(fromKeyboard, !usesMouse && reason != Qt::MouseFocusReason);
            widget.update();
        } else if (event.type() == QEvent::MouseButtonPress) {
            QWidget* const focused = QApplication::focusWidget();
            if (!focused || (focused != &widget && !focused->isAncestorOf(&widget)))
                return;
            focused->setProperty(fromKeyboard, false);
            focused->update();
        }
    }

    bool usesMouse = false; // since the last press of a key
};

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
    // The root goes first. Qt orders only what takes the focus, so the root takes it meanwhile.
    const Qt::FocusPolicy policy = root.focusPolicy();
    root.setFocusPolicy(Qt::TabFocus);
    std::vector<QWidget*> controls = {&root};
    if (const QLayout* const layout = root.layout())
        collect(*layout, controls);
    for (std::size_t i = 1; i < controls.size(); ++i)
        QWidget::setTabOrder(controls[i - 1], controls[i]);
    root.setFocusPolicy(policy);
}

void passFocus(const QWidget& from, QWidget& to)
{
    const QWidget* const focused = from.window()->focusWidget();
    if (focused && (focused == &from || from.isAncestorOf(focused)))
        to.setFocus(Qt::OtherFocusReason);
}

void trackFocus()
{
    static QPointer<FocusTracker> tracker; // the application owns it
    if (!tracker)
        tracker = new FocusTracker(qApp);
}

bool showsFocus(const QWidget& widget) { return widget.hasFocus() && widget.property(fromKeyboard).toBool(); }

void drawFocusRing(QPainter& painter, const QRectF& box, double radius, const Theme& theme)
{
    constexpr double ringWidth = 2.0;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(theme.accent, ringWidth));
    const double inset = ringWidth / 2;
    painter.drawRoundedRect(box.adjusted(inset, inset, -inset, -inset), radius - inset, radius - inset);
}

} // namespace lumenvale
