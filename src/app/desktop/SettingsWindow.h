// SPDX-License-Identifier: MIT
// The settings window: its size, its place from one run to the next, and what its keys, its losing the focus and
// its closing mean to the preset editor. What is in it is given to it. Made once and then kept; main thread only.
#pragma once

#include "app/desktop/LocalEventMonitor.h"
#include "base/UserDefaults.h"
#include "presets/PresetEditor.h"

#include <QWidget>
#include <functional>

namespace lumenvale {

class SettingsWindow final : public QWidget {
public:
    /// Takes over `content`. Stands where it stood last, else in the middle of the screen. The references must
    /// outlive the window.
    SettingsWindow(QWidget* content, PresetEditor& editor, UserDefaults& defaults);

    std::function<void()> visibilityChanged; ///< called when it was hidden, minimised or brought back

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    bool handleKey(QWindow* window, QEvent* event);
    bool restoreFrame();
    void saveFrame();

    PresetEditor& editor;
    UserDefaults& defaults;
    LocalEventMonitor settingsKeyMonitor; ///< sees keys before the control that has the focus
};

} // namespace lumenvale
