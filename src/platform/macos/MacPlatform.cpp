// SPDX-License-Identifier: MIT
#include "base/Identity.h"
#include "hardware/ServiceDiscovery.h"
#include "platform/Platform.h"
#include "platform/macos/displays/MacDiagnostics.h"
#include "platform/macos/displays/MacDisplaySystem.h"
#include "platform/macos/displays/MacNativeFunctions.h"
#include "platform/macos/displays/MacScreenSource.h"
#include "platform/macos/displays/MacServiceRegistry.h"
#include "platform/macos/displays/MacSystemEvents.h"
#include "platform/macos/foundation/MacUserDefaults.h"
#include "platform/macos/shell/MacHotKeyService.h"
#include "platform/macos/shell/SystemStartupService.h"

namespace lumenvale {

Platform makeNativePlatform(const PlatformOptions& options, Clock& clock, MainThread& /*mainThread*/)
{
    Platform platform;
    platform.defaults = std::make_unique<MacUserDefaults>(applicationIdentifier, clock);
    platform.screens = std::make_unique<MacScreenSource>();
    platform.events = std::make_unique<MacSystemEvents>();
    platform.diagnostics = std::make_unique<MacDiagnostics>();
    platform.startup = makeNativeStartupService(options);
    platform.hotKeys = makeNativeHotKeyService(options);
    platform.hardware.routes = std::make_unique<ServiceDiscovery>(std::make_unique<MacServiceRegistry>(),
                                                                  std::make_unique<MacDisplaySystem>());
    platform.hardware.native = loadDisplayServices();
    return platform;
}

std::unique_ptr<StartupService> makeNativeStartupService(const PlatformOptions& options)
{
    if (options.simulationFolder)
        return std::make_unique<NoLoginItem>();
    return std::make_unique<SystemStartupService>();
}

std::unique_ptr<HotKeyService> makeNativeHotKeyService(const PlatformOptions& options)
{
    return options.hasWindowSystem ? std::make_unique<MacHotKeyService>() : nullptr;
}

} // namespace lumenvale
