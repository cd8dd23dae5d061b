// SPDX-License-Identifier: MIT
// Applying, comparing, editing, adding and deleting.
#include "presets/PresetEditorFixture.h"

#include <cmath>

namespace lumenvale {
namespace {

using Levels = std::map<std::string, double>;

constexpr char outsideMessage[] = "Brightness changed outside the preset. This preset is no longer active.";

TEST_F(PresetEditorTest, AnActivatedPresetIsAppliedWhenEarlierWritesHaveEnded)
{
    const Uuid id = add("Evening", {{"a", 0.2}, {"b", 0.3}, {"elsewhere", 0.1}});
    editor->activate(id);
    EXPECT_TRUE(isActive(id) && isSelected(id));
    EXPECT_EQ(*editor->selectedTab, SettingsTab::presets);
    EXPECT_EQ(storedSelection(), PropertyValue(id.toString()));
    EXPECT_EQ(*editor->session, std::nullopt) << "the window is not visible";
    EXPECT_TRUE(*editor->isPreparing);
    EXPECT_TRUE(displays.applied.empty());
    EXPECT_EQ(message(), "");
    displays.finishWrites();
    EXPECT_EQ(displays.applied, (std::vector<Levels>{{{"a", 0.2}, {"b", 0.3}, {"elsewhere", 0.1}}}));
    EXPECT_FALSE(*editor->isPreparing);
    EXPECT_EQ(message(), "Applied Evening.") << "when the writes start";
    finishAll();
    EXPECT_TRUE(isActive(id));
    EXPECT_EQ(message(), "Applied Evening.");
}

TEST_F(PresetEditorTest, OnlyTheLatestOfSeveralActivationsIsApplied)
{
    const Uuid first = add("A", {{"a", 0.1}});
    const Uuid second = add(" ", {{"a", 0.2}});
    editor->activate(first);
    editor->activate(second);
    editor->activate(Uuid::random());
    finishAll();
    EXPECT_EQ(displays.applied, (std::vector<Levels>{{{"a", 0.2}}}));
    EXPECT_EQ(message(), "Applied Untitled preset.");
    EXPECT_TRUE(isActive(second));
    EXPECT_FALSE(*editor->isPreparing);
}

TEST_F(PresetEditorTest, APresetHoldsWhileItsOwnWritesAreUnderWay)
{
    const Uuid id = add("A", {{"a", 0.1}, {"b", 0.2}});
    editor->activate(id);
    displays.finishWrites(); // announces the list while only one of the displays has its level
    displays.show("a", 0.9); // what an earlier write read back
    EXPECT_TRUE(isActive(id));
    editor->addPresetFromCurrentLevels();
    editor->settingsClosed();
    EXPECT_TRUE(isActive(id)) << "ending another operation is no reason to compare";
    displays.show("a", 0.1);
    finishAll();
    EXPECT_TRUE(isActive(id));

    editor->activate(id);
    displays.finishWrites();
    displays.show("b", 0.6); // the user, meanwhile
    EXPECT_TRUE(isActive(id));
    finishAll();
    EXPECT_EQ(*editor->activePresetID, std::nullopt) << "noticed when the writes have ended";
    EXPECT_EQ(message(), outsideMessage);
}

TEST_F(PresetEditorTest, APresetEndsAtTheFirstLevelThatIsNoLongerItsOwn)
{
    displays.list[1].maximum = 7; // has no meaning for a native display
    const Uuid id = add("A", {{"a", 0.5}, {"b", 0.5}, {"gone", 0.1}});
    const auto holdsAt = [&](std::optional<double> a, double b) {
        editor->activate(id);
        finishAll();
        displays.list[0].brightness = a;
        displays.list[1].brightness = b;
        editor->displaysChanged(displays.list);
        EXPECT_EQ(isActive(id), message() != outsideMessage);
        return isActive(id);
    };
    EXPECT_TRUE(holdsAt(0.505, 0.5)) << "both are 50 units";
    EXPECT_TRUE(holdsAt(0.5, 0.50005));
    EXPECT_TRUE(holdsAt(std::nullopt, 0.5)) << "unknown";
    EXPECT_FALSE(holdsAt(0.51, 0.5));
    EXPECT_FALSE(holdsAt(0.499, 0.5));
    EXPECT_FALSE(holdsAt(0.5, 0.5002));
    EXPECT_FALSE(holdsAt(0.5, 0.4998));
    editor->activate(id);
    finishAll();
    displays.list[0].brightness = 0.9;
    editor->displaysChanged({displays.list[1]});
    EXPECT_TRUE(isActive(id)) << "only what is passed has changed";
}

TEST_F(PresetEditorTest, ALiveEditIsSavedAndWrittenAndThePresetStaysActive)
{
    const Uuid id = add("A", {{"a", 0.1}, {"b", 0.2}});
    openOn(id);
    for (const double level : {0.3, 0.426}) {
        editor->setLevel(id, displays.list[0], level);
        EXPECT_TRUE(isActive(id));
    }
    EXPECT_EQ(store.preset(id)->values, (Levels{{"a", 0.43}, {"b", 0.2}}));
    EXPECT_EQ(store.preset(id)->displayNames.at("a"), "Name of a");
    EXPECT_EQ(displays.set.back(), std::pair(std::string("a"), 0.426));
    displays.show("a", 0.3); // the outcome of the first write, while the second is under way
    displays.show("a", 0.43);
    finishAll();
    EXPECT_TRUE(isActive(id));
}

TEST_F(PresetEditorTest, LiveEditsOutsideASessionAreIgnored)
{
    const Uuid id = add("A", {{"a", 0.1}});
    const Uuid other = add("B", {});
    const auto isIgnored = [&](const Uuid& preset, double level) {
        editor->setLevel(preset, displays.list[0], level);
        return displays.set.empty() && store.preset(id)->values == Levels{{"a", 0.1}};
    };
    EXPECT_TRUE(isIgnored(id, 0.5)) << "the window is not visible";
    openOn(id);
    EXPECT_TRUE(isIgnored(other, 0.5));
    EXPECT_TRUE(isIgnored(id, std::nan("")));
    editor->activate(id);
    EXPECT_TRUE(isIgnored(id, 0.5)) << "it waits to be applied";
    finishAll();
    EXPECT_FALSE(isIgnored(id, 0.5));
}

TEST_F(PresetEditorTest, RevertingRestoresThePresetAndTheScreenAndCanBeRepeated)
{
    const Uuid id = add("A", {{"a", 0.1}});
    EXPECT_FALSE(editor->revert());
    openOn(id);
    const BrightnessPreset saved = *store.preset(id);
    for (int i = 0; i < 2; ++i) {
        editor->setLevel(id, displays.list[0], 0.8);
        editor->setLevel(id, displays.list[1], 0.9);
        store.rename(id, "B");
        store.setShortcut(std::nullopt, id);
        finishAll();
        displays.show("a", 1.0);
        ASSERT_FALSE(isActive(id));
        EXPECT_TRUE(editor->revert());
        EXPECT_EQ(*store.preset(id), saved);
        EXPECT_EQ(displays.applied.back(), saved.values);
        EXPECT_EQ(message(), "Reverted this editing session and restored the saved preset.");
        EXPECT_EQ(*editor->session, (PresetEditingSession{saved}));
        finishAll();
        EXPECT_TRUE(isActive(id));
    }
    editor->activate(id); // waits for the writes
    EXPECT_TRUE(editor->revert());
    EXPECT_FALSE(*editor->isPreparing);
    const std::size_t count = displays.applied.size();
    finishAll();
    EXPECT_EQ(displays.applied.size(), count) << "the waiting operation was cancelled";
    store.deletePreset(id);
    EXPECT_FALSE(editor->revert());
}

TEST_F(PresetEditorTest, AddingTakesTheLevelsOfTheReadableDisplaysAndOpensThePreset)
{
    displays.add("dark", std::nullopt);
    editor->show(std::nullopt);
    editor->addPresetFromCurrentLevels();
    EXPECT_TRUE(*editor->isPreparing);
    displays.show("a", 0.6); // the pending write's outcome
    finishAll();
    ASSERT_EQ(store.presets->size(), 1u);
    const BrightnessPreset added = store.presets->front();
    EXPECT_EQ(added.values, (Levels{{"a", 0.6}, {"b", 0.7}}));
    EXPECT_EQ(added.displayNames, (std::map<std::string, std::string>{{"a", "Name of a"}, {"b", "Name of b"}}));
    EXPECT_TRUE(isActive(added.id) && isSelected(added.id));
    EXPECT_EQ(*editor->session, (PresetEditingSession{added}));
    EXPECT_EQ(*editor->selectedTab, SettingsTab::presets);
    EXPECT_EQ(storedSelection(), PropertyValue(added.id.toString()));
    EXPECT_TRUE(displays.applied.empty()) << "its levels are on the screen";
}

TEST_F(PresetEditorTest, NothingIsAddedWithoutReadableDisplaysOrWhenTheWindowIsGoneOrSomethingElseCameFirst)
{
    editor->show(std::nullopt);
    editor->addPresetFromCurrentLevels();
    editor->settingsClosed();
    finishAll();
    editor->addPresetFromCurrentLevels();
    finishAll();
    EXPECT_FALSE(*editor->isPreparing);
    editor->show(std::nullopt);
    editor->addPresetFromCurrentLevels();
    editor->select(DisplaySelection{"a"}, true);
    EXPECT_FALSE(*editor->isPreparing);
    finishAll();
    EXPECT_EQ(message(), "");
    displays.list.clear();
    editor->addPresetFromCurrentLevels();
    finishAll();
    EXPECT_EQ(message(), "No readable display brightness values are available.");
    EXPECT_FALSE(*editor->isPreparing);
    EXPECT_TRUE(store.presets->empty());
}

TEST_F(PresetEditorTest, WhoeverHearsOfANewPresetMayOpenSomethingElse)
{
    const Uuid first = add("A", {{"a", 0.1}});
    editor->show(std::nullopt);
    store.shortcutsChanged = [&] { editor->select(PresetSelection{first}); };
    editor->addPresetFromCurrentLevels();
    finishAll();
    EXPECT_EQ(store.presets->size(), 2u);
    EXPECT_TRUE(isSelected(first) && isActive(first));
    EXPECT_EQ(displays.applied, (std::vector<Levels>{{{"a", 0.1}}}));
}

TEST_F(PresetEditorTest, DeletingThePresetThatIsBeingAppliedLeavesNothingOfIt)
{
    const Uuid id = add("A", {{"a", 0.1}});
    const Uuid other = add("B", {{"a", 0.2}});
    for (const bool isVisible : {false, true}) {
        const Uuid doomed = isVisible ? id : add("C", {{"a", 0.3}});
        editor->activate(doomed);
        if (isVisible)
            editor->show(std::nullopt);
        editor->startRecording(doomed);
        editor->deletePreset(*editor->activePresetID.get());
        EXPECT_EQ(*editor->activePresetID, std::nullopt);
        EXPECT_EQ(*editor->selection, std::nullopt);
        EXPECT_EQ(*editor->session, std::nullopt);
        EXPECT_EQ(*editor->recordingShortcutID, std::nullopt);
        EXPECT_EQ(storedSelection(), std::nullopt);
        EXPECT_FALSE(*editor->isPreparing);
        finishAll();
        EXPECT_TRUE(displays.applied.empty());
        EXPECT_EQ(message(), "");
        EXPECT_EQ(store.preset(doomed), nullptr);
    }
    editor->activate(other);
    editor->deletePreset(Uuid::random());
    editor->deletePreset(add("D", {}));
    finishAll();
    EXPECT_TRUE(isActive(other)) << "others go their way";
    EXPECT_EQ(displays.applied.size(), 1u);
}

TEST_F(PresetEditorTest, DestroyedWhileAnythingIsUnderWayItTouchesNothingMore)
{
    const Uuid id = add("A", {{"a", 0.1}});
    const std::function<void()> beginnings[] = {
        [&] { editor->activate(id); },
        [&] { editor->show(std::nullopt), editor->select(PresetSelection{id}); },
        [&] { editor->show(std::nullopt), editor->addPresetFromCurrentLevels(); },
        [&] { editor->activate(id), displays.finishWrites(); },
        [&] { openOn(id), editor->setLevel(id, displays.list[0], 0.9), editor->revert(); },
    };
    for (const auto& begin : beginnings) {
        begin();
        const std::size_t applied = displays.applied.size();
        EXPECT_GT(displays.waitCount(), 0u);
        displays.changed = nullptr;
        presetsObserver.reset();
        editor.reset();
        EXPECT_EQ(displays.waitCount(), 0u);
        displays.finishWrites();
        EXPECT_EQ(displays.applied.size(), applied);
        makeEditor();
    }
    EXPECT_EQ(store.presets->size(), 1u);
}

} // namespace
} // namespace lumenvale
