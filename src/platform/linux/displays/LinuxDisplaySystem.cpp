// SPDX-License-Identifier: MIT
#include "platform/linux/displays/LinuxDisplaySystem.h"

#include "platform/linux/displays/Connector.h"

#include <algorithm>
#include <utility>

namespace lumenvale {

LinuxDisplaySystem::LinuxDisplaySystem(SystemPaths roots) : paths(std::move(roots)) {}

std::optional<PropertyDictionary> LinuxDisplaySystem::informationDictionary(std::uint32_t displayID)
{
    const std::optional<Connector> connector = findConnector(paths, displayID);
    if (!connector || !connector->isDisplay())
        return std::nullopt;
    PropertyDictionary dictionary = {{"IODisplayLocation", connector->path.string()}};
    if (const std::optional<Edid>& edid = connector->edid) {
        constexpr int millimetres = 10; // in a centimetre
        dictionary.emplace_back("DisplayYearManufacture", edid->year);
        dictionary.emplace_back("DisplayWeekManufacture", int{edid->week});
        dictionary.emplace_back("DisplayVendorID", int{edid->vendor});
        dictionary.emplace_back("DisplayProductID", int{edid->product});
        dictionary.emplace_back("DisplayHorizontalImageSize", edid->widthCm * millimetres);
        dictionary.emplace_back("DisplayVerticalImageSize", edid->heightCm * millimetres);
        dictionary.emplace_back("DisplaySerialNumber", std::int64_t{edid->serial});
        dictionary.emplace_back("DisplayProductName", PropertyDictionary{{"en_US", edid->productName}});
    }
    return dictionary;
}

bool LinuxDisplaySystem::isOnline(std::uint32_t displayID)
{
    const std::optional<Connector> connector = findConnector(paths, displayID);
    return connector && connector->isDisplay();
}

std::optional<std::string> LinuxDisplaySystem::uuid(std::uint32_t displayID)
{
    const std::vector<Connector> all = readConnectors(paths);
    const auto connector = std::find_if(all.begin(), all.end(), [displayID](const Connector& each) {
        return each.displayID == displayID && each.isDisplay();
    });
    return connector == all.end() ? std::nullopt : std::optional(displayUuid(*connector, all));
}

} // namespace lumenvale
