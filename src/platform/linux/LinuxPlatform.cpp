// SPDX-License-Identifier: MIT
#include "base/Identity.h"
#include "platform/Platform.h"
#include "platform/linux/displays/I2cDriver.h"
#include "platform/linux/displays/LinuxBrightness.h"
#include "platform/linux/displays/LinuxDiagnostics.h"
#include "platform/linux/displays/LinuxRoutes.h"
#include "platform/linux/displays/LinuxScreenSource.h"
#include "platform/linux/displays/LinuxSystemEvents.h"
#include "platform/linux/displays/Logind.h"
#include "platform/linux/displays/Uevent.h"
#include "platform/qt/JsonUserDefaults.h"

#include <QDBusConnection>
#include <QStandardPaths>
#include <utility>

namespace lumenvale {

namespace {

/// The bus is looked for only when it is needed.
int setThroughLogind(const std::string& backlight, std::int64_t raw)
{
    return setBrightnessThroughLogind(QDBusConnection::systemBus(), backlight, raw);
}

/// Without the right to hear the kernel, every question counts as a change.
KernelRecords::ChangeCheck kernelAnnouncements()
{
    return [socket = std::make_shared<UeventSocket>()] {
        return !socket->isOpen() || socket->takeIn(changesRecords);
    };
}

std::unique_ptr<UserDefaults> makeDefaults(const PlatformOptions& options, Clock& clock)
{
    const std::string folder =
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation).toStdString();
    return std::make_unique<JsonUserDefaults>(folder + "/" + applicationIdentifier + "/preferences.json", folder,
                                              clock, options.report);
}

} // namespace

Platform makeNativePlatform(const PlatformOptions& options, Clock& clock, MainThread& mainThread)
{
    const SystemPaths paths;
    const auto records = std::make_shared<KernelRecords>(paths, kernelAnnouncements());
    const auto snapshot = std::make_shared<DisplaySnapshot>(records); // the hardware thread's

    Platform platform;
    platform.defaults = makeDefaults(options, clock);
    platform.screens = std::make_unique<LinuxScreenSource>(records, options.windowSystem);
    platform.events = std::make_unique<LinuxSystemEvents>(records, lookInBackground(records, mainThread),
                                                          options.windowSystem, clock);
    platform.diagnostics = std::make_unique<LinuxDiagnostics>(paths, records);
    HardwareAccess& hardware = platform.hardware;
    hardware.routes = std::make_unique<LinuxRoutes>(snapshot, makeI2cDriver(paths.devices),
                                                    HoldWait{hardware.pause, options.log, hardware.stopping});
    hardware.native = makeLinuxBrightness(snapshot, {writeNumber, setThroughLogind}, options.log);
    return platform;
}

} // namespace lumenvale
