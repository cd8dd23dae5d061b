// SPDX-License-Identifier: MIT
#include "ui/controls/Switches.h"

#include "ui/controls/Layouts.h"
#include "ui/look/KeyboardFocus.h"
#include "ui/look/Painting.h"

#include <QButtonGroup>
#include <QPainter>
#include <QRadioButton>
#include <utility>

namespace lumenvale {

namespace {

constexpr int segmentHeight = 22;

/// A radio button by nature (arrow keys, screen readers), a segment by looks.
class Segment final : public QRadioButton {
public:
    explicit Segment(const QString& text) : QRadioButton(text)
    {
        setFont(fontFor(TextRole::digits));
        setAttribute(Qt::WA_Hover);
        trackFocus();
    }

    QSize sizeHint() const override { return {fontMetrics().horizontalAdvance(text()) + 22, segmentHeight}; }
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool hitButton(const QPoint& point) const override { return rect().contains(point); }
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const Theme theme = Theme::of(this);
        if (isChecked()) {
            painter.setPen(QPen(theme.hairline, 1.0));
            painter.setBrush(theme.isDark ? QColor(0xFF5A5A60) : QColor(Qt::white));
            painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 5, 5);
        }
        if (showsFocus(*this))
            drawFocusRing(painter, rect(), 5, theme);
        painter.setPen(theme.text);
        painter.drawText(rect(), Qt::AlignCenter, text());
    }
};

} // namespace

ToggleSwitch::ToggleSwitch(const QString& label)
{
    setAccessibleName(label);
    trackFocus();
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void ToggleSwitch::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Theme theme = Theme::of(this);
    if (!isEnabled())
        painter.setOpacity(0.5);
    const QRectF box = QRectF(rect()).adjusted(1, 1, -1, -1);
    const double radius = box.height() / 2;
    painter.setPen(Qt::NoPen);
    painter.setBrush(isChecked() ? theme.accent : theme.track);
    painter.drawRoundedRect(box, radius, radius);
    const bool atRight = isChecked() != isRightToLeft();
    const QPointF knob(atRight ? box.right() - radius : box.left() + radius, box.center().y());
    painter.setBrush(Qt::white);
    painter.drawEllipse(knob, radius - 2, radius - 2);
    if (showsFocus(*this))
        drawFocusRing(painter, rect(), rect().height() / 2.0, theme);
}

SegmentedControl::SegmentedControl(const QString& label, const QStringList& options)
{
    setAccessibleName(label);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    QHBoxLayout* line = makeLine(this, 0, {2, 2, 2, 2});
    auto* group = new QButtonGroup(this);
    for (const QString& option : options) {
        auto* segment = new Segment(option);
        group->addButton(segment, static_cast<int>(segments.size()));
        segments.push_back(segment);
        line->addWidget(segment);
    }
    connect(group, &QButtonGroup::idToggled, this, [this](int index, bool chosen) {
        if (chosen && onChoice)
            onChoice(index);
    });
}

void SegmentedControl::setChoice(int index)
{
    const auto handler = std::exchange(onChoice, nullptr);
    segments.at(static_cast<std::size_t>(index))->setChecked(true);
    onChoice = handler;
}

void SegmentedControl::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Theme::of(this).control);
    painter.drawRoundedRect(rect(), controlCornerRadius, controlCornerRadius);
}

} // namespace lumenvale
