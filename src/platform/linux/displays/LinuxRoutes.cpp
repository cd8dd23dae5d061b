// SPDX-License-Identifier: MIT
#include "platform/linux/displays/LinuxRoutes.h"

#include "platform/linux/displays/BusSelection.h"
#include "platform/linux/displays/DisplayIdentity.h"
#include "platform/linux/displays/I2cBus.h"
#include "platform/posix/SystemError.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <map>
#include <utility>

namespace lumenvale {

namespace {

/// A transfer that may go well the next time. ENXIO is none: there the kernel does not repeat its own readings
/// either.
bool isDisturbed(const tl::expected<EdidBlock, int>& block)
{
    return block ? !parseEdid(*block)
                 : block.error() == EIO || block.error() == EREMOTEIO || block.error() == ETIMEDOUT;
}

/// What people call a socket of this type.
std::string plainName(const std::string& type)
{
    if (type == "DP" || type == "eDP")
        return type == "DP" ? "DisplayPort" : "Embedded DisplayPort";
    if (type.starts_with("HDMI"))
        return "HDMI";
    return type.starts_with("DVI") ? "DVI" : type;
}

/// The interface that the monitor's own socket has, by its EDID (from 1.4 on; byte 20, bits 0 to 3).
std::string monitorInterface(const Edid& edid)
{
    constexpr std::array<const char*, 6> names = {"", "DVI", "HDMI", "HDMI", "", "DisplayPort"};
    const bool isDigital = (edid.videoInput & 0x80) != 0;
    const std::size_t index = edid.videoInput & 0x0F;
    const bool isGiven = isDigital && edid.revision >= 4 && index < names.size();
    return isGiven ? names[index] : "";
}

/// The route without its channel. The monitor's end is told where it speaks something else than the socket.
Route describe(const Connector& connector)
{
    Route route;
    route.upstream = connector.isTypeC ? "USB-C" : plainName(connector.type);
    if (!connector.edid)
        return route;
    const std::string spoken = monitorInterface(*connector.edid);
    if (connector.kind != ConnectorKind::panel && spoken != route.upstream)
        route.downstream = spoken;
    route.serialNumber = connector.edid->serialText;
    if (connector.edid->preferred)
        route.nativeFormat = PixelSize{connector.edid->preferred->width, connector.edid->preferred->height};
    return route;
}

/// The search for the channels of one inspection. Each bus is asked for its EDID once, however many connectors it
/// may belong to.
struct Search {
    const std::vector<Connector>& connectors;
    const std::vector<I2cAdapter>& adapters;
    std::shared_ptr<I2cDriver> driver;
    HoldWait wait;
    std::chrono::milliseconds patience;
    bool isBusy = false; ///< another program kept a bus of the connector asked for last
    std::map<int, tl::expected<EdidBlock, int>> edids;

    void note(const std::string& line) const
    {
        if (wait.log)
            wait.log(line);
    }

    tl::expected<EdidBlock, int> readEdid(const I2cAdapter& adapter, IfBusy ifBusy)
    {
        const auto known = edids.find(adapter.number);
        if (known != edids.end()) {
            isBusy = isBusy || (!known->second && known->second.error() == EAGAIN);
            return known->second;
        }
        if (wait.stopping.isCancelled())
            return tl::unexpected(ECANCELED);
        I2cBus bus(adapter, driver);
        const Hold hold =
            ifBusy == IfBusy::skip ? bus.tryHold() : waitForHold([&bus] { return bus.tryHold(); }, wait, patience);
        if (!hold && ifBusy == IfBusy::skip)
            return tl::unexpected(EAGAIN);
        isBusy = isBusy || !hold;
        tl::expected<EdidBlock, int> block = bus.readEdid();
        // Of buses that may be empty only what a monitor has sent.
        const int repeats = ifBusy == IfBusy::wait || block ? 2 : 0;
        for (int left = repeats; left > 0 && isDisturbed(block); --left) {
            wait.pause(std::chrono::milliseconds(20));
            block = wait.stopping.isCancelled() ? tl::unexpected(ECANCELED) : bus.readEdid();
        }
        note("i2c-" + std::to_string(adapter.number) + " (" + adapter.name + "): EDID " +
             (block ? std::string("read") : "not read: " + systemErrorText(block.error())));
        edids.emplace(adapter.number, block);
        return block;
    }

    std::shared_ptr<AVService> openChannel(const Connector& connector)
    {
        isBusy = false;
        if (connector.kind != ConnectorKind::external || !connector.edid)
            return nullptr;
        const std::optional<I2cAdapter> bus =
            selectBus(busCandidates(connector, connectors, adapters), *connector.edid,
                      [this](const I2cAdapter& adapter, IfBusy ifBusy) { return readEdid(adapter, ifBusy); });
        note(connector.card + "-" + connector.name +
             (bus ? ": channel i2c-" + std::to_string(bus->number) : std::string(": no channel")));
        return bus ? std::make_shared<I2cBus>(*bus, driver) : nullptr;
    }
};

} // namespace

LinuxRoutes::LinuxRoutes(std::shared_ptr<DisplaySnapshot> snapshot, std::shared_ptr<I2cDriver> driver,
                         HoldWait wait, std::shared_ptr<DisplayTroubles> troubles, Explanation explain)
    : snapshot(std::move(snapshot)), driver(std::move(driver)), wait(std::move(wait)),
      troubles(std::move(troubles)), explain(std::move(explain))
{
}

std::vector<Route> LinuxRoutes::find(const std::vector<DisplayInfo>& displays, std::chrono::milliseconds patience)
{
    snapshot->take();
    Search search{snapshot->connectors(), snapshot->adapters(), driver, wait, patience, false, {}};
    std::vector<Route> routes;
    for (const DisplayInfo& display : displays) {
        Route& route = routes.emplace_back();
        if (const Connector* connector = snapshot->display(display.displayID)) {
            route = describe(*connector);
            if (std::shared_ptr<AVService> channel = search.openChannel(*connector))
                route.service = notingTroubles(std::move(channel), display.displayID, troubles);
            else if (search.isBusy)
                troubles->note(display.displayID, {DisplayTrouble::Kind::busy});
            else
                troubles->clear(display.displayID);
        }
    }
    return routes;
}

std::optional<std::string> LinuxRoutes::identifier(std::uint32_t displayID)
{
    const Connector* display = snapshot->display(displayID);
    return display ? std::optional(displayUuid(*display, snapshot->connectors())) : std::nullopt;
}

bool LinuxRoutes::isDark(std::uint32_t displayID)
{
    const Connector* display = snapshot->display(displayID);
    if (!display)
        return false;
    Connector now = *display;
    readPowerState(now);
    return now.isDark();
}

} // namespace lumenvale
