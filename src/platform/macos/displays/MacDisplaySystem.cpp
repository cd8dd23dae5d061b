// SPDX-License-Identifier: MIT
#include "platform/macos/displays/MacDisplaySystem.h"

#include "platform/macos/displays/DisplayFacts.h"
#include "platform/macos/displays/PrivateInterfaces.h"
#include "platform/macos/foundation/PropertyConversion.h"

#include <CoreGraphics/CoreGraphics.h>

namespace lumenvale {

std::optional<PropertyDictionary> MacDisplaySystem::informationDictionary(std::uint32_t displayID)
{
    if (!CoreDisplay_DisplayCreateInfoDictionary)
        return std::nullopt;
    const AutoreleasePool pool;
    const CFReference<CFDictionaryRef> information(CoreDisplay_DisplayCreateInfoDictionary(displayID));
    const auto value = toPropertyValue(information.get());
    const auto* dictionary = value ? value->as<PropertyDictionary>() : nullptr;
    return dictionary ? std::optional(*dictionary) : std::nullopt;
}

bool MacDisplaySystem::isOnline(std::uint32_t displayID)
{
    const AutoreleasePool pool;
    return CGDisplayIsOnline(displayID) != 0;
}

std::optional<std::string> MacDisplaySystem::uuid(std::uint32_t displayID)
{
    const AutoreleasePool pool;
    return displayUuid(displayID);
}

} // namespace lumenvale
