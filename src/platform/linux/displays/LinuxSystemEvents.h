// SPDX-License-Identifier: MIT
// What the system announces about its screens and its sleep: the kernel's uevents, the window system's screens,
// the login service, and the connectors' power states. Main thread.
//
// The kernel does not announce that a screen was switched off to save power, or that a desktop put one into use. A
// slow timer looks for that; while all screens are off it looks for their return more often.
#pragma once

#include "base/Clock.h"
#include "displays/SystemEvents.h"
#include "platform/WindowSystem.h"
#include "platform/linux/displays/Sysfs.h"

#include <chrono>
#include <memory>
#include <string>

namespace lumenvale {

class LinuxSystemEvents final : public SystemEvents {
public:
    /// Announcements come in bursts; those within this time are one.
    static constexpr auto settleTime = std::chrono::milliseconds(100);
    /// Announcements after which the connectors are as before (a monitor that renews its link while it is being
    /// asked) count only after this time, so that probing cannot set off the next probing.
    static constexpr auto idleAnnouncementInterval = std::chrono::seconds(10);
    static constexpr auto powerCheckInterval = std::chrono::seconds(5);
    static constexpr auto wakeCheckInterval = std::chrono::seconds(2);

    /// `windowSystem` may be null; it and `clock` must outlive it. Listens from the first subscription on.
    LinuxSystemEvents(SystemPaths paths, WindowSystem* windowSystem, Clock& clock);
    ~LinuxSystemEvents() override;

    [[nodiscard]] Subscription subscribe(std::function<void(SystemEvent)> observer) override;

    /// An announcement has come; public for tests, which cannot make the kernel announce anything.
    void announced();

private:
    struct Sources;

    void startListening();
    void settle();
    void checkPower();
    void changedForCertain();

    SystemPaths paths;
    WindowSystem* windowSystem;
    Clock& clock;
    Signal<SystemEvent> events;

    std::string lastTopology;
    Clock::TimePoint lastEmission{};
    bool areScreensAsleep = false;
    bool wasChangedInTheDark = false;
    Clock::TimerId settleTimer = 0; ///< 0: none
    Clock::TimerId powerTimer = 0;
    std::unique_ptr<Sources> sources; ///< null before the first subscription
};

} // namespace lumenvale
