// SPDX-License-Identifier: MIT
// The rules by which displays keep the order that the user gave them. Pure; any thread.
#pragma once

#include "displays/DisplayInfo.h"

#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace lumenvale {

std::vector<std::string> identifiers(const std::vector<DisplayInfo>& displays);

/// `saved` followed by the identifiers of `found` that it lacks; nothing twice. Known displays keep their places,
/// those that are not connected too.
std::vector<std::string> mergedOrder(const std::vector<std::string>& saved, const std::vector<std::string>& found);

/// `mergedOrder` with the places that the identifiers of `visible` hold filled anew, in the order of `visible`.
/// Displays that are not connected stay where they are.
std::vector<std::string> overlaidOrder(const std::vector<std::string>& saved,
                                       const std::vector<std::string>& visible);

/// The displays by the position of their identifiers in `order`; those that it lacks come last, as they were.
std::vector<DisplayInfo> sortedDisplays(std::vector<DisplayInfo> displays, const std::vector<std::string>& order);

/// The displays at the positions `sources`, in their order, before position `destination` of the list as it was.
/// A position beyond the end names nothing as a source, and the end as a destination.
std::vector<DisplayInfo> movedDisplays(const std::vector<DisplayInfo>& displays,
                                       const std::set<std::size_t>& sources, std::size_t destination);

} // namespace lumenvale
