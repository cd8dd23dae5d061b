// SPDX-License-Identifier: MIT
// The panel's content: a row for each display, the presets, and the footer. Holds nothing but widgets: what they
// show is read from the stores at each redraw.
#pragma once

#include "base/Clock.h"
#include "displays/DisplayStore.h"
#include "presets/PresetEditor.h"
#include "presets/PresetStore.h"
#include "ui/controls/LaterCall.h"
#include "ui/panel/BrightnessPanel.h"

#include <functional>
#include <string>

namespace lumenvale {

class BrightnessSlider;
class ElidedLabel;
class PresetRow;
class ScrollPage;
template <typename Identifier, typename Row>
class KeyedRows;

constexpr int panelWidth = 340;

/// The height of the menu with so many displays and presets, in points: term by term its layout.
double preferredHeight(int displays, int presets);

class BrightnessMenu final : public MenuGlassBackground {
public:
    using ApplyPreset = std::function<void(const BrightnessPreset&)>;

    /// The references must outlive the view. `openSettings` and `applyPreset` may close it.
    BrightnessMenu(DisplayStore& store, PresetStore& presets, PresetEditor& editor, Clock& clock,
                   std::function<void()> openSettings, ApplyPreset applyPreset);

    /// By how much it is taller than `preferredHeight`: by what keeps displays from being set.
    int extraHeight() const { return extra; }
    /// `extraHeight` is another one now.
    std::function<void()> extraHeightChanged;

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
    KeyedRows<std::string, BrightnessSlider>* displayRows;
    ElidedLabel* emptyMessage;
    KeyedRows<Uuid, PresetRow>* presetRows;
    QWidget* presetSection = nullptr;
    int extra = 0;
    LaterCall displaysRedraw;
    LaterCall presetsRedraw;
};

} // namespace lumenvale
