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

class TrayIcon final : public QObject {
public:
    TrayIcon(const StatusItemContent& content, bool isBarDark);

    /// The icon, from one side of its bar to the other once it was clicked.
    std::optional<Rect> frame() const;
    void menuChanged();
    void imageChanged(bool isBarDark);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    StatusItemContent content;
    std::optional<Rect> lastPlace; ///< of the pointer on the bar
    QMenu menu;
    QSystemTrayIcon icon;
    WheelSteps wheel;
};

} // namespace lumenvale
