// SPDX-License-Identifier: MIT
// Tells when a tray of the X server's own kind comes or goes. Under another window system none ever does. Lives on
// the main thread, and no longer than the application object.
#pragma once

#include <QAbstractNativeEventFilter>
#include <cstdint>
#include <functional>

namespace lumenvale {

class X11TrayWatch final : public QAbstractNativeEventFilter {
public:
    explicit X11TrayWatch(std::function<void()> changed);

    bool hasTray() const { return tray != 0; }

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

private:
    std::function<void()> changed;
    std::uint32_t tray; ///< its window
};

} // namespace lumenvale
