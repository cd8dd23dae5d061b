// SPDX-License-Identifier: MIT
#include "platform/linux/displays/LinuxDiagnostics.h"

#include "platform/linux/displays/ProcessRecords.h"

#include <set>
#include <utility>

namespace lumenvale {

namespace {

constexpr char loadModule[] = "sudo modprobe i2c-dev\n"
                              "echo i2c-dev | sudo tee /etc/modules-load.d/lumenvale-i2c.conf";

/// The rule is that of packaging/linux/60-lumenvale-i2c.rules.
constexpr char grantAccess[] = R"(# For whoever sits at the machine:
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
# Or, for this user everywhere, where the files belong to the group i2c (then log in again):
# sudo usermod -aG i2c "$USER")";

/// A path that a sandbox keeps closed counts as missing.
bool isPresent(const std::filesystem::path& path) { return !resolved(path).empty(); }

/// A driver of the kernel that has taken the address which DDC/CI speaks to.
std::optional<Finding> kernelClient(const std::string& id, const std::filesystem::path& channel,
                                    const SystemPaths& paths)
{
    const std::string file = channel.filename().string(); // "i2c-4"
    const std::string client = file.substr(file.find('-') + 1) + "-0037";
    const std::filesystem::path driver = resolved(paths.sysfs / "bus/i2c/devices" / client / "driver");
    if (driver.empty())
        return std::nullopt;
    return Finding{Finding::Kind::note, id,
                   "The kernel driver " + driver.filename().string() +
                       " also speaks to this monitor and may disturb the exchange.",
                   "echo " + client + " | sudo tee " + driver.string() + "/unbind"};
}

/// A program that keeps the channel open: it may set the brightness too.
std::optional<Finding> otherUser(const std::string& id, const std::filesystem::path& channel,
                                 const SystemPaths& paths)
{
    const std::optional<std::string> holder = openHolder(paths, channel);
    if (!holder)
        return std::nullopt;
    return Finding{Finding::Kind::note,
                   id,
                   "This monitor's channel is also open in " + *holder + ", which may set its brightness too.",
                   {}};
}

Finding withoutConnectors(const SystemPaths& paths)
{
    const bool isNvidia = isPresent(paths.sysfs / "bus/pci/drivers/nvidia");
    return {Finding::Kind::problem,
            {},
            "The kernel shows no display connectors.",
            isNvidia ? "echo 'options nvidia-drm modeset=1' | sudo tee "
                       "/etc/modprobe.d/lumenvale-nvidia.conf\nThen restart the machine."
                     : "This is normal in containers and some virtual machines."};
}

/// What concerns the channels of all monitors; none where there are none.
std::optional<Finding> examineAccess(const DisplayRecords& known, const DisplayDiagnosis& diagnosis)
{
    std::set<std::filesystem::path> files;
    for (const Connector& connector : known.connectors) {
        if (!connector.isDisplay())
            continue;
        for (const std::filesystem::path& file : diagnosis.channelFiles(connector, known))
            files.insert(file);
    }
    if (files.empty())
        return std::nullopt;
    using Kind = Finding::Kind;
    if (!known.hasBusFiles)
        return Finding{Kind::problem,
                       {},
                       "The kernel module i2c-dev is not loaded; without it no program can reach the monitors' "
                       "channels.",
                       loadModule,
                       true};
    std::string closed;
    for (const std::filesystem::path& file : files) {
        if (!diagnosis.mayOpen(file))
            closed += (closed.empty() ? "" : ", ") + file.string();
    }
    if (!closed.empty())
        return Finding{Kind::problem,
                       {},
                       "This user may not open the monitors' channels (" + closed + ").",
                       grantAccess,
                       true};
    return Finding{Kind::good, {}, "The monitors' channels can be opened.", {}};
}

} // namespace

LinuxDiagnostics::LinuxDiagnostics(SystemPaths paths, std::shared_ptr<KernelRecords> records,
                                   std::shared_ptr<const DisplayDiagnosis> diagnosis, DesktopCheck doesDesktopSet)
    : paths(std::move(paths)), records(std::move(records)), diagnosis(std::move(diagnosis)),
      doesDesktopSet(std::move(doesDesktopSet))
{
}

std::vector<Finding> LinuxDiagnostics::examine(const std::vector<DisplayInfo>& displays)
{
    const SharedRecords known = records->last();
    std::vector<Finding> findings;
    if (known->connectors.empty())
        findings.push_back(withoutConnectors(paths));
    else if (const std::optional<Finding> access = examineAccess(*known, *diagnosis))
        findings.push_back(*access);
    if (doesDesktopSet && doesDesktopSet())
        findings.push_back(
            {Finding::Kind::note,
             {},
             "The desktop's power management (PowerDevil) sets the brightness of the same displays; "
             "what was set last holds.",
             "To keep it from external monitors, set POWERDEVIL_NO_DDCUTIL=1 for the session."});
    for (const DisplayInfo& display : displays) {
        findings.push_back(diagnosis->examine(display));
        const Connector* connector = known->display(display.displayID);
        if (!connector)
            continue;
        for (const std::filesystem::path& channel : diagnosis->channelFiles(*connector, *known)) {
            if (const std::optional<Finding> client = kernelClient(display.id, channel, paths))
                findings.push_back(*client);
            const bool isControlled = display.method == ControlMethod::ddc; // else the cause is named already
            if (const auto other = isControlled ? otherUser(display.id, channel, paths) : std::nullopt)
                findings.push_back(*other);
        }
    }
    return findings;
}

} // namespace lumenvale
