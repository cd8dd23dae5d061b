// SPDX-License-Identifier: MIT
#include "platform/macos/foundation/PropertyConversion.h"

#include <utility>
#include <vector>

namespace lumenvale {

namespace {

std::optional<PropertyValue> fromNumber(CFNumberRef number)
{
    if (CFNumberIsFloatType(number)) {
        double value = 0;
        CFNumberGetValue(number, kCFNumberFloat64Type, &value);
        return value;
    }
    std::int64_t value = 0;
    if (!CFNumberGetValue(number, kCFNumberSInt64Type, &value))
        return std::nullopt;
    return value;
}

PropertyData fromData(CFDataRef data)
{
    PropertyData bytes(static_cast<std::size_t>(CFDataGetLength(data)));
    if (!bytes.empty())
        CFDataGetBytes(data, CFRangeMake(0, CFDataGetLength(data)), bytes.data());
    return bytes;
}

PropertyArray fromArray(CFArrayRef array)
{
    PropertyArray values;
    const CFIndex count = CFArrayGetCount(array);
    for (CFIndex index = 0; index < count; ++index) {
        if (auto value = toPropertyValue(CFArrayGetValueAtIndex(array, index)))
            values.push_back(std::move(*value));
    }
    return values;
}

PropertyDictionary fromDictionary(CFDictionaryRef dictionary)
{
    const auto count = static_cast<std::size_t>(CFDictionaryGetCount(dictionary));
    std::vector<const void*> keys(count);
    std::vector<const void*> values(count);
    CFDictionaryGetKeysAndValues(dictionary, keys.data(), values.data());
    PropertyDictionary entries;
    entries.reserve(count);
    for (std::size_t index = 0; index < count; ++index) {
        if (CFGetTypeID(keys[index]) != CFStringGetTypeID())
            continue;
        auto key = toText(static_cast<CFStringRef>(keys[index]));
        auto value = toPropertyValue(values[index]);
        if (key && value)
            entries.emplace_back(std::move(*key), std::move(*value));
    }
    return entries;
}

/// Makes the CoreFoundation object for each alternative; null when a text in it is not UTF-8.
struct ToCF {
    CFReference<CFTypeRef> operator()(bool flag) const
    {
        return CFReference<CFTypeRef>(CFRetain(flag ? kCFBooleanTrue : kCFBooleanFalse));
    }
    CFReference<CFTypeRef> operator()(std::int64_t number) const
    {
        return CFReference<CFTypeRef>(CFNumberCreate(kCFAllocatorDefault, kCFNumberSInt64Type, &number));
    }
    CFReference<CFTypeRef> operator()(double number) const
    {
        return CFReference<CFTypeRef>(CFNumberCreate(kCFAllocatorDefault, kCFNumberFloat64Type, &number));
    }
    CFReference<CFTypeRef> operator()(const std::string& text) const { return toCFString(text); }
    CFReference<CFTypeRef> operator()(const PropertyData& data) const
    {
        return CFReference<CFTypeRef>(
            CFDataCreate(kCFAllocatorDefault, data.data(), static_cast<CFIndex>(data.size())));
    }
    CFReference<CFTypeRef> operator()(const PropertyArray& values) const
    {
        CFReference<CFMutableArrayRef> array(CFArrayCreateMutable(kCFAllocatorDefault, 0, &kCFTypeArrayCallBacks));
        for (const PropertyValue& each : values) {
            const auto element = toCFObject(each);
            if (!element)
                return {};
            CFArrayAppendValue(array.get(), element.get());
        }
        return array;
    }
    CFReference<CFTypeRef> operator()(const PropertyDictionary& entries) const
    {
        CFReference<CFMutableDictionaryRef> dictionary(CFDictionaryCreateMutable(
            kCFAllocatorDefault, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
        for (const auto& [key, value] : entries) {
            const auto name = toCFString(key);
            const auto element = toCFObject(value);
            if (!name || !element)
                return {};
            CFDictionaryAddValue(dictionary.get(), name.get(), element.get());
        }
        return dictionary;
    }
};

} // namespace

std::optional<std::string> toText(CFStringRef text)
{
    if (!text)
        return std::nullopt;
    const CFIndex size = CFStringGetMaximumSizeForEncoding(CFStringGetLength(text), kCFStringEncodingUTF8) + 1;
    std::string bytes(static_cast<std::size_t>(size), '\0');
    if (!CFStringGetCString(text, bytes.data(), size, kCFStringEncodingUTF8))
        return std::nullopt;
    bytes.resize(bytes.find('\0'));
    return bytes;
}

std::optional<PropertyValue> toPropertyValue(CFTypeRef object)
{
    if (!object)
        return std::nullopt;
    const CFTypeID type = CFGetTypeID(object);
    if (type == CFStringGetTypeID()) {
        auto text = toText(static_cast<CFStringRef>(object));
        return text ? std::optional<PropertyValue>(std::move(*text)) : std::nullopt;
    }
    if (type == CFBooleanGetTypeID())
        return CFBooleanGetValue(static_cast<CFBooleanRef>(object)) != 0;
    if (type == CFNumberGetTypeID())
        return fromNumber(static_cast<CFNumberRef>(object));
    if (type == CFDataGetTypeID())
        return fromData(static_cast<CFDataRef>(object));
    if (type == CFArrayGetTypeID())
        return fromArray(static_cast<CFArrayRef>(object));
    if (type == CFDictionaryGetTypeID())
        return fromDictionary(static_cast<CFDictionaryRef>(object));
    return std::nullopt;
}

CFReference<CFStringRef> toCFString(const std::string& text)
{
    return CFReference<CFStringRef>(
        CFStringCreateWithBytes(kCFAllocatorDefault, reinterpret_cast<const UInt8*>(text.data()),
                                static_cast<CFIndex>(text.size()), kCFStringEncodingUTF8, false));
}

CFReference<CFTypeRef> toCFObject(const PropertyValue& value) { return std::visit(ToCF{}, value.storage); }

} // namespace lumenvale
