// SPDX-License-Identifier: MIT
// A value that tells its observers of every change. Main thread only.
#pragma once

#include "base/Signal.h"

#include <functional>
#include <utility>

namespace lumenvale {

template <typename T>
class Published {
public:
    using Observer = std::function<void(const T&)>;

    explicit Published(T initial = T()) : value(std::move(initial)) {}
    Published(const Published&) = delete;
    Published& operator=(const Published&) = delete;

    const T& get() const { return value; }
    const T& operator*() const { return value; }
    const T* operator->() const { return &value; }

    /// Tells the observers the new value, then stores it; equal values are announced too. An observer must not
    /// change this value; it may ask its own loop for a later turn.
    void set(T next)
    {
        changed.emit(next);
        value = std::move(next);
    }

    /// `set`, unless the value is equal already.
    void setIfChanged(T next)
    {
        if (!(value == next))
            set(std::move(next));
    }

    /// Changes a copy through `change` and stores it as `set` does. Reuses the copy's memory from call to call.
    template <typename Change>
    void modify(Change&& change)
    {
        spare = value;
        std::forward<Change>(change)(spare);
        changed.emit(spare);
        std::swap(value, spare);
    }

    /// Calls `observer` with the new value before each change is stored. It is not called for the present value.
    [[nodiscard]] Subscription subscribe(Observer observer) { return changed.subscribe(std::move(observer)); }

private:
    T value;
    T spare{};
    Signal<const T&> changed;
};

} // namespace lumenvale
