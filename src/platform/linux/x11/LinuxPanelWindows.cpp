// SPDX-License-Identifier: MIT
#include "platform/linux/x11/LinuxPanelWindows.h"

#include "platform/linux/displays/WaylandOutputs.h"
#include "platform/linux/x11/X11.h"
#include "platform/linux/x11/X11ClickMonitor.h"

#include <QCursor>
#include <QGuiApplication>
#include <QPlatformSurfaceEvent>
#include <QWindow>
#include <cmath>
#include <optional>
#include <utility>

namespace lumenvale {

namespace {

QWindow* windowOf(WindowHandle handle)
{
    for (QWindow* each : QGuiApplication::topLevelWindows()) {
        if (each->handle() && each->winId() == handle)
            return each;
    }
    return nullptr;
}

class OutsideClickMonitor final : public QObject, public EventMonitor {
public:
    OutsideClickMonitor(QWindow* panel, std::function<void()> clicked) : panel(panel), clicked(std::move(clicked))
    {
        if (QGuiApplication::platformName() == "xcb")
            presses.emplace([this] {
                // Presses on our own windows reach them as ordinary events.
                if (!QGuiApplication::topLevelAt(QCursor::pos()))
                    report();
            });
        // Where the focus follows the pointer, it is lost without a press. A compositor's X server tells only of
        // presses on its own windows.
        if (presses && presses->isListening() && !isWaylandSession())
            return;
        lastFocus = QGuiApplication::focusWindow();
        QObject::connect(qApp, &QGuiApplication::focusWindowChanged, this, [this](QWindow* now) {
            if (now && now->type() == Qt::Popup) // the menu of a text in the panel
                return;
            const bool lost = lastFocus == this->panel && now != this->panel;
            lastFocus = now;
            if (lost)
                report();
        });
    }

private:
    void report()
    {
        const auto call = clicked; // it ends this monitor
        call();
    }

    QWindow* panel;
    QWindow* lastFocus = nullptr; // compared, never followed
    std::function<void()> clicked;
    std::optional<X11ClickMonitor> presses;
};

} // namespace

LinuxPanelWindows::LinuxPanelWindows(std::string identifier) : identifier(std::move(identifier))
{
    qApp->installEventFilter(this);
}

bool LinuxPanelWindows::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::PlatformSurface && watched->isWindowType() &&
        static_cast<QPlatformSurfaceEvent*>(event)->surfaceEventType() == QPlatformSurfaceEvent::SurfaceCreated)
        x11::setClass(static_cast<QWindow*>(watched)->winId(), identifier);
    return false;
}

PanelGround LinuxPanelWindows::ground()
{
    // No Wayland compositor draws shadows for such windows or blurs behind them unasked.
    const QString system = QGuiApplication::platformName();
    const bool isWayland = system.startsWith("wayland");
    if (system != "xcb")
        return {.isPlaced = !isWayland, .needsShadow = isWayland};
    const bool canBlend = x11::hasCompositor();
    return {.canBlend = canBlend,
            .isBlurred = canBlend && x11::doesBlur(),
            .needsShadow = canBlend && x11::knowsFrameExtents()};
}

void LinuxPanelWindows::dress(WindowHandle window)
{
    x11::skipTaskbar(window);
    x11::showOnEveryDesktop(window);
}

void LinuxPanelWindows::setShape(WindowHandle window, const Rect& panel, double cornerRadius)
{
    QWindow* const whole = windowOf(window);
    if (!whole)
        return;
    if (QGuiApplication::platformName().startsWith("wayland")) {
        whole->setMask(QRectF(panel.x, panel.y, panel.width, panel.height).toRect()); // where it takes clicks
        return;
    }
    const double ratio = whole->devicePixelRatio();
    const auto pixels = [ratio](double length) { return int(std::lround(length * ratio)); };
    const QRect content(pixels(panel.x), pixels(panel.y), pixels(panel.width), pixels(panel.height));
    x11::setInputRegion(window, content);
    if (x11::doesBlur()) // KWin draws no shadow unasked, and given extents would move the region by them
        x11::blurBehind(window, x11::roundedRegion(content, pixels(cornerRadius)));
    else
        x11::setFrameExtents(window, QRect(QPoint(), whole->size() * ratio), content);
}

void LinuxPanelWindows::focus(WindowHandle window) { x11::requestFocus(window); }

std::unique_ptr<EventMonitor> LinuxPanelWindows::monitorOutsideClicks(WindowHandle panel,
                                                                      std::function<void()> clicked)
{
    return std::make_unique<OutsideClickMonitor>(windowOf(panel), std::move(clicked));
}

void LinuxPanelWindows::useActivationToken(const std::string& token)
{
    if (!token.empty())
        qputenv("XDG_ACTIVATION_TOKEN", QByteArray::fromStdString(token)); // where Qt looks for it
}

} // namespace lumenvale
