// SPDX-License-Identifier: MIT
#include "platform/simulated/SimulatedPlatform.h"

#include "platform/simulated/SimulatedFolder.h"
#include "support/ManualClock.h"
#include "support/ManualMainThread.h"
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
    const auto mismatch = tl::unexpected(Error::mismatch);
    const auto disconnected = tl::unexpected(Error::disconnected);
    const std::string twin = R"("vendor": 4268, "model": 16589, "serial": 7, "ddc": {"current": )";
    /// Each file but for name and number, and what setting 30 % leads to.
    const std::vector<std::pair<std::string, tl::expected<double, Error>>> rows = {
        {R"("isBuiltIn": true, "native": {"brightness": 0.625})", double{0.3F}},
        {twin + "10}", 0.3},
        {twin + "20}", 0.3},
        {R"("upstream": "DP", "alphanumericSerial": "QX7", "nativePixelWidth": 5120, "nativePixelHeight": 2880,
            "ddc": {"maximum": 255, "current": 51}, "pixelWidth": 3840, "pixelHeight": 2160, "refreshRate": 50)",
         77 / 255.0},
        {R"("ddc": {"overridesTo": 70})", mismatch},
        {R"("native": {"overridesTo": 0.1})", mismatch},
        {R"("native": {"writeFails": true})", tl::unexpected(Error::writeFailed)},
        {R"("online": false, "ddc": {})", disconnected},
        {R"("native": {"readFails": true})", disconnected},
        {R"("ddc": {"corruptEvery": 1})", disconnected},
        {R"("online": true)", disconnected},
    };
    for (std::size_t i = 0; i < rows.size(); ++i)
        files.write(char('a' + i) + std::string(".json"),
                    R"({"name": "X", "displayID": )" + std::to_string(i + 1) + ", " + rows[i].first + "}");
    files.write("z.json", R"({"name": "Broken", "nativ": {}})");
    start();
    inspect();
    const std::vector<DisplayInfo> displays = inspect();
    EXPECT_EQ(reports, std::vector<std::string>{R"(z.json: "nativ" is not a known key.)"}) << "once";
    for (std::size_t i = 0; i < rows.size(); ++i)
        EXPECT_EQ(set("display-" + std::to_string(i + 1), 0.3), rows[i].second) << rows[i].first;
    EXPECT_EQ(files.monitor("a.json").at("native").at("brightness").get<double>(), 0.3);
    EXPECT_EQ(files.monitor("d.json").at("ddc").at("current").get<int>(), 77);
    EXPECT_LT(displays.at(1).brightness, displays.at(2).brightness) << "identical monitors have each their own";
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

    for (const char* edited : {R"({"name": "New"})", R"({"name": "Renamed"})"}) {
        files.write("3.json", edited);
        awaitNotice();
    }
    files.remove("3.json");
    awaitNotice();
    EXPECT_EQ(announcements, 3);
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
    QDir(QString::fromStdString(*folder)).removeRecursively(); // a Mac's is not in `state`
}

} // namespace
} // namespace lumenvale
