// SPDX-License-Identifier: MIT
#include "platform/linux/displays/DisplayIdentity.h"

#include <QByteArray>
#include <QUuid>
#include <algorithm>
#include <array>

namespace lumenvale {

namespace {

/// The names below are made within this namespace; changing it or them would orphan all presets.
constexpr QUuid monitorNamespace(0x5b0f7a52, 0x6c1e, 0x4d0b, 0x9a, 0x37, 0x21, 0xc4, 0x8e, 0x60, 0xf3, 0x19);

/// What the monitor says of itself and says alike on each of its sockets.
std::string identityText(const Edid& edid)
{
    std::string text = edid.manufacturer;
    for (const std::uint32_t part : {std::uint32_t{edid.vendor}, std::uint32_t{edid.product}, edid.serial,
                                     std::uint32_t{edid.week}, static_cast<std::uint32_t>(edid.year)})
        text += '|' + std::to_string(part);
    return text + '|' + edid.productName + '|' + edid.serialText;
}

/// The card's place on its bus rather than its number, which changes from start to start.
std::string placeText(const Connector& connector)
{
    const std::string device = connector.device.filename().string();
    return (device.empty() ? connector.card : device) + '/' + connector.name;
}

std::string ownName(const Connector& connector)
{
    if (connector.kind == ConnectorKind::panel)
        return "Built-in Display";
    return connector.edid ? connector.edid->productName : std::string();
}

} // namespace

std::string displayUuid(const Connector& connector, const std::vector<Connector>& all)
{
    std::string name = connector.edid ? identityText(*connector.edid) : std::string();
    const bool isShared = std::any_of(all.begin(), all.end(), [&](const Connector& other) {
        return connector.path != other.path && other.isConnected && other.edid &&
               identityText(*other.edid) == name;
    });
    if (!connector.edid || !hasSerial(*connector.edid) || isShared)
        name += '@' + placeText(connector);
    const QUuid uuid = QUuid::createUuidV5(monitorNamespace, QByteArray::fromStdString(name));
    return uuid.toString(QUuid::WithoutBraces).toUpper().toStdString();
}

std::string displayName(const Connector& connector, const std::vector<Connector>& all)
{
    std::string name = ownName(connector);
    const bool isShared = std::any_of(all.begin(), all.end(), [&](const Connector& other) {
        return connector.path != other.path && other.isDisplay() && ownName(other) == name;
    });
    if (!name.empty() && !isShared)
        return name;
    return (name.empty() ? std::string("Display") : name) + " (" + connector.name + ")";
}

} // namespace lumenvale
