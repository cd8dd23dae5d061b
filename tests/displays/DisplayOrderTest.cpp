// SPDX-License-Identifier: MIT
#include "displays/DisplayOrder.h"

#include <gtest/gtest.h>

namespace lumenvale {
namespace {

using Ids = std::vector<std::string>;

std::vector<DisplayInfo> displays(const Ids& ids)
{
    std::vector<DisplayInfo> list(ids.size());
    for (std::size_t position = 0; position < ids.size(); ++position)
        list[position].id = ids[position];
    return list;
}

TEST(DisplayOrder, KnownDisplaysKeepTheirPlacesAndNewOnesComeLast)
{
    EXPECT_EQ(mergedOrder({"B", "X", "A", "B"}, {"A", "N", "B", "M", "N"}), (Ids{"B", "X", "A", "N", "M"}));
    EXPECT_EQ(identifiers(sortedDisplays(displays({"A", "B", "N"}), {"B", "X", "A"})), (Ids{"B", "A", "N"}));
    EXPECT_EQ(overlaidOrder({"A", "X", "B", "C", "Y"}, {"C", "N", "A", "B"}), (Ids{"C", "X", "N", "A", "Y", "B"}));
}

TEST(DisplayOrder, MovedDisplaysLandTogetherBeforeTheDestinationOfTheOldList)
{
    const auto moved = [](const std::set<std::size_t>& sources, std::size_t destination) {
        return identifiers(movedDisplays(displays({"A", "B", "C", "D"}), sources, destination));
    };
    EXPECT_EQ(moved({3}, 0), (Ids{"D", "A", "B", "C"}));
    EXPECT_EQ(moved({0, 3}, 2), (Ids{"B", "A", "D", "C"}));
    EXPECT_EQ(moved({1}, 2), (Ids{"A", "B", "C", "D"}));
    EXPECT_EQ(moved({0, 9}, 99), (Ids{"B", "C", "D", "A"}));
}

} // namespace
} // namespace lumenvale
