// SPDX-License-Identifier: MIT
// Displays as CoreDisplay and CoreGraphics know them. Any thread. CoreDisplay's function has no public header and
// is looked up at run time.
#pragma once

#include "hardware/DisplaySystem.h"

#include <CoreFoundation/CoreFoundation.h>
#include <memory>

namespace lumenvale {

class MacDisplaySystem final : public DisplaySystem {
public:
    MacDisplaySystem();

    /// Whether this macOS tells what `informationDictionary` returns; without it monitors cannot be told apart.
    bool hasInformation() const { return information != nullptr; }

    std::optional<PropertyDictionary> informationDictionary(std::uint32_t displayID) override;
    bool isOnline(std::uint32_t displayID) override;
    std::optional<std::string> uuid(std::uint32_t displayID) override;

private:
    using Information = CFDictionaryRef (*)(std::uint32_t displayID);

    std::shared_ptr<void> handle; ///< of the library, which goes with it; null: there is none
    Information information = nullptr;
};

} // namespace lumenvale
