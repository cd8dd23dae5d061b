// SPDX-License-Identifier: MIT
#include "platform/linux/displays/DisplayDiagnosis.h"

#include "platform/linux/displays/BusSelection.h"
#include "platform/linux/displays/ProcessRecords.h"
#include "platform/posix/SystemError.h"

#include <algorithm>
#include <cerrno>
#include <unistd.h>
#include <utility>

namespace lumenvale {

namespace {

using Kind = DisplayTrouble::Kind;

constexpr char connectDirectly[] = "Connect the monitor straight to the graphics card: some docks, adapters and "
                                   "switches do not pass the channel on.";
constexpr char noAnswer[] = "The monitor's channel was found, but the monitor gives no valid answer on it.";
constexpr char useTheRule[] =
    "Add the rule that \"lumenvale doctor\" prints, and refresh. Where the file belongs to "
    "the group i2c, joining that group helps too, from the next login on.";

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
    if (connector.linkedBus || !connector.ownBuses.empty())
        return problem(display,
                       "The graphics driver names a channel for this connection, but none that is certain to "
                       "be this monitor's alone. It is not opened.");
    const std::string driver =
        connector.driver.empty() ? "graphics driver" : "graphics driver " + connector.driver;
    return problem(display, "The " + driver + " offers no channel (I2C bus) for this connection.",
                   connectDirectly);
}

/// What the login service did with a panel whose file is not ours to write.
Finding withoutService(const DisplayInfo& display, const std::string& device, int error)
{
    const std::string text = "This user may not write the panel's backlight device " + device + ", and ";
    constexpr char ownRight[] = "A udev rule can let the group video write it.";
    switch (error) {
    case ENOTCONN:
    case ENOSYS:
        return problem(display, text + "there is no login service that could (systemd-logind or elogind).",
                       ownRight);
    case ETIMEDOUT:
        return problem(display, text + "the login service, which may, gives no answer. Nothing was set.",
                       "Try again; \"journalctl -u systemd-logind\" shows what keeps it.");
    default:
        return problem(display,
                       text + "the login service refuses to: it sets it only for the session at the screen.",
                       std::string("Use the session that is on the screen. ") + ownRight);
    }
}

Finding implausible(const DisplayInfo& display, const DisplayTrouble& trouble)
{
    return problem(display,
                   "The monitor answers, but with a brightness of " + std::to_string(trouble.numbers.current) +
                       " on a scale that ends at " + std::to_string(trouble.numbers.maximum) + ".",
                   "Reset the monitor in its own menu, or switch its DDC/CI off and on, and refresh.");
}

std::string commaSeparated(const std::vector<std::filesystem::path>& files)
{
    std::string text;
    for (const std::filesystem::path& each : files)
        text += (text.empty() ? "" : ", ") + each.string();
    return text;
}

} // namespace

DisplayDiagnosis::DisplayDiagnosis(SystemPaths paths, std::shared_ptr<KernelRecords> records,
                                   std::shared_ptr<const DisplayTroubles> troubles, ServiceCheck askLoginService,
                                   AccessCheck mayUse)
    : paths(std::move(paths)), records(std::move(records)), troubles(std::move(troubles)),
      askLoginService(std::move(askLoginService)), mayUse(std::move(mayUse))
{
}

DisplayDiagnosis::AccessCheck DisplayDiagnosis::systemAccessCheck()
{
    return [](const std::filesystem::path& file) { return ::access(file.c_str(), R_OK | W_OK) == 0; };
}

Finding DisplayDiagnosis::examine(const DisplayInfo& display) const
{
    const SharedRecords known = records->last();
    const auto connector = std::ranges::find(known->connectors, display.displayID, &Connector::displayID);
    if (connector == known->connectors.end())
        return problem(display, "The graphics driver does not show which monitor this is.");
    return connector->kind == ConnectorKind::panel ? examinePanel(display, *connector, *known)
                                                   : examineExternal(display, *connector, *known);
}

std::string DisplayDiagnosis::obstacle(const DisplayInfo& display) const
{
    const Finding finding = examine(display);
    if (finding.kind != Finding::Kind::problem || finding.text == noAnswer)
        return {};
    std::string line = finding.text + (finding.remedy.empty() ? "" : " ") + finding.remedy;
    std::ranges::replace(line, '\n', ' ');
    return line;
}

std::vector<std::filesystem::path> DisplayDiagnosis::channelFiles(const Connector& connector,
                                                                  const DisplayRecords& known) const
{
    const BusCandidates found = busCandidates(connector, known.connectors, known.adapters);
    std::vector<std::filesystem::path> files;
    for (const auto& list : {found.linked, found.unlinked}) {
        for (const I2cAdapter& adapter : list)
            files.push_back(paths.devices / ("i2c-" + std::to_string(adapter.number)));
    }
    return files;
}

Finding DisplayDiagnosis::examinePanel(const DisplayInfo& display, const Connector& connector,
                                       const DisplayRecords& known) const
{
    const std::optional<Backlight> backlight = chooseBacklight(connector, known.connectors, known.backlights);
    if (!backlight)
        return problem(display, "The kernel offers no backlight device for this panel.",
                       "A newer kernel or graphics driver may bring one.");
    if (display.method != ControlMethod::apple)
        return problem(display, "The panel's backlight device " + backlight->name + " could not be read.");
    const std::optional<DisplayTrouble> trouble = troubles->of(display.displayID);
    if (trouble && trouble->kind == Kind::refusedService)
        return withoutService(display, backlight->name, trouble->error);
    if (trouble)
        return problem(display, "The panel's backlight device " + backlight->name +
                                    " could not be written: " + systemErrorText(trouble->error) + ".");
    if (const std::optional<std::string> holder = lockHolder(paths, backlight->path / "brightness"))
        return problem(display,
                       "The panel's backlight device " + backlight->name + " is in use by " + *holder + ".",
                       "Wait until it has finished, or end it.");
    if (mayUse(backlight->path / "brightness"))
        return good(display,
                    "The panel's brightness is set through the backlight device " + backlight->name + ".");
    if (const int error = askLoginService(); error == ENOTCONN || error == ETIMEDOUT)
        return withoutService(display, backlight->name, error);
    return {Finding::Kind::note,
            display.id,
            "The panel's backlight device " + backlight->name +
                " is not writable for this user, so the login service sets it; it does so only for the session at "
                "the screen.",
            {}};
}

Finding DisplayDiagnosis::examineExternal(const DisplayInfo& display, const Connector& connector,
                                          const DisplayRecords& known) const
{
    if (display.method == ControlMethod::ddc && !troubles->of(display.displayID))
        return good(display, "The monitor answers over DDC/CI.");
    if (connector.kind != ConnectorKind::external)
        return problem(display, "A connection of this kind (" + connector.type + ") has no DDC/CI channel.");
    if (!connector.edid)
        return problem(display, "The monitor sends no valid identification (EDID), so its channel cannot be told.",
                       "Check the cable, or try another socket.");
    const std::vector<std::filesystem::path> channels = channelFiles(connector, known);
    if (channels.empty())
        return withoutCandidates(display, connector, busCandidates(connector, known.connectors, known.adapters));
    if (!known.hasBusFiles)
        return problem(display, "The monitor's channel is closed while the kernel module i2c-dev is not loaded.",
                       "Load it with \"sudo modprobe i2c-dev\" and refresh.");
    if (std::ranges::none_of(channels, mayUse))
        return problem(display, "This user may not open the monitor's channel (" + commaSeparated(channels) + ").",
                       useTheRule);
    return examineSilence(display, connector, channels);
}

/// Why a display without an answer gave none, when its channel can be opened.
Finding DisplayDiagnosis::examineSilence(const DisplayInfo& display, const Connector& connector,
                                         const std::vector<std::filesystem::path>& channels) const
{
    for (const std::filesystem::path& channel : channels) {
        if (const std::optional<std::string> holder = lockHolder(paths, channel))
            return problem(display, "The monitor's channel is in use by " + *holder + ".",
                           "Wait until it has finished, or end it, and refresh.");
    }
    if (connector.isAsleep)
        return problem(display, "The monitor is switched off to save power and may not answer.",
                       "Wake the screen and refresh.");
    const std::optional<DisplayTrouble> trouble = troubles->of(display.displayID);
    if (!trouble)
        return problem(display, "No channel of the graphics card shows this monitor's identification.",
                       connectDirectly);
    if (trouble->kind == Kind::busy)
        return problem(display, "Another program kept the monitor's channel busy.",
                       "Try again when it has finished.");
    if (trouble->kind == Kind::implausible)
        return implausible(display, *trouble);
    if (trouble->kind == Kind::withoutValue)
        return problem(
            display, "The monitor answers, but gives no brightness.",
            "Some do so in a picture mode of their own menu that fixes it: choose another, and refresh.");
    if (trouble->kind == Kind::unclear)
        return problem(display, "Something answers on the monitor's channel, but not as DDC/CI does.",
                       std::string("Switch DDC/CI off and on in the monitor's own menu and refresh.\n") +
                           connectDirectly);
    return problem(display, noAnswer,
                   std::string("Switch on DDC/CI in the monitor's own menu and refresh.\n") + connectDirectly);
}

} // namespace lumenvale
