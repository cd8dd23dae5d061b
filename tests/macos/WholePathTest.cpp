// SPDX-License-Identifier: MIT
// From the registry to a verified value, through DisplayHardware and its thread, on a Mac with a built-in panel
// and two monitors.
#include "MacTest.h"
#include "hardware/DisplayHardware.h"
#include "hardware/ServiceDiscovery.h"
#include "platform/macos/displays/DisplayFacts.h"
#include "platform/macos/displays/MacDiagnostics.h"
#include "platform/macos/displays/MacDisplaySystem.h"
#include "platform/macos/displays/MacNativeFunctions.h"
#include "platform/macos/displays/MacServiceRegistry.h"
#include "platform/macos/foundation/MacReferences.h"
#include "support/FakeHardwareAccess.h"
#include "support/ManualMainThread.h"

#include <IOKit/IOKitLib.h>
#include <atomic>
#include <functional>

static std::atomic<int> poolCount = 0;

extern "C" {
void* objc_autoreleasePoolPush()
{
    ++poolCount;
    return &poolCount;
}
void objc_autoreleasePoolPop(void*) { --poolCount; }
}

extern "C" CFDictionaryRef CoreDisplay_DisplayCreateInfoDictionary(std::uint32_t displayID);

namespace lumenvale {

int openPools() { return poolCount; }

namespace {

using fakesdk::Dict;
using fakesdk::Node;

constexpr char coreDisplay[] = "/System/Library/Frameworks/CoreDisplay.framework/CoreDisplay";
constexpr char library[] = "/System/Library/PrivateFrameworks/DisplayServices.framework/DisplayServices";

float panelBrightness = 0.625F;

std::int32_t readPanel(std::uint32_t display, float* brightness)
{
    *brightness = panelBrightness;
    return openPools() > 0 && display == 1 ? 0 : 1;
}
std::int32_t setPanel(std::uint32_t, float brightness)
{
    panelBrightness = brightness;
    return openPools() > 0 ? 0 : 1;
}

fakesdk::I2C busOf(FakeDdcMonitor& monitor)
{
    return {std::bind_front(&FakeDdcMonitor::writeI2C, &monitor),
            std::bind_front(&FakeDdcMonitor::readI2C, &monitor)};
}

/// A framebuffer and the channel beside it.
Node connection(const char* name, const char* location, const char* bus)
{
    const Dict attributes = {{"NativeFormatHorizontalPixels", 3840}, {"NativeFormatVerticalPixels", 2160}};
    const Dict facts = {{"DisplayAttributes", attributes}, {"Transport", Dict{{"Downstream", "HDMI"}}}};
    return {.name = name,
            .children = {{.name = "AppleCLCD2", .props = facts},
                         {.name = "DCPAVServiceProxy", .props = {{"Location", location}}, .i2c = bus}}};
}

struct WholePathTest : MacTest {
    WholePathTest()
    {
        silent.silent = true;
        machine.frameworks[library] = {{"DisplayServicesGetBrightness", reinterpret_cast<void*>(&readPanel)},
                                       {"DisplayServicesSetBrightness", reinterpret_cast<void*>(&setPanel)}};
        machine.frameworks[coreDisplay] = {{"CoreDisplay_DisplayCreateInfoDictionary",
                                            reinterpret_cast<void*>(&CoreDisplay_DisplayCreateInfoDictionary)}};
        machine.displays = {
            {.id = 1, .builtin = true, .uuid = "PANEL"},
            {.id = 2, .uuid = "MONITOR", .info = {{"IODisplayLocation", "IOService:/dispext0/AppleCLCD2"}}},
            {.id = 3, .uuid = "SILENT", .info = {{"IODisplayLocation", "IOService:/dispext1/AppleCLCD2"}}}};
        machine.root.children = {connection("disp0", "Embedded", ""), connection("dispext0", "External", "dp0"),
                                 connection("dispext1", "External", "dp1")};
        machine.buses = {{"dp0", busOf(monitor)}, {"dp1", busOf(silent)}};
        hardware.emplace(
            HardwareAccess{.routes = std::make_unique<ServiceDiscovery>(std::make_unique<MacServiceRegistry>(),
                                                                        std::make_unique<MacDisplaySystem>()),
                           .native = loadDisplayServices(),
                           .pause = [](std::chrono::microseconds) {}},
            mainThread);
    }

    std::vector<DisplayInfo> inspect()
    {
        std::vector<DisplayInfo> displays;
        for (const fakesdk::Display& each : machine.displays)
            displays.push_back(*makeDisplayInfo(displayFacts(each.id)));
        return awaitResult(mainThread, hardware->inspect(displays));
    }
    tl::expected<double, BrightnessError> set(double value, const std::string& id = "MONITOR")
    {
        return awaitResult(mainThread, hardware->setBrightness(value, id));
    }

    FakeDdcMonitor monitor, silent;
    ManualMainThread mainThread;
    std::optional<DisplayHardware> hardware;
};

TEST_F(WholePathTest, MatchesSetsVerifiesReadsAndExplains)
{
    machine.fail["IOIteratorIsValid"] = {0, 1}; // a cable is plugged in during the walk, which begins anew
    const std::vector<DisplayInfo> records = inspect();
    EXPECT_EQ(records[0].brightness, 0.625);
    EXPECT_EQ(records[1].brightness, 0.5);
    EXPECT_EQ(records[1].connection, "HDMI");
    EXPECT_EQ(records[1].nativeResolution, "3840 × 2160");

    EXPECT_EQ(set(0.42), 0.42);
    EXPECT_EQ(monitor.current, 42);
    EXPECT_FALSE(monitor.wrongAddress);
    EXPECT_EQ(set(0.25, "PANEL"), 0.25);
    EXPECT_EQ(awaitResult(mainThread, hardware->currentBrightness({"PANEL", "MONITOR", "SILENT"})),
              (std::map<std::string, double>{{"MONITOR", 0.42}, {"PANEL", 0.25}}));
    const std::size_t held = fakesdk::leaks().size();
    inspect();
    EXPECT_EQ(fakesdk::leaks().size(), held) << "the channels of the last inspection are given back";

    std::string texts;
    for (const Finding& each : MacDiagnostics().examine(records))
        texts += each.displayID + ": " + each.text + '\n';
    EXPECT_EQ(texts, ": 2 display connections of this Mac have an I2C channel.\n"
                     ": The system's description of displays was loaded.\n"
                     ": The system's brightness functions for its own displays were loaded.\n"
                     "PANEL: The system's own brightness functions drive this display.\n"
                     "MONITOR: The monitor answers over DDC/CI.\n"
                     "SILENT: The monitor's channel was found, but the monitor gives no valid answer on it.\n");
}

TEST_F(WholePathTest, ReportsFailuresOfTheSystemAndWritesToNoOtherMonitor)
{
    inspect();
    machine.fail["IOAVServiceWriteI2C"] = {kIOReturnTimeout, 4}; // the first two attempts
    EXPECT_EQ(set(0.1), 0.1);
    machine.fail["IOAVServiceWriteI2C"] = {kIOReturnTimeout};
    EXPECT_EQ(set(0.2), tl::unexpected(BrightnessError::writeFailed));
    machine.fail = {{"IOAVServiceReadI2C", {kIOReturnNoDevice}}};
    EXPECT_EQ(set(0.3), tl::unexpected(BrightnessError::readFailed));
    monitor.log.clear();
    machine.displays[1].online = false;
    EXPECT_EQ(set(0.5), tl::unexpected(BrightnessError::disconnected));
    machine.displays[1].online = true;
    machine.displays[1].uuid = "ANOTHER"; // took over the number
    EXPECT_EQ(set(0.5), tl::unexpected(BrightnessError::disconnected));
    for (const char* function : {"IOAVServiceCreateWithService", "CoreDisplay_DisplayCreateInfoDictionary",
                                 "IORegistryEntryCreateIterator", "IORegistryGetRootEntry"}) {
        machine.fail = {{function, {-1}}};
        EXPECT_EQ(inspect()[1].method, ControlMethod::unavailable) << function;
    }
    EXPECT_TRUE(monitor.log.empty());
}

} // namespace
} // namespace lumenvale
