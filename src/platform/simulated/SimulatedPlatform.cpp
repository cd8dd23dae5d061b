// SPDX-License-Identifier: MIT
#include "platform/simulated/SimulatedPlatform.h"

#include "hardware/ServiceDiscovery.h"
#include "platform/qt/JsonUserDefaults.h"
#include "platform/simulated/SimulatedDiagnostics.h"
#include "platform/simulated/SimulatedDisplaySystem.h"
#include "platform/simulated/SimulatedRegistry.h"
#include "platform/simulated/SimulatedScreens.h"

#include <QFileInfo>

namespace lumenvale {

tl::expected<Platform, std::string> makeSimulatedPlatform(const PlatformOptions& options, Clock& clock)
{
    const std::string& folder = *options.simulationFolder;
    const QFileInfo info(QString::fromStdString(folder));
    if (!info.isDir())
        return tl::unexpected("There is no folder " + folder + " with simulated monitors.");
    if (!info.isReadable())
        return tl::unexpected("The folder " + folder + " cannot be read.");

    Platform platform;
    platform.defaults =
        std::make_unique<JsonUserDefaults>(folder + "/preferences.json", folder, clock, options.report);
    platform.screens = std::make_unique<SimulatedScreenSource>(folder, options.report);
    platform.events = std::make_unique<SimulatedEvents>(folder, clock);
    platform.diagnostics = std::make_unique<SimulatedDiagnostics>(folder);
    platform.hardware.routes =
        std::make_unique<ServiceDiscovery>(std::make_unique<SimulatedRegistry>(folder, platform.hardware.pause),
                                           std::make_unique<SimulatedDisplaySystem>(folder));
    platform.hardware.native = simulatedNativeFunctions(folder);
    return platform;
}

} // namespace lumenvale
