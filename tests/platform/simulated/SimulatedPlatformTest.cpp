// SPDX-License-Identifier: MIT
#include "platform/simulated/SimulatedPlatform.h"

#include "platform/simulated/SimulatedFolder.h"
#include "support/ManualMainThread.h"
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

TEST_F(SimulatedPlatformTest, DrivesEachDisplayThroughItsOwnFileAndFailsAsThatAsks)
{
    using Error = BrightnessError;
    struct Row {
        std::string file;                                 ///< but for name and number
        tl::expected<double, BrightnessError> at30 = 0.3; ///< what setting 30 % leads to
    };
    const std::string twin = R"("vendor": 4268, "model": 16589, "serial": 7, "ddc": {"current": )";
    const std::vector<Row> rows = {
        {R"("isBuiltIn": true, "native": {"brightness": 0.625})", double{0.3F}},
        {twin + "10}"},
        {twin + "20}"},
        {R"("upstream": "DP", "alphanumericSerial": "QX7", "nativePixelWidth": 5120, "nativePixelHeight": 2880,
            "ddc": {"maximum": 255, "current": 51}, "pixelWidth": 3840, "pixelHeight": 2160, "refreshRate": 50)",
         77 / 255.0},
        {R"("ddc": {"overridesTo": 70})", tl::unexpected(Error::mismatch)},
        {R"("ddc": {"ignoresWrites": true})", tl::unexpected(Error::mismatch)},
        {R"("native": {"overridesTo": 0.1})", tl::unexpected(Error::mismatch)},
        {R"("native": {"writeFails": true})", tl::unexpected(Error::writeFailed)},
        {R"("online": false, "ddc": {})", tl::unexpected(Error::disconnected)},
        {R"("native": {"readFails": true})", tl::unexpected(Error::disconnected)},
        {R"("ddc": {"corruptEvery": 1})", tl::unexpected(Error::disconnected)},
        {R"("online": true)", tl::unexpected(Error::disconnected)},
    };
    for (std::size_t i = 0; i < rows.size(); ++i)
        files.write(char('a' + i) + std::string(".json"),
                    R"({"name": "X", "displayID": )" + std::to_string(i + 1) + ", " + rows[i].file + "}");
    start();
    const std::vector<DisplayInfo> displays = inspect();
    for (std::size_t i = 0; i < rows.size(); ++i)
        EXPECT_EQ(set("display-" + std::to_string(i + 1), 0.3), rows[i].at30) << rows[i].file;
    EXPECT_EQ(files.monitor("a.json").at("native").at("brightness"), 0.3);
    EXPECT_EQ(files.monitor("d.json").at("ddc").at("current"), 77);
    EXPECT_EQ(displays.at(1).brightness, 0.1);
    EXPECT_EQ(displays.at(2).brightness, 0.2) << "of two identical monitors each has its own";
    const DisplayInfo& full = displays.at(3);
    EXPECT_EQ(full.connection + full.hardwareSerial + full.nativeResolution, "DPQX75120 × 2880");
    EXPECT_EQ(std::tuple(full.pixelWidth, full.pixelHeight, full.refreshRate), std::tuple(3840, 2160, 50.0));
    EXPECT_EQ(std::tuple(displays[1].vendor, displays[1].model, displays[1].serial),
              std::tuple(4268U, 16589U, 7U));
    files.write("b.json",
                R"({"name": "X", "displayID": 2, "uuid": "37D8832A-2D66-02CA-B9F7-8F30A301B230", "ddc": {}})");
    EXPECT_EQ(set("display-2", 0.3), tl::unexpected(Error::disconnected)) << "another monitor stands there now";
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
