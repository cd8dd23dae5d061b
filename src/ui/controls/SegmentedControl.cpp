// SPDX-License-Identifier: MIT
#include "ui/controls/SegmentedControl.h"

#include "ui/look/FocusMark.h"
#include "ui/look/Painting.h"

#include <QButtonGroup>
#include <QHBoxLayout>
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
    }

    QSize sizeHint() const override { return {fontMetrics().horizontalAdvance(text()) + 22, segmentHeight}; }
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool hitButton(const QPoint& point) const override { return rect().contains(point); }
    void focusInEvent(QFocusEvent* event) override
    {
        markFocus(*this, *event);
        QRadioButton::focusInEvent(event);
    }
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
        if (showsFocus(this))
            drawFocusRing(painter, rect(), 5, theme);
        painter.setPen(theme.text);
        painter.drawText(rect(), Qt::AlignCenter, text());
    }
};

} // namespace

SegmentedControl::SegmentedControl(const QString& label, const QStringList& options, QWidget* parent)
    : QWidget(parent)
{
    setAccessibleName(label);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    auto* line = new QHBoxLayout(this);
    line->setContentsMargins(2, 2, 2, 2);
    line->setSpacing(0);
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
