// SPDX-License-Identifier: MIT
#include "ui/settings/PresetDetail.h"

#include "ui/controls/Buttons.h"
#include "ui/controls/Labels.h"
#include "ui/controls/Layouts.h"
#include "ui/look/KeyboardFocus.h"
#include "ui/look/Painting.h"
#include "ui/settings/PresetLevels.h"

#include <QEvent>
#include <QLineEdit>
#include <QPainter>

namespace lumenvale {

namespace {

constexpr int labelWidth = 146;

/// A line of text to edit, in the program's look.
class TextField final : public QLineEdit {
public:
    TextField()
    {
        setFont(fontFor(TextRole::body));
        setFrame(false);
        setTextMargins(6, 0, 6, 0);
        setMinimumHeight(26);
        clearGround();
    }

protected:
    void changeEvent(QEvent* event) override
    {
        QLineEdit::changeEvent(event);
        if (event->type() == QEvent::PaletteChange)
            clearGround();
    }
    void paintEvent(QPaintEvent* event) override
    {
        {
            QPainter painter(this);
            const Theme theme = Theme::of(this);
            drawRoundedBox(painter, rect(), controlCornerRadius, Qt::transparent, theme.hairline);
            if (hasFocus())
                drawFocusRing(painter, rect(), controlCornerRadius, theme);
        }
        QLineEdit::paintEvent(event);
    }

private:
    /// The base class fills its ground with the palette's base, but a round box is drawn below it here.
    void clearGround()
    {
        QPalette clear = palette();
        if (clear.color(QPalette::Base).alpha() == 0)
            return;
        clear.setColor(QPalette::Base, Qt::transparent);
        setPalette(clear);
    }
};

QBoxLayout* makeLabelledRow(const QString& label, QWidget* stretched, const std::vector<QWidget*>& others)
{
    auto* title = new ElidedLabel(TextRole::body);
    title->setText(label);
    title->setFixedWidth(labelWidth);
    QHBoxLayout* controls = makeLine(nullptr, 8);
    if (stretched)
        controls->addWidget(stretched, 1);
    for (QWidget* each : others)
        controls->addWidget(each);
    if (!stretched)
        controls->addStretch(1);
    auto* row = new QBoxLayout(QBoxLayout::LeftToRight);
    row->setSpacing(8);
    row->addWidget(title);
    row->addLayout(controls, 1);
    return row;
}

} // namespace

PresetDetail::PresetDetail(DisplayStore& store, PresetStore& presets, PresetEditor& editor, Clock& clock,
                           const Words& words)
    : DetailPage(8), presets(presets), editor(editor), words(words), help(new NoticeLabel),
      levels(new PresetLevels(store, presets, editor, clock)), later([this] { redraw(); })
{
    column()->addWidget(makeIdentityCard());
    column()->addWidget(help);
    column()->addSpacing(6);
    column()->addWidget(levels);
    column()->addWidget(makeFooter());
    column()->addStretch(1);
    later.follow(presets.presets);
    later.follow(presets.shortcutErrors);
    later.follow(editor.recordingShortcutID);
}

void PresetDetail::show(const Uuid& preset)
{
    id = preset;
    levels->show(id);
    redraw();
}

void PresetDetail::setNarrow(bool narrow)
{
    for (QBoxLayout* row : labelledRows)
        row->setDirection(narrow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
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
    return makeLabelledRow("Name", name, {trash});
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
    return makeLabelledRow("Keyboard shortcut", nullptr, {recorder, cancel, remove});
}

QWidget* PresetDetail::makeFooter()
{
    auto* footer = new QWidget;
    QVBoxLayout* column = makeColumn(footer, 6, {0, 4, 0, 0});
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
    widget()->setVisible(preset != nullptr);
    if (!preset)
        return;
    if (name->text() != qString(preset->name)) { // never while the user types: the store then holds what is typed
        name->setText(qString(preset->name));
        name->setCursorPosition(0);
    }
    redrawShortcut(*preset);
}

void PresetDetail::redrawShortcut(const BrightnessPreset& preset)
{
    const bool isRecording = editor.recordingShortcutID.get() == id;
    if (isRecording) {
        recorder->setText("Press a shortcut…");
        recorder->setTextColour(TextColour::accent);
    } else {
        recorder->setText(preset.shortcut ? qString(displayLabel(*preset.shortcut, words)) : QString("None"));
        recorder->setTextColour(preset.shortcut ? TextColour::primary : TextColour::secondary);
    }
    recorder->setAccessibleDescription(recorder->text());
    recorder->updateGeometry();
    passFocus(isRecording ? *remove : *cancel, *recorder);
    if (!preset.shortcut)
        passFocus(*remove, *recorder);
    cancel->setVisible(isRecording);
    remove->setVisible(preset.shortcut && !isRecording);
    const auto& errors = presets.shortcutErrors.get();
    if (const auto error = errors.find(id); error != errors.end())
        help->setText(qString(error->second), true);
    else if (isRecording)
        help->setText(qString(words.recordingHelp), false);
    else
        help->setText("Works while Lumenvale is running, even in other apps.", false);
}

} // namespace lumenvale
