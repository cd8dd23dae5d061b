// SPDX-License-Identifier: MIT
// The window system's side of simulated displays: the list of screens, and the news that it changed. Main
// thread only.
#pragma once

#include "base/Clock.h"
#include "displays/ScreenSource.h"
#include "displays/SystemEvents.h"
#include "platform/simulated/SimulatedFolder.h"

#include <QFileSystemWatcher>
#include <functional>
#include <string>
#include <vector>

namespace lumenvale {

class SimulatedScreenSource final : public ScreenSource {
public:
    using Report = std::function<void(const std::string&)>;

    /// `report` hears of each file that is no display, once for as long as it says the same; it may be empty.
    SimulatedScreenSource(std::string folder, Report report) : folder(std::move(folder)), report(std::move(report))
    {
    }

    std::vector<Screen> screens() override;
    bool isAsleep(std::uint32_t /*displayID*/) override { return false; }

private:
    SimulatedFolder folder;
    Report report;
    std::vector<std::string> reported;
};

/// Watches the folder once someone listens. A monitor that only changed its brightness, or how it fails, is no
/// news.
class SimulatedEvents final : public SystemEvents {
public:
    SimulatedEvents(std::string folder, Clock& clock);
    ~SimulatedEvents() override;

    Subscription subscribe(std::function<void(SystemEvent)> observer) override;

private:
    void watchFiles();
    void somethingChanged();
    void examine();

    SimulatedFolder folder;
    Clock& clock;
    FolderContents lastContents;
    Clock::TimerId timer = 0;
    Signal<SystemEvent> events;
    QFileSystemWatcher watcher; // last: it calls into the others
};

} // namespace lumenvale
