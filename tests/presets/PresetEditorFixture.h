// SPDX-License-Identifier: MIT
// An editor over two displays and a preset store. Every announcement of the display list or of the presets
// reaches the editor from within, as an eager observer would pass it on.
#pragma once

#include "base/MemoryUserDefaults.h"
#include "presets/PresetEditor.h"
#include "support/FakePresetDisplays.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace lumenvale {

struct PresetEditorTest : testing::Test {
    PresetEditorTest()
    {
        displays.add("a", 0.5);
        displays.add("b", 0.7, 0).isMain = true;
        makeEditor();
    }

    void makeEditor()
    {
        editor = std::make_unique<PresetEditor>(displays, store, defaults);
        displays.changed = [this](const auto& list) { editor->displaysChanged(list); };
        presetsObserver = store.presets.subscribe([this](const auto&) { editor->displaysChanged(displays.list); });
    }

    Uuid add(const std::string& name, std::map<std::string, double> values)
    {
        const Uuid id = store.addPreset(std::move(values), {}).id;
        store.rename(id, name);
        return id;
    }
    /// Opens the window on a preset whose levels are on the screen.
    void openOn(const Uuid& id)
    {
        editor->activate(id);
        editor->show(std::nullopt);
        finishAll();
    }
    void finishAll()
    {
        while (displays.waitCount() > 0)
            displays.finishWrites();
    }

    std::string message() const { return editor->message->value_or(""); }
    bool isActive(const Uuid& id) const { return *editor->activePresetID == id; }
    bool isSelected(const Uuid& id) const { return *editor->selection == SettingsSelection(PresetSelection{id}); }
    std::string shownDisplay() const
    {
        const auto& current = *editor->selection;
        const auto* shown = current ? std::get_if<DisplaySelection>(&*current) : nullptr;
        return shown ? shown->id : "";
    }
    std::optional<PropertyValue> storedSelection() const { return defaults.value("settingsPreset"); }

    MemoryUserDefaults defaults;
    FakePresetDisplays displays;
    PresetStore store{defaults};
    std::unique_ptr<PresetEditor> editor;
    Subscription presetsObserver;
};

} // namespace lumenvale
