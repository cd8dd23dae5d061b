// SPDX-License-Identifier: MIT
// The commands on folders of simulated monitors: the real platform and hardware controller, without its waits.
#include "app/cli/CommandLine.h"
#include "platform/Platform.h"
#include "presets/PresetStore.h"
#include "support/AwaitResult.h"
#include "support/ManualClock.h"
#include "support/MonitorFolder.h"

#include <gtest/gtest.h>
#include <sstream>

namespace lumenvale {
namespace {

constexpr char noReply[] = "No valid DDC brightness reply. Enable DDC/CI in the monitor menu and refresh.";
constexpr char noService[] =
    "No accessible hardware brightness service. The connection or App Sandbox may restrict access.";
constexpr char changed[] = "The display connection changed. Refresh displays and try again.";
constexpr char overridden[] =
    "The display reported a different brightness. Another app or a monitor preset may be overriding it.";
constexpr char notAccepted[] =
    "The display did not accept the brightness command. Check DDC/CI in its on-screen menu.";

struct Outcome {
    int status = -1;
    std::string out;
    std::string err;
};

class VerbsTest : public testing::Test {
protected:
    Outcome run(std::vector<std::string> arguments)
    {
        const auto line = parseCommandLine(std::move(arguments));
        if (!line)
            return {exitMisused, "", line.error()};
        std::ostringstream out, err;
        int reports = 0;
        PlatformOptions options;
        options.simulationFolder = files.path();
        options.report = [&](const std::string& text) {
            err << text << '\n';
            ++reports;
        };
        auto platform = makePlatform(options, clock, mainThread);
        platform->hardware.pause = [](std::chrono::microseconds) {};
        DisplayHardware hardware(std::move(platform->hardware), mainThread);
        VerbContext context{
            *platform->screens, hardware, *platform->diagnostics, *platform->defaults, out, err, reports};
        const int status = awaitResult(mainThread, line->verb->run(context, line->values));
        return {status, out.str(), err.str()};
    }

    /// One display of each kind.
    void plugSeven()
    {
        files.write("1.json", R"({"name": "Panel", "displayID": 1, "isBuiltIn": true,
                                  "native": {"brightness": 0.625}})");
        files.write("2.json", R"({"name": "Studio 27", "displayID": 2, "ddc": {"current": 42}})");
        files.write("3.json", R"({"name": "Wide", "displayID": 3, "ddc": {"maximum": 255, "current": 51}})");
        files.write("4.json", R"({"name": "Silent", "displayID": 4, "ddc": {"silent": true}})");
        files.write("5.json",
                    R"({"name": "Stubborn", "displayID": 5, "ddc": {"current": 10, "ignoresWrites": true}})");
        files.write("6.json",
                    R"({"name": "Override", "displayID": 6, "ddc": {"current": 70, "overridesTo": 70}})");
        files.write("7.json", R"({"name": "Projector", "displayID": 7})");
    }

    int current(const std::string& file) const { return files.monitor(file).at("ddc").at("current"); }

    MonitorFolder files;
    ManualClock clock;
    ManualMainThread mainThread;
};

TEST_F(VerbsTest, ListsEveryDisplayWithItsStatus)
{
    plugSeven();
    const Outcome table = run({"list"});
    EXPECT_EQ(table.status, exitDone);
    EXPECT_EQ(table.out, "Panel      62.5%  Apple native brightness       display-1\n"
                         "Studio 27  42%    DDC/CI hardware backlight     display-2\n"
                         "Wide       20.0%  DDC/CI hardware backlight     display-3\n"
                         "Silent     —      Hardware control unavailable  display-4\n"
                         "Stubborn   10%    DDC/CI hardware backlight     display-5\n"
                         "Override   70%    DDC/CI hardware backlight     display-6\n"
                         "Projector  —      Hardware control unavailable  display-7\n");
    EXPECT_EQ(table.err, "");

    const auto list = nlohmann::json::parse(run({"list", "--json"}).out);
    ASSERT_EQ(list.size(), 7U);
    for (const auto& display : list)
        EXPECT_EQ(display.size(), 21U);
    EXPECT_EQ(list[0].at("brightness"), 0.625);
    EXPECT_EQ(list[2].at("maximum"), 255);
    EXPECT_EQ(list[3].at("status"), noReply);
    EXPECT_EQ(list[3].at("brightness"), nullptr);
    EXPECT_EQ(list[6].at("status"), noService);
}

TEST_F(VerbsTest, GetsTheNumberAloneForOneDisplayAndWithNamesForAll)
{
    plugSeven();
    const Outcome one = run({"get", "stud"});
    EXPECT_EQ(one.status, exitDone);
    EXPECT_EQ(one.out, "42%\n");
    const Outcome silent = run({"get", "Silent"});
    EXPECT_EQ(silent.status, exitRefused);
    EXPECT_EQ(silent.out, "");
    EXPECT_EQ(silent.err, std::string("Silent: ") + noReply + "\n");
    const Outcome all = run({"get", "all"});
    EXPECT_EQ(all.status, exitRefused);
    EXPECT_EQ(all.out, "Panel: 62.5%\nStudio 27: 42%\nWide: 20.0%\nStubborn: 10%\nOverride: 70%\n");
}

TEST_F(VerbsTest, SetsADisplayAndSaysWhatWasVerified)
{
    plugSeven();
    const Outcome ddc = run({"set", "Studio", "33%"});
    EXPECT_EQ(ddc.status, exitDone);
    EXPECT_EQ(ddc.out, "Studio 27: Hardware brightness verified at 33%.\n");
    EXPECT_EQ(current("2.json"), 33);
    EXPECT_EQ(run({"set", "Wide", "0.5"}).out, "Wide: Hardware brightness verified at 50.2%.\n");
    EXPECT_EQ(current("3.json"), 128);
    EXPECT_EQ(run({"set", "Panel", "12.34%"}).out, "Panel: Hardware brightness verified at 12.3%.\n");
    EXPECT_NEAR(files.monitor("1.json").at("native").at("brightness"), 0.1234, 1e-9);
}

TEST_F(VerbsTest, SetsAllDisplaysByAStepAndExplainsThoseThatFail)
{
    plugSeven();
    const Outcome outcome = run({"set", "all", "+5%"});
    EXPECT_EQ(outcome.status, exitRefused);
    EXPECT_EQ(outcome.out, "Panel: Hardware brightness verified at 67.5%.\n"
                           "Studio 27: Hardware brightness verified at 47%.\n"
                           "Wide: Hardware brightness verified at 25.1%.\n");
    EXPECT_EQ(outcome.err, std::string("Silent: ") + changed + "\nSilent: " + noReply +
                               "\nStubborn: " + overridden + "\nOverride: " + overridden +
                               "\nProjector: " + changed + "\nProjector: " + noService + '\n');
    EXPECT_EQ(current("2.json"), 47);
    EXPECT_EQ(current("3.json"), 64);
    EXPECT_EQ(current("5.json"), 10);
}

TEST_F(VerbsTest, SaysWhyTheHardwareRefused)
{
    files.write("1.json", R"({"name": "Panel", "native": {"writeFails": true}})");
    files.write("2.json", R"({"name": "Gone", "online": false, "ddc": {}})");
    const Outcome panel = run({"set", "Panel", "50%"});
    EXPECT_EQ(panel.status, exitRefused);
    EXPECT_EQ(panel.err, std::string("Panel: ") + notAccepted + '\n');
    const Outcome gone = run({"set", "Gone", "50%"});
    EXPECT_EQ(gone.status, exitRefused);
    EXPECT_EQ(gone.err, std::string("Gone: ") + changed + '\n');
}

TEST_F(VerbsTest, EndsWithThreeForADisplayThatIsNotThere)
{
    plugSeven();
    EXPECT_EQ(run({"get", "Office"}).err, "There is no display \"Office\".\n");
    EXPECT_EQ(run({"get", "Office"}).status, exitUnknown);
    EXPECT_EQ(run({"set", "Office", "50%"}).status, exitUnknown);
    EXPECT_EQ(run({"get", "S"}).err,
              "\"S\" could be Studio 27 (display-2), Silent (display-4) or Stubborn (display-5).\n");
}

TEST_F(VerbsTest, WorksWithoutAnyDisplay)
{
    EXPECT_EQ(run({"list"}).status, exitDone);
    EXPECT_EQ(run({"list", "--json"}).out, "[]\n");
    EXPECT_EQ(run({"set", "all", "50%"}).status, exitUnknown);
    EXPECT_EQ(run({"doctor"}).status, exitDone);
}

TEST_F(VerbsTest, ListsTheOthersAndEndsWithTwoWhenAMonitorFileIsWrong)
{
    plugSeven();
    files.write("2.json", R"({"name": "Studio 27", "ddc": {"maximun": 100}})");
    const Outcome list = run({"list"});
    EXPECT_EQ(list.status, exitMisused);
    EXPECT_EQ(list.err, "2.json: \"ddc.maximun\" is not a known key.\n");
    EXPECT_EQ(std::count(list.out.begin(), list.out.end(), '\n'), 6);
    EXPECT_EQ(run({"get", "Wide"}).status, exitDone);
    EXPECT_EQ(run({"set", "Wide", "20%"}).status, exitDone);
}

TEST_F(VerbsTest, DoctorSaysWhatWasTriedAndWhatWouldHelp)
{
    plugSeven();
    const Outcome doctor = run({"doctor"});
    EXPECT_EQ(doctor.status, exitDone);
    EXPECT_NE(doctor.out.find("Silent (display-4)\n  Hardware control unavailable\n"), std::string::npos);
    EXPECT_NE(doctor.out.find("-> Set \"ddc.silent\" to false in 4.json."), std::string::npos);
    EXPECT_NE(doctor.out.find("-> Add a \"native\" or a \"ddc\" object to 7.json."), std::string::npos);
    EXPECT_EQ(doctor.err, "");
}

class PresetVerbsTest : public VerbsTest {
protected:
    PresetVerbsTest()
    {
        plugSeven();
        PlatformOptions options;
        options.simulationFolder = files.path();
        const auto platform = makePlatform(options, clock, mainThread);
        PresetStore store(*platform->defaults);
        const std::map<std::string, double> levels{{"display-1", 0.3}, {"display-2", 0.2}, {"display-3", 0.2},
                                                   {"display-4", 0.4}, {"display-5", 0.5}, {"display-9", 0.9}};
        store.rename(store.addPreset(levels, {{"display-9", "Beamer"}}).id, "Evening");
        store.rename(store.addPreset({}, {}).id, "Every day");
    }
};

TEST_F(PresetVerbsTest, ListsThePresetsAsTextAndInTheirStoredForm)
{
    const auto list = nlohmann::json::parse(run({"presets", "--json"}).out);
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[0].at("name"), "Evening");
    EXPECT_EQ(list[0].at("values").at("display-2"), 0.2);
    EXPECT_EQ(list[0].at("shortcut").at("functionKey"), 16);
    const std::string first = list[0].at("id");
    const std::string second = list[1].at("id");
    EXPECT_EQ(run({"presets"}).out,
              "Evening  F16  6 displays  " + first + "\nEvery day  F17  0 displays  " + second + "\n");
}

TEST_F(PresetVerbsTest, AppliesAPresetToWhatIsConnectedAndExplainsTheRest)
{
    const Outcome outcome = run({"apply", "evening"});
    EXPECT_EQ(outcome.status, exitRefused);
    EXPECT_EQ(outcome.out, "Panel: Hardware brightness verified at 30.0%.\n"
                           "Studio 27: Hardware brightness verified at 20%.\n"
                           "Wide: Hardware brightness verified at 20.0%.\n"
                           "Beamer: Not connected.\n");
    EXPECT_EQ(outcome.err,
              std::string("Silent: ") + changed + "\nSilent: " + noReply + "\nStubborn: " + overridden + '\n');
    EXPECT_EQ(current("2.json"), 20);
    EXPECT_EQ(current("6.json"), 70) << "not part of the preset";
    EXPECT_EQ(run({"apply", "Every"}).status, exitDone);
}

TEST_F(PresetVerbsTest, EndsWithThreeForAPresetThatIsNotThereOrNotClear)
{
    EXPECT_EQ(run({"apply", "Night"}).status, exitUnknown);
    EXPECT_EQ(run({"apply", "Night"}).err, "There is no preset \"Night\".\n");
    EXPECT_EQ(run({"apply", "Eve"}).status, exitUnknown);
}

TEST_F(PresetVerbsTest, LeavesThePreferencesFileAlone)
{
    const std::string before = files.text("preferences.ini");
    run({"list"});
    run({"presets"});
    run({"apply", "Evening"});
    EXPECT_EQ(files.text("preferences.ini"), before);
}

} // namespace
} // namespace lumenvale
