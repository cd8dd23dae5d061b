// SPDX-License-Identifier: MIT
// Decides which I2C adapter, if any, is a connector's channel. Rather none than the wrong one: a bus counts only
// when it shows the very EDID that the kernel read through the connector. Any thread.
#pragma once

#include "platform/linux/displays/Connector.h"
#include "platform/linux/displays/I2cAdapter.h"

#include <functional>
#include <optional>
#include <vector>

namespace lumenvale {

/// The adapters that may be a connector's channel.
struct BusCandidates {
    std::vector<I2cAdapter> linked;   ///< named by the driver, likeliest first; the first that fits is taken
    std::vector<I2cAdapter> unlinked; ///< of the same card, without a connector; taken only if exactly one fits
    bool hasTwin = false;             ///< another connected monitor shows the same EDID
    bool isPanelNear = false;         ///< adapters were left out because one of them may be a panel's
};

/// Pure. `adapters` are the machine's display adapters, `all` its connectors.
BusCandidates busCandidates(const Connector& connector, const std::vector<Connector>& all,
                            const std::vector<I2cAdapter>& adapters);

/// Reads the EDID base block on an adapter's bus; none when nothing answers there.
using EdidReader = std::function<std::optional<EdidBlock>(const I2cAdapter&)>;

/// The candidate that shows `edid`.
std::optional<I2cAdapter> selectBus(const BusCandidates& candidates, const Edid& edid, const EdidReader& readEdid);

} // namespace lumenvale
