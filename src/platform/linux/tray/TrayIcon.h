// SPDX-License-Identifier: MIT
// A status item in the X server's own tray (the system tray protocol on XEmbed). Main thread only.
#pragma once

#include "platform/Shell.h"

#include <QMenu>
#include <QSystemTrayIcon>
#include <optional>

namespace lumenvale {

/// What a wheel sends for one notch, in eighths of a degree; also over the bus.
constexpr int wheelNotch = 120;

/// Collects the parts of notches that fine wheels send.
class WheelSteps {
public:
    /// Whole notches since the last call that returned any; up is positive.
    int turn(int units);

private:
    int unused = 0;
};

/// The status item's colour at a pixel's opacity: light for dark bars.
std::uint32_t tinted(std::uint32_t pixel, bool isLight);

class TrayIcon final : public QObject {
public:
    TrayIcon(const StatusItemContent& content, bool isBarDark);

    std::optional<Rect> frame() const;
    void menuChanged();
    void imageChanged(bool isBarDark);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    StatusItemContent content;
    QMenu menu;
    QSystemTrayIcon icon;
    WheelSteps wheel;
};

} // namespace lumenvale
