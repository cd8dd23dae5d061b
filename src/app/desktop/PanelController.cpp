// SPDX-License-Identifier: MIT
#include "app/desktop/PanelController.h"

#include "ui/look/Theme.h"

#include <QApplication>
#include <QCursor>
#include <QGuiApplication>
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

MenuGlassBackground::Material materialOn(const PanelGround& ground)
{
    using Material = MenuGlassBackground::Material;
    if (ground.isDrawn)
        return Material::system;
    return ground.canBlend && ground.isBlurred ? Material::translucent : Material::opaque;
}

Rect visibleFrame(const QScreen& screen)
{
    const QRect frame = screen.availableGeometry();
    return {double(frame.x()), double(frame.y()), double(frame.width()), double(frame.height())};
}

/// The screen that holds the point, else the main one; null when there is none.
const QScreen* screenAt(Point point)
{
    const QPoint pixel(int(std::floor(point.x)), int(std::floor(point.y)));
    const QScreen* const containing = QGuiApplication::screenAt(pixel);
    return containing ? containing : QGuiApplication::primaryScreen();
}

} // namespace

Point pointerLocation()
{
    const QPoint pointer = QCursor::pos();
    return {double(pointer.x()), double(pointer.y())};
}

PanelController::PanelController(DisplayStore& store, PresetStore& presets, Clock& clock, Shell& shell,
                                 std::function<BrightnessMenu*()> makeContent)
    : store(store), presets(presets), clock(clock), shell(shell), makeContent(std::move(makeContent)),
      displayCount(store.displays->size()), presetCount(presets.presets->size()),
      positionLater([this] { positionMenu(); }),
      menuSizeObservation{store.displays.subscribe([this](const std::vector<DisplayInfo>& displays) {
                              if (std::exchange(displayCount, displays.size()) != displays.size())
                                  positionLater.request();
                          }),
                          presets.presets.subscribe([this](const std::vector<BrightnessPreset>& list) {
                              if (std::exchange(presetCount, list.size()) != list.size())
                                  positionLater.request();
                          })}
{
}

void PanelController::toggleMenu()
{
    if (menuPanel && menuPanel->isVisible()) {
        dismissMenu();
        return;
    }
    const auto dismissed = std::exchange(dismissedByClick, std::nullopt);
    if (dismissed && clock.now() - *dismissed < sameClick)
        return;
    showPanelAtStatusItem();
}

void PanelController::showPanelAtStatusItem()
{
    dismissMenu();
    const Point pointer = pointerLocation();
    lastStatusItemFrame = {pointer.x, pointer.y, 0, 0}; // in case the system does not tell where the item is
    if (const auto frame = frameAtStatusItem())
        showPanel(*frame);
}

void PanelController::showMenuNearDock(std::optional<Point> point)
{
    const Point anchor = point.value_or(pointerLocation());
    const QScreen* const screen = screenAt(anchor);
    // An open panel moves: windows that come and go quickly take the focus from each other.
    if (!menuPanel || !screen)
        dismissMenu();
    if (!screen)
        return;
    dockAnchor = anchor;
    const Rect frame = panelNearDock(anchor, visibleFrame(*screen), preferredPanelHeight());
    if (!menuPanel) {
        showPanel(frame);
        return;
    }
    shell.dock->cancelTracking();
    setFrame(frame);
    bringToFront();
    store.requestRefresh();
}

void PanelController::dismissMenu()
{
    shell.dock->cancelTracking();
    dockAnchor.reset();
    outsideClickMonitor.reset();
    localEventMonitor.reset();
    if (!menuPanel)
        return;
    menuPanel->hide();
    menuPanel->windowMade = nullptr;
    menuPanel.release()->deleteLater(); // one of its own buttons may have called
    if (visibilityChanged)
        visibilityChanged();
}

void PanelController::showPanel(const Rect& frame)
{
    PanelWindows& windows = *shell.panels;
    menuPanel = std::make_unique<BrightnessPanel>();
    menuPanel->setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    ground = windows.ground();
    menuPanel->setAttribute(Qt::WA_TranslucentBackground, ground.canBlend);
    menuPanel->setAttribute(Qt::WA_MacAlwaysShowToolWindow);
    menuPanel->setWindowTitle("Lumenvale");
    auto* layout = new QVBoxLayout(menuPanel.get());
    layout->setContentsMargins(0, 0, 0, 0);
    content = makeContent();
    content->extraHeightChanged = [this] { positionMenu(); };
    layout->addWidget(content);
    content->setMaterial(materialOn(ground));
    menuPanel->windowMade = [this] {
        shell.panels->dress(menuPanel->winId());
        shapeWindow();
    };
    menuPanel->winId(); // makes the window
    setFrame(frame);
    menuPanel->show();
    if (content->extraHeight() > 0) // known only now
        positionMenu();
    bringToFront();
    outsideClickMonitor = windows.monitorOutsideClicks(menuPanel->winId(), [this] { clickedOutside(); });
    localEventMonitor = std::make_unique<LocalEventMonitor>(
        [this](QWindow* window, QEvent* event) { return handleEvent(window, event); });
    dismissedByClick.reset();
    if (visibilityChanged)
        visibilityChanged();
    store.requestRefresh();
}

void PanelController::positionMenu()
{
    if (!menuPanel)
        return;
    const QScreen* const screen = menuPanel->screen();
    if (dockAnchor && screen)
        setFrame(panelNearDock(*dockAnchor, visibleFrame(*screen), preferredPanelHeight()));
    else if (const auto frame = frameAtStatusItem())
        setFrame(*frame);
}

void PanelController::bringToFront()
{
    menuPanel->raise();
    menuPanel->activateWindow();
    shell.panels->focus(menuPanel->winId());
}

void PanelController::setFrame(const Rect& frame)
{
    const QRect geometry = QRectF(frame.x, frame.y, frame.width, frame.height).toRect();
    menuPanel->setPanelGeometry(geometry, roomForShadow(geometry));
    if (!menuPanel->testAttribute(Qt::WA_TranslucentBackground))
        menuPanel->setMask(roundedMask(geometry.size()));
    shapeWindow();
}

/// Window managers move a window that reaches beyond the screen or under a bar, and its panel with it.
QRect PanelController::roomForShadow(const QRect& panel) const
{
    const QScreen* const screen = QGuiApplication::screenAt(panel.center());
    if (!ground.needsShadow || !screen)
        return panel;
    constexpr int enough = 100;
    return ground.isPlaced ? screen->availableGeometry() : panel.adjusted(-enough, -enough, enough, enough);
}

void PanelController::shapeWindow()
{
    const QRect panel = menuPanel->contentsRect();
    shell.panels->setShape(menuPanel->winId(),
                           {double(panel.x()), double(panel.y()), double(panel.width()), double(panel.height())},
                           panelCornerRadius);
}

bool PanelController::handleEvent(QWindow* window, QEvent* event)
{
    const bool isPanel = menuPanel && window == menuPanel->windowHandle();
    if (isPanel && event->type() == QEvent::Close) { // as the window manager's keys send it
        dismissMenu();
        return true;
    }
    if (QApplication::activePopupWidget()) // a text's menu, which may get its keys by way of the panel
        return false;
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

void PanelController::clickedOutside()
{
    dismissMenu();
    dismissedByClick = clock.now();
}

double PanelController::preferredPanelHeight() const
{
    const double height = preferredHeight(int(store.displays->size()), int(presets.presets->size()));
    return menuPanel ? height + content->extraHeight() : height;
}

std::optional<Rect> PanelController::frameAtStatusItem() const
{
    if (!statusItem)
        return std::nullopt;
    const Rect item = statusItem->frame().value_or(lastStatusItemFrame);
    const QScreen* const screen = screenAt({item.midX(), item.midY()});
    if (!screen)
        return std::nullopt;
    return panelAtStatusItem(item, visibleFrame(*screen), preferredPanelHeight());
}

} // namespace lumenvale
