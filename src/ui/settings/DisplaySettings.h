// SPDX-License-Identifier: MIT
// The Displays and the Presets page: a list at the left, and the details of what is selected in it.
#pragma once

#include "base/Words.h"
#include "displays/Diagnostics.h"
#include "displays/DisplayStore.h"
#include "presets/PresetEditor.h"
#include "presets/PresetStore.h"
#include "ui/controls/LaterCall.h"
#include "ui/settings/SettingsRoot.h"

#include <QWidget>
#include <optional>
#include <string>
#include <vector>

class QStackedWidget;

namespace lumenvale {

class DisplayDetail;
class PresetDetail;
class Sidebar;
class TextLabel;

class DisplaySettings final : public QWidget {
public:
    /// `section` is `displays` or `presets`.
    DisplaySettings(SettingsTab section, const SettingsModels& models);

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QWidget* makeSide();
    void redraw();
    void redrawDisplays();
    void redrawPresets();
    const std::vector<Finding>& findingsFor(const DisplayInfo& display);

    SettingsTab section;
    DisplayStore& store;
    PresetStore& presets;
    PresetEditor& editor;
    Diagnostics& diagnostics;
    const Words& words;
    Sidebar* sidebar = nullptr;
    QWidget* side = nullptr;
    QStackedWidget* details = nullptr;
    DisplayDetail* displayDetail = nullptr;
    PresetDetail* presetDetail = nullptr;
    TextLabel* emptyMessage = nullptr;
    TextLabel* failure = nullptr;
    std::vector<Finding> findings; ///< about `examinedDisplay`, as of the last examination
    std::string examinedDisplay;   ///< identifier and status; empty after a refresh
    LaterCall later;
    Subscription refreshes;
};

} // namespace lumenvale
