// SPDX-License-Identifier: MIT
#include "app/desktop/AppearanceChoice.h"

#include <QPalette>
#include <gtest/gtest.h>

namespace lumenvale {
namespace {

TEST(AppearanceChoice, StepsInOnlyWhereTheToolkitDoesNotFollowTheDesktop)
{
    const QPalette light = makePalette(false);
    const QPalette dark = makePalette(true);
    const QColor green(0xFF2EA043);
    EXPECT_EQ(chooseAppearance({}, light), AppearanceChoice());
    EXPECT_EQ(chooseAppearance({}, dark), AppearanceChoice()); // no preference is no wish for light
    EXPECT_EQ(chooseAppearance({true, {}}, dark), AppearanceChoice());
    EXPECT_EQ(chooseAppearance({true, {}}, light), (AppearanceChoice{Appearance::dark, {}}));
    EXPECT_EQ(chooseAppearance({false, 0x2EA043}, dark), (AppearanceChoice{Appearance::light, green}));
    EXPECT_EQ(chooseAppearance({false, 0x2EA043}, light), (AppearanceChoice{Appearance::light, green}));
    EXPECT_EQ(chooseAppearance({false, 0x2EA043}, makePalette(false, QColor(0xFFE95420))), AppearanceChoice());
}

} // namespace
} // namespace lumenvale
