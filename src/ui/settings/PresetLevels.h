// SPDX-License-Identifier: MIT
// The levels on a preset's page: a slider for each connected display, and the displays that are not connected.
#pragma once

#include "base/Clock.h"
#include "displays/DisplayStore.h"
#include "presets/PresetEditor.h"
#include "presets/PresetStore.h"
#include "ui/controls/LaterCall.h"

#include <QWidget>
#include <string>

namespace lumenvale {

class BrightnessSlider;
class TextLabel;
template <typename Identifier, typename Row>
class KeyedRows;

class PresetLevels final : public QWidget {
public:
    /// The references must outlive the view.
    PresetLevels(DisplayStore& store, PresetStore& presets, PresetEditor& editor, Clock& clock);

    /// Shows another preset.
    void show(const Uuid& preset);

private:
    class DisconnectedRow;

    QWidget* makeHeading();
    void redraw();
    BrightnessSlider* makeRow(const std::string& display);
    void showLevel(BrightnessSlider& row, const DisplayInfo& display, const BrightnessPreset& preset);

    Uuid id;
    DisplayStore& store;
    PresetStore& presets;
    PresetEditor& editor;
    Clock& clock;
    TextLabel* active;
    QWidget* card;
    KeyedRows<std::string, BrightnessSlider>* connected;
    QWidget* divider;
    KeyedRows<std::string, DisconnectedRow>* disconnected;
    LaterCall later;
};

} // namespace lumenvale
