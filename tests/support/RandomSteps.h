// SPDX-License-Identifier: MIT
// Random steps of a script: what users, hands on monitors, cables and sleep do.
#pragma once

#include <random>
#include <string>
#include <vector>

namespace lumenvale {

class RandomSteps {
public:
    RandomSteps(unsigned seed, std::string displayNames) : displays(std::move(displayNames)), random(seed) {}

    unsigned pick(std::size_t count) { return static_cast<unsigned>(random() % count); }

    /// One of these, with a display for each %d, a level for each %l, a position for each %n and milliseconds for
    /// %t.
    std::string next(const std::vector<std::string>& steps)
    {
        std::string step = steps[pick(steps.size())];
        for (std::size_t at = step.find('%'); at != std::string::npos; at = step.find('%', at))
            step.replace(at, 2, valueFor(step[at + 1]));
        return step;
    }

private:
    std::string valueFor(char kind)
    {
        if (kind == 'd')
            return std::string(1, displays[pick(displays.size())]);
        return kind == 'l' ? std::to_string(pick(1001) / 1000.0) : std::to_string(pick(kind == 'n' ? 6 : 200));
    }

    const std::string displays;
    std::mt19937 random;
};

} // namespace lumenvale
