// SPDX-License-Identifier: MIT
// The menus of the status item and of the Dock icon: builds them from the presets, and has the system ask for them
// again when they have changed. Main thread only.
#pragma once

#include "platform/Shell.h"
#include "presets/PresetStore.h"
#include "ui/controls/LaterCall.h"

#include <functional>
#include <optional>

namespace lumenvale {

/// What choosing a preset's row does.
struct DockPresetAction {
    std::function<void()> action;

    void invoke() const { action(); }
};

/// What the other rows do, and what the menus show of the rest of the program.
struct MenuContent {
    std::function<void()> showPanelAtStatusItem;
    std::function<void()> openDockBrightness;
    std::function<void()> showSettings;
    std::function<void(const Uuid&)> applyPreset;
    std::function<std::optional<Uuid>()> activePreset;
};

class MenuPublisher {
public:
    /// The references must outlive the publisher.
    MenuPublisher(PresetStore& presets, Dock& dock, MenuContent content);

    /// The item whose menu is published; null when there is none. It is used until the next call.
    void setStatusItem(StatusItem* item) { statusItem = item; }

    Menu statusMenu() const;
    Menu dockMenu() const;
    /// The active preset changed. The menus are published on the loop's next turn: a menu must not change while
    /// one of its rows acts.
    void menusChanged() { publishLater.request(); }

private:
    void appendPresets(Menu& menu) const;
    void publish();

    PresetStore& presets;
    Dock& dock;
    MenuContent content;
    StatusItem* statusItem = nullptr;
    LaterCall publishLater;
    Subscription presetObservation;
};

} // namespace lumenvale
