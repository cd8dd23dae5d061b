// SPDX-License-Identifier: MIT
// Screens that the test connects and removes, and events that it sends.
#pragma once

#include "displays/ScreenSource.h"
#include "displays/SystemEvents.h"

#include <set>
#include <utility>

namespace lumenvale {

struct FakeScreenSource final : ScreenSource {
    std::vector<Screen> screens() override { return list; }
    bool isAsleep(std::uint32_t displayID) override { return asleep.contains(displayID); }

    /// Connects a screen whose display has the identifier `id`.
    Screen& connect(const std::string& id, std::uint32_t displayID)
    {
        return list.emplace_back(Screen{.displayID = displayID, .uuid = id, .name = "Name of " + id});
    }

    std::vector<Screen> list;
    std::set<std::uint32_t> asleep;
};

struct FakeSystemEvents final : SystemEvents {
    Subscription subscribe(std::function<void(SystemEvent)> observer) override
    {
        return signal.subscribe(std::move(observer));
    }
    void send(SystemEvent event) { signal.emit(event); }

    Signal<SystemEvent> signal;
};

} // namespace lumenvale
