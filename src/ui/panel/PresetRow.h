// SPDX-License-Identifier: MIT
// One preset in the panel's list: its name, and a checkmark while it is the active one. A press applies it.
#pragma once

#include "ui/controls/Buttons.h"

namespace lumenvale {

class PresetRow final : public PaintedButton {
public:
    PresetRow();

    void show(const QString& name, bool active);

    static constexpr int rowHeight = 26;
    /// The row reaches beyond what is in it by this much at either side, for its highlight.
    static constexpr int overhang = 6;

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QRectF nameBox() const;
    void updateToolTip();

    bool isActive = false;
};

} // namespace lumenvale
