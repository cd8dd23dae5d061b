// SPDX-License-Identifier: MIT
// The user's saved preferences: a dictionary by key, one per program. Main thread only.
#pragma once

#include "base/PropertyList.h"
#include "base/Signal.h"

#include <functional>
#include <optional>
#include <string>

namespace lumenvale {

class UserDefaults {
public:
    virtual ~UserDefaults() = default;

    /// The value under `key`; none when it was never set or was removed.
    virtual std::optional<PropertyValue> value(const std::string& key) const = 0;

    /// Stores `next` under `key`, or removes the key when it is none. Readable at once; reaches the disk soon
    /// after, whole or not at all.
    virtual void set(const std::string& key, std::optional<PropertyValue> next) = 0;

    /// Everything in another program's preferences; empty when there are none.
    virtual PropertyDictionary domain(const std::string& name) const = 0;

    /// Calls `observer` with the system's words each time a change could not be brought to the disk, and with an
    /// empty text when everything has been brought there after all.
    [[nodiscard]] virtual Subscription observeFailures(std::function<void(const std::string&)> observer) = 0;

    /// Brings all changes to the disk before it returns.
    virtual void flush() = 0;
};

/// The value under `key` when it has type `T`, else none.
template <typename T>
std::optional<T> readDefault(const UserDefaults& defaults, const std::string& key)
{
    const std::optional<PropertyValue> value = defaults.value(key);
    const T* typed = value ? value->as<T>() : nullptr;
    return typed ? std::optional<T>(*typed) : std::nullopt;
}

} // namespace lumenvale
