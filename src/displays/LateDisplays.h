// SPDX-License-Identifier: MIT
// Asks displays that could not be controlled when they were inspected again, a few times: a monitor that wakes or
// was plugged in just now may answer some seconds later. Main thread only.
#pragma once

#include "displays/BrightnessWriter.h"
#include "displays/ScreenSource.h"

#include <functional>
#include <string>
#include <vector>

namespace lumenvale {

class LateDisplays {
public:
    /// The references must outlive it.
    LateDisplays(DisplayHardwareControlling& hardware, Clock& clock, ScreenSource& screens,
                 const Published<std::vector<DisplayInfo>>& displays, const BrightnessWriter& writer);

    /// Called with `displays` as they are after an answer, to publish them. Set it before `watch`.
    std::function<void(std::vector<DisplayInfo>)> answered;

    /// Asks those of `displays` that cannot be controlled about 2, 5, 10 and 30 seconds after `beginning`, each
    /// alone, until they can be. A display whose picture is off is left out, and a time that falls into a pause.
    /// Takes the place of what was begun before.
    void watch(Clock::TimePoint beginning);
    /// Asks no more.
    void stop() { asking.cancel(); }
    /// The system or its screens sleep: nothing is asked.
    void setPaused(bool paused) { isPaused = paused; }

private:
    Task<> askLater(Clock::TimePoint beginning);
    Task<> askAgain(std::vector<DisplayInfo> silent);
    std::vector<DisplayInfo> silentDisplays() const;
    void show(DisplayInfo found);

    DisplayHardwareControlling& hardware;
    Clock& clock;
    ScreenSource& screens;
    const Published<std::vector<DisplayInfo>>& displays;
    const BrightnessWriter& writer;
    bool isPaused = false;
    TaskHandle asking; ///< last: it uses the others
};

} // namespace lumenvale
