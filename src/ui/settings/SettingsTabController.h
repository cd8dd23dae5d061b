// SPDX-License-Identifier: MIT
// The content of the settings window: a bar of tabs and the page of the editor's selected tab, which it follows
// and sets.
#pragma once

#include "base/Clock.h"
#include "displays/Diagnostics.h"
#include "displays/DisplayStore.h"
#include "preferences/BuildInfo.h"
#include "preferences/GeneralPreferences.h"
#include "presets/PresetEditor.h"
#include "presets/PresetStore.h"
#include "ui/look/LaterCall.h"

#include <QWidget>
#include <array>
#include <vector>

class QAbstractButton;
class QStackedWidget;

namespace lumenvale {

class SettingsTabController final : public QWidget {
public:
    /// What the pages show and change; everything must outlive the controller.
    struct Models {
        DisplayStore& store;
        PresetStore& presets;
        PresetEditor& editor;
        GeneralPreferences& preferences;
        Diagnostics& diagnostics;
        Clock& clock;
        BuildInfo build;
    };

    explicit SettingsTabController(Models models);

    static constexpr std::array tabs = {SettingsTab::general, SettingsTab::displays, SettingsTab::presets};

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QWidget* makeBar();
    QWidget* makePage(SettingsTab tab, const Models& models);
    void selectTab(std::size_t index);
    void follow();

    PresetEditor& editor;
    std::vector<QAbstractButton*> buttons;
    QWidget* bar = nullptr;
    QStackedWidget* pages = nullptr;
    bool isReady = false; ///< the tabs exist; before, their selection is not the user's
    LaterCall followLater;
    Subscription tabObservation;
};

} // namespace lumenvale
