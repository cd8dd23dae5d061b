// SPDX-License-Identifier: MIT
// The settings window's frame: its size, its place from one run to the next, and word of its losing the focus
// and closing. What is in it is given to it. Made once and then kept; main thread only.
#pragma once

#include "base/UserDefaults.h"

#include <QWidget>
#include <functional>

namespace lumenvale {

class SettingsWindow final : public QWidget {
public:
    /// Takes over `content`. Stands where it stood last, else in the middle of the screen. `defaults` must outlive
    /// the window.
    SettingsWindow(QWidget* content, UserDefaults& defaults);

    std::function<void()> resignedKey; ///< the window lost the focus
    std::function<void()> closed;

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    bool restoreFrame();
    void saveFrame();

    UserDefaults& defaults;
};

} // namespace lumenvale
