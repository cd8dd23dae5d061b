// SPDX-License-Identifier: MIT
// A display store among random users, hands on monitors, cables and sleep.
#pragma once

#include "support/StoreFixture.h"

#include <cmath>
#include <random>

namespace lumenvale {

class RandomWorld : public StoreFixture {
public:
    void TestBody() override {}

protected:
    /// Connects the displays: "A" is native, "B" counts to 255, "E" cannot be controlled.
    RandomWorld(unsigned seed, std::vector<std::string> identifiers) : names(std::move(identifiers)), random(seed)
    {
        for (const std::string& each : names)
            connect(each);
    }

    unsigned pick(std::size_t count) { return static_cast<unsigned>(random() % count); }
    const std::string& name() { return names[pick(names.size())]; }
    double level() { return pick(1001) / 1000.0; }

    void connect(const std::string& id)
    {
        const ControlMethod method = id == "A"   ? ControlMethod::apple
                                     : id == "E" ? ControlMethod::unavailable
                                                 : ControlMethod::ddc;
        plug(id, {.method = method,
                  .brightness = id == "B" ? 128.0 / 255 : 0.5,
                  .maximum = static_cast<std::uint16_t>(id == "B" ? 255 : 100)});
    }
    void changeByHand(const std::string& id)
    {
        const auto monitor = hardware.monitors.find(id);
        if (monitor == hardware.monitors.end())
            return;
        const double units = monitor->second.maximum;
        monitor->second.brightness = std::round(level() * units) / units;
        const std::optional<BrightnessError> failures[] = {std::nullopt, std::nullopt, BrightnessError::mismatch,
                                                           BrightnessError::readFailed};
        monitor->second.writeError = failures[pick(4)];
        monitor->second.isReadable = pick(4) != 0;
    }
    void changeCables(const std::string& id)
    {
        if (hardware.monitors.contains(id))
            unplug(id);
        else
            connect(id);
        events.send(SystemEvent::screenParametersChanged);
    }
    SystemEvent sleepOrWake()
    {
        const SystemEvent kinds[] = {SystemEvent::screensDidSleep, SystemEvent::systemWillSleep,
                                     SystemEvent::screensDidWake, SystemEvent::systemDidWake};
        return kinds[pick(4)];
    }
    /// From now on every monitor is read in its turn.
    void wakeEverything()
    {
        for (auto& [id, monitor] : hardware.monitors)
            monitor.isReadable = true;
        screens.asleep.clear();
        events.send(SystemEvent::screensDidWake);
        store->setWindowVisible(true);
    }

    const std::vector<std::string> names;
    std::mt19937 random;
};

} // namespace lumenvale
