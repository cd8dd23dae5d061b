// SPDX-License-Identifier: MIT
// The editor over the real display store and monitors without wires, wired as the program wires them.
#include "presets/PresetEditor.h"
#include "support/StoreFixture.h"

#include <utility>

namespace lumenvale {
namespace {

using namespace std::chrono_literals;

struct PresetEditorStoreTest : StoreFixture {
    PresetEditorStoreTest()
    {
        store->brightnessObserved = [this](const auto& changed) { editor.displaysChanged(changed); };
        listObserver = store->displays.subscribe([this](const auto& list) {
            editor.displaysChanged(list);
            isListNew = true;
        });
    }
    ~PresetEditorStoreTest() override { listObserver.reset(); }

    void plugTwo()
    {
        plug("A", {.brightness = 0.4});
        plug("B", {.method = ControlMethod::apple, .brightness = 0.8});
        refresh();
        turn();
    }
    /// A later turn of the main loop.
    void turn()
    {
        if (std::exchange(isListNew, false))
            editor.displaysChanged(store->displays.get());
    }
    /// Lets everything that is under way come to its end.
    void settle()
    {
        for (int i = 0; i < 60; ++i) {
            clock.advance(100ms);
            hardware.answerAll();
            turn();
        }
    }
    PresetStore presets{defaults};
    PresetEditor editor{*store, presets, defaults};
    Subscription listObserver;
    bool isListNew = false;
};

TEST_F(PresetEditorStoreTest, AnActivatedPresetReachesEveryDisplayAndStaysActiveUntilSomeoneTurnsAMonitorsButtons)
{
    plugTwo();
    store->startMonitoring();
    const Uuid id = presets.addPreset({{"A", 0.2}, {"B", 0.3}}, {}).id;
    store->setBrightness("A", 0.9);
    editor.activate(id);
    settle();
    EXPECT_EQ(hardware.monitors.at("A").brightness, 0.2);
    EXPECT_EQ(hardware.monitors.at("B").brightness, 0.3);
    EXPECT_EQ(*editor.activePresetID, id);
    EXPECT_EQ(editor.message->value_or(""), "Applied Preset 1.");
    hardware.monitors.at("B").brightness = 0.5;
    settle();
    EXPECT_EQ(*editor.activePresetID, std::nullopt);
}

TEST_F(PresetEditorStoreTest, APresetActivatedBeforeTheFirstRefreshIsAppliedWhenTheDisplaysAreKnown)
{
    const Uuid id = presets.addPreset({{"A", 0.2}, {"B", 0.3}}, {}).id;
    plug("A", {.brightness = 0.4});
    plug("B", {.method = ControlMethod::apple, .brightness = 0.8});
    store->requestRefresh();
    editor.activate(id);
    EXPECT_EQ(*editor.message, std::nullopt);
    settle();
    EXPECT_EQ(hardware.monitors.at("A").brightness, 0.2);
    EXPECT_EQ(hardware.monitors.at("B").brightness, 0.3);
    EXPECT_EQ(*editor.activePresetID, id);
    EXPECT_EQ(editor.message->value_or(""), "Applied Preset 1.");
}

TEST_F(PresetEditorStoreTest, ASlidersDragOnThePresetPageKeepsThePresetActiveAndOneInThePanelEndsIt)
{
    plugTwo();
    const Uuid id = presets.addPreset({{"A", 0.4}, {"B", 0.8}}, {}).id;
    editor.activate(id);
    editor.show(std::nullopt);
    settle();
    for (int i = 0; i <= 40; ++i) {
        editor.setLevel(id, *store->display("A"), 0.4 + i / 100.0);
        clock.advance(25ms);
        if (i % 3 == 0)
            hardware.answerAll();
        ASSERT_EQ(*editor.activePresetID, id);
    }
    settle();
    EXPECT_EQ(*editor.activePresetID, id);
    EXPECT_EQ(hardware.monitors.at("A").brightness, 0.8);
    EXPECT_EQ(presets.preset(id)->values.at("A"), 0.8);
    editor.revert();
    settle();
    EXPECT_EQ(hardware.monitors.at("A").brightness, 0.4);
    EXPECT_EQ(*editor.activePresetID, id);
    store->setBrightness("B", 0.5);
    settle();
    EXPECT_EQ(*editor.activePresetID, std::nullopt);
}

TEST_F(PresetEditorStoreTest, TheWindowOpenedBeforeTheFirstRefreshShowsADisplayWhenThereIsOne)
{
    editor.show(std::nullopt);
    plugTwo();
    EXPECT_EQ(*editor.selection, SettingsSelection(DisplaySelection{"A"}));
    unplug("A");
    refresh();
    turn();
    EXPECT_EQ(*editor.selection, SettingsSelection(DisplaySelection{"B"}));
}

} // namespace
} // namespace lumenvale
