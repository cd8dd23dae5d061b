// SPDX-License-Identifier: MIT
// Runs something once on the loop's next turn, however often it is asked for. Views redraw through it: a burst of
// changes costs one redraw, and nothing is done inside a store's notification.
#pragma once

#include "base/Published.h"

#include <QMetaObject>
#include <QObject>
#include <functional>
#include <utility>
#include <vector>

namespace lumenvale {

class LaterCall {
public:
    explicit LaterCall(std::function<void()> action) : action(std::move(action)) {}

    /// Requests the call at each change of the value, which must outlive this.
    template <typename Value>
    void follow(Published<Value>& value)
    {
        subscriptions.push_back(value.subscribe([this](const Value&) { request(); }));
    }

    void request()
    {
        if (std::exchange(isDue, true))
            return;
        QMetaObject::invokeMethod(
            &context,
            [this] {
                isDue = false;
                action();
            },
            Qt::QueuedConnection);
    }

private:
    QObject context; // its death withdraws the call
    std::function<void()> action;
    bool isDue = false;
    std::vector<Subscription> subscriptions;
};

} // namespace lumenvale
