// SPDX-License-Identifier: MIT
// Floating panels on Linux desktops. Made by the shell's factory; main thread only.
#pragma once

#include "platform/Shell.h"
#include "platform/linux/x11/X11FocusFilter.h"

namespace lumenvale {

class LinuxPanelWindows final : public PanelWindows {
public:
    bool canBlend() override;
    bool dress(WindowHandle window) override;
    void blurBehind(WindowHandle window, double width, double height, double cornerRadius) override;
    void focus(WindowHandle window) override;
    std::unique_ptr<EventMonitor> monitorOutsideClicks(WindowHandle panel, std::function<void()> clicked) override;
    void useActivationToken(const std::string& token) override;

private:
    X11FocusFilter focusFilter; ///< for all windows of the program
};

} // namespace lumenvale
