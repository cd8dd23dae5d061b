// SPDX-License-Identifier: MIT
// A status item in the X server's own tray (the system tray protocol on XEmbed). Main thread only.
#pragma once

#include "platform/Shell.h"

#include <QMenu>
#include <QSystemTrayIcon>
#include <optional>

namespace lumenvale {

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
    int unusedScroll = 0; // less than a step, in eighths of a degree
};

} // namespace lumenvale
