// SPDX-License-Identifier: MIT
#include "MacTest.h"
#include "platform/macos/displays/DisplayFacts.h"
#include "platform/macos/displays/DisplayReconfiguration.h"
#include "platform/macos/displays/MacDisplaySystem.h"
#include "platform/macos/displays/MacNativeFunctions.h"

#include <memory>

namespace lumenvale {
namespace {

constexpr char library[] = "/System/Library/PrivateFrameworks/DisplayServices.framework/DisplayServices";

std::int32_t readHalf(std::uint32_t, float* brightness)
{
    EXPECT_TRUE(standin::isInPool());
    *brightness = 0.5F;
    return 0;
}
std::int32_t refuse(std::uint32_t, float)
{
    EXPECT_TRUE(standin::isInPool());
    return 5;
}

struct MacDisplaysTest : MacTest {
    MacDisplaysTest()
    {
        machine.displays = {{.id = 1, .isBuiltIn = true},
                            {.id = 2,
                             .vendor = 4268,
                             .model = 16589,
                             .serial = 305419896,
                             .pixelWidth = 3840,
                             .pixelHeight = 2160,
                             .refreshRate = 59.94,
                             .uuid = "37D8832A-2D66-02CA-B9F7-8F30A301B230",
                             .information = PropertyDictionary{{"DisplayVendorID", 4268}}}};
    }

    MacDisplaySystem system;
};

TEST_F(MacDisplaysTest, FactsOfADisplay)
{
    const Screen screen = displayFacts(2);
    EXPECT_EQ(screen.displayID, 2U);
    EXPECT_EQ(screen.uuid, "37D8832A-2D66-02CA-B9F7-8F30A301B230");
    EXPECT_FALSE(screen.isBuiltIn);
    EXPECT_FALSE(screen.isMain);
    EXPECT_EQ(screen.vendor, 4268U);
    EXPECT_EQ(screen.model, 16589U);
    EXPECT_EQ(screen.serial, 305419896U);
    ASSERT_TRUE(screen.mode);
    EXPECT_EQ(screen.mode->pixelWidth, 3840);
    EXPECT_EQ(screen.mode->pixelHeight, 2160);
    EXPECT_EQ(screen.mode->refreshRate, 59.94);

    const Screen panel = displayFacts(1);
    EXPECT_TRUE(panel.isBuiltIn);
    EXPECT_TRUE(panel.isMain);
    EXPECT_FALSE(panel.uuid);
    EXPECT_FALSE(panel.mode);
}

TEST_F(MacDisplaysTest, TheSystemsAnswersHoldForTheMomentOfTheCall)
{
    EXPECT_TRUE(system.isOnline(2));
    EXPECT_EQ(system.uuid(2), "37D8832A-2D66-02CA-B9F7-8F30A301B230");
    EXPECT_EQ(system.informationDictionary(2), (PropertyDictionary{{"DisplayVendorID", 4268}}));
    EXPECT_EQ(system.informationDictionary(1), std::nullopt);
    machine.displays.pop_back();
    EXPECT_FALSE(system.isOnline(2));
    EXPECT_FALSE(system.uuid(2));
    EXPECT_FALSE(system.informationDictionary(2));
}

TEST_F(MacDisplaysTest, NativeFunctionsAreLoadedAndTheLibraryClosedWithTheLastOwner)
{
    EXPECT_FALSE(loadDisplayServices().handle); // not there
    machine.libraries[library] = {{"DisplayServicesGetBrightness", reinterpret_cast<void*>(&readHalf)},
                                  {"DisplayServicesSetBrightness", reinterpret_cast<void*>(&refuse)}};
    NativeFunctions functions = loadDisplayServices();
    const NativeFunctions copy = functions;
    functions = {};
    EXPECT_EQ(standin::leaks().size(), 1U); // still open
    EXPECT_EQ(copy.setter(1, 0.25F), 5);
    EXPECT_EQ(NativeBrightness(copy).read(1), 0.5);
}

TEST_F(MacDisplaysTest, AMissingFunctionDoesNotKeepTheOtherFromLoading)
{
    machine.libraries[library] = {{"DisplayServicesSetBrightness", reinterpret_cast<void*>(&refuse)}};
    const NativeFunctions functions = loadDisplayServices();
    EXPECT_TRUE(functions.handle);
    EXPECT_FALSE(functions.getter);
    EXPECT_TRUE(functions.setter);
}

TEST_F(MacDisplaysTest, AReconfigurationIsToldOnceItHasHappened)
{
    int changes = 0;
    {
        const DisplayReconfiguration watcher([&] { ++changes; });
        standin::reconfigure(2, 1); // begins
        EXPECT_EQ(changes, 0);
        standin::reconfigure(2, 1 << 5);
        EXPECT_EQ(changes, 1);
    }
    standin::reconfigure(2, 1 << 4);
    EXPECT_EQ(changes, 1);
}

TEST_F(MacDisplaysTest, AWatcherMayEndWhileItIsCalled)
{
    std::unique_ptr<DisplayReconfiguration> watcher;
    watcher = std::make_unique<DisplayReconfiguration>([&] { watcher.reset(); });
    standin::reconfigure(2, 1 << 4);
    EXPECT_FALSE(watcher);
}

TEST_F(MacDisplaysTest, ARefusedWatcherIsNotWithdrawn)
{
    machine.failures["CGDisplayRegisterReconfigurationCallback"] = {};
    const DisplayReconfiguration watcher([] {});
}

} // namespace
} // namespace lumenvale
