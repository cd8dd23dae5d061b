// SPDX-License-Identifier: MIT
#include "platform/Platform.h"

#include "platform/simulated/SimulatedPlatform.h"

namespace lumenvale {

tl::expected<Platform, std::string> makePlatform(const PlatformOptions& options, Clock& clock,
                                                 MainThread& mainThread)
{
    tl::expected<Platform, std::string> platform;
    if (options.simulationFolder) {
        platform = makeSimulatedPlatform(options, clock);
        if (!platform)
            return platform;
        platform->startup = makeNativeStartupService(options);
        platform->hotKeys = makeNativeHotKeyService(options);
    } else {
        platform = makeNativePlatform(options, clock, mainThread);
    }
    platform->hardware.log = options.log;
    return platform;
}

} // namespace lumenvale
