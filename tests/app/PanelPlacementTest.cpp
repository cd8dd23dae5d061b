// SPDX-License-Identifier: MIT
#include "app/desktop/PanelPlacement.h"

#include <gtest/gtest.h>
#include <ostream>
#include <string>

namespace lumenvale {

void PrintTo(const Rect& rect, std::ostream* out)
{
    *out << rect.x << ", " << rect.y << ", " << rect.width << " x " << rect.height;
}

namespace {

// A 1440 x 900 screen with a bar of 24 points at the top; y grows upward.
constexpr Rect visible = {0, 0, 1440, 876};

struct Row {
    const char* what;
    Point anchor;
    Rect visibleFrame;
    double preferredHeight;
    Rect expected;
};

TEST(PanelPlacement, DockRuleFollowsTheNearestEdge)
{
    const Row rows[] = {
        {"bottom, in the middle", {720, 20}, visible, 284, {550, 8, 340, 284}},
        {"bottom, at the right end", {1300, 20}, visible, 284, {1092, 8, 340, 284}},
        {"bottom, at the left end", {140, 20}, visible, 284, {8, 8, 340, 284}},
        {"left", {-30, 400}, visible, 284, {8, 258, 340, 284}},
        {"left, near the top", {10, 860}, visible, 284, {8, 584, 340, 284}},
        {"right", {1470, 400}, visible, 284, {1092, 258, 340, 284}},
        {"top: the sides are nearer than the bottom", {720, 870}, visible, 284, {1092, 584, 340, 284}},
        {"a tie goes to the bottom", {300, 300}, visible, 284, {130, 8, 340, 284}},
        {"exactly between left and right", {720, 800}, {0, 0, 1440, 2000}, 284, {1092, 658, 340, 284}},
        {"screen with a negative origin", {-1000, -490}, {-1920, -500, 1920, 1000}, 284, {-1170, -492, 340, 284}},
        {"higher than the screen", {720, 20}, visible, 5000, {550, 8, 340, 860}},
        {"narrower than 356 points", {100, 5}, {0, 0, 300, 600}, 284, {8, 8, 284, 284}},
    };
    for (const Row& row : rows)
        EXPECT_EQ(panelNearDock(row.anchor, row.visibleFrame, row.preferredHeight), row.expected) << row.what;
}

TEST(PanelPlacement, StatusItemRuleHangsThePanelFromTheBar)
{
    const struct {
        const char* what;
        Rect item;
        Rect visibleFrame;
        double height;
        Rect expected;
    } rows[] = {
        {"below the item", {700, 876, 40, 24}, visible, 284, {550, 586, 340, 284}},
        {"a point in the bar", {720, 888, 0, 0}, visible, 284, {550, 592, 340, 284}},
        {"at the right end", {1400, 876, 40, 24}, visible, 284, {1092, 586, 340, 284}},
        {"at the left end", {0, 876, 40, 24}, visible, 284, {8, 586, 340, 284}},
        {"higher than the screen", {700, 876, 40, 24}, visible, 5000, {550, 8, 340, 862}},
        {"narrower than 356 points", {140, 876, 20, 24}, {0, 0, 300, 876}, 284, {8, 586, 284, 284}},
        {"screen with negative origins", {-700, 376, 40, 24}, {-1440, -500, 1440, 876}, 284, {-850, 86, 340, 284}},
        {"bar at the bottom, high panel", {700, 0, 40, 40}, {0, 40, 1440, 860}, 5000, {550, 46, 340, 846}},
        {"bar at the left", {0, 850, 40, 24}, {40, 0, 1400, 900}, 284, {48, 560, 340, 284}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(panelAtStatusItem(row.item, row.visibleFrame, row.height), row.expected) << row.what;
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

TEST(PanelPlacement, ScreenIsTheFirstThatHoldsThePointElseTheMainOne)
{
    const ScreenFrame left = {{-1920, 0, 1920, 1080}, {-1920, 0, 1920, 1056}, false};
    const ScreenFrame main = {{0, 0, 1440, 900}, visible, true};
    EXPECT_EQ(screenAt({-1, 10}, {left, main})->frame, left.frame);
    EXPECT_EQ(screenAt({0, 10}, {left, main})->frame, main.frame);
    EXPECT_EQ(screenAt({5000, 5000}, {left, main})->frame, main.frame);
    EXPECT_FALSE(screenAt({5000, 5000}, {left}));
    EXPECT_FALSE(screenAt({0, 0}, {}));
}

} // namespace
} // namespace lumenvale
