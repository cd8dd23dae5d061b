// SPDX-License-Identifier: MIT
#include "hardware/DisplayHardware.h"

#include "hardware/DisplayEndpoints.h"
#include "support/AwaitResult.h"
#include "support/FakeHardwareAccess.h"

#include <atomic>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace lumenvale {
namespace {

using Error = BrightnessError;
using Log = std::vector<std::string>;
using Readings = std::map<std::string, double>;
constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr std::uint32_t panelID = 1;
constexpr std::uint32_t monitorID = 2;

/// A native panel "P" and a DDC/CI monitor "M".
struct DisplayHardwareTest : testing::Test {
    HardwareAccess makeAccess()
    {
        return {.routes = std::make_unique<FakeRoutes>(displays),
                .native = {.handle = displays,
                           .getter =
                               [this](std::uint32_t id, float* value) {
                                   *value = (*displays)[id].nativeBrightness;
                                   return *value == -1.0F ? 1 : 0;
                               },
                           .setter =
                               [this](std::uint32_t id, float value) {
                                   (*displays)[id].nativeBrightness = takenAs ? *takenAs : value;
                                   return setterStatus;
                               }},
                .pause = monitor->recordingPause(),
                .log = log};
    }
    std::vector<DisplayInfo> inspect()
    {
        endpoints.emplace(makeAccess());
        std::vector<DisplayInfo> records = endpoints->inspect({panel, other}, {});
        monitor->log.clear();
        return records;
    }
    DisplayInfo record(std::uint32_t displayID, const std::string& id) const
    {
        DisplayInfo display;
        display.id = id;
        display.displayID = displayID;
        return display;
    }

    std::shared_ptr<FakeDdcMonitor> monitor = std::make_shared<FakeDdcMonitor>();
    std::shared_ptr<FakeDisplays> displays = std::make_shared<FakeDisplays>(FakeDisplays{
        {panelID, {"P", {}, 0.625F}}, {monitorID, {"M", {monitor, "DP", "HDMI", "QX7", PixelSize{3840, 2160}}}}});
    std::optional<float> takenAs;
    std::int32_t setterStatus = 0;
    std::function<void(const std::string&)> log;
    DisplayInfo panel = record(panelID, "P");
    DisplayInfo other = record(monitorID, "M");
    std::optional<DisplayEndpoints> endpoints;
};

TEST_F(DisplayHardwareTest, InspectionSaysHowEachDisplayIsReachedAndWhatItIs)
{
    panel.isBuiltIn = true;
    const std::vector<DisplayInfo> records = inspect();
    EXPECT_EQ(records.at(0).method, ControlMethod::apple);
    EXPECT_EQ(records[0].brightness, 0.625);
    EXPECT_EQ(records[0].status, "Current hardware brightness read successfully.");
    EXPECT_EQ(records[0].connection, "Internal");
    EXPECT_EQ(records[0].hardwareSerial, "Not reported") << "an empty text is no serial number";
    EXPECT_EQ(records[0].nativeResolution, "Not reported");
    EXPECT_EQ(records.at(1).method, ControlMethod::ddc);
    EXPECT_EQ(records[1].brightness, 0.5);
    EXPECT_EQ(records[1].maximum, 100);
    EXPECT_EQ(records[1].status, "DDC luminance (VCP 0x10) responded. Range: 0–100.");
    EXPECT_EQ(records[1].connection, "DP → HDMI");
    EXPECT_EQ(records[1].hardwareSerial, "QX7");
    EXPECT_EQ(records[1].nativeResolution, "3840 × 2160");

    (*displays)[monitorID].route.upstream.clear();
    EXPECT_EQ(inspect()[1].connection, "HDMI");
    (*displays)[monitorID].nativeBrightness = 1.0F;
    EXPECT_EQ(inspect()[1].method, ControlMethod::apple) << "native brightness comes first";
}

TEST_F(DisplayHardwareTest, ADisplayWithoutBrightnessSaysWhy)
{
    monitor->silent = true;
    endpoints.emplace(makeAccess());
    const DisplayInfo silent = endpoints->inspect({other}, {}).at(0);
    EXPECT_EQ(silent.status, "No valid DDC brightness reply. Enable DDC/CI in the monitor menu and refresh.");
    EXPECT_EQ(silent.connection, "DP → HDMI") << "it was identified all the same";
    EXPECT_EQ(std::count(monitor->log.begin(), monitor->log.end(), "read"), 3);
    (*displays)[monitorID].route = {};
    const DisplayInfo unreachable = inspect()[1];
    EXPECT_EQ(unreachable.status,
              "No accessible hardware brightness service. The connection or App Sandbox may restrict access.");
    EXPECT_EQ(unreachable.connection, "Not reported");
    for (const DisplayInfo& each : {silent, unreachable})
        EXPECT_TRUE(each.method == ControlMethod::unavailable && !each.brightness);
}

TEST_F(DisplayHardwareTest, AWriteEndsInWhatTheDisplayReportsOrInItsOwnError)
{
    const auto fails = [](Error error) { return tl::expected<double, Error>(tl::unexpected(error)); };
    const struct {
        const char* name;
        std::function<void()> fault;
        const char* id;
        double value;
        tl::expected<double, Error> result;
        int reads; ///< of the monitor
    } rows[] = {
        {"12.5 units round away from zero", [] {}, "M", 0.125, 0.13, 1},
        {"from above", [] {}, "M", 1.7, 1.0, 1},
        {"from below", [] {}, "M", -0.2, 0.0, 1},
        {"no number", [] {}, "M", nan, fails(Error::disconnected), 0},
        {"no such display", [] {}, "X", 0.5, fails(Error::disconnected), 0},
        {"offline", [&] { (*displays)[monitorID].identifier.reset(); }, "M", 0.5, fails(Error::disconnected), 0},
        {"replaced", [&] { (*displays)[monitorID].identifier = "N"; }, "M", 0.5, fails(Error::disconnected), 0},
        {"two attempts fail",
         [&] {
             monitor->writeStatuses = {0, 1, 0, 1};
         },
         "M", 0.3, 0.3, 1},
        {"three", [&] { monitor->writeStatuses = {0, 1, 0, 1, 0, 1}; }, "M", 0.3, fails(Error::writeFailed), 0},
        {"the read-back tries three times", [&] { monitor->silent = true; }, "M", 0.3, fails(Error::readFailed),
         3},
        {"refused", [&] { monitor->acceptsWrites = false; }, "M", 0.3, fails(Error::mismatch), 1},
        {"in the units of the inspection", [&] { monitor->maximum = 200; }, "M", 0.5, 0.25, 1},
        {"panel", [] {}, "P", 0.25, 0.25, 0},
        {"panel, from above", [] {}, "P", 7.0, 1.0, 0},
        {"panel, a step of its own", [&] { takenAs = 0.25009F; }, "P", 0.25, double{0.25009F}, 0},
        {"panel, another value", [&] { takenAs = 0.25011F; }, "P", 0.25, fails(Error::mismatch), 0},
        {"panel, refused", [&] { setterStatus = 1; }, "P", 0.25, fails(Error::writeFailed), 0},
        {"panel, not readable", [&] { takenAs = -1.0F; }, "P", 0.25, fails(Error::readFailed), 0},
    };
    const FakeDisplays before = *displays;
    for (const auto& row : rows) {
        *monitor = FakeDdcMonitor();
        *displays = before;
        takenAs.reset();
        setterStatus = 0;
        inspect();
        row.fault();
        EXPECT_EQ(endpoints->setBrightness(row.value, row.id), row.result) << row.name;
        EXPECT_EQ(std::count(monitor->log.begin(), monitor->log.end(), "read"), row.reads) << row.name;
        if (row.result == fails(Error::disconnected)) {
            EXPECT_TRUE(monitor->log.empty()) << row.name;
            EXPECT_EQ(endpoints->currentBrightness({"P", row.id}, {}).size(), std::isnan(row.value) ? 2U : 1U);
        }
    }
}

TEST_F(DisplayHardwareTest, AWriteSettlesBeforeItIsReadBackAndTheLogHoldsEveryByte)
{
    Log lines;
    log = [&](const std::string& line) { lines.push_back(line); };
    inspect();
    EXPECT_EQ(lines[0], "display 1: no channel");
    EXPECT_EQ(lines[1], "display 2: channel");
    EXPECT_EQ(lines[2], "native read display 1: 0.625000 -> 0");
    lines.clear();
    monitor->writeStatuses = {0, 0, 0, 121};
    EXPECT_TRUE(endpoints->setBrightness(0.13, "M"));
    EXPECT_EQ(lines,
              (Log{"wait 10000 us", "i2c write chip 0x37 data 0x51: 84 03 10 00 0D A5 -> 0", "wait 10000 us",
                   "i2c write chip 0x37 data 0x51: 84 03 10 00 0D A5 -> 0", "wait 80000 us", "wait 10000 us",
                   "i2c write chip 0x37 data 0x51: 82 01 10 FD -> 0", "wait 10000 us",
                   "i2c write chip 0x37 data 0x51: 82 01 10 FD -> failed (121)", "wait 50000 us",
                   "i2c read  chip 0x37 data 0x51: 6E 88 02 00 10 00 00 64 00 0D CD -> 0"}));
    lines.clear();
    EXPECT_TRUE(endpoints->setBrightness(0.5, "P"));
    EXPECT_EQ(lines, (Log{"native write display 1: 0.500000 -> 0", "native read display 1: 0.500000 -> 0"}));
}

TEST_F(DisplayHardwareTest, AMonitoringReadTriesOnceAndLeavesOutWhatCannotBeRead)
{
    inspect();
    monitor->current = 73;
    EXPECT_EQ(endpoints->currentBrightness({"X", "M", "P"}, {}), (Readings{{"M", 0.73}, {"P", 0.625}}));
    monitor->log.clear();
    monitor->silent = true;
    EXPECT_EQ(endpoints->currentBrightness({"M", "P"}, {}), (Readings{{"P", 0.625}}));
    EXPECT_EQ(monitor->log.size(), 7U);
    EXPECT_EQ(monitor->log.back(), "wait 20000");
    for (const float good : {0.0F, -0.0F, 1.0F, std::numeric_limits<float>::denorm_min()}) {
        (*displays)[panelID].nativeBrightness = good;
        EXPECT_EQ(endpoints->currentBrightness({"P"}, {}).at("P"), double{good});
    }
    for (const float bad : {1.0000001F, -0.1F, std::numeric_limits<float>::infinity(), std::nanf("")}) {
        (*displays)[panelID].nativeBrightness = bad;
        EXPECT_TRUE(endpoints->currentBrightness({"P"}, {}).empty()) << bad;
    }
}

TEST_F(DisplayHardwareTest, WhatIsForgottenCancelledOrWithoutALibraryIsNotTouched)
{
    const CancellationToken cancelled;
    cancelled.cancel();
    inspect();
    EXPECT_TRUE(endpoints->currentBrightness({"P"}, cancelled).empty());
    EXPECT_TRUE(endpoints->inspect({panel, other}, cancelled).empty());
    inspect();
    EXPECT_TRUE(endpoints->inspect({}, {}).empty());
    EXPECT_FALSE(endpoints->setBrightness(0.5, "M"));

    other.method = ControlMethod::ddc; // a record that brings a method keeps it without a channel
    other.brightness = 0.5;
    (*displays)[monitorID].route.service = nullptr;
    inspect();
    EXPECT_EQ(endpoints->setBrightness(0.3, "M"), tl::unexpected(Error::writeFailed));
    EXPECT_TRUE(endpoints->currentBrightness({"M"}, {}).empty());

    NativeFunctions unloaded = makeAccess().native;
    unloaded.handle = nullptr;
    EXPECT_FALSE(NativeBrightness(unloaded).read(panelID) || NativeBrightness(unloaded).setter());
    EXPECT_FALSE(NativeBrightness({.handle = displays}).read(panelID));
}

TEST_F(DisplayHardwareTest, TheControllerAnswersOnTheMainThreadAndEndsAnInspectionThatItsCallerLeft)
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
    EXPECT_TRUE(awaitResult(mainThread, hardware.setBrightness(0.2, "P")));
    EXPECT_EQ(awaitResult(mainThread, hardware.inspect({panel, other})).size(), 2U);
    EXPECT_EQ(awaitResult(mainThread, hardware.currentBrightness({"P"})).at("P"), double{0.2F});
}

} // namespace
} // namespace lumenvale
