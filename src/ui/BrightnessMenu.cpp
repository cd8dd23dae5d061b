// SPDX-License-Identifier: MIT
#include "ui/BrightnessMenu.h"

#include "ui/BrightnessSlider.h"
#include "ui/Labels.h"
#include "ui/PreferredHeight.h"
#include "ui/PresetRow.h"
#include "ui/ScrollPage.h"
#include "ui/SmallButton.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QMetaObject>
#include <QVBoxLayout>
#include <utility>

namespace lumenvale {

namespace {

QVBoxLayout* makeColumn(QWidget* owner, int horizontal, int vertical, int spacing)
{
    auto* column = new QVBoxLayout(owner);
    column->setContentsMargins(horizontal, vertical, horizontal, vertical);
    column->setSpacing(spacing);
    return column;
}

} // namespace

BrightnessMenu::BrightnessMenu(DisplayStore& displayStore, PresetStore& presetStore, PresetEditor& presetEditor,
                               Clock& time, std::function<void()> settings, ApplyPreset apply)
    : store(displayStore), presets(presetStore), editor(presetEditor), clock(time),
      openSettings(std::move(settings)), applyPreset(std::move(apply))
{
    QVBoxLayout* column = makeColumn(this, 0, 0, 0);
    auto* scroll = new ScrollPage(makeContent());
    column->addWidget(scroll, 1);
    column->addWidget(new Divider);
    column->addWidget(makeFooter());

    subscriptions.push_back(store.displays.subscribe([this](const auto&) { redrawLater(); }));
    subscriptions.push_back(store.isRefreshing.subscribe([this](bool) { redrawLater(); }));
    subscriptions.push_back(presets.presets.subscribe([this](const auto&) { redrawLater(); }));
    subscriptions.push_back(editor.activePresetID.subscribe([this](const auto&) { redrawLater(); }));
    redraw();
}

QWidget* BrightnessMenu::makeContent()
{
    auto* content = new QWidget;
    QVBoxLayout* column = makeColumn(content, 0, 0, 0);
    auto* displays = new QWidget;
    displayList = makeColumn(displays, panelPadding, panelPadding, rowSpacing);
    displayRows.emplace_back(displayList);
    emptyMessage = new ElidedLabel(TextRole::body, TextColour::secondary);
    emptyMessage->setFixedHeight(emptyMessageHeight);
    displayList->addWidget(emptyMessage, 0, Qt::AlignHCenter);
    column->addWidget(displays);
    presetSection = makePresetSection();
    column->addWidget(presetSection);
    column->addStretch(1);
    return content;
}

QWidget* BrightnessMenu::makePresetSection()
{
    auto* section = new QWidget;
    QVBoxLayout* column = makeColumn(section, 0, 0, 0);
    column->addWidget(new Divider);
    auto* list = new QWidget;
    QVBoxLayout* rows = makeColumn(list, panelPadding, presetPadding, 0);
    auto* header = new ElidedLabel(TextRole::caption, TextColour::secondary);
    header->setText("Presets");
    header->setFixedHeight(presetHeaderHeight);
    rows->addWidget(header);
    auto* presetsOnly = new QWidget;
    presetList = makeColumn(presetsOnly, 0, 0, 0);
    presetRows.emplace_back(presetList);
    rows->addWidget(presetsOnly);
    column->addWidget(list);
    return section;
}

QWidget* BrightnessMenu::makeFooter()
{
    auto* footer = new QWidget;
    footer->setFixedHeight(footerHeight);
    auto* line = new QHBoxLayout(footer);
    line->setContentsMargins(panelPadding, 0, panelPadding, 0);
    line->setSpacing(12);
    auto* settings = new SmallButton("gearshape", "Settings", {});
    auto* refresh = new SmallButton("arrow.clockwise", {}, "Refresh");
    auto* quit = new SmallButton("power", {}, "Quit Lumenvale");
    refresh->setToolTip("Read brightness and detect displays again");
    quit->setToolTip("Quit Lumenvale");
    for (SmallButton* button : {settings, refresh, quit})
        line->addWidget(button);
    line->addStretch(1);
    connect(settings, &QAbstractButton::clicked, this, [this] { openSettings(); });
    connect(refresh, &QAbstractButton::clicked, this, [this] { store.requestRefresh(); });
    connect(quit, &QAbstractButton::clicked, qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    return footer;
}

void BrightnessMenu::redrawLater()
{
    if (std::exchange(redrawIsDue, true))
        return;
    QMetaObject::invokeMethod(
        this, [this] { redraw(); }, Qt::QueuedConnection);
}

void BrightnessMenu::redraw()
{
    redrawIsDue = false;
    redrawDisplays();
    redrawPresets();
}

void BrightnessMenu::redrawDisplays()
{
    const std::vector<DisplayInfo>& displays = store.displays.get();
    std::vector<std::string> identifiers;
    for (const DisplayInfo& display : displays)
        identifiers.push_back(display.id);
    displayRows.front().assign(
        identifiers, [this](const std::string& id) { return makeRow(id); },
        [&](BrightnessSlider& row, std::size_t index) { row.show({.display = displays[index]}); });
    emptyMessage->setVisible(displays.empty());
    emptyMessage->setText(store.isRefreshing.get() ? "Finding your displays…" : "No displays detected");
}

void BrightnessMenu::redrawPresets()
{
    const std::vector<BrightnessPreset>& list = presets.presets.get();
    std::vector<Uuid> identifiers;
    for (const BrightnessPreset& preset : list)
        identifiers.push_back(preset.id);
    presetRows.front().assign(
        identifiers, [this](const Uuid& id) { return makePresetRow(id); },
        [&](PresetRow& row, std::size_t index) {
            const BrightnessPreset& preset = list[index];
            row.show(QString::fromStdString(displayName(preset)), editor.activePresetID.get() == preset.id);
        });
    presetSection->setVisible(!list.empty());
}

BrightnessSlider* BrightnessMenu::makeRow(const std::string& id)
{
    auto* row = new BrightnessSlider(clock);
    row->onChange = [this, id](double value) { store.setBrightness(id, value); };
    return row;
}

PresetRow* BrightnessMenu::makePresetRow(const Uuid& id)
{
    auto* row = new PresetRow;
    connect(row, &QAbstractButton::clicked, this, [this, id] {
        if (const BrightnessPreset* preset = presets.preset(id))
            applyPreset(BrightnessPreset(*preset));
    });
    return row;
}

} // namespace lumenvale
