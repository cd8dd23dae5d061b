// SPDX-License-Identifier: MIT
// Labels in the program's look: text that is cut with an ellipsis and then has itself as a tooltip, and symbols.
#pragma once

#include "ui/look/Theme.h"

#include <QString>
#include <QWidget>

namespace lumenvale {

/// A tooltip that shows the text as it is, never as markup, and wraps it where it is long.
QString toolTipText(const QString& text);

enum class TextColour { primary, secondary, accent, warning, failure };

class ElidedLabel final : public QWidget {
    Q_OBJECT

public:
    explicit ElidedLabel(TextRole role, TextColour colour = TextColour::primary, QWidget* parent = nullptr);

    void setText(const QString& text);
    QString text() const { return content; }
    /// The label takes no more room than its text needs, and less where there is less.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void updateToolTip();

    QString content;
    TextColour colour;
};

/// A number in the secondary colour, at the trailing side; its digits stay where they are while it changes.
class NumberLabel final : public QWidget {
public:
    explicit NumberLabel(QWidget* parent = nullptr);

    void setText(const QString& text);
    QString text() const { return content; }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString content;
};

class SymbolLabel final : public QWidget {
public:
    SymbolLabel(const QString& name, int size, TextColour colour = TextColour::primary, QWidget* parent = nullptr);

    void setSymbol(const QString& name);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString symbol;
    TextColour colour;
};

/// A line of one point.
class Divider final : public QWidget {
public:
    explicit Divider(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

QColor colourOf(const Theme& theme, TextColour colour);

} // namespace lumenvale
