// SPDX-License-Identifier: MIT
// The settings window: opening and closing, tabs, selection, recording, and what a start finds.
#include "presets/PresetEditorFixture.h"

namespace lumenvale {
namespace {

KeyEvent keyDown(std::uint32_t code, std::uint32_t modifiers = 0)
{
    return {.keyCode = code, .modifiers = modifiers, .characters = "k"};
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
    EXPECT_EQ(defaults.value("settingsDisplay"), PropertyValue("b"));
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
    editor->select(PresetSelection{add("C", {{"gone", 0.2}})});
    editor->select(DisplaySelection{"a"});
    EXPECT_EQ(*editor->activePresetID, std::nullopt) << "nothing is known of its displays";
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
    EXPECT_TRUE(isSelected(id));
    EXPECT_TRUE(*editor->session);
    editor->startRecording(id);
    editor->selectTab(SettingsTab::general);
    EXPECT_EQ(*editor->recordingShortcutID, std::nullopt);
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

    displays.list[0].brightness.reset();
    makeEditor();
    editor->addPresetFromCurrentLevels();
    finishAll();
    displays.list[0].brightness = 0.1;
    editor->displaysChanged(displays.list);
    EXPECT_EQ(*editor->activePresetID, std::nullopt) << "the user has begun something else";

    displays.list[0].brightness = 0.2;
    makeEditor();
    EXPECT_EQ(*editor->activePresetID, std::nullopt);
    displays.show("a", 0.1);
    EXPECT_EQ(*editor->activePresetID, std::nullopt) << "only the first levels seen count";
    defaults.set("settingsPreset", "rubbish");
    makeEditor();
    EXPECT_EQ(*editor->activePresetID, std::nullopt);
}

} // namespace
} // namespace lumenvale
