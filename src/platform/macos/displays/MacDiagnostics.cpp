// SPDX-License-Identifier: MIT
#include "platform/macos/displays/MacDiagnostics.h"

#include "hardware/ServiceDiscovery.h"
#include "platform/macos/displays/MacDisplaySystem.h"
#include "platform/macos/displays/MacNativeFunctions.h"
#include "platform/macos/displays/MacServiceRegistry.h"
#include "platform/macos/displays/PrivateInterfaces.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace lumenvale {

namespace {

using Kind = Finding::Kind;

constexpr char connectDirectly[] =
    "Connect the monitor straight to a USB-C or Thunderbolt socket of the Mac: the built-in HDMI socket of some "
    "models, and some docks, adapters and switches, do not pass the channel on.";

Finding good(const DisplayInfo& display, std::string text)
{
    return {Kind::good, display.id, std::move(text), {}};
}

Finding problem(const DisplayInfo& display, std::string text, std::string remedy)
{
    return {Kind::problem, display.id, std::move(text), std::move(remedy)};
}

Finding examineChannels(const std::vector<IOregService>& candidates)
{
    if (!IOAVServiceCreateWithService || !IOAVServiceReadI2C || !IOAVServiceWriteI2C)
        return {Kind::problem, "",
                "This version of macOS does not have the functions that reach external monitors.",
                "Look for a newer version of Lumenvale."};
    const auto open =
        std::ranges::count_if(candidates, [](const IOregService& each) { return bool(each.service); });
    if (candidates.empty())
        return {Kind::note, "", "The I/O registry shows no display connection with an I2C channel.",
                "Every Mac with Apple Silicon has them; external monitors are controlled on no other."};
    if (open == 0)
        return {Kind::note, "", "None of this Mac's display connections has an open I2C channel now.",
                "This is normal while no external monitor is connected."};
    return {Kind::good, "",
            open == 1 ? "One display connection of this Mac has an I2C channel."
                      : std::to_string(open) + " display connections of this Mac have an I2C channel.",
            ""};
}

Finding examineNativeFunctions()
{
    const NativeFunctions native = loadDisplayServices();
    if (native.getter && native.setter)
        return {Kind::good, "", "The system's brightness functions for its own displays were loaded.", ""};
    return {Kind::problem, "",
            "This version of macOS does not have the brightness functions for the system's own displays.",
            "Look for a newer version of Lumenvale."};
}

Finding examineInformation()
{
    if (MacDisplaySystem().hasInformation())
        return {Kind::good, "", "The system's description of displays was loaded.", ""};
    return {Kind::problem, "",
            "This version of macOS does not have CoreDisplay's description of displays, by which monitors are "
            "matched to "
            "their channels.",
            "Look for a newer version of Lumenvale."};
}

Finding examineExternal(const DisplayInfo& display, const std::vector<IOregService>& candidates)
{
    MacDisplaySystem system;
    const auto choice = chooseService(display, system, candidates);
    if (choice && choice->service)
        return problem(display, "The monitor's channel was found, but the monitor gives no valid answer on it.",
                       "Switch on DDC/CI in the monitor's own menu and refresh.\n" + std::string(connectDirectly));
    if (choice && choice->discouraged)
        return problem(display, "Several I2C channels claim to be this monitor's, so none of them is used.",
                       connectDirectly);
    if (choice && choice->dummy)
        return problem(display, "What is connected there sends no identification (EDID) and has no I2C channel.",
                       connectDirectly);
    if (choice)
        return problem(display, "The monitor's connection was found, but it has no I2C channel of its own.",
                       connectDirectly);
    return problem(display, "None of this Mac's display connections could be told to be this monitor's.",
                   "Displays over AirPlay, Sidecar, DisplayLink and the like have no channel.\nTwo monitors that "
                   "send exactly the same identification cannot be told apart; connect one of them to a socket "
                   "of another kind.");
}

Finding examineDisplay(const DisplayInfo& display, const std::vector<IOregService>& candidates)
{
    switch (display.method) {
    case ControlMethod::apple:
        return good(display, "The system's own brightness functions drive this display.");
    case ControlMethod::ddc:
        return good(display, "The monitor answers over DDC/CI.");
    case ControlMethod::unavailable:
        break;
    }
    if (display.isBuiltIn)
        return problem(display, "The system's brightness functions give no brightness for the built-in display.",
                       "Open the Mac's lid and refresh.");
    return examineExternal(display, candidates);
}

} // namespace

std::vector<Finding> MacDiagnostics::examine(const std::vector<DisplayInfo>& displays)
{
    MacServiceRegistry registry;
    const std::vector<IOregService> candidates = enumerateServices(registry);
    std::vector<Finding> findings{examineChannels(candidates), examineInformation(), examineNativeFunctions()};
    if (std::getenv("APP_SANDBOX_CONTAINER_ID"))
        findings.push_back({Kind::problem, "",
                            "The program runs in the App Sandbox, which closes the monitors' channels.",
                            "Use the program as it is distributed by this project."});
    for (const DisplayInfo& display : displays)
        findings.push_back(examineDisplay(display, candidates));
    return findings;
}

} // namespace lumenvale
