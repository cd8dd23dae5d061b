// SPDX-License-Identifier: MIT
// The one owner of the list of connected displays: discovers them, keeps them in the user's order, carries
// brightness requests to the hardware without flooding it, and notices changes made elsewhere. Main thread
// only; staleness is decided by two counters that are compared after every wait.
#pragma once

#include "base/Clock.h"
#include "base/Published.h"
#include "base/TaskScope.h"
#include "base/UserDefaults.h"
#include "displays/DisplayHardwareControlling.h"
#include "displays/PresetDisplayControlling.h"
#include "displays/ScreenSource.h"
#include "displays/SystemEvents.h"

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

    /// Discovers and probes the displays anew after `delay`; drops requested values that are not yet written.
    void requestRefresh(Clock::Duration delay = Clock::Duration(0));

    /// Requests a brightness (0.0 to 1.0) for a display. The newest request wins; the outcome shows in
    /// `displays`. `force` also writes to a display whose brightness is unknown.
    void setBrightness(const std::string& id, double value, bool force = false);

    /// Moves the displays at `sources` (positions in `displays`), in their order, before position `destination`
    /// of the list as it was, and saves the order.
    void moveDisplays(const std::set<std::size_t>& sources, std::size_t destination);

    /// The display with this identifier, or null. Good until the list changes.
    const DisplayInfo* display(const std::string& id) const;

    /// Tells whether a window of ours shows brightness; DDC displays are polled less often while none does.
    void setWindowVisible(bool visible);

    const std::vector<DisplayInfo>& displayList() const override { return displays.get(); }
    Task<> pendingWritesFinished() override;
    void apply(const std::map<std::string, double>& levels) override;
    void setLevel(const std::string& id, double level) override;

private:
    // to be completed
};

} // namespace lumenvale
