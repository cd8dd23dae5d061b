// SPDX-License-Identifier: MIT
// The form that a preference takes in a file: text that a person can read, and that gives back exactly the
// value it was made from, type included. Pure; any thread.
#pragma once

#include "base/PropertyList.h"

#include <string>

namespace lumenvale {

/// JSON for everything but ordinary strings, which stand as they are: true, 5, 0.5, dock, ["A","B"]. What JSON
/// cannot say is an object: {"data":"base64"}, {"string":"base64"} for bytes that are not UTF-8,
/// {"double":"nan"}, {"dictionary":[["key",value]]}. Always valid UTF-8.
std::string encodeProperty(const PropertyValue& value);

/// Reads what `encodeProperty` wrote. Everything else is a string.
PropertyValue decodeProperty(const std::string& text);

} // namespace lumenvale
