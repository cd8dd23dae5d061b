// SPDX-License-Identifier: MIT
// Notices brightness that was changed outside the program: every 750 ms it reads the displays that can be read
// without harm, while nothing is being refreshed or written. Main thread only.
#pragma once

#include "displays/BrightnessWriter.h"
#include "displays/ScreenSource.h"

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace lumenvale {

class BrightnessMonitor {
public:
    /// The references must outlive the monitor. It changes brightness, status and error of `displays`.
    BrightnessMonitor(DisplayHardwareControlling& hardware, Clock& clock, ScreenSource& screens,
                      Published<std::vector<DisplayInfo>>& displays, const Published<bool>& isRefreshing,
                      const BrightnessWriter& writer);

    void start();
    void stop();
    /// The system or its screens sleep: nothing is read.
    void setPaused(bool paused);
    /// DDC displays are read less often while no window of ours shows brightness.
    void setWindowVisible(bool visible);
    /// A write has ended. A display whose write failed is read in the next round, so that a request is not shown
    /// for long as if it were the truth; its error stays on show for 5 s, whatever is read.
    void writeEnded(const std::string& id, bool isVerified);
    /// A refresh has read all displays.
    void forgetFailedWrites() { failures.clear(); }

    /// Called after each round that has read another brightness than was shown, with the displays that changed.
    std::function<void(const std::vector<DisplayInfo>&)> changesSeen;

private:
    using Readings = std::map<std::string, double>;

    Task<> monitor();
    Task<Readings> read(std::vector<std::string> ids, std::int64_t revision);
    bool beginsDdcRound();
    std::vector<std::string> displaysToRead(bool isDdcRound) const;
    bool isStale(std::int64_t revision) const { return monitoringPaused || writer.revision() != revision; }
    bool isUnconfirmed(const std::string& id) const;
    void showReadings(const Readings& readings);

    DisplayHardwareControlling& hardware;
    Clock& clock;
    ScreenSource& screens;
    Published<std::vector<DisplayInfo>>& displays;
    const Published<bool>& isRefreshing;
    const BrightnessWriter& writer;
    bool monitoringPaused = false;
    bool windowVisible = false;
    int roundsSinceDdcRead = 0;
    struct Failure {
        Clock::TimePoint time{};
        bool isRead = false; ///< the display was read since
    };

    std::map<std::string, Failure> failures; ///< of the last write, by display
    TaskHandle monitoringTask;               ///< last: it uses the others
};

} // namespace lumenvale
