// SPDX-License-Identifier: MIT
#include "app/desktop/PanelPlacement.h"

#include <gtest/gtest.h>

namespace lumenvale {

namespace {

// A 1440 x 900 screen with a bar of 24 points at the top.
constexpr Rect visible = {0, 24, 1440, 876};

struct Row {
    const char* what;
    Rect at; ///< the status item, or the point of the Dock
    Rect visibleFrame;
    double preferredHeight;
    Rect expected;
};

TEST(PanelPlacement, DockRuleFollowsTheNearestEdge)
{
    const Row rows[] = {
        {"bottom, in the middle", {720, 880}, visible, 284, {550, 608, 340, 284}},
        {"left, near the top", {10, 40}, visible, 284, {8, 32, 340, 284}},
        {"top: the sides are nearer than the bottom", {720, 30}, visible, 284, {1092, 32, 340, 284}},
        {"a tie goes to the bottom", {300, 600}, visible, 284, {130, 608, 340, 284}},
        {"exactly between left and right", {720, 1200}, {0, 0, 1440, 2000}, 284, {1092, 1058, 340, 284}},
        {"higher than the screen", {720, 880}, visible, 5000, {550, 32, 340, 860}},
        {"narrower than 356 points", {100, 595}, {0, 0, 300, 600}, 284, {8, 308, 284, 284}},
    };
    for (const Row& row : rows)
        EXPECT_EQ(panelNearDock({row.at.x, row.at.y}, row.visibleFrame, row.preferredHeight), row.expected)
            << row.what;
}

TEST(PanelPlacement, StatusItemRuleHangsThePanelFromTheBar)
{
    const Row rows[] = {
        {"below the item", {700, 0, 40, 24}, visible, 284, {550, 30, 340, 284}},
        {"higher than the screen", {700, 0, 40, 24}, visible, 5000, {550, 30, 340, 862}},
        {"negative origins", {-700, -524, 40, 24}, {-1440, -500, 1440, 876}, 284, {-850, -494, 340, 284}},
        {"bar at the bottom, high panel", {700, 860, 40, 40}, {0, 0, 1440, 860}, 5000, {550, 8, 340, 846}},
        {"bar at the left", {0, 26, 40, 24}, {40, 0, 1400, 900}, 284, {48, 56, 340, 284}},
    };
    for (const Row& row : rows)
        EXPECT_EQ(panelAtStatusItem(row.at, row.visibleFrame, row.preferredHeight), row.expected) << row.what;
}

} // namespace
} // namespace lumenvale
