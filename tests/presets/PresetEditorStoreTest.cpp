// SPDX-License-Identifier: MIT
// The editor over the real display store and monitors without wires, wired as the program wires them.
#include "presets/PresetEditor.h"
#include "support/StoreFixture.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace lumenvale {
namespace {

using namespace std::chrono_literals;
using Levels = std::map<std::string, double>;

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
    bool matches(const BrightnessPreset& preset) const
    {
        return std::ranges::all_of(store->displays.get(), [&](const DisplayInfo& each) {
            const auto level = preset.values.find(each.id);
            if (!each.brightness || level == preset.values.end())
                return true;
            if (each.method == ControlMethod::ddc)
                return std::trunc(*each.brightness * each.maximum) == std::trunc(level->second * each.maximum);
            return std::abs(*each.brightness - level->second) <= 0.0001;
        });
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

TEST_F(PresetEditorStoreTest, WhateverHappensAnActivePresetMatchesTheScreen)
{
    plugTwo();
    store->startMonitoring();
    for (int i = 0; i < 3; ++i)
        presets.addPreset({{"A", 0.1 * i}, {"B", 0.3 * i}, {"C", 0.5}}, {});
    std::mt19937 random(99);
    const auto number = [&](std::size_t below) { return static_cast<std::size_t>(random() % below); };
    int activeCount = 0;
    for (int i = 0; i < 4000; ++i) {
        const Uuid preset = presets.presets->at(number(3)).id;
        const std::string display = number(2) == 0 ? "A" : "B";
        const double level = static_cast<double>(number(11)) / 10;
        switch (number(14)) {
        case 0:
        case 1:
            editor.activate(preset);
            break;
        case 2:
            editor.select(PresetSelection{preset});
            break;
        case 3:
            editor.show(display);
            break;
        case 4:
            editor.settingsClosed();
            break;
        case 5:
            editor.revert();
            break;
        case 6:
            if (editor.session.get() && store->display(display))
                editor.setLevel(editor.session.get()->savedPreset.id, *store->display(display), level);
            break;
        case 7:
            store->setBrightness(display, level);
            break;
        case 8:
            hardware.monitors[display].brightness = level;
            break;
        case 9:
            store->requestRefresh(number(2) * 700ms);
            break;
        case 10:
            hardware.monitors[display].writeError = BrightnessError::mismatch;
            break;
        case 11:
            hardware.monitors[display].writeError.reset();
            break;
        case 12:
            editor.selectTab(static_cast<SettingsTab>(number(3)));
            break;
        default:
            clock.advance(number(10) * 50ms);
            hardware.answerAll();
            turn();
        }
        if (i % 10 != 0)
            continue;
        settle();
        ASSERT_FALSE(editor.isPreparing.get());
        if (const std::optional<Uuid> active = *editor.activePresetID) {
            ++activeCount;
            ASSERT_TRUE(matches(*presets.preset(*active)));
        }
    }
    EXPECT_GT(activeCount, 40);
}

} // namespace
} // namespace lumenvale
