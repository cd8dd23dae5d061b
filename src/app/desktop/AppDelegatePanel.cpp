// SPDX-License-Identifier: MIT
// The delegate's brightness panel: opening, placing and closing it.
#include "app/desktop/AppDelegate.h"
#include "app/desktop/Screens.h"
#include "ui/look/Theme.h"
#include "ui/panel/BrightnessMenu.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QScreen>
#include <QVBoxLayout>
#include <QWindow>
#include <cmath>
#include <utility>

namespace lumenvale {

namespace {

/// A press on a status item that another process draws closes the open panel before the item tells of its
/// activation. An activation this soon after is that same click, and means "close".
constexpr auto sameClick = std::chrono::milliseconds(500);

QRegion roundedMask(QSize size)
{
    constexpr int radius = panelCornerRadius;
    QRegion mask(QRect(QPoint(), size).adjusted(0, radius, 0, -radius));
    for (int row = 0; row < radius; ++row) { // not by a polygon, which would cut off the panel's own edge
        const double distance = radius - row - 0.5;
        const int inset = int(std::lround(radius - std::sqrt(radius * radius - distance * distance)));
        mask += QRect(inset, row, size.width() - 2 * inset, 1);
        mask += QRect(inset, size.height() - 1 - row, size.width() - 2 * inset, 1);
    }
    return mask;
}

} // namespace

double AppDelegate::menuHeight() const
{
    return preferredHeight(int(store.displays.get().size()), int(presets.presets.get().size()));
}

void AppDelegate::showPanel(const Rect& frame)
{
    menuPanel = std::make_unique<BrightnessPanel>();
    menuPanel->setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    menuPanel->setAttribute(Qt::WA_TranslucentBackground, services.shell.panels->canBlend());
    menuPanel->setAttribute(Qt::WA_MacAlwaysShowToolWindow);
    menuPanel->setWindowTitle("Lumenvale");
    auto* layout = new QVBoxLayout(menuPanel.get());
    layout->setContentsMargins(0, 0, 0, 0);
    auto* menu = makeMenu();
    layout->addWidget(menu);
    menuPanel->addActions(mainMenu->actions());
    PanelWindows& windows = *services.shell.panels;
    menuPanel->windowMade = [&windows, menu, panel = menuPanel.get()] {
        menu->setHasSystemMaterial(windows.dress(panel->winId()));
        windows.blurBehind(panel->winId(), panel->width(), panel->height(), panelCornerRadius);
    };
    menuPanel->winId(); // makes it
    setPanelFrame(frame);
    menuPanel->show();
    bringPanelToFront();
    outsideClickMonitor = windows.monitorOutsideClicks(menuPanel->winId(), [this] { clickedOutside(); });
    localEventMonitor = std::make_unique<LocalEventMonitor>(
        [this](QWindow* window, QEvent* event) { return handlePanelEvent(window, event); });
    dismissedByClick.reset();
    tellVisibility();
    store.requestRefresh();
}

BrightnessMenu* AppDelegate::makeMenu()
{
    return new BrightnessMenu(
        store, presets, presetEditor(), services.clock, [this] { showSettings(); },
        [this](const BrightnessPreset& preset) {
            const Uuid id = preset.id;
            dismissMenu();
            presetEditor().activate(id);
        });
}

void AppDelegate::bringPanelToFront()
{
    menuPanel->raise();
    menuPanel->activateWindow();
    services.shell.panels->focus(menuPanel->winId());
}

void AppDelegate::setPanelFrame(const Rect& frame)
{
    const QRect geometry = windowGeometry(frame);
    menuPanel->setFixedSize(geometry.size()); // window managers leave alone what cannot be resized
    menuPanel->move(geometry.topLeft());
    if (!menuPanel->testAttribute(Qt::WA_TranslucentBackground))
        menuPanel->setMask(roundedMask(geometry.size()));
    services.shell.panels->blurBehind(menuPanel->winId(), geometry.width(), geometry.height(), panelCornerRadius);
}

void AppDelegate::dismissMenu()
{
    services.shell.dock->cancelTracking();
    dockAnchor.reset();
    outsideClickMonitor.reset();
    localEventMonitor.reset();
    if (!menuPanel)
        return;
    menuPanel->hide();
    menuPanel.release()->deleteLater(); // one of its own buttons may have called
    tellVisibility();
}

void AppDelegate::toggleMenu()
{
    if (menuPanel && menuPanel->isVisible()) {
        dismissMenu();
        return;
    }
    const auto dismissed = std::exchange(dismissedByClick, std::nullopt);
    if (dismissed && services.clock.now() - *dismissed < sameClick)
        return;
    showMenuAtStatusItem();
}

void AppDelegate::showMenuAtStatusItem()
{
    dismissMenu();
    const Point pointer = flipped(pointerLocation());
    lastStatusItemFrame = Rect{pointer.x, pointer.y, 0, 0}; // in case the system does not tell where the item is
    if (const auto frame = statusItemPanelFrame())
        showPanel(*frame);
}

void AppDelegate::applicationShouldHandleReopen() { showMenuNearDock(std::nullopt); }

void AppDelegate::showMenuNearDock(std::optional<Point> point)
{
    const Point anchor = point.value_or(pointerLocation());
    const auto screen = screenAt(anchor, screenFrames());
    // An open panel moves: windows that come and go quickly take the focus from each other.
    if (!menuPanel || !screen)
        dismissMenu();
    if (!screen)
        return;
    dockAnchor = anchor;
    const Rect frame = panelNearDock(anchor, screen->visibleFrame, menuHeight());
    if (!menuPanel) {
        showPanel(frame);
        return;
    }
    services.shell.dock->cancelTracking();
    setPanelFrame(frame);
    bringPanelToFront();
    store.requestRefresh();
}

std::optional<Rect> AppDelegate::statusItemPanelFrame() const
{
    if (!statusItem)
        return std::nullopt;
    const Rect item = flipped(statusItem->frame().value_or(lastStatusItemFrame));
    const auto screen = screenAt({item.midX(), item.midY()}, screenFrames());
    return screen ? std::optional(panelAtStatusItem(item, screen->visibleFrame, menuHeight())) : std::nullopt;
}

void AppDelegate::positionMenu()
{
    if (!menuPanel)
        return;
    if (dockAnchor && menuPanel->screen())
        setPanelFrame(panelNearDock(*dockAnchor, screenFrame(*menuPanel->screen()).visibleFrame, menuHeight()));
    else if (const auto frame = statusItemPanelFrame())
        setPanelFrame(*frame);
}

bool AppDelegate::handlePanelEvent(QWindow* window, QEvent* event)
{
    const bool isPanel = menuPanel && window == menuPanel->windowHandle();
    if (event->type() == QEvent::KeyPress) {
        if (!isPanel || static_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape)
            return false;
        dismissMenu();
        return true;
    }
    if (event->type() != QEvent::MouseButtonPress || isPanel)
        return false;
    const QPointF place = static_cast<QMouseEvent*>(event)->globalPosition();
    const auto item = statusItem ? statusItem->frame() : std::nullopt;
    if (!item || !item->contains({place.x(), place.y()})) // the item's own action toggles the panel
        dismissMenu();
    return false;
}

void AppDelegate::clickedOutside()
{
    dismissMenu();
    dismissedByClick = services.clock.now();
}

/// Monitoring takes it easy while nobody sees the brightness.
void AppDelegate::tellVisibility()
{
    store.setWindowVisible(menuPanel || (settingsWindow && settingsWindow->isVisible()));
}

} // namespace lumenvale
