// SPDX-License-Identifier: MIT
// The buttons that draw themselves.
#pragma once

#include "ui/look/Theme.h"

#include <QAbstractButton>
#include <QString>

namespace lumenvale {

/// Their base: reached by Tab, pressed by Space and Return, and drawn anew when the pointer comes or goes.
class PaintedButton : public QAbstractButton {
public:
    PaintedButton();

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

/// A small bordered button with a symbol, a text, or both.
class SmallButton : public PaintedButton {
public:
    enum class Size {
        regular, ///< 24 points high
        compact, ///< 22 points high, for the panel's footer
    };

    /// `label` is the accessible name; where it is empty, the text is.
    SmallButton(const QString& symbol, const QString& text, const QString& label, Size size = Size::regular);

    void setSymbol(const QString& next);
    void setTextColour(TextColour colour);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    /// Draws what is on the button's face.
    virtual void paintContent(QPainter& painter, const QColor& colour);

    const QString& symbolName() const { return symbol; }

private:
    struct Metrics;
    const Metrics& metrics() const;
    double contentWidth() const;

    QString symbol;
    Size size;
    TextColour textColour = TextColour::primary;
};

} // namespace lumenvale
