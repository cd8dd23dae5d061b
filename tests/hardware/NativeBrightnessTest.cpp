// SPDX-License-Identifier: MIT
#include "hardware/NativeBrightness.h"

#include <gtest/gtest.h>
#include <limits>
#include <memory>

namespace lumenvale {
namespace {

TEST(NativeBrightness, CountsOnlyFractions)
{
    float value = 0.0F;
    const auto library = std::make_shared<int>(0);
    const NativeBrightness native({.handle = library, .getter = [&](std::uint32_t, float* out) {
                                       *out = value;
                                       return 0;
                                   }});
    for (const float good : {0.0F, -0.0F, 1.0F, 0.5F, std::numeric_limits<float>::denorm_min()}) {
        value = good;
        EXPECT_EQ(native.read(1), static_cast<double>(good));
    }
    for (const float bad :
         {1.0000001F, -0.1F, std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
        value = bad;
        EXPECT_FALSE(native.read(1)) << bad;
    }
}

TEST(NativeBrightness, WithoutALibraryThereIsNothing)
{
    EXPECT_FALSE(NativeBrightness({.getter = [](std::uint32_t, float*) { return 0; }}).read(1));
    EXPECT_FALSE(NativeBrightness({.handle = std::make_shared<int>(0)}).read(1));
}

} // namespace
} // namespace lumenvale
