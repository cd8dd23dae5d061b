// SPDX-License-Identifier: MIT
#include "FakeSysfs.h"

#include "platform/linux/displays/LinuxSystemEvents.h"
#include "platform/linux/displays/Uevent.h"
#include "support/ManualClock.h"

#include <gtest/gtest.h>

namespace lumenvale {
namespace {

using namespace std::chrono_literals;
using enum SystemEvent;

std::string message(std::initializer_list<const char*> lines)
{
    std::string text;
    for (const char* line : lines)
        text.append(line).push_back('\0');
    return text;
}

TEST(Uevent, OnlyWhatConcernsDisplaysCounts)
{
    const auto concerns = [](const std::string& text) {
        const auto event = parseUevent(text);
        return event && concernsDisplays(*event);
    };
    EXPECT_TRUE(concerns(message({"change@/devices/x/drm/card0", "ACTION=change", "SUBSYSTEM=drm", "HOTPLUG=1"})));
    EXPECT_TRUE(concerns(message({"add@/devices/x/card0-DP-3", "ACTION=add", "SUBSYSTEM=drm"})));
    EXPECT_TRUE(concerns(message({"add@/devices/x/i2c-9", "ACTION=add", "SUBSYSTEM=i2c-dev"})));
    EXPECT_FALSE(concerns(message({"remove@/devices/x/i2c-9", "ACTION=remove", "SUBSYSTEM=i2c-dev"})));
    EXPECT_FALSE(concerns(message({"change@/devices/x/drm/card0", "ACTION=change", "SUBSYSTEM=drm"})));
    EXPECT_FALSE(concerns(message(
        {"change@/x/drm/card0", "ACTION=change", "SUBSYSTEM=drm", "HOTPLUG=1", "CONNECTOR=9", "PROPERTY=3"})));
}

TEST(Uevent, AnythingElseIsNoAnnouncement)
{
    const std::string whole = message({"change@/x", "ACTION=change", "=", "novalue", "", "SUBSYSTEM=drm"});
    EXPECT_EQ(parseUevent(whole)->size(), 3U);
    for (std::size_t length = 0; length < whole.size(); ++length)
        (void)parseUevent(std::string_view(whole).substr(0, length));
    EXPECT_FALSE(parseUevent(""));
    EXPECT_FALSE(parseUevent("change@/x"));
    EXPECT_FALSE(parseUevent(message({"libudev", "ACTION=change"})));
}

class SystemEventsTest : public testing::Test {
protected:
    std::vector<SystemEvent> taken() { return std::exchange(seen, {}); }
    void setPower(const char* state)
    {
        FakeSysfs::write(connector / "dpms", state);
        FakeSysfs::write(other / "dpms", state);
    }

    FakeSysfs system;
    FakeSysfs::Path device = system.addCard();
    FakeSysfs::Path connector = system.addConnector(device, "DP-1", EdidBuilder{}.build());
    FakeSysfs::Path other = system.addConnector(device, "DP-2", EdidBuilder{}.build());
    ManualClock clock;
    LinuxScreenSource screens{system.paths(), {}};
    LinuxSystemEvents events{system.paths(), false, screens, clock};
    std::vector<SystemEvent> seen;
    Subscription subscription = events.subscribe([this](SystemEvent event) { seen.push_back(event); });
};

TEST_F(SystemEventsTest, ABurstOfAnnouncementsIsOneChange)
{
    FakeSysfs::write(other / "status", "disconnected");
    events.announced();
    clock.advance(60ms);
    events.announced();
    EXPECT_TRUE(taken().empty());
    clock.advance(60ms);
    EXPECT_EQ(taken(), std::vector{screenParametersChanged});
    clock.advance(1s);
    EXPECT_TRUE(taken().empty());
    EXPECT_EQ(clock.pendingCount(), 0U) << "nothing wakes the program while nothing happens";
}

TEST_F(SystemEventsTest, AnnouncementsWithoutAnyChangeAreRareEvents)
{
    clock.advance(1min);
    for (int i = 0; i < 100; ++i) {
        events.announced();
        clock.advance(100ms);
    }
    EXPECT_EQ(taken().size(), 1U);
    FakeSysfs::write(system.root() / "class/i2c-dev/i2c-4/name", "DPMST");
    events.announced();
    clock.advance(100ms);
    EXPECT_EQ(taken(), std::vector{screenParametersChanged}) << "a bus has appeared";
}

TEST_F(SystemEventsTest, ScreensThatGoDarkAreNoticedWhenAskedAboutAndWatchedUntilTheyReturn)
{
    const std::uint32_t number = displayNumber("card0", "DP-1");
    clock.advance(1s);
    EXPECT_FALSE(screens.isAsleep(number));
    EXPECT_EQ(clock.pendingCount(), 0U);

    FakeSysfs::write(connector / "dpms", "Off");
    clock.advance(1s);
    EXPECT_TRUE(screens.isAsleep(number));
    EXPECT_TRUE(taken().empty()) << "the other screen is still on";

    setPower("Off");
    clock.advance(1s);
    EXPECT_TRUE(screens.isAsleep(number));
    EXPECT_EQ(taken(), std::vector{screensDidSleep});
    clock.advance(1min);
    EXPECT_TRUE(taken().empty());
    setPower("On");
    clock.advance(LinuxSystemEvents::wakeCheckInterval);
    EXPECT_EQ(taken(), std::vector{screensDidWake});
    EXPECT_EQ(clock.pendingCount(), 0U);
}

TEST_F(SystemEventsTest, AChangeThatNobodyAnnouncedIsNoticedWhenAskedAbout)
{
    FakeSysfs::write(other / "enabled", "disabled"); // switched off in the settings
    clock.advance(1s);
    EXPECT_FALSE(screens.isAsleep(displayNumber("card0", "DP-1")));
    clock.advance(LinuxSystemEvents::settleTime);
    EXPECT_EQ(taken(), std::vector{screenParametersChanged});
}

TEST_F(SystemEventsTest, WhatChangedWhileAllScreensWereDarkIsLookedAtAgainWhenTheyReturn)
{
    setPower("Off");
    FakeSysfs::write(connector / "status", "disconnected");
    events.announced();
    clock.advance(LinuxSystemEvents::settleTime);
    EXPECT_EQ(taken(), (std::vector{screensDidSleep, screenParametersChanged}));
    setPower("On");
    clock.advance(LinuxSystemEvents::wakeCheckInterval + LinuxSystemEvents::settleTime);
    EXPECT_EQ(taken(), (std::vector{screensDidWake, screenParametersChanged}));
    clock.advance(1min);
    EXPECT_TRUE(taken().empty());
}

TEST_F(SystemEventsTest, PullingTheLastScreenOutIsNoSleep)
{
    FakeSysfs::write(connector / "status", "disconnected");
    FakeSysfs::write(other / "status", "disconnected");
    events.checkPower();
    EXPECT_TRUE(taken().empty());
}

} // namespace
} // namespace lumenvale
