// SPDX-License-Identifier: MIT
// On an X server of the test's own, with keys pressed by xdotool; skipped where either is not installed.
#include "platform/linux/X11HotKeys.h"

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
    void xdotool(const QStringList& arguments) const
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("DISPLAY"), QString::fromLatin1(display));
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral("xdotool"), arguments);
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
        process.start(QStringLiteral("Xvfb"),
                      {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-nolisten"),
                       QStringLiteral("tcp"), QStringLiteral("-noreset")});
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
        EXPECT_EQ(service->installHandler(
                      [this](const std::optional<HotKeyID>& key) {
                          pressed.push_back(key->id);
                          return 0;
                      },
                      handler),
                  0);
        return service;
    }

    /// Presses `keys` and then a key that is always registered, so that the end of the presses can be seen.
    std::vector<std::uint32_t> press(const QStringList& arguments)
    {
        pressed.clear();
        const auto sentinel = start();
        HotKeyReference reference = 0;
        EXPECT_EQ(sentinel->registerHotKey(keyF6, HotKeyModifier::shift, {0, 99}, "", reference), 0);
        server->xdotool(arguments);
        server->xdotool({QStringLiteral("key"), QStringLiteral("shift+F6")});
        EXPECT_TRUE(turnLoopUntil([this] { return !pressed.empty() && pressed.back() == 99; }));
        if (!pressed.empty())
            pressed.pop_back();
        return pressed;
    }

    XServer* server = nullptr;
    std::unique_ptr<HotKeyService> keys;
    std::vector<std::uint32_t> pressed;
};

using Ids = std::vector<std::uint32_t>;

TEST_F(X11HotKeysTest, APressIsDeliveredOnceInEveryStateOfTheLocks)
{
    HotKeyReference reference = 0;
    ASSERT_EQ(keys->registerHotKey(keyK, HotKeyModifier::control | HotKeyModifier::option, {0, 7}, "", reference),
              0);
    const QStringList combination = {QStringLiteral("key"), QStringLiteral("ctrl+alt+k")};
    for (const char* lock : {"", "Caps_Lock", "Num_Lock", "Caps_Lock"}) {
        if (*lock != '\0')
            server->xdotool({QStringLiteral("key"), QString::fromLatin1(lock)});
        EXPECT_EQ(press(combination), Ids{7}) << lock;
    }
    server->xdotool({QStringLiteral("key"), QStringLiteral("Num_Lock")});
    EXPECT_EQ(press({QStringLiteral("key"), QStringLiteral("ctrl+k")}), Ids{});
    EXPECT_EQ(press({QStringLiteral("key"), QStringLiteral("ctrl+alt+shift+k")}), Ids{});
}

TEST_F(X11HotKeysTest, AHeldKeyThatRepeatsCountsOnce)
{
    HotKeyReference reference = 0;
    ASSERT_EQ(keys->registerHotKey(keyF5, 0, {0, 7}, "", reference), 0);
    // A second press without a release is what the server sends while a key repeats.
    EXPECT_EQ(press({QStringLiteral("keydown"), QStringLiteral("F5"), QStringLiteral("keydown"),
                     QStringLiteral("F5"), QStringLiteral("keyup"), QStringLiteral("F5")}),
              Ids{7});
    EXPECT_EQ(press({QStringLiteral("key"), QStringLiteral("F5"), QStringLiteral("F5")}), (Ids{7, 7}));
}

TEST_F(X11HotKeysTest, AnotherProgramsKeyIsRefusedAndFreeAgainWhenItLetsGo)
{
    const auto other = start();
    HotKeyReference theirs = 0;
    HotKeyReference ours = 0;
    ASSERT_EQ(other->registerHotKey(keyF5, HotKeyModifier::command, {0, 1}, "", theirs), 0);
    EXPECT_EQ(keys->registerHotKey(keyF5, HotKeyModifier::command, {0, 2}, "", ours), hotKeyExistsStatus);
    EXPECT_EQ(keys->registerHotKey(keyF5, HotKeyModifier::control, {0, 3}, "", ours), 0) << "another combination";
    EXPECT_EQ(keys->registerHotKey(keyF5, HotKeyModifier::control, {0, 4}, "", ours), hotKeyExistsStatus)
        << "our own";
    other->unregisterHotKey(theirs);
    EXPECT_EQ(press({QStringLiteral("key"), QStringLiteral("super+F5")}), Ids{});
    EXPECT_EQ(keys->registerHotKey(keyF5, HotKeyModifier::command, {0, 5}, "", ours), 0);
    EXPECT_EQ(press({QStringLiteral("key"), QStringLiteral("super+F5")}), Ids{5});
}

TEST_F(X11HotKeysTest, KeysThatCannotBePressedHereAreRefused)
{
    HotKeyReference reference = 0;
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
    EXPECT_EQ(reference, 0u);
}

} // namespace
} // namespace lumenvale
