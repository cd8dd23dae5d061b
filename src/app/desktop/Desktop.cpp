// SPDX-License-Identifier: MIT
#include "app/desktop/Desktop.h"

#include "app/desktop/AppDelegate.h"
#include "app/desktop/AppearanceChoice.h"
#include "app/desktop/BuildResources.h"
#include "app/cli/DesktopRequest.h"
#include "base/Identity.h"
#include "platform/posix/InstanceLock.h"
#include "platform/posix/RequestChannel.h"
#include "platform/posix/TerminationSignals.h"
#include "platform/qt/ProgramFile.h"
#include "platform/qt/QtClock.h"
#include "platform/qt/QtMainThread.h"

#include <QApplication>
#include <clocale>
#include <cstdio>

namespace lumenvale {

namespace {

/// How long a second copy waits for a first one that is only just starting.
constexpr auto handOverPatience = std::chrono::seconds(3);

/// Code that borrows this executable to look at its windows must not find the program running.
bool isHosted() { return isTestHost() || qgetenv("XCODE_RUNNING_FOR_PREVIEWS") == "1"; }

int runWithoutDelegate(int& argc, char** argv)
{
    const QApplication application(argc, argv);
    return QApplication::exec();
}

void handOver(const std::string& folder, const std::optional<DesktopRequest>& request)
{
    DesktopRequest wanted = request.value_or(DesktopRequest());
    wanted.activationToken = qEnvironmentVariable("XDG_ACTIVATION_TOKEN").toStdString();
    sendRequest(folder, encodeRequest(wanted), handOverPatience);
}

ProgramIdentity programIdentity(const DesktopOptions& options)
{
    const bool isSimulated = options.simulationFolder.has_value();
    ProgramIdentity identity;
    identity.identifier = isSimulated ? simulatedIdentifier : applicationIdentifier;
    identity.objectPath = isSimulated ? simulatedObjectPath : applicationObjectPath;
    identity.name = isSimulated ? "Lumenvale (Simulated)" : applicationName;
    identity.command = {programFile()};
    if (isSimulated)
        identity.command.insert(identity.command.end(), {"--simulate", *options.simulationFolder});
    return identity;
}

int runApplication(const DesktopOptions& options, const std::string& folder, int& argc, char** argv)
{
    QApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C"); // percentages are written alike everywhere
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setApplicationName(applicationName);
    const ProgramIdentity identity = programIdentity(options);
    QApplication::setDesktopFileName(QString::fromStdString(identity.identifier));

    QtClock clock;
    QtMainThread mainThread;
    PlatformOptions platformOptions;
    platformOptions.simulationFolder = options.simulationFolder;
    platformOptions.hasWindowSystem = true;
    platformOptions.log = options.log;
    platformOptions.report = [](const std::string& text) { std::fprintf(stderr, "%s\n", text.c_str()); };
    auto platform = makePlatform(platformOptions, clock, mainThread);
    if (!platform) {
        std::fprintf(stderr, "%s\n", platform.error().c_str());
        return 1;
    }
    migrateLegacyDefaults(*platform->defaults);

    DisplayHardware hardware(std::move(platform->hardware), mainThread);
    Shell shell = makeNativeShell(identity);
    if (shell.appearance) {
        shell.appearance->observe([system = QApplication::palette()](const AppearanceWish& wish) {
            const AppearanceChoice choice = chooseAppearance(wish, system);
            Theme::set(choice.appearance, choice.accent);
        });
    }
    AppDelegate delegate({hardware, *platform->defaults, *platform->screens, *platform->events,
                          *platform->diagnostics, *platform->startup, platform->hotKeys.get(), clock, shell,
                          sharedBuildInfo()});
    const RequestReceiver requests(folder, [&delegate](std::string_view line) {
        if (const auto request = decodeRequest(line))
            delegate.perform(*request);
    });
    const TerminationSignals signals;
    mainThread.post([&] {
        delegate.applicationDidFinishLaunching();
        if (options.request)
            delegate.perform(*options.request);
    });
    const int status = QApplication::exec();
    delegate.applicationWillTerminate();
    return status;
}

} // namespace

int runDesktop(const DesktopOptions& options, int& argc, char** argv)
{
    if (isHosted())
        return runWithoutDelegate(argc, argv);
    const std::string folder = options.simulationFolder.value_or(supportFolder(applicationIdentifier));
    const auto lock = InstanceLock::acquire(folder);
    if (!lock) {
        handOver(folder, options.request);
        return 0;
    }
    return runApplication(options, folder, argc, argv);
}

} // namespace lumenvale
