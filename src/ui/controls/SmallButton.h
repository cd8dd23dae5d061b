// SPDX-License-Identifier: MIT
// A small bordered button with a symbol, a text, or both.
#pragma once

#include "ui/controls/PaintedButton.h"
#include "ui/look/Labels.h"

#include <QString>

namespace lumenvale {

class SmallButton : public PaintedButton {
public:
    enum class Size {
        regular, ///< 24 points high
        compact, ///< 22 points high, for the panel's footer
    };

    /// `label` is the accessible name; empty: the text is.
    SmallButton(const QString& symbol, const QString& text, const QString& label, QWidget* parent = nullptr,
                Size size = Size::regular);

    void setSymbol(const QString& name);
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
