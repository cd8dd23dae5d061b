// SPDX-License-Identifier: MIT
// What the preset editor needs of the displays. Main thread only.
#pragma once

#include "base/Task.h"
#include "displays/DisplayInfo.h"

#include <map>
#include <string>
#include <vector>

namespace lumenvale {

class PresetDisplayControlling {
public:
    virtual ~PresetDisplayControlling() = default;

    /// The connected displays, in display order. The reference is good until the list changes.
    virtual const std::vector<DisplayInfo>& displayList() const = 0;

    /// Completes when every write requested so far has reached its display or failed; after a start not before
    /// the displays are known.
    virtual Task<> pendingWritesFinished() = 0;

    /// Starts writing a level (0.0 to 1.0) to each connected display named, and returns.
    virtual void apply(const std::map<std::string, double>& levels) = 0;

    /// Starts writing one display's level and returns.
    virtual void setLevel(const std::string& id, double level) = 0;
};

} // namespace lumenvale
