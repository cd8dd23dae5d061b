// SPDX-License-Identifier: MIT
#include "platform/linux/displays/LinuxServiceRegistry.h"

#include "platform/linux/displays/BusSelection.h"
#include "platform/linux/displays/I2cBus.h"
#include "platform/posix/SystemError.h"

#include <array>
#include <map>
#include <span>
#include <utility>
#include <vector>

namespace lumenvale {

namespace {

void appendHex(std::string& text, std::span<const std::uint8_t> bytes)
{
    constexpr char digits[] = "0123456789ABCDEF";
    for (const std::uint8_t byte : bytes) {
        text += digits[byte >> 4];
        text += digits[byte & 0x0F];
    }
}

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

PropertyDictionary displayAttributes(const Edid& edid)
{
    PropertyDictionary product = {{"ManufacturerID", edid.manufacturer},
                                  {"ProductName", edid.productName},
                                  {"SerialNumber", std::int64_t{edid.serial}},
                                  {"AlphanumericSerialNumber", edid.serialText}};
    PropertyDictionary attributes = {{"ProductAttributes", std::move(product)}};
    if (edid.preferred) {
        attributes.emplace_back("NativeFormatHorizontalPixels", edid.preferred->width);
        attributes.emplace_back("NativeFormatVerticalPixels", edid.preferred->height);
    }
    return attributes;
}

class FramebufferEntry final : public RegistryEntry {
public:
    explicit FramebufferEntry(const Connector& shown) : connector(shown) {}

    std::string name() const override { return "IOMobileFramebufferShim"; }
    std::string path() const override { return connector.path.string(); }
    std::shared_ptr<AVService> createAVService() const override { return nullptr; }

    std::optional<PropertyValue> property(const std::string& key) const override
    {
        if (key == "Transport") {
            const Transport transport = transportOf(connector);
            return PropertyDictionary{{"Upstream", transport.upstream}, {"Downstream", transport.downstream}};
        }
        if (key == "EDID UUID" && connector.edid)
            return edidUuid(*connector.edid);
        if (key == "DisplayAttributes" && connector.edid)
            return displayAttributes(*connector.edid);
        return std::nullopt;
    }

private:
    const Connector& connector;
};

/// What one walk has learned. Each bus is asked for its EDID once, however many connectors it may belong to.
struct Walk {
    std::vector<Connector> connectors;
    std::vector<I2cAdapter> adapters;
    std::shared_ptr<I2cDriver> driver;
    Pause pause;
    LogSink log;
    std::map<int, std::optional<EdidBlock>> edids;

    void note(const std::string& line) const
    {
        if (log)
            log(line);
    }

    std::optional<EdidBlock> readEdid(const I2cAdapter& adapter)
    {
        const auto known = edids.find(adapter.number);
        if (known != edids.end())
            return known->second;
        const tl::expected<EdidBlock, int> block = I2cBus(adapter, driver, pause).readEdid();
        note("i2c-" + std::to_string(adapter.number) + " (" + adapter.name + "): EDID " +
             (block ? std::string("read") : "not read: " + systemErrorText(block.error())));
        const std::optional<EdidBlock> result = block ? std::optional(*block) : std::nullopt;
        edids.emplace(adapter.number, result);
        return result;
    }

    std::shared_ptr<AVService> open(const Connector& connector)
    {
        if (!connector.edid)
            return nullptr;
        const std::optional<I2cAdapter> bus =
            selectBus(busCandidates(connector, connectors, adapters), *connector.edid,
                      [this](const I2cAdapter& adapter) { return readEdid(adapter); });
        note(connector.card + "-" + connector.name +
             (bus ? ": channel i2c-" + std::to_string(bus->number) : std::string(": no channel")));
        return bus ? std::make_shared<I2cBus>(*bus, driver, pause) : nullptr;
    }
};

class ChannelEntry final : public RegistryEntry {
public:
    ChannelEntry(const Connector& shown, Walk& current) : connector(shown), walk(current) {}

    std::string name() const override { return "DCPAVServiceProxy"; }
    std::string path() const override { return (connector.path / "ddc").string(); }

    std::optional<PropertyValue> property(const std::string& key) const override
    {
        if (key == "Location")
            return connector.kind == ConnectorKind::panel ? "Embedded" : "External";
        return std::nullopt;
    }

    std::shared_ptr<AVService> createAVService() const override
    {
        return connector.kind == ConnectorKind::external ? walk.open(connector) : nullptr;
    }

private:
    const Connector& connector;
    Walk& walk;
};

} // namespace

LinuxServiceRegistry::LinuxServiceRegistry(SystemPaths roots, std::shared_ptr<I2cDriver> calls, Pause wait,
                                           LogSink sink)
    : paths(std::move(roots)), driver(std::move(calls)), pause(std::move(wait)), log(std::move(sink))
{
}

void LinuxServiceRegistry::forEachEntry(const std::function<void(const RegistryEntry&)>& visit)
{
    Walk walk{readConnectors(paths), readDisplayAdapters(paths), driver, pause, log, {}};
    for (const Connector& connector : walk.connectors) {
        if (!connector.isDisplay())
            continue;
        visit(FramebufferEntry(connector));
        visit(ChannelEntry(connector, walk));
    }
}

std::string edidUuid(const Edid& edid)
{
    const std::span<const std::uint8_t> block(edid.block);
    std::string text;
    appendHex(text, block.subspan(8, 4));
    text += "-0000-0000-";
    appendHex(text, block.subspan(16, 2));
    text += '-';
    appendHex(text, block.subspan(18, 6));
    return text;
}

Transport transportOf(const Connector& connector)
{
    Transport transport{connector.isTypeC ? "USB-C" : plainName(connector.type), {}};
    const std::string spoken = connector.edid ? monitorInterface(*connector.edid) : std::string();
    const bool isPanel = connector.kind == ConnectorKind::panel;
    if (!isPanel && !spoken.empty() && spoken != transport.upstream)
        transport.downstream = spoken;
    return transport;
}

} // namespace lumenvale
