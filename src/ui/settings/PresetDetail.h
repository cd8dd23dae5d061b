// SPDX-License-Identifier: MIT
// The page of one preset: name, shortcut, a level for each display. Every change applies and is saved at once.
// Holds no state but widgets; shows nothing when its preset is gone.
#pragma once

#include "base/Clock.h"
#include "displays/DisplayStore.h"
#include "presets/PresetEditor.h"
#include "presets/PresetStore.h"
#include "ui/look/KeyedRows.h"
#include "ui/look/LaterCall.h"

#include <QLineEdit>
#include <QWidget>
#include <map>
#include <string>
#include <vector>

class QBoxLayout;
class QVBoxLayout;

namespace lumenvale {

class BrightnessSlider;
class DisconnectedRow;
class ElidedLabel;
class SmallButton;
class SymbolLabel;
class TextLabel;

class PresetDetail final : public QWidget {
public:
    /// The references must outlive the view.
    PresetDetail(DisplayStore& store, PresetStore& presets, PresetEditor& editor, Clock& clock);

    /// Shows another preset.
    void show(const Uuid& preset);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QWidget* makeIdentityCard();
    QBoxLayout* makeNameRow();
    QBoxLayout* makeShortcutRow();
    QWidget* makeShortcutHelp();
    QWidget* makeLevels();
    QWidget* makeFooter();
    void redraw();
    void redrawShortcut(const BrightnessPreset& preset);
    void redrawLevels(const BrightnessPreset& preset);
    BrightnessSlider* makeLevelRow(const std::string& display);

    Uuid id;
    DisplayStore& store;
    PresetStore& presets;
    PresetEditor& editor;
    Clock& clock;
    QWidget* content = nullptr;
    std::vector<QBoxLayout*> labelledRows;
    QLineEdit* name = nullptr;
    SmallButton* recorder = nullptr;
    SmallButton* cancel = nullptr;
    SmallButton* remove = nullptr;
    TextLabel* help = nullptr;
    SymbolLabel* warning = nullptr;
    TextLabel* active = nullptr;
    QVBoxLayout* levelList = nullptr;
    QVBoxLayout* absentList = nullptr;
    QWidget* levelCard = nullptr;
    QWidget* levelDivider = nullptr; ///< between the displays that are connected and those that are not
    std::vector<KeyedRows<std::string, BrightnessSlider>> levels;      // one, once its layout exists
    std::vector<KeyedRows<std::string, DisconnectedRow>> absentLevels; // likewise
    LaterCall redrawLater;
    std::vector<Subscription> subscriptions;
};

} // namespace lumenvale
