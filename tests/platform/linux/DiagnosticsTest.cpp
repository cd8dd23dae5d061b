// SPDX-License-Identifier: MIT
#include "FakeSysfs.h"

#include "platform/linux/displays/LinuxDiagnostics.h"

#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace lumenvale {
namespace {

using Kind = Finding::Kind;

bool contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

class DiagnosticsTest : public testing::Test {
protected:
    DisplayInfo display(const std::string& connector, ControlMethod method = ControlMethod::unavailable,
                        const std::string& status = "No accessible hardware brightness service. …") const
    {
        DisplayInfo info;
        info.id = connector;
        info.displayID = displayNumber("card0", connector);
        info.method = method;
        info.status = status;
        return info;
    }
    /// A monitor with a channel of its own.
    FakeSysfs::Path plug()
    {
        const auto connector = system.addConnector(device, "DP-1", EdidBuilder{}.build());
        system.addAdapter(connector, 4, "AUX B/DDI B/PHY B");
        return connector;
    }

    std::vector<Finding> examine(const std::vector<DisplayInfo>& displays)
    {
        return LinuxDiagnostics(system.paths(), [this](const auto&) { return mayUse; }).examine(displays);
    }
    /// What is said about the only display.
    Finding about(const DisplayInfo& info)
    {
        for (const Finding& finding : examine({info})) {
            if (finding.displayID == info.id)
                return finding;
        }
        return {};
    }
    std::string textAbout(const std::string& connector) { return about(display(connector)).text; }

    FakeSysfs system;
    FakeSysfs::Path device = system.addCard();
    bool mayUse = true;
};

TEST_F(DiagnosticsTest, AClosedChannelComesWithTheRuleThatOpensItAndAMissingModuleComesFirst)
{
    plug();
    mayUse = false;
    std::vector<Finding> findings = examine({display("DP-1")});
    ASSERT_EQ(findings.size(), 2U);
    EXPECT_EQ(findings[0].kind, Kind::problem);
    EXPECT_EQ(findings[0].displayID, "");
    EXPECT_TRUE(contains(findings[0].text, (system.paths().devices / "i2c-4").string()));
    EXPECT_TRUE(contains(findings[0].remedy, "usermod -aG i2c"));
    EXPECT_EQ(findings[1].kind, Kind::problem);

    std::ifstream file(LUMENVALE_RULE_FILE);
    std::string line;
    while (std::getline(file, line) && (line.empty() || line.starts_with('#'))) {
    }
    EXPECT_TRUE(contains(findings[0].remedy, "'" + line + "'")) << "the packaged rule and the advice are the same";

    std::filesystem::remove_all(system.root() / "class/i2c-dev");
    findings = examine({display("DP-1")});
    ASSERT_EQ(findings.size(), 2U);
    EXPECT_TRUE(contains(findings[0].remedy, "modprobe i2c-dev"));
    EXPECT_TRUE(contains(findings[1].text, "i2c-dev"));
    const auto closed = system.root() / "class/i2c-dev";
    std::filesystem::create_symlink(closed.filename(), closed); // fails otherwise than by being missing
    EXPECT_EQ(examine({display("DP-1")}), findings);
}

TEST_F(DiagnosticsTest, ASilentMonitorIsAskedToSwitchOnDdc)
{
    const auto dp = plug();
    const DisplayInfo silent = display("DP-1", ControlMethod::unavailable, "No valid DDC brightness reply. …");
    EXPECT_TRUE(contains(about(silent).remedy, "DDC/CI"));
    EXPECT_TRUE(contains(textAbout("DP-1"), "identification"));
    FakeSysfs::write(dp / "dpms", "Off");
    EXPECT_TRUE(contains(about(silent).text, "save power"));
    EXPECT_EQ(about(display("DP-1", ControlMethod::ddc)).kind, Kind::good);
}

TEST_F(DiagnosticsTest, AChannelThatAnotherProgramHoldsNamesTheProgram)
{
    plug();
    struct stat record = {};
    ASSERT_EQ(::stat((system.paths().devices / "i2c-4").c_str(), &record), 0);
    const std::string lock = " ADVISORY  WRITE 812 00:05:" + std::to_string(record.st_ino) + " 0 EOF";
    FakeSysfs::write(system.paths().processes / "812/comm", "monitortool");
    FakeSysfs::write(system.paths().processes / "locks",
                     "1: FLOCK  ADVISORY  WRITE 7 00:05:1 0 EOF\n2: POSIX" + lock);
    EXPECT_TRUE(contains(textAbout("DP-1"), "identification"));
    FakeSysfs::write(system.paths().processes / "locks", "1: FLOCK " + lock);
    EXPECT_TRUE(contains(textAbout("DP-1"), "in use by monitortool"));
}

TEST_F(DiagnosticsTest, DriversWithoutBusesAndTwinsAreExplained)
{
    system.addConnector(device, "DP-1", EdidBuilder{}.build());
    EXPECT_TRUE(contains(textAbout("DP-1"), "i915 offers no channel"));
    system.addAdapter(device, 9, "DPMST");
    system.addConnector(device, "DP-2", EdidBuilder{}.build());
    EXPECT_TRUE(contains(textAbout("DP-1"), "same identification"));
    system.addConnector(device, "HDMI-A-1", EdidBlock{});
    EXPECT_TRUE(contains(textAbout("HDMI-A-1"), "EDID"));
    system.addConnector(device, "Virtual-1", EdidBuilder{}.build());
    EXPECT_TRUE(contains(textAbout("Virtual-1"), "Virtual"));
    EXPECT_EQ(about(display("DP-7")).kind, Kind::problem);
}

TEST_F(DiagnosticsTest, AKernelDriverOnTheMonitorsAddressIsNoted)
{
    plug();
    FakeSysfs::link(system.root() / "bus/i2c/drivers/ddcci", system.root() / "bus/i2c/devices/4-0037/driver");
    const std::vector<Finding> findings = examine({display("DP-1", ControlMethod::ddc)});
    ASSERT_EQ(findings.size(), 3U);
    EXPECT_EQ(findings[2].kind, Kind::note);
    EXPECT_TRUE(contains(findings[2].remedy, "echo 4-0037"));
}

TEST_F(DiagnosticsTest, PanelsNameTheirBacklightAndTheWayToIt)
{
    const auto panel = system.addConnector(device, "eDP-1", EdidBuilder{}.build());
    EXPECT_EQ(about(display("eDP-1")).kind, Kind::problem);
    system.addBacklight(panel, "intel_backlight", "raw", 100, 50);
    EXPECT_TRUE(contains(about(display("eDP-1", ControlMethod::apple)).text, "device intel_backlight."));
    mayUse = false;
    EXPECT_TRUE(contains(about(display("eDP-1", ControlMethod::apple)).text, "login service"));
}

TEST_F(DiagnosticsTest, AMachineWithoutConnectorsIsOneFinding)
{
    FakeSysfs empty;
    const std::vector<Finding> findings = LinuxDiagnostics(empty.paths()).examine({});
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_TRUE(contains(findings[0].text, "no display connectors"));
    empty.addPciDevice("0000:01:00.0", "nvidia", "0x030000");
    EXPECT_TRUE(contains(LinuxDiagnostics(empty.paths()).examine({}).at(0).remedy, "modeset=1"));
}

} // namespace
} // namespace lumenvale
