// SPDX-License-Identifier: MIT
// The settings window: opening and closing, tabs, selection, recording, and what a start finds.
#include "presets/PresetEditorFixture.h"

#include <random>

namespace lumenvale {
namespace {

KeyEvent keyDown(std::uint32_t code, std::uint32_t modifiers = 0)
{
    KeyEvent event;
    event.keyCode = code;
    event.modifiers = modifiers;
    event.characters = "k";
    return event;
}

TEST_F(PresetEditorTest, OpensOnTheDisplayAskedForElseTheMainOneElseTheFirst)
{
    const auto opensOn = [this](const std::optional<std::string>& preferred) {
        editor->show(preferred);
        const std::string shown = shownDisplay();
        EXPECT_EQ(*editor->selectedTab, SettingsTab::displays);
        EXPECT_EQ(readDefault<std::string>(defaults, "settingsDisplay").value_or(""), shown);
        editor->settingsClosed();
        return shown;
    };
    EXPECT_EQ(opensOn("gone"), "b");
    EXPECT_EQ(opensOn("a"), "a");
    EXPECT_EQ(opensOn("display-2"), "b") << "its number";
    EXPECT_EQ(opensOn("display-1"), "a");
    EXPECT_EQ(opensOn(std::nullopt), "a") << "the last one";
    displays.list[1].isMain = false;
    EXPECT_EQ(opensOn("gone"), "a");
    EXPECT_EQ(opensOn("b"), "b");
    makeEditor();
    EXPECT_EQ(opensOn(std::nullopt), "b") << "remembered from the last run";
}

TEST_F(PresetEditorTest, ADisplayIsShownAsSoonAsThereIsOneAndReplacedWhenItIsGone)
{
    const std::vector<DisplayInfo> all = std::exchange(displays.list, {});
    editor->show("a");
    EXPECT_EQ(*editor->selection, std::nullopt);
    displays.list = all;
    editor->displaysChanged(displays.list);
    EXPECT_EQ(shownDisplay(), "a");
    displays.list.erase(displays.list.begin());
    editor->displaysChanged(displays.list);
    EXPECT_EQ(shownDisplay(), "b");
    displays.list.clear();
    editor->displaysChanged(displays.list);
    EXPECT_EQ(*editor->selection, std::nullopt);
    editor->settingsClosed();
    displays.list = all;
    editor->displaysChanged(displays.list);
    EXPECT_EQ(*editor->selection, std::nullopt) << "nobody looks";
}

TEST_F(PresetEditorTest, OpeningWithAnActivePresetAppliesItAgainAndOpensItsSession)
{
    const Uuid id = add("A", {{"a", 0.1}});
    editor->activate(id);
    editor->show("a");
    editor->show("b"); // is open already
    EXPECT_TRUE(isSelected(id) && isActive(id));
    EXPECT_EQ(*editor->session, (PresetEditingSession{*store.preset(id)}));
    finishAll();
    EXPECT_EQ(displays.applied.size(), 1u) << "the activation was replaced";
    EXPECT_EQ(message(), "") << "selecting says nothing";
    EXPECT_TRUE(editor->settingsVisible());
}

TEST_F(PresetEditorTest, ActivatingTheOpenPresetKeepsItsSessionAndAnotherStartsItsOwn)
{
    const Uuid first = add("A", {{"a", 0.1}});
    const Uuid second = add("B", {{"a", 0.2}});
    openOn(first);
    const PresetEditingSession session = **editor->session;
    editor->setLevel(first, displays.list[0], 0.9);
    editor->activate(first);
    EXPECT_EQ(*editor->session, session);
    editor->activate(second);
    EXPECT_EQ(*editor->session, (PresetEditingSession{*store.preset(second)}));
}

TEST_F(PresetEditorTest, SelectingAPresetAppliesItOnlyWhileTheWindowIsVisible)
{
    const Uuid first = add("A", {{"a", 0.1}});
    const Uuid second = add("B", {{"a", 0.2}});
    editor->select(PresetSelection{first});
    EXPECT_TRUE(isSelected(first));
    EXPECT_EQ(*editor->activePresetID, std::nullopt);
    EXPECT_EQ(*editor->session, std::nullopt);
    EXPECT_EQ(displays.waitCount(), 0u);

    editor->show(std::nullopt);
    editor->select(PresetSelection{first});
    editor->select(PresetSelection{second});
    finishAll();
    EXPECT_EQ(displays.applied, (std::vector<std::map<std::string, double>>{{{"a", 0.2}}}));
    EXPECT_TRUE(isActive(second));
    editor->select(PresetSelection{second});
    EXPECT_EQ(displays.waitCount(), 0u) << "selected already";
    editor->select(*editor->selection, true);
    EXPECT_EQ(displays.waitCount(), 1u);
    editor->select(PresetSelection{Uuid::random()});
    finishAll();
    EXPECT_EQ(displays.applied.size(), 1u);
    EXPECT_EQ(*editor->session, std::nullopt);

    editor->select(DisplaySelection{"a"});
    EXPECT_EQ(*editor->selectedTab, SettingsTab::displays);
    EXPECT_EQ(storedSelection(), std::nullopt);
    EXPECT_EQ(defaults.value("settingsDisplay"), PropertyValue("a"));
}

TEST_F(PresetEditorTest, APresetWhoseApplicationIsCancelledStaysActiveOnlyIfTheDisplaysMatchIt)
{
    const Uuid matching = add("A", {{"a", 0.5}});
    const Uuid other = add("B", {{"a", 0.2}});
    editor->show(std::nullopt);
    editor->select(PresetSelection{other});
    editor->select(DisplaySelection{"a"});
    EXPECT_EQ(*editor->activePresetID, std::nullopt);
    editor->select(PresetSelection{matching});
    editor->select(DisplaySelection{"a"});
    EXPECT_TRUE(isActive(matching));
    EXPECT_EQ(message(), "");
}

TEST_F(PresetEditorTest, TabsShowADisplayAndTheActivePreset)
{
    const Uuid id = add("A", {{"a", 0.1}});
    openOn(id);
    editor->selectTab(SettingsTab::displays);
    EXPECT_EQ(shownDisplay(), "b");
    editor->selectTab(SettingsTab::general);
    EXPECT_EQ(shownDisplay(), "b") << "unchanged";
    editor->startRecording(id);
    editor->selectTab(SettingsTab::general);
    EXPECT_EQ(*editor->recordingShortcutID, id) << "the tab is shown already";
    editor->selectTab(SettingsTab::presets);
    EXPECT_EQ(*editor->recordingShortcutID, std::nullopt);
    EXPECT_TRUE(isSelected(id));
    EXPECT_TRUE(*editor->session);
    finishAll();
    displays.show("a", 0.9);
    editor->selectTab(SettingsTab::displays);
    editor->selectTab(SettingsTab::presets);
    EXPECT_EQ(*editor->selection, std::nullopt) << "no preset is active";
    EXPECT_EQ(*editor->selectedTab, SettingsTab::presets);
}

TEST_F(PresetEditorTest, RecordsTheFirstUsableFreeShortcut)
{
    const Uuid first = add("A", {});
    const Uuid second = add("B", {});
    int changes = 0;
    editor->shortcutRecordingChanged = [&] { ++changes; };
    EXPECT_FALSE(editor->handleKeyEvent(keyDown(40)));
    editor->startRecording(Uuid::random());
    EXPECT_EQ(changes, 0);
    editor->startRecording(first);
    editor->startRecording(second);
    EXPECT_EQ(changes, 2);
    EXPECT_TRUE(editor->handleKeyEvent(keyDown(56, KeyModifier::shift)));
    EXPECT_TRUE(editor->handleKeyEvent(keyDown(106))); // F16 is the first preset's
    EXPECT_EQ(store.shortcutErrors->count(second), 1u);
    EXPECT_EQ(*editor->recordingShortcutID, second);
    EXPECT_TRUE(editor->handleKeyEvent(keyDown(escapeKeyCode, KeyModifier::shift)));
    EXPECT_EQ(*editor->recordingShortcutID, std::nullopt);
    EXPECT_EQ(displayLabel(*store.preset(second)->shortcut), "⇧⎋");
    EXPECT_TRUE(store.shortcutErrors->empty());
    EXPECT_EQ(changes, 3);

    editor->startRecording(first);
    EXPECT_TRUE(editor->handleKeyEvent(keyDown(escapeKeyCode)));
    EXPECT_FALSE(editor->handleKeyEvent(keyDown(escapeKeyCode)));
    EXPECT_EQ(displayLabel(*store.preset(first)->shortcut), "F16");
    EXPECT_EQ(changes, 5);
}

TEST_F(PresetEditorTest, LosingTheFocusKeepsWhatWasEditedAndStartsTheSessionAnew)
{
    const Uuid id = add("A", {{"a", 0.1}});
    openOn(id);
    editor->setLevel(id, displays.list[0], 0.3);
    editor->startRecording(id);
    editor->settingsResignedKey();
    EXPECT_EQ(*editor->recordingShortcutID, std::nullopt);
    EXPECT_EQ(*editor->session, (PresetEditingSession{*store.preset(id)}));
    editor->setLevel(id, displays.list[0], 0.9);
    EXPECT_TRUE(editor->revert());
    EXPECT_EQ(store.preset(id)->values.at("a"), 0.3);
    finishAll();
    EXPECT_TRUE(isActive(id));
}

TEST_F(PresetEditorTest, ClosingEndsRecordingOperationAndSession)
{
    const Uuid id = add("A", {{"a", 0.1}});
    openOn(id);
    const Uuid other = add("B", {{"a", 0.9}});
    editor->select(PresetSelection{other});
    editor->startRecording(other);
    editor->settingsResignedKey();
    editor->settingsClosed();
    EXPECT_FALSE(editor->settingsVisible());
    EXPECT_EQ(*editor->recordingShortcutID, std::nullopt);
    EXPECT_EQ(*editor->session, std::nullopt);
    EXPECT_FALSE(*editor->isPreparing);
    EXPECT_EQ(*editor->activePresetID, std::nullopt) << "it was not applied";
    finishAll();
    EXPECT_EQ(displays.applied.size(), 1u);
    EXPECT_FALSE(editor->revert());
}

TEST_F(PresetEditorTest, AfterAStartThePresetSelectedLastIsActiveAgainIfTheDisplaysStillMatchIt)
{
    const Uuid id = add("A", {{"a", 0.1}});
    editor->activate(id);
    finishAll();
    makeEditor();
    EXPECT_TRUE(isActive(id));
    EXPECT_EQ(displays.waitCount(), 0u) << "nothing is applied";

    displays.list[0].brightness.reset();
    makeEditor();
    EXPECT_EQ(*editor->activePresetID, std::nullopt) << "not known yet";
    displays.list[0].brightness = 0.1;
    editor->displaysChanged(displays.list);
    EXPECT_TRUE(isActive(id));

    displays.list[0].brightness = 0.2;
    makeEditor();
    EXPECT_EQ(*editor->activePresetID, std::nullopt);
    displays.show("a", 0.1);
    EXPECT_EQ(*editor->activePresetID, std::nullopt) << "only the first levels seen count";
    defaults.set("settingsPreset", "rubbish");
    makeEditor();
    EXPECT_EQ(*editor->activePresetID, std::nullopt);
}

/// Does one thing that a user, a display or the system can do.
void act(PresetEditorTest& test, std::mt19937& random)
{
    const auto number = [&](std::size_t below) { return static_cast<std::size_t>(random() % below); };
    PresetEditor& editor = *test.editor;
    const auto& presets = *test.store.presets;
    const Uuid preset = presets.empty() ? Uuid::random() : presets[number(presets.size())].id;
    const std::string display = number(2) == 0 ? "a" : "b";
    const double level = static_cast<double>(number(11)) / 10;
    switch (number(15)) {
    case 0:
        return editor.activate(preset);
    case 1:
        return editor.select(PresetSelection{preset}, number(2) == 0);
    case 2:
        return editor.select(DisplaySelection{display}, number(2) == 0);
    case 3:
        return editor.show(display);
    case 4:
        return editor.selectTab(static_cast<SettingsTab>(number(3)));
    case 5:
        return presets.size() < 5 ? editor.addPresetFromCurrentLevels() : editor.deletePreset(preset);
    case 6:
        return number(3) == 0 ? editor.deletePreset(preset) : editor.startRecording(preset);
    case 7:
    case 8:
        if (editor.session.get() && !test.displays.list.empty())
            editor.setLevel(editor.session.get()->savedPreset.id, test.displays.list.front(), level);
        return;
    case 9:
        return void(editor.revert());
    case 10:
        return void(editor.handleKeyEvent(keyDown(static_cast<std::uint32_t>(40 + number(20)))));
    case 11:
        return number(3) == 0 ? editor.settingsClosed() : editor.settingsResignedKey();
    case 12:
        return test.displays.show(display, level);
    case 13:
        if (test.displays.list.size() > 1)
            test.displays.list.erase(test.displays.list.begin() + static_cast<std::ptrdiff_t>(number(2)));
        else
            test.displays.add(test.displays.list.front().id == "a" ? "b" : "a", level, number(2) == 0 ? 0 : 10);
        return editor.displaysChanged(test.displays.list);
    default:
        return test.displays.finishWrites();
    }
}

TEST_F(PresetEditorTest, WhateverHappensAnActivePresetMatchesTheDisplaysAndSessionsNeedTheWindow)
{
    std::mt19937 random(4711);
    int activeCount = 0;
    for (int i = 0; i < 20'000; ++i) {
        act(*this, random);
        ASSERT_TRUE(editor->settingsVisible() || !editor->session.get());
        ASSERT_TRUE(!editor->isPreparing.get() || displays.waitCount() > 0);
        if (i % 5 != 0)
            continue;
        finishAll();
        ASSERT_FALSE(editor->isPreparing.get());
        const std::optional<Uuid> active = *editor->activePresetID;
        if (!active)
            continue;
        ++activeCount;
        ASSERT_TRUE(store.preset(*active));
        const auto& values = store.preset(*active)->values;
        for (const DisplayInfo& each : displays.list) {
            if (const auto level = values.find(each.id); level != values.end()) {
                ASSERT_NEAR(*each.brightness, level->second, each.method == ControlMethod::ddc ? 0.1 : 0.0001);
            }
        }
    }
    EXPECT_GT(activeCount, 400);
}

} // namespace
} // namespace lumenvale
