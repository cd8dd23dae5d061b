// SPDX-License-Identifier: MIT
// Runs something once on the loop's next turn, however often it is asked for. Views redraw through it, so that a
// burst of changes costs one redraw and nothing is done inside a store's notification.
#pragma once

#include <QMetaObject>
#include <QObject>
#include <functional>
#include <utility>

namespace lumenvale {

class LaterCall {
public:
    explicit LaterCall(std::function<void()> action) : call(std::move(action)) {}

    void request()
    {
        if (std::exchange(isDue, true))
            return;
        QMetaObject::invokeMethod(
            &context,
            [this] {
                isDue = false;
                call();
            },
            Qt::QueuedConnection);
    }

private:
    QObject context; // its death withdraws the call
    std::function<void()> call;
    bool isDue = false;
};

} // namespace lumenvale
