// SPDX-License-Identifier: MIT
#include "platform/linux/displays/KernelRecords.h"

#include <algorithm>
#include <utility>

namespace lumenvale {

namespace {

DisplayRecords completed(DisplayRecords records, const SystemPaths& paths)
{
    records.isWhole = true;
    const bool hasPanel =
        std::any_of(records.connectors.begin(), records.connectors.end(),
                    [](const Connector& each) { return each.isConnected && each.kind == ConnectorKind::panel; });
    if (hasPanel)
        records.backlights = readBacklights(paths);
    records.adapters = readDisplayAdapters(paths);
    const std::filesystem::path busFiles = paths.sysfs / "class/i2c-dev";
    records.busFiles = entryNames(busFiles);
    records.hasBusFiles = !records.busFiles.empty() || !resolved(busFiles).empty();
    return records;
}

} // namespace

const Connector* DisplayRecords::display(std::uint32_t displayID) const
{
    const auto found = std::find_if(connectors.begin(), connectors.end(), [displayID](const Connector& each) {
        return each.displayID == displayID && each.isDisplay();
    });
    return found == connectors.end() ? nullptr : &*found;
}

KernelRecords::KernelRecords(SystemPaths paths, ChangeCheck hasChanged)
    : paths(std::move(paths)), hasChanged(std::move(hasChanged))
{
}

SharedRecords KernelRecords::current()
{
    const std::lock_guard lock(reading);
    const bool mayHaveChanged = !hasChanged || hasChanged(); // asked each time: it counts from its last answer
    const SharedRecords known = kept();
    if (mayHaveChanged || isOutdated || !known)
        return readLocked();
    return known->isWhole ? known : keep(completed(*known, paths));
}

SharedRecords KernelRecords::last()
{
    const SharedRecords known = kept();
    return known && known->isWhole ? known : current();
}

SharedRecords KernelRecords::lastConnectors()
{
    if (SharedRecords known = kept())
        return known;
    const std::lock_guard lock(reading);
    if (SharedRecords known = kept()) // read meanwhile
        return known;
    if (hasChanged)
        (void)hasChanged(); // what is read below has it
    return keep({.connectors = readConnectors(paths)});
}

SharedRecords KernelRecords::readAnew()
{
    const std::lock_guard lock(reading);
    if (hasChanged)
        (void)hasChanged(); // likewise
    return readLocked();
}

SharedRecords KernelRecords::readPower()
{
    const SharedRecords before = last();
    const std::lock_guard lock(reading);
    DisplayRecords now = *kept();
    readPowerStates(now.connectors);
    const auto isSame = [](const Connector& left, const Connector& right) {
        return left.isDriven == right.isDriven && left.isAsleep == right.isAsleep;
    };
    const bool isUnchanged = before == kept() && std::equal(now.connectors.begin(), now.connectors.end(),
                                                            before->connectors.begin(), isSame);
    return isUnchanged ? before : keep(std::move(now));
}

SharedRecords KernelRecords::readLocked()
{
    isOutdated = false;
    return keep(completed({.connectors = readConnectors(paths)}, paths));
}

SharedRecords KernelRecords::keep(DisplayRecords read)
{
    auto made = std::make_shared<const DisplayRecords>(std::move(read));
    const std::lock_guard lock(access);
    records = made;
    return made;
}

SharedRecords KernelRecords::kept() const
{
    const std::lock_guard lock(access);
    return records;
}

} // namespace lumenvale
