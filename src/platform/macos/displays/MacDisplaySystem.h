// SPDX-License-Identifier: MIT
// Displays as CoreDisplay and CoreGraphics know them. Stateless.
#pragma once

#include "hardware/DisplaySystem.h"

namespace lumenvale {

class MacDisplaySystem final : public DisplaySystem {
public:
    std::optional<PropertyDictionary> informationDictionary(std::uint32_t displayID) override;
    bool isOnline(std::uint32_t displayID) override;
    std::optional<std::string> uuid(std::uint32_t displayID) override;
};

} // namespace lumenvale
