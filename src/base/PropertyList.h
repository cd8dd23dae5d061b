// SPDX-License-Identifier: MIT
// The values that preferences, registry entries and display dictionaries are made of.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace lumenvale {

struct PropertyValue;

using PropertyData = std::vector<std::uint8_t>;
using PropertyArray = std::vector<PropertyValue>;
/// Keeps the order of the keys: a display's product name is the first of its dictionary of localised names.
using PropertyDictionary = std::vector<std::pair<std::string, PropertyValue>>;

struct PropertyValue {
    using Storage =
        std::variant<bool, std::int64_t, double, std::string, PropertyData, PropertyArray, PropertyDictionary>;

    PropertyValue(bool flag) : storage(flag) {}
    PropertyValue(int number) : storage(std::int64_t{number}) {}
    PropertyValue(std::int64_t number) : storage(number) {}
    PropertyValue(double number) : storage(number) {}
    PropertyValue(const char* text) : storage(std::string(text)) {}
    PropertyValue(std::string text) : storage(std::move(text)) {}
    PropertyValue(PropertyData data) : storage(std::move(data)) {}
    PropertyValue(PropertyArray array) : storage(std::move(array)) {}
    PropertyValue(PropertyDictionary dictionary) : storage(std::move(dictionary)) {}

    bool operator==(const PropertyValue& other) const = default;

    /// The value as `T` when it is exactly that, else null.
    template <typename T>
    const T* as() const
    {
        return std::get_if<T>(&storage);
    }

    Storage storage;
};

/// The value under `key`, or null.
inline const PropertyValue* find(const PropertyDictionary& dictionary, std::string_view key)
{
    const auto entry = std::ranges::find(dictionary, key, &PropertyDictionary::value_type::first);
    return entry == dictionary.end() ? nullptr : &entry->second;
}

/// The value under `key` when it exists and has exactly type `T`, else null.
template <typename T>
const T* find(const PropertyDictionary& dictionary, std::string_view key)
{
    const PropertyValue* value = find(dictionary, key);
    return value ? value->as<T>() : nullptr;
}

} // namespace lumenvale
