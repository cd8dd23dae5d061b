// SPDX-License-Identifier: MIT
#include "ui/look/Theme.h"

#include <QApplication>
#include <QFontDatabase>
#include <QToolTip>
#include <QWidget>
#include <algorithm>
#include <array>
#include <cmath>

namespace lumenvale {

namespace {

constexpr double readable = 4.5; // the contrast that a text needs
constexpr QRgb ownDarkAccent = 0xFF4C8DFF;
constexpr QRgb ownLightAccent = 0xFF2F6FED;
/// The highlights of Qt's own styles and fallback palettes, which no user chose.
constexpr std::array<QRgb, 3> shippedHighlights = {0xFF308CC6, 0xFF000080, 0xFF0078D7};

QColor withOpacity(QRgb colour, double opacity)
{
    QColor result(colour);
    result.setAlphaF(static_cast<float>(opacity));
    return result;
}

bool isChosenAccent(const QColor& colour)
{
    return colour.isValid() && colour.hslSaturationF() > 0.15F && colour.lightnessF() > 0.2F &&
           colour.lightnessF() < 0.8F &&
           std::ranges::find(shippedHighlights, colour.rgb()) == shippedHighlights.end();
}

QColor accentOf(const QPalette& palette, bool dark)
{
    const QRgb own = dark ? ownDarkAccent : ownLightAccent;
    const QColor chosen = palette.color(QPalette::Active, QPalette::Highlight);
    return isChosenAccent(chosen) ? chosen : QColor(own);
}

double relativeLuminance(const QColor& colour)
{
    const auto linear = [](float part) {
        const auto value = static_cast<double>(part);
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4); // sRGB, IEC 61966-2-1
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

/// The colour, as far towards `text` as it takes to be read on `ground`.
QColor shadeOf(const QColor& colour, const QColor& ground, const QColor& text)
{
    constexpr float step = 0.05F;
    QColor shade = colour;
    for (float share = step; share < 1.0F && contrast(shade, ground) < readable; share += step) {
        const auto mixed = [share](float from, float to) { return from + share * (to - from); };
        shade = QColor::fromRgbF(mixed(colour.redF(), text.redF()), mixed(colour.greenF(), text.greenF()),
                                 mixed(colour.blueF(), text.blueF()));
    }
    return shade;
}

} // namespace

double contrast(const QColor& one, const QColor& other)
{
    const double first = relativeLuminance(one) + 0.05;
    const double second = relativeLuminance(other) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

Theme Theme::of(const QPalette& palette)
{
    Theme theme;
    theme.isDark = palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
    const bool dark = theme.isDark;
    theme.surface = dark ? withOpacity(0xFF26262A, 0.86) : withOpacity(0xFFF8F8FA, 0.88);
    theme.edge = withOpacity(0xFF000000, 0.35);
    theme.window = QColor(dark ? 0xFF242427 : 0xFFF5F5F7);
    theme.sidebar = QColor(dark ? 0xFF1E1E21 : 0xFFECECF0);
    theme.card = QColor(dark ? 0xFF2F2F33 : 0xFFFFFFFF);
    theme.text = QColor(dark ? 0xFFF2F2F4 : 0xFF1D1D1F);
    theme.secondary = QColor(dark ? 0xFFA3A3AB : 0xFF696971);
    theme.hairline = dark ? withOpacity(0xFFFFFFFF, 0.10) : withOpacity(0xFF000000, 0.10);
    theme.control = dark ? withOpacity(0xFFFFFFFF, 0.10) : withOpacity(0xFF000000, 0.055);
    theme.controlBorder = dark ? withOpacity(0xFFFFFFFF, 0.06) : withOpacity(0xFF000000, 0.06);
    theme.track = dark ? withOpacity(0xFFFFFFFF, 0.14) : withOpacity(0xFF000000, 0.125);
    theme.accent = accentOf(palette, dark);
    theme.accentText = QColor(contrast(theme.accent, Qt::white) >= readable ? 0xFFFFFFFF : 0xFF000000);
    theme.accentShade = shadeOf(theme.accent, QColor(dark ? 0xFF404043 : 0xFFE4E4E6), theme.text);
    theme.warning = QColor(0xFFFF9F0A);
    theme.failure = QColor(dark ? 0xFFFF6961 : 0xFFD70015);
    return theme;
}

Theme Theme::of(const QWidget* widget) { return of(widget->palette()); }

const QColor& Theme::of(TextColour meaning) const
{
    switch (meaning) {
    case TextColour::primary:
        break;
    case TextColour::secondary:
        return secondary;
    case TextColour::accent:
        return accentShade;
    case TextColour::warning:
        return warning;
    case TextColour::failure:
        return failure;
    }
    return text;
}

void Theme::set(Appearance appearance, const std::optional<QColor>& accent)
{
    const bool dark = appearance == Appearance::dark;
    QApplication::setPalette(appearance == Appearance::system ? QPalette() : makePalette(dark, accent));
    QToolTip::setPalette(QApplication::palette());
}

QPalette makePalette(bool dark, const std::optional<QColor>& accent)
{
    const QColor window(dark ? 0xFF242427 : 0xFFF5F5F7);
    const QColor base(dark ? 0xFF2F2F33 : 0xFFFFFFFF);
    const QColor text(dark ? 0xFFF2F2F4 : 0xFF1D1D1F);
    QPalette palette(text, window, base.lighter(), window.darker(), window.darker(), text, base);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::ToolTipBase, base);
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::PlaceholderText, QColor(dark ? 0xFFA3A3AB : 0xFF696971));
    palette.setColor(QPalette::Highlight,
                     accent && isChosenAccent(*accent) ? *accent : QColor(dark ? ownDarkAccent : ownLightAccent));
    palette.setColor(QPalette::HighlightedText, Theme::of(palette).accentText);
    return palette;
}

QFont fontFor(TextRole role)
{
    QFont font = role == TextRole::monospaced ? QFontDatabase::systemFont(QFontDatabase::FixedFont)
                                              : QGuiApplication::font();
    font.setPixelSize(13);
    switch (role) {
    case TextRole::body:
        break;
    case TextRole::name:
        font.setWeight(QFont::Medium);
        break;
    case TextRole::strong:
        font.setWeight(QFont::DemiBold);
        break;
    case TextRole::title:
        font.setPixelSize(17);
        font.setWeight(QFont::DemiBold);
        break;
    case TextRole::digits:
    case TextRole::monospaced:
        font.setPixelSize(12);
        break;
    case TextRole::caption:
        font.setPixelSize(11);
        break;
    }
    return font;
}

} // namespace lumenvale
