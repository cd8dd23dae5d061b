// SPDX-License-Identifier: MIT
#include "platform/macos/displays/MacDisplaySystem.h"

#include "platform/macos/displays/DisplayFacts.h"
#include "platform/macos/foundation/PropertyConversion.h"

#include <CoreGraphics/CoreGraphics.h>

#include <dlfcn.h>

namespace lumenvale {

namespace {

/// In the system's shared cache, where only dlopen finds it.
constexpr char coreDisplayPath[] = "/System/Library/Frameworks/CoreDisplay.framework/CoreDisplay";

} // namespace

MacDisplaySystem::MacDisplaySystem()
{
    void* const opened = dlopen(coreDisplayPath, RTLD_LAZY);
    if (!opened)
        return;
    handle = std::shared_ptr<void>(opened, [](void* library) { dlclose(library); });
    information = reinterpret_cast<Information>(dlsym(opened, "CoreDisplay_DisplayCreateInfoDictionary"));
}

std::optional<PropertyDictionary> MacDisplaySystem::informationDictionary(std::uint32_t displayID)
{
    if (!information)
        return std::nullopt;
    const AutoreleasePool pool;
    const CFReference<CFDictionaryRef> created(information(displayID));
    const auto value = toPropertyValue(created.get());
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
