// SPDX-License-Identifier: MIT
// The program's colours and fonts, as functions of a widget's palette: a change of the system's appearance arrives
// as a palette change, repaints everything, and is thereby followed live.
#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>
#include <optional>

class QWidget;

namespace lumenvale {

enum class Appearance { system, light, dark };

/// What a text's or symbol's colour means. Warnings colour symbols only: their orange cannot be read on white.
enum class TextColour { primary, secondary, accent, warning, failure };

struct Theme {
    bool isDark = false;
    QColor surface; ///< panels; not opaque
    QColor edge;    ///< a panel's outermost line
    QColor window;  ///< the settings window
    QColor sidebar;
    QColor card;
    QColor text;
    QColor secondary;
    QColor hairline;
    QColor control;       ///< a button's face
    QColor controlBorder; ///< drawn over the face
    QColor accent;
    QColor accentText;  ///< on the accent: white or black, whichever can be read
    QColor accentShade; ///< the accent as a text's colour: as dark or as light as it takes to be read
    QColor warning;
    QColor failure;
    QColor track; ///< the empty part of a slider

    /// Dark where the palette's windows are darker than their text. The accent is the palette's highlight colour
    /// where the user chose it: it is neither one that Qt ships nor too grey, dark or pale to be seen.
    static Theme of(const QPalette& palette);
    static Theme of(const QWidget* widget);

    /// The colour of a text or symbol with this meaning.
    const QColor& of(TextColour meaning) const;

    /// Gives the whole program an appearance, for systems that announce theirs apart from the palette; views
    /// follow at once. `accent` is the system's highlight colour where it names one.
    static void set(Appearance appearance, const std::optional<QColor>& accent = std::nullopt);
};

/// The palette of an appearance; for systems whose own palette does not follow it.
QPalette makePalette(bool dark, const std::optional<QColor>& accent = std::nullopt);

/// The contrast of two opaque colours, from 1 to 21 (WCAG 2.2). A text needs 4.5.
double contrast(const QColor& one, const QColor& other);

enum class TextRole { body, name, strong, title, digits, caption, monospaced };

/// Names 13 px medium, digits 12 px, captions 11 px; the system's family.
QFont fontFor(TextRole role);

constexpr int panelCornerRadius = 12;
constexpr int cardCornerRadius = 10;
constexpr int controlCornerRadius = 6;

} // namespace lumenvale
