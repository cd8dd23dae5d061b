// SPDX-License-Identifier: MIT
// What the system announces about its screens and its sleep: the kernel's uevents, the window system's screens,
// the login service, and the connectors' power states. Main thread.
//
// The kernel does not announce that a screen was switched off to save power. So the states are looked at when the
// program asks for one anyway; only while all screens are off does a slow timer of its own look for their return.
#pragma once

#include "base/Clock.h"
#include "displays/SystemEvents.h"
#include "platform/linux/displays/LinuxScreenSource.h"

#include <chrono>
#include <memory>

namespace lumenvale {

class LinuxSystemEvents final : public SystemEvents {
public:
    /// Announcements come in bursts; those within this time are one.
    static constexpr auto settleTime = std::chrono::milliseconds(100);
    /// Announcements after which the connectors are as before (a monitor that renews its link while it is being
    /// asked) count only after this time, so that probing cannot set off the next probing.
    static constexpr auto idleAnnouncementInterval = std::chrono::seconds(10);
    static constexpr auto wakeCheckInterval = std::chrono::seconds(2);

    /// Both references must outlive it. Listens from the first subscription on.
    LinuxSystemEvents(SystemPaths paths, bool hasWindowSystem, LinuxScreenSource& screens, Clock& clock);
    ~LinuxSystemEvents() override;

    [[nodiscard]] Subscription subscribe(std::function<void(SystemEvent)> observer) override;

    /// What announcements and looking at the connectors lead to; public for tests.
    void announced();
    void checkPower();

private:
    struct Sources;

    void startListening();
    void settle();
    void watchWindowScreens();
    void changedForCertain();

    SystemPaths paths;
    bool hasWindowSystem;
    LinuxScreenSource& screens;
    Clock& clock;
    Signal<SystemEvent> events;

    std::string lastTopology;
    Clock::TimePoint lastEmission{};
    Clock::TimePoint lastPowerCheck{};
    bool areScreensAsleep = false;
    bool wasChangedInTheDark = false;
    Clock::TimerId settleTimer = 0; ///< 0: none
    Clock::TimerId wakeTimer = 0;
    Subscription questions;
    std::unique_ptr<Sources> sources; ///< null until somebody subscribes
};

} // namespace lumenvale
