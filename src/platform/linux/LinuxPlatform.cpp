// SPDX-License-Identifier: MIT
#include "base/Identity.h"
#include "platform/Platform.h"
#include "platform/linux/displays/I2cDriver.h"
#include "platform/linux/displays/KernelModes.h"
#include "platform/linux/displays/LinuxBrightness.h"
#include "platform/linux/displays/LinuxDiagnostics.h"
#include "platform/linux/displays/LinuxRoutes.h"
#include "platform/linux/displays/LinuxScreenSource.h"
#include "platform/linux/displays/LinuxSystemEvents.h"
#include "platform/linux/displays/Logind.h"
#include "platform/linux/displays/Uevent.h"
#include "platform/qt/JsonUserDefaults.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QStandardPaths>
#include <utility>

namespace lumenvale {

namespace {

/// The connection is made only when it is needed, and is the writer's own. Without an answer it is closed: the
/// service then no longer finds who asked, and does not set a value later that was given up long ago. Nor is one
/// kept that has ended.
int setThroughLogind(const std::string& backlight, std::int64_t raw)
{
    const QString name = QStringLiteral("lumenvale-brightness");
    const int error = setBrightnessThroughLogind(QDBusConnection::connectToBus(QDBusConnection::SystemBus, name),
                                                 backlight, raw);
    if (error != 0)
        QDBusConnection::disconnectFromBus(name);
    return error;
}

/// PowerDevil from 6.2 on; it speaks DDC/CI too.
bool doesDesktopSetBrightness()
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    return bus.isConnected() &&
           bus.interface()->isServiceRegistered(QStringLiteral("org.kde.ScreenBrightness")).value();
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
    const auto troubles = std::make_shared<DisplayTroubles>();
    const auto diagnosis = std::make_shared<const DisplayDiagnosis>(
        paths, records, troubles, [] { return pingLoginService(QDBusConnection::systemBus()); });

    Platform platform;
    platform.defaults = makeDefaults(options, clock);
    LinuxScreenSource::ModeSources modes;
    if (options.windowSystem || options.wantsModes)
        modes = {sessionOutputs,
                 [paths](const std::set<std::string>& cards) { return readKernelModes(paths, cards); }};
    platform.screens = std::make_unique<LinuxScreenSource>(records, options.windowSystem, std::move(modes));
    platform.events = std::make_unique<LinuxSystemEvents>(records, lookInBackground(records, mainThread),
                                                          options.windowSystem, clock);
    platform.diagnostics = std::make_unique<LinuxDiagnostics>(paths, records, diagnosis, doesDesktopSetBrightness);
    HardwareAccess& hardware = platform.hardware;
    hardware.routes = std::make_unique<LinuxRoutes>(
        snapshot, makeI2cDriver(paths.devices), HoldWait{hardware.pause, options.log, hardware.stopping}, troubles,
        [diagnosis](const DisplayInfo& display) { return diagnosis->obstacle(display); });
    hardware.native = makeLinuxBrightness(snapshot, {writeNumber, setThroughLogind}, troubles, options.log);
    return platform;
}

} // namespace lumenvale
