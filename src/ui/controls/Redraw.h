// SPDX-License-Identifier: MIT
// A view's redraw. It follows published values; however many of them change, it redraws once, on the loop's next
// turn, and never inside a store's notification. The view then reads all it shows from the stores.
#pragma once

#include "base/Published.h"

#include <QMetaObject>
#include <QObject>
#include <functional>
#include <utility>
#include <vector>

namespace lumenvale {

class Redraw {
public:
    explicit Redraw(std::function<void()> action) : action(std::move(action)) {}

    /// Requests a redraw at each change of the value, which must outlive this.
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
