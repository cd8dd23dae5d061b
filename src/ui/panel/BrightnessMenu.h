// SPDX-License-Identifier: MIT
// The panel's content: a row for each display, the presets, and the footer. Holds nothing but widgets: it watches
// the stores, and redraws once on the loop's next turn from what they then hold.
#pragma once

#include "base/Clock.h"
#include "displays/DisplayStore.h"
#include "presets/PresetEditor.h"
#include "presets/PresetStore.h"
#include "ui/look/KeyedRows.h"
#include "ui/look/LaterCall.h"
#include "ui/panel/MenuGlassBackground.h"

#include <functional>
#include <string>
#include <vector>

class QVBoxLayout;

namespace lumenvale {

class BrightnessSlider;
class ElidedLabel;
class PresetRow;
class ScrollPage;

class BrightnessMenu final : public MenuGlassBackground {
public:
    using ApplyPreset = std::function<void(const BrightnessPreset&)>;

    /// The references must outlive the view. `openSettings` and `applyPreset` may close it.
    BrightnessMenu(DisplayStore& store, PresetStore& presets, PresetEditor& editor, Clock& clock,
                   std::function<void()> openSettings, ApplyPreset applyPreset);

protected:
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QWidget* makeContent();
    QWidget* makePresetSection();
    QWidget* makeFooter();
    void settleLayout();
    void chooseScrollBar();
    void redrawDisplays();
    void redrawPresets();
    BrightnessSlider* makeRow(const std::string& id);
    PresetRow* makePresetRow(const Uuid& id);

    DisplayStore& store;
    PresetStore& presets;
    PresetEditor& editor;
    Clock& clock;
    std::function<void()> openSettings;
    ApplyPreset applyPreset;

    ScrollPage* page = nullptr;
    QVBoxLayout* displayList = nullptr;
    QVBoxLayout* presetList = nullptr;
    ElidedLabel* emptyMessage = nullptr;
    QWidget* presetSection = nullptr;
    std::vector<KeyedRows<std::string, BrightnessSlider>> displayRows; // one, once its layout exists
    std::vector<KeyedRows<Uuid, PresetRow>> presetRows;
    LaterCall displaysLater;
    LaterCall presetsLater;
    std::vector<Subscription> subscriptions;
};

} // namespace lumenvale
