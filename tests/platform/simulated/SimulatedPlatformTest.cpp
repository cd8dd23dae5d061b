// SPDX-License-Identifier: MIT
#include "platform/simulated/SimulatedPlatform.h"

#include "platform/simulated/SimulatedFolder.h"
#include "support/AwaitResult.h"
#include "support/ManualClock.h"
#include "support/MonitorFolder.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <gtest/gtest.h>

namespace lumenvale {
namespace {

using namespace std::chrono_literals;

/// The platform of a folder, its waits left out, under the real hardware controller.
class SimulatedPlatformTest : public testing::Test {
protected:
    void start()
    {
        PlatformOptions options;
        options.simulationFolder = files.path();
        options.report = [this](const std::string& text) { reports.push_back(text); };
        auto made = makeSimulatedPlatform(options, clock);
        if (!made)
            throw std::runtime_error(made.error());
        platform = std::make_unique<Platform>(std::move(*made));
        platform->hardware.pause = [](std::chrono::microseconds) {};
        hardware = std::make_unique<DisplayHardware>(std::move(platform->hardware), mainThread);
    }

    std::vector<DisplayInfo> inspect()
    {
        std::vector<DisplayInfo> displays;
        for (const Screen& screen : platform->screens->screens())
            displays.push_back(makeDisplayInfo(screen).value());
        return awaitResult(mainThread, hardware->inspect(displays));
    }

    tl::expected<double, BrightnessError> set(const std::string& id, double value)
    {
        return awaitResult(mainThread, hardware->setBrightness(value, id));
    }

    /// Turns the loop until the watcher has noticed something, then lets the files settle.
    void awaitNotice()
    {
        while (clock.pendingCount() == 0)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        clock.advance(100ms);
    }

    MonitorFolder files;
    ManualClock clock;
    ManualMainThread mainThread;
    std::vector<std::string> reports;
    std::unique_ptr<Platform> platform;
    std::unique_ptr<DisplayHardware> hardware;
};

TEST_F(SimulatedPlatformTest, DrivesANativeAndADdcDisplayAsTheirFilesSay)
{
    files.write("1.json", R"({"name": "Panel", "displayID": 1, "isBuiltIn": true, "isMain": true,
                              "native": {"brightness": 0.625}})");
    files.write("2.json", R"({"name": "Studio", "displayID": 2, "vendor": 4268, "model": 16589,
                              "pixelWidth": 3840, "pixelHeight": 2160, "logicalWidth": 1920, "refreshRate": 60,
                              "nativePixelWidth": 5120, "nativePixelHeight": 2880, "alphanumericSerial": "QX7",
                              "upstream": "DP", "downstream": "HDMI", "ddc": {"maximum": 255, "current": 51}})");
    start();
    const std::vector<DisplayInfo> displays = inspect();
    ASSERT_EQ(displays.size(), 2U);
    EXPECT_EQ(displays[0].method, ControlMethod::apple);
    EXPECT_EQ(displays[0].brightness, 0.625);
    EXPECT_EQ(displays[0].connection, "Internal");
    EXPECT_EQ(displays[1].method, ControlMethod::ddc);
    EXPECT_EQ(displays[1].brightness, 0.2);
    EXPECT_EQ(displays[1].maximum, 255);
    EXPECT_EQ(displays[1].connection, "DP → HDMI");
    EXPECT_EQ(displays[1].hardwareSerial, "QX7");
    EXPECT_EQ(displays[1].nativeResolution, "5120 × 2880");

    EXPECT_EQ(set("display-1", 0.3), double{0.3F});
    EXPECT_EQ(files.monitor("1.json").at("native").at("brightness"), 0.3);
    EXPECT_EQ(set("display-2", 1.0), 1.0);
    EXPECT_EQ(files.monitor("2.json").at("ddc").at("current"), 255);
}

TEST_F(SimulatedPlatformTest, MatchesEachOfTwoIdenticalMonitorsToItsOwnFile)
{
    const std::string twin = R"(, "vendor": 4268, "model": 16589, "serial": 7, "ddc": {"current": )";
    files.write("1.json", R"({"name": "Twin", "displayID": 1)" + twin + "10}}");
    files.write("2.json", R"({"name": "Twin", "displayID": 2)" + twin + "20}}");
    start();
    const std::vector<DisplayInfo> displays = inspect();
    EXPECT_EQ(displays.at(0).brightness, 0.1);
    EXPECT_EQ(displays.at(1).brightness, 0.2);
    EXPECT_EQ(set("display-2", 0.9), 0.9);
    EXPECT_EQ(files.monitor("1.json").at("ddc").at("current"), 10);
    EXPECT_EQ(files.monitor("2.json").at("ddc").at("current"), 90);
}

TEST_F(SimulatedPlatformTest, FailsAsTheFilesAsk)
{
    using Error = BrightnessError;
    const std::vector<std::pair<std::string, Error>> faults{
        {R"("native": {"writeFails": true})", Error::writeFailed},
        {R"("native": {"overridesTo": 0.1})", Error::mismatch},
        {R"("ddc": {"ignoresWrites": true})", Error::mismatch},
        {R"("ddc": {"overridesTo": 70})", Error::mismatch},
        {R"("online": false, "ddc": {})", Error::disconnected},
        {R"("native": {"readFails": true})", Error::disconnected},
        {R"("ddc": {"corruptEvery": 1})", Error::disconnected},
        {R"("online": true)", Error::disconnected}};
    for (std::size_t i = 0; i < faults.size(); ++i)
        files.write(std::to_string(i) + ".json",
                    R"({"name": "X", "displayID": )" + std::to_string(i + 1) + ", " + faults[i].first + "}");
    start();
    inspect();
    for (std::size_t i = 0; i < faults.size(); ++i)
        EXPECT_EQ(set("display-" + std::to_string(i + 1), 0.3), tl::unexpected(faults[i].second))
            << faults[i].first;
}

TEST_F(SimulatedPlatformTest, FailsAsTheFilesAskFromTheMomentTheyChange)
{
    files.write("1.json", R"({"name": "N", "displayID": 1, "native": {"brightness": 0.5}})");
    files.write("2.json", R"({"name": "D", "displayID": 2, "ddc": {"current": 50}})");
    start();
    inspect();
    files.write("1.json", R"({"name": "N", "displayID": 1, "native": {"brightness": 0.5, "readFails": true}})");
    EXPECT_EQ(set("display-1", 0.3), tl::unexpected(BrightnessError::readFailed));
    files.write("2.json", R"({"name": "D", "displayID": 2, "ddc": {"current": 50, "silent": true}})");
    EXPECT_EQ(set("display-2", 0.3), tl::unexpected(BrightnessError::writeFailed));
    files.write("2.json", R"({"name": "D", "displayID": 2, "ddc": {"current": 50, "failNextTransfers": 4}})");
    EXPECT_EQ(set("display-2", 0.3), 0.3) << "two attempts fail, the third succeeds";
    files.write("2.json", R"({"name": "Other", "displayID": 2, "uuid": "37D8832A-2D66-02CA-B9F7-8F30A301B230",
                              "ddc": {}})");
    EXPECT_EQ(set("display-2", 0.3), tl::unexpected(BrightnessError::disconnected));
}

TEST_F(SimulatedPlatformTest, AnnouncesWhatComesGoesOrChangesIdentityAndNotItsOwnWrites)
{
    files.write("1.json", R"({"name": "N", "displayID": 1, "native": {"brightness": 0.5}})");
    files.write("2.json", R"({"name": "D", "displayID": 2, "ddc": {"current": 50}})");
    start();
    inspect();
    int announcements = 0;
    const auto subscription = platform->events->subscribe([&](SystemEvent event) {
        EXPECT_EQ(event, SystemEvent::screenParametersChanged);
        ++announcements;
    });

    EXPECT_EQ(set("display-2", 0.3), 0.3);
    awaitNotice();
    EXPECT_EQ(set("display-1", 0.25), 0.25);
    awaitNotice();
    files.write("2.json", R"({"name": "D", "displayID": 2, "ddc": {"current": 51, "silent": true}})");
    awaitNotice();
    EXPECT_EQ(announcements, 0);

    files.write("3.json", R"({"name": "New"})"); // plugged
    awaitNotice();
    EXPECT_EQ(announcements, 1);
    files.write("3.json", R"({"name": "Renamed"})"); // edited in place
    awaitNotice();
    EXPECT_EQ(announcements, 2);
    files.remove("3.json");
    awaitNotice();
    EXPECT_EQ(announcements, 3);
}

TEST_F(SimulatedPlatformTest, ReportsABrokenFileOnceAndShowsTheOthers)
{
    files.write("1.json", R"({"name": "Fine", "displayID": 1, "native": {}})");
    files.write("2.json", R"({"name": "Broken", "nativ": {}})");
    start();
    EXPECT_EQ(inspect().size(), 1U);
    EXPECT_EQ(inspect().size(), 1U);
    EXPECT_EQ(reports, std::vector<std::string>{R"(2.json: "nativ" is not a known key.)"});
    files.write("2.json", R"({"name": "Broken", "native": 5})");
    EXPECT_EQ(inspect().size(), 1U);
    EXPECT_EQ(reports.size(), 2U);

    const std::vector<Finding> findings = platform->diagnostics->examine(inspect());
    const bool isTold = std::any_of(findings.begin(), findings.end(), [](const Finding& each) {
        return each.kind == Finding::Kind::problem && each.text == R"(2.json: "native" must be an object.)";
    });
    EXPECT_TRUE(isTold);
}

TEST(SimulatedPlatform, RefusesAFolderThatIsNone)
{
    ManualClock clock;
    PlatformOptions options;
    options.simulationFolder = "/nowhere/at/all";
    const auto platform = makeSimulatedPlatform(options, clock);
    ASSERT_FALSE(platform);
    EXPECT_EQ(platform.error(), "There is no folder /nowhere/at/all with simulated monitors.");
}

TEST(SimulatedPlatform, MakesTheReadyMadeMonitorsOnceAndLeavesThemToTheUser)
{
    const QTemporaryDir state;
    qputenv("XDG_STATE_HOME", state.path().toUtf8());
    const auto folder = readyMadeSimulation();
    ASSERT_TRUE(folder) << folder.error();
    SimulatedFolder monitors(*folder);
    const FolderContents contents = monitors.read();
    EXPECT_EQ(contents.problems, std::vector<std::string>());
    ASSERT_EQ(contents.displays.size(), 3U);
    EXPECT_TRUE(contents.displays[1].file.setDdcCurrent(7));
    EXPECT_EQ(readyMadeSimulation(), folder);
    EXPECT_EQ(monitors.read().displays[1].monitor.ddc->current, 7);
    qunsetenv("XDG_STATE_HOME");
}

} // namespace
} // namespace lumenvale
