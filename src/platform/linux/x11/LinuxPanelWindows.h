// SPDX-License-Identifier: MIT
// Floating panels on Linux desktops. Made by the shell's factory; main thread only.
#pragma once

#include "platform/Shell.h"
#include "platform/linux/x11/X11FocusFilter.h"

#include <QObject>
#include <string>

namespace lumenvale {

/// Also gives each of the program's windows under X11 its identifier as class, by which desktops find its entry.
class LinuxPanelWindows final : public QObject, public PanelWindows {
public:
    explicit LinuxPanelWindows(std::string identifier);

    PanelGround ground() override;
    void dress(WindowHandle window) override;
    void setShape(WindowHandle window, const Rect& panel, double cornerRadius) override;
    void focus(WindowHandle window) override;
    std::unique_ptr<EventMonitor> monitorOutsideClicks(WindowHandle panel, std::function<void()> clicked) override;
    void useActivationToken(const std::string& token) override;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::string identifier;
    X11FocusFilter focusFilter; ///< for all windows of the program
};

} // namespace lumenvale
