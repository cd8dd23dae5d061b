// SPDX-License-Identifier: MIT
// The one owner of the list of connected displays: discovers them, keeps them in the user's order, carries
// brightness requests to the hardware without flooding it, and notices changes made elsewhere. Main thread only.
//
// Staleness is decided by two counters that are compared after every wait: a refresh makes the writes before it
// stale (`refreshGeneration`), and a refresh or a request makes a reading under way stale (`writeRevision`).
#pragma once

#include "base/Clock.h"
#include "base/Published.h"
#include "base/Signal.h"
#include "base/TaskScope.h"
#include "base/UserDefaults.h"
#include "displays/DisplayHardwareControlling.h"
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
    /// of what was requested for its display and is not yet written; other levels of an earlier call are kept.
    void apply(const std::map<std::string, double>& levels) override;
    void setLevel(const std::string& id, double level) override;

private:
    using Outcome = tl::expected<double, BrightnessError>;
    using Readings = std::map<std::string, double>;
    struct BatchLevel {
        std::string id;
        double level;
    };

    void receive(SystemEvent event);
    Task<> refresh(Clock::Duration delay, std::int64_t generation);
    void publish(std::vector<DisplayInfo> found, std::int64_t generation);
    void keepRequests(std::vector<DisplayInfo>& found);
    void setOrder(std::vector<std::string> order);

    Task<> writeRequests(std::string id, std::int64_t generation);
    Task<> writeBatch();
    void addToBatch(const std::string& id, double level);
    void withdrawFromBatch(const std::string& id);
    bool hasNewerRequest(const std::string& id) const;
    void showOutcome(const std::string& id, const Outcome& outcome);
    bool isWriting() const;
    bool areDisplaysUnknown() const;
    void announceIfIdle();

    Task<> monitor();
    Task<Readings> read(std::vector<std::string> ids, std::int64_t revision);
    std::vector<std::string> displaysToRead(bool isDdcRound) const;
    bool isStale(std::int64_t revision) const { return monitoringPaused || writeRevision != revision; }
    void showReadings(const Readings& readings, bool isDdcRound);

    // The tasks come after what they use; fields are destroyed in reverse.
    bool monitoringPaused = false;      ///< the system or its screens sleep
    std::int64_t writeRevision = 0;     ///< grows with each request and each refresh
    std::int64_t refreshGeneration = 0; ///< grows with each refresh
    DisplayHardwareControlling& hardware;
    UserDefaults& defaults;
    ScreenSource& screens;
    Clock& clock;
    std::vector<std::string> savedOrder;         ///< identifiers, also of displays that are not connected
    std::map<std::string, double> pendingValues; ///< requested and not yet written; each can be written now
    std::vector<BatchLevel> batchLevels;         ///< the same for `apply`; no display is in both
    std::optional<std::string> batchWrite;       ///< what the batch is writing while the outcome is to be shown
    std::set<std::string> unconfirmed;           ///< a write failed and the display was not read since
    int roundsSinceDdcRead = 0;
    bool windowVisible = false;
    Signal<> writesEnded;
    std::map<std::string, TaskHandle> writes; ///< by display; at most one each
    TaskHandle batchTask;
    TaskHandle refreshTask;
    TaskHandle monitoringTask;
    Subscription observers; ///< of the system's events
};

} // namespace lumenvale
