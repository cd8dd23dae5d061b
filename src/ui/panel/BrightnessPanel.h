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

    /// Places and sizes the window so that the panel is there. Its own shadow is drawn around it as far as the
    /// window may reach: a rectangle around the panel.
    void setPanelGeometry(const QRect& panel, const QRect& room);

    /// The system's window was made, or made anew: what was set on it natively is to be set again.
    std::function<void()> windowMade;

protected:
    bool event(QEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
};

/// The panel's rounded ground.
class MenuGlassBackground : public QWidget {
public:
    enum class Material {
        translucent,
        opaque, ///< for systems that do not blur what would shine through
        system  ///< the system draws it with its edge and corners; nothing is painted here
    };
    void setMaterial(Material next);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Material material = Material::translucent;
};

} // namespace lumenvale
