// SPDX-License-Identifier: MIT
// The one owner of the list of connected displays: discovers them and keeps them in the user's order. A
// `BrightnessWriter` carries requests to the hardware, a `BrightnessMonitor` notices changes made elsewhere, and
// `LateDisplays` asks displays that gave no answer again. Main thread only.
//
// Staleness is decided by two counters that are compared after every wait: a refresh makes the refreshes and
// writes before it stale (`refreshGeneration`), and a refresh or a request makes a reading under way stale
// (`writeRevision`, the writer's).
#pragma once

#include "base/Clock.h"
#include "base/Published.h"
#include "base/Signal.h"
#include "base/Task.h"
#include "base/UserDefaults.h"
#include "displays/BrightnessMonitor.h"
#include "displays/BrightnessWriter.h"
#include "displays/DisplayHardwareControlling.h"
#include "displays/LateDisplays.h"
#include "displays/PresetDisplayControlling.h"
#include "displays/ScreenSource.h"
#include "displays/SystemEvents.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace lumenvale {

class DisplayStore final : public PresetDisplayControlling {
public:
    /// All references must outlive the store. Reads the saved order; does not touch the hardware yet.
    DisplayStore(DisplayHardwareControlling& hardware, UserDefaults& defaults, ScreenSource& screens,
                 SystemEvents& events, Clock& clock);
    ~DisplayStore() override;

    Published<std::vector<DisplayInfo>> displays; ///< in display order
    Published<bool> isRefreshing{false};          ///< a refresh was requested and has not been published
    Published<std::optional<Clock::WallTime>> lastRefresh{std::nullopt};

    /// Called when monitoring has seen brightness change outside the program, with the displays that changed.
    std::function<void(const std::vector<DisplayInfo>&)> brightnessObserved;

    /// Tells what kept a display from being set just now (see Diagnostics::obstacle); the error then says that.
    /// Empty where the errors' own texts are all that is known.
    std::function<std::string(const DisplayInfo&)> obstacle;

    /// Starts the monitoring loop. Call it once.
    void startMonitoring();
    /// Ends the monitoring loop for good.
    void stopMonitoring();

    /// Discovers and probes the displays anew after `delay`. Values that `setBrightness` requested and that are
    /// not yet written are dropped, and what a write in flight reports is not shown: the refresh shows what it
    /// finds. Levels that `apply` requested are written all the same. Requests that come after this call stay on
    /// show when the refresh is published.
    void requestRefresh(Clock::Duration delay = Clock::Duration(0));

    /// Requests a brightness (0.0 to 1.0) for a display. It shows at once in `displays`; its outcome follows. The
    /// newest request wins, also over one from `apply`. Ignored: a value that is not finite, an unknown
    /// identifier, a display without control and, without `force`, one whose brightness is unknown.
    ///
    /// While a newer request waits, the outcome of an older one shows only in `error`. After a failed write the
    /// requested brightness stays on show until the display is read, which is in the next round of monitoring.
    void setBrightness(const std::string& id, double value, bool force = false);

    /// Moves the displays at `sources` (positions in `displays`), in their order, before position `destination`
    /// of the list as it was, and saves the order.
    void moveDisplays(const std::set<std::size_t>& sources, std::size_t destination);

    /// The display with this identifier, or null. Good until the list changes.
    const DisplayInfo* display(const std::string& id) const;

    /// Tells whether a window of ours shows brightness; DDC displays are polled less often while none does.
    void setWindowVisible(bool visible);

    const std::vector<DisplayInfo>& displayList() const override { return displays.get(); }

    /// Also completes when a refresh has dropped the requests, and always on a later turn of the main loop unless
    /// there was nothing to wait for. Must not outlive the store.
    Task<> pendingWritesFinished() override;

    /// Writes one display after another in display order, those of unknown brightness too. A level takes the place
    /// of what was requested for its display and is not yet written; other levels of an earlier call are kept. A
    /// display that cannot be controlled now gets its level if it can be within a minute: a monitor may be waking.
    void apply(const std::map<std::string, double>& levels) override;
    void setLevel(const std::string& id, double level) override;

private:
    void receive(SystemEvent event);
    Task<> refresh(Clock::Duration delay, std::int64_t generation);
    void publish(std::vector<DisplayInfo> found, std::int64_t generation, Clock::TimePoint inspected);
    void setPaused(bool paused);
    void setOrder(std::vector<std::string> order);
    bool isIdle() const;
    void announceIfIdle();
    void show(std::vector<DisplayInfo> found);

    // The tasks come after what they use; fields are destroyed in reverse.
    DisplayHardwareControlling& hardware;
    UserDefaults& defaults;
    ScreenSource& screens;
    Clock& clock;
    std::vector<std::string> savedOrder;        ///< identifiers, also of displays that are not connected
    std::int64_t refreshGeneration = 0;         ///< grows with each refresh
    std::map<std::string, double> missedLevels; ///< of the last `apply`, not verified yet
    Clock::TimePoint applied;                   ///< when that was
    Signal<> idle;
    BrightnessWriter writer{hardware, clock, displays};
    BrightnessMonitor monitor{hardware, clock, screens, displays, isRefreshing, writer};
    LateDisplays late{hardware, clock, screens, displays, writer};
    TaskHandle refreshTask;
    Subscription observers; ///< of the system's events
};

} // namespace lumenvale
