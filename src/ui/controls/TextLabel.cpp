// SPDX-License-Identifier: MIT
#include "ui/controls/TextLabel.h"

#include <QEvent>

namespace lumenvale {

TextLabel::TextLabel(TextRole role, TextColour textColour, QWidget* parent) : QLabel(parent), colour(textColour)
{
    setFont(fontFor(role));
    setWordWrap(true);
    setTextFormat(Qt::PlainText);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    applyColour();
}

void TextLabel::setColour(TextColour next)
{
    colour = next;
    applyColour();
}

void TextLabel::changeEvent(QEvent* event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        applyColour();
}

void TextLabel::applyColour()
{
    QPalette changed = palette();
    const QColor wanted = colourOf(Theme::of(parentWidget() ? parentWidget()->palette() : changed), colour);
    if (changed.color(QPalette::WindowText) == wanted)
        return; // setting it is a palette change, too
    changed.setColor(QPalette::WindowText, wanted);
    setPalette(changed);
}

} // namespace lumenvale
