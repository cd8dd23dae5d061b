// SPDX-License-Identifier: MIT
#include "platform/linux/displays/Connector.h"

#include <algorithm>
#include <array>
#include <map>
#include <string_view>
#include <utility>

namespace lumenvale {

namespace {

struct ConnectorType {
    std::string_view name; ///< as the kernel writes it
    ConnectorKind kind;
};

/// The kernel's names (drm_connector.c). The order is part of the display numbers: new ones go to the end.
constexpr std::array<ConnectorType, 20> connectorTypes = {{
    {"VGA", ConnectorKind::external},    {"DVI-I", ConnectorKind::external},
    {"DVI-D", ConnectorKind::external},  {"DVI-A", ConnectorKind::external},
    {"Composite", ConnectorKind::other}, {"SVIDEO", ConnectorKind::other},
    {"LVDS", ConnectorKind::panel},      {"Component", ConnectorKind::other},
    {"DIN", ConnectorKind::other},       {"DP", ConnectorKind::external},
    {"HDMI-A", ConnectorKind::external}, {"HDMI-B", ConnectorKind::external},
    {"TV", ConnectorKind::other},        {"eDP", ConnectorKind::panel},
    {"Virtual", ConnectorKind::other},   {"DSI", ConnectorKind::panel},
    {"DPI", ConnectorKind::panel},       {"Writeback", ConnectorKind::unusable},
    {"SPI", ConnectorKind::other},       {"USB", ConnectorKind::other},
}};

/// "card0-DP-1" in its parts; none for other names.
std::optional<std::pair<std::string, std::string>> splitEntryName(const std::string& entry)
{
    const std::size_t hyphen = entry.find('-');
    if (hyphen == std::string::npos || !entry.starts_with("card") || hyphen + 1 == entry.size())
        return std::nullopt;
    return std::pair(entry.substr(0, hyphen), entry.substr(hyphen + 1));
}

std::string typeOf(const std::string& connectorName)
{
    return connectorName.substr(0, std::min(connectorName.rfind('-'), connectorName.size()));
}

std::optional<int> busNumber(const std::string& entry)
{
    constexpr std::string_view prefix = "i2c-";
    if (!entry.starts_with(prefix))
        return std::nullopt;
    const std::optional<std::int64_t> number = parseNumber(std::string_view(entry).substr(prefix.size()));
    return number && *number >= 0 && *number <= 0xFFFFF ? std::optional(static_cast<int>(*number)) : std::nullopt;
}

/// The picture of this driver's connectors may be set past the kernel's records.
bool leavesRecordsAside(const std::string& driver) { return driver == "nvidia"; }

/// What all connectors of a card share.
struct Card {
    std::filesystem::path device; ///< resolved
    std::string driver;
};

Card readCard(const std::filesystem::path& entry)
{
    const std::filesystem::path device = linkTarget(linkTarget(entry) / "device");
    return {device, linkTarget(device / "driver").filename().string()};
}

void readState(Connector& connector)
{
    constexpr std::size_t edidLimit = 128; // the base block
    connector.isConnected = readAttribute(connector.path / "status") == "connected";
    if (!connector.isConnected)
        return;
    readPowerState(connector);
    connector.edid = parseEdid(readBytes(connector.path / "edid", edidLimit));
}

void readWiring(Connector& connector)
{
    for (const std::string& entry : entryNames(connector.path)) {
        if (const std::optional<int> bus = busNumber(entry))
            connector.ownBuses.push_back(*bus);
        else if (entry == "ddc")
            connector.linkedBus = busNumber(linkTarget(connector.path / entry).filename().string());
        else if (entry == "typec_connector")
            connector.isTypeC = true;
    }
}

/// The connector without its state.
std::optional<Connector> nameConnector(const std::filesystem::path& directory, const std::string& entry)
{
    const auto parts = splitEntryName(entry);
    if (!parts)
        return std::nullopt;
    Connector connector;
    connector.card = parts->first;
    connector.name = parts->second;
    connector.type = typeOf(connector.name);
    const auto type = std::find_if(connectorTypes.begin(), connectorTypes.end(),
                                   [&](const ConnectorType& each) { return each.name == connector.type; });
    if (type != connectorTypes.end())
        connector.kind = type->kind;
    connector.displayID = displayNumber(connector.card, connector.name);
    connector.path = directory / entry;
    return connector;
}

/// Some desktops take every connector out of use to save power. When nothing shows a picture at all, the
/// connected displays are therefore still there, and dark.
void countDarkDisplays(std::vector<Connector>& connectors)
{
    if (std::any_of(connectors.begin(), connectors.end(), [](const Connector& each) { return each.isDisplay(); }))
        return;
    for (Connector& each : connectors) {
        if (each.isConnected)
            each.isDriven = each.isAsleep = true;
    }
}

} // namespace

std::vector<Connector> readConnectors(const SystemPaths& paths)
{
    const std::filesystem::path directory = paths.sysfs / "class/drm";
    std::map<std::string, Card> cards;
    std::vector<Connector> connectors;
    for (const std::string& entry : entryNames(directory)) {
        std::optional<Connector> connector = nameConnector(directory, entry);
        if (!connector)
            continue;
        if (!cards.contains(connector->card))
            cards.emplace(connector->card, readCard(directory / connector->card));
        const Card& card = cards.at(connector->card);
        connector->device = card.device;
        connector->driver = card.driver;
        connector->node = linkTarget(connector->path);
        readState(*connector);
        readWiring(*connector);
        connectors.push_back(std::move(*connector));
    }
    countDarkDisplays(connectors);
    std::stable_partition(connectors.begin(), connectors.end(),
                          [](const Connector& each) { return each.kind == ConnectorKind::panel; });
    return connectors;
}

void readPowerStates(std::vector<Connector>& connectors)
{
    for (Connector& each : connectors) {
        if (each.isConnected)
            readPowerState(each);
    }
    countDarkDisplays(connectors);
}

void readPowerState(Connector& connector)
{
    if (leavesRecordsAside(connector.driver)) {
        connector.isDriven = true;
        return;
    }
    const std::optional<std::string> enabled = readAttribute(connector.path / "enabled");
    const std::optional<std::string> dpms = readAttribute(connector.path / "dpms");
    connector.isDriven = !enabled || *enabled == "enabled";
    connector.isAsleep = dpms && !dpms->empty() && *dpms != "On";
}

std::uint32_t displayNumber(const std::string& card, const std::string& connectorName)
{
    const std::string typeName = typeOf(connectorName);
    const auto type = std::find_if(connectorTypes.begin(), connectorTypes.end(),
                                   [&](const ConnectorType& each) { return each.name == typeName; });
    const std::optional<std::int64_t> cardIndex = parseNumber(std::string_view(card).substr(4));
    const std::optional<std::int64_t> index =
        parseNumber(std::string_view(connectorName).substr(std::min(typeName.size() + 1, connectorName.size())));
    const auto fitsByte = [](std::optional<std::int64_t> value) { return value && *value >= 0 && *value <= 255; };
    if (type != connectorTypes.end() && fitsByte(cardIndex) && *cardIndex < 128 && fitsByte(index)) {
        const auto typeNumber = static_cast<std::uint32_t>(type - connectorTypes.begin()) + 1;
        return static_cast<std::uint32_t>(*cardIndex) << 16 | typeNumber << 8 | static_cast<std::uint32_t>(*index);
    }
    std::uint32_t hash = 2166136261; // FNV-1a
    for (const char character : card + "-" + connectorName)
        hash = (hash ^ static_cast<std::uint8_t>(character)) * 16777619;
    return hash | 0x80000000;
}

} // namespace lumenvale
