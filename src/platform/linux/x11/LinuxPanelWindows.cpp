// SPDX-License-Identifier: MIT
#include "platform/linux/x11/LinuxPanelWindows.h"

#include "platform/linux/x11/X11.h"
#include "platform/linux/x11/X11ClickMonitor.h"

#include <QCursor>
#include <QGuiApplication>
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
        if (presses && presses->isListening())
            return; // where the focus follows the pointer, it is lost without a press
        lastFocus = QGuiApplication::focusWindow();
        QObject::connect(qApp, &QGuiApplication::focusWindowChanged, this, [this](QWindow* now) {
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

bool LinuxPanelWindows::canBlend() { return QGuiApplication::platformName() != "xcb" || x11::hasCompositor(); }

bool LinuxPanelWindows::dress(WindowHandle window)
{
    x11::skipTaskbar(window);
    return false;
}

void LinuxPanelWindows::blurBehind(WindowHandle window, double width, double height, double cornerRadius)
{
    const QWindow* const panel = windowOf(window);
    if (!panel)
        return;
    const double ratio = panel->devicePixelRatio();
    const auto pixels = [ratio](double length) { return int(std::lround(length * ratio)); };
    x11::blurBehind(window, x11::roundedRegion(pixels(width), pixels(height), pixels(cornerRadius)));
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
