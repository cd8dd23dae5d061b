// SPDX-License-Identifier: MIT
#include "displays/LateDisplays.h"

#include <algorithm>
#include <utility>

namespace lumenvale {

using namespace std::chrono_literals;

namespace {

/// Monitors take up to some ten seconds to answer after their picture came back; the last time is for slow hubs.
constexpr Clock::Duration times[] = {2s, 5s, 10s, 30s};
/// How often it looks whether the user's own requests have been written, which come first.
constexpr auto givingWay = 250ms;

} // namespace

LateDisplays::LateDisplays(DisplayHardwareControlling& hardware, Clock& clock, ScreenSource& screens,
                           const Published<std::vector<DisplayInfo>>& displays, const BrightnessWriter& writer)
    : hardware(hardware), clock(clock), screens(screens), displays(displays), writer(writer)
{
}

void LateDisplays::watch(Clock::TimePoint beginning)
{
    asking.cancel();
    if (!silentDisplays().empty())
        asking.run(askLater(beginning));
}

Task<> LateDisplays::askLater(Clock::TimePoint beginning)
{
    for (const Clock::Duration time : times) {
        const Clock::Duration left = beginning + time - clock.now();
        co_await sleepFor(clock, std::max(left, Clock::Duration(0)));
        Task<> round = askAgain(silentDisplays());
        co_await std::move(round);
        if (silentDisplays().empty())
            break;
    }
}

Task<> LateDisplays::askAgain(std::vector<DisplayInfo> silent)
{
    for (const DisplayInfo& each : silent) {
        while (writer.isWriting())
            co_await sleepFor(clock, givingWay);
        if (isPaused || screens.isAsleep(each.displayID))
            continue;
        Task<std::vector<DisplayInfo>> inspection = hardware.inspectAgain(std::vector<DisplayInfo>(1, each));
        const std::vector<DisplayInfo> found = co_await std::move(inspection);
        if (!found.empty())
            show(found.front());
    }
}

std::vector<DisplayInfo> LateDisplays::silentDisplays() const
{
    std::vector<DisplayInfo> silent = displays.get();
    std::erase_if(silent, [](const DisplayInfo& each) { return each.method != ControlMethod::unavailable; });
    return silent;
}

void LateDisplays::show(DisplayInfo found)
{
    std::vector<DisplayInfo> list = displays.get();
    DisplayInfo* const shown = findDisplay(list, found.id);
    if (!shown || *shown == found)
        return;
    *shown = std::move(found);
    answered(std::move(list));
}

} // namespace lumenvale
