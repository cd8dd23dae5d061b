// SPDX-License-Identifier: MIT
// The content of the settings window: a bar of tabs and the page of the editor's selected tab, which it follows
// and sets.
#pragma once

#include "ui/controls/LaterCall.h"
#include "ui/settings/SettingsRoot.h"

#include <QWidget>
#include <vector>

class QAbstractButton;

namespace lumenvale {

class SettingsTabController final : public QWidget {
public:
    explicit SettingsTabController(const SettingsModels& models);

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QWidget* makeBar();
    void selectTab(std::size_t index);
    void follow();

    PresetEditor& editor;
    const std::vector<SettingsTab> tabs{SettingsTab::general, SettingsTab::displays, SettingsTab::presets};
    std::vector<QAbstractButton*> buttons; ///< one for each tab
    QWidget* bar;
    SettingsRoot* pages;
    LaterCall tabObservation;
};

} // namespace lumenvale
