// SPDX-License-Identifier: MIT
#include "presets/GlobalShortcuts.h"
#include "base/Words.h"

#include "support/FakeHotKeyService.h"

#include <gtest/gtest.h>
#include <random>

namespace lumenvale {
namespace {

using Presets = std::vector<BrightnessPreset>;
using Errors = std::map<Uuid, std::string>;

PresetShortcut key(std::int64_t functionKey, bool shift = false)
{
    return {.functionKey = functionKey, .shift = shift};
}
BrightnessPreset preset(std::optional<PresetShortcut> shortcut)
{
    return {Uuid::random(), "Evening", std::move(shortcut), {}, {}};
}

struct GlobalShortcutsTest : testing::Test {
    FakeHotKeyService service;
    std::vector<Uuid> activated;
    std::optional<GlobalShortcuts> shortcuts{std::in_place, service,
                                             [this](const Uuid& id) { activated.push_back(id); }};
};

TEST_F(GlobalShortcutsTest, ReportsKeysThatAreTakenAndWhatTheSystemTellsLater)
{
    service.takenElsewhere = {key(3)};
    const Presets presets = {preset(key(1)), preset(key(25)), preset(key(3)), preset(key(1))};
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(shortcuts->registerAll(presets),
                  (Errors{{presets[2].id, "F3 is taken."}, {presets[3].id, "F1 is taken."}}));
    }
    EXPECT_EQ(service.live.at(4).description, "Evening") << "refused attempts use up a number too";
    std::vector<std::pair<Uuid, std::string>> told;
    shortcuts->statusChanged = [&](const Uuid& id, const std::string& text) { told.emplace_back(id, text); };
    service.events.changed(1, "Of a registration that has ended.");
    service.events.pressed(1);
    service.events.changed(4, "The desktop refused the shortcut.");
    service.events.changed(4, "");
    EXPECT_EQ(told, (std::vector<std::pair<Uuid, std::string>>{
                        {presets[0].id, "The desktop refused the shortcut."}, {presets[0].id, ""}}));
    EXPECT_TRUE(activated.empty());
    shortcuts->stop();
    EXPECT_EQ(shortcuts->registerAll(presets), Errors());
    EXPECT_TRUE(service.live.empty() && !service.events.pressed && !service.events.changed);
}

TEST_F(GlobalShortcutsTest, SlowNoSequenceOfChangesAndPressesLosesAKeyOrMeansTheWrongPreset)
{
    std::mt19937 random(20240607);
    const auto pick = [&](std::size_t below) { return static_cast<unsigned>(random() % below); };
    const auto anyKey = [&] { return key(1 + pick(6), pick(2) == 0); };
    for (int sequence = 0; sequence < 10'000; ++sequence) {
        service = {};
        Presets presets;
        std::map<std::string, Uuid> expected; // the first preset of each key that was to be had
        shortcuts.emplace(service, [&](const Uuid& id) {
            activated.push_back(id);
            if (pick(8) == 0) { // as applying a preset may
                shortcuts->registerAll({});
                expected.clear();
            }
        });
        for (int step = 0; step < 20; ++step) {
            if (const unsigned action = pick(5); action == 0) {
                presets.push_back(preset(pick(4) == 0 ? std::nullopt : std::optional(anyKey())));
            } else if (action == 1 && !presets.empty()) {
                presets.erase(presets.begin() + pick(presets.size()));
            } else if (action == 2) {
                service.takenElsewhere = {anyKey(), anyKey()};
            } else if (action == 3) {
                const Errors errors = shortcuts->registerAll(presets);
                expected.clear();
                for (const BrightnessPreset& each : presets) {
                    const bool works = each.shortcut && !errors.contains(each.id);
                    ASSERT_TRUE(!works ||
                                expected.emplace(displayLabel(*each.shortcut, portableWords), each.id).second);
                }
                ASSERT_EQ(service.live.size(), expected.size());
            } else {
                const PresetShortcut pressed = anyKey();
                const auto meant = expected.find(displayLabel(pressed, portableWords));
                const auto wanted = meant == expected.end() ? std::vector<Uuid>() : std::vector{meant->second};
                service.press(pressed);
                ASSERT_EQ(std::exchange(activated, {}), wanted);
            }
        }
        ASSERT_TRUE(std::ranges::is_sorted(service.usedIDs, std::less_equal())) << "an id was used twice";
        shortcuts.reset();
        ASSERT_TRUE(service.live.empty());
        ASSERT_EQ(service.strayUnregistrations, 0);
    }
}

} // namespace
} // namespace lumenvale
