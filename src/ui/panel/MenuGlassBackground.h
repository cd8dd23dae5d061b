// SPDX-License-Identifier: MIT
// The panel's translucent, rounded ground. Systems that offer a material of their own put it behind; this draws
// the tint.
#pragma once

#include <QWidget>

namespace lumenvale {

class MenuGlassBackground : public QWidget {
public:
    explicit MenuGlassBackground(QWidget* parent = nullptr);

    /// The system draws the material, edge and corners: nothing is painted here.
    void setHasSystemMaterial(bool has);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool hasSystemMaterial = false;
};

} // namespace lumenvale
