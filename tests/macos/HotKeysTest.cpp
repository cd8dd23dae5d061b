// SPDX-License-Identifier: MIT
#include "platform/macos/shell/MacHotKeyService.h"

#include "MacTest.h"
#include "presets/GlobalShortcuts.h"

namespace lumenvale {
namespace {

constexpr std::uint32_t ours = 0x4C4D564B;
constexpr std::uint32_t f1 = 122;

struct MacHotKeysTest : MacTest {
    std::int32_t add(std::uint32_t keyCode, std::uint32_t id)
    {
        return keys.registerHotKey(keyCode, HotKeyModifier::command, {ours, id}, "a preset", reference);
    }

    MacHotKeyService keys;
    HotKeyReference handler = 0;
    HotKeyReference reference = 0;

    void TearDown() override
    {
        if (handler != 0)
            keys.removeHandler(handler);
        MacTest::TearDown();
    }
};

TEST_F(MacHotKeysTest, APressReachesTheHandlerWhoseAnswerCounts)
{
    std::vector<std::uint32_t> pressed;
    ASSERT_EQ(keys.installHandler(
                  [&](const std::optional<HotKeyID>& key) {
                      if (!key || key->signature != ours)
                          return eventNotHandledStatus;
                      pressed.push_back(key->id);
                      return std::int32_t{0};
                  },
                  handler),
              0);
    ASSERT_EQ(add(f1, 7), 0);
    ASSERT_EQ(standin::hotKeys().size(), 1U);
    EXPECT_EQ(standin::hotKeys()[0].keyCode, f1);
    EXPECT_EQ(standin::hotKeys()[0].modifiers, 0x100U);
    EXPECT_EQ(standin::hotKeys()[0].signature, ours);
    EXPECT_EQ(standin::press(ours, 7), 0);
    EXPECT_EQ(pressed, std::vector<std::uint32_t>{7});
    EXPECT_EQ(standin::press(0x6F746872, 7), eventNotHandledStatus); // somebody else's
    machine.failures["GetEventParameter"] = {};
    EXPECT_EQ(standin::press(ours, 7), eventNotHandledStatus);
    EXPECT_EQ(standin::press(ours, 0), eventNotHandledStatus);
    EXPECT_EQ(pressed.size(), 1U);
    keys.unregisterHotKey(reference);
    keys.unregisterHotKey(reference); // the second time is ignored
    EXPECT_TRUE(standin::hotKeys().empty());
}

TEST_F(MacHotKeysTest, RefusalsGiveTheSystemsCode)
{
    ASSERT_EQ(add(f1, 1), 0);
    const HotKeyReference first = reference;
    EXPECT_EQ(add(f1, 2), eventHotKeyExistsErr);
    EXPECT_EQ(reference, first);
    keys.unregisterHotKey(first);
    machine.failures["InstallEventHandler"] = {-50};
    EXPECT_EQ(keys.installHandler([](const std::optional<HotKeyID>&) { return 0; }, handler), -50);
    EXPECT_EQ(handler, 0U);
}

TEST_F(MacHotKeysTest, AHandlerMayTakeBackItsKeyAndItselfWhileItRuns)
{
    auto witness = std::make_shared<int>(0);
    ASSERT_EQ(keys.installHandler(
                  [this, witness](const std::optional<HotKeyID>&) {
                      keys.unregisterHotKey(reference);
                      keys.removeHandler(handler);
                      handler = 0;
                      ++*witness; // still there
                      return std::int32_t{0};
                  },
                  handler),
              0);
    ASSERT_EQ(add(f1, 1), 0);
    EXPECT_EQ(standin::press(ours, 1), 0);
    EXPECT_EQ(*witness, 1);
    EXPECT_EQ(witness.use_count(), 1);
    EXPECT_EQ(standin::press(ours, 1), eventNotHandledStatus);
}

TEST_F(MacHotKeysTest, TheEndGivesBackWhatIsStillRegistered)
{
    MacHotKeyService service;
    HotKeyReference unused = 0;
    service.installHandler([](const std::optional<HotKeyID>&) { return 0; }, unused);
    service.registerHotKey(f1, 0, {ours, 1}, "", unused);
    EXPECT_EQ(standin::leaks().size(), 2U);
}

TEST_F(MacHotKeysTest, ShortcutsActivatePresetsAndTellWhichKeysAreTaken)
{
    const auto preset = [](const char* name, std::int64_t functionKey) {
        BrightnessPreset made;
        made.id = Uuid::random();
        made.name = name;
        made.shortcut = PresetShortcut{.functionKey = functionKey};
        return made;
    };
    const std::vector<BrightnessPreset> presets = {preset("Day", 1), preset("Night", 1)};
    std::vector<Uuid> activated;
    GlobalShortcuts shortcuts(keys, [&](Uuid id) { activated.push_back(id); });
    const auto errors = shortcuts.registerAll(presets);
    ASSERT_EQ(errors.size(), 1U);
    EXPECT_EQ(errors.begin()->first, presets[1].id);
    EXPECT_EQ(errors.begin()->second,
              "F1 could not be registered (-9878). It may be used by macOS or another app.");
    EXPECT_EQ(standin::press(ours, standin::hotKeys().at(0).id), 0);
    EXPECT_EQ(activated, std::vector<Uuid>{presets[0].id});
    shortcuts.registerAll({});
    EXPECT_TRUE(standin::hotKeys().empty());
}

} // namespace
} // namespace lumenvale
