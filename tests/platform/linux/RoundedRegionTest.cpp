// SPDX-License-Identifier: MIT
#include "platform/linux/x11/X11.h"

#include <gtest/gtest.h>
#include <vector>

namespace lumenvale {
namespace {

TEST(X11, RoundedRegionCoversEveryRowOnceAndIsSymmetrical)
{
    const auto region = x11::roundedRegion(340, 284, 12);
    ASSERT_EQ(region.size(), 4u * (12 + 1 + 12));
    std::uint32_t next = 0;
    for (std::size_t i = 0; i < region.size(); i += 4) {
        EXPECT_EQ(region[i + 1], next);
        EXPECT_EQ(region[i + 2], 340 - 2 * region[i]);
        EXPECT_EQ(region[i], region[region.size() - 4 - i]);
        next += region[i + 3];
    }
    EXPECT_EQ(next, 284u);
    EXPECT_GT(region[0], 6u); // the corner
    EXPECT_EQ(x11::roundedRegion(10, 10, 0), (std::vector<std::uint32_t>{0, 0, 10, 10}));
}

} // namespace
} // namespace lumenvale
