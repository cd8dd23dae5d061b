// SPDX-License-Identifier: MIT
// Between CoreFoundation's property lists and ours. Pure; any thread.
#pragma once

#include "base/PropertyList.h"
#include "platform/macos/foundation/MacReferences.h"

#include <optional>
#include <string>

namespace lumenvale {

/// The text, or none when it has no UTF-8 form (half a surrogate pair). `text` may be null.
std::optional<std::string> toText(CFStringRef text);

/// The value, or none for null, for kinds that PropertyValue does not have (dates), and for integers beyond 64
/// bits with a sign. In arrays and dictionaries such elements are left out. The order of a dictionary's entries is
/// the one in which the system lists them.
std::optional<PropertyValue> toPropertyValue(CFTypeRef object);

/// Null when `text` is not UTF-8.
CFReference<CFStringRef> toCFString(const std::string& text);

/// Null when a text in it is not UTF-8. Of entries with equal keys the first counts, as it does in `find`.
CFReference<CFTypeRef> toCFObject(const PropertyValue& value);

} // namespace lumenvale
