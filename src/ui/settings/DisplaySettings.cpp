// SPDX-License-Identifier: MIT
#include "ui/settings/DisplaySettings.h"

#include "ui/controls/Buttons.h"
#include "ui/controls/Labels.h"
#include "ui/controls/Layouts.h"
#include "ui/settings/DisplayDetail.h"
#include "ui/settings/PresetDetail.h"
#include "ui/settings/Sidebar.h"

#include <QPainter>
#include <QStackedWidget>

namespace lumenvale {

namespace {

template <typename Selection>
const Selection* selected(const PresetEditor& editor)
{
    const std::optional<SettingsSelection>& selection = editor.selection.get();
    return selection ? std::get_if<Selection>(&*selection) : nullptr;
}

} // namespace

DisplaySettings::DisplaySettings(SettingsTab section, const SettingsModels& models)
    : section(section), store(models.store), presets(models.presets), editor(models.editor),
      diagnostics(models.diagnostics), words(models.words), later([this] { redraw(); })
{
    side = makeSide();
    details = new QStackedWidget;
    emptyMessage = new TextLabel(TextRole::body, TextColour::secondary);
    emptyMessage->setAlignment(Qt::AlignCenter);
    emptyMessage->setContentsMargins(24, 24, 24, 24);
    details->addWidget(emptyMessage);
    if (section == SettingsTab::displays)
        details->addWidget(displayDetail = new DisplayDetail(words));
    else
        details->addWidget(presetDetail = new PresetDetail(store, presets, editor, models.clock, words));
    QHBoxLayout* line = makeLine(this, 1); // the hairline's
    line->addWidget(side);
    line->addWidget(details, 1);

    later.follow(store.displays);
    later.follow(store.lastRefresh);
    later.follow(presets.presets);
    later.follow(presets.persistenceError);
    later.follow(editor.selection);
    refreshes = store.lastRefresh.subscribe([this](const auto&) { examinedDisplay.clear(); });
    redraw();
}

QWidget* DisplaySettings::makeSide()
{
    auto* panel = new QWidget;
    panel->setFixedWidth(Sidebar::width);
    QVBoxLayout* column = makeColumn(panel);
    const bool showsDisplays = section == SettingsTab::displays;
    sidebar = new Sidebar(showsDisplays ? "Displays" : "Presets", showsDisplays);
    column->addWidget(sidebar, 1);
    if (showsDisplays) {
        sidebar->onSelect = [this](const QString& key) { editor.select(DisplaySelection{key.toStdString()}); };
        sidebar->onMove = [this](int source, int destination) {
            store.moveDisplays({static_cast<std::size_t>(source)}, static_cast<std::size_t>(destination));
        };
        return panel;
    }
    sidebar->onSelect = [this](const QString& key) {
        if (const auto id = Uuid::parse(key.toStdString()))
            editor.select(PresetSelection{*id});
    };
    failure = new TextLabel(TextRole::caption, TextColour::failure);
    failure->setContentsMargins(12, 4, 12, 4);
    auto* add = new SmallButton("plus", "Add preset", "Add a preset from the current brightness levels");
    add->setToolTip("Add a preset from the current brightness levels");
    connect(add, &QAbstractButton::clicked, this, [this] { editor.addPresetFromCurrentLevels(); });
    column->addWidget(failure);
    QHBoxLayout* bottom = makeLine(nullptr, 0, {8, 6, 8, 10});
    bottom->addWidget(add);
    bottom->addStretch(1);
    column->addLayout(bottom);
    return panel;
}

void DisplaySettings::redraw()
{
    if (section == SettingsTab::displays)
        redrawDisplays();
    else
        redrawPresets();
}

void DisplaySettings::redrawDisplays()
{
    std::vector<SidebarItem> items;
    for (const DisplayInfo& display : store.displays.get())
        items.push_back({qString(display.id), qString(display.name), qString(percentageText(display)),
                         display.isBuiltIn ? "laptopcomputer" : "display"});
    const auto* selection = selected<DisplaySelection>(editor);
    sidebar->show(items, selection ? std::optional(qString(selection->id)) : std::nullopt);
    const DisplayInfo* display = selection ? store.display(selection->id) : nullptr;
    if (display)
        displayDetail->show(*display, findingsFor(*display));
    emptyMessage->setText(items.empty() ? "Connect a display and refresh."
                                        : "Select a display to see its details.");
    details->setCurrentWidget(display ? static_cast<QWidget*>(displayDetail) : emptyMessage);
}

void DisplaySettings::redrawPresets()
{
    std::vector<SidebarItem> items;
    for (const BrightnessPreset& preset : presets.presets.get())
        items.push_back({qString(preset.id.toString()),
                         qString(displayName(preset)),
                         preset.shortcut ? qString(displayLabel(*preset.shortcut, words)) : QString("None"),
                         {}});
    const auto* selection = selected<PresetSelection>(editor);
    sidebar->show(items, selection ? std::optional(qString(selection->id.toString())) : std::nullopt);
    const bool exists = selection && presets.preset(selection->id);
    if (exists)
        presetDetail->show(selection->id);
    failure->setText(qString(presets.persistenceError.get().value_or("")));
    failure->setVisible(presets.persistenceError.get().has_value());
    emptyMessage->setText("Select a preset to activate & edit it or add a new one.");
    details->setCurrentWidget(exists ? static_cast<QWidget*>(presetDetail) : emptyMessage);
}

const std::vector<Finding>& DisplaySettings::findingsFor(const DisplayInfo& display)
{
    const std::string examined = display.id + display.status;
    if (examined == examinedDisplay || !isVisible())
        return findings;
    examinedDisplay = examined;
    findings.clear();
    if (display.method == ControlMethod::unavailable) {
        for (const Finding& finding : diagnostics.examine({display})) {
            const bool isAboutIt = finding.displayID.empty() || finding.displayID == display.id;
            const bool isOnThePage = display.status.find(finding.text) != std::string::npos;
            if (finding.kind != Finding::Kind::good && isAboutIt && !isOnThePage)
                findings.push_back(finding);
        }
    }
    return findings;
}

void DisplaySettings::showEvent(QShowEvent* event)
{
    later.request();
    QWidget::showEvent(event);
}

void DisplaySettings::resizeEvent(QResizeEvent* event)
{
    side->setFixedWidth(width() - Sidebar::width < DetailPage::narrowWidth ? Sidebar::narrowWidth
                                                                           : Sidebar::width);
    QWidget::resizeEvent(event);
}

void DisplaySettings::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const Theme theme = Theme::of(this);
    painter.fillRect(side->geometry(), theme.sidebar);
    const int edge = isRightToLeft() ? side->geometry().left() - 1 : side->geometry().right() + 1;
    painter.fillRect(QRect(edge, 0, 1, height()), theme.hairline);
}

} // namespace lumenvale
