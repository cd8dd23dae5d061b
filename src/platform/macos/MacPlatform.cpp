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
#include "platform/posix/FileLock.h"
#include "platform/posix/InstanceLock.h"

#include <fcntl.h>

namespace lumenvale {

Platform makeNativePlatform(const PlatformOptions& /*options*/, Clock& clock, MainThread& /*mainThread*/)
{
    Platform platform;
    platform.defaults = std::make_unique<MacUserDefaults>(applicationIdentifier, clock);
    platform.screens = std::make_unique<MacScreenSource>();
    platform.events = std::make_unique<MacSystemEvents>();
    platform.diagnostics = std::make_unique<MacDiagnostics>();
    makeFolder(supportFolder(applicationIdentifier)); // what fails shows where the folder is used
    // The system locks neither channels nor panels: copies of this program agree on a file for all of them.
    const auto holder = [file = supportFolder(applicationIdentifier) + "/hardware.lock",
                         last = std::make_shared<std::weak_ptr<void>>()] {
        Hold hold = last->lock();
        if (!hold)
            *last = hold = tryHoldFile(file, O_CREAT);
        return hold;
    };
    platform.hardware.routes = std::make_unique<ServiceDiscovery>(std::make_unique<MacServiceRegistry>(holder),
                                                                  std::make_unique<MacDisplaySystem>());
    platform.hardware.native = loadDisplayServices();
    platform.hardware.native.tryHold = [holder](std::uint32_t /*displayID*/) { return holder(); };
    return platform;
}

Words nativeWords() { return portableWords; }
std::unique_ptr<RunningProgram> makeNativeRunningProgram(const PlatformOptions&) { return nullptr; }

} // namespace lumenvale
