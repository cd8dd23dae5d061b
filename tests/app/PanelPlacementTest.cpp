// SPDX-License-Identifier: MIT
#include "app/desktop/PanelPlacement.h"

#include <gtest/gtest.h>
#include <ostream>

namespace lumenvale {

void PrintTo(const Rect& rect, std::ostream* out)
{
    *out << rect.x << ", " << rect.y << ", " << rect.width << " x " << rect.height;
}

namespace {

// A 1440 x 900 screen with a bar of 24 points at the top.
constexpr Rect visible = {0, 24, 1440, 876};

TEST(PanelPlacement, DockRuleFollowsTheNearestEdge)
{
    const struct {
        const char* what;
        Point anchor;
        Rect visibleFrame;
        double preferredHeight;
        Rect expected;
    } rows[] = {
        {"bottom, in the middle", {720, 880}, visible, 284, {550, 608, 340, 284}},
        {"bottom, at the right end", {1300, 880}, visible, 284, {1092, 608, 340, 284}},
        {"bottom, at the left end", {140, 880}, visible, 284, {8, 608, 340, 284}},
        {"left", {-30, 500}, visible, 284, {8, 358, 340, 284}},
        {"left, near the top", {10, 40}, visible, 284, {8, 32, 340, 284}},
        {"right", {1470, 500}, visible, 284, {1092, 358, 340, 284}},
        {"top: the sides are nearer than the bottom", {720, 30}, visible, 284, {1092, 32, 340, 284}},
        {"a tie goes to the bottom", {300, 600}, visible, 284, {130, 608, 340, 284}},
        {"exactly between left and right", {720, 1200}, {0, 0, 1440, 2000}, 284, {1092, 1058, 340, 284}},
        {"screen with a negative origin", {-1000, 490}, {-1920, -500, 1920, 1000}, 284, {-1170, 208, 340, 284}},
        {"higher than the screen", {720, 880}, visible, 5000, {550, 32, 340, 860}},
        {"narrower than 356 points", {100, 595}, {0, 0, 300, 600}, 284, {8, 308, 284, 284}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(panelNearDock(row.anchor, row.visibleFrame, row.preferredHeight), row.expected) << row.what;
}

TEST(PanelPlacement, StatusItemRuleHangsThePanelFromTheBar)
{
    const struct {
        const char* what;
        Rect item;
        Rect visibleFrame;
        double preferredHeight;
        Rect expected;
    } rows[] = {
        {"below the item", {700, 0, 40, 24}, visible, 284, {550, 30, 340, 284}},
        {"a point in the bar", {720, 12, 0, 0}, visible, 284, {550, 24, 340, 284}},
        {"at the right end", {1400, 0, 40, 24}, visible, 284, {1092, 30, 340, 284}},
        {"at the left end", {0, 0, 40, 24}, visible, 284, {8, 30, 340, 284}},
        {"higher than the screen", {700, 0, 40, 24}, visible, 5000, {550, 30, 340, 862}},
        {"narrower than 356 points", {140, 0, 20, 24}, {0, 24, 300, 876}, 284, {8, 30, 284, 284}},
        {"screen with negative origins",
         {-700, -524, 40, 24},
         {-1440, -500, 1440, 876},
         284,
         {-850, -494, 340, 284}},
        {"bar at the bottom, high panel", {700, 860, 40, 40}, {0, 0, 1440, 860}, 5000, {550, 8, 340, 846}},
        {"bar at the left", {0, 26, 40, 24}, {40, 0, 1400, 900}, 284, {48, 56, 340, 284}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(panelAtStatusItem(row.item, row.visibleFrame, row.preferredHeight), row.expected) << row.what;
}

TEST(PanelPlacement, PanelStaysOnTheScreenAnywhere)
{
    for (const Rect& screen : {visible, Rect{-1920, -1080, 1920, 1056}, Rect{0, 0, 320, 240}}) {
        for (double x = screen.x - 20; x <= screen.maxX() + 20; x += 37) {
            for (const double y : {screen.y - 20, screen.midY(), screen.maxY() + 20}) {
                for (const Rect panel :
                     {panelNearDock({x, y}, screen, 600), panelAtStatusItem({x, y, 0, 0}, screen, 600)}) {
                    EXPECT_GE(panel.x, screen.x + screenMargin);
                    EXPECT_LE(panel.maxX(), screen.maxX() - screenMargin);
                    EXPECT_GE(panel.y, screen.y);
                    EXPECT_LE(panel.maxY(), screen.maxY());
                }
            }
        }
    }
}

} // namespace
} // namespace lumenvale
