// SPDX-License-Identifier: MIT
#include "platform/Platform.h"

#include "platform/simulated/SimulatedPlatform.h"

namespace lumenvale {

tl::expected<Platform, std::string> makePlatform(const PlatformOptions& options, Clock& clock,
                                                 MainThread& mainThread)
{
    auto platform = options.simulationFolder ? makeSimulatedPlatform(options, clock)
                                             : makeNativePlatform(options, clock, mainThread);
    if (!platform)
        return platform;
    platform->hardware.log = options.log;
    platform->words = nativeWords();
    if (options.simulationFolder) // a simulated monitor is no backlight of this system
        platform->words.nativeMethod = rawValue(ControlMethod::apple);
    platform->program = makeNativeRunningProgram(options);
    return platform;
}

} // namespace lumenvale
