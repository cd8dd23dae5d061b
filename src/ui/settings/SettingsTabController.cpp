// SPDX-License-Identifier: MIT
#include "ui/settings/SettingsTabController.h"

#include "ui/controls/Accessibility.h"
#include "ui/controls/Buttons.h"
#include "ui/controls/Layouts.h"
#include "ui/look/KeyboardFocus.h"
#include "ui/look/Symbols.h"

#include <QButtonGroup>
#include <QKeyEvent>
#include <QPainter>
#include <algorithm>
#include <array>

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

/// What a screen reader sees: a tab of a list, one of which is selected.
class TabButtonAccessible final : public AccessibleButton {
public:
    explicit TabButtonAccessible(QAbstractButton* button) : AccessibleButton(button, QAccessible::PageTab) {}

    QAccessible::State state() const override
    {
        QAccessible::State state = AccessibleButton::state();
        state.selectable = true;
        state.selected = button()->isChecked();
        return state;
    }
};

class TabButton final : public PaintedButton {
public:
    explicit TabButton(const TabLook& look) : symbol(look.symbol)
    {
        installAccessible<TabButton, TabButtonAccessible>();
        setText(look.label);
        setAccessibleName(look.label);
        setCheckable(true);
        setFont(fontFor(TextRole::caption));
        setFocusPolicy(Qt::TabFocus);
        setFixedSize(std::max(84, fontMetrics().horizontalAdvance(text()) + 24), 50);
    }

protected:
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
        if (showsFocus(*this))
            drawFocusRing(painter, rect(), 8, theme);
        const QColor colour = isChecked() ? theme.of(TextColour::accent) : theme.secondary;
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

SettingsTabController::SettingsTabController(const SettingsModels& models)
    : editor(models.editor), bar(makeBar()), pages(new SettingsRoot(tabs, models)),
      tabObservation([this] { follow(); })
{
    QVBoxLayout* column = makeColumn(this, 1); // the hairline's
    column->addWidget(bar);
    column->addWidget(pages, 1);
    follow();
    tabObservation.follow(editor.selectedTab);
}

QWidget* SettingsTabController::makeBar()
{
    auto* strip = new QWidget;
    strip->setFixedHeight(barHeight);
    setAccessibleRole(*strip, QAccessible::PageTabList); // first: a name makes Qt look for its accessible side
    strip->setAccessibleName("Settings");
    QHBoxLayout* line = makeLine(strip, 6, {8, 2, 8, 8});
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

void SettingsTabController::selectTab(std::size_t index) { editor.selectTab(tabs.at(index)); }

void SettingsTabController::follow()
{
    const SettingsTab tab = editor.selectedTab.get();
    const auto index = static_cast<std::size_t>(std::ranges::find(tabs, tab) - tabs.begin());
    buttons.at(index)->setChecked(true);
    pages->show(tab);
}

void SettingsTabController::keyPressEvent(QKeyEvent* event)
{
    const bool isTab = event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab;
    // Qt calls a Mac's Control key Meta, and its Command key, which never comes here with Tab, Control.
    if (!isTab || !(event->modifiers() & (Qt::ControlModifier | Qt::MetaModifier)))
        return QWidget::keyPressEvent(event);
    const bool previous = event->key() == Qt::Key_Backtab || event->modifiers().testFlag(Qt::ShiftModifier);
    const auto index = static_cast<std::size_t>(pages->currentIndex());
    selectTab((index + (previous ? tabs.size() - 1 : 1)) % tabs.size());
}

void SettingsTabController::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const Theme theme = Theme::of(this);
    painter.fillRect(rect(), theme.window);
    painter.fillRect(QRect(0, bar->geometry().bottom() + 1, width(), 1), theme.hairline);
}

} // namespace lumenvale
