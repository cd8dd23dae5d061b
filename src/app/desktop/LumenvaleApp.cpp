// SPDX-License-Identifier: MIT
#include "app/desktop/LumenvaleApp.h"

#include "app/cli/DisplayChoice.h"
#include "app/cli/Verb.h"
#include "app/desktop/AppDelegate.h"
#include "app/desktop/AppearanceChoice.h"
#include "base/Identity.h"
#include "platform/posix/InstanceLock.h"
#include "platform/posix/RequestChannel.h"
#include "platform/posix/TerminationSignals.h"
#include "platform/qt/ProgramFile.h"
#include "platform/qt/QtClock.h"
#include "platform/qt/QtMainThread.h"
#include "preferences/BuildInfo.h"

#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <clocale>
#include <cstdio>
#include <utility>

namespace lumenvale {

namespace {

/// How long a second copy waits for a first one that is only just starting, or ending: 3 s.
constexpr auto handOverAttempt = std::chrono::milliseconds(200);
constexpr int handOverAttempts = 15;

/// Code that borrows this executable to look at its windows must not find the program running.
bool isHosted() { return isTestHost() || qgetenv("XCODE_RUNNING_FOR_PREVIEWS") == "1"; }

int runWithoutDelegate(int& argc, char** argv)
{
    const QApplication application(argc, argv);
    return QApplication::exec();
}

/// From the folder of the program: a build tree, an application bundle, an installation.
constexpr const char* resourceFolders[] = {".", "../Resources", "../share/lumenvale"};

/// The moment of the build, from the file that the build leaves among the program's resources.
std::optional<std::string> buildMetadata()
{
    const QDir program(QCoreApplication::applicationDirPath());
    for (const char* folder : resourceFolders) {
        QFile file(program.filePath(QString(folder) + "/BuildMetadata.json"));
        if (file.open(QIODevice::ReadOnly))
            return file.readAll().toStdString();
    }
    return std::nullopt;
}

/// Qt reads less exactly than asked for; what names no zone would be local time.
std::optional<BuildInfo::Time> parseTime(const std::string& text)
{
    const QDateTime time = QDateTime::fromString(QString::fromStdString(text), Qt::ISODate);
    const int year = time.date().year();
    if (!time.isValid() || time.timeSpec() == Qt::LocalTime || year < 1970 ||
        year > 2261) // what the clock can count
        return std::nullopt;
    return std::chrono::system_clock::from_time_t(time.toSecsSinceEpoch());
}

ProgramIdentity programIdentity(const std::optional<std::string>& simulationFolder)
{
    const bool isSimulated = simulationFolder.has_value();
    ProgramIdentity identity;
    identity.identifier = isSimulated ? simulatedIdentifier : applicationIdentifier;
    identity.objectPath = isSimulated ? simulatedObjectPath : applicationObjectPath;
    identity.name = isSimulated ? "Lumenvale (Simulated)" : applicationName;
    identity.command = {programFile()};
    if (isSimulated)
        identity.command.insert(identity.command.end(), {"--simulate", *simulationFolder});
    identity.simulationFolder = simulationFolder.value_or("");
    return identity;
}

int complain(const std::string& sentence, int status)
{
    std::fprintf(stderr, "%s\n", sentence.c_str());
    return status;
}

/// Keeps the theme in line with the desktop's colours where Qt does not.
void followAppearance(const Shell& shell)
{
    if (!shell.appearance)
        return;
    shell.appearance->observe([system = QApplication::palette()](const AppearanceWish& wish) {
        const AppearanceChoice choice = chooseAppearance(wish, system);
        Theme::set(choice.appearance, choice.accent);
    });
}

} // namespace

LumenvaleApp::LumenvaleApp(Options options) : options(std::move(options)) {}

int LumenvaleApp::runApplication(const std::string& folder, int& argc, char** argv)
{
    if (const auto ready = prepareApplication(); !ready)
        return complain(ready.error(), exitRefused);
    QApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C"); // percentages are written alike everywhere
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setApplicationName(applicationName);
    const ProgramIdentity identity = programIdentity(options.simulationFolder);
    QApplication::setDesktopFileName(QString::fromStdString(identity.identifier));

    QtClock clock;
    QtMainThread mainThread;
    PlatformOptions platformOptions;
    platformOptions.simulationFolder = options.simulationFolder;
    const auto windowSystem = makeNativeWindowSystem();
    platformOptions.windowSystem = windowSystem.get();
    platformOptions.log = options.log;
    platformOptions.report = [](const std::string& text) { std::fprintf(stderr, "%s\n", text.c_str()); };
    auto platform = makePlatform(platformOptions, clock, mainThread);
    if (!platform)
        return complain(platform.error(), exitMisused);
    migrateLegacyDefaults(*platform->defaults);

    DisplayHardware hardware(std::move(platform->hardware), mainThread);
    Shell shell = makeNativeShell(identity);
    followAppearance(shell);
    AppDelegate delegate({hardware, *platform->defaults, *platform->screens, *platform->events,
                          *platform->diagnostics, *shell.startup, shell.hotKeys.get(), clock, shell,
                          platform->words,
                          readBuildInfo({LUMENVALE_VERSION, LUMENVALE_BUILD_NUMBER, buildMetadata()}, parseTime)});
    std::optional<RequestReceiver> requests(std::in_place, folder, [&delegate](std::string_view line) {
        if (const auto request = decodeRequest(line))
            delegate.perform(*request);
    });
    const TerminationSignals signals;
    mainThread.post([&] {
        delegate.applicationDidFinishLaunching();
        if (options.request)
            delegate.perform(*options.request);
        else
            delegate.showUnlessVisible();
    });
    const int status = QApplication::exec();
    requests.reset(); // a copy that is started from now on waits for the lock
    delegate.applicationWillTerminate();
    return status;
}

/// Puts the identifier of the preset that is to be applied into the request. Returns the exit status.
int LumenvaleApp::findPreset(int& argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QtClock clock;
    QtMainThread mainThread;
    PlatformOptions platformOptions;
    platformOptions.simulationFolder = options.simulationFolder;
    const auto platform = makePlatform(platformOptions, clock, mainThread);
    if (!platform)
        return complain(platform.error(), exitMisused);
    const auto preset = choosePreset(PresetStore(*platform->defaults).presets.get(), options.request->preset);
    if (!preset)
        return complain(preset.error(), exitUnknown);
    options.request->preset = preset->id.toString();
    return exitDone;
}

bool LumenvaleApp::handOver(const std::string& folder) const
{
    DesktopRequest request = options.request.value_or(DesktopRequest());
    request.activationToken = qEnvironmentVariable("XDG_ACTIVATION_TOKEN").toStdString();
    return sendRequest(folder, encodeRequest(request), handOverAttempt);
}

int LumenvaleApp::run(int& argc, char** argv)
{
    if (isHosted())
        return runWithoutDelegate(argc, argv);
    const bool appliesPreset = options.request && options.request->action == DesktopRequest::Action::applyPreset;
    if (const int status = appliesPreset ? findPreset(argc, argv) : exitDone; status != exitDone)
        return status;
    const std::string folder = options.simulationFolder.value_or(supportFolder(applicationIdentifier));
    auto lock = InstanceLock::acquire(folder);
    for (int left = handOverAttempts; !lock && lock.error().empty() && left > 0; --left) {
        if (handOver(folder))
            return exitDone;
        lock = InstanceLock::acquire(folder); // that copy may be ending instead
    }
    if (lock)
        return runApplication(folder, argc, argv);
    if (!lock.error().empty())
        return complain(lock.error(), exitRefused);
    return options.request ? complain("The copy of Lumenvale that runs already does not answer.", exitRefused)
                           : exitDone;
}

} // namespace lumenvale
