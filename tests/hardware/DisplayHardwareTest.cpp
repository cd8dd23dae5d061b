// SPDX-License-Identifier: MIT
#include "hardware/DisplayHardware.h"

#include "hardware/DisplayEndpoints.h"
#include "support/FakeHardwareAccess.h"
#include "support/ManualMainThread.h"

#include <atomic>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <sstream>
#include <utility>

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
        std::vector<DisplayInfo> records = endpoints->inspect({panel, other});
        probeReads = readsIn(std::exchange(monitor->log, {}));
        return records;
    }
    static std::ptrdiff_t readsIn(const Log& log) { return std::count(log.begin(), log.end(), "read"); }

    std::shared_ptr<FakeDdcMonitor> monitor = std::make_shared<FakeDdcMonitor>();
    std::shared_ptr<FakeDisplays> displays = std::make_shared<FakeDisplays>(FakeDisplays{
        {panelID, {"P", {}, 0.625F}}, {monitorID, {"M", {monitor, "DP", "HDMI", "QX7", PixelSize{3840, 2160}}}}});
    std::optional<float> takenAs;
    std::int32_t setterStatus = 0;
    std::ptrdiff_t probeReads = 0;
    std::function<void(const std::string&)> log;
    DisplayInfo panel{.id = "P", .displayID = panelID};
    DisplayInfo other{.id = "M", .displayID = monitorID};
    std::optional<DisplayEndpoints> endpoints;
};

/// What an inspection changes in a record, as one line.
std::string text(const DisplayInfo& record)
{
    std::ostringstream line;
    line << rawValue(record.method) << ' ' << record.brightness.value_or(-1) << ", " << record.status << ' '
         << record.connection << ", " << record.hardwareSerial << ", " << record.nativeResolution;
    return line.str();
}

TEST_F(DisplayHardwareTest, InspectionSaysHowEachDisplayIsReachedAndWhatItIs)
{
    panel.isBuiltIn = true;
    const std::vector<DisplayInfo> records = inspect();
    EXPECT_EQ(text(records.at(0)), "Apple native brightness 0.625, Current hardware brightness read successfully. "
                                   "Internal, Not reported, Not reported");
    EXPECT_EQ(text(records.at(1)), "DDC/CI hardware backlight 0.5, DDC luminance (VCP 0x10) responded. Range: "
                                   "0–100. DP → HDMI, QX7, 3840 × 2160");
    monitor->silent = true;
    EXPECT_EQ(text(inspect()[1]), "Hardware control unavailable -1, No valid DDC brightness reply. Enable DDC/CI "
                                  "in the monitor menu and refresh. DP → HDMI, QX7, 3840 × 2160");
    EXPECT_EQ(probeReads, 3);
    (*displays)[monitorID].route = {.upstream = "", .downstream = "HDMI"};
    EXPECT_EQ(text(inspect()[1]),
              "Hardware control unavailable -1, No accessible hardware brightness service. The "
              "connection or App Sandbox may restrict access. HDMI, Not reported, Not reported");
    (*displays)[monitorID].nativeBrightness = 1.0F;
    EXPECT_EQ(inspect()[1].method, ControlMethod::apple) << "native brightness comes first";
}

TEST_F(DisplayHardwareTest, AWriteEndsInWhatTheDisplayReportsOrInItsOwnError)
{
    using Result = tl::expected<double, Error>;
    const Result gone = tl::unexpected(Error::disconnected);
    const Result refused = tl::unexpected(Error::writeFailed);
    const Result unread = tl::unexpected(Error::readFailed);
    const Result other = tl::unexpected(Error::mismatch);
    const struct {
        const char* name;
        const char* id;
        double value;
        Result result;
        int reads; ///< of the monitor
        std::function<void()> fault = [] {};
    } rows[] = {
        {"half units round up", "M", 0.125, 0.13, 1},
        {"from above", "M", 1.7, 1.0, 1},
        {"from below", "M", -0.2, 0.0, 1},
        {"no number", "M", nan, gone, 0},
        {"no such display", "X", 0.5, gone, 0},
        {"offline", "M", 0.5, gone, 0, [&] { (*displays)[monitorID].identifier.reset(); }},
        {"replaced", "M", 0.5, gone, 0, [&] { (*displays)[monitorID].identifier = "N"; }},
        {"three attempts fail", "M", 0.3, refused, 0, [&] { monitor->writeStatuses = {0, 1, 0, 1, 0, 1}; }},
        {"the read-back tries three times", "M", 0.3, unread, 3, [&] { monitor->silent = true; }},
        {"ignored", "M", 0.3, other, 1, [&] { monitor->acceptsWrites = false; }},
        {"units of the inspection", "M", 0.5, 0.25, 1, [&] { monitor->maximum = 200; }},
        {"panel", "P", 0.25, 0.25, 0},
        {"panel, own steps", "P", 0.25, double{0.25009F}, 0, [&] { takenAs = 0.25009F; }},
        {"panel, another value", "P", 0.25, other, 0, [&] { takenAs = 0.25011F; }},
        {"panel, refused", "P", 0.25, refused, 0, [&] { setterStatus = 1; }},
        {"panel, not readable", "P", 0.25, unread, 0, [&] { takenAs = -1.0F; }},
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
        EXPECT_EQ(readsIn(monitor->log), row.reads) << row.name;
        if (row.result == gone) {
            EXPECT_EQ(std::ranges::count(monitor->log, "hold"), std::ssize(monitor->log) / 2) << row.name;
            EXPECT_EQ(endpoints->currentBrightness({"P", row.id}, {}).size(), std::isnan(row.value) ? 2U : 1U);
        }
    }
}

TEST_F(DisplayHardwareTest, AWriteSettlesBeforeItIsReadBackAndTheLogHoldsEveryByte)
{
    Log lines;
    log = [&](const std::string& line) { lines.push_back(line); };
    inspect();
    EXPECT_EQ(lines[0] + ", " + lines[1], "display 1: no channel, display 2: channel");
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

TEST_F(DisplayHardwareTest, AChangeIsOneOperationThatWaitsForOthersAndStartsFromWhatTheyLeft)
{
    endpoints.emplace(makeAccess());
    monitor->busyHolds = 1400; // others let go after 2.8 s
    const auto brighter = [](const DisplayInfo& display) { return *display.brightness + 0.05; };
    const auto changes = endpoints->changeBrightness({other}, brighter);
    EXPECT_EQ(changes.at(0).outcome, 0.55);
    const auto begin = std::ranges::find(monitor->log, "hold");
    EXPECT_EQ(std::vector(monitor->log.begin(), begin), Log(1400, "wait 2000"));
    EXPECT_EQ(std::find(begin, monitor->log.end(), "let go"), monitor->log.end() - 1);
    monitor->busyHolds = 100000;
    EXPECT_EQ(endpoints->setBrightness(0.5, "M"), tl::unexpected(Error::writeFailed));
    EXPECT_TRUE(endpoints->currentBrightness({"M"}, {}).empty());
    monitor->log.clear();
    EXPECT_EQ(endpoints->inspectAgain({other}).at(0).status,
              "Another program keeps this display's connection busy. Try again when it has ended.");
    EXPECT_EQ(monitor->log, Log(100, "wait 2000")) << "what the user did not ask for does not wait for long";
    EXPECT_EQ(monitor->current, 55);

    HardwareAccess access = makeAccess();
    const CancellationToken stopping = access.stopping;
    endpoints.emplace(std::move(access));
    endpoints->inspect({other});
    monitor->log.clear();
    stopping.cancel();
    EXPECT_EQ(endpoints->setBrightness(0.5, "M"), tl::unexpected(Error::writeFailed));
    EXPECT_EQ(monitor->log, Log()) << "the program ends: it neither waits nor transfers anything";
}

TEST_F(DisplayHardwareTest, APanelIsSetToWholeLevelsAndSaysWhatItHas)
{
    for (std::uint32_t units = 1; units <= 65535; units += units < 300 ? 1 : 97) {
        HardwareAccess access = makeAccess();
        access.native.levels = [&](auto) { return LevelRange{1, units + 1}; };
        access.native.setter = [&](auto, float value) { // the panel keeps whole levels only
            (*displays)[panelID].nativeBrightness = static_cast<float>(std::round(double{value} * units) / units);
            return 0;
        };
        endpoints.emplace(std::move(access));
        endpoints->inspect({panel});
        for (const double wanted : {0.0, 0.33, 0.5, 1.0}) {
            const double level = std::round(wanted * units) / units;
            ASSERT_EQ(endpoints->setBrightness(wanted, "P"), level) << units;
            ASSERT_EQ(endpoints->currentBrightness({"P"}, {}).at("P"), level) << units;
            ASSERT_EQ(endpoints->inspect({panel}).at(0).brightness, level) << units;
        }
    }
}

TEST_F(DisplayHardwareTest, AMonitoringReadTriesOnceAndLeavesOutWhatCannotBeRead)
{
    inspect();
    monitor->current = 73;
    EXPECT_EQ(endpoints->currentBrightness({"X", "M", "P"}, {}), (Readings{{"M", 0.73}, {"P", 0.625}}));
    monitor->log.clear();
    monitor->silent = true;
    EXPECT_EQ(endpoints->currentBrightness({"M", "P"}, {}), (Readings{{"P", 0.625}}));
    EXPECT_EQ(monitor->log.size(), 9U);
    EXPECT_EQ(monitor->log.at(7), "wait 20000");
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
    EXPECT_TRUE(endpoints->inspect({}).empty());
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
