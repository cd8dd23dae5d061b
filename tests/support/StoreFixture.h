// SPDX-License-Identifier: MIT
// A display store in a world that the test turns by hand.
#pragma once

#include "base/MemoryUserDefaults.h"
#include "displays/DisplayStore.h"
#include "support/FakeDisplayHardware.h"
#include "support/FakeScreenSource.h"
#include "support/FakeSystemEvents.h"
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
        screens.remove(id);
        hardware.monitors.erase(id);
    }
    void refresh()
    {
        store->requestRefresh();
        hardware.answerAll();
    }
    std::vector<std::string> shownIDs() const
    {
        std::vector<std::string> ids;
        for (const DisplayInfo& each : store->displays.get())
            ids.push_back(each.id);
        return ids;
    }
    /// The display, or an empty record when the store does not show it.
    DisplayInfo shown(const std::string& id) const
    {
        const DisplayInfo* found = store->display(id);
        return found ? *found : DisplayInfo{};
    }
    std::vector<std::string> savedOrder() const
    {
        std::vector<std::string> ids;
        const auto saved = readDefault<PropertyArray>(defaults, "displayOrder").value_or(PropertyArray{});
        for (const PropertyValue& each : saved)
            ids.push_back(each.as<std::string>() ? *each.as<std::string>() : "?");
        return ids;
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
