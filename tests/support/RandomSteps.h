// SPDX-License-Identifier: MIT
// The steps of random walks, drawn from scripts as StoreScript.h has them.
#pragma once

#include "support/StoreScript.h"

#include <random>
#include <string>
#include <utility>
#include <vector>

namespace lumenvale {

/// Random steps: what users, hands on monitors, cables and sleep do.
class RandomSteps {
public:
    RandomSteps(unsigned seed, std::string displayNames) : displays(std::move(displayNames)), random(seed) {}

    unsigned pick(std::size_t count) { return static_cast<unsigned>(random() % count); }

    /// One step of the script, with a display for each %d, a level for each %l, a position for each %n and
    /// milliseconds for each %t.
    std::string next(const std::string& script)
    {
        const std::vector<std::string> steps = StoreScript::stepsOf(script);
        std::string step = steps[pick(steps.size())];
        for (std::size_t at = step.find('%'); at != std::string::npos; at = step.find('%', at)) {
            const char kind = step[at + 1];
            step.replace(at, 2,
                         kind == 'd'   ? std::string(1, displays[pick(displays.size())])
                         : kind == 'l' ? std::to_string(pick(1001) / 1000.0)
                                       : std::to_string(pick(kind == 'n' ? 6 : 200)));
        }
        return step;
    }

private:
    const std::string displays;
    std::mt19937 random;
};

} // namespace lumenvale
