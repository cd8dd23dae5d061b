// SPDX-License-Identifier: MIT
#include "ui/panel/BrightnessMenu.h"

#include "ui/controls/BrightnessSlider.h"
#include "ui/controls/Buttons.h"
#include "ui/controls/KeyedRows.h"
#include "ui/controls/Labels.h"
#include "ui/controls/Layouts.h"
#include "ui/controls/ScrollPage.h"
#include "ui/panel/PresetRow.h"

#include <QCoreApplication>
#include <QEvent>
#include <utility>

namespace lumenvale {

namespace {

constexpr int padding = 12;
constexpr int rowSpacing = 8;
constexpr int emptyMessageHeight = 40;
constexpr int dividerHeight = 1;
constexpr int presetHeaderHeight = 22;
constexpr int presetPadding = 6;
constexpr int footerHeight = 38;

/// Lays out the widget and all in it, from the inside.
void layOut(const QWidget& widget)
{
    for (const QObject* child : widget.children()) {
        if (child->isWidgetType())
            layOut(static_cast<const QWidget&>(*child));
    }
    if (QLayout* const layout = widget.layout()) {
        layout->invalidate();
        layout->activate();
    }
}

} // namespace

double preferredHeight(int displays, int presets)
{
    const int rows =
        displays < 1 ? emptyMessageHeight : BrightnessSlider::rowHeight * displays + rowSpacing * (displays - 1);
    const int list =
        presets < 1 ? 0 : PresetRow::rowHeight * presets + dividerHeight + presetHeaderHeight + 2 * presetPadding;
    return rows + 2 * padding + list + dividerHeight + footerHeight;
}

BrightnessMenu::BrightnessMenu(DisplayStore& store, PresetStore& presets, PresetEditor& editor, Clock& clock,
                               std::function<void()> openSettings, ApplyPreset applyPreset)
    : store(store), presets(presets), editor(editor), clock(clock), openSettings(std::move(openSettings)),
      applyPreset(std::move(applyPreset)), displayRows(new KeyedRows<std::string, BrightnessSlider>(
                                               rowSpacing, [this](const std::string& id) { return makeRow(id); })),
      emptyMessage(new ElidedLabel(TextRole::body, TextColour::secondary)),
      presetRows(new KeyedRows<Uuid, PresetRow>(0, [this](const Uuid& id) { return makePresetRow(id); })),
      displaysRedraw([this] { redrawDisplays(); }), presetsRedraw([this] { redrawPresets(); })
{
    page = new ScrollPage(makeContent());
    QVBoxLayout* column = makeColumn(this);
    column->addWidget(page, 1);
    column->addWidget(new Divider);
    column->addWidget(makeFooter());

    displaysRedraw.follow(store.displays);
    displaysRedraw.follow(store.isRefreshing);
    presetsRedraw.follow(presets.presets);
    presetsRedraw.follow(editor.activePresetID);
    redrawDisplays();
    redrawPresets();
}

QWidget* BrightnessMenu::makeContent()
{
    auto* displays = new QWidget;
    QVBoxLayout* list = makeColumn(displays, 0, {padding, padding, padding, padding});
    list->addWidget(displayRows);
    emptyMessage->setFixedHeight(emptyMessageHeight);
    list->addWidget(emptyMessage, 0, Qt::AlignHCenter);

    presetSection = makePresetSection();
    auto* content = new QWidget;
    QVBoxLayout* column = makeColumn(content);
    column->addWidget(displays);
    column->addWidget(presetSection);
    column->addStretch(1);
    return content;
}

QWidget* BrightnessMenu::makePresetSection()
{
    auto* header = new ElidedLabel(TextRole::caption, TextColour::secondary);
    header->setText("Presets");
    header->setFixedHeight(presetHeaderHeight);
    QHBoxLayout* headerLine = makeLine(nullptr, 0, {PresetRow::overhang, 0, PresetRow::overhang, 0});
    headerLine->addWidget(header);
    QVBoxLayout* list = makeColumn(
        nullptr, 0, {padding - PresetRow::overhang, presetPadding, padding - PresetRow::overhang, presetPadding});
    list->addLayout(headerLine);
    list->addWidget(presetRows);

    auto* section = new QWidget;
    QVBoxLayout* column = makeColumn(section);
    column->addWidget(new Divider);
    column->addLayout(list);
    return section;
}

QWidget* BrightnessMenu::makeFooter()
{
    auto* footer = new QWidget;
    footer->setFixedHeight(footerHeight);
    QHBoxLayout* line = makeLine(footer, 12, {padding, 0, padding, 0});
    constexpr auto compact = SmallButton::Size::compact;
    auto* settings = new SmallButton("gearshape", "Settings", {}, compact);
    auto* refresh = new SmallButton("arrow.clockwise", {}, "Refresh", compact);
    auto* quit = new SmallButton("power", {}, "Quit Lumenvale", compact);
    refresh->setToolTip("Read brightness and detect displays again");
    quit->setToolTip("Quit Lumenvale");
    for (SmallButton* each : {settings, refresh, quit})
        line->addWidget(each);
    line->addStretch(1);
    connect(settings, &QAbstractButton::clicked, this, [this] { openSettings(); });
    connect(refresh, &QAbstractButton::clicked, this, [this] { store.requestRefresh(); });
    connect(quit, &QAbstractButton::clicked, qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    return footer;
}

void BrightnessMenu::showEvent(QShowEvent* event)
{
    MenuGlassBackground::showEvent(event);
    settleLayout();
    redrawDisplays(); // how high a text is depends on the width
}

/// Lays out now what would move on the loop's next turns, so that no half-way picture is shown.
void BrightnessMenu::settleLayout()
{
    layOut(*page->widget());
    QEvent request(QEvent::LayoutRequest); // makes it look at its content's new size
    QCoreApplication::sendEvent(page, &request);
    chooseScrollBar();
}

void BrightnessMenu::resizeEvent(QResizeEvent* event)
{
    chooseScrollBar();
    MenuGlassBackground::resizeEvent(event);
}

/// A window manager makes windows of whole steps, which at a scale of 1.5 are two pixels: the point that it then
/// takes is worth no scroll bar.
void BrightnessMenu::chooseScrollBar()
{
    const int missing = page->widget()->minimumSizeHint().height() + dividerHeight + footerHeight - height();
    page->setVerticalScrollBarPolicy(missing > 1 ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
}

void BrightnessMenu::redrawDisplays()
{
    const std::vector<DisplayInfo>& displays = store.displays.get();
    int height = 0;
    const bool isRearranged =
        displayRows->assign(displays, &DisplayInfo::id, [&](BrightnessSlider& row, const DisplayInfo& display) {
            row.show({.display = display});
            height += row.extraHeight();
        });
    emptyMessage->setVisible(displays.empty());
    emptyMessage->setText(store.isRefreshing.get() ? "Finding your displays…" : "No displays detected");
    const bool isResized = std::exchange(extra, height) != height;
    if (isResized && extraHeightChanged)
        extraHeightChanged();
    if (isRearranged || isResized)
        settleLayout();
}

void BrightnessMenu::redrawPresets()
{
    const std::vector<BrightnessPreset>& list = presets.presets.get();
    presetSection->setVisible(!list.empty());
    const bool isRearranged =
        presetRows->assign(list, &BrightnessPreset::id, [this](PresetRow& row, const BrightnessPreset& preset) {
            row.show(qString(displayName(preset)), editor.activePresetID.get() == preset.id);
        });
    if (isRearranged)
        settleLayout();
}

BrightnessSlider* BrightnessMenu::makeRow(const std::string& id)
{
    auto* row = new BrightnessSlider(clock);
    row->onChange = [this, id](double value) {
        store.setBrightness(id, value);
        displaysRedraw.request(); // also when the store has not granted it
    };
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
