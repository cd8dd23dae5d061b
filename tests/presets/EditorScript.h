// SPDX-License-Identifier: MIT
// The editor over the real display store, in the store's language. Every announcement of displays or presets
// reaches the editor from within, as an eager observer would pass it on, and again on the next turn of the loop.
#pragma once

#include "base/Words.h"
#include "presets/PresetEditor.h"
#include "support/StoreScript.h"

namespace lumenvale {

class EditorScript : public StoreScript {
public:
    EditorScript()
    {
        verbs["preset"] = [this](auto& w) { presets.rename(Uuid(presets.addPreset(levels(w, 2), {}).id), w[1]); };
        verbs["restart"] = [this](auto&) { startEditor(); };
        verbs["activate"] = [this](auto& w) { editor->activate(id(w[1])); };
        verbs["select"] = [this](auto& w) {
            const auto selection =
                store->display(w[1]) ? SettingsSelection(DisplaySelection{w[1]}) : PresetSelection{id(w[1])};
            editor->select(selection, w.size() > 2);
        };
        verbs["open"] = [this](auto& w) { editor->show(w.size() > 1 ? std::optional(w[1]) : std::nullopt); };
        verbs["close"] = [this](auto&) { editor->settingsClosed(); };
        verbs["unfocus"] = [this](auto&) { editor->settingsResignedKey(); };
        verbs["tab"] = [this](auto& w) {
            editor->selectTab(static_cast<SettingsTab>(std::ranges::find(tabNames, w[1]) - std::begin(tabNames)));
        };
        verbs["add"] = [this](auto&) { editor->addPresetFromCurrentLevels(); };
        verbs["delete"] = [this](auto& w) { editor->deletePreset(id(w[1])); };
        verbs["edit"] = [this](auto& w) { editor->setLevel(id(w[1]), *store->display(w[2]), std::stod(w[3])); };
        verbs["revert"] = [this](auto&) { reports.push_back(editor->revert() ? "reverted" : "not reverted"); };
        verbs["record"] = [this](auto& w) { editor->startRecording(id(w[1])); };
        verbs["key"] = [this](auto& w) {
            KeyEvent event{.keyCode = static_cast<std::uint32_t>(std::stoi(w[1])), .characters = "k"};
            event.modifiers = w.size() > 2 ? KeyModifier::shift : 0;
            reports.push_back(editor->handleKeyEvent(event) ? "consumed" : "not consumed");
        };
        verbs["main"] = [this](auto& w) {
            for (Screen& each : screens.list)
                each.isMain = each.uuid == w[1];
        };
        verbs["stored"] = [this](auto& w) { defaults.set("settingsPreset", PropertyValue(w[1])); };
        startEditor();
    }

    void destroyEditor()
    {
        observers.clear();
        store->brightnessObserved = nullptr;
        editor.reset();
        observers.push_back(presets.presets.subscribe([](const auto&) { ADD_FAILURE() << "the editor is gone"; }));
    }
    Uuid id(const std::string& name) const
    {
        const auto found = std::ranges::find(*presets.presets, name, &BrightnessPreset::name);
        return found == presets.presets->end() ? Uuid::parse(name).value_or(Uuid()) : found->id;
    }

    PresetStore presets{defaults};
    std::unique_ptr<PresetEditor> editor;

protected:
    static constexpr std::string_view tabNames[] = {"general", "displays", "presets"};

    void startEditor()
    {
        observers.clear();
        editor = std::make_unique<PresetEditor>(*store, presets, defaults);
        const auto tell = [this](const auto&) { editor->displaysChanged(store->displays.get()); };
        store->brightnessObserved = [this](const auto& changed) { editor->displaysChanged(changed); };
        observers.push_back(
            store->displays.subscribe([this](const auto& list) { editor->displaysChanged(list); }));
        observers.push_back(presets.presets.subscribe(tell));
        editor->shortcutRecordingChanged = [this] { reports.push_back("recording changed"); };
    }
    void turn() override
    {
        if (editor)
            editor->displaysChanged(store->displays.get());
    }

    std::string nameOf(const std::optional<Uuid>& preset) const
    {
        const BrightnessPreset* found = preset ? presets.preset(*preset) : nullptr;
        return found ? found->name : preset ? "gone" : "none";
    }
    static std::string text(const BrightnessPreset& preset)
    {
        std::string result;
        for (const auto& [display, level] : preset.values)
            result += display + " " + percentageText({.method = ControlMethod::ddc}, level) + " ";
        return result + (preset.shortcut ? displayLabel(*preset.shortcut, portableWords) : "");
    }
    std::map<std::string, std::string> state() const override
    {
        std::map<std::string, std::string> result = StoreScript::state();
        for (const BrightnessPreset& each : *presets.presets)
            result[each.name] = text(each) + (presets.shortcutErrors->contains(each.id) ? " refused" : "");
        if (!editor)
            return result;
        const auto& selection = *editor->selection;
        const auto* display = selection ? std::get_if<DisplaySelection>(&*selection) : nullptr;
        const auto* preset = selection ? std::get_if<PresetSelection>(&*selection) : nullptr;
        result["active"] = nameOf(*editor->activePresetID);
        const std::string message = editor->message->value_or("-");
        const std::map<std::string, std::string> shortened = {
            {"Brightness changed outside the preset. This preset is no longer active.", "outside"},
            {"Reverted this editing session and restored the saved preset.", "reverted"}};
        result["message"] = shortened.contains(message) ? shortened.at(message) : message;
        result["preparing"] = *editor->isPreparing ? "yes" : "no";
        result["recording"] = nameOf(*editor->recordingShortcutID);
        result["selected"] = display ? display->id : preset ? nameOf(preset->id) : "none";
        result["session"] = *editor->session ? text((*editor->session)->savedPreset) : "none";
        result["tab"] = tabNames[static_cast<int>(*editor->selectedTab)];
        const auto storedPreset = readDefault<std::string>(defaults, "settingsPreset");
        result["stored"] = readDefault<std::string>(defaults, "settingsDisplay").value_or("none") + " " +
                           (storedPreset ? nameOf(Uuid::parse(*storedPreset)) : "none");
        return result;
    }

    std::vector<Subscription> observers;
};

} // namespace lumenvale
