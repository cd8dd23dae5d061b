// SPDX-License-Identifier: MIT
#include "ui/panel/BrightnessMenu.h"

#include "ui/controls/BrightnessSlider.h"
#include "ui/controls/ScrollPage.h"
#include "ui/controls/SmallButton.h"
#include "ui/look/Labels.h"
#include "ui/look/PreferredHeight.h"
#include "ui/panel/PresetRow.h"

#include <QCoreApplication>
#include <QHBoxLayout>
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

BrightnessMenu::BrightnessMenu(DisplayStore& displayStore, PresetStore& presetStore, PresetEditor& presetEditor,
                               Clock& time, std::function<void()> settings, ApplyPreset apply)
    : store(displayStore), presets(presetStore), editor(presetEditor), clock(time),
      openSettings(std::move(settings)), applyPreset(std::move(apply)),
      displaysLater([this] { redrawDisplays(); }), presetsLater([this] { redrawPresets(); })
{
    QVBoxLayout* column = makeColumn(this, 0, 0, 0);
    page = new ScrollPage(makeContent());
    column->addWidget(page, 1);
    column->addWidget(new Divider);
    column->addWidget(makeFooter());

    subscriptions.push_back(store.displays.subscribe([this](const auto&) { displaysLater.request(); }));
    subscriptions.push_back(store.isRefreshing.subscribe([this](bool) { displaysLater.request(); }));
    subscriptions.push_back(presets.presets.subscribe([this](const auto&) { presetsLater.request(); }));
    subscriptions.push_back(editor.activePresetID.subscribe([this](const auto&) { presetsLater.request(); }));
    redrawDisplays();
    redrawPresets();
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
    QVBoxLayout* rows = makeColumn(list, panelPadding - PresetRow::overhang, presetPadding, 0);
    auto* header = new ElidedLabel(TextRole::caption, TextColour::secondary);
    header->setText("Presets");
    header->setFixedHeight(presetHeaderHeight);
    auto* headerLine = new QHBoxLayout;
    headerLine->setContentsMargins(PresetRow::overhang, 0, PresetRow::overhang, 0);
    headerLine->addWidget(header);
    rows->addLayout(headerLine);
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
    const auto button = [footer](const char* symbol, const QString& text, const QString& label) {
        return new SmallButton(symbol, text, label, footer, SmallButton::Size::compact);
    };
    SmallButton* const settings = button("gearshape", "Settings", {});
    SmallButton* const refresh = button("arrow.clockwise", {}, "Refresh");
    SmallButton* const quit = button("power", {}, "Quit Lumenvale");
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
    std::vector<std::string> identifiers;
    identifiers.reserve(displays.size());
    for (const DisplayInfo& display : displays)
        identifiers.push_back(display.id);
    const bool isRearranged = displayRows.front().assign(
        identifiers, [this](const std::string& id) { return makeRow(id); },
        [&](BrightnessSlider& row, std::size_t index) { row.show({.display = displays[index]}); });
    emptyMessage->setVisible(displays.empty());
    emptyMessage->setText(store.isRefreshing.get() ? "Finding your displays…" : "No displays detected");
    if (isRearranged)
        settleLayout();
}

void BrightnessMenu::redrawPresets()
{
    const std::vector<BrightnessPreset>& list = presets.presets.get();
    std::vector<Uuid> identifiers;
    identifiers.reserve(list.size());
    for (const BrightnessPreset& preset : list)
        identifiers.push_back(preset.id);
    const bool isRearranged = presetRows.front().assign(
        identifiers, [this](const Uuid& id) { return makePresetRow(id); },
        [&](PresetRow& row, std::size_t index) {
            const BrightnessPreset& preset = list[index];
            row.show(QString::fromStdString(displayName(preset)), editor.activePresetID.get() == preset.id);
        });
    presetSection->setVisible(!list.empty());
    if (isRearranged)
        settleLayout();
}

BrightnessSlider* BrightnessMenu::makeRow(const std::string& id)
{
    auto* row = new BrightnessSlider(clock);
    row->onChange = [this, id](double value) {
        store.setBrightness(id, value);
        displaysLater.request(); // also when the store has not granted it
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
