// SPDX-License-Identifier: MIT
#include "base/PropertyList.h"

#include <algorithm>

namespace lumenvale {

const PropertyValue* find(const PropertyDictionary& dictionary, std::string_view key)
{
    const auto entry =
        std::find_if(dictionary.begin(), dictionary.end(), [key](const auto& each) { return each.first == key; });
    return entry == dictionary.end() ? nullptr : &entry->second;
}

} // namespace lumenvale
