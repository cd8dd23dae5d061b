// SPDX-License-Identifier: MIT
#include "platform/simulated/SimulatedScreens.h"

#include <QDir>
#include <algorithm>
#include <chrono>
#include <utility>

namespace lumenvale {

namespace {

/// Editors write a file in several steps, and folders are filled file by file.
constexpr auto settlingTime = std::chrono::milliseconds(100);

Screen makeScreen(const SimulatedDisplay& display)
{
    const MonitorFile& monitor = display.monitor;
    Screen screen;
    screen.displayID = display.displayID;
    screen.uuid = monitor.uuid;
    screen.name = monitor.name;
    screen.isBuiltIn = monitor.isBuiltIn;
    screen.isMain = monitor.isMain;
    screen.vendor = monitor.vendor;
    screen.model = monitor.model;
    screen.serial = monitor.serial;
    if (monitor.pixelWidth != 0 && monitor.pixelHeight != 0)
        screen.mode = ScreenMode{monitor.pixelWidth, monitor.pixelHeight, monitor.refreshRate};
    screen.frameWidth = monitor.logicalWidth;
    screen.frameHeight = monitor.logicalHeight;
    return screen;
}

/// A display without what changes while it stays the same display.
std::pair<std::uint32_t, MonitorFile> identity(const SimulatedDisplay& display)
{
    MonitorFile monitor = display.monitor;
    if (monitor.native)
        monitor.native = NativeControl{.maximum = monitor.native->maximum};
    if (monitor.ddc) {
        const std::uint16_t maximum = monitor.ddc->maximum;
        monitor.ddc = DdcControl();
        monitor.ddc->maximum = maximum;
    }
    return {display.displayID, std::move(monitor)};
}

bool isSame(const FolderContents& left, const FolderContents& right)
{
    return left.problems == right.problems &&
           std::equal(left.displays.begin(), left.displays.end(), right.displays.begin(), right.displays.end(),
                      [](const auto& one, const auto& other) { return identity(one) == identity(other); });
}

} // namespace

std::vector<Screen> SimulatedScreenSource::screens()
{
    FolderContents contents = folder.read();
    for (const std::string& problem : contents.problems) {
        if (report && std::find(reported.begin(), reported.end(), problem) == reported.end())
            report(problem);
    }
    reported = std::move(contents.problems);
    std::vector<Screen> screens;
    for (const SimulatedDisplay& display : contents.displays)
        screens.push_back(makeScreen(display));
    return screens;
}

SimulatedEvents::SimulatedEvents(std::string folder, Clock& clock) : folder(std::move(folder)), clock(clock)
{
    QObject::connect(&watcher, &QFileSystemWatcher::directoryChanged, &watcher, [this] { somethingChanged(); });
    QObject::connect(&watcher, &QFileSystemWatcher::fileChanged, &watcher, [this] { somethingChanged(); });
}

SimulatedEvents::~SimulatedEvents() { clock.cancel(timer); }

Subscription SimulatedEvents::subscribe(std::function<void(SystemEvent)> observer)
{
    const bool isFirst = watcher.directories().isEmpty();
    if (isFirst) {
        watcher.addPath(QString::fromStdString(folder.path()));
        watchFiles();
        lastContents = folder.read();
    }
    return events.subscribe(std::move(observer));
}

void SimulatedEvents::somethingChanged()
{
    if (timer != 0)
        return;
    timer = clock.callAfter(settlingTime, [this] {
        timer = 0;
        examine();
    });
}

void SimulatedEvents::watchFiles()
{
    // A file edited in place does not change its folder, and a file that was replaced is watched no longer.
    for (const std::string& name : folder.list())
        watcher.addPath(QString::fromStdString(folder.path() + '/' + name));
}

void SimulatedEvents::examine()
{
    watchFiles();
    FolderContents contents = folder.read();
    const bool isNews = !isSame(lastContents, contents);
    lastContents = std::move(contents);
    if (isNews)
        events.emit(SystemEvent::screenParametersChanged);
}

} // namespace lumenvale
