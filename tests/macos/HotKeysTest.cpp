// SPDX-License-Identifier: MIT
#include "MacTest.h"
#include "platform/macos/shell/MacHotKeyService.h"

namespace lumenvale {
namespace {

TEST_F(MacTest, PressesOfOurKeysAreToldAndThoseOfOthersAreLeftToThem)
{
    MacHotKeyService service;
    std::vector<std::uint32_t> pressed;
    const auto activate = [&](std::uint32_t id) {
        pressed.push_back(id);
        service.unregisterHotKey(id); // as applying a preset may
    };
    service.start({activate, {}});
    const PresetShortcut shortcut{.functionKey = 1, .command = true, .option = true};
    EXPECT_TRUE(service.registerHotKey(1, shortcut, ""));
    EXPECT_EQ(service.registerHotKey(2, shortcut, "").error(),
              "⌥⌘F1 could not be registered (-9878). It may be used by macOS or another app.");
    ASSERT_EQ(fakesdk::hotKeys().size(), 1U);
    const fakesdk::HotKey key = fakesdk::hotKeys()[0];
    EXPECT_EQ(key.keyCode, 122U);
    EXPECT_EQ(key.modifiers, 0x900U);
    EXPECT_FALSE(fakesdk::fireHotKeyEvent(0x6F746872, key.id)) << "another program's signature";
    EXPECT_TRUE(fakesdk::fireHotKeyEvent(key.signature, key.id));
    EXPECT_EQ(pressed, std::vector{1U});
    EXPECT_TRUE(fakesdk::hotKeys().empty());
}

} // namespace
} // namespace lumenvale
