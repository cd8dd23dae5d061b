// SPDX-License-Identifier: MIT
#include "platform/macos/displays/MacNativeFunctions.h"

#include "platform/macos/foundation/MacReferences.h"

#include <dlfcn.h>

namespace lumenvale {

namespace {

/// There is no such file: the library is in the system's shared cache, where only dlopen finds it.
constexpr char displayServicesPath[] =
    "/System/Library/PrivateFrameworks/DisplayServices.framework/DisplayServices";

} // namespace

NativeFunctions loadDisplayServices()
{
    using Getter = std::int32_t (*)(std::uint32_t displayID, float* brightness);
    using Setter = std::int32_t (*)(std::uint32_t displayID, float brightness);

    NativeFunctions functions;
    void* const handle = dlopen(displayServicesPath, RTLD_LAZY);
    if (!handle)
        return functions;
    functions.handle = std::shared_ptr<void>(handle, [](void* opened) { dlclose(opened); });
    if (auto* getter = reinterpret_cast<Getter>(dlsym(handle, "DisplayServicesGetBrightness")))
        functions.getter = [getter](std::uint32_t displayID, float* brightness) {
            const AutoreleasePool pool;
            return getter(displayID, brightness);
        };
    if (auto* setter = reinterpret_cast<Setter>(dlsym(handle, "DisplayServicesSetBrightness")))
        functions.setter = [setter](std::uint32_t displayID, float brightness) {
            const AutoreleasePool pool;
            return setter(displayID, brightness);
        };
    return functions;
}

} // namespace lumenvale
