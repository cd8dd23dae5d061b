// SPDX-License-Identifier: MIT
// Floating panels on Linux desktops. Made by the shell's factory; main thread only.
#pragma once

#include "platform/Shell.h"

namespace lumenvale {

class LinuxPanelWindows final : public PanelWindows {
public:
    bool canBlend() override;
    bool dress(WindowHandle window) override;
    void blurBehind(WindowHandle window, double width, double height, double cornerRadius) override;
    void focus(WindowHandle window) override;
    std::unique_ptr<EventMonitor> monitorOutsideClicks(WindowHandle panel, std::function<void()> clicked) override;
    void useActivationToken(const std::string& token) override;
};

} // namespace lumenvale
