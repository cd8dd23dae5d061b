// SPDX-License-Identifier: MIT
#include "base/MemoryUserDefaults.h"

#include <utility>

namespace lumenvale {

std::optional<PropertyValue> MemoryUserDefaults::value(const std::string& key) const
{
    const auto entry = values.find(key);
    return entry == values.end() ? std::nullopt : std::optional(entry->second);
}

void MemoryUserDefaults::set(const std::string& key, std::optional<PropertyValue> next)
{
    const bool hadFailed = std::exchange(hasFailed, !failure.empty());
    if (hasFailed)
        return failures.emit(failure);
    if (next)
        values.insert_or_assign(key, std::move(*next));
    else
        values.erase(key);
    if (hadFailed)
        failures.emit("");
}

PropertyDictionary MemoryUserDefaults::domain(const std::string& name) const
{
    const auto entry = domains.find(name);
    return entry == domains.end() ? PropertyDictionary() : entry->second;
}

Subscription MemoryUserDefaults::observeFailures(std::function<void(const std::string&)> observer)
{
    return failures.subscribe(std::move(observer));
}

} // namespace lumenvale
