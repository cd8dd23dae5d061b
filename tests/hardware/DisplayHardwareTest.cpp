// SPDX-License-Identifier: MIT
#include "hardware/DisplayHardware.h"

#include "hardware/DisplayEndpoints.h"
#include "support/AwaitResult.h"
#include "support/FakeHardwareAccess.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <gtest/gtest.h>

namespace lumenvale {
namespace {

constexpr std::uint32_t panelID = 1;
constexpr std::uint32_t monitorID = 2;

DisplayInfo record(std::uint32_t displayID, const std::string& uuid)
{
    DisplayInfo display;
    display.id = uuid;
    display.displayID = displayID;
    return display;
}

/// A native panel and a DDC/CI monitor, matched by location.
struct DisplayEndpointsTest : testing::Test {
    DisplayEndpointsTest()
    {
        (*displays)[panelID] = {.uuid = "PANEL", .nativeBrightness = 0.625F};
        (*displays)[monitorID] = {.uuid = "MONITOR",
                                  .information = PropertyDictionary{{"IODisplayLocation", "/two"}}};
        panel.isBuiltIn = true;
    }

    HardwareAccess makeAccess()
    {
        const PropertyDictionary attributes = {
            {"NativeFormatHorizontalPixels", 3840},
            {"NativeFormatVerticalPixels", 2160},
            {"ProductAttributes", PropertyDictionary{{"AlphanumericSerialNumber", "QX7"}}}};
        const FakeEntry framebuffer = {
            "AppleCLCD2",
            {{"DisplayAttributes", attributes},
             {"Transport", PropertyDictionary{{"Upstream", "DP"}, {"Downstream", downstream}}}},
            "/two",
            nullptr};
        const FakeEntry proxy = {"DCPAVServiceProxy", {{"Location", "External"}}, "", monitor};
        return {.registry = std::make_unique<FakeRegistry>(std::vector{framebuffer, proxy}),
                .displaySystem = std::make_unique<FakeDisplaySystem>(displays),
                .native = {.handle = displays,
                           .getter =
                               [list = displays](std::uint32_t id, float* value) {
                                   *value = (*list)[id].nativeBrightness;
                                   return *value < 0.0F ? 1 : 0;
                               },
                           .setter =
                               [this, list = displays](std::uint32_t id, float value) {
                                   (*list)[id].nativeBrightness = static_cast<float>(value + nativeError);
                                   return setterStatus;
                               }},
                .pause = monitor->recordingPause(),
                .log = log};
    }

    DisplayEndpoints& inspected()
    {
        endpoints.emplace(makeAccess());
        records = endpoints->inspect({panel, other}, {});
        monitor->log.clear();
        return *endpoints;
    }

    tl::expected<double, BrightnessError> set(double value, const std::string& id)
    {
        return endpoints->setBrightness(value, id);
    }
    tl::expected<double, BrightnessError> failure(BrightnessError error) { return tl::unexpected(error); }

    std::shared_ptr<FakeDisplaySystem::Displays> displays = std::make_shared<FakeDisplaySystem::Displays>();
    std::shared_ptr<FakeDdcMonitor> monitor = std::make_shared<FakeDdcMonitor>();
    std::function<void(const std::string&)> log;
    std::string downstream = "HDMI";
    double nativeError = 0.0;
    std::int32_t setterStatus = 0;
    DisplayInfo panel = record(panelID, "PANEL");
    DisplayInfo other = record(monitorID, "MONITOR");
    std::optional<DisplayEndpoints> endpoints;
    std::vector<DisplayInfo> records;
};

TEST_F(DisplayEndpointsTest, InspectionFindsTheMethodOfEachDisplay)
{
    inspected();
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0].method, ControlMethod::apple);
    EXPECT_EQ(records[0].brightness, 0.625);
    EXPECT_EQ(records[0].status, "Current hardware brightness read successfully.");
    EXPECT_EQ(records[0].connection, "Internal");
    EXPECT_EQ(records[1].method, ControlMethod::ddc);
    EXPECT_EQ(records[1].brightness, 0.5);
    EXPECT_EQ(records[1].status, "DDC luminance (VCP 0x10) responded. Range: 0–100.");
    EXPECT_EQ(records[1].connection, "DP → HDMI");
    EXPECT_EQ(records[1].nativeResolution, "3840 × 2160");
    EXPECT_EQ(records[1].hardwareSerial, "QX7");

    (*displays)[monitorID].nativeBrightness = 1.0F;
    downstream = "";
    inspected();
    EXPECT_EQ(records[1].method, ControlMethod::apple) << "native brightness comes first";
    EXPECT_EQ(records[1].connection, "DP") << "one transport text stands alone";

    EXPECT_TRUE(endpoints->inspect({}, {}).empty());
    EXPECT_EQ(set(0.5, "MONITOR"), failure(BrightnessError::disconnected)) << "everything is forgotten";
}

TEST_F(DisplayEndpointsTest, ASilentMonitorIsAskedThreeTimesAndNamed)
{
    monitor->silent = true;
    endpoints.emplace(makeAccess());
    const DisplayInfo found = endpoints->inspect({other}, {}).front();
    EXPECT_EQ(found.method, ControlMethod::unavailable);
    EXPECT_FALSE(found.brightness);
    EXPECT_EQ(found.status, "No valid DDC brightness reply. Enable DDC/CI in the monitor menu and refresh.");
    EXPECT_EQ(found.connection, "DP → HDMI") << "it was identified all the same";
    EXPECT_EQ(std::count(monitor->log.begin(), monitor->log.end(), "read"), 3);
    EXPECT_EQ(set(0.5, "MONITOR"), failure(BrightnessError::disconnected));
}

TEST_F(DisplayEndpointsTest, ADisplayWithoutAnyServiceIsNamed)
{
    (*displays)[monitorID].information.reset();
    inspected();
    EXPECT_EQ(records[1].status,
              "No accessible hardware brightness service. The connection or App Sandbox may restrict access.");
    EXPECT_EQ(records[1].connection, "Not reported");
}

TEST_F(DisplayEndpointsTest, ADdcWriteSendsSettlesReadsAndCompares)
{
    inspected();
    EXPECT_EQ(set(0.125, "MONITOR"), 0.13) << "12.5 rounds away from zero";
    const std::vector<std::string> expected = {
        "wait 10000", "write 84 03 10 00 0D A5", "wait 10000", "write 84 03 10 00 0D A5", "wait 80000",
        "wait 10000", "write 82 01 10 FD",       "wait 10000", "write 82 01 10 FD",       "wait 50000",
        "read"};
    EXPECT_EQ(monitor->log, expected);
    EXPECT_EQ(set(1.7, "MONITOR"), 1.0);
    EXPECT_EQ(set(-0.2, "MONITOR"), 0.0);
    EXPECT_EQ(monitor->current, 0);
}

TEST_F(DisplayEndpointsTest, EveryFailureOfADdcWriteHasItsOwnError)
{
    inspected();
    monitor->writeStatuses = {0, -1, 0, -1, 0, -1};
    EXPECT_EQ(set(0.3, "MONITOR"), failure(BrightnessError::writeFailed));
    EXPECT_EQ(monitor->log.size(), 3U * 5U) << "three attempts";
    monitor->silent = true;
    EXPECT_EQ(set(0.3, "MONITOR"), failure(BrightnessError::readFailed));
    monitor->silent = false;
    monitor->overridesTo = 31;
    EXPECT_EQ(set(0.3, "MONITOR"), failure(BrightnessError::mismatch));
}

TEST_F(DisplayEndpointsTest, ANativeWriteIsReadBackWithinItsTolerance)
{
    inspected();
    EXPECT_NEAR(*set(0.3, "PANEL"), 0.3, 1e-7);
    nativeError = 0.00009;
    EXPECT_TRUE(set(0.3, "PANEL"));
    nativeError = -0.00011;
    EXPECT_EQ(set(0.3, "PANEL"), failure(BrightnessError::mismatch));
    nativeError = 2.0;
    EXPECT_EQ(set(0.3, "PANEL"), failure(BrightnessError::readFailed)) << "beyond 1 is no reading";
    setterStatus = 5;
    EXPECT_EQ(set(0.3, "PANEL"), failure(BrightnessError::writeFailed));
    EXPECT_TRUE(monitor->log.empty()) << "nothing is waited for";
}

TEST_F(DisplayEndpointsTest, AWriteCountsInTheUnitsOfTheLastInspection)
{
    inspected();
    monitor->maximum = 200;
    EXPECT_EQ(set(0.5, "MONITOR"), 0.25) << "50 units of 100 were asked for, and 50 of 200 are there";
    endpoints->inspect({other}, {});
    EXPECT_EQ(set(0.5, "MONITOR"), 0.5);
}

TEST_F(DisplayEndpointsTest, ARecordThatBringsAMethodKeepsItWithoutAService)
{
    (*displays)[monitorID].information.reset();
    other.method = ControlMethod::ddc;
    other.brightness = 0.5;
    inspected();
    EXPECT_EQ(set(0.3, "MONITOR"), failure(BrightnessError::writeFailed));
    EXPECT_TRUE(endpoints->currentBrightness({"MONITOR"}, {}).empty());
}

TEST_F(DisplayEndpointsTest, WhatIsNotThatDisplayAnyMoreIsNeitherReadNorWritten)
{
    inspected();
    EXPECT_EQ(set(std::nan(""), "MONITOR"), failure(BrightnessError::disconnected));
    EXPECT_EQ(set(0.5, "UNKNOWN"), failure(BrightnessError::disconnected));
    (*displays)[monitorID].online = false;
    EXPECT_EQ(set(0.5, "MONITOR"), failure(BrightnessError::disconnected));
    (*displays)[monitorID].online = true;
    (*displays)[monitorID].uuid = "ANOTHER";
    EXPECT_EQ(set(0.5, "MONITOR"), failure(BrightnessError::disconnected));
    EXPECT_TRUE(monitor->log.empty());
    EXPECT_EQ(endpoints->currentBrightness({"PANEL", "MONITOR"}, {}),
              (std::map<std::string, double>{{"PANEL", 0.625}}));
}

TEST_F(DisplayEndpointsTest, AMonitoringReadTriesOnce)
{
    inspected();
    monitor->current = 73;
    EXPECT_EQ(endpoints->currentBrightness({"MONITOR"}, {}), (std::map<std::string, double>{{"MONITOR", 0.73}}));
    monitor->log.clear();
    monitor->silent = true;
    EXPECT_TRUE(endpoints->currentBrightness({"MONITOR"}, {}).empty());
    EXPECT_EQ(monitor->log.size(), 7U);
    EXPECT_EQ(monitor->log.back(), "wait 20000");
}

TEST_F(DisplayEndpointsTest, ACancelledCallerStopsTheWorkBetweenDisplays)
{
    inspected();
    const CancellationToken token;
    token.cancel();
    EXPECT_TRUE(endpoints->currentBrightness({"PANEL"}, token).empty());
    EXPECT_TRUE(endpoints->inspect({panel, other}, token).empty());
}

TEST_F(DisplayEndpointsTest, TheLogHoldsEveryTransferAndWait)
{
    std::vector<std::string> lines;
    log = [&](const std::string& line) { lines.push_back(line); };
    monitor->writeStatuses = {0, 121};
    endpoints.emplace(makeAccess());
    endpoints->inspect({other}, {});
    const std::vector<std::string> expected = {
        "open DCPAVServiceProxy ", "native read display 2: -> failed (1)",
        "wait 10000 us",           "i2c write chip 0x37 data 0x51: 82 01 10 FD -> 0",
        "wait 10000 us",           "i2c write chip 0x37 data 0x51: 82 01 10 FD -> failed (121)",
        "wait 50000 us",           "i2c read  chip 0x37 data 0x51: 6E 88 02 00 10 00 00 64 00 32 F2 -> 0",
    };
    EXPECT_EQ(lines, expected);
}

TEST_F(DisplayEndpointsTest, TheControllerAnswersOnTheMainThread)
{
    ManualMainThread mainThread;
    DisplayHardware hardware(makeAccess(), mainThread);
    EXPECT_EQ(awaitResult(mainThread, hardware.inspect({panel, other})).size(), 2U);
    EXPECT_EQ(awaitResult(mainThread, hardware.setBrightness(0.2, "MONITOR")), 0.2);
    EXPECT_EQ(awaitResult(mainThread, hardware.currentBrightness({"MONITOR"})).at("MONITOR"), 0.2);
}

TEST_F(DisplayEndpointsTest, AnInspectionThatNobodyWaitsForStillFindsEveryDisplay)
{
    ManualMainThread mainThread;
    std::atomic<bool> isProbing = false;
    std::atomic<bool> isAbandoned = false;
    HardwareAccess access = makeAccess();
    access.pause = [&](std::chrono::microseconds) {
        isProbing = true;
        isProbing.notify_one();
        isAbandoned.wait(false);
    };
    DisplayHardware hardware(std::move(access), mainThread);
    {
        const auto inspection = hardware.inspect({other, panel});
        inspection.start();
        isProbing.wait(false);
    }
    isAbandoned = true;
    isAbandoned.notify_one();
    EXPECT_TRUE(awaitResult(mainThread, hardware.setBrightness(0.2, "PANEL")));
}

} // namespace
} // namespace lumenvale
