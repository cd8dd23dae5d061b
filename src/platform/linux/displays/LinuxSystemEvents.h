// SPDX-License-Identifier: MIT
// What the system announces about its screens and its sleep: the kernel's uevents, the window system's screens,
// the login service, and the connectors' power states. Main thread.
//
// The kernel does not announce that a screen was switched off to save power, or that a desktop put one into use. A
// slow timer looks for that; while all screens are off it looks for their return more often. All looking is done
// on another thread.
#pragma once

#include "base/Clock.h"
#include "base/MainThread.h"
#include "base/Task.h"
#include "displays/SystemEvents.h"
#include "platform/WindowSystem.h"
#include "platform/linux/displays/KernelRecords.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace lumenvale {

/// What is looked at: the power states alone, or all records.
enum class Look { power, everything };

/// A look at the kernel's records; its result comes on the main thread.
using RecordsLook = std::function<Task<SharedRecords>(Look)>;

/// Looks on a thread of its own, which begins with the first look. `mainThread` must outlive the function.
RecordsLook lookInBackground(std::shared_ptr<KernelRecords> records, MainThread& mainThread);

class LinuxSystemEvents final : public SystemEvents {
public:
    /// Announcements come in bursts; those within this time are one.
    static constexpr auto settleTime = std::chrono::milliseconds(100);
    /// Announcements after which the connectors are as before (a monitor that renews its link while it is being
    /// asked) count only after this time, so that probing cannot set off the next probing.
    static constexpr auto idleAnnouncementInterval = std::chrono::seconds(10);
    static constexpr auto powerCheckInterval = std::chrono::seconds(5);
    static constexpr auto wakeCheckInterval = std::chrono::seconds(2);
    /// Every so many checks are looks at everything, for systems that announce nothing (some containers).
    static constexpr int checksPerFullLook = 12;

    /// `windowSystem` may be null; it and `clock` must outlive it. Listens from the first subscription on, and
    /// tells how things then differ from the records as they were read last.
    LinuxSystemEvents(std::shared_ptr<KernelRecords> records, RecordsLook look, WindowSystem* windowSystem,
                      Clock& clock);
    ~LinuxSystemEvents() override;

    [[nodiscard]] Subscription subscribe(std::function<void(SystemEvent)> observer) override;

    /// An announcement has come; public for tests, which cannot make the kernel announce anything.
    void announced();

private:
    struct Sources;

    void startListening();
    Task<> settle();
    Task<> checkPower();
    void showPower(const DisplayRecords& found);
    void changedForCertain();

    std::shared_ptr<KernelRecords> records;
    RecordsLook look;
    WindowSystem* windowSystem;
    Clock& clock;
    Signal<SystemEvent> events;

    std::optional<std::string> lastTopology; ///< none: what is found next is a change
    Clock::TimePoint lastEmission{};
    bool areScreensAsleep = false;
    bool wasChangedInTheDark = false;
    int checks = 0;                 ///< since the last look at everything
    Clock::TimerId settleTimer = 0; ///< 0: none
    Clock::TimerId powerTimer = 0;
    std::unique_ptr<Sources> sources; ///< null before the first subscription
    TaskHandle settling;
    TaskHandle checking;
};

} // namespace lumenvale
