// SPDX-License-Identifier: MIT
#include "ui/settings/SettingsTabController.h"

#include "ui/look/FocusMark.h"
#include "ui/look/Painting.h"
#include "ui/look/Symbols.h"
#include "ui/settings/DisplaySettings.h"
#include "ui/settings/GeneralSettings.h"
#include "ui/settings/SettingsFooter.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <algorithm>

namespace lumenvale {

namespace {

constexpr int barHeight = 60;

struct TabLook {
    const char* label;
    const char* symbol;
};
constexpr std::array<TabLook, 3> looks = {{
    {"General", "gearshape"},
    {"Displays", "display.2"},
    {"Presets", "slider.horizontal.3"},
}};

class TabButton final : public QAbstractButton {
public:
    explicit TabButton(const TabLook& look) : symbol(look.symbol)
    {
        setText(look.label);
        setAccessibleName(look.label);
        setCheckable(true);
        setFont(fontFor(TextRole::caption));
        setFocusPolicy(Qt::TabFocus);
        setAttribute(Qt::WA_Hover);
        setFixedSize(std::max(84, fontMetrics().horizontalAdvance(text()) + 24), 50);
    }

protected:
    void focusInEvent(QFocusEvent* event) override
    {
        markFocus(*this, *event);
        QAbstractButton::focusInEvent(event);
    }
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const Theme theme = Theme::of(this);
        if (isChecked() || underMouse()) {
            QColor fill = theme.control;
            fill.setAlphaF(fill.alphaF() * (isChecked() ? 1.3F : 0.7F));
            painter.setPen(Qt::NoPen);
            painter.setBrush(fill);
            painter.drawRoundedRect(rect(), 8, 8);
        }
        if (showsFocus(this))
            drawFocusRing(painter, rect(), 8, theme);
        const QColor colour = isChecked() ? theme.accent : theme.secondary;
        drawSymbol(painter, symbol, QRectF(width() / 2.0 - 9, 8, 18, 18), colour);
        QFont weighted = font();
        weighted.setWeight(isChecked() ? QFont::Medium : QFont::Normal);
        painter.setFont(weighted);
        painter.setPen(colour);
        painter.drawText(QRect(0, 28, width(), 18), Qt::AlignCenter, text());
    }

private:
    QString symbol;
};

} // namespace

SettingsTabController::SettingsTabController(Models models)
    : editor(models.editor), followLater([this] { follow(); })
{
    bar = makeBar();
    pages = new QStackedWidget;
    for (const SettingsTab tab : tabs)
        pages->addWidget(makePage(tab, models));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(1); // the hairline's
    column->addWidget(bar);
    column->addWidget(pages, 1);
    follow();
    isReady = true;
    tabObservation = editor.selectedTab.subscribe([this](SettingsTab) { followLater.request(); });
}

QWidget* SettingsTabController::makeBar()
{
    auto* strip = new QWidget;
    strip->setFixedHeight(barHeight);
    auto* line = new QHBoxLayout(strip);
    line->setContentsMargins(8, 2, 8, 8);
    line->setSpacing(6);
    line->addStretch(1);
    auto* group = new QButtonGroup(strip);
    for (const TabLook& look : looks) {
        auto* button = new TabButton(look);
        group->addButton(button, static_cast<int>(buttons.size()));
        buttons.push_back(button);
        line->addWidget(button);
    }
    line->addStretch(1);
    connect(group, &QButtonGroup::idClicked, this,
            [this](int index) { selectTab(static_cast<std::size_t>(index)); });
    return strip;
}

QWidget* SettingsTabController::makePage(SettingsTab tab, const Models& models)
{
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    if (tab == SettingsTab::general)
        column->addWidget(new GeneralSettings(models.preferences), 1);
    else
        column->addWidget(new DisplaySettings(tab, models.store, models.presets, models.editor, models.diagnostics,
                                              models.clock),
                          1);
    column->addWidget(new SettingsFooter(models.store, models.editor, models.clock, models.build));
    return page;
}

void SettingsTabController::selectTab(std::size_t index)
{
    if (isReady)
        editor.selectTab(tabs.at(index));
}

void SettingsTabController::follow()
{
    const auto* const tab = std::ranges::find(tabs, editor.selectedTab.get());
    const auto index = static_cast<std::size_t>(tab - tabs.begin());
    buttons.at(index)->setChecked(true);
    pages->setCurrentIndex(static_cast<int>(index));
}

void SettingsTabController::keyPressEvent(QKeyEvent* event)
{
    const int index = pages->currentIndex();
    const bool previous = event->key() == Qt::Key_Backtab || event->modifiers().testFlag(Qt::ShiftModifier);
    if (event->modifiers().testFlag(Qt::ControlModifier) &&
        (event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab)) {
        const int count = static_cast<int>(tabs.size());
        return selectTab(static_cast<std::size_t>((index + (previous ? count - 1 : 1)) % count));
    }
    QWidget::keyPressEvent(event);
}

void SettingsTabController::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const Theme theme = Theme::of(this);
    painter.fillRect(rect(), theme.window);
    painter.fillRect(QRect(0, bar->geometry().bottom() + 1, width(), 1), theme.hairline);
}

} // namespace lumenvale
