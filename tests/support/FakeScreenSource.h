// SPDX-License-Identifier: MIT
// Screens that the test connects and removes.
#pragma once

#include "displays/ScreenSource.h"

#include <set>
#include <utility>

namespace lumenvale {

class FakeScreenSource final : public ScreenSource {
public:
    std::vector<Screen> screens() override { return list; }
    bool isAsleep(std::uint32_t displayID) override { return asleep.contains(displayID); }

    /// Connects a screen whose display has the identifier `id`.
    Screen& connect(const std::string& id, std::uint32_t displayID)
    {
        Screen screen;
        screen.displayID = displayID;
        screen.uuid = id;
        screen.name = "Name of " + id;
        return list.emplace_back(std::move(screen));
    }
    void remove(const std::string& id)
    {
        std::erase_if(list, [&](const Screen& each) { return each.uuid == id; });
    }

    std::vector<Screen> list;
    std::set<std::uint32_t> asleep;
};

} // namespace lumenvale
