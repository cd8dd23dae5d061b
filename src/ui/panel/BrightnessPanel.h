// SPDX-License-Identifier: MIT
// The floating window of the brightness menu, and the ground that its content lies on.
#pragma once

#include <QWidget>
#include <functional>

namespace lumenvale {

/// Its creator decides about its flags, level and place, and handles Escape. Tab and Shift-Tab walk through its
/// controls, and every other key is passed on.
class BrightnessPanel final : public QWidget {
public:
    BrightnessPanel();

    /// The system's window was made, or made anew: what was set on it natively is to be set again.
    std::function<void()> windowMade;

protected:
    bool event(QEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void showEvent(QShowEvent* event) override;
};

/// The panel's translucent, rounded ground.
class MenuGlassBackground : public QWidget {
public:
    /// True where the system draws material, edge and corners: nothing is painted here.
    void setHasSystemMaterial(bool has);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool hasSystemMaterial = false;
};

} // namespace lumenvale
