// SPDX-License-Identifier: MIT
// What the system knows of a display by its number. Hardware thread only. Answers hold for the moment of the
// call, since they decide whether a display was replaced behind its number.
#pragma once

#include "base/PropertyList.h"

#include <cstdint>
#include <optional>
#include <string>

namespace lumenvale {

class DisplaySystem {
public:
    virtual ~DisplaySystem() = default;

    /// The display's information dictionary, or none. Keys read: "DisplayYearManufacture",
    /// "DisplayWeekManufacture", "DisplayVendorID", "DisplayProductID", "DisplayVerticalImageSize",
    /// "DisplayHorizontalImageSize" (millimetres), "DisplaySerialNumber" (integers), "IODisplayLocation" (string),
    /// "DisplayProductName" (dictionary from locale to string).
    virtual std::optional<PropertyDictionary> informationDictionary(std::uint32_t displayID) = 0;

    /// True while the display is attached.
    virtual bool isOnline(std::uint32_t displayID) = 0;

    /// The display's UUID in canonical form, or none.
    virtual std::optional<std::string> uuid(std::uint32_t displayID) = 0;
};

} // namespace lumenvale
