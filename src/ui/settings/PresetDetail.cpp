// SPDX-License-Identifier: MIT
#include "ui/settings/PresetDetail.h"

#include "ui/controls/BrightnessSlider.h"
#include "ui/controls/Card.h"
#include "ui/controls/ScrollPage.h"
#include "ui/controls/SmallButton.h"
#include "ui/controls/TextField.h"
#include "ui/controls/TextLabel.h"
#include "ui/look/Labels.h"
#include "ui/settings/DisconnectedRow.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <cstdio>

namespace lumenvale {

namespace {

constexpr int labelWidth = 146;

QString qString(const std::string& text) { return QString::fromStdString(text); }

QBoxLayout* makeLabelledRow(const QString& label, const std::vector<QWidget*>& controls, bool stretchFirst)
{
    auto* row = new QBoxLayout(QBoxLayout::LeftToRight);
    row->setSpacing(8);
    auto* title = new ElidedLabel(TextRole::body);
    title->setText(label);
    title->setFixedWidth(labelWidth);
    row->addWidget(title);
    auto* line = new QHBoxLayout;
    line->setSpacing(8);
    for (std::size_t i = 0; i < controls.size(); ++i)
        line->addWidget(controls[i], stretchFirst && i == 0 ? 1 : 0);
    if (!stretchFirst)
        line->addStretch(1);
    row->addLayout(line, 1);
    return row;
}

std::string levelText(const BrightnessPreset& preset, const std::string& display)
{
    const auto level = preset.values.find(display);
    char text[48];
    std::snprintf(text, sizeof text, "%.1f%% · Disconnected",
                  level == preset.values.end() ? 0.0 : level->second * 100.0);
    return text;
}

} // namespace

PresetDetail::PresetDetail(DisplayStore& displayStore, PresetStore& presetStore, PresetEditor& presetEditor,
                           Clock& time)
    : store(displayStore), presets(presetStore), editor(presetEditor), clock(time),
      redrawLater([this] { redraw(); })
{
    content = new QWidget;
    auto* column = new QVBoxLayout(content);
    column->setSpacing(8);
    column->addWidget(makeIdentityCard());
    column->addWidget(makeShortcutHelp());
    column->addSpacing(6);
    column->addWidget(makeLevels());
    column->addWidget(makeFooter());
    column->addStretch(1);
    auto* scroll = new ScrollPage(content);
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(scroll);

    const auto later = [this](const auto&) { redrawLater.request(); };
    subscriptions.push_back(store.displays.subscribe(later));
    subscriptions.push_back(presets.presets.subscribe(later));
    subscriptions.push_back(presets.shortcutErrors.subscribe(later));
    subscriptions.push_back(editor.activePresetID.subscribe(later));
    subscriptions.push_back(editor.recordingShortcutID.subscribe(later));
}

void PresetDetail::show(const Uuid& preset)
{
    id = preset;
    redraw();
    QWidget::show();
}

void PresetDetail::resizeEvent(QResizeEvent* event)
{
    const bool isNarrow = width() < narrowPageWidth;
    const int margin = isNarrow ? 12 : 22;
    content->layout()->setContentsMargins(margin, 18, margin, 18);
    for (QBoxLayout* row : labelledRows)
        row->setDirection(isNarrow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    QWidget::resizeEvent(event);
}

QWidget* PresetDetail::makeIdentityCard()
{
    auto* card = new Card;
    labelledRows = {makeNameRow(), makeShortcutRow()};
    card->rows()->addLayout(labelledRows.front());
    card->rows()->addWidget(new Divider);
    card->rows()->addLayout(labelledRows.back());
    return card;
}

QBoxLayout* PresetDetail::makeNameRow()
{
    name = new TextField;
    name->setObjectName("presetName");
    name->setAccessibleName("Name");
    name->setPlaceholderText("Preset name");
    connect(name, &QLineEdit::textEdited, this,
            [this](const QString& text) { presets.rename(id, text.toStdString()); });
    auto* trash = new SmallButton("trash", {}, "Delete preset");
    trash->setToolTip("Delete preset");
    connect(trash, &QAbstractButton::clicked, this, [this] { editor.deletePreset(id); });
    return makeLabelledRow("Name", {name, trash}, true);
}

QBoxLayout* PresetDetail::makeShortcutRow()
{
    recorder = new SmallButton({}, "None", "Record keyboard shortcut");
    QFont medium = recorder->font();
    medium.setWeight(QFont::Medium);
    recorder->setFont(medium);
    recorder->setToolTip("Record keyboard shortcut");
    cancel = new SmallButton({}, "Cancel", {});
    remove = new SmallButton({}, "Delete shortcut", {});
    remove->setToolTip("Delete shortcut");
    connect(recorder, &QAbstractButton::clicked, this, [this] { editor.startRecording(id); });
    connect(cancel, &QAbstractButton::clicked, this, [this] { editor.cancelRecording(); });
    connect(remove, &QAbstractButton::clicked, this, [this] { presets.setShortcut(std::nullopt, id); });
    return makeLabelledRow("Keyboard shortcut", {recorder, cancel, remove}, false);
}

QWidget* PresetDetail::makeShortcutHelp()
{
    auto* row = new QWidget;
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(2, 0, 0, 0);
    line->setSpacing(5);
    warning = new SymbolLabel("exclamationmark.triangle", 14, TextColour::warning);
    help = new TextLabel(TextRole::digits, TextColour::secondary);
    line->addWidget(warning, 0, Qt::AlignTop);
    line->addWidget(help, 1);
    return row;
}

QWidget* PresetDetail::makeLevels()
{
    auto* section = new QWidget;
    auto* column = new QVBoxLayout(section);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    auto* heading = new QHBoxLayout;
    auto* title = new ElidedLabel(TextRole::strong);
    title->setText("Brightness levels");
    active = new TextLabel(TextRole::caption, TextColour::secondary);
    active->setWordWrap(false);
    heading->addWidget(title, 1);
    heading->addWidget(active);
    column->addLayout(heading);
    auto* card = new Card;
    levelCard = card;
    auto* connected = new QWidget;
    levelList = new QVBoxLayout(connected);
    levelList->setContentsMargins(0, 0, 0, 0);
    levelList->setSpacing(14);
    levels.emplace_back(levelList);
    auto* absent = new QWidget;
    absentList = new QVBoxLayout(absent);
    absentList->setContentsMargins(0, 0, 0, 0);
    absentList->setSpacing(0);
    absentLevels.emplace_back(absentList);
    levelDivider = new Divider;
    card->rows()->addWidget(connected);
    card->rows()->addWidget(levelDivider);
    card->rows()->addWidget(absent);
    column->addWidget(card);
    return section;
}

QWidget* PresetDetail::makeFooter()
{
    auto* footer = new QWidget;
    auto* column = new QVBoxLayout(footer);
    column->setContentsMargins(0, 4, 0, 0);
    column->setSpacing(6);
    auto* revert = new SmallButton({}, "Revert", {});
    revert->setToolTip("Restore the preset as it was when you selected it (Esc)");
    connect(revert, &QAbstractButton::clicked, this, [this] { editor.revert(); });
    auto* note = new TextLabel(TextRole::digits, TextColour::secondary);
    note->setText(
        "Changes apply live and save automatically. Escape restores the preset and the screen brightness from "
        "when you selected it.");
    column->addWidget(revert, 0, Qt::AlignLeft);
    column->addWidget(note);
    return footer;
}

void PresetDetail::redraw()
{
    const BrightnessPreset* preset = presets.preset(id);
    content->setVisible(preset != nullptr);
    if (!preset)
        return;
    if (name->text() != qString(preset->name)) { // never while the user types: the store then holds what is typed
        name->setText(qString(preset->name));
        name->setCursorPosition(0);
    }
    active->setText(editor.activePresetID.get() == id ? "Active" : "Not active");
    redrawShortcut(*preset);
    redrawLevels(*preset);
}

void PresetDetail::redrawShortcut(const BrightnessPreset& preset)
{
    const bool isRecording = editor.recordingShortcutID.get() == id;
    if (isRecording) {
        recorder->setText("Press a shortcut…");
        recorder->setTextColour(TextColour::accent);
    } else {
        recorder->setText(preset.shortcut ? qString(displayLabel(*preset.shortcut)) : QString("None"));
        recorder->setTextColour(preset.shortcut ? TextColour::primary : TextColour::secondary);
    }
    recorder->setAccessibleDescription(recorder->text());
    recorder->updateGeometry();
    cancel->setVisible(isRecording);
    remove->setVisible(preset.shortcut && !isRecording);
    const auto& errors = presets.shortcutErrors.get();
    const auto error = errors.find(id);
    warning->setVisible(error != errors.end());
    help->setColour(error == errors.end() ? TextColour::secondary : TextColour::warning);
    if (error != errors.end())
        help->setText(qString(error->second));
    else if (isRecording)
        help->setText("Press a key with any combination of ⌘, ⌥, ⌃, and ⇧. Escape cancels.");
    else
        help->setText("Works while Lumenvale is running, even in other apps.");
}

void PresetDetail::redrawLevels(const BrightnessPreset& preset)
{
    const std::vector<DisplayInfo>& displays = store.displays.get();
    std::vector<std::string> connected;
    for (const DisplayInfo& display : displays)
        connected.push_back(display.id);
    levels.front().assign(
        connected, [this](const std::string& display) { return makeLevelRow(display); },
        [&](BrightnessSlider& row, std::size_t index) {
            BrightnessRow shown{.display = displays[index]};
            const auto level = preset.values.find(shown.display.id);
            if (level != preset.values.end())
                shown.display.brightness = level->second;
            else // it shows the screen's brightness; the first change makes it part of the preset
                shown.title = shown.display.name + " (not in this preset)";
            row.show(shown);
        });
    std::vector<std::string> absent;
    for (const auto& [display, level] : preset.values) {
        if (!store.display(display))
            absent.push_back(display);
    }
    absentLevels.front().assign(
        absent, [](const std::string&) { return new DisconnectedRow; },
        [&](DisconnectedRow& row, std::size_t index) {
            const auto named = preset.displayNames.find(absent[index]);
            row.show(named == preset.displayNames.end() ? QString("Disconnected display") : qString(named->second),
                     qString(levelText(preset, absent[index])));
        });
    absentList->parentWidget()->setVisible(!absent.empty());
    levelList->parentWidget()->setVisible(!connected.empty());
    levelDivider->setVisible(!absent.empty() && !connected.empty());
    levelCard->setVisible(!absent.empty() || !connected.empty());
}

BrightnessSlider* PresetDetail::makeLevelRow(const std::string& display)
{
    auto* row = new BrightnessSlider(clock);
    row->onChange = [this, display](double value) {
        if (const DisplayInfo* connected = store.display(display))
            editor.setLevel(id, *connected, value);
        redrawLater.request(); // also when the editor has not granted it
    };
    return row;
}

} // namespace lumenvale
