// SPDX-License-Identifier: MIT
#include "platform/macos/shell/SystemStartupService.h"

#include "platform/macos/foundation/NSStrings.h"

#import <ServiceManagement/ServiceManagement.h>

namespace lumenvale {

StartupStatus SystemStartupService::status()
{
    switch (SMAppService.mainAppService.status) {
    case SMAppServiceStatusNotRegistered:
        return StartupStatus::off;
    case SMAppServiceStatusEnabled:
        return StartupStatus::enabled;
    case SMAppServiceStatusRequiresApproval:
        return StartupStatus::requiresApproval;
    default: // not found, and what a later system may add
        return StartupStatus::unavailable;
    }
}

tl::expected<void, std::string> SystemStartupService::setEnabled(bool enabled)
{
    SMAppService* const service = SMAppService.mainAppService;
    NSError* error = nil;
    const BOOL done =
        enabled ? [service registerAndReturnError:&error] : [service unregisterAndReturnError:&error];
    if (done)
        return {};
    return tl::unexpected(toStdString(error.localizedDescription));
}

void SystemStartupService::openSystemSettings() { [SMAppService openSystemSettingsLoginItems]; }

} // namespace lumenvale
