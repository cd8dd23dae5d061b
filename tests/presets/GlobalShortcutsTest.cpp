// SPDX-License-Identifier: MIT
#include "presets/GlobalShortcuts.h"

#include "support/FakeHotKeyService.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

namespace lumenvale {
namespace {

using Combination = FakeHotKeyService::Combination;
using Errors = std::map<Uuid, std::string>;

BrightnessPreset preset(std::optional<Combination> combination)
{
    BrightnessPreset made{Uuid::random(), "Evening", std::nullopt, {}, {}};
    if (combination) {
        made.shortcut.emplace().recordedKeyCode = combination->first;
        made.shortcut->recordedKeyLabel = "K";
        made.shortcut->command = (combination->second & HotKeyModifier::command) != 0;
        made.shortcut->shift = (combination->second & HotKeyModifier::shift) != 0;
    }
    return made;
}

struct GlobalShortcutsTest : testing::Test {
    FakeHotKeyService service;
    std::vector<Uuid> activated;
    std::optional<GlobalShortcuts> shortcuts;

    void start()
    {
        shortcuts.emplace(service, [this](const Uuid& id) { activated.push_back(id); });
    }
};

TEST_F(GlobalShortcutsTest, RegistersEachShortcutOnceWithNewIdsAndTellsWhichPresetWasMeant)
{
    start();
    BrightnessPreset withoutKey = preset(std::nullopt);
    withoutKey.shortcut.emplace().functionKey = 25;
    const std::vector presets = {preset(Combination(40, HotKeyModifier::command)), preset(std::nullopt),
                                 withoutKey, preset(Combination(41, 0))};
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(shortcuts->registerAll(presets), Errors());
        ASSERT_EQ(service.live.size(), 2u);
    }
    EXPECT_EQ(service.usedIDs, (std::vector<std::uint32_t>{1, 2, 3, 4}));
    EXPECT_EQ(service.live.begin()->second.id.signature, 0x4C4D564Bu);
    EXPECT_EQ(service.live.begin()->second.description, "Evening");
    EXPECT_EQ(service.press(Combination(41, 0)), 0);
    EXPECT_EQ(activated, std::vector{presets[3].id});
    EXPECT_EQ(shortcuts->registerAll({}), Errors());
    EXPECT_TRUE(service.live.empty());
}

TEST_F(GlobalShortcutsTest, PressesOfOthersArePassedOnAndThoseOfKeysThatAreGoneDoNothing)
{
    start();
    const std::vector presets = {preset(Combination(40, 0))};
    shortcuts->registerAll(presets);
    EXPECT_EQ(service.send(std::nullopt), eventNotHandledStatus);
    EXPECT_EQ(service.send(HotKeyID{hotKeySignature + 1, 1}), eventNotHandledStatus);
    shortcuts->registerAll(presets);
    EXPECT_EQ(service.send(HotKeyID{hotKeySignature, 1}), 0) << "the id of the first registration";
    EXPECT_TRUE(activated.empty());
}

TEST_F(GlobalShortcutsTest, ATakenKeyIsReportedForItsPresetAndTheOthersWork)
{
    start();
    service.takenElsewhere = {Combination(40, 0)};
    const std::vector presets = {preset(Combination(40, 0)), preset(Combination(41, HotKeyModifier::shift)),
                                 preset(Combination(41, HotKeyModifier::shift))};
    const std::string reason = " could not be registered (-9878). It may be used by macOS or another app.";
    EXPECT_EQ(shortcuts->registerAll(presets),
              (Errors{{presets[0].id, "K" + reason}, {presets[2].id, "⇧K" + reason}}));
    service.press(Combination(41, HotKeyModifier::shift));
    EXPECT_EQ(activated, std::vector{presets[1].id});
    service.takenElsewhere.clear();
    EXPECT_EQ(shortcuts->registerAll({presets[0]}), Errors());
    EXPECT_EQ(service.usedIDs, (std::vector<std::uint32_t>{1, 2, 3, 4})) << "refused attempts use up an id too";
}

TEST_F(GlobalShortcutsTest, WithoutItsHandlerEveryPresetWithAKeySaysSo)
{
    service.installStatus = -50;
    start();
    const std::vector presets = {preset(Combination(40, 0)), preset(std::nullopt), preset(Combination(40, 0))};
    const std::string message = "Keyboard shortcut handler could not start (-50).";
    EXPECT_EQ(shortcuts->registerAll(presets), (Errors{{presets[0].id, message}, {presets[2].id, message}}));
    EXPECT_TRUE(service.usedIDs.empty());
}

TEST_F(GlobalShortcutsTest, WhatTheSystemDecidesLaterReachesThePresetWhoseKeyItIs)
{
    start();
    std::vector<std::pair<Uuid, std::string>> told;
    shortcuts->statusChanged = [&](const Uuid& id, const std::string& text) { told.emplace_back(id, text); };
    const std::vector presets = {preset(Combination(40, 0)), preset(Combination(41, 0))};
    shortcuts->registerAll(presets);
    service.statusObserver(2, "The desktop refused the shortcut.");
    service.statusObserver(2, "");
    shortcuts->registerAll(presets);
    service.statusObserver(1, "Too late.");
    EXPECT_EQ(told, (std::vector<std::pair<Uuid, std::string>>{
                        {presets[1].id, "The desktop refused the shortcut."}, {presets[1].id, ""}}));
}

TEST_F(GlobalShortcutsTest, StoppingFreesEverythingForGood)
{
    start();
    const std::vector presets = {preset(Combination(40, 0))};
    shortcuts->registerAll(presets);
    shortcuts->stop();
    EXPECT_TRUE(service.live.empty());
    EXPECT_FALSE(service.handler);
    EXPECT_FALSE(service.statusObserver);
    EXPECT_EQ(shortcuts->registerAll(presets), Errors());
    EXPECT_TRUE(service.live.empty());
    start();
    shortcuts->registerAll(presets);
    shortcuts.reset();
    EXPECT_TRUE(service.live.empty());
    EXPECT_EQ(service.strayUnregistrations, 0);
}

TEST_F(GlobalShortcutsTest, APressMayRegisterAnewFromWithin)
{
    const std::vector presets = {preset(Combination(40, 0))};
    shortcuts.emplace(service, [&](const Uuid& id) {
        shortcuts->registerAll({});
        activated.push_back(id);
    });
    shortcuts->registerAll(presets);
    EXPECT_EQ(service.press(Combination(40, 0)), 0);
    EXPECT_EQ(activated, std::vector{presets[0].id});
}

/// The preset that a press of `combination` must mean: the first one that has it, where it is to be had.
std::optional<Uuid> meant(const FakeHotKeyService& service, const std::vector<BrightnessPreset>& presets,
                          Combination combination)
{
    const auto found = std::ranges::find_if(presets, [&](const BrightnessPreset& each) {
        return each.shortcut &&
               Combination(*keyCode(*each.shortcut), carbonModifiers(*each.shortcut)) == combination;
    });
    if (found == presets.end() || service.takenElsewhere.contains(combination))
        return std::nullopt;
    return found->id;
}

TEST_F(GlobalShortcutsTest, NoSequenceOfChangesAndPressesLosesAKeyOrMeansTheWrongPreset)
{
    std::mt19937 random(20240607);
    const auto number = [&](unsigned below) { return static_cast<unsigned>(random() % below); };
    const auto combination = [&] {
        return Combination(30 + number(6),
                           number(2) * HotKeyModifier::command + number(2) * HotKeyModifier::shift);
    };
    for (int sequence = 0; sequence < 10'000; ++sequence) {
        service = FakeHotKeyService();
        start();
        std::vector<BrightnessPreset> presets;
        std::vector<BrightnessPreset> registered;
        for (int stepsLeft = 20; stepsLeft > 0; --stepsLeft) {
            switch (number(5)) {
            case 0:
                presets.push_back(preset(number(4) == 0 ? std::nullopt : std::optional(combination())));
                break;
            case 1:
                if (!presets.empty())
                    presets.erase(presets.begin() + number(static_cast<unsigned>(presets.size())));
                break;
            case 2:
                service.takenElsewhere = {combination(), combination()};
                for (const auto& [reference, key] : service.live)
                    service.takenElsewhere.erase(key.combination);
                break;
            case 3: {
                std::set<Combination> wanted;
                for (const BrightnessPreset& each : presets) {
                    if (each.shortcut)
                        wanted.emplace(*keyCode(*each.shortcut), carbonModifiers(*each.shortcut));
                }
                std::erase_if(wanted, [&](const auto& each) { return service.takenElsewhere.contains(each); });
                shortcuts->registerAll(presets);
                registered = presets;
                ASSERT_EQ(service.live.size(), wanted.size());
                ASSERT_TRUE(std::ranges::all_of(wanted, [&](const auto& each) { return service.find(each); }));
                break;
            }
            default: {
                const Combination pressed = combination();
                const std::optional<Uuid> expected =
                    service.find(pressed) ? meant(service, registered, pressed) : std::nullopt;
                activated.clear();
                service.press(pressed);
                ASSERT_EQ(activated, expected ? std::vector{*expected} : std::vector<Uuid>());
            }
            }
        }
        std::ranges::sort(service.usedIDs);
        ASSERT_EQ(std::ranges::adjacent_find(service.usedIDs), service.usedIDs.end()) << "an id was used twice";
        shortcuts.reset();
        ASSERT_TRUE(service.live.empty());
        ASSERT_EQ(service.strayUnregistrations, 0);
    }
}

} // namespace
} // namespace lumenvale
