// SPDX-License-Identifier: MIT
// What a simulated monitor's EDID says, in the two forms in which the system hands it out. Pure; any thread.
#pragma once

#include "base/PropertyList.h"
#include "platform/simulated/MonitorFile.h"

#include <string>

namespace lumenvale {

/// The identification bytes of the EDID in the form of a UUID: vendor, product (low byte first), zeros, week and
/// year, version, video input, width and height in centimetres.
std::string simulatedEdidUuid(const MonitorFile& monitor);

/// The three letters that the vendor number packs.
std::string simulatedManufacturer(std::uint32_t vendor);

/// The integers of the display's information dictionary that come from its EDID.
PropertyDictionary simulatedEdidProperties(const MonitorFile& monitor);

} // namespace lumenvale
