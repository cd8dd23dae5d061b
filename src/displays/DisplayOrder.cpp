// SPDX-License-Identifier: MIT
#include "displays/DisplayOrder.h"

#include <algorithm>
#include <map>
#include <utility>

namespace lumenvale {

std::vector<std::string> identifiers(const std::vector<DisplayInfo>& displays)
{
    std::vector<std::string> result;
    result.reserve(displays.size());
    for (const DisplayInfo& each : displays)
        result.push_back(each.id);
    return result;
}

std::vector<std::string> mergedOrder(const std::vector<std::string>& saved, const std::vector<std::string>& found)
{
    std::vector<std::string> result;
    std::set<std::string> known;
    for (const auto* list : {&saved, &found}) {
        for (const std::string& id : *list) {
            if (known.insert(id).second)
                result.push_back(id);
        }
    }
    return result;
}

std::vector<std::string> overlaidOrder(const std::vector<std::string>& saved,
                                       const std::vector<std::string>& visible)
{
    const std::vector<std::string> distinct = mergedOrder(visible, {});
    const std::set<std::string> connected(distinct.begin(), distinct.end());
    std::vector<std::string> result = mergedOrder(saved, distinct);
    auto next = distinct.begin();
    for (std::string& id : result) {
        if (connected.contains(id))
            id = *next++;
    }
    return result;
}

std::vector<DisplayInfo> sortedDisplays(std::vector<DisplayInfo> displays, const std::vector<std::string>& order)
{
    std::map<std::string, std::size_t> positions;
    for (const std::string& id : order)
        positions.emplace(id, positions.size());
    const auto position = [&](const DisplayInfo& display) {
        const auto found = positions.find(display.id);
        return found == positions.end() ? positions.size() : found->second;
    };
    std::stable_sort(displays.begin(), displays.end(), [&](const DisplayInfo& left, const DisplayInfo& right) {
        return position(left) < position(right);
    });
    return displays;
}

std::vector<DisplayInfo> movedDisplays(const std::vector<DisplayInfo>& displays,
                                       const std::set<std::size_t>& sources, std::size_t destination)
{
    std::vector<DisplayInfo> before;
    std::vector<DisplayInfo> moved;
    std::vector<DisplayInfo> after;
    for (std::size_t position = 0; position < displays.size(); ++position) {
        auto& part = sources.contains(position) ? moved : position < destination ? before : after;
        part.push_back(displays[position]);
    }
    before.insert(before.end(), moved.begin(), moved.end());
    before.insert(before.end(), after.begin(), after.end());
    return before;
}

} // namespace lumenvale
