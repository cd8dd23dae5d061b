// SPDX-License-Identifier: MIT
#include "platform/Platform.h"

#include "platform/simulated/SimulatedPlatform.h"

namespace lumenvale {

tl::expected<Platform, std::string> makePlatform(const PlatformOptions& options, Clock& clock,
                                                 MainThread& mainThread)
{
    auto platform = options.simulationFolder ? makeSimulatedPlatform(options, clock)
                                             : makeNativePlatform(options, clock, mainThread);
    if (platform)
        platform->hardware.log = options.log;
    return platform;
}

} // namespace lumenvale
