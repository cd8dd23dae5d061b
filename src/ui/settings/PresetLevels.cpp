// SPDX-License-Identifier: MIT
#include "ui/settings/PresetLevels.h"

#include "ui/controls/BrightnessSlider.h"
#include "ui/controls/KeyedRows.h"
#include "ui/controls/Labels.h"
#include "ui/controls/Layouts.h"

#include <cstdio>

namespace lumenvale {

namespace {

QString levelText(double level)
{
    char text[48];
    std::snprintf(text, sizeof text, "%.1f%% · Disconnected", level * 100.0);
    return QString::fromUtf8(text);
}

} // namespace

/// Name and level of a display that is not connected; neither can be changed.
class PresetLevels::DisconnectedRow final : public QWidget {
public:
    DisconnectedRow()
        : name(new ElidedLabel(TextRole::body, TextColour::secondary)),
          level(new ElidedLabel(TextRole::digits, TextColour::secondary))
    {
        QHBoxLayout* line = makeLine(this, 6, {0, 6, 0, 6});
        line->addWidget(new SymbolLabel("display", 16, TextColour::secondary));
        line->addWidget(name, 1);
        level->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        line->addWidget(level);
    }

    ElidedLabel* name;
    ElidedLabel* level;
};

PresetLevels::PresetLevels(DisplayStore& store, PresetStore& presets, PresetEditor& editor, Clock& clock)
    : store(store), presets(presets), editor(editor), clock(clock),
      active(new TextLabel(TextRole::caption, TextColour::secondary)),
      connected(new KeyedRows<std::string, BrightnessSlider>(
          14, [this](const std::string& display) { return makeRow(display); })),
      divider(new Divider), disconnected(new KeyedRows<std::string, DisconnectedRow>(
                                0, [](const std::string&) { return new DisconnectedRow; })),
      later([this] { redraw(); })
{
    auto* levels = new Card;
    levels->rows()->addWidget(connected);
    levels->rows()->addWidget(divider);
    levels->rows()->addWidget(disconnected);
    card = levels;
    QVBoxLayout* column = makeColumn(this, 8);
    column->addWidget(makeHeading());
    column->addWidget(card);
    later.follow(store.displays);
    later.follow(presets.presets);
    later.follow(editor.activePresetID);
    later.follow(editor.isPreparing);
}

QWidget* PresetLevels::makeHeading()
{
    auto* title = new ElidedLabel(TextRole::strong);
    title->setText("Brightness levels");
    active->setWordWrap(false);
    auto* heading = new QWidget;
    QHBoxLayout* line = makeLine(heading, 8);
    line->addWidget(title, 1);
    line->addWidget(active);
    return heading;
}

void PresetLevels::show(const Uuid& preset)
{
    id = preset;
    redraw();
}

void PresetLevels::redraw()
{
    const BrightnessPreset* preset = presets.preset(id);
    if (!preset)
        return;
    active->setText(editor.activePresetID.get() == id ? "Active" : "Not active");
    const std::vector<DisplayInfo>& displays = store.displays.get();
    connected->assign(
        displays, &DisplayInfo::id,
        [this, preset](BrightnessSlider& row, const DisplayInfo& display) { showLevel(row, display, *preset); });
    std::vector<std::pair<std::string, double>> absent;
    for (const auto& level : preset->values) {
        if (!store.display(level.first))
            absent.emplace_back(level);
    }
    disconnected->assign(
        absent, &std::pair<std::string, double>::first, [preset](DisconnectedRow& row, const auto& level) {
            const auto name = preset->displayNames.find(level.first);
            row.name->setText(name == preset->displayNames.end() ? "Disconnected display" : qString(name->second));
            row.level->setText(levelText(level.second));
        });
    divider->setVisible(!absent.empty() && !displays.empty());
    card->setVisible(!absent.empty() || !displays.empty());
}

void PresetLevels::showLevel(BrightnessSlider& row, const DisplayInfo& display, const BrightnessPreset& preset)
{
    BrightnessRow shown{.display = display,
                        .disabled = editor.isPreparing.get()}; // until then changes would be lost
    const auto level = preset.values.find(display.id);
    if (level != preset.values.end())
        shown.display.brightness = level->second;
    else // it shows the screen's brightness; the first change makes it part of the preset
        shown.title = display.name + " (not in this preset)";
    row.show(shown);
}

BrightnessSlider* PresetLevels::makeRow(const std::string& display)
{
    auto* row = new BrightnessSlider(clock);
    row->onChange = [this, display](double value) {
        if (const DisplayInfo* shown = store.display(display))
            editor.setLevel(id, *shown, value);
        later.request(); // also when the editor has not granted it
    };
    return row;
}

} // namespace lumenvale
