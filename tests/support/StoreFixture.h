// SPDX-License-Identifier: MIT
// A display store in a world that the test turns by hand.
#pragma once

#include "base/MemoryUserDefaults.h"
#include "displays/DisplayOrder.h"
#include "displays/DisplayStore.h"
#include "support/FakeDisplayHardware.h"
#include "support/FakeScreenSource.h"
#include "support/ManualClock.h"

#include <gtest/gtest.h>
#include <memory>

namespace lumenvale {

struct StoreFixture : testing::Test {
    /// Connects a display; the store learns of it by a refresh.
    FakeMonitor& plug(const std::string& id, FakeMonitor monitor = {})
    {
        screens.connect(id, nextNumber++);
        return hardware.monitors[id] = monitor;
    }
    void unplug(const std::string& id)
    {
        std::erase_if(screens.list, [&](const Screen& each) { return each.uuid == id; });
        hardware.monitors.erase(id);
    }
    std::vector<std::string> shownIDs() const { return identifiers(store->displays.get()); }
    /// The display, or an empty record when the store does not show it.
    DisplayInfo shown(const std::string& id) const
    {
        const DisplayInfo* found = store->display(id);
        return found ? *found : DisplayInfo{};
    }

    std::uint32_t nextNumber = 1;
    ManualClock clock;
    MemoryUserDefaults defaults;
    FakeScreenSource screens;
    FakeSystemEvents events;
    FakeDisplayHardware hardware;
    std::unique_ptr<DisplayStore> store =
        std::make_unique<DisplayStore>(hardware, defaults, screens, events, clock);
};

} // namespace lumenvale
