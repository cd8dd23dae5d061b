// SPDX-License-Identifier: MIT
// A small bordered button with a symbol, a text, or both.
#pragma once

#include <QAbstractButton>
#include <QString>

namespace lumenvale {

class SmallButton : public QAbstractButton {
public:
    /// `label` is the accessible name; empty: the text is.
    SmallButton(const QString& symbol, const QString& text, const QString& label, QWidget* parent = nullptr);

    void setSymbol(const QString& name);
    /// Draws the text in this colour instead of the ordinary one; invalid: the ordinary one.
    void setTextColour(const QColor& colour);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    QString symbol;
    QColor textColour;
};

} // namespace lumenvale
