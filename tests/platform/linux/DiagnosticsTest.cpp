// SPDX-License-Identifier: MIT
#include "FakeSysfs.h"

#include "platform/linux/displays/LinuxDiagnostics.h"

#include <gtest/gtest.h>
#include <iomanip>
#include <sstream>
#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace lumenvale {
namespace {

using Kind = Finding::Kind;
using enum ControlMethod;

constexpr char bare[] = "i915 DP-1=T";
constexpr char wired[] = "i915 DP-1=T/4; 4 - AUX B/DDI B/PHY B";
constexpr char laptop[] = "i915 eDP-1=P";
using Trouble = DisplayTrouble::Kind;

void nothing(FakeSysfs&) {}
void addBacklight(FakeSysfs& system) { system.addBacklight(resolved(system["eDP-1"]), "intel", "raw", "9"); }
void addKernelDriver(FakeSysfs& system)
{
    system.link(system.root() / "bus/i2c/drivers/ddcci", system.root() / "bus/i2c/devices/4-0037/driver");
}
void addLock(FakeSysfs& system, const std::string& kind)
{
    struct stat record = {};
    ASSERT_EQ(::stat((system.paths().devices / "i2c-4").c_str(), &record), 0);
    system.write(system.paths().processes / "812/comm", "monitortool");
    std::ostringstream locks; // one on another device's file of this number, and one on the bus
    locks << std::hex << std::setfill('0') << "1: FLOCK  ADVISORY  WRITE 7 " << std::setw(2)
          << major(record.st_dev) + 1 << ':' << std::setw(2) << minor(record.st_dev) << ':' << std::dec
          << record.st_ino << " 0 EOF\n2: " << kind << "  ADVISORY  WRITE 812 " << std::hex << std::setw(2)
          << major(record.st_dev) << ':' << std::setw(2) << minor(record.st_dev) << ':' << std::dec
          << record.st_ino << " 0 EOF";
    system.write(system.paths().processes / "locks", locks.str());
}

TEST(LinuxDiagnostics, EachDisplayIsToldWhatIsWrongAndWhatWouldHelp)
{
    const struct {
        const char* machine;
        void (*change)(FakeSysfs&);
        const char* connector;
        ControlMethod method;
        std::optional<DisplayTrouble> trouble;
        Kind kind;
        const char* text; ///< what the finding says, or its remedy
    } rows[] = {
        {wired, nothing, "DP-1", ddc, {}, Kind::good, "answers over DDC/CI"},
        {wired, nothing, "DP-1", unavailable, {{Trouble::silent, EIO}}, Kind::problem, "Switch on DDC/CI"},
        {wired,
         nothing,
         "DP-1",
         unavailable,
         {{Trouble::implausible, 0, {100, 120}}},
         Kind::problem,
         "brightness of 120 on a scale that ends at 100"},
        {wired, nothing, "DP-1", unavailable, {{Trouble::busy}}, Kind::problem, "kept the monitor's channel busy"},
        {wired, nothing, "DP-1", unavailable, {{Trouble::withoutValue}}, Kind::problem, "gives no brightness"},
        {wired, nothing, "DP-1", unavailable, {{Trouble::unclear}}, Kind::problem, "not as DDC/CI does"},
        {laptop, addBacklight, "eDP-1", apple, {{Trouble::refusedService, EACCES}}, Kind::problem, "refuses to"},
        {laptop,
         addBacklight,
         "eDP-1",
         apple,
         {{Trouble::refusedService, ENOTCONN}},
         Kind::problem,
         "no login service"},
        {laptop,
         addBacklight,
         "eDP-1",
         apple,
         {{Trouble::refusedService, ETIMEDOUT}},
         Kind::problem,
         "gives no answer. Nothing was set"},
        {wired,
         [](FakeSysfs& it) { it.write(it["DP-1"] / "dpms", "Off"); },
         "DP-1",
         unavailable,
         {{Trouble::silent, EIO}},
         Kind::problem,
         "save power"},
        {wired,
         [](FakeSysfs& it) { addLock(it, "FLOCK"); },
         "DP-1",
         unavailable,
         {},
         Kind::problem,
         "in use by monitortool (process 812)"},
        {wired,
         [](FakeSysfs& it) { addLock(it, "POSIX"); },
         "DP-1",
         unavailable,
         {},
         Kind::problem,
         "shows this monitor's identification"},
        {bare, nothing, "DP-1", unavailable, {}, Kind::problem, "i915 offers no channel"},
        {"i915 DP-1=T DP-2=T; 9 - DPMST", nothing, "DP-1", unavailable, {}, Kind::problem, "same identification"},
        {"nouveau DP-1=S eDP-1=P; 1 - sor-6-0f42",
         nothing,
         "DP-1",
         unavailable,
         {},
         Kind::problem,
         "built-in panel"},
        {bare, [](FakeSysfs& it) { it.plug(it["DP-1"], {}); }, "DP-1", unavailable, {}, Kind::problem, "EDID"},
        {"i915 Virtual-1=S", nothing, "Virtual-1", unavailable, {}, Kind::problem, "(Virtual)"},
        {bare, nothing, "DP-7", unavailable, {}, Kind::problem, "does not show which monitor"},
        {laptop, nothing, "eDP-1", unavailable, {}, Kind::problem, "no backlight device"},
        {laptop, addBacklight, "eDP-1", unavailable, {}, Kind::problem, "could not be read"},
        {laptop, addBacklight, "eDP-1", apple, {}, Kind::good, "device intel."},
    };
    for (const auto& row : rows) {
        FakeSysfs system(row.machine);
        row.change(system);
        const DisplayInfo display{
            .id = "X", .displayID = displayNumber("card0", row.connector), .method = row.method};
        const auto troubles = std::make_shared<DisplayTroubles>();
        if (row.trouble)
            troubles->note(display.displayID, *row.trouble);
        const DisplayDiagnosis diagnosis(
            system.paths(), system.records(), troubles, [] { return 0; }, [](const auto&) { return true; });
        const Finding finding = diagnosis.examine(display);
        const bool isMereSilence = row.text == std::string("Switch on DDC/CI");
        EXPECT_EQ(diagnosis.obstacle(display).empty(), finding.kind != Kind::problem || isMereSilence) << row.text;
        EXPECT_EQ(finding.displayID, "X");
        EXPECT_EQ(finding.kind, row.kind) << row.text;
        EXPECT_NE((finding.text + finding.remedy).find(row.text), std::string::npos) << row.text << finding.text;
    }
}

TEST(LinuxDiagnostics, WhatConcernsTheMachineComesFirst)
{
    FakeSysfs system(wired);
    DisplayInfo display;
    display.displayID = displayNumber("card0", "DP-1");
    int loginError = 0;
    const auto examineOn = [&](const FakeSysfs& machine, bool mayUse) {
        const auto records = machine.records();
        const auto diagnosis = std::make_shared<const DisplayDiagnosis>(
            machine.paths(), records, std::make_shared<DisplayTroubles>(), [&] { return loginError; },
            [mayUse](const auto&) { return mayUse; });
        return LinuxDiagnostics(machine.paths(), records, diagnosis, {}).examine({display});
    };
    const auto examine = [&](bool mayUse) { return examineOn(system, mayUse); };
    const auto holds = [](const std::string& text, const std::string& part) {
        return text.find(part) != std::string::npos;
    };
    EXPECT_EQ(examine(true).at(0).kind, Kind::good);
    const Finding closed = examine(false).at(0);
    EXPECT_EQ(closed.kind, Kind::problem);
    EXPECT_TRUE(holds(closed.text, (system.paths().devices / "i2c-4").string()));
    EXPECT_TRUE(holds(closed.remedy, "usermod -aG i2c"));
    std::ifstream packagedRule(LUMENVALE_RULE_FILE);
    for (std::string line; std::getline(packagedRule, line);)
        EXPECT_TRUE(line.starts_with('#') || holds(closed.remedy, line)) << line;
    addKernelDriver(system);
    EXPECT_TRUE(holds(examine(true).at(2).remedy, "echo 4-0037"));
    const auto devices = system.root() / "class/i2c-dev";
    std::filesystem::remove_all(devices);
    const std::vector<Finding> unloaded = examine(true);
    EXPECT_TRUE(holds(unloaded.at(0).remedy, "modprobe i2c-dev") && holds(unloaded.at(1).text, "i2c-dev"));
    std::filesystem::create_symlink(devices.filename(), devices); // fails otherwise than by being missing
    EXPECT_EQ(examine(true), unloaded);

    FakeSysfs panel(laptop);
    addBacklight(panel);
    display.displayID = displayNumber("card0", "eDP-1");
    display.method = apple;
    EXPECT_EQ(examineOn(panel, false).at(0).kind, Kind::note);
    loginError = ENOTCONN;
    EXPECT_TRUE(holds(examineOn(panel, false).at(0).text, "no login service"));
    FakeSysfs empty;
    EXPECT_TRUE(holds(examineOn(empty, true).at(0).text, "no display connectors"));
    empty.addPciDevice("x", "nvidia", "0x030000");
    EXPECT_TRUE(holds(examineOn(empty, true).at(0).remedy, "modeset=1"));
}

} // namespace
} // namespace lumenvale
