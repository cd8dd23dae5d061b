// SPDX-License-Identifier: MIT
#include "platform/macos/shell/MacHotKeyService.h"

#include "MacTest.h"
#include "presets/GlobalShortcuts.h"

namespace lumenvale {
namespace {

const std::vector<BrightnessPreset> presets = {
    {Uuid::random(), "Day", PresetShortcut{.functionKey = 1, .command = true, .option = true}, {}, {}},
    {Uuid::random(), "Night", PresetShortcut{.functionKey = 1, .command = true, .option = true}, {}, {}}};
using Errors = std::map<Uuid, std::string>;

struct MacHotKeysTest : MacTest {
    MacHotKeyService service;
    std::vector<Uuid> activated;
    std::optional<GlobalShortcuts> shortcuts;

    void start()
    {
        shortcuts.emplace(service, [this](const Uuid& id) {
            activated.push_back(id);
            shortcuts->registerAll({}); // as applying a preset may
        });
    }
    void TearDown() override
    {
        shortcuts.reset();
        MacTest::TearDown();
    }
};

TEST_F(MacHotKeysTest, PressesOfOurKeysActivateTheirPresetsAndThoseOfOthersAreLeftToThem)
{
    start();
    EXPECT_EQ(shortcuts->registerAll(presets),
              (Errors{{presets[1].id,
                       "⌥⌘F1 could not be registered (-9878). It may be used by macOS or another app."}}));
    ASSERT_EQ(fakesdk::hotKeys().size(), 1U);
    const fakesdk::HotKey key = fakesdk::hotKeys()[0];
    EXPECT_EQ(key.keyCode, 122U);
    EXPECT_EQ(key.modifiers, 0x900U);
    EXPECT_EQ(key.signature, 0x4C4D564BU);
    EXPECT_FALSE(fakesdk::fireHotKeyEvent(0x6F746872, key.id)) << "another program's signature";
    machine.fail["GetEventParameter"] = {-50};
    EXPECT_FALSE(fakesdk::fireHotKeyEvent(key.signature, key.id));
    EXPECT_TRUE(activated.empty());
    machine.fail.clear();
    for (int i = 0; i < 2; ++i)
        EXPECT_TRUE(
            fakesdk::fireHotKeyEvent(key.signature, key.id)); // the second time it is ours and means nothing
    EXPECT_EQ(activated, std::vector{presets[0].id});
    EXPECT_TRUE(fakesdk::hotKeys().empty());
}

TEST_F(MacHotKeysTest, WithoutItsHandlerEveryPresetWithAKeySaysSo)
{
    machine.fail["InstallEventHandler"] = {-50};
    start();
    const std::string message = "Keyboard shortcut handler could not start (-50).";
    EXPECT_EQ(shortcuts->registerAll(presets), (Errors{{presets[0].id, message}, {presets[1].id, message}}));
    EXPECT_TRUE(fakesdk::hotKeys().empty());
}

} // namespace
} // namespace lumenvale
