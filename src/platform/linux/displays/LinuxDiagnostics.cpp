// SPDX-License-Identifier: MIT
#include "platform/linux/displays/LinuxDiagnostics.h"

#include "platform/linux/displays/BusSelection.h"

#include <algorithm>
#include <fstream>
#include <set>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace lumenvale {

namespace {

constexpr char loadModule[] = "sudo modprobe i2c-dev\n"
                              "echo i2c-dev | sudo tee /etc/modules-load.d/lumenvale-i2c.conf";

/// The rule is that of packaging/linux/60-lumenvale-i2c.rules.
constexpr char grantAccess[] = R"(For whoever sits at the machine:
sudo tee /etc/udev/rules.d/60-lumenvale-i2c.rules << 'END'
ACTION=="remove", GOTO="lumenvale_end"
SUBSYSTEM!="i2c-dev", GOTO="lumenvale_end"
KERNELS=="card[0-9]*-eDP-*|card[0-9]*-LVDS-*|card[0-9]*-DSI-*|card[0-9]*-DPI-*", GOTO="lumenvale_end"
KERNEL=="i2c-[0-9]*", ATTRS{class}=="0x03*", ATTR{name}=="AUX *|i915 gmbus *|AMDGPU DM i2c hw bus *|)"
                               R"(AMDGPU DM aux hw bus *|AMDGPU i2c *|Radeon i2c *|Radeon aux *|nvkm-*|sor-*|)"
                               R"(NVIDIA i2c adapter *|DPMST*", TAG+="uaccess"
LABEL="lumenvale_end"
END
sudo udevadm control --reload
sudo udevadm trigger --subsystem-match=i2c-dev
Or, for this user everywhere, where the files belong to the group i2c (then log in again):
sudo usermod -aG i2c "$USER")";

constexpr char wakeMonitor[] = "Wake the screen and refresh.";
constexpr char connectDirectly[] = "Connect the monitor straight to the graphics card: some docks, adapters and "
                                   "switches do not pass the channel on.";

using Survey = DisplayRecords;

/// A path that a sandbox keeps closed counts as missing.
bool isPresent(const std::filesystem::path& path) { return !resolved(path).empty(); }

std::vector<I2cAdapter> candidatesOf(const Survey& survey, const Connector& connector)
{
    const BusCandidates found = busCandidates(connector, survey.connectors, survey.adapters);
    std::vector<I2cAdapter> adapters = found.linked;
    adapters.insert(adapters.end(), found.unlinked.begin(), found.unlinked.end());
    return adapters;
}

std::filesystem::path deviceFile(const SystemPaths& paths, const I2cAdapter& adapter)
{
    return paths.devices / ("i2c-" + std::to_string(adapter.number));
}

Finding problem(const DisplayInfo& display, std::string text, std::string remedy = {})
{
    return {Finding::Kind::problem, display.id, std::move(text), std::move(remedy)};
}

Finding good(const DisplayInfo& display, std::string text)
{
    return {Finding::Kind::good, display.id, std::move(text), {}};
}

/// Why no bus comes into question for the connector.
Finding withoutCandidates(const DisplayInfo& display, const Connector& connector, const BusCandidates& candidates)
{
    if (candidates.hasTwin)
        return problem(
            display,
            "Another connected monitor sends exactly the same identification, and the graphics driver does "
            "not say which channel is whose. Rather than dim the wrong one, neither is controlled.",
            "Connect one of the two straight to the graphics card, or to a socket of another kind.");
    if (candidates.isPanelNear)
        return problem(
            display,
            "The graphics driver does not tell this monitor's channel from that of the built-in panel, "
            "which must not be disturbed.",
            "Connect the monitor to a socket of another graphics card, or use another graphics driver.");
    const std::string driver =
        connector.driver.empty() ? "graphics driver" : "graphics driver " + connector.driver;
    return problem(display, "The " + driver + " offers no channel (I2C bus) for this connection.",
                   connectDirectly);
}

Finding examinePanel(const DisplayInfo& display, const Connector& connector, const Survey& survey,
                     const LinuxDiagnostics::AccessCheck& mayUse)
{
    const std::optional<Backlight> backlight = chooseBacklight(connector, survey.connectors, survey.backlights);
    if (!backlight)
        return problem(display, "The kernel offers no backlight device for this panel.",
                       "A newer kernel or graphics driver may bring one.");
    if (display.method != ControlMethod::apple)
        return problem(display, "The panel's backlight device " + backlight->name + " could not be read.");
    if (mayUse(backlight->path / "brightness"))
        return good(display,
                    "The panel's brightness is set through the backlight device " + backlight->name + ".");
    return {Finding::Kind::note,
            display.id,
            "The panel's backlight device " + backlight->name +
                " is not writable for this user, so the login service sets it; it does so only for the session at "
                "the screen.",
            {}};
}

/// True when the probe had a channel; its status text says so.
bool wasAsked(const DisplayInfo& display) { return display.status.starts_with("No valid DDC"); }

/// The name of a program that holds an advisory lock on `file`, by the kernel's list of locks; none when none
/// does. A holder that does not show its name is "another program".
std::optional<std::string> lockHolder(const SystemPaths& paths, const std::filesystem::path& file)
{
    struct stat record = {};
    if (::stat(file.c_str(), &record) != 0)
        return std::nullopt;
    const std::string inode = ":" + std::to_string(record.st_ino);
    std::ifstream locks(paths.processes / "locks");
    for (std::string line; std::getline(locks, line);) {
        // "1: FLOCK  ADVISORY  WRITE 812 00:05:345 0 EOF": number, kind, mode, access, process, place, range
        std::istringstream fields(line);
        std::string number, kind, mode, access, process, place;
        fields >> number >> kind >> mode >> access >> process >> place;
        if (kind == "FLOCK" && place.ends_with(inode)) {
            const std::string name = readAttribute(paths.processes / process / "comm").value_or("");
            return name.empty() ? "another program" : name;
        }
    }
    return std::nullopt;
}

/// Why a display without an answer gave none, when its candidates can be opened.
Finding withoutAnswer(const DisplayInfo& display, const Connector& connector,
                      const std::vector<I2cAdapter>& candidates, const SystemPaths& paths)
{
    for (const I2cAdapter& adapter : candidates) {
        if (const std::optional<std::string> holder = lockHolder(paths, deviceFile(paths, adapter)))
            return problem(display, "The monitor's channel is in use by " + *holder + ".",
                           "Wait until it has finished, or end it, and refresh.");
    }
    if (connector.isAsleep)
        return problem(display, "The monitor is switched off to save power and may not answer.", wakeMonitor);
    if (wasAsked(display))
        return problem(display, "The monitor's channel was found, but the monitor gives no valid answer on it.",
                       "Switch on DDC/CI in the monitor's own menu and refresh.\n" + std::string(connectDirectly));
    return problem(display, "No channel of the graphics card shows this monitor's identification.",
                   connectDirectly);
}

Finding examineExternal(const DisplayInfo& display, const Connector& connector, const Survey& survey,
                        const SystemPaths& paths, const LinuxDiagnostics::AccessCheck& mayUse)
{
    if (display.method == ControlMethod::ddc)
        return good(display, "The monitor answers over DDC/CI.");
    if (connector.kind != ConnectorKind::external)
        return problem(display, "A connection of this kind (" + connector.type + ") has no DDC/CI channel.");
    if (!connector.edid)
        return problem(display, "The monitor sends no valid identification (EDID), so its channel cannot be told.",
                       "Check the cable, or try another socket.");
    const std::vector<I2cAdapter> candidates = candidatesOf(survey, connector);
    if (candidates.empty())
        return withoutCandidates(display, connector, busCandidates(connector, survey.connectors, survey.adapters));
    if (!survey.hasBusFiles)
        return problem(display, "The monitor's channel is closed while the kernel module i2c-dev is not loaded.");
    const bool mayUseOne = std::any_of(candidates.begin(), candidates.end(),
                                       [&](const I2cAdapter& each) { return mayUse(deviceFile(paths, each)); });
    if (!mayUseOne)
        return problem(display, "This user may not open the monitor's channel.");
    return withoutAnswer(display, connector, candidates, paths);
}

/// A driver of the kernel that has taken the address which DDC/CI speaks to.
std::optional<Finding> kernelClient(const DisplayInfo& display, const Connector& connector, const Survey& survey,
                                    const SystemPaths& paths)
{
    for (const I2cAdapter& adapter : candidatesOf(survey, connector)) {
        const std::string client = std::to_string(adapter.number) + "-0037";
        const std::filesystem::path driver = resolved(paths.sysfs / "bus/i2c/devices" / client / "driver");
        if (!driver.empty())
            return Finding{Finding::Kind::note, display.id,
                           "The kernel driver " + driver.filename().string() +
                               " also speaks to this monitor and may disturb the exchange.",
                           "echo " + client + " | sudo tee " + driver.string() + "/unbind"};
    }
    return std::nullopt;
}

void examineSystem(std::vector<Finding>& findings, const Survey& survey, const SystemPaths& paths,
                   const LinuxDiagnostics::AccessCheck& mayUse)
{
    using Kind = Finding::Kind;
    if (survey.connectors.empty()) {
        const bool isNvidia = isPresent(paths.sysfs / "bus/pci/drivers/nvidia");
        findings.push_back({Kind::problem,
                            {},
                            "The kernel shows no display connectors.",
                            isNvidia ? "echo 'options nvidia-drm modeset=1' | sudo tee "
                                       "/etc/modprobe.d/lumenvale-nvidia.conf\nThen restart the machine."
                                     : "This is normal in containers and some virtual machines."});
        return;
    }
    std::set<std::filesystem::path> files;
    for (const Connector& connector : survey.connectors) {
        if (!connector.isDisplay())
            continue;
        for (const I2cAdapter& adapter : candidatesOf(survey, connector))
            files.insert(deviceFile(paths, adapter));
    }
    if (files.empty())
        return;
    std::string closed;
    for (const std::filesystem::path& file : files) {
        if (!mayUse(file))
            closed += (closed.empty() ? "" : ", ") + file.string();
    }
    if (!survey.hasBusFiles)
        findings.push_back({Kind::problem,
                            {},
                            "The kernel module i2c-dev is not loaded; without it no program can "
                            "reach the monitors' channels.",
                            loadModule});
    else if (!closed.empty())
        findings.push_back(
            {Kind::problem, {}, "This user may not open the monitors' channels (" + closed + ").", grantAccess});
    else
        findings.push_back({Kind::good, {}, "The monitors' channels can be opened.", {}});
}

} // namespace

LinuxDiagnostics::LinuxDiagnostics(SystemPaths paths, std::shared_ptr<KernelRecords> records, AccessCheck mayUse)
    : paths(std::move(paths)), records(std::move(records)), mayUse(std::move(mayUse))
{
}

LinuxDiagnostics::AccessCheck LinuxDiagnostics::systemAccessCheck()
{
    return [](const std::filesystem::path& file) { return ::access(file.c_str(), R_OK | W_OK) == 0; };
}

std::vector<Finding> LinuxDiagnostics::examine(const std::vector<DisplayInfo>& displays)
{
    const SharedRecords known = records->last();
    const Survey& survey = *known;
    std::vector<Finding> findings;
    examineSystem(findings, survey, paths, mayUse);
    for (const DisplayInfo& display : displays) {
        const auto connector =
            std::find_if(survey.connectors.begin(), survey.connectors.end(),
                         [&](const Connector& each) { return each.displayID == display.displayID; });
        if (connector == survey.connectors.end()) {
            findings.push_back(problem(display, "The graphics driver does not show which monitor this is."));
        } else if (connector->kind == ConnectorKind::panel) {
            findings.push_back(examinePanel(display, *connector, survey, mayUse));
        } else {
            findings.push_back(examineExternal(display, *connector, survey, paths, mayUse));
            if (const std::optional<Finding> client = kernelClient(display, *connector, survey, paths))
                findings.push_back(*client);
        }
    }
    return findings;
}

} // namespace lumenvale
