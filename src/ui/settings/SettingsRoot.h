// SPDX-License-Identifier: MIT
// The pages of the settings window.
#pragma once

#include "presets/PresetEditor.h"

#include <QStackedWidget>
#include <vector>

namespace lumenvale {

class Clock;
class Diagnostics;
class DisplayStore;
class GeneralPreferences;
class PresetStore;
struct BuildInfo;
struct Words;

/// What the pages show and change; the objects must outlive the pages.
struct SettingsModels {
    DisplayStore& store;
    PresetStore& presets;
    PresetEditor& editor;
    GeneralPreferences& preferences;
    Diagnostics& diagnostics;
    Clock& clock;
    const Words& words;
    const BuildInfo& build; ///< read only while the pages are made
};

/// A tab's content, and below it the footer.
class SettingsPage final : public QWidget {
public:
    SettingsPage(SettingsTab tab, const SettingsModels& models);

    const SettingsTab tab;
};

/// All pages, one of which is shown.
class SettingsRoot final : public QStackedWidget {
public:
    SettingsRoot(const std::vector<SettingsTab>& tabs, const SettingsModels& models);

    void show(SettingsTab tab);
};

} // namespace lumenvale
