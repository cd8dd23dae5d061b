// SPDX-License-Identifier: MIT
#include "displays/DisplayOrder.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

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
}

TEST(DisplayOrder, MovedDisplaysLandTogetherBeforeTheDestinationOfTheOldList)
{
    const auto moved = [](const std::set<std::size_t>& sources, std::size_t destination) {
        return identifiers(movedDisplays(displays({"A", "B", "C", "D"}), sources, destination));
    };
    EXPECT_EQ(moved({3}, 0), (Ids{"D", "A", "B", "C"}));
    EXPECT_EQ(moved({0}, 4), (Ids{"B", "C", "D", "A"}));
    EXPECT_EQ(moved({0, 3}, 2), (Ids{"B", "A", "D", "C"}));
    EXPECT_EQ(moved({1}, 2), (Ids{"A", "B", "C", "D"}));
    EXPECT_EQ(moved({0, 9}, 99), (Ids{"B", "C", "D", "A"}));
}

TEST(DisplayOrder, WhateverIsMovedTheAbsentStayAndTheConnectedTakeTheNewOrder)
{
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        Ids saved;
        Ids visible;
        for (int number = 0; number < 8; ++number) {
            const std::string id(1, static_cast<char>('A' + number));
            if (random() % 4 != 0)
                saved.push_back(id);
            if (random() % 2 != 0)
                visible.push_back(id);
        }
        std::shuffle(saved.begin(), saved.end(), random);
        std::shuffle(visible.begin(), visible.end(), random);
        const Ids merged = mergedOrder(saved, visible);
        const Ids result = overlaidOrder(saved, visible);
        EXPECT_TRUE(std::is_permutation(result.begin(), result.end(), merged.begin(), merged.end()));
        Ids connected;
        for (std::size_t place = 0; place < result.size(); ++place) {
            if (std::ranges::find(visible, result[place]) != visible.end())
                connected.push_back(result[place]);
            else
                EXPECT_EQ(result[place], merged[place]);
        }
        EXPECT_EQ(connected, visible);
    }
}

} // namespace
} // namespace lumenvale
