// SPDX-License-Identifier: MIT
#include "preferences/BuildInfo.h"

#include "base/Json.h"

namespace lumenvale {

namespace {

using namespace std::chrono_literals;

constexpr auto labelAge = 7 * 24h; // a label is for those who try out a fresh build

std::optional<std::string> builtAtText(const std::string& metadata)
{
    const auto stamp = parseJson(metadata);
    if (!stamp || !stamp->is_object())
        return std::nullopt;
    const auto entry = stamp->find("builtAt");
    if (entry == stamp->end() || !entry->is_string())
        return std::nullopt;
    return entry->get<std::string>();
}

} // namespace

BuildInfo readBuildInfo(const BuildResources& resources,
                        const std::function<std::optional<BuildInfo::Time>(const std::string&)>& parseTime)
{
    BuildInfo info;
    info.version = resources.version.value_or("Unknown");
    info.number = resources.number.value_or("Unknown");
    const auto builtAt = resources.metadata ? builtAtText(*resources.metadata) : std::nullopt;
    info.builtAt = builtAt ? parseTime(*builtAt) : std::nullopt;
    return info;
}

std::optional<std::string> buildLabel(const BuildInfo& info, BuildInfo::Time now,
                                      const std::function<std::string(BuildInfo::Time)>& format)
{
    if (!info.builtAt || now < *info.builtAt || now - labelAge >= *info.builtAt)
        return std::nullopt;
    return "Built " + format(*info.builtAt);
}

} // namespace lumenvale
