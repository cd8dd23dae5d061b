// SPDX-License-Identifier: MIT
// Labels in the program's look: a line that is cut with an ellipsis, a number, a symbol, and text that wraps.
#pragma once

#include "ui/look/Theme.h"

#include <QLabel>
#include <QString>
#include <QWidget>
#include <string>
#include <string_view>

namespace lumenvale {

QString qString(std::string_view text);

/// A tooltip that shows the text as it is, never as markup, and wraps it where it is long.
QString toolTipText(const QString& text);

/// One line. It takes no more room than its text needs, and less where there is less; it then ends in an ellipsis
/// and has its text as a tooltip.
class ElidedLabel final : public QWidget {
    Q_OBJECT

public:
    explicit ElidedLabel(TextRole role, TextColour colour = TextColour::primary);

    void setText(const QString& text);
    QString text() const { return content; }
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
    NumberLabel();

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
    /// `size` is its width and height in points.
    SymbolLabel(const QString& symbol, int size, TextColour colour);

    void setSymbol(const QString& next);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString symbol;
    TextColour colour;
};

/// A text that wraps and can be selected.
class TextLabel final : public QLabel {
    Q_OBJECT

public:
    explicit TextLabel(TextRole role, TextColour colour = TextColour::primary);

    void setColour(TextColour next);

protected:
    void changeEvent(QEvent* event) override;

private:
    void applyColour();

    TextColour colour;
};

/// A text in the secondary colour, or a warning: the text in the primary colour, behind an orange triangle.
class NoticeLabel final : public QWidget {
public:
    NoticeLabel();

    void setText(const QString& text, bool isWarning);

private:
    SymbolLabel* symbol;
    TextLabel* label;
};

} // namespace lumenvale
