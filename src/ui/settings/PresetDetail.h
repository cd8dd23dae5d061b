// SPDX-License-Identifier: MIT
// The page of one preset: name, shortcut, a level for each display. Every change applies and is saved at once.
// Holds no state but widgets; shows nothing when its preset is gone.
#pragma once

#include "base/Clock.h"
#include "base/Words.h"
#include "displays/DisplayStore.h"
#include "presets/PresetEditor.h"
#include "presets/PresetStore.h"
#include "ui/controls/LaterCall.h"
#include "ui/settings/DetailPage.h"

#include <vector>

class QBoxLayout;
class QLineEdit;

namespace lumenvale {

class NoticeLabel;
class PresetLevels;
class SmallButton;

class PresetDetail final : public DetailPage {
public:
    /// The references must outlive the view.
    PresetDetail(DisplayStore& store, PresetStore& presets, PresetEditor& editor, Clock& clock,
                 const Words& words);

    /// Shows another preset.
    void show(const Uuid& preset);

protected:
    void setNarrow(bool narrow) override;

private:
    QWidget* makeIdentityCard();
    QBoxLayout* makeNameRow();
    QBoxLayout* makeShortcutRow();
    QWidget* makeFooter();
    void redraw();
    void redrawShortcut(const BrightnessPreset& preset);

    Uuid id;
    PresetStore& presets;
    PresetEditor& editor;
    const Words& words;
    std::vector<QBoxLayout*> labelledRows;
    QLineEdit* name = nullptr;
    SmallButton* recorder = nullptr;
    SmallButton* cancel = nullptr;
    SmallButton* remove = nullptr;
    NoticeLabel* help;
    PresetLevels* levels;
    LaterCall later;
};

} // namespace lumenvale
