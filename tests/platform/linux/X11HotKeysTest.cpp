// SPDX-License-Identifier: MIT
// On an X server of the test's own, with keys pressed by xdotool; skipped where either is not installed.
#include "platform/linux/x11/X11HotKeys.h"

#include "presets/PresetShortcut.h"
#include "support/PrivateBus.h"

#include <QProcess>
#include <QStandardPaths>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace lumenvale {
namespace {

constexpr std::uint32_t keyK = 0x28;
constexpr std::uint32_t keyF5 = 96;
constexpr std::uint32_t keyF6 = 97;

/// Xvfb, one for all tests: it takes longest to start.
class XServer {
public:
    static XServer* shared()
    {
        static XServer server;
        return server.display.isEmpty() ? nullptr : &server;
    }

    QByteArray display;

    /// Presses and releases keys, in xdotool's notation, and waits until that is done.
    void xdotool(const char* arguments) const
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("DISPLAY", QString::fromLatin1(display));
        process.setProcessEnvironment(environment);
        process.start("xdotool", QString::fromLatin1(arguments).split(' '));
        ASSERT_TRUE(process.waitForFinished());
        ASSERT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    }

private:
    XServer()
    {
        for (const char* needed : {"Xvfb", "xdotool"}) {
            if (QStandardPaths::findExecutable(QString::fromLatin1(needed)).isEmpty())
                return;
        }
        // The server says on standard output (1) which display number it has found to be free.
        process.start("Xvfb", {"-displayfd", "1", "-nolisten", "tcp", "-noreset"});
        if (process.waitForReadyRead())
            display = ":" + process.readLine().trimmed();
    }
    ~XServer()
    {
        process.terminate();
        process.waitForFinished();
    }

    QProcess process;
};

using Ids = std::vector<std::uint32_t>;

struct X11HotKeysTest : testing::Test {
    void SetUp() override
    {
        server = XServer::shared();
        if (!server)
            GTEST_SKIP() << "Xvfb or xdotool is not installed";
        keys = start();
    }

    std::unique_ptr<HotKeyService> start()
    {
        auto service = makeX11HotKeys(server->display.constData());
        HotKeyReference handler = 0;
        const auto note = [this](const std::optional<HotKeyID>& key) {
            pressed.push_back(key->id);
            return 0;
        };
        EXPECT_EQ(service->installHandler(note, handler), 0);
        return service;
    }

    /// Presses keys and then one that is always registered, so that the end of the presses can be seen.
    Ids press(const char* arguments)
    {
        pressed.clear();
        const auto sentinel = start();
        HotKeyReference reference = 0;
        EXPECT_EQ(sentinel->registerHotKey(keyF6, HotKeyModifier::shift, {0, 99}, "", reference), 0);
        server->xdotool(arguments);
        server->xdotool("key shift+F6");
        EXPECT_TRUE(turnLoopUntil([this] { return !pressed.empty() && pressed.back() == 99; }));
        if (!pressed.empty())
            pressed.pop_back();
        return pressed;
    }

    XServer* server = nullptr;
    std::unique_ptr<HotKeyService> keys;
    Ids pressed;
    HotKeyReference reference = 0;
};

TEST_F(X11HotKeysTest, APressIsDeliveredOnceInEveryStateOfTheLocksHoweverLongItIsHeld)
{
    const std::uint32_t modifiers = HotKeyModifier::control | HotKeyModifier::option;
    ASSERT_EQ(keys->registerHotKey(keyK, modifiers, {0, 7}, "", reference), 0);
    for (const char* lock : {"key Caps_Lock", "key Num_Lock", "key Caps_Lock", "key Num_Lock"}) {
        server->xdotool(lock);
        EXPECT_EQ(press("key ctrl+alt+k"), Ids{7}) << lock;
    }
    EXPECT_EQ(press("key ctrl+k ctrl+alt+shift+k"), Ids{});
    ASSERT_EQ(keys->registerHotKey(keyF5, 0, {0, 8}, "", reference), 0);
    EXPECT_EQ(press("keydown F5 keydown F5 keyup F5"), Ids{8}) << "what the server sends while a key repeats";
    EXPECT_EQ(press("key F5 F5"), (Ids{8, 8}));
}

TEST_F(X11HotKeysTest, AnotherProgramsKeyIsRefusedAndFreeAgainWhenItLetsGo)
{
    const auto other = start();
    HotKeyReference theirs = 0;
    ASSERT_EQ(other->registerHotKey(keyF5, HotKeyModifier::command, {0, 1}, "", theirs), 0);
    EXPECT_EQ(keys->registerHotKey(keyF5, HotKeyModifier::command, {0, 2}, "", reference), hotKeyExistsStatus);
    EXPECT_EQ(keys->registerHotKey(keyF5, HotKeyModifier::control, {0, 3}, "", reference), 0);
    EXPECT_EQ(keys->registerHotKey(keyF5, HotKeyModifier::control, {0, 4}, "", reference), hotKeyExistsStatus)
        << "our own";
    other->unregisterHotKey(theirs);
    EXPECT_EQ(press("key super+F5"), Ids{});
    EXPECT_EQ(keys->registerHotKey(keyF5, HotKeyModifier::command, {0, 5}, "", reference), 0);
    EXPECT_EQ(press("key super+F5"), Ids{5});
}

TEST_F(X11HotKeysTest, KeysThatCannotBePressedHereAreRefused)
{
    EXPECT_EQ(keys->registerHotKey(0x7F, 0, {0, 1}, "", reference), hotKeyInvalidStatus);
    EXPECT_EQ(keys->registerHotKey(0x3F, 0, {0, 1}, "", reference), hotKeyInvalidStatus)
        << "Fn is beyond X's key codes";
}

TEST(X11HotKeys, WithoutAServerTheHandlerCannotStart)
{
    const auto keys = makeX11HotKeys(":nowhere");
    HotKeyReference reference = 0;
    EXPECT_EQ(keys->installHandler([](const std::optional<HotKeyID>&) { return 0; }, reference),
              hotKeyServiceAbsentStatus);
}

} // namespace
} // namespace lumenvale
