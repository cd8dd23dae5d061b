// SPDX-License-Identifier: MIT
// Decides which I2C adapter, if any, is a connector's channel. Rather none than the wrong one: a bus counts only
// when it shows the very EDID that the kernel read through the connector. Any thread.
#pragma once

#include "platform/linux/displays/Connector.h"
#include "platform/linux/displays/I2cAdapter.h"

#include <functional>
#include <optional>
#include <tl/expected.hpp>
#include <vector>

namespace lumenvale {

/// The adapters that may be a connector's channel.
struct BusCandidates {
    std::vector<I2cAdapter> linked;   ///< named by the driver, likeliest first; the first that fits is taken
    std::vector<I2cAdapter> unlinked; ///< of the same card, without a connector; likeliest first
    bool hasTwin = false;             ///< another connected monitor shows the same EDID
    bool isPanelNear = false;         ///< adapters were left out because one of them may be a panel's
};

/// Pure. `adapters` are the machine's display adapters, `all` its connectors.
BusCandidates busCandidates(const Connector& connector, const std::vector<Connector>& all,
                            const std::vector<I2cAdapter>& adapters);

/// What to do about a bus that another program holds.
enum class IfBusy { wait, skip };

/// Reads the EDID base block on an adapter's bus. The error is the system's number: EAGAIN when the bus is held.
using EdidReader = std::function<tl::expected<EdidBlock, int>(const I2cAdapter&, IfBusy)>;

/// The candidate that shows `edid`. Of those that no driver names it is the first where the EDID tells which
/// specimen the monitor is; else exactly one may fit, so that all are asked. Held ones are asked last.
std::optional<I2cAdapter> selectBus(const BusCandidates& candidates, const Edid& edid, const EdidReader& readEdid);

} // namespace lumenvale
