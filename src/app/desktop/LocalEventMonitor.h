// SPDX-License-Identifier: MIT
// Sees the events of the program's own windows before they do, as long as it exists. Main thread only.
#pragma once

#include <QObject>
#include <functional>

class QWindow;
class QEvent;

namespace lumenvale {

class LocalEventMonitor final : public QObject {
public:
    /// Returns true to swallow the event. It is called once per event, for the window that the event was sent to.
    using Handler = std::function<bool(QWindow* window, QEvent* event)>;

    explicit LocalEventMonitor(Handler handler);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    Handler handler;
};

} // namespace lumenvale
