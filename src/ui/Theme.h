// SPDX-License-Identifier: MIT
// The program's colours and fonts, as functions of a widget's palette: a change of the system's appearance arrives
// as a palette change, repaints everything, and is thereby followed live.
#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>

class QWidget;

namespace lumenvale {

struct Theme {
    bool isDark = false;
    QColor surface; ///< panels; not opaque
    QColor window;  ///< the settings window
    QColor sidebar;
    QColor card;
    QColor text;
    QColor secondary;
    QColor hairline;
    QColor control;
    QColor accent;
    QColor accentText; ///< on the accent
    QColor warning;
    QColor failure;
    QColor track; ///< the empty part of a slider

    /// Dark where the palette's windows are darker than their text. The accent is the palette's highlight colour
    /// where the system has chosen one, else our own.
    static Theme of(const QPalette& palette);
    static Theme of(const QWidget* widget);
};

/// The palette of an appearance; for systems whose own palette does not follow it.
QPalette makePalette(bool dark);

enum class TextRole { body, name, strong, title, digits, caption, monospaced };

/// Names 13 px medium, digits 12 px, captions 11 px; the system's family.
QFont fontFor(TextRole role);

constexpr int panelCornerRadius = 12;
constexpr int cardCornerRadius = 10;
constexpr int controlCornerRadius = 6;

} // namespace lumenvale
