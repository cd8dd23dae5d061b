// SPDX-License-Identifier: MIT
// The form that one preference takes in a file: JSON that a person can read, compare and edit, and that gives back
// exactly the value it was made from, type included. Pure; any thread.
#pragma once

#include "base/Json.h"
#include "base/PropertyList.h"

#include <optional>
#include <string>

namespace lumenvale {

/// Truth values, whole and other numbers (0.5, 1.0), strings, arrays and dictionaries stand as what JSON has for
/// them; data is {"$data": "its bytes in base64"}. A key of a dictionary that begins with $ is written with
/// another $. The presets, which are data that holds a JSON document, stand as that document, and anything else
/// under their key is {"$value": what it would be elsewhere}. Bytes of a string that are not UTF-8 become U+FFFD,
/// and a number that is not finite becomes null.
OrderedJson preferenceToJson(const std::string& key, const PropertyValue& value);

/// Reads what `preferenceToJson` wrote, or a person. None for null and for what only looks like one of its forms.
std::optional<PropertyValue> preferenceFromJson(const std::string& key, const OrderedJson& json);

} // namespace lumenvale
