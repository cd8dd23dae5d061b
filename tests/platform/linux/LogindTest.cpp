// SPDX-License-Identifier: MIT
#include "platform/linux/displays/Logind.h"
#include "DesktopStandIn.h"

#include <cerrno>
#include <optional>
#include <thread>

namespace lumenvale {
namespace {

struct LogindTest : DesktopBusTest {
    /// Calls from another thread, as the hardware thread does, while this one answers.
    int setBrightness()
    {
        std::optional<int> result;
        std::thread caller([&] {
            const int status = setBrightnessThroughLogind(program, "intel_backlight", 515);
            QMetaObject::invokeMethod(
                &desktop, [&result, status] { result = status; }, Qt::QueuedConnection);
        });
        EXPECT_TRUE(turnLoopUntil([&] { return result.has_value(); }));
        caller.join();
        return result.value_or(-1);
    }
};

TEST_F(LogindTest, TheSessionIsAskedForTheRawValueAndItsRefusalAndEverySleepAreSaid)
{
    EXPECT_EQ(setBrightness(), ENOTCONN) << "no service yet";
    EXPECT_EQ(setBrightnessThroughLogind(QDBusConnection("none"), "x", 1), ENOTCONN);
    EXPECT_EQ(pingLoginService(program), ENOTCONN);
    desktop.setRunning("org.freedesktop.login1", true, program);
    EXPECT_EQ(setBrightness(), 0);
    EXPECT_EQ(desktop.calls.last().member(), "SetBrightness");
    EXPECT_EQ(desktop.calls.last().arguments(), (QVariantList{"backlight", "intel_backlight", 515u}));
    desktop.error = "org.freedesktop.DBus.Error.AccessDenied";
    EXPECT_EQ(setBrightness(), EACCES);
    desktop.error = "org.freedesktop.DBus.Error.UnknownMethod"; // an old service
    EXPECT_EQ(setBrightness(), ENOSYS);

    std::vector<bool> seen;
    const SleepWatch watch(program, [&seen](bool isGoingToSleep) { seen.push_back(isGoingToSleep); });
    for (const bool begins : {true, false})
        desktop.emitSignal("/org/freedesktop/login1", "org.freedesktop.login1.Manager", "PrepareForSleep",
                           {begins});
    EXPECT_TRUE(turnLoopUntil([&] { return seen == std::vector<bool>{true, false}; }));
}

} // namespace
} // namespace lumenvale
