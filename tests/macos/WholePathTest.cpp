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
#include "support/AwaitResult.h"
#include "support/FakeHardwareAccess.h"

#include <IOKit/IOKitLib.h>
#include <atomic>

static std::atomic<int> poolCount = 0;

extern "C" {
void* objc_autoreleasePoolPush()
{
    ++poolCount;
    return &poolCount;
}
void objc_autoreleasePoolPop(void*) { --poolCount; }
}

namespace lumenvale {

int openPools() { return poolCount; }

namespace {

using fakesdk::Dict;
using fakesdk::Node;

constexpr char library[] = "/System/Library/PrivateFrameworks/DisplayServices.framework/DisplayServices";

float panelBrightness = 0;

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
    return {[&monitor](std::uint32_t chip, std::uint32_t address, const fakesdk::Bytes& bytes) {
                return monitor.writeI2C(chip, address, bytes);
            },
            [&monitor](std::uint32_t chip, std::uint32_t address, fakesdk::Bytes& bytes) {
                return monitor.readI2C(chip, address, bytes);
            }};
}

Node proxy(const char* location, const char* bus)
{
    return {"DCPAVServiceProxy", {{"Location", location}}, {}, bus, {}};
}

Node connection(const char* name, const char* location, const char* bus)
{
    const Dict product = {{"ProductName", name}, {"SerialNumber", 7}, {"AlphanumericSerialNumber", "QX7"}};
    const Node framebuffer = {"AppleCLCD2",
                              {{"DisplayAttributes", Dict{{"NativeFormatHorizontalPixels", 3840},
                                                          {"NativeFormatVerticalPixels", 2160},
                                                          {"ProductAttributes", product}}},
                               {"Transport", Dict{{"Upstream", "DP"}, {"Downstream", "HDMI"}}}},
                              {},
                              {},
                              {}};
    return {name, {}, {framebuffer, proxy(location, bus)}, {}, {}};
}

struct WholePathTest : MacTest {
    WholePathTest()
    {
        panelBrightness = 0.625F;
        silent.silent = true;
        machine.frameworks[library] = {{"DisplayServicesGetBrightness", reinterpret_cast<void*>(&readPanel)},
                                       {"DisplayServicesSetBrightness", reinterpret_cast<void*>(&setPanel)}};
        machine.displays = {
            {.id = 1, .builtin = true, .uuid = "PANEL"},
            {.id = 2,
             .vendor = 4268,
             .model = 16589,
             .serial = 9,
             .width = 3840,
             .height = 2160,
             .hz = 59.94,
             .uuid = "MONITOR",
             .info = {{"IODisplayLocation", "IOService:/dispext0/AppleCLCD2"}}},
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

    void TearDown() override
    {
        EXPECT_FALSE(monitor.wrongAddress);
        hardware.reset();
        MacTest::TearDown();
    }

    /// Returns the monitor's record.
    DisplayInfo inspect()
    {
        std::vector<DisplayInfo> displays;
        for (const fakesdk::Display& each : machine.displays)
            displays.push_back(*makeDisplayInfo(displayFacts(each.id)));
        records = awaitResult(mainThread, hardware->inspect(displays));
        return records.size() > 1 ? records[1] : DisplayInfo();
    }
    tl::expected<double, BrightnessError> set(double value, const std::string& id = "MONITOR")
    {
        return awaitResult(mainThread, hardware->setBrightness(value, id));
    }
    std::map<std::string, double> read()
    {
        return awaitResult(mainThread, hardware->currentBrightness({"PANEL", "MONITOR", "SILENT"}));
    }
    std::vector<std::string> findings(const std::string& id)
    {
        std::vector<std::string> texts;
        for (const Finding& each : MacDiagnostics().examine(records)) {
            if (each.displayID == id)
                texts.push_back(each.text);
        }
        return texts;
    }
    tl::expected<double, BrightnessError> failure(BrightnessError error) { return tl::unexpected(error); }

    FakeDdcMonitor monitor, silent;
    ManualMainThread mainThread;
    std::optional<DisplayHardware> hardware;
    std::vector<DisplayInfo> records;
};

TEST_F(WholePathTest, MatchesSetsVerifiesAndReads)
{
    machine.fail["IOIteratorIsValid"] = {0, 1}; // a cable is plugged in during the walk, which begins anew
    const DisplayInfo record = inspect();
    EXPECT_EQ(records[0].method, ControlMethod::apple);
    EXPECT_EQ(records[0].brightness, 0.625);
    EXPECT_TRUE(records[0].isBuiltIn && records[0].isMain);
    EXPECT_EQ(records[0].connection, "Internal");
    EXPECT_EQ(record.method, ControlMethod::ddc);
    EXPECT_EQ(record.brightness, 0.5);
    EXPECT_EQ(record.connection, "DP → HDMI");
    EXPECT_EQ(record.nativeResolution, "3840 × 2160");
    EXPECT_EQ(record.vendor, 4268U);
    EXPECT_EQ(record.pixelHeight, 2160);
    EXPECT_EQ(records[2].status, "No valid DDC brightness reply. Enable DDC/CI in the monitor menu and refresh.");

    EXPECT_EQ(set(0.42), 0.42);
    EXPECT_EQ(monitor.current, 42);
    EXPECT_EQ(set(0.25, "PANEL"), 0.25);
    EXPECT_EQ(panelBrightness, 0.25F);
    EXPECT_EQ(read(), (std::map<std::string, double>{{"MONITOR", 0.42}, {"PANEL", 0.25}}));
    monitor.acceptsWrites = false;
    EXPECT_EQ(set(0.3), failure(BrightnessError::mismatch));

    const std::size_t held = fakesdk::leaks().size();
    inspect();
    EXPECT_EQ(fakesdk::leaks().size(), held) << "the channels of the last inspection are given back";
}

TEST_F(WholePathTest, RetriesTransfersAndThenReports)
{
    inspect();
    machine.fail["IOAVServiceWriteI2C"] = {kIOReturnTimeout, 4}; // the first two attempts
    EXPECT_EQ(set(0.1), 0.1);
    machine.fail["IOAVServiceWriteI2C"] = {kIOReturnTimeout};
    EXPECT_EQ(set(0.2), failure(BrightnessError::writeFailed));
    EXPECT_EQ(monitor.current, 10);
    machine.fail = {{"IOAVServiceReadI2C", {kIOReturnNoDevice}}};
    EXPECT_EQ(set(0.3), failure(BrightnessError::readFailed));
    EXPECT_FALSE(read().contains("MONITOR"));
    for (const char* function : {"IOAVServiceCreateWithService", "CoreDisplay_DisplayCreateInfoDictionary",
                                 "IORegistryEntryCreateIterator", "IORegistryGetRootEntry"}) {
        machine.fail = {{function, {-1}}};
        EXPECT_EQ(inspect().method, ControlMethod::unavailable) << function;
    }
}

TEST_F(WholePathTest, RefusesWhatWasUnpluggedOrReplaced)
{
    inspect();
    machine.displays[1].online = false;
    EXPECT_EQ(set(0.5), failure(BrightnessError::disconnected));
    machine.displays[1].online = true;
    machine.displays[1].uuid = "ANOTHER"; // took over the number
    EXPECT_EQ(set(0.5), failure(BrightnessError::disconnected));
    EXPECT_FALSE(read().contains("MONITOR"));
    const fakesdk::Machine before = machine;
    machine.displays.erase(machine.displays.begin() + 1);
    machine.root.children.erase(machine.root.children.begin() + 1);
    inspect();
    monitor.log.clear();
    machine.displays = before.displays;
    machine.displays[1].uuid = "MONITOR";
    machine.displays[1].id = 7; // back under another number
    machine.root = before.root;
    EXPECT_EQ(set(0.5), failure(BrightnessError::disconnected)) << "not inspected yet";
    EXPECT_TRUE(monitor.log.empty());
    inspect();
    EXPECT_EQ(set(0.7), 0.7);
}

TEST_F(WholePathTest, RefusesTwinsAndSharedFramebuffers)
{
    machine.root.children[1].children.push_back(proxy("Embedded", ""));
    EXPECT_EQ(inspect().method, ControlMethod::unavailable) << "two channels at one framebuffer";
    EXPECT_EQ(records[1].connection, "DP → HDMI");
    machine.root.children[1].children.pop_back();
    for (const std::size_t each : {1U, 2U}) {
        machine.displays[each].info = {{"DisplayVendorID", 0x10AC},         {"DisplayProductID", 0xD04C},
                                       {"DisplayWeekManufacture", 2},       {"DisplayYearManufacture", 2017},
                                       {"DisplayHorizontalImageSize", 600}, {"DisplayVerticalImageSize", 340}};
        machine.root.children[each].children[0].props.push_back(
            {"EDID UUID", "10AC4CD0-0000-0000-021B-0104B53C2278"});
    }
    EXPECT_EQ(inspect().method, ControlMethod::unavailable) << "two that send the same identification";
    EXPECT_TRUE(monitor.log.empty());
    machine.displays.pop_back();
    machine.root.children.pop_back();
    inspect(); // alone it is known by the same facts
    EXPECT_EQ(set(0.6), 0.6);
}

TEST_F(WholePathTest, DiagnosticsSayWhyADisplayIsNotControlled)
{
    machine.displays.push_back({.id = 4, .uuid = "AIRPLAY"});
    machine.root.children[2].children[1] = proxy("Embedded", ""); // no channel at the silent monitor's framebuffer
    inspect();
    monitor.log.clear();
    using Texts = std::vector<std::string>;
    EXPECT_EQ(findings(""), (Texts{"One display connection of this Mac has an I2C channel.",
                                   "The system's brightness functions for its own displays were loaded."}));
    EXPECT_EQ(findings("PANEL"), Texts{"The system's own brightness functions drive this display."});
    EXPECT_EQ(findings("MONITOR"), Texts{"The monitor answers over DDC/CI."});
    EXPECT_EQ(findings("SILENT"),
              Texts{"What is connected there sends no identification (EDID) and has no I2C channel."});
    EXPECT_EQ(findings("AIRPLAY"),
              Texts{"None of this Mac's display connections could be told to be this monitor's."});
    EXPECT_TRUE(monitor.log.empty()) << "no monitor was asked";
    machine.frameworks.clear();
    machine.root.children.clear();
    EXPECT_EQ(
        findings(""),
        (Texts{"The I/O registry shows no display connection with an I2C channel.",
               "This version of macOS does not have the brightness functions for the system's own displays."}));
}

} // namespace
} // namespace lumenvale
