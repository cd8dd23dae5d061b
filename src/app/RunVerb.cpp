// SPDX-License-Identifier: MIT
#include "app/RunVerb.h"

#include "platform/qt/QtClock.h"
#include "platform/qt/QtMainThread.h"
#include "platform/simulated/SimulatedPlatform.h"

#include <QCoreApplication>
#include <QDir>
#include <chrono>
#include <clocale>
#include <cstdio>
#include <mutex>

namespace lumenvale {

namespace {

/// Ends the application's loop with the verb's exit status.
Task<> runAndQuit(Task<int> verb)
{
    const int status = co_await std::move(verb);
    QCoreApplication::exit(status);
}

int runOn(Platform& platform, QtClock& clock, MainThread& mainThread, const CommandLine& line, std::ostream& out,
          std::ostream& err)
{
    DisplayHardware hardware(std::move(platform.hardware), mainThread);
    VerbContext context{
        *platform.screens, hardware, *platform.diagnostics, *platform.defaults, platform.words, out, err,
        *platform.events,  clock,    platform.program.get()};
    // A task that ends before the loop begins would quit a loop that is not there: start it from within.
    const Task<> root = runAndQuit(line.verb->run(context, line.values));
    mainThread.post([&root] { root.start(); });
    return QCoreApplication::exec();
}

} // namespace

tl::expected<std::optional<std::string>, std::string> simulationFolder(const CommandLine& line)
{
    if (!line.simulationFolder)
        return std::nullopt;
    if (line.simulationFolder->empty())
        return readyMadeSimulation().map([](const std::string& folder) { return std::optional(folder); });
    const QDir folder(QString::fromStdString(*line.simulationFolder));
    if (!folder.exists())
        return tl::unexpected("There is no folder " + folder.absolutePath().toStdString() + '.');
    return folder.absolutePath().toStdString();
}

LogSink standardErrorLog()
{
    using Time = std::chrono::steady_clock;
    return [start = Time::now(), mutex = std::make_shared<std::mutex>()](const std::string& line) {
        const std::lock_guard lock(*mutex);
        const std::chrono::duration<double> elapsed = Time::now() - start;
        std::fprintf(stderr, "%9.4f %s\n", elapsed.count(), line.c_str());
    };
}

int runVerb(const CommandLine& line, int& argc, char** argv, std::ostream& out, std::ostream& err)
{
    // On a Mac, the loop of a program without windows hears of displays and of sleep only if Qt is told so.
    qputenv("QT_EVENT_DISPATCHER_CORE_FOUNDATION", "1");
    const QCoreApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C"); // numbers are written alike everywhere

    int reports = 0;
    PlatformOptions options;
    options.report = [&](const std::string& text) {
        err << text << '\n';
        ++reports;
    };
    if (line.isVerbose)
        options.log = standardErrorLog();
    options.wantsModes = line.values.has(jsonFlag().name); // nothing else prints them

    QtMainThread mainThread;
    QtClock clock;
    const auto folder = simulationFolder(line);
    if (!folder) {
        err << folder.error() << '\n';
        return exitMisused;
    }
    options.simulationFolder = *folder;
    auto platform = makePlatform(options, clock, mainThread);
    if (!platform) {
        err << platform.error() << '\n';
        return exitMisused;
    }
    return exitStatus(runOn(*platform, clock, mainThread, line, out, err), reports);
}

} // namespace lumenvale
