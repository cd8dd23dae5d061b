// SPDX-License-Identifier: MIT
// Hears every press of a mouse button on an X server, over a connection of its own, without taking the press
// from the program it is meant for (raw events of the X Input extension 2.1). Main thread only.
#pragma once

#include "platform/linux/x11/Xcb.h"

#include <QSocketNotifier>
#include <functional>
#include <memory>

namespace lumenvale {

class X11ClickMonitor {
public:
    /// Calls `pressed` for each press of the left, middle or right button and each touch, anywhere. Hears nothing
    /// where the server lacks the extension.
    explicit X11ClickMonitor(std::function<void()> pressed);

    bool isListening() const { return notifier != nullptr; }

private:
    bool select();
    void readEvents();

    std::function<void()> pressed;
    XcbConnection server;
    std::unique_ptr<QSocketNotifier> notifier;
};

} // namespace lumenvale
