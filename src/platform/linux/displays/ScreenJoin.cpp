// SPDX-License-Identifier: MIT
#include "platform/linux/displays/ScreenJoin.h"

#include "platform/linux/displays/DisplayIdentity.h"

#include <cmath>
#include <optional>
#include <utility>

namespace lumenvale {

namespace {

/// The connector's name as X servers write it: "HDMI-1" for "HDMI-A-1", some without the hyphen before the index.
bool isSameOutput(const std::string& outputName, const Connector& connector)
{
    if (outputName == connector.name)
        return true;
    std::string shortened = connector.name;
    if (const std::size_t letter = shortened.find("-A-"); letter != std::string::npos)
        shortened.erase(letter, 2);
    if (outputName == shortened)
        return true;
    shortened.erase(shortened.rfind('-'), 1);
    return outputName == shortened;
}

/// How many signs speak for the two being the same; 0: none.
int likeness(const WindowScreen& screen, const Connector& connector)
{
    int signs = isSameOutput(screen.name, connector) ? 2 : 0;
    if (!connector.edid)
        return signs;
    const Edid& edid = *connector.edid;
    const bool isSerial = !screen.serialNumber.empty() && (screen.serialNumber == edid.serialText ||
                                                           screen.serialNumber == std::to_string(edid.serial));
    const bool isModel = !screen.model.empty() && screen.model == edid.productName;
    return signs + (isSerial ? 4 : 0) + (isModel ? 2 : 0);
}

struct Pairing {
    std::vector<const Connector*> displays;
    std::vector<const Connector*> ofScreen; ///< by position in the list of screens
};

bool isTaken(const Pairing& pairing, const Connector* connector)
{
    for (const Connector* each : pairing.ofScreen) {
        if (each == connector)
            return true;
    }
    return false;
}

/// Joins the likeliest pair that is still free; false when nothing with at least one sign is left.
bool joinLikeliest(Pairing& pairing, const std::vector<WindowScreen>& screens)
{
    int best = 0;
    std::size_t bestScreen = 0;
    const Connector* bestConnector = nullptr;
    for (std::size_t i = 0; i < screens.size(); ++i) {
        for (const Connector* connector : pairing.displays) {
            if (pairing.ofScreen[i] || isTaken(pairing, connector))
                continue;
            if (const int signs = likeness(screens[i], *connector); signs > best) {
                best = signs;
                bestScreen = i;
                bestConnector = connector;
            }
        }
    }
    if (bestConnector)
        pairing.ofScreen[bestScreen] = bestConnector;
    return bestConnector != nullptr;
}

Pairing pairBySigns(const std::vector<Connector>& connectors, const std::vector<WindowScreen>& screens)
{
    Pairing pairing;
    for (const Connector& connector : connectors) {
        if (connector.isDisplay())
            pairing.displays.push_back(&connector);
    }
    pairing.ofScreen.resize(screens.size());
    while (joinLikeliest(pairing, screens)) {
    }
    return pairing;
}

Pairing pair(const std::vector<Connector>& connectors, const std::vector<WindowScreen>& screens)
{
    Pairing pairing = pairBySigns(connectors, screens);
    // What is left on both sides belongs together, whatever it is called.
    for (std::size_t i = 0; i < screens.size(); ++i) {
        for (const Connector* connector : pairing.displays) {
            if (!pairing.ofScreen[i] && !isTaken(pairing, connector))
                pairing.ofScreen[i] = connector;
        }
    }
    return pairing;
}

std::uint32_t nameNumber(const std::string& name)
{
    return displayNumber("card", "window-" + name); // no index: always a hash
}

Screen describe(const Connector* connector, const std::vector<Connector>& all)
{
    Screen screen;
    screen.displayID = connector->displayID;
    screen.uuid = displayUuid(*connector, all);
    screen.name = displayName(*connector, all);
    screen.isBuiltIn = connector->kind == ConnectorKind::panel;
    if (connector->edid) {
        screen.vendor = connector->edid->vendor;
        screen.model = connector->edid->product;
        screen.serial = connector->edid->serial;
    }
    return screen;
}

std::optional<ScreenMode> find(const KernelModes& modes, const Screen& screen)
{
    const auto found = screen.displayID ? modes.find(*screen.displayID) : modes.end();
    return found == modes.end() ? std::nullopt : std::optional(found->second);
}

/// The mode that the window system knows, else that of the kernel, which does not know how the picture is turned,
/// else what the points come to.
ScreenMode modeOf(const WindowScreen& window, std::optional<ScreenMode> kernelMode)
{
    if (window.mode)
        return *window.mode;
    if (!kernelMode)
        return {std::llround(window.width * window.pixelRatio), std::llround(window.height * window.pixelRatio),
                window.refreshRate};
    const bool isTurned = (window.width < window.height) != (kernelMode->pixelWidth < kernelMode->pixelHeight);
    if (isTurned)
        std::swap(kernelMode->pixelWidth, kernelMode->pixelHeight);
    return *kernelMode;
}

void addWindow(Screen& screen, const WindowScreen& window, const KernelModes& modes)
{
    screen.isMain = window.isPrimary;
    screen.frameWidth = window.width;
    screen.frameHeight = window.height;
    screen.mode = modeOf(window, find(modes, screen));
}

} // namespace

std::vector<Screen> joinScreens(const std::vector<Connector>& connectors, const std::vector<WindowScreen>& screens,
                                const KernelModes& modes)
{
    const Pairing pairing = pair(connectors, screens);
    std::vector<Screen> result;
    for (std::size_t i = 0; i < screens.size(); ++i) {
        const WindowScreen& window = screens[i];
        Screen screen;
        if (pairing.ofScreen[i]) {
            screen = describe(pairing.ofScreen[i], connectors);
        } else if (!window.name.empty()) {
            screen.displayID = nameNumber(window.name);
            screen.name = window.model.empty() ? window.name : window.model;
        } else {
            continue;
        }
        addWindow(screen, window, modes);
        result.push_back(std::move(screen));
    }
    for (const Connector* connector : pairing.displays) {
        if (isTaken(pairing, connector))
            continue;
        result.push_back(describe(connector, connectors));
        result.back().mode = find(modes, result.back());
    }
    return result;
}

std::vector<Screen> describeDisplays(const std::vector<Connector>& connectors,
                                     const std::vector<WindowScreen>& outputs, const KernelModes& modes)
{
    const Pairing pairing = pairBySigns(connectors, outputs);
    std::vector<Screen> result;
    for (const Connector* connector : pairing.displays) {
        Screen& screen = result.emplace_back(describe(connector, connectors));
        screen.mode = find(modes, screen);
        for (std::size_t i = 0; i < outputs.size(); ++i) {
            if (pairing.ofScreen[i] == connector)
                addWindow(screen, outputs[i], modes);
        }
    }
    if (result.size() == 1)
        result.front().isMain = true; // a single display is the main one
    return result;
}

} // namespace lumenvale
