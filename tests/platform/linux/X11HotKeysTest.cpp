// SPDX-License-Identifier: MIT
// On an X server of the test's own, with keys pressed by xdotool; skipped where either is not installed.
#include "platform/linux/x11/X11HotKeys.h"

#include "platform/linux/x11/X11.h"
#include "support/PrivateBus.h"

#include <QStandardPaths>
#include <gtest/gtest.h>

namespace lumenvale {
namespace {

using Ids = std::vector<std::uint32_t>;

struct X11HotKeysTest : testing::Test {
    /// Starts an X server, which says on its standard output (1) what display number it has found to be free.
    void SetUp() override
    {
        for (const char* needed : {"Xvfb", "xdotool"}) {
            if (QStandardPaths::findExecutable(needed).isEmpty())
                GTEST_SKIP() << needed << " is not installed";
        }
        server.start("Xvfb", {"-displayfd", "1", "-nolisten", "tcp", "-noreset"});
        ASSERT_TRUE(server.waitForReadyRead());
        display = ":" + server.readLine().trimmed();
        keys = start();
        ASSERT_EQ(add(keys, 99, {.functionKey = 6, .shift = true}), "");
    }
    void TearDown() override
    {
        server.terminate();
        server.waitForFinished();
    }

    std::unique_ptr<HotKeyService> start()
    {
        auto service = makeX11HotKeys(display.constData());
        service->start({.pressed = [this](std::uint32_t id) { pressed.push_back(id); }, .changed = {}});
        return service;
    }
    static std::string add(const std::unique_ptr<HotKeyService>& service, std::uint32_t id,
                           PresetShortcut shortcut)
    {
        const auto added = service->registerHotKey(id, shortcut, "");
        return added ? "" : added.error();
    }
    /// Presses and releases keys, in xdotool's notation, and returns when that is done.
    void xdotool(const char* arguments) const
    {
        QProcess process;
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert("DISPLAY", display);
        process.setProcessEnvironment(environment);
        process.start("xdotool", QString(arguments).split(' '));
        ASSERT_TRUE(process.waitForFinished() && process.exitCode() == 0) << arguments;
    }
    /// What presses deliver; one of a key that is always registered shows their end.
    Ids press(const char* arguments)
    {
        pressed.clear();
        xdotool(arguments);
        xdotool("key shift+F6");
        EXPECT_TRUE(turnLoopUntil([this] { return !pressed.empty() && pressed.back() == 99; }));
        return {pressed.begin(), pressed.end() - (pressed.empty() ? 0 : 1)};
    }

    QProcess server;
    QByteArray display;
    std::unique_ptr<HotKeyService> keys;
    Ids pressed;
};

TEST_F(X11HotKeysTest, APressIsDeliveredOnceInEveryStateOfTheLocksHoweverLongItIsHeld)
{
    ASSERT_EQ(add(keys, 7, {.option = true, .control = true, .recordedKeyCode = 0x28}), "");
    for (const char* lock : {"key Caps_Lock", "key Num_Lock", "key Caps_Lock", "key Num_Lock"}) {
        xdotool(lock);
        EXPECT_EQ(press("key ctrl+alt+k"), Ids{7}) << lock;
    }
    EXPECT_EQ(press("key ctrl+k ctrl+alt+shift+k"), Ids{});
    ASSERT_EQ(add(keys, 8, {.functionKey = 5}), "");
    EXPECT_EQ(press("keydown F5 keydown F5 keyup F5"), Ids{8}) << "what the server sends while a key repeats";
    EXPECT_EQ(press("key F5 F5"), (Ids{8, 8}));
}

TEST_F(X11HotKeysTest, PressesAroundARegistrationAreNeitherLostNorInvented)
{
    ASSERT_EQ(add(keys, 8, {.functionKey = 5}), "");
    xdotool("key F5 keydown F7");
    ASSERT_EQ(add(keys, 9, {.functionKey = 7}), "") << "its reply comes after the press of F5";
    EXPECT_TRUE(turnLoopUntil([this] { return pressed == Ids{8}; }));
    EXPECT_EQ(press("keydown F7 keyup F7"), Ids{}) << "it was held before, and repeats";
    EXPECT_EQ(press("key F7"), Ids{9});
}

TEST_F(X11HotKeysTest, RefusedKeysSayWhyAndAreFreeWhenTheOtherProgramLetsGo)
{
    const PresetShortcut superF5 = {.functionKey = 5, .command = true};
    const auto other = start();
    ASSERT_EQ(add(other, 1, superF5), "");
    EXPECT_EQ(add(keys, 2, superF5), "Super+F5 is already used by the desktop or another program.");
    EXPECT_EQ(add(keys, 3, {.functionKey = 5, .control = true}), "");
    EXPECT_EQ(add(keys, 4, {.functionKey = 5, .control = true}), "Ctrl+F5 is already used by another preset.");
    for (const std::uint32_t noKey : {0x7F, 0x3F}) // no Macintosh key; Fn, which is beyond X's key codes
        EXPECT_NE(add(keys, 5, {.recordedKeyCode = noKey}).find("does not know"), std::string::npos);
    other->unregisterHotKey(1);
    EXPECT_EQ(press("key super+F5"), Ids{});
    EXPECT_EQ(add(keys, 6, superF5), "");
    EXPECT_EQ(press("key super+F5"), Ids{6});
    EXPECT_EQ(add(makeX11HotKeys(":nowhere"), 1, superF5),
              "Keyboard shortcuts could not start: the X server does not answer.");
}

TEST(X11, RoundedRegionCoversEveryRowOnceAndIsSymmetrical)
{
    const auto region = x11::roundedRegion({0, 0, 340, 284}, 12);
    std::uint32_t next = 0;
    for (std::size_t i = 0; i < region.size(); i += 4) { // x, y, width, height
        EXPECT_EQ(region[i + 1], next);
        EXPECT_EQ(region[i + 2], 340 - 2 * region[i]);
        EXPECT_EQ(region[i], region[region.size() - 4 - i]);
        next += region[i + 3];
    }
    EXPECT_EQ(next, 284u);
}

} // namespace
} // namespace lumenvale
