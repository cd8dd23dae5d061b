// SPDX-License-Identifier: MIT
// Opens, places and dismisses the brightness panel: the window, its place at the status item or near the Dock, and
// the monitors of the clicks and keys that close it. At most one panel is open. Main thread only.
#pragma once

#include "app/desktop/LocalEventMonitor.h"
#include "app/desktop/PanelPlacement.h"
#include "base/Clock.h"
#include "displays/DisplayStore.h"
#include "platform/Shell.h"
#include "presets/PresetStore.h"
#include "ui/controls/LaterCall.h"
#include "ui/panel/BrightnessMenu.h"
#include "ui/panel/BrightnessPanel.h"

#include <array>
#include <functional>
#include <memory>
#include <optional>

namespace lumenvale {

/// Where the pointer is, in Qt's coordinates of the whole desktop.
Point pointerLocation();

class PanelController {
public:
    /// `makeContent` makes what the panel shows, anew each time it opens; the panel takes it over. The references
    /// must outlive the controller.
    PanelController(DisplayStore& store, PresetStore& presets, Clock& clock, Shell& shell,
                    std::function<BrightnessMenu*()> makeContent);

    /// The panel opened or closed.
    std::function<void()> visibilityChanged;

    /// The item that the panel opens at and whose clicks toggle it; null when there is none. It is used until the
    /// next call.
    void setStatusItem(const StatusItem* item) { statusItem = item; }

    bool isOpen() const { return menuPanel != nullptr; }
    /// The status item was clicked.
    void toggleMenu();
    /// Without a status item, or on no screen, nothing opens.
    void showPanelAtStatusItem();
    /// Beside the edge of the screen that is nearest to the point, or to the pointer without one.
    void showMenuNearDock(std::optional<Point> point);
    /// Closes the panel and the Dock icon's menu. Safe when neither is open.
    void dismissMenu();

private:
    void showPanel(const Rect& frame);
    void positionMenu();
    void bringToFront();
    void setFrame(const Rect& frame);
    QRect roomForShadow(const QRect& panel) const;
    void shapeWindow();
    bool handleEvent(QWindow* window, QEvent* event);
    void clickedOutside();
    double preferredPanelHeight() const;
    std::optional<Rect> frameAtStatusItem() const;

    DisplayStore& store;
    PresetStore& presets;
    Clock& clock;
    Shell& shell;
    std::function<BrightnessMenu*()> makeContent;
    const StatusItem* statusItem = nullptr;
    std::optional<Point> dockAnchor; ///< where the panel was opened near the Dock
    Rect lastStatusItemFrame;        ///< where the item was taken to be when the panel was last opened at it
    std::unique_ptr<BrightnessPanel> menuPanel;
    BrightnessMenu* content = nullptr; ///< the panel's, while there is one
    PanelGround ground;                ///< of the panel that was opened last
    std::unique_ptr<EventMonitor> outsideClickMonitor;
    std::unique_ptr<LocalEventMonitor> localEventMonitor;
    std::optional<Clock::TimePoint> dismissedByClick;
    std::size_t displayCount = 0;
    std::size_t presetCount = 0;
    LaterCall positionLater;
    std::array<Subscription, 2> menuSizeObservation;
};

} // namespace lumenvale
