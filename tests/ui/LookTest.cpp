// SPDX-License-Identifier: MIT
#include "ui/look/Painting.h"
#include "ui/look/Symbols.h"
#include "ui/look/Theme.h"

#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

namespace lumenvale {
namespace {

QImage canvas(int width, int height, double scale = 1.0)
{
    QImage image(int(width * scale), int(height * scale), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    return image;
}

bool isEmpty(const QImage& image)
{
    QImage blank = image;
    blank.fill(Qt::transparent);
    return image == blank;
}

TEST(ThemeTest, TheAccentIsTheHighlightColourThatSomebodyChose)
{
    const auto accentOf = [](QRgb highlight) {
        QPalette palette = makePalette(true);
        palette.setColor(QPalette::Highlight, QColor(highlight));
        return Theme::of(palette).accent.rgb();
    };
    const QRgb own = Theme::of(makePalette(true)).accent.rgb();
    EXPECT_EQ(own, 0xFF4C8DFF);
    EXPECT_EQ(Theme::of(makePalette(false)).accent.rgb(), 0xFF2F6FED);
    EXPECT_EQ(accentOf(0xFFE0457B), 0xFFE0457B);
    for (const QRgb nobodys : {0xFF308CC6, 0xFF000080, 0xFF808080, 0xFFFFFFFF, 0xFF0A0A0C})
        EXPECT_EQ(accentOf(nobodys), own) << std::hex << nobodys;
    EXPECT_EQ(Theme::of(makePalette(true, QColor(0xFF33AA33))).accent.rgb(), 0xFF33AA33);
}

TEST(ThemeTest, TextOnTheAccentAndOnEverySurfaceCanBeRead)
{
    for (const bool dark : {true, false}) {
        const Theme theme = Theme::of(makePalette(dark));
        for (const QColor& ground : {theme.window, theme.sidebar, theme.card})
            EXPECT_GT(std::abs(ground.lightness() - theme.text.lightness()), 150);
    }
    EXPECT_EQ(Theme::of(makePalette(true, QColor(0xFFF2C037))).accentText.rgb(), 0xFF1D1D1F)
        << "dark on a bright accent";
}

TEST(SymbolsTest, EverySymbolIsDrawnInsideItsBoxInTheGivenColour)
{
    for (const char* name :
         {"laptopcomputer", "display", "display.2", "exclamationmark.triangle", "sun.max.fill", "minus", "plus",
          "checkmark", "gearshape", "arrow.clockwise", "power", "slider.horizontal.3", "trash", "doc.on.doc"}) {
        SCOPED_TRACE(name);
        QImage image = canvas(20, 20, 2.0);
        {
            QPainter painter(&image);
            drawSymbol(painter, name, {2, 2, 16, 16}, QColor(0xFF00FF00));
        }
        EXPECT_FALSE(isEmpty(image));
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QRgb pixel = image.pixel(x, y);
                const bool outside = x < 4 || y < 4 || x >= 36 || y >= 36;
                ASSERT_TRUE(qAlpha(pixel) == 0 || !outside) << x << ' ' << y;
                ASSERT_TRUE(qRed(pixel) == 0 && qBlue(pixel) == 0);
            }
        }
    }
    QImage image = canvas(20, 20);
    QPainter painter(&image);
    drawSymbol(painter, "no such symbol", {2, 2, 16, 16}, Qt::black);
    painter.end();
    EXPECT_TRUE(isEmpty(image));
}

TEST(PaintingTest, EdgesLieOnTheScreensPixelsAtEveryScale)
{
    for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
        QImage image = canvas(40, 40, scale);
        QPainter painter(&image);
        painter.translate(0.3, 0.7);
        const QRectF pixels = painter.deviceTransform().mapRect(snapped(painter, {3, 5, 21, 11}));
        for (const double edge : {pixels.left(), pixels.top(), pixels.right(), pixels.bottom()})
            EXPECT_NEAR(edge, std::round(edge), 1e-6) << scale;
        EXPECT_NEAR(hairlineWidth(painter) * scale, 1.0, 1e-9);
    }
}

} // namespace
} // namespace lumenvale
