// SPDX-License-Identifier: MIT
// While a key that another program has grabbed is down (volume, screenshot, a shortcut of ours), the X server
// reports to the window with the focus that it has lost it, although other keys would still reach it. Qt takes
// that for a change of the active window; this keeps it from Qt. A change of the focus during the grab is reported
// apart and passes. Lives on the main thread, from the application object's start to its end.
#pragma once

#include <QAbstractNativeEventFilter>

namespace lumenvale {

class X11FocusFilter final : public QAbstractNativeEventFilter {
public:
    X11FocusFilter();

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;
};

} // namespace lumenvale
