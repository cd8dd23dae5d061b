// SPDX-License-Identifier: MIT
// From the registry to a verified value, through DisplayHardware and its thread, on a Mac with a built-in panel
// and two monitors.
#include "MacTest.h"
#include "hardware/DisplayHardware.h"
#include "platform/macos/displays/DisplayFacts.h"
#include "platform/macos/displays/MacDiagnostics.h"
#include "platform/macos/displays/MacDisplaySystem.h"
#include "platform/macos/displays/MacNativeFunctions.h"
#include "platform/macos/displays/MacServiceRegistry.h"
#include "support/AwaitResult.h"
#include "support/FakeHardwareAccess.h"

#include <IOKit/IOKitLib.h>

namespace lumenvale {
namespace {

constexpr char library[] = "/System/Library/PrivateFrameworks/DisplayServices.framework/DisplayServices";
constexpr char path[] = "IOService:/dispext0/AppleCLCD2";

float panelBrightness = 0;

std::int32_t readPanel(std::uint32_t display, float* brightness)
{
    *brightness = panelBrightness;
    return display == 1 ? 0 : 1;
}
std::int32_t setPanel(std::uint32_t, float brightness)
{
    panelBrightness = brightness;
    return 0;
}

standin::Bus busOf(FakeDdcMonitor& monitor)
{
    return {[&monitor](std::uint32_t chip, std::uint32_t address, const std::vector<std::uint8_t>& bytes) {
                return monitor.writeI2C(chip, address, bytes);
            },
            [&monitor](std::uint32_t chip, std::uint32_t address, std::span<std::uint8_t> bytes) {
                return monitor.readI2C(chip, address, bytes);
            }};
}

standin::Node connection(const std::string& name, const std::string& location, const std::string& bus)
{
    return {name,
            {},
            {{"AppleCLCD2",
              {{"DisplayAttributes",
                PropertyDictionary{{"NativeFormatHorizontalPixels", 3840}, {"NativeFormatVerticalPixels", 2160}}},
               {"Transport", PropertyDictionary{{"Upstream", "DP"}, {"Downstream", "HDMI"}}}},
              {},
              {}},
             {"DCPAVServiceProxy", {{"Location", location}}, {}, bus}},
            {}};
}

struct WholePathTest : MacTest {
    WholePathTest()
    {
        panelBrightness = 0.625F;
        machine.libraries[library] = {{"DisplayServicesGetBrightness", reinterpret_cast<void*>(&readPanel)},
                                      {"DisplayServicesSetBrightness", reinterpret_cast<void*>(&setPanel)}};
        machine.displays = {
            {.id = 1, .isBuiltIn = true, .uuid = "PANEL"},
            {.id = 2, .uuid = "MONITOR", .information = PropertyDictionary{{"IODisplayLocation", path}}},
            {.id = 3,
             .uuid = "SILENT",
             .information = PropertyDictionary{{"IODisplayLocation", "IOService:/dispext1/AppleCLCD2"}}},
        };
        machine.root.children = {connection("disp0", "Embedded", ""), connection("dispext0", "External", "dp0"),
                                 connection("dispext1", "External", "dp1")};
        machine.buses = {{"dp0", busOf(monitor)}, {"dp1", busOf(silent)}};
        silent.silent = true;
        start();
    }

    void TearDown() override
    {
        hardware.reset();
        MacTest::TearDown();
    }

    void start()
    {
        hardware.emplace(HardwareAccess{.registry = std::make_unique<MacServiceRegistry>(),
                                        .displaySystem = std::make_unique<MacDisplaySystem>(),
                                        .native = loadDisplayServices(),
                                        .pause = [](std::chrono::microseconds) {}},
                         mainThread);
    }

    void inspect()
    {
        std::vector<DisplayInfo> displays;
        for (const standin::Display& each : machine.displays)
            displays.push_back(*makeDisplayInfo(displayFacts(each.id)));
        records = awaitResult(mainThread, hardware->inspect(displays));
    }
    tl::expected<double, BrightnessError> set(double value, const std::string& id)
    {
        return awaitResult(mainThread, hardware->setBrightness(value, id));
    }
    std::map<std::string, double> read()
    {
        return awaitResult(mainThread, hardware->currentBrightness({"PANEL", "MONITOR", "SILENT"}));
    }
    tl::expected<double, BrightnessError> failure(BrightnessError error) { return tl::unexpected(error); }

    FakeDdcMonitor monitor;
    FakeDdcMonitor silent;
    ManualMainThread mainThread;
    std::optional<DisplayHardware> hardware;
    std::vector<DisplayInfo> records;
};

TEST_F(WholePathTest, InspectionMatchesEachDisplayToItsMethod)
{
    inspect();
    ASSERT_EQ(records.size(), 3U);
    EXPECT_EQ(records[0].method, ControlMethod::apple);
    EXPECT_EQ(records[0].brightness, 0.625);
    EXPECT_EQ(records[0].connection, "Internal");
    EXPECT_EQ(records[1].method, ControlMethod::ddc);
    EXPECT_EQ(records[1].brightness, 0.5);
    EXPECT_EQ(records[1].connection, "DP → HDMI");
    EXPECT_EQ(records[1].nativeResolution, "3840 × 2160");
    EXPECT_EQ(records[2].method, ControlMethod::unavailable);
    EXPECT_EQ(records[2].status, "No valid DDC brightness reply. Enable DDC/CI in the monitor menu and refresh.");
}

TEST_F(WholePathTest, ValuesAreSetAndVerified)
{
    inspect();
    EXPECT_EQ(set(0.42, "MONITOR"), 0.42);
    EXPECT_EQ(monitor.current, 42);
    EXPECT_EQ(set(0.25, "PANEL"), 0.25);
    EXPECT_EQ(panelBrightness, 0.25F);
    EXPECT_EQ(read(), (std::map<std::string, double>{{"MONITOR", 0.42}, {"PANEL", 0.25}}));
    monitor.overridesTo = 90;
    EXPECT_EQ(set(0.3, "MONITOR"), failure(BrightnessError::mismatch));
    EXPECT_FALSE(monitor.wrongAddress);
}

TEST_F(WholePathTest, FailingTransfersAreRetriedAndThenReported)
{
    inspect();
    machine.failures["IOAVServiceWriteI2C"] = {kIOReturnTimeout, 4}; // the first two attempts
    EXPECT_EQ(set(0.1, "MONITOR"), 0.1);
    machine.failures["IOAVServiceWriteI2C"] = {kIOReturnTimeout};
    EXPECT_EQ(set(0.2, "MONITOR"), failure(BrightnessError::writeFailed));
    EXPECT_EQ(monitor.current, 10);
    machine.failures = {{"IOAVServiceReadI2C", {kIOReturnNoDevice}}};
    EXPECT_EQ(set(0.3, "MONITOR"), failure(BrightnessError::readFailed));
    EXPECT_FALSE(read().contains("MONITOR"));
}

TEST_F(WholePathTest, AnUnpluggedDisplayIsRefused)
{
    inspect();
    machine.displays[1].isOnline = false;
    EXPECT_EQ(set(0.5, "MONITOR"), failure(BrightnessError::disconnected));
    EXPECT_FALSE(read().contains("MONITOR"));
    machine.displays[1].isOnline = true;
    machine.displays[1].uuid = "ANOTHER"; // took over the number
    EXPECT_EQ(set(0.5, "MONITOR"), failure(BrightnessError::disconnected));
    monitor.log.clear();
    const standin::Node unplugged = machine.root.children[1];
    machine.displays.erase(machine.displays.begin() + 1);
    machine.root.children.erase(machine.root.children.begin() + 1);
    inspect();
    EXPECT_EQ(set(0.5, "MONITOR"), failure(BrightnessError::disconnected));
    EXPECT_TRUE(monitor.log.empty());
    machine.root.children.push_back(unplugged); // back, under another number
    machine.displays.push_back(
        {.id = 7, .uuid = "MONITOR", .information = PropertyDictionary{{"IODisplayLocation", path}}});
    EXPECT_EQ(set(0.5, "MONITOR"), failure(BrightnessError::disconnected)); // nobody has looked yet
    inspect();
    EXPECT_EQ(set(0.7, "MONITOR"), 0.7);
    EXPECT_EQ(monitor.current, 70);
}

TEST_F(WholePathTest, TwoMonitorsThatCannotBeToldApartAreRefused)
{
    for (std::size_t each : {1U, 2U}) {
        machine.displays[each].information =
            PropertyDictionary{{"DisplayVendorID", 0x10AC},         {"DisplayProductID", 0xD04C},
                               {"DisplayWeekManufacture", 2},       {"DisplayYearManufacture", 2017},
                               {"DisplayHorizontalImageSize", 600}, {"DisplayVerticalImageSize", 340}};
        machine.root.children[each].children[0].properties.push_back(
            {"EDID UUID", "10AC4CD0-0000-0000-021B-0104B53C2278"});
    }
    inspect();
    EXPECT_EQ(records[1].method, ControlMethod::unavailable);
    EXPECT_TRUE(monitor.log.empty());
    machine.displays.pop_back();
    machine.root.children.pop_back();
    inspect(); // alone it is known by the same facts
    EXPECT_EQ(set(0.6, "MONITOR"), 0.6);
}

TEST_F(WholePathTest, SeveralChannelsAtOneFramebufferAreTrustedByNobody)
{
    machine.root.children[1].children.push_back({"DCPAVServiceProxy", {{"Location", "Embedded"}}, {}, ""});
    inspect();
    EXPECT_EQ(records[1].method, ControlMethod::unavailable);
    EXPECT_EQ(records[1].connection, "DP → HDMI");
    EXPECT_TRUE(monitor.log.empty());
}

TEST_F(WholePathTest, ANewInspectionGivesBackTheChannelsOfTheLast)
{
    inspect();
    const std::size_t held = standin::leaks().size();
    for (int round = 0; round < 3; ++round)
        inspect();
    EXPECT_EQ(standin::leaks().size(), held);
    awaitResult(mainThread, hardware->inspect({}));
    EXPECT_EQ(standin::leaks(), std::vector<std::string>{std::string("library ") + library});
}

TEST_F(WholePathTest, DiagnosticsSayWhyADisplayIsNotControlled)
{
    machine.displays.push_back({.id = 4, .uuid = "AIRPLAY"});
    machine.root.children[2].children.pop_back(); // no channel at the silent monitor's framebuffer
    machine.root.children[2].children.push_back({"DCPAVServiceProxy", {{"Location", "Embedded"}}, {}, ""});
    inspect();
    monitor.log.clear();
    const std::vector<Finding> findings = MacDiagnostics().examine(records);
    std::map<std::string, std::vector<std::string>> texts;
    for (const Finding& each : findings)
        texts[each.displayID].push_back(each.text);
    EXPECT_EQ(texts[""],
              (std::vector<std::string>{"One display connection of this Mac has an I2C channel.",
                                        "The system's brightness functions for its own displays were loaded."}));
    EXPECT_EQ(texts["PANEL"][0], "The system's own brightness functions drive this display.");
    EXPECT_EQ(texts["MONITOR"][0], "The monitor answers over DDC/CI.");
    EXPECT_EQ(texts["SILENT"][0], "The monitor's connection was found, but it has no I2C channel of its own.");
    EXPECT_EQ(texts["AIRPLAY"][0], "None of this Mac's display connections could be told to be this monitor's.");
    EXPECT_TRUE(monitor.log.empty()); // nobody was asked
}

TEST_F(WholePathTest, DiagnosticsOfAMacThatHasNothing)
{
    machine.libraries.clear();
    machine.root.children.clear();
    hardware.reset();
    DisplayInfo panel;
    panel.id = "PANEL";
    panel.isBuiltIn = true;
    const std::vector<Finding> findings = MacDiagnostics().examine({panel});
    ASSERT_EQ(findings.size(), 3U);
    EXPECT_EQ(findings[0].text, "The I/O registry shows no display connection with an I2C channel.");
    EXPECT_EQ(findings[1].text,
              "This version of macOS does not have the brightness functions for the system's own displays.");
    EXPECT_EQ(findings[2].kind, Finding::Kind::problem);
    EXPECT_EQ(findings[2].displayID, "PANEL");
}

} // namespace
} // namespace lumenvale
