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
using Events = std::vector<SystemEvent>;

TEST(Uevent, OnlyWhatConcernsDisplaysCounts)
{
    const struct {
        std::string message; ///< with '|' for the zeros between its lines
        bool isEvent, concernsDisplays, changesRecords;
    } rows[] = {
        {"change@/devices/x/drm/card0|ACTION=change|SUBSYSTEM=drm|HOTPLUG=1|", true, true, true},
        {"add@/devices/x/card0-DP-3|ACTION=add|SUBSYSTEM=drm|", true, true, true},
        {"add@/devices/x/i2c-9|ACTION=add|SUBSYSTEM=i2c-dev|=|novalue||", true, true, true},
        {"remove@/devices/x/i2c-9|ACTION=remove|SUBSYSTEM=i2c-dev|", true, false, true},
        {"add@/devices/x/acpi_video0|ACTION=add|SUBSYSTEM=backlight|", true, true, true},
        {"change@/devices/x/acpi_video0|ACTION=change|SUBSYSTEM=backlight|", true, false, false},
        {"change@/devices/x/drm/card0|ACTION=change|SUBSYSTEM=drm|", true, false, false},
        {"change@/x/drm/card0|ACTION=change|SUBSYSTEM=drm|HOTPLUG=1|CONNECTOR=9|PROPERTY=3|", true, false, false},
        {"add@/devices/x|ACTION=add|SUBSYSTEM=usb|", true, false, false},
        {"libudev|ACTION=change|SUBSYSTEM=drm|", false, false, false},
        {"change@/x", false, false, false},
        {"", false, false, false},
    };
    for (const auto& row : rows) {
        std::string message = row.message;
        std::ranges::replace(message, '|', '\0');
        const auto event = parseUevent(message);
        EXPECT_EQ(event.has_value(), row.isEvent) << row.message;
        EXPECT_EQ(event && concernsDisplays(*event), row.concernsDisplays) << row.message;
        EXPECT_EQ(event && changesRecords(*event), row.changesRecords) << row.message;
        for (std::size_t length = 0; length < message.size(); ++length)
            (void)parseUevent(std::string_view(message).substr(0, length));
    }
}

Task<SharedRecords> lookHere(std::shared_ptr<KernelRecords> records, Look what)
{
    co_return what == Look::power ? records->readPower() : records->readAnew();
}

struct SystemEventsTest : testing::Test {
    /// What is told within the time.
    Events after(Clock::Duration time)
    {
        clock.advance(time);
        return std::exchange(seen, {});
    }
    void write(const char* connector, const char* attribute, const char* value)
    {
        system.write(system[connector] / attribute, value);
    }

    FakeSysfs system{"i915 DP-1=S DP-2=O"};
    ManualClock clock;
    std::shared_ptr<KernelRecords> records = system.records();
    LinuxSystemEvents events{records, [this](Look what) { return lookHere(records, what); }, nullptr, clock};
    Events seen;
    Subscription subscription = events.subscribe([this](SystemEvent event) { seen.push_back(event); });
};

TEST_F(SystemEventsTest, ABurstOfAnnouncementsIsOneChangeAndWithoutAnyChangeARareOne)
{
    write("DP-2", "status", "disconnected");
    events.announced();
    EXPECT_EQ(after(60ms), Events{});
    events.announced();
    EXPECT_EQ(after(60ms), Events{screenParametersChanged});
    EXPECT_EQ(after(1min), Events{});
    std::size_t told = 0;
    for (int i = 0; i < 90; ++i) {
        events.announced();
        told += after(100ms).size();
    }
    EXPECT_EQ(told, 1U);
    system.write(system.root() / "class/i2c-dev/i2c-4/name", "DPMST");
    events.announced();
    EXPECT_EQ(after(100ms), Events{screenParametersChanged}) << "a bus has appeared";
}

TEST_F(SystemEventsTest, WhatTheKernelDoesNotAnnounceIsNoticedAndWhatChangedInTheDarkLookedAtAgain)
{
    write("DP-1", "dpms", "Off");
    EXPECT_EQ(after(1min), Events{}) << "the other screen is still on";
    write("DP-2", "dpms", "Off");
    EXPECT_EQ(after(LinuxSystemEvents::powerCheckInterval), Events{screensDidSleep});
    write("DP-1", "dpms", "On");
    EXPECT_EQ(after(LinuxSystemEvents::wakeCheckInterval), Events{screensDidWake});
    write("DP-2", "enabled", "disabled"); // switched off in the settings
    EXPECT_EQ(after(LinuxSystemEvents::powerCheckInterval + 100ms), Events{screenParametersChanged});
    write("DP-1", "dpms", "Off");
    write("DP-2", "status", "disconnected");
    events.announced();
    EXPECT_EQ(after(100ms), Events{screensDidSleep}) << "monitors that sleep are left alone";
    write("DP-1", "dpms", "On");
    EXPECT_EQ(after(LinuxSystemEvents::wakeCheckInterval + 100ms),
              (Events{screensDidWake, screenParametersChanged}));
    write("DP-1", "status", "disconnected");
    EXPECT_EQ(after(1min), Events{screenParametersChanged}) << "pulling the last screen out is no sleep";
}

TEST(LinuxSystemEvents, TellAtOnceWhatTheWindowSystemSaysWhereTheKernelHasNoConnectors)
{
    struct : WindowSystem {
        std::vector<WindowScreen> screens() override { return {}; }
        Subscription observe(std::function<void()> changed) override { return signal.subscribe(changed); }
        Signal<> signal;
    } windows;
    FakeSysfs system("");
    const auto records = system.records();
    ManualClock clock;
    LinuxSystemEvents events(
        records, [&](Look what) { return lookHere(records, what); }, &windows, clock);
    Events seen;
    const Subscription subscription = events.subscribe([&](SystemEvent event) { seen.push_back(event); });
    windows.signal.emit();
    clock.advance(100ms);
    EXPECT_EQ(seen, Events{screenParametersChanged});
}

TEST(KernelRecords, HoldUntilTheKernelAnnouncesAChangeOrSomethingDoesNotMatchThem)
{
    FakeSysfs system("i915 DP-1=S DP-2=O");
    bool isAnnounced = true;
    KernelRecords records(system.paths(), [&] { return std::exchange(isAnnounced, false); });
    EXPECT_FALSE(records.lastConnectors()->isWhole);
    const SharedRecords first = records.last();
    EXPECT_TRUE(first->isWhole);
    const auto unplug = [&](const char* connector) { system.write(system[connector] / "status", "disconnected"); };
    const auto displays = [](const SharedRecords& from) {
        return std::ranges::count_if(from->connectors, &Connector::isDisplay);
    };
    unplug("DP-1");
    EXPECT_EQ(records.current(), first);
    isAnnounced = true;
    EXPECT_EQ(records.last(), first) << "never reads";
    EXPECT_EQ(displays(records.current()), 1);
    unplug("DP-2");
    records.forget();
    EXPECT_EQ(displays(records.current()), 0);
    EXPECT_EQ(displays(first), 2) << "what was handed out stays";

    const SharedRecords unchanged = records.last();
    EXPECT_EQ(records.readPower(), unchanged);
    EXPECT_EQ(records.last(), unchanged);
}

} // namespace
} // namespace lumenvale
