// SPDX-License-Identifier: MIT
// Carries requested brightness to the hardware without flooding it: shows a request at once, lets the newest of
// each display replace the ones before it, and shows what the hardware makes of it. Main thread only.
#pragma once

#include "base/Clock.h"
#include "base/Published.h"
#include "base/Task.h"
#include "displays/DisplayHardwareControlling.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace lumenvale {

class BrightnessWriter {
public:
    /// The references must outlive the writer. It changes brightness, status and error of `displays`.
    BrightnessWriter(DisplayHardwareControlling& hardware, Clock& clock,
                     Published<std::vector<DisplayInfo>>& displays);

    /// `DisplayStore::setBrightness`.
    void setBrightness(const std::string& id, double value, bool force);
    /// `DisplayStore::apply`.
    void apply(const std::map<std::string, double>& levels);

    /// A refresh was requested, the one with this number: drops the requests of `setBrightness` and hides the
    /// outcome of every write under way. Levels of `apply` are kept.
    void beginRefresh(std::int64_t generation);
    /// A refresh is about to be published: shows in its result what was requested since it began, and drops what
    /// can no longer be written.
    void keepRequests(std::vector<DisplayInfo>& found);

    /// Something waits to be written or is being written.
    bool isWriting() const { return !writes.empty() || !batchLevels.empty() || batchTask.isRunning(); }
    /// Grows with each request and each refresh: what was read before is stale.
    std::int64_t revision() const { return writeRevision; }

    /// Called with each outcome that is shown, just before.
    std::function<void(const std::string& id, bool isVerified)> writeEnded;
    /// Called when the last write has ended.
    std::function<void()> becameIdle;
    /// What kept a display from being set just now, in whole sentences; empty where no more is known than that it
    /// failed. May be empty itself.
    std::function<std::string(const DisplayInfo&)> obstacle;

private:
    using Outcome = tl::expected<double, BrightnessError>;
    struct BatchLevel {
        std::string id;
        double level;
    };

    Task<> writeRequests(std::string id, std::int64_t generation);
    Task<> writeBatch();
    void withdrawFromBatch(const std::string& id);
    bool hasNewerRequest(const std::string& id) const;
    double writableLevel(const std::string& id, double level) const;
    std::string causeOf(BrightnessError error, const DisplayInfo& display) const;
    void showOutcome(const std::string& id, const Outcome& outcome);
    void announceIfIdle();

    // The tasks come after what they use; fields are destroyed in reverse.
    DisplayHardwareControlling& hardware;
    Clock& clock;
    Published<std::vector<DisplayInfo>>& displays;
    std::int64_t writeRevision = 0;
    std::int64_t refreshGeneration = 0;          ///< of the latest refresh; writes from before it are stale
    std::map<std::string, double> pendingValues; ///< requested and not yet written; each can be written now
    std::vector<BatchLevel> batchLevels;         ///< the same for `apply`; no display is in both
    std::optional<std::string> batchWrite;       ///< what the batch is writing while the outcome is to be shown
    std::map<std::string, TaskHandle> writes;    ///< by display; at most one each
    TaskHandle batchTask;
};

} // namespace lumenvale
