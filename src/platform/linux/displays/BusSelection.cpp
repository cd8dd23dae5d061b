// SPDX-License-Identifier: MIT
#include "platform/linux/displays/BusSelection.h"

#include <algorithm>
#include <cerrno>
#include <utility>

namespace lumenvale {

namespace {

/// Numbers of the adapters that the driver names for a connector. DisplayPort's own channel is the one inside the
/// connector, and its `ddc` link may name the pins that a passive adapter would use; elsewhere the link is right.
std::vector<int> linkedNumbers(const Connector& connector)
{
    std::vector<int> numbers = connector.ownBuses;
    if (connector.linkedBus) {
        const bool isLinkFirst = connector.type != "DP";
        numbers.insert(isLinkFirst ? numbers.begin() : numbers.end(), *connector.linkedBus);
    }
    return numbers;
}

bool isLinkedTo(const Connector& connector, int number)
{
    const std::vector<int> numbers = linkedNumbers(connector);
    return std::find(numbers.begin(), numbers.end(), number) != numbers.end();
}

bool isTwin(const Connector& connector, const Connector& other)
{
    return connector.path != other.path && other.isConnected && other.edid && connector.edid &&
           other.edid->block == connector.edid->block && other.device == connector.device;
}

bool isAuxChannel(const std::string& name)
{
    return name.starts_with("AUX ") || name.starts_with("sor-") || name.starts_with("AMDGPU DM aux ") ||
           name.starts_with("Radeon aux ") || name.find("-aux-") != std::string::npos;
}

/// True when the adapter may be the channel of a panel whose own is not known. An eDP panel has an AUX channel,
/// an LVDS panel plain pins; some names tell nothing.
bool mayBelongTo(const Connector& panel, const I2cAdapter& adapter)
{
    const bool isKnown = !linkedNumbers(panel).empty();
    if (panel.kind != ConnectorKind::panel || !panel.isConnected || isKnown || adapter.graphics != panel.device)
        return false;
    if (adapter.name.starts_with("DPMST"))
        return false; // behind a hub
    if (adapter.name.starts_with("NVIDIA "))
        return true;
    return isAuxChannel(adapter.name) == (panel.type == "eDP");
}

bool isClaimedByOther(const Connector& connector, const std::vector<Connector>& all, int number)
{
    return std::any_of(all.begin(), all.end(), [&](const Connector& other) {
        return connector.path != other.path && isLinkedTo(other, number);
    });
}

/// Some cards put two sockets on one pair of pins. The EDID then tells whose turn it is, unless both show the
/// same one; a panel's pins stay untouched in any case.
bool isSharedBadly(const Connector& connector, const std::vector<Connector>& all, int number)
{
    return std::any_of(all.begin(), all.end(), [&](const Connector& other) {
        return connector.path != other.path && isLinkedTo(other, number) &&
               (other.kind == ConnectorKind::panel || isTwin(connector, other));
    });
}

/// The likeliest first: DisplayPort speaks over an AUX channel, and drivers number sockets and channels in one
/// order.
void orderByLikelihood(std::vector<I2cAdapter>& adapters, const Connector& connector,
                       const std::vector<Connector>& all)
{
    const auto isOfItsKind = [&](const I2cAdapter& each) {
        return isAuxChannel(each.name) == (connector.type == "DP");
    };
    const auto others = std::stable_partition(adapters.begin(), adapters.end(), isOfItsKind);
    const auto end = others == adapters.begin() ? adapters.end() : others;
    const auto place = std::count_if(all.begin(), all.end(), [&](const Connector& each) {
        return each.device == connector.device && each.type == connector.type && linkedNumbers(each).empty() &&
               naturallyLess(each.name, connector.name);
    });
    if (adapters.begin() != end)
        std::rotate(adapters.begin(), adapters.begin() + place % (end - adapters.begin()), end);
}

} // namespace

BusCandidates busCandidates(const Connector& connector, const std::vector<Connector>& all,
                            const std::vector<I2cAdapter>& adapters)
{
    BusCandidates candidates;
    if (connector.kind != ConnectorKind::external || !connector.edid || connector.device.empty())
        return candidates;
    candidates.hasTwin =
        std::any_of(all.begin(), all.end(), [&](const Connector& other) { return isTwin(connector, other); });

    for (const int number : linkedNumbers(connector)) {
        const auto adapter = std::find_if(adapters.begin(), adapters.end(),
                                          [number](const I2cAdapter& each) { return each.number == number; });
        if (adapter != adapters.end() && adapter->graphics == connector.device &&
            !isSharedBadly(connector, all, number))
            candidates.linked.push_back(*adapter);
    }
    for (const I2cAdapter& adapter : adapters) {
        if (adapter.graphics != connector.device || isLinkedTo(connector, adapter.number) ||
            isClaimedByOther(connector, all, adapter.number))
            continue;
        if (std::any_of(all.begin(), all.end(), [&](const Connector& each) { return mayBelongTo(each, adapter); }))
            candidates.isPanelNear = true;
        else if (!candidates.hasTwin)
            candidates.unlinked.push_back(adapter);
    }
    orderByLikelihood(candidates.unlinked, connector, all);
    return candidates;
}

std::optional<I2cAdapter> selectBus(const BusCandidates& candidates, const Edid& edid, const EdidReader& readEdid)
{
    for (const I2cAdapter& adapter : candidates.linked) {
        if (readEdid(adapter, IfBusy::wait) == edid.block)
            return adapter;
    }
    // Without a serial number a second fit is another way to the same picture, or a twin that the kernel does not
    // see.
    std::vector<I2cAdapter> fitting, busy;
    const auto isDecided = [&] { return fitting.size() > (hasSerial(edid) ? 0U : 1U); };
    const auto ask = [&](const I2cAdapter& adapter, IfBusy ifBusy) {
        const tl::expected<EdidBlock, int> shown = readEdid(adapter, ifBusy);
        if (shown == edid.block)
            fitting.push_back(adapter);
        else if (!shown && shown.error() == EAGAIN)
            busy.push_back(adapter);
    };
    for (const I2cAdapter& adapter : candidates.unlinked) {
        if (!isDecided())
            ask(adapter, IfBusy::skip);
    }
    for (const I2cAdapter& adapter : std::exchange(busy, {})) {
        if (!isDecided())
            ask(adapter, IfBusy::wait);
    }
    return fitting.size() == 1 ? std::optional(fitting.front()) : std::nullopt;
}

} // namespace lumenvale
